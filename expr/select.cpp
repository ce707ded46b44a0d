// Reduction: operands are bound to an operator, its code is chosen by the tables of
// expr/selection.cpp, and what the tables can't say is checked: lvalues, assignments, dimensions.

#include "expr/select.h"

#include <algorithm>

#include "expr/guards.h"
#include "expr/nodeClasses.h"
#include "expr/nodes.h"
#include "expr/parser.h"
#include "expr/selection.h"
#include "expr/typeQueries.h"
#include "front/lexer.h"
#include "front/names.h"
#include "instance/report.h"

namespace zy {

namespace {

bool isVariableOfKind(const ExprNode *tree, int first, int second) {
    const TypeInfo *variable = variableOf(tree);
    return variable && (variable->kind == first || variable->kind == second);
}

// ---- Wrapping in casts -------------------------------------------------------------------------

// What a cast to the type of `target` has as its left operand. A shape that isn't part of the type
// is asked of the target itself when the cast runs.
ExprNode *castTargetOf(const ExprNode *target) {
    DataType type = treeType(target);
    const TypeInfo *variable = variableOf(target);
    bool isFixed = variable && variable->arrayLink && variable->arrayLink->shapeKind == SHAPE_FIXED;
    bool ownShape = variable && (variable->kind == KIND_P_C_ARRAY ||
                                 (isFixed && variable->kind != KIND_P_ARRAY));
    if (isArray(type) && !ownShape)
        return copyNode(target);
    TypeInfo model{};
    if (isArray(type)) {
        model.dataType = variable->dataType;
        model.kind = variable->kind;
        model.arrayLink = variable->arrayLink;
    } else {
        model.dataType = treeDataType(target);
    }
    model.structLink = structInfoOf(target);
    return newSymbolNode(newTypeOnly(&model));
}

ExprNode *castTo(const ExprNode *target, ExprNode *value) {
    return newOperatorNode(OP_CAST, castTargetOf(target), value);
}

// ---- Arithmetic, comparison, logic --------------------------------------------------------------

bool isPointerArithmetic(int code) { return isPointerSum(code) || code == OP_POINTER_DIFFERENCE; }

void refuseRestrictedArithmetic(int op) {
    switch (op) {
        case OP_PLUS: parseError("pointer addition is restricted in safe shell"); break;
        case OP_MINUS: parseError("pointer subtraction is restricted in safe shell"); break;
        case OP_ASSIGN_ADD: parseError("pointer addition += is restricted in safe shell"); break;
        default: parseError("pointer subtraction -= is restricted in safe shell"); break;
    }
}

bool areBothArrays(const ExprNode *node) {
    return isComputational(treeType(node->left)) && isComputational(treeType(node->right));
}

// Beside a pointer a literal 0 is the null pointer, and an array whose shape comes from an argument
// may be compared with one, to see whether there was an argument.
int comparedType(const ExprNode *operand, const ExprNode *other) {
    DataType otherType = arrayElementTypeOf(other);
    if (isPointer(otherType) && otherType != DT_P_ARRAY) {
        if (isZeroConstant(operand))
            return DT_NULL;
        if (isVariableOfKind(operand, KIND_ASSUMED_C_ARRAY, KIND_ASSUMED_ARRAY))
            return DT_P_VOID;
    }
    return arrayElementTypeOf(operand);
}

int selectFor(const ExprNode *node) {
    if (node->op == OP_EQUAL || node->op == OP_NOT_EQUAL)
        return selectBinary(node->op, comparedType(node->left, node->right),
                            comparedType(node->right, node->left));
    return selectBinary(node->op, arrayElementTypeOf(node->left), arrayElementTypeOf(node->right));
}

ExprNode *bindBinary(ExprNode *node) {
    int code = selectFor(node);
    if (code == NO_OPERATOR) {
        node->op = refuseOperands(node->op);
        return node;
    }
    if (isPointerArithmetic(code) && e_lang->restricted)
        refuseRestrictedArithmetic(node->op);
    node->op = areBothArrays(node) ? checkArrayOperands(node->left, node->right, code) : code;
    return node;
}

ExprNode *bindUnary(ExprNode *node) {
    int code = selectUnary(node->op, arrayElementTypeOf(node->left));
    node->op = code == NO_OPERATOR ? refuseOperands(node->op) : code;
    return node;
}

// .* and ./ need an array on the right, and ./ takes a number on the left.
ExprNode *bindElementwise(ExprNode *node) {
    bool isDivision = node->op == OP_ELEMENT_DIVIDE;
    bool scalarLeft = isDivision && isScalarNumeric(treeType(node->left));
    bool leftFits = scalarLeft || isComputational(treeType(node->left));
    bool rightFits = isComputational(treeType(node->right));
    if (!leftFits && isDivision)
        parseError(
            "1st operand for array operator './' is not computational array or scalar value");
    else if (!leftFits)
        parseError("1st operand for array operator '.*' is not computational array");
    if (!rightFits && isDivision)
        parseError("2nd operand for array operator './' is not computational array");
    else if (!rightFits)
        parseError("2nd operand for array operator '.*' is not computational array");
    if (scalarLeft)
        node->op = OP_SCALAR_DIVIDE_ARRAY;
    else if (leftFits && rightFits)
        node->op = checkArrayOperands(node->left, node->right, node->op);
    return node;
}

// ---- Pointers -----------------------------------------------------------------------------------

ExprNode *bindIndirection(ExprNode *node) {
    if (!isPointer(arrayElementTypeOf(node->left)))
        parseError("operand of indirection operator * is not a pointer");
    return node;
}

ExprNode *bindAddress(ExprNode *node) {
    const ExprNode *operand = node->left;
    if (!isArray(treeType(operand)) && !isLvalue(operand, false)) {
        parseError("operand of address operation & is not a valid lvalue");
        return node;
    }
    const TypeInfo *member =
        isOperator(operand) && isMember(operand->op) ? memberOf(operand) : nullptr;
    if (member && member->bitField)
        parseError("cannot take address of bit-field: %s", member->name ? member->name->text : "");
    return node;
}

// ---- Assignment ---------------------------------------------------------------------------------

ExprNode *bindIncrement(ExprNode *node) {
    bool isUp = node->op == OP_PREFIX_INCREMENT || node->op == OP_POSTFIX_INCREMENT;
    const char *text = isUp ? "++" : "--";
    DataType type = arrayElementTypeOf(node->left);
    bool pointer = isPointer(type) && treeType(node->left) != DT_CARRAY && type != DT_P_VOID;
    if (!isScalarNumeric(type) && !isComputational(type) && !pointer)
        parseError("invalid operand for operator %s", text);
    else if (!isLvalue(node->left, true))
        parseError("operand is not modifiable lvalue for operator %s", text);
    return node;
}

// Numbers are converted by the store itself. A cast in front of it would turn NaN and infinity into
// plain truncated numbers, before the store could give its warning and its value for them; the same
// number has to come out whether `int i = NaN` or `i = NaN` was written. A function's name is not
// cast either: the store takes its record, not an address. An array is stored element by element
// into one that is there, without a copy of its own, and a pointer to a C array takes an address.
bool storeConverts(const ExprNode *left, const ExprNode *right) {
    DataType target = treeType(left), source = treeType(right);
    if (isComputational(target))
        return isScalarNumeric(source) || isArray(source);
    if (target == DT_P_CARRAY)
        return isArray(source) || isPointer(source) || isZeroConstant(right);
    return (isScalarNumeric(target) && isScalarNumeric(source)) ||
           (target == DT_P_FUNCTION && source == DT_FUNCTION);
}

bool typesDiffer(const ExprNode *left, const ExprNode *right) {
    DataType type = treeType(left);
    return isArray(type) ? type != treeType(right) : treeDataType(left) != treeDataType(right);
}

bool needsCast(const ExprNode *left, const ExprNode *right) {
    DataType source = treeType(right);
    return source != DT_VOID && source != DT_NULL && typesDiffer(left, right) &&
           !storeConverts(left, right);
}

bool isStreval(const ExprNode *tree) { return isOperator(tree) && tree->op == OP_STREVAL; }

// Says why the left side can't be assigned to, unless that has been said.
bool isTarget(const ExprNode *left) {
    int answer = isLvalue(left, true);
    if (answer == LVALUE_NOT)
        parseError("invalid lvalue of assignment operation");
    return answer == LVALUE_YES || answer == LVALUE_UNDEFINED;
}

ExprNode *bindComma(ExprNode *node) {
    if (!node->right)
        parseError("invalid operands for comma operator ,");
    return node;
}

ExprNode *bindAssignment(ExprNode *node) {
    if (!isTarget(node->left))
        return node;
    if (!node->right) {
        parseError("invalid rvalue of assignment operation");
        return node;
    }
    if (isStreval(node->right))
        return node;
    if (atDeclaration())
        checkInitialiser(node->left, node->right);
    else
        checkAssignment(node->left, node->right);
    if (!errorFlag && needsCast(node->left, node->right))
        node->right = castTo(node->left, node->right);
    return node;
}

}  // namespace

int plainOperator(int op) {
    constexpr int plain[] = {OP_PLUS,      OP_MINUS, OP_STAR, OP_SLASH,      OP_PERCENT,
                             OP_AMPERSAND, OP_CARET, OP_BAR,  OP_LEFT_SHIFT, OP_RIGHT_SHIFT};
    return plain[op - OP_ASSIGN_ADD];
}

namespace {

// The type of what a compound assignment computes, before it is stored.
DataType compoundResult(const ExprNode *node) {
    DataType target = treeDataType(node->left);
    bool keepsTarget = node->op >= OP_ASSIGN_MODULO || !isScalarNumeric(target);
    if (keepsTarget)
        return target;
    return std::max(target, treeDataType(node->right));
}

ExprNode *bindCompound(ExprNode *node) {
    if (!isTarget(node->left))
        return node;
    int code = selectBinary(plainOperator(node->op), arrayElementTypeOf(node->left),
                            arrayElementTypeOf(node->right));
    bool storable = code != OP_POINTER_DIFFERENCE && treeType(node->left) != DT_CARRAY;
    if (code == NO_OPERATOR || !storable) {
        node->op = refuseOperands(node->op);
        return node;
    }
    if (isPointerSum(code) && e_lang->restricted)
        refuseRestrictedArithmetic(node->op);
    if (areBothArrays(node))
        checkArrayOperands(node->left, node->right, code);
    // Of a wider result the value of the expression is read back in the type of the target; an
    // array is that itself.
    bool isWider =
        !isArray(treeType(node->left)) && compoundResult(node) != treeDataType(node->left);
    return !errorFlag && isWider ? castTo(node->left, node) : node;
}

// ---- ?: and casts -------------------------------------------------------------------------------

void checkBranches(const ExprNode *first, const ExprNode *second) {
    DataType firstType = arrayElementTypeOf(first), secondType = arrayElementTypeOf(second);
    bool firstArray = isComputational(firstType), secondArray = isComputational(secondType);
    if (firstArray && secondArray) {
        checkSameShape(first, second, false);
    } else if ((firstArray && !isPointer(secondType)) || (secondArray && !isPointer(firstType))) {
        parseError("mix computational array with scalar in operands for ternary operation ?:");
        return;
    }
    bool zeroPointer = (isPointer(firstType) && isZeroConstant(second)) ||
                       (isPointer(secondType) && isZeroConstant(first));
    if (!zeroPointer)
        checkType(treeDataType(first), treeDataType(second));
}

ExprNode *bindConditional(ExprNode *node) {
    DataType condition = arrayElementTypeOf(node->left);
    if (!isScalarNumeric(condition) && !isPointer(condition))
        parseError("invalid operand for ternary operation ?:");
    if (node->right && node->third)
        checkBranches(node->right, node->third);
    return node;
}

ExprNode *bindCast(ExprNode *node) {
    checkCast(node, node->right);
    return node;
}

// ---- Dispatch -----------------------------------------------------------------------------------

struct Binding {
    int first, last;
    ExprNode *(*bind)(ExprNode *node);
};
constexpr Binding bindings[] = {
    {OP_PLUS, OP_SLASH, bindBinary},
    {OP_EXCLAMATION, OP_EXCLAMATION, bindUnary},
    {OP_PERCENT, OP_RIGHT_SHIFT, bindBinary},
    {OP_TILDE, OP_UNARY_MINUS, bindUnary},
    {OP_ELEMENT_MULTIPLY, OP_ELEMENT_DIVIDE, bindElementwise},
    {OP_INDIRECTION, OP_INDIRECTION, bindIndirection},
    {OP_CAST, OP_CAST, bindCast},
    {OP_COMMA, OP_COMMA, bindComma},
    {OP_ASSIGN, OP_ASSIGN, bindAssignment},
    {OP_ASSIGN_ADD, OP_ASSIGN_SHIFT_RIGHT, bindCompound},
    {OP_PREFIX_INCREMENT, OP_POSTFIX_DECREMENT, bindIncrement},
    {OP_CONDITIONAL, OP_CONDITIONAL, bindConditional},
    {OP_ADDRESS, OP_ADDRESS, bindAddress},
};

bool isUnary(int op) {
    return op == OP_UNARY_MINUS || op == OP_EXCLAMATION || op == OP_TILDE || isIncrement(op) ||
           op == OP_INDIRECTION || op == OP_ADDRESS;
}

ExprNode *take(ExprNode *&list) {
    ExprNode *node = list;
    if (node) {
        list = node->next;
        node->next = nullptr;
    }
    return node;
}

// A binary operator that got one operand has it on the left.
void takeOperands(ExprNode *node, ExprNode *&operands) {
    if (node->op == OP_CAST) {
        node->right = take(operands);
        return;
    }
    ExprNode *last = take(operands);
    ExprNode *first = operandCount(node->op) == 2 ? take(operands) : nullptr;
    node->left = first ? first : last;
    node->right = first ? last : nullptr;
}

bool lacksOperands(const ExprNode *node) {
    bool needsRight = node->op == OP_CAST || operandCount(node->op) == 2;
    return !node->left || (needsRight && !node->right);
}

// Reads `:` and what stands behind it.
void readElse(ExprNode *node) {
    nextToken();
    if (tokenClass != TK_CHAR || tokenValue.character != ':') {
        pushedBack = true;
        if (!errorFlag)
            parseError("missing ':' in ternary operation ?:");
        return;
    }
    node->third = parseConditionalBranch();
}

}  // namespace

int operandCount(int code) { return isUnary(code) || code == OP_CAST ? 1 : 2; }

ExprNode *bindOperator(ExprNode *node) {
    // What was not understood has been reported; asking for its type would report it again.
    if (errorFlag && lacksOperands(node))
        return node;
    for (const Binding &row : bindings)
        if (inRange(node->op, row.first, row.last))
            return row.bind(node);
    return node;
}

void reduceOperator(ExprNode *&operandList, ExprNode *&operatorList, int &depth) {
    ExprNode *node = take(operatorList);
    if (!node)
        return;
    depth--;
    takeOperands(node, operandList);
    if (node->op == OP_CONDITIONAL)
        readElse(node);
    ExprNode *bound = bindOperator(node);
    bound->next = operandList;
    operandList = bound;
}

}  // namespace zy
