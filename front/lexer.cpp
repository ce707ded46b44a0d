// The token scanner: it finds the start of the next token, tells by its first characters what it
// is, and scans names and operators. Numbers, literals and comments have sources of their own.

#include "front/lexer.h"

#include "expr/value.h"
#include "front/lexerParts.h"
#include "front/names.h"
#include "front/preprocessor.h"
#include "front/preprocessorState.h"
#include "instance/report.h"

namespace zy {

namespace {

constexpr int DIRECTIVE_CODE = 25;  // of the word #
constexpr int DOT_CODE = 722;

// Goes to the first character of a token. False: the line has ended, and its end is the token.
bool findText() {
    for (;;) {
        skipBlanks(linePos, lineBuffer);
        char c = lineBuffer[linePos];
        // A script held in memory may be one line with line feeds in it.
        if (c == '\n' && linesFollow())
            linePos++;
        else if (c)
            return true;
        else if (!linesFollow() || endOfInput) {
            deliverChar('\n');
            endOfInput = true;
            return false;
        } else if (e_lang->rawLineMode) {
            deliverChar(';');
            return false;
        } else
            readSourceLine();
    }
}

// ---- Names ------------------------------------------------------------------------------------

struct Word {
    uint16_t hash;
    int length;
};

// Copies the name at linePos to identifierBuffer, folded and hashed on the way.
Word copyName() {
    char *text = lineBuffer + linePos;
    bool internal = text[0] == '_' && text[1] == '_' && text[2] == '_';
    uint8_t accepted = internal ? CC_NAME | CC_DOT : CC_NAME;
    bool fold = !caseSensitive;
    unsigned sum = 0;
    int length = 0;
    for (; classOf(text[length]) & accepted; length++) {
        char c = text[length];
        if (fold && c >= 'A' && c <= 'Z')
            text[length] = c = static_cast<char>(c | 32);
        sum += static_cast<unsigned char>(c);
        identifierBuffer[length] = c;
    }
    identifierBuffer[length] = '\0';
    return {static_cast<uint16_t>(sum), length};
}

void deliverKeyword(const KeywordEntry *row) {
    currentKeyword = *row;
    tokenClass = TK_KEYWORD;
}

void deliverName(uint16_t hash) {
    NameEntry *name = lookupHashedName(identifierBuffer, hash);
    if (!name)
        name = addName(identifierBuffer);
    if (!name) {
        deliverChar(';');
        return;
    }
    tokenClass = TK_IDENTIFIER;
    tokenValue.name = name;
}

bool isDirective() {
    return tokenClass == TK_KEYWORD && currentKeyword.keywordClass == KC_STATEMENT &&
           currentKeyword.code == DIRECTIVE_CODE;
}

// A macro can't make a directive: its text would be run in the middle of a line.
void refuseDirective(int expansion) {
    if (!isDirective() || expansion != MACRO_EXPANDED)
        return;
    SourcePosition position = {currentLine, ""};
    parsePosition(position);
    plainError("invalid # directive in macro");
    plainError("syntax error at line %d in file '%s'", position.line, position.file);
    errorFlag = 1;
    linePos = lineLength;
    deliverChar(';');
}

// `__FILE__ "x"` is one literal.
bool startsLiteral(const char *word) {
    if (!e_lang->macroExpansionOn || !predefinedText(word))
        return false;
    peekAndExpand();
    return lineBuffer[linePos] == '"';
}

// Macros come first, while the cursor still stands behind the name: the look-up of a keyword may
// read further lines to see whether the word is called.
void scanName() {
    Word word = copyName();
    linePos = static_cast<int16_t>(linePos + word.length);
    if (e_lang->macroExpansionOn) {
        if (int expansion = expandMacro(identifierBuffer, word.hash)) {
            refuseDirective(expansion);
            return;
        }
    }
    linePos = static_cast<int16_t>(linePos - word.length);
    if (const KeywordEntry *row = findKeyword(identifierBuffer, word.hash, word.length))
        deliverKeyword(row);
    else if (startsLiteral(identifierBuffer))
        joinToConstant(predefinedText(identifierBuffer));
    else
        deliverName(word.hash);
}

// ---- Operators --------------------------------------------------------------------------------

// The second characters with which a character makes an operator of two.
const char *secondsOf(char c) {
    switch (c) {
        case '<': return "<=";
        case '>': return ">=";
        case '^': return "^=";
        case '|': return "|=";
        case '&': return "&=";
        case '+': return "+=";
        case '-': return "->=";
        case '=':
        case '!':
        case '*':
        case '/':
        case '%': return "=";
        case '.': return "*/";
        case ':': return ":";
        default: return "";
    }
}

int operatorLength(const char *text) {
    char c = text[0], second = text[1];
    if ((c == '<' || c == '>') && second == c && text[2] == '=')
        return 3;
    for (const char *accepted = secondsOf(c); *accepted; accepted++)
        if (second == *accepted)
            return 2;
    return 1;
}

// Steps over `...`, which is no token but a mark for whoever reads a list of parameters.
bool skipDots() {
    if (currentKeyword.code != DOT_CODE || currentKeyword.keywordClass != KC_OPERATOR ||
        lineBuffer[linePos] != '.' || lineBuffer[linePos + 1] != '.')
        return false;
    linePos = static_cast<int16_t>(linePos + 2);
    dotsSeen = true;
    return true;
}

// Whether a # begins a directive here. The text of a directive and that of a macro's arguments are
// read with their # as tokens.
bool directivesRun() {
    return linesFollow() && !e_lang->rawLineMode && e_lang->macroExpansionOn && !directivesIdle;
}

// False: no token yet, the scan goes on.
bool scanOperator() {
    char *text = lineBuffer + linePos;
    char c = *text;
    if (static_cast<signed char>(c) < 33) {  // control characters, bytes with the high bit
        linePos++;
        deliverChar(c);
        return true;
    }
    int length = operatorLength(text);
    unsigned sum = 0;
    for (int i = 0; i < length; i++)
        sum += static_cast<unsigned char>(text[i]);
    bool fromMacro = expansionCount && lineOrigins[linePos];
    const KeywordEntry *row = findKeyword(text, static_cast<uint16_t>(sum), length);
    if (!row) {
        deliverChar(c);
        return true;
    }
    deliverKeyword(row);
    if (isDirective() && directivesRun() && !fromMacro) {
        runDirective();
        return false;
    }
    return !skipDots();
}

// ---- One token --------------------------------------------------------------------------------

// False: a comment or the end of a line has been stepped over, the scan starts anew.
bool scanToken() {
    char c = lineBuffer[linePos], second = lineBuffer[linePos + 1];
    bool wide = c == 'L' && (second == '"' || second == '\'');
    if (wide) {
        linePos++;
        c = second;
    }
    uint8_t kind = classOf(c);
    if (kind & CC_LETTER)
        scanName();
    else if (kind & CC_DIGIT || (c == '.' && classOf(second) & CC_DIGIT))
        scanNumber();
    else if (c == '\'')
        scanCharConstant(wide);
    else if (c == '"')
        scanStringConstant(wide);
    else if (c == '/' && second == '*') {
        skipBlockComment("missing '*/' ");
        return false;
    } else if (c == '/' && second == '/') {
        skipLineComment();
        return false;
    } else if (c == '\\' && skipContinuation())
        return false;
    else
        return scanOperator();
    return true;
}

}  // namespace

void deliverConstant(Value *value) {
    if (!value) {
        deliverChar(';');
        return;
    }
    tokenClass = TK_CONSTANT;
    tokenValue.constant = value;
}

void nextToken() {
    if (pushedBack) {
        pushedBack = false;
        return;
    }
    do {
        if (!findText())
            return;
    } while (!scanToken());
    // A look ahead may have met the end. It will be met again, after this token.
    if (linesFollow())
        endOfInput = false;
}

// ---- For the parsers --------------------------------------------------------------------------

bool expectChar(char c, bool report) {
    nextToken();
    if (tokenClass == TK_CHAR && tokenValue.character == static_cast<unsigned char>(c)) {
        pushedBack = false;
        return true;
    }
    pushedBack = true;
    if (report) {
        fprintf(stderr, "ERROR: missing '%c'", c);
        tokenContext();
        errorFlag = 1;
    }
    return false;
}

namespace {

void printConstant(const Value *value) {
    const Payload &payload = value->payload;
    switch (value->type) {
        case DT_CHAR: fprintf(stderr, "'%c'", payload.c); break;
        case DT_USHORT: fprintf(stderr, "'%d'", payload.us); break;
        case DT_INT: fprintf(stderr, "'%d'", payload.i); break;
        case DT_UINT: fprintf(stderr, "'%u'", payload.u); break;
        case DT_LLONG: fprintf(stderr, "'%lld'", payload.ll); break;
        case DT_ULLONG: fprintf(stderr, "'%llu'", payload.ull); break;
        case DT_FLOAT: fprintf(stderr, "'%f'", static_cast<double>(payload.f)); break;
        case DT_DOUBLE: fprintf(stderr, "'%lf'", payload.d); break;
        case DT_STRING: fprintf(stderr, "'%s'", payload.text); break;
        default: fputs("''", stderr); break;
    }
}

}  // namespace

void tokenContext() {
    if (!endOfInput) {
        switch (tokenClass) {
            case TK_KEYWORD: fprintf(stderr, " before '%s'", currentKeyword.name); break;
            case TK_IDENTIFIER: fprintf(stderr, " before '%s'", tokenValue.name->text); break;
            case TK_CHAR: fprintf(stderr, " before '%c'", tokenValue.character); break;
            case TK_CONSTANT:
                fputs(" before ", stderr);
                printConstant(tokenValue.constant);
                break;
        }
    }
    fputc('\n', stderr);
    printParseErrorPosition();
}

}  // namespace zy
