#include "front/vocabularySwitches.h"

#include <cfloat>
#include <climits>
#include <initializer_list>
#include <limits>

#include "expr/constants.h"
#include "front/lexer.h"
#include "front/tokens.h"
#include "instance/report.h"
#include "numeric/specialValues.h"

namespace zy {

namespace {

// ---- Names without capital letters
// -----------------------------------------------------------------

struct FoldedConstant {
    PredefinedConstant constant;
    bool inPragma;
};

constexpr FoldedConstant foldedConstants[] = {
    {{"eof", DT_INT, {.i = -1}}, false},
    {{"zero", DT_FLOAT, {.f = 0.0F}}, false},
    {{"nzero", DT_FLOAT, {.f = -0.0F}}, false},
    {{"null", DT_NULL, {.p = nullptr}}, true},
    {{"char_min", DT_INT, {.i = SCHAR_MIN}}, false},
    {{"char_max", DT_INT, {.i = SCHAR_MAX}}, false},
    {{"int_min", DT_INT, {.i = INT_MIN}}, false},
    {{"int_max", DT_INT, {.i = INT_MAX}}, false},
    {{"flt_minimum", DT_FLOAT, {.f = std::numeric_limits<float>::denorm_min()}}, false},
    {{"flt_min", DT_FLOAT, {.f = FLT_MIN}}, false},
    {{"flt_epsilon", DT_FLOAT, {.f = FLT_EPSILON}}, false},
    {{"flt_max", DT_FLOAT, {.f = FLT_MAX}}, false},
    {{"dbl_minimum", DT_DOUBLE, {.d = std::numeric_limits<double>::denorm_min()}}, false},
    {{"dbl_min", DT_DOUBLE, {.d = DBL_MIN}}, false},
    {{"dbl_epsilon", DT_DOUBLE, {.d = DBL_EPSILON}}, false},
    {{"dbl_max", DT_DOUBLE, {.d = DBL_MAX}}, false},
    {{"nan", DT_FLOAT, {.f = canonicalNaN}}, true},
    {{"inf", DT_FLOAT, {.f = canonicalInf}}, true},
    {{"complexzero", DT_DCOMPLEX, {.d = 0}, {.d = 0}}, true},
    {{"complexnan", DT_DCOMPLEX, {.d = wideNaN}, {.d = wideNaN}}, true},
    {{"complexinf", DT_DCOMPLEX, {.d = wideInf}, {.d = wideInf}}, true},
    {{"dualzero", DT_DUAL, {.pair = {0, 0}}}, true},
    {{"dualnan", DT_DUAL, {.pair = {canonicalNaN, canonicalNaN}}}, true},
    {{"dualinf", DT_DUAL, {.pair = {canonicalInf, canonicalInf}}}, true},
};

constexpr const char *foldedWords[] = {"file", "_file"};

// The symbol that an earlier turn of the switch has made; NULL if there was none, or if the script
// has removed it.
TypeInfo *knownSymbol(const NameEntry *name) {
    for (TypeInfo *symbol = systemSymbols; symbol; symbol = symbol->next)
        if (symbol->name == name && symbol->dataType == DT_CONSTANT)
            return symbol;
    return nullptr;
}

// A name that the script has declared stays the script's.
void bindFolded(const PredefinedConstant &constant) {
    NameEntry *name = lookupName(constant.name);
    if (name && name->symbol)
        return;
    TypeInfo *known = name ? knownSymbol(name) : nullptr;
    if (known)
        name->symbol = known;
    else
        addPredefinedConstant(constant);
}

// Only the name is cleared: expressions that are parsed already hold the constant.
void unbindFolded(const PredefinedConstant &constant) {
    NameEntry *name = lookupName(constant.name);
    if (name && name->symbol && name->symbol == knownSymbol(name))
        name->symbol = nullptr;
}

void addFoldedWord(const char *word) {
    if (!keywordNamed(word))
        addKeyword(KC_TYPE, word, DT_FILE);
}

void addFoldedNames(FoldedNames form) {
    bool pragma = form == FoldedNames::OF_PRAGMA;
    addFoldedWord("file");
    if (pragma)
        addFoldedWord("_file");
    for (const FoldedConstant &row : foldedConstants)
        if (row.inPragma || !pragma)
            bindFolded(row.constant);
    foldedNames = form;
}

void removeFoldedNames() {
    if (foldedNames == FoldedNames::NONE)
        return;
    removeFoldedWords(keywordTable);
    for (const FoldedConstant &row : foldedConstants)
        unbindFolded(row.constant);
    foldedNames = FoldedNames::NONE;
}

void setCaseSensitive(bool sensitive, FoldedNames form) {
    if (sensitive == (caseSensitive != 0))
        return;
    caseSensitive = sensitive;
    if (sensitive)
        removeFoldedNames();
    else
        addFoldedNames(form);
}

// ---- Arguments
// -------------------------------------------------------------------------------------

// The current token as an int: a numeric literal, or the name of a scalar constant.
bool tokenToInt(int &number) {
    if (tokenClass == TK_CONSTANT) {
        Value *constant = takeConstant();
        bool scalar = constantToInt(constant, number);
        deleteValue(constant);
        return scalar;
    }
    if (tokenClass != TK_IDENTIFIER)
        return false;
    const Symbol *symbol = lookupSymbolParse(tokenValue.name, nullptr, nullptr);
    return symbol && symbol->dataType == DT_CONSTANT && constantToInt(symbol->constant, number);
}

// Reads `(`, the argument, `)`; a statement may do without the parentheses. False after a message.
bool readArgument(bool isPragma, const char *complaint, int &number) {
    bool parenthesis = expectChar('(', isPragma);
    if (isPragma && !parenthesis)
        return false;
    nextToken();
    if (!tokenToInt(number)) {
        parseError("%s", complaint);
        return false;
    }
    return !parenthesis || expectChar(')', true);
}

bool readCasesen(bool isPragma, int &number) {
    return readArgument(
        isPragma, "the argument of casesen() cannot be converted to an integer constant", number);
}

bool readFloatconst(bool isPragma, int &number) {
    return readArgument(isPragma,
                        "the argument of floatconst() cannot be converted to an integer constant",
                        number);
}

Value *operandOfSwitch(int number) {
    Value *operand = newZeroValue(DT_INT);
    if (operand)
        operand->payload.i = number;
    return operand;
}

}  // namespace

Value *casesenStatement() {
    int number;
    if (!readCasesen(false, number))
        return nullptr;
    setCaseSensitive(number != 0, FoldedNames::OF_STATEMENT);
    return operandOfSwitch(number);
}

void pragmaCasesen() {
    if (int number; readCasesen(true, number))
        setCaseSensitive(number != 0, FoldedNames::OF_PRAGMA);
}

Value *floatconstStatement() {
    int number;
    if (!readFloatconst(false, number))
        return nullptr;
    floatConstant = number != 0;
    return operandOfSwitch(number);
}

void pragmaFloatconst() {
    if (int number; readFloatconst(true, number))
        floatConstant = number != 0;
}

void foldName(char *name) {
    if (caseSensitive)
        return;
    for (; *name; name++)
        if (*name >= 'A' && *name <= 'Z')
            *name = static_cast<char>(*name - 'A' + 'a');
}

void removeFoldedWords(KeywordEntry **table) {
    if (foldedNames == FoldedNames::NONE)
        return;
    for (const char *word : foldedWords)
        removeKeyword(word, nameHash(word), table);
}

void resetVocabularySwitches() {
    removeFoldedNames();
    caseSensitive = 1;
    floatConstant = 0;
}

}  // namespace zy
