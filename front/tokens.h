// record header, the chief header of the source front end: the numeric vocabulary. Every word and
// operator that the language treats specially is a row of keywordTable, from front/keywords.inc.
// A row's code means something only together with its class: statement kind, data type or
// specifier, operator. A code is never renumbered between source text and execution.
#pragma once

#include "front/names.h"

namespace zy {

struct ExprNode;
using Value = ExprNode;

enum TokenClass : int {
    TK_KEYWORD = 0,     // currentKeyword holds a copy of the row
    TK_IDENTIFIER = 1,  // tokenValue.name
    TK_CONSTANT = 2,    // tokenValue.constant, a new Value
    TK_CHAR = 3,        // tokenValue.character
};

enum KeywordClass : int32_t {
    KC_STATEMENT = 0,
    KC_CLAUSE = 1,
    KC_TYPE = 2,
    KC_OPERATOR = 3,
    KC_CONSOLE = 4,  // words that exist only while the console reads a line
};

struct KeywordEntry {
    KeywordEntry *next;
    uint16_t hash;
    uint8_t soft;      // a keyword in call position only
    uint8_t ownsName;  // a word of the initial vocabulary does not
    char *name;
    KeywordClass keywordClass;
    int32_t code;
};

extern KeywordEntry *keywordTable[BUCKET_COUNT];
extern KeywordEntry *keywordSnapshot[BUCKET_COUNT];
// The rows of =, << and >>; NULL while a script has none. The expression parser gives the shifts
// another class for the time of a stream form.
extern KeywordEntry *assignKeyword, *shiftLeftKeyword, *shiftRightKeyword;

void initKeywords();
void releaseKeywords();
KeywordEntry *addKeyword(KeywordClass keywordClass, const char *name);
KeywordEntry *addKeyword(KeywordClass keywordClass, const char *name, int code);
// The lexer's look-up at linePos, where the word of that length stands; steps over it. NULL: no
// keyword here.
KeywordEntry *findKeyword(const char *text, uint16_t hash, int length);
// The row with exactly this name, wherever it stands; NULL if there is none.
KeywordEntry *keywordNamed(const char *name, KeywordEntry *const *table = keywordTable);
int removeKeyword(const char *name, uint16_t hash, KeywordEntry **table);  // the newest row; 0, -1
// Takes the newest row of the name out of the language, for this program and all that follow.
void withdrawKeyword(const char *name);
void saveKeywords();
void restoreKeywords();
void hideRestrictedKeywords();
void showRestrictedKeywords();

// A function of the script takes the place of the built-in of that name until restoreKeywords():
// its soft rows leave the table. False if the name is no soft word.
bool shadowKeyword(const char *name);
// Whether the statement being parsed is a declaration: stmt/parseStack has it.
bool atDeclaration();

// zykey, addkey, remkey. 0, or -1 after a message. The modes are statement kinds.
constexpr int MODE_ZYKEY = 35;
constexpr int MODE_ADDKEY = 36;
int changeKeyword(int mode, Value *newName, Value *oldName);
int dropKeyword(Value *name);

}  // namespace zy
