// What the parsers of types among the operands share: looks ahead in the line, and refusals.
#pragma once

#include "expr/parserParts.h"

namespace zy {

// Text behind the parenthesis that closes the one at `open`; NULL if the line ends before it.
const char *behindClosing(const char *open);
const char *skipSpace(const char *text);
// Whether the parenthesis at `open` holds stars alone, or nothing, and so is part of a declarator.
bool holdsStarsOnly(const char *open);
// Whether a word of a type stands there that isn't called, and so begins a declarator.
bool declaratorAt(const char *text);
// Whether the parenthesis at `open` holds values to convert. Contents on several lines are taken
// for such.
bool isConversionAt(const char *open);

inline bool atCharacter(char c) { return tokenClass == TK_CHAR && tokenValue.character == c; }
// Whether the token begins a type, whose first words end at `end`: before a path of names that
// leads to something else the name of a class begins an operand.
bool startsType(bool runMode, const char **end);

inline const char *nameText(const TypeInfo *info) { return info->name ? info->name->text : ""; }
// The tag of a type's class; empty if it has none.
const char *structText(const TypeInfo *info);
// A parameter list without a name in front of it is left unread behind the type.
bool isFunctionType(const TypeInfo *type);
// Takes the type, sets errorFlag; NULL.
TypeInfo *refuseType(TypeInfo *type);
// A cast to a type that a word is enough for. Takes both.
ExprNode *castTo(TypeInfo *type, ExprNode *tree);

}  // namespace zy
