#include "startup/paths.h"

#include <cctype>
#include <cstdlib>
#include <cstring>

#include "expr/value.h"
#include "instance/report.h"
#include "platform/files.h"
#include "platform/user.h"
#include "startup/startupState.h"

namespace zy {

namespace {

constexpr const char *separators = "/\\";
bool isSeparator(char c) { return c == '/' || c == '\\'; }
bool isBlank(char c) { return isspace(static_cast<unsigned char>(c)); }

}  // namespace

std::string workingFolder() {
    std::string folder = platform::currentFolder();
    return folder.empty() ? userHome : folder;
}

// ---- The user's home --------------------------------------------------------------------------

namespace {

// A tilde inside a name, as in `notes~`, is part of the name.
bool beginsWord(const char *text, const char *at) {
    return at == text || strchr(" \t\n\v\r;,><&|=:\"'`(", at[-1]);
}

std::string replaceTildes(const char *text, const std::string &home) {
    std::string result;
    const char *at = text;
    while (const char *tilde = strchr(at, '~')) {
        result.append(at, tilde);
        std::string name(tilde + 1, strcspn(tilde + 1, " \t\n\v\r;,><&|\\/"));
        bool isHome = beginsWord(text, tilde) && (name.empty() || name == userName) &&
                      !isdigit(static_cast<unsigned char>(tilde[1]));
        result += isHome ? home : "~";
        at = tilde + 1 + (isHome ? name.size() : 0);
    }
    return result + at;
}

}  // namespace

std::string expandTilde(const char *text) {
    std::string home = userHome;
    return replaceTildes(text, strpbrk(userHome, " \t") ? '"' + home + '"' : home);
}

std::string expandTildeBare(const char *text) { return replaceTildes(text, userHome); }

// ---- Normal form ------------------------------------------------------------------------------

namespace {

// Takes the last component away. The parent of a single name is the current folder, that of the
// root is the root.
void goToParent(std::string &path) {
    if (path.empty())
        path = workingFolder();
    if (isSeparator(path.back()))
        path.pop_back();
    size_t last = path.find_last_of(separators);
    if (last != std::string::npos)
        path.resize(last > 0 ? last : 1);
    else
        path = path.empty() ? std::string(1, platform::separator) : workingFolder();
}

// Resolves a component that stands for a folder; false if it is a plain name. A `.` behind other
// components is left to the caller, who knows what follows it.
bool resolveComponent(std::string &path, const std::string &component) {
    if (component == "..")
        goToParent(path);
    else if (component == "." && path.empty())
        path = workingFolder();
    else if (component == "~")
        path += userHome;
    else
        return false;
    return true;
}

}  // namespace

std::string normalisePath(const char *text, bool wholeText) {
    std::string path;
    const char *end = text;
    while (*end && (wholeText || !isBlank(*end)))
        end++;
    for (const char *at = text; at < end;) {
        const char *start = at;
        while (at < end && !isSeparator(*at))
            at++;
        std::string component(start, at);
        if (component == "." && !path.empty() && at < end) {
            at++;  // it says nothing, nor does its separator
            continue;
        }
        if (!resolveComponent(path, component))
            path += component;
        else if (at < end && !path.empty() && isSeparator(path.back()))
            path.pop_back();  // of the root; the text brings its own
        if (at < end)
            path += *at++;
    }
    path.resize(std::min<size_t>(path.size(), SOURCE_LINE_MAX - 1));
    return path;
}

// ---- Lists ------------------------------------------------------------------------------------

namespace {

// Calls take(entry) for each entry that isn't empty, until it gives false; whether it never did.
template <class Take>
bool forEachEntry(const char *list, Take take) {
    while (*list) {
        size_t length = strcspn(list, ";");
        if (length > 0 && !take(std::string(list, length)))
            return false;
        list += length + (list[length] == ';');
    }
    return true;
}

// False if not all fit.
template <class Form>
bool splitList(const char *text, SearchTable &table, Form form) {
    releaseSearchTable(table);
    if (!text)
        return true;
    size_t most = std::min<size_t>(strlen(text) / 2 + 1, SEARCH_TABLE_MAX);
    table.entries = static_cast<char **>(allocOrFail(most * sizeof(char *)));
    return !table.entries || forEachEntry(text, [&](const std::string &entry) {
        if (table.count == SEARCH_TABLE_MAX)
            return false;
        table.entries[table.count++] = copyString(form(entry).c_str());
        return true;
    });
}

// Whether its normal form is the text itself, as of all folders that an instance starts with.
bool isNormal(const std::string &entry) {
    return entry[0] == platform::separator && !strpbrk(entry.c_str(), ".~\\");
}

// Tables outlive changes of the current folder, so what is relative to it is settled here.
std::string absoluteFolder(const std::string &entry) {
    if (entry == "." || isNormal(entry))
        return entry;
    std::string folder = normalisePath(entry.c_str(), true);
    platform::useNativeSeparators(folder.data());
    if (folder[0] != platform::separator)
        folder = workingFolder() + platform::separator + folder;
    return folder;
}

}  // namespace

void splitPathList(const char *text, SearchTable &table) {
    if (!splitList(text, table, absoluteFolder))
        runError("path table overflow");
}

void splitExtensionList(const char *text, SearchTable &table) {
    if (!splitList(text, table, [](const std::string &entry) { return entry; }))
        runError("extension table overflow");
}

void releaseSearchTable(SearchTable &table) {
    for (int i = 0; i < table.count; i++)
        free(table.entries[i]);
    free(table.entries);
    table = {};
}

// An empty entry would mean the current folder there, so none is written.
std::string environmentList(const char *list) {
    std::string result;
    forEachEntry(list, [&](const std::string &entry) {
        if (!result.empty())
            result += platform::listSeparator;
        result += entry;
        return true;
    });
    return result;
}

}  // namespace zy
