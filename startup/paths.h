// Paths as scripts and users write them: `~`, `.` and `..`, lists with `;`. Both separators, `/`
// and `\`, are understood.
#pragma once

#include <string>

namespace zy {

constexpr int SEARCH_TABLE_MAX = 5119;  // entries

// The folders or extensions of a list, in order. Owns its texts.
struct SearchTable {
    char **entries;
    int count;
};

// Rebuilds a table from a list; NULL gives an empty one. Folders become absolute, but for `.`.
// Entries that don't fit are left out after a message.
void splitPathList(const char *text, SearchTable &table);
void splitExtensionList(const char *text, SearchTable &table);
void releaseSearchTable(SearchTable &table);

// A copy in which `~`, and `~name` with the user's own name, stand for the user's home, where they
// begin a word. expandTilde puts a home with blanks in double quotes, for a command line.
std::string expandTilde(const char *text);
std::string expandTildeBare(const char *text);

// A copy with `.`, `..` and `~` resolved, "" for nothing. It stops at white space unless wholeText
// is set. A relative path that starts with a name stays relative.
std::string normalisePath(const char *text, bool wholeText);

// The list in the form of the process environment.
std::string environmentList(const char *list);

// The current folder; the user's home when it can't be read.
std::string workingFolder();

}  // namespace zy
