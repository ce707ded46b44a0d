// The two switches of the vocabulary that a script may turn: _casesen, whether the case of letters
// counts, and _floatconst, whether a floating literal is a float. Both act while the text is
// parsed.
#pragma once

#include "front/names.h"

namespace zy {

struct ExprNode;
struct KeywordEntry;
using Value = ExprNode;

// The switches as statements, behind their word, and as pragmas. The statements give the argument
// as a new int Value, NULL after a message.
Value *casesenStatement();
Value *floatconstStatement();
void pragmaCasesen();
void pragmaFloatconst();

// Lowers the letters of a name while case doesn't count, as the lexer does.
void foldName(char *name);

// Which of the words and constants are added that stand in for those with capital letters while
// case doesn't count: a bit for each.
extern uint32_t foldedNames;

// Takes these words out of a table that is to last longer than they do.
void removeFoldedWords(KeywordEntry **table);

// Both switches as a program finds them. Called at every restart and at the end of the instance.
void resetVocabularySwitches();

}  // namespace zy
