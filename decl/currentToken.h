// What the current token is, as the sources of the declaration parser ask it.
#pragma once

#include <cstring>

#include "decl/typeWords.h"
#include "front/lexer.h"

namespace zy {

inline bool isChar(char c) { return tokenClass == TK_CHAR && tokenValue.character == c; }

inline bool isKeyword(KeywordClass keywordClass, int code) {
    return tokenClass == TK_KEYWORD && currentKeyword.keywordClass == keywordClass &&
           currentKeyword.code == code;
}

inline bool isOperator(int code) { return isKeyword(KC_OPERATOR, code); }
inline bool isTypeWord(int code) { return isKeyword(KC_TYPE, code); }
inline bool isBodyWord(int code) { return isKeyword(KC_STATEMENT, code); }

// Whether one of these characters comes next. Behind the declarations of an old-style function its
// `{` has been read and pushed back.
inline bool charFollows(const char *accepted) {
    char c = '\0';
    if (!pushedBack) {
        peekNonBlank();
        c = lineBuffer[linePos];
    } else if (tokenClass == TK_CHAR) {
        c = static_cast<char>(tokenValue.character);
    } else if (isBodyWord(WORD_OPEN_BRACE)) {
        c = '{';
    }
    return c != '\0' && strchr(accepted, c);
}

}  // namespace zy
