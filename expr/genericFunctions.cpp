// The mathematical functions are words with a meaning for each type of number. When a call has been
// read, its word is replaced by the operator for the types of its arguments; nothing is left to be
// chosen at run time.

#include <algorithm>

#include "expr/guards.h"
#include "expr/operators.h"
#include "expr/parser.h"
#include "expr/typeQueries.h"
#include "instance/report.h"

namespace zy {

namespace {

constexpr int FIRST_REFUSED = 17;  // data type: from here on nothing is a number

// The kinds of numbers, as columns of the table.
enum Column { ARRAY, WIDE_DUAL, DUAL, WIDE_COMPLEX, COMPLEX, REAL, SINGLE, NO_COLUMN };

struct GenericRow {
    int word;
    int16_t codes[NO_COLUMN];  // 0: none
};
constexpr GenericRow genericRows[] = {
    {OP_GENERIC_SQRT, {624, 455, 380, 413, 338, 297, 258}},
    {OP_GENERIC_POW, {644, 456, 381, 415, 340, 298, 259}},
    {OP_GENERIC_LOG, {625, 457, 382, 417, 342, 299, 260}},
    {OP_GENERIC_LOG10, {626, 458, 383, 419, 344, 300, 261}},
    {OP_GENERIC_EXP, {627, 459, 384, 421, 346, 301, 262}},
    {OP_GENERIC_SIN, {609, 460, 385, 422, 347, 304, 265}},
    {OP_GENERIC_COS, {610, 461, 386, 423, 348, 306, 266}},
    {OP_GENERIC_TAN, {611, 462, 387, 424, 349, 307, 267}},
    {OP_GENERIC_ASIN, {612, 463, 388, 425, 350, 305, 268}},
    {OP_GENERIC_ACOS, {613, 464, 389, 427, 352, 308, 269}},
    {OP_GENERIC_ATAN, {614, 465, 390, 429, 354, 309, 270}},
    {OP_GENERIC_ATAN2, {615, 466, 391, 431, 356, 310, 271}},
    {OP_GENERIC_SINH, {616, 467, 392, 433, 358, 311, 272}},
    {OP_GENERIC_COSH, {617, 468, 393, 434, 359, 312, 273}},
    {OP_GENERIC_TANH, {618, 469, 394, 435, 360, 313, 274}},
    {OP_GENERIC_ASINH, {619, 470, 395, 436, 361, 314, 275}},
    {OP_GENERIC_ACOSH, {620, 471, 396, 438, 363, 315, 276}},
    {OP_GENERIC_ATANH, {621, 472, 397, 440, 365, 316, 277}},
    {OP_GENERIC_CEIL, {622, 473, 398, 442, 367, 317, 278}},
    {OP_GENERIC_FLOOR, {623, 474, 399, 443, 368, 318, 279}},
    {OP_GENERIC_FMOD, {0, 475, 400, 444, 369, 319, 280}},
    {OP_GENERIC_LDEXP, {0, 476, 401, 445, 370, 320, 281}},
    {OP_GENERIC_FREXP, {0, 477, 402, 446, 371, 321, 282}},
    {OP_GENERIC_MODF, {0, 478, 403, 447, 372, 322, 283}},
    {OP_GENERIC_FABS, {605, 325, 287, 325, 287, 296, 296}},
    {OP_GENERIC_REAL, {628, 326, 288, 326, 288, 326, 288}},
    {OP_GENERIC_IMAG, {629, 327, 289, 327, 289, 327, 289}},
    {OP_GENERIC_CONJ, {630, 454, 379, 410, 335, 335, 335}},
};

// The forms with arguments that name the branch of a function of a complex variable.
struct BranchRow {
    int word;
    int branches;  // the most
    int16_t complex, wideComplex;
};
constexpr BranchRow branchRows[] = {
    {OP_GENERIC_SQRT, 1, 339, 414},  {OP_GENERIC_LOG, 1, 343, 418},
    {OP_GENERIC_LOG10, 1, 345, 420}, {OP_GENERIC_ATAN, 1, 355, 430},
    {OP_GENERIC_ATANH, 1, 366, 441}, {OP_GENERIC_ASIN, 2, 351, 426},
    {OP_GENERIC_ACOS, 2, 353, 428},  {OP_GENERIC_ASINH, 2, 362, 437},
    {OP_GENERIC_ACOSH, 2, 364, 439}, {OP_GENERIC_POW, 1, 341, 341},
    {OP_GENERIC_ATAN2, 1, 357, 357},
};

// ---- Classes of arguments -----------------------------------------------------------------------

bool isArrayClass(int type) { return type == DT_ARRAY || type == DT_P_ARRAY; }

// An array written as one of C counts as an array.
int classOf(const ExprNode *argument) {
    return treeType(argument) == DT_CARRAY ? static_cast<int>(DT_ARRAY)
                                           : static_cast<int>(arrayElementTypeOf(argument));
}

Column columnOf(int type) {
    if (isArrayClass(type))
        return ARRAY;
    switch (type) {
        case DT_FLOAT: return SINGLE;
        case DT_COMPLEX: return COMPLEX;
        case DT_DCOMPLEX: return WIDE_COMPLEX;
        case DT_DUAL: return DUAL;
        case DT_DDUAL: return WIDE_DUAL;
        default: return type <= DT_LDOUBLE ? REAL : NO_COLUMN;
    }
}

int codeOf(int word, Column column) {
    for (const GenericRow &row : genericRows)
        if (row.word == word && column != NO_COLUMN)
            return row.codes[column];
    return 0;
}

bool takesTwo(int word) {
    return word == OP_GENERIC_POW || word == OP_GENERIC_ATAN2 || word == OP_GENERIC_FMOD;
}

// ---- Rows with rules of their own ---------------------------------------------------------------

int selectTwo(int word, const ExprNode *node) {
    int left = classOf(node->left), right = classOf(node->right);
    bool leftIsArray = isArrayClass(left), rightIsArray = isArrayClass(right);
    if (leftIsArray && rightIsArray && word != OP_GENERIC_FMOD)
        return checkArrayOperands(node->left, node->right,
                                  word == OP_GENERIC_POW ? OP_ARRAYS_POWER : OP_ATAN2_ARRAY);
    if (leftIsArray && isScalarNumeric(right) && word == OP_GENERIC_POW)
        return checkArrayOperands(node->left, node->right, OP_ARRAY_POWER_SCALAR);
    if (leftIsArray || rightIsArray)
        return 0;
    return codeOf(word, columnOf(std::max(left, right)));
}

// The type of what frexp and modf write through their second argument; of ldexp the second's own.
int secondType(int word, Column column, int type) {
    if (word == OP_GENERIC_LDEXP)
        return column == REAL || column == SINGLE ? static_cast<int>(DT_INT) : type;
    if (column == REAL || column == SINGLE) {
        if (word == OP_GENERIC_FREXP)
            return DT_P_INT;
        return column == SINGLE ? DT_P_FLOAT : DT_P_DOUBLE;
    }
    return pointerTo(type);
}

int selectWithSecond(int word, ExprNode *node) {
    int type = classOf(node->left);
    Column column = columnOf(type);
    if (column != NO_COLUMN && column != ARRAY)
        convertTree(node->right, secondType(word, column, type));
    return codeOf(word, column);
}

int selectAbs(const ExprNode *node) {
    int type = classOf(node->left);
    if (type <= DT_ULLONG)
        return OP_ABS_INT;
    return type == DT_FLOAT ? 257 : codeOf(OP_GENERIC_FABS, columnOf(type));
}

int selectExtreme(int word, const ExprNode *node) {
    bool isMin = word == OP_GENERIC_MIN;
    int type = 0;
    for (const ExprNode *cell = node->left; cell; cell = cell->next) {
        DataType own = treeType(cell->item);
        type = std::max<int>(type, isArray(own) ? elementTypeOf(cell->item) : own);
    }
    if (type <= DT_ULLONG)
        return isMin ? OP_MIN_INT : OP_MAX_INT;
    if (type == DT_FLOAT)
        return isMin ? 263 : 264;
    if (type <= DT_LDOUBLE)
        return isMin ? 302 : 303;
    parseError(isMin ? "invalid argument for function min()"
                     : "invalid argument for function max()");
    return 0;
}

int selectPolar(const ExprNode *node) {
    int left = classOf(node->left), right = node->right ? classOf(node->right) : 0;
    auto isWide = [](int type) {
        return type == DT_DOUBLE || type == DT_DCOMPLEX || type == DT_DDUAL;
    };
    if (!node->right)
        return left > DT_COMPLEX && left != DT_DCOMPLEX ? 0 : isWide(left) ? 411 : 336;
    if (isWide(left) || isWide(right))
        return 412;
    if (left < DT_DDUAL && right < DT_DDUAL)
        return 337;
    parseError("invalid data type for function polar( , )");
    return 0;
}

int selectAlias(ExprNode *node) {
    int count = 0;
    for (const ExprNode *cell = node->left; cell; cell = cell->next) {
        count++;
        convertTree(cell->item, DT_STRING);
    }
    constexpr int codes[] = {173, 563, 172};
    if (count <= 2)
        return codes[count];
    parseError("more than 2 arguments");
    return 0;
}

// complex(x, y) and dual(x, y): wide if a part is.
int selectConstructor(int word, const ExprNode *node) {
    auto isWide = [](const ExprNode *part) {
        int type = classOf(part);
        return type == DT_DOUBLE || type == DT_DCOMPLEX || type == DT_DDUAL;
    };
    bool wide = isWide(node->left) || isWide(node->right);
    if (word == OP_TO_COMPLEX)
        return wide ? OP_TO_DCOMPLEX : OP_TO_COMPLEX;
    return wide ? OP_TO_DDUAL : OP_TO_DUAL;
}

// ---- Branches -----------------------------------------------------------------------------------

const BranchRow *branchRowOf(const ExprNode *node) {
    bool two = takesTwo(node->op);
    if (!(two ? node->third : node->right))
        return nullptr;
    for (const BranchRow &row : branchRows)
        if (row.word == node->op)
            return &row;
    return nullptr;
}

int selectBranch(const BranchRow &row, ExprNode *node) {
    int type = classOf(node->left);
    if (type > DT_COMPLEX && type != DT_DCOMPLEX) {
        parseError("invalid data type for multi-branch complex function");
        return 0;
    }
    bool isWide = type == DT_DOUBLE || type == DT_DCOMPLEX;
    convertTree(node->left, DT_COMPLEX);
    if (takesTwo(node->op)) {
        convertTree(node->right, DT_COMPLEX);
        convertTree(node->third, DT_INT);
    } else {
        convertTree(node->right, DT_INT);
        if (node->third)
            convertTree(node->third, DT_INT);
    }
    return isWide ? row.wideComplex : row.complex;
}

int select(ExprNode *node) {
    int word = node->op;
    if (const BranchRow *row = branchRowOf(node))
        return selectBranch(*row, node);
    switch (word) {
        case OP_GENERIC_POW:
        case OP_GENERIC_ATAN2:
        case OP_GENERIC_FMOD: return selectTwo(word, node);
        case OP_GENERIC_LDEXP:
        case OP_GENERIC_FREXP:
        case OP_GENERIC_MODF: return selectWithSecond(word, node);
        case OP_GENERIC_ABS: return selectAbs(node);
        case OP_GENERIC_CONJ:
            return classOf(node->left) == DT_DOUBLE ? codeOf(word, WIDE_COMPLEX)
                                                    : codeOf(word, columnOf(classOf(node->left)));
        case OP_GENERIC_MIN:
        case OP_GENERIC_MAX: return selectExtreme(word, node);
        case OP_GENERIC_POLAR: return selectPolar(node);
        case OP_GENERIC_ALIAS: return selectAlias(node);
        case OP_TO_COMPLEX:
        case OP_TO_DUAL: return selectConstructor(word, node);
        default: return codeOf(word, columnOf(classOf(node->left)));
    }
}

bool takesList(int word) {
    return word == OP_GENERIC_MIN || word == OP_GENERIC_MAX || word == OP_GENERIC_ALIAS;
}

}  // namespace

ExprNode *resolveGeneric(ExprNode *node) {
    int word = node->op;
    bool isConstructor = word == OP_TO_COMPLEX || word == OP_TO_DUAL;
    int type = takesList(word) || isConstructor ? 0 : classOf(node->left);
    if (word == OP_GENERIC_IMAG && (type == DT_DUAL || type == DT_DDUAL))
        parseWarning("change imag() to dual()");
    if (int code = select(node))
        node->op = code;
    else
        errorFlag = 1;
    if (type >= FIRST_REFUSED && !isArrayClass(type))
        parseError("invalid data type for internally overloaded function ");
    return node;
}

}  // namespace zy
