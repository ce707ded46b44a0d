// Codes of the specifier words of a declaration, in the class KC_TYPE; those below 129 are data
// types. Beside them the operators that declarators are made of.
#pragma once

namespace zy {

enum TypeWord {
    WORD_UNION = 130,
    WORD_CLASS = 131,
    WORD_STRUCT = 132,
    WORD_ENUM = 137,
    WORD_SIGNED = 140,
    WORD_UNSIGNED = 141,
    WORD_SHORT = 142,
    WORD_LONG = 143,
    WORD_COMPLEX = 144,
    WORD_DUAL = 145,
    WORD_LOCAL = 146,
    WORD_DECLSPEC = 147,
    WORD_AUTO = 148,
    WORD_REGISTER = 149,
    WORD_STATIC = 150,
    WORD_EXTERN = 151,
    WORD_TYPEDEF = 152,
    WORD_GLOBAL = 153,
    WORD_REF = 154,
    WORD_ARRAY = 155,
    WORD_FORTRAN = 156,  // no word gives it
    WORD_CONST = 157,
    WORD_PUBLIC = 158,
    WORD_PRIVATE = 159,
    WORD_PROTECTED = 160,
    WORD_VIRTUAL = 161,
    WORD_RESTRICT = 162,
    WORD_INLINE = 163,
    WORD_IGNORED = 164,  // no word gives it
    WORD_VOLATILE = 165,
};

enum DeclaratorOperator {
    WORD_STAR = 730,
    WORD_AMPERSAND = 745,
    WORD_TILDE = 748,
    WORD_ASSIGN = 686,
};

enum BodyWord {
    WORD_OPEN_BRACE = 1,
    WORD_CLOSE_BRACE = 3,
};

}  // namespace zy
