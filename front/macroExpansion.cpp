// Macro calls. The name of a macro, and the arguments behind it, are replaced in lineBuffer, and
// the lexer goes on at the same place, so that a replacement is read as if it had been written
// there.
//
// A text that names its own macro would be replaced without end. So each character of the line
// knows the expansion that it came of, and an expansion the one in which its macro's name stood: a
// name that came of its own macro is left alone. Macros in an argument are replaced before it takes
// its place in the text, so that `max(max(a, b), c)` means both.

#include <cstdlib>
#include <cstring>

#include "expr/value.h"
#include "front/lexerParts.h"
#include "front/macroParts.h"
#include "front/macros.h"
#include "front/names.h"
#include "front/preprocessorParts.h"
#include "front/vocabularySwitches.h"
#include "instance/report.h"

namespace zy {

namespace {

// Some text brings forth ever more of itself.
constexpr int EXPANSIONS_MAX = 20000;  // of one line
constexpr int NESTING_MAX = 1000;      // whose first token is again that of a macro
constexpr int REPORTS_MAX = 10;        // of the macros around a fault

bool comesFrom(const MacroEntry *macro, uint16_t origin) {
    for (; origin && origin <= expansionCount; origin = expansions[origin - 1].parent)
        if (expansions[origin - 1].macro == macro)
            return true;
    return false;
}

// The number of a new expansion; 0 if there are too many.
uint16_t newExpansion(const MacroEntry *macro, uint16_t parent) {
    if (expansionCount == EXPANSIONS_MAX)
        return 0;
    if (expansionCount == expansionRoom) {
        int room = expansionRoom ? expansionRoom * 2 : 64;
        void *grown = realloc(expansions, static_cast<size_t>(room) * sizeof(Expansion));
        if (!grown)
            return 0;
        expansions = static_cast<Expansion *>(grown);
        expansionRoom = room;
    }
    if (expansionCount == 0)
        memset(lineOrigins, 0, sizeof lineOrigins);
    expansions[expansionCount++] = {macro, parent};
    return static_cast<uint16_t>(expansionCount);
}

// ---- Substitution -----------------------------------------------------------------------------

size_t countOf(const MacroCell *list) {
    size_t count = 0;
    for (; list; list = list->next)
        count++;
    return count;
}

// False after a message.
bool matchArguments(const MacroEntry *macro, Arguments &arguments) {
    size_t wanted = countOf(macro->params);
    if (arguments.size() + (macro->variadic ? 1 : 0) < wanted) {
        parseError("argument mismatch, need additional actual parameters in macro substitution");
        return false;
    }
    if (arguments.size() > wanted && !macro->variadic) {
        parseError("argument mismatch, too many actual parameters in macro substitution ");
        return false;
    }
    while (arguments.size() > wanted) {
        TracedText last = arguments.back();
        arguments.pop_back();
        arguments.back().append(",", 0);
        arguments.back().append(last);
    }
    arguments.resize(wanted);
    return true;
}

std::string quoted(const char *text) { return std::string("\"") + text + '"'; }

std::string currentLineNumber() {
    const NameEntry *entry = lookupName("__LINE__");
    const TypeInfo *symbol = entry ? entry->symbol : nullptr;
    int line = symbol && symbol->constant ? symbol->constant->payload.i : currentLine;
    return std::to_string(line);
}

// What one of the predefined names stands for in a replacement; other texts stay.
std::string predefinedValue(const std::string &text) {
    if (text.compare(0, 2, "__") != 0)
        return text;
    if (text == "__LINE__")
        return currentLineNumber();
    if (text == "__STDC__")
        return "1";
    if (text == "__STDC_VERSION__")
        return "199409L";
    bool isName = text == "__FILE__" || text == "__DATE__" || text == "__TIME__";
    const char *predefined = isName ? predefinedText(text.c_str()) : nullptr;
    return predefined ? quoted(predefined) : text;
}

std::string stringizedChar(char c, bool inString) {
    static constexpr char letters[] = "abtnvfr";  // of the characters from 7 on
    if (c == '\0')
        return "\\\\0";
    if (c >= 7 && c <= 13)
        return std::string("\\\\") + letters[c - 7];
    if (c == '\'')
        return inString ? "'" : "\\'";
    if (c == '\\')
        return inString ? "\\\\" : "\\";
    return std::string(1, c);
}

void stringizeArgument(std::string &dest, const std::string &text) {
    bool inString = false;
    dest += '"';
    for (size_t i = 0; i < text.size(); i++) {
        char c = text[i];
        if (c == '"') {
            if (i == 0 || text[i - 1] != '\\')
                inString = !inString;
            dest += "\\\"";
        } else {
            dest += stringizedChar(c, inString);
            if (c == '\\' && !inString && i + 1 < text.size() && text[i + 1] == '"') {
                dest += "\"";
                i++;
            }
        }
    }
    dest += '"';
}

// ---- The line ---------------------------------------------------------------------------------

// Makes the text the line, with the cursor at a position. False if it doesn't fit.
bool rewriteLine(const TracedText &line, int position) {
    if (line.text.size() >= SOURCE_LINE_MAX)
        return false;
    memcpy(lineBuffer, line.text.c_str(), line.text.size() + 1);
    memcpy(lineOrigins, line.origins.data(), line.origins.size() * sizeof(uint16_t));
    lineOrigins[line.text.size()] = 0;
    lineLength = static_cast<int16_t>(line.text.size());
    linePos = static_cast<int16_t>(position);
    return true;
}

// Keeps the line while an argument takes its place.
class LineKeeper {
public:
    LineKeeper() {
        line.appendLine(0, lineLength);
        fileMode = stringMode = endOfInput = false;
        e_lang->macroExpansionOn = 1;
    }
    ~LineKeeper() {
        rewriteLine(line, position);
        fileMode = inFile;
        stringMode = inString;
        endOfInput = inputEnded;
        e_lang->macroExpansionOn = expansionOn;
    }
    LineKeeper(const LineKeeper &) = delete;

private:
    TracedText line;
    int16_t position = linePos;
    bool inFile = fileMode, inString = stringMode, inputEnded = endOfInput;
    int expansionOn = e_lang->macroExpansionOn;
};

// ---- Arguments as texts -----------------------------------------------------------------------

// The length of the piece of text that begins here: a name, a number, a literal, or one character.
int pieceLength(const char *text) {
    int length = 1;
    if (classOf(*text) & CC_NAME)
        while (classOf(text[length]) & (CC_NAME | (classOf(*text) & CC_DIGIT ? CC_DOT : 0)))
            length++;
    if (*text != '"' && *text != '\'')
        return length;
    while (text[length] && text[length] != *text)
        length += text[length] == '\\' && text[length + 1] ? 2 : 1;
    return text[length] ? length + 1 : length;
}

bool isName(const char *text) { return classOf(*text) & CC_LETTER; }

bool namesMacro(const std::string &text) {
    for (const char *piece = text.c_str(); *piece; piece += pieceLength(piece))
        if (isName(piece) && findMacro(std::string(piece, pieceLength(piece)).c_str()))
            return true;
    return false;
}

// Replaces the macros of the line from linePos on.
void expandLine() {
    while (lineBuffer[linePos]) {
        const char *piece = lineBuffer + linePos;
        int length = pieceLength(piece);
        std::string name(piece, isName(piece) ? static_cast<size_t>(length) : 0);
        foldName(name.data());
        int16_t start = linePos;
        linePos = static_cast<int16_t>(linePos + length);
        if (!name.empty() && replaceMacro(name.c_str(), nameHash(name.c_str())) == MACRO_NONE)
            linePos = static_cast<int16_t>(start + length);
    }
}

// Replaces the macros in an argument, as if it were a line of its own.
void expandArgument(TracedText &argument) {
    std::string value = predefinedValue(argument.text);
    if (value != argument.text) {
        argument.clear();
        argument.append(value, 0);
    } else if (namesMacro(argument.text)) {
        LineKeeper line;
        if (!rewriteLine(argument, 0))
            return;
        expandLine();
        argument.clear();
        argument.appendLine(0, lineLength);
    }
}

// The text comes of the macro now as well as of what it came of before.
void appendArgument(const TracedText &argument, const MacroEntry *macro, uint16_t expansion,
                    TracedText &line) {
    uint16_t parent = expansions[expansion - 1].parent, known = parent, origin = expansion;
    for (size_t i = 0; i < argument.text.size(); i++) {
        if (argument.origins[i] != known) {
            known = argument.origins[i];
            origin = known == parent ? expansion : newExpansion(macro, known);
        }
        line.append(std::string(1, argument.text[i]), origin);
    }
}

// Appends the body with the arguments in their places.
void substituteBody(const MacroEntry *macro, const Arguments &arguments, uint16_t expansion,
                    TracedText &line) {
    Arguments expanded = arguments;
    std::vector<bool> done(arguments.size());
    for (const MacroCell *cell = macro->body; cell; cell = cell->next) {
        if (cell->paramIndex) {
            size_t index = static_cast<size_t>(cell->paramIndex - 1);
            if (!cell->raw && !done[index]) {
                expandArgument(expanded[index]);
                done[index] = true;
            }
            const TracedText &argument = cell->raw ? arguments[index] : expanded[index];
            bool isVariable = macro->variadic && index + 1 == arguments.size();
            if (isVariable && cell->raw && argument.text.empty())
                line.trim(',');  // `, ## __VA_ARGS__` of no arguments
            appendArgument(argument, macro, expansion, line);
        } else if (cell->next && cell->next->paramIndex && strcmp(cell->text, "#") == 0) {
            cell = cell->next;
            std::string text;
            stringizeArgument(text, arguments[cell->paramIndex - 1].text);
            line.append(text, expansion);
        } else {
            line.append(macro->functionLike ? predefinedValue(cell->text) : cell->text, expansion);
        }
    }
}

// False, and the line stays, if the replacement is refused.
bool replaceCall(const MacroEntry *macro, const TracedText &prefix, uint16_t origin,
                 Arguments &arguments, bool &reachesEnd) {
    uint16_t expansion = newExpansion(macro, origin);
    if (!expansion || (macro->functionLike && !matchArguments(macro, arguments)))
        return false;
    TracedText line = prefix;
    substituteBody(macro, arguments, expansion, line);
    reachesEnd = linePos == lineLength;
    line.appendLine(linePos, lineLength);
    return rewriteLine(line, static_cast<int>(prefix.text.size()));
}

// Whether the cursor's next character is `(`. A look ahead stays on the line.
bool callFollows(bool crossLines) {
    if (crossLines)
        peekNonBlank();
    else
        skipBlanks(linePos, lineBuffer);
    return lineBuffer[linePos] == '(';
}

void reportExpansion(const MacroEntry *macro) {
    parseError("in expansion of macro '%s'", macro->name);
}

// Replaces the call of the macro whose name ends at linePos.
int replace(const MacroEntry *macro, bool crossLines, bool &reachesEnd) {
    auto start = linePos - static_cast<int>(strlen(macro->name));
    uint16_t origin = originAt(start);
    if (comesFrom(macro, origin))
        return MACRO_NONE;
    TracedText prefix;
    prefix.appendLine(0, start);
    Arguments arguments;
    if (macro->functionLike) {
        openMacroCalls++;
        bool isCall = callFollows(crossLines), complete = isCall && readArguments(arguments);
        openMacroCalls--;
        if (!complete)
            return isCall ? MACRO_REFUSED : MACRO_NONE;
    }
    bool done = replaceCall(macro, prefix, origin, arguments, reachesEnd);
    return done ? MACRO_EXPANDED : MACRO_REFUSED;
}

}  // namespace

int replaceMacro(const char *name, uint16_t hash) {
    const MacroEntry *macro = findHashedMacro(name, hash);
    bool reachesEnd = false;
    int outcome = macro ? replace(macro, false, reachesEnd) : MACRO_NONE;
    if (outcome == MACRO_REFUSED)
        reportExpansion(macro);
    return outcome;
}

int expandMacro(const char *name, uint16_t hash) {
    const MacroEntry *macro = findHashedMacro(name, hash);
    bool reachesEnd = false;
    if (!macro)
        return MACRO_NONE;
    int outcome = replace(macro, true, reachesEnd);
    if (outcome == MACRO_NONE)
        return MACRO_NONE;
    if (outcome == MACRO_REFUSED || nestedExpansions == NESTING_MAX) {
        reportExpansion(macro);
        if (nestedExpansions == NESTING_MAX || expansionCount == EXPANSIONS_MAX)
            linePos = lineLength;
        deliverChar(';');
        return MACRO_EXPANDED;
    }
    bool hadError = errorFlag;
    nestedExpansions++;
    nextToken();
    nestedExpansions--;
    if (errorFlag && !hadError && nestedExpansions < REPORTS_MAX)
        reportExpansion(macro);
    return reachesEnd ? MACRO_EXPANDED_TO_LINE_END : MACRO_EXPANDED;
}

}  // namespace zy
