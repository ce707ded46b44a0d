// What the sources of the preprocessor share: how the line of a directive is read.
#pragma once

#include <string>

#include "front/lexer.h"

namespace zy {

struct ExprNode;
using Value = ExprNode;

// The word behind #, by its place in the list of words.
enum Directive {
    DIR_NONE,
    DIR_DEFINE,
    DIR_UNDEF,
    DIR_INCLUDE,
    DIR_IF,
    DIR_IFDEF,
    DIR_IFNDEF,
    DIR_ELSE,
    DIR_ELIF,
    DIR_ENDIF,
    DIR_PRAGMA,
    DIR_LINE,
    DIR_ERROR,
    DIR_DEFINED,
    DIR_SCRIPT,            // #! of the regular interpreter
    DIR_RESTRICTED_SCRIPT  // #! of the restricted shell
};
Directive directiveNumber();

// While one lives, the end of a line ends the text: a token behind it is a `;`. Names are replaced
// by their macros or not.
class DirectiveLine {
public:
    explicit DirectiveLine(bool expand)
        : savedRaw(e_lang->rawLineMode), savedExpansion(e_lang->macroExpansionOn) {
        e_lang->rawLineMode = 1;
        e_lang->macroExpansionOn = expand;
    }
    ~DirectiveLine() {
        e_lang->rawLineMode = savedRaw;
        e_lang->macroExpansionOn = savedExpansion;
    }
    DirectiveLine(const DirectiveLine &) = delete;

private:
    int savedRaw, savedExpansion;
};

bool atLineEnd();
// Steps over blanks, comments and ends of lines behind a backslash; whether there were blanks or
// comments.
bool skipLineSpace();
// Goes to the end of the line, and of a comment that begins on it.
void skipRestOfLine();
// Gives back the constant of a token that isn't wanted.
void dropToken();
// The name of the current token: an identifier, or a keyword of letters; else NULL.
const char *tokenName();
// Whether the current token is a name that counts as defined; -1 if it is no name.
int tokenIsDefined();

inline bool isChar(char c) { return tokenClass == TK_CHAR && tokenValue.character == c; }
// Whether the current token opens a name in angle brackets.
bool isOpeningAngle();
// The current token begins an operand: macros are replaced until it is no name of one.
void expandOperand();

// Appends the current token, which begins at `start`, to the text of a macro or an argument.
void appendToken(std::string &text, int start);

// An expression that ends with the line. NULL, with errorFlag set, if there is none; messages are
// those of the expression.
ExprNode *parseLineExpression();
// Runs it where the program stands: its value, the caller's. NULL if it has none, or after an
// error.
Value *runParsed(ExprNode *tree);
// The text of an expression of string type, "" after an error.
std::string parseLineText();

// ---- Directives of other sources

void runPragma();
// The forms in which a file is included.
enum IncludeMode { INCLUDE_HEADER = 1, INCLUDE_FUNCTION, INCLUDE_COMMAND, INCLUDE_DOT };
// At the depth of the source stack no file is included, and errorFlag alone tells.
void includeFile(IncludeMode mode);
void releaseIncludeSites();
// In the restricted shell, what a path must not hold; true after a message.
bool refusesRestrictedPath(const std::string &path);
bool refusesRestrictedName(const std::string &name);
// The characters from linePos to a `>`, which is stepped over. False after a message.
bool readAngleName(std::string &name);

}  // namespace zy
