// What the current token is, as the sources of the declaration parser ask it.
#pragma once

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

// Whether the body of a function comes next. That of an old-style function has been pushed back.
inline bool openBraceFollows() {
    if (pushedBack)
        return isBodyWord(WORD_OPEN_BRACE);
    peekNonBlank();
    return lineBuffer[linePos] == '{';
}

}  // namespace zy
