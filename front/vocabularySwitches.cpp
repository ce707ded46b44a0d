#include "front/vocabularySwitches.h"

#include <cfloat>
#include <climits>
#include <iterator>
#include <limits>

#include "expr/constants.h"
#include "front/lexer.h"
#include "front/tokens.h"
#include "instance/report.h"
#include "numeric/specialValues.h"

namespace zy {

namespace {

enum class Form { STATEMENT, PRAGMA };

// ---- Names without capital letters ------------------------------------------------------------

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

// The statement adds the first alone.
constexpr const char *foldedWords[] = {"file", "_file"};

// The symbol that an earlier turn of the switch has made; NULL if there was none, or if the script
// has removed it.
TypeInfo *knownSymbol(const NameEntry *name) {
    for (TypeInfo *symbol = systemSymbols; symbol; symbol = symbol->next)
        if (symbol->name == name && symbol->dataType == DT_CONSTANT)
            return symbol;
    return nullptr;
}

// Binds the name; false for one that the script has declared, which stays the script's.
bool bindFolded(const PredefinedConstant &constant) {
    NameEntry *name = lookupName(constant.name);
    if (name && name->symbol)
        return false;
    TypeInfo *known = name ? knownSymbol(name) : nullptr;
    if (known)
        name->symbol = known;
    return known || addPredefinedConstant(constant);
}

// Only the name is cleared: expressions that are parsed already hold the constant.
void unbindFolded(const PredefinedConstant &constant) {
    NameEntry *name = lookupName(constant.name);
    if (name && name->symbol && name->symbol == knownSymbol(name))
        name->symbol = nullptr;
}

bool addFoldedWord(const char *word) {
    return !keywordNamed(word) && addKeyword(KC_TYPE, word, DT_FILE);
}

constexpr uint32_t bitOf(size_t row) { return uint32_t{1} << row; }
constexpr size_t FIRST_CONSTANT = std::size(foldedWords);
static_assert(FIRST_CONSTANT + std::size(foldedConstants) <= 32);

void addFoldedNames(Form form) {
    bool isPragma = form == Form::PRAGMA;
    for (size_t i = 0; i < FIRST_CONSTANT; i++)
        if ((isPragma || i == 0) && addFoldedWord(foldedWords[i]))
            foldedNames |= bitOf(i);
    for (size_t i = 0; i < std::size(foldedConstants); i++)
        if ((!isPragma || foldedConstants[i].inPragma) && bindFolded(foldedConstants[i].constant))
            foldedNames |= bitOf(FIRST_CONSTANT + i);
}

// Takes back what was added, by whatever form.
void removeFoldedNames() {
    removeFoldedWords(keywordTable);
    for (size_t i = 0; i < std::size(foldedConstants); i++)
        if (foldedNames & bitOf(FIRST_CONSTANT + i))
            unbindFolded(foldedConstants[i].constant);
    foldedNames = 0;
}

void setCaseSensitive(bool sensitive, Form form) {
    if (sensitive == (caseSensitive != 0))
        return;
    caseSensitive = sensitive;
    if (sensitive)
        removeFoldedNames();
    else
        addFoldedNames(form);
}

// ---- Arguments --------------------------------------------------------------------------------

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
    setCaseSensitive(number != 0, Form::STATEMENT);
    return operandOfSwitch(number);
}

void pragmaCasesen() {
    if (int number; readCasesen(true, number))
        setCaseSensitive(number != 0, Form::PRAGMA);
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
    for (size_t i = 0; i < FIRST_CONSTANT; i++)
        if (foldedNames & bitOf(i))
            removeKeyword(foldedWords[i], nameHash(foldedWords[i]), table);
}

void resetVocabularySwitches() {
    removeFoldedNames();
    caseSensitive = 1;
    floatConstant = 0;
}

}  // namespace zy
