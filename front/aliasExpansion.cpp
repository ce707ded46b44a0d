// How an alias at the start of a console line becomes the command that it stands for. A text may
// place the arguments of the line itself, as _argv[...]; otherwise they follow it.

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include "expr/scope.h"
#include "extern/include/embedzy.h"
#include "front/aliases.h"
#include "front/lexerState.h"
#include "instance/report.h"

namespace zy {

namespace {

using Arguments = std::vector<std::string>;

constexpr const char *wordEnds = "|&<>; ";
constexpr const char *argumentsName = "_argv";

struct FirstWord {
    std::string text;
    size_t end;  // of the word in the line
};

FirstWord firstWord(const std::string &line) {
    size_t start = line.find_first_not_of(" \t");
    if (start == std::string::npos)
        return {"", line.size()};
    size_t end = line.find_first_of(wordEnds, start);
    if (end == std::string::npos)
        end = line.size();
    return {line.substr(start, end - start), end};
}

Arguments argumentsOf(const std::string &line) {
    Arguments arguments;
    VarCell *record = strToArgcArgv(line.c_str(), nullptr);
    if (!record)
        return arguments;
    auto **texts = static_cast<char **>(record->data.p);
    for (; texts && *texts; texts++)
        arguments.push_back(*texts);
    killEntry(record);
    return arguments;
}

// The first argument is the command itself, which the alias stands for already.
std::string joined(const Arguments &arguments) {
    std::string text;
    for (size_t i = 1; i < arguments.size(); i++)
        text += (i > 1 ? " " : "") + arguments[i];
    return text;
}

std::string numbered(const Arguments &arguments, const std::string &digits) {
    unsigned long long number = 0;
    for (char digit : digits)
        number = std::min<unsigned long long>(number * 10 + (digit - '0'), INT_MAX);
    if (number < arguments.size())
        return arguments[number];
    parseError("_argv[%d] is bigger than the max argument _argv[%d]", static_cast<int>(number),
               static_cast<int>(arguments.size()) - 1);
    return "";
}

// The text for one _argv[index].
std::string argumentText(const std::string &index, const std::string &line,
                         const Arguments &arguments) {
    if (index == "#")
        return line;
    if (index == "$")
        return arguments.empty() ? "" : arguments.back();
    if (index == "*")
        return joined(arguments);
    size_t bad = index.find_first_not_of("0123456789");
    if (bad == std::string::npos && !index.empty())
        return numbered(arguments, index);
    parseError("bad index '%c' for _argv[]", index.empty() ? ']' : index[bad]);
    return "";
}

std::string placeArguments(const std::string &text, const std::string &line) {
    Arguments arguments = argumentsOf(line);
    std::string opening = std::string(argumentsName) + '[';
    std::string result;
    size_t at = 0;
    for (;;) {
        size_t open = text.find(opening, at);
        size_t close = open == std::string::npos ? open : text.find(']', open);
        if (close == std::string::npos)
            break;
        result += text.substr(at, open - at);
        open += opening.size();
        result += argumentText(text.substr(open, close - open), line, arguments);
        at = close + 1;
    }
    return result + text.substr(at);
}

std::string expandOnce(const std::string &line, const FirstWord &word, const char *value) {
    if (strstr(value, argumentsName))
        return placeArguments(value, line);
    return value + line.substr(word.end);
}

bool contains(const Arguments &words, const std::string &word) {
    for (const std::string &known : words)
        if (known == word)
            return true;
    return false;
}

// An alias is expanded once for a line, so that aliases that name each other come to an end: with
// a = b and b = a the line stays what it was.
std::string expanded(std::string line) {
    Arguments done;
    for (;;) {
        FirstWord word = firstWord(line);
        if (word.text.empty() || contains(done, word.text))
            return line;
        const AliasEntry *alias = lookupAlias(word.text.c_str());
        if (!alias || !alias->value)
            return line;
        done.push_back(word.text);
        line = expandOnce(line, word, alias->value);
        if (line.size() >= SOURCE_LINE_MAX) {
            parseError("command line exceeded the maximum length of %d", SOURCE_LINE_MAX);
            return "";  // rather than a part of a command
        }
    }
}

}  // namespace

void expandAlias() {
    std::string line = expanded(lineBuffer);
    memcpy(lineBuffer, line.c_str(), line.size() + 1);
    lineLength = static_cast<int16_t>(line.size());
}

}  // namespace zy
