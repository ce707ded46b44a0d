// The arguments of a script: the splitting of a command text, and _argc and _argv.

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "expr/scope.h"
#include "extern/include/embedzy.h"
#include "numeric/shape.h"
#include "startup/startup.h"
#include "startup/startupState.h"
#include "startup/systemVariables.h"

namespace zy {

namespace {

constexpr const char *blanks = " \t";

// The word at the cursor, and the cursor behind it and the blanks that follow.
std::string takeWord(const char *&at) {
    size_t length = strcspn(at, blanks);
    std::string word(at, length);
    at += length;
    at += strspn(at, blanks);
    return word;
}

// Adds words, with one blank between them, up to the one that holds the closing quote, and drops
// that quote. `word` is what stands behind the opening quote so far. Without a closing quote the
// text ends it.
std::string takeQuoted(std::string word, const char *&at) {
    size_t quote;
    while ((quote = word.find('"')) == std::string::npos && *at)
        word += ' ' + takeWord(at);
    if (quote != std::string::npos)
        word.erase(quote, 1);
    return word;
}

// A quote that a `\` follows begins a path, not a text.
bool hasOddQuotes(const std::string &word) {
    int quotes = 0;
    for (size_t i = 0; i < word.size(); i++)
        quotes += word[i] == '"' && (i + 1 == word.size() || word[i + 1] != '\\');
    return quotes % 2 == 1;
}

// The first word is a file name and loses its quotes; an argument keeps them.
std::vector<std::string> splitArguments(const char *at) {
    std::vector<std::string> words;
    at += strspn(at, blanks);
    while (*at) {
        bool first = words.empty();
        std::string word = takeWord(at);
        if (word[0] == '"' && first)
            word = takeQuoted(word.substr(1), at);
        else if (word[0] == '"' && hasOddQuotes(word))
            word = '"' + takeQuoted(word.substr(1), at) + '"';
        words.push_back(word);
    }
    return words;
}

VarCell *newTextArray(const std::vector<std::string> &texts) {
    uint32_t count = texts.size() + 1;
    VarCell *cell = newVarCell(DT_CARRAY);
    auto **data = static_cast<char **>(allocOrFail(count * sizeof(char *)));
    if (!cell || !data) {
        free(data);
        return cell;
    }
    for (size_t i = 0; i < texts.size(); i++)
        data[i] = copyString(texts[i].c_str());
    data[texts.size()] = nullptr;
    cell->data.p = data;
    cell->data2.elementType = DT_STRING;
    cell->shape = newShapeNode(0, static_cast<int>(count));
    setRowStrides(cell->shape);
    cell->count = count;
    return cell;
}

}  // namespace

void setArgumentsFromText(const char *text) {
    if (argumentRecord)
        killEntry(argumentRecord);
    argumentRecord = newTextArray(splitArguments(text));
    copyArgcArgv(static_cast<int>(argumentRecord->count) - 1,
                 static_cast<char **>(argumentRecord->data.p));
}

void storeArguments() {
    if (VarCell *count = systemCell(SLOT_ARGC))
        count->data.i = scriptArgc;
    if (VarCell *vector = systemCell(SLOT_ARGV))
        vector->data.p = scriptArgv;
}

}  // namespace zy

using namespace zy;

ZyCell *strToArgcArgv(const char *text, const char *first) {
    std::vector<std::string> words = splitArguments(text ? text : "");
    if (first)
        words.insert(words.begin(), first);
    return newTextArray(words);
}

void copyArgcArgv(int argc, char **argv) {
    scriptArgc = argc;
    scriptArgv = argv;
    if (baseFrame)
        storeArguments();
}
