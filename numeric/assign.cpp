#include "numeric/assign.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "decl/funcInfo.h"
#include "decl/structInfo.h"
#include "expr/nodeClasses.h"
#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/readers.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/arrayStorage.h"
#include "numeric/arrayValue.h"
#include "numeric/assignMember.h"
#include "numeric/assignParts.h"
#include "numeric/assignSource.h"
#include "numeric/convert.h"
#include "numeric/initList.h"
#include "numeric/shape.h"
#include "numeric/subscripts.h"
#include "startup/systemSlots.h"

namespace zy {

// ---- Integers: special values have a store of their own -----------------------------------------

namespace {

// One integer type as a target. The texts are those of a variable and of an array element.
struct IntegerTarget {
    const char *variableText;
    const char *elementText;
    int64_t variableNaN, elementNaN;
    int64_t infinity, minusInfinity;
    bool hasInfinity;
};

constexpr int64_t INTEGER_NAN = 0x7FFFFFFF;

constexpr IntegerTarget integerTargets[] = {
    {"assign NaN to a char variable. ", "assign NaN to a char variable. ", 127, 127, 127, -128,
     true},
    {"assign NaN to a unsigned char variable. ", "assign NaN to an unsigned  char variable. ", 127,
     255, 255, 0, true},
    {"assign NaN to a short variable. ", "assign NaN to a short variable. ", -1, 0, 0, 0, false},
    {"assign NaN to an unsigned short variable. ", "assign NaN to an unsigned short variable. ",
     65535, 0, 0, 0, false},
    {"assign NaN to an integer variable. ", "assign NaN to an int variable. ", INTEGER_NAN,
     INT32_MIN, 0, 0, false},
    {"assign NaN to an unsigned int variable. ", "assign NaN to an unsigned  int variable. ",
     INTEGER_NAN, 0, 0, 0, false},
    {"assign NaN to a long long int variable. ", "assign NaN to a long int variable. ", INTEGER_NAN,
     INT64_MIN, 0, 0, false},
    {"assign NaN to an unsigned long long int variable. ",
     "assign NaN to an unsigned  long int variable. ", INTEGER_NAN, INT64_MIN, 0, 0, false},
};

// The first part of a real or complex value; a NaN of other types doesn't exist.
double firstPart(const Value *value) {
    switch (value->type) {
        case DT_FLOAT: return value->payload.f;
        case DT_DOUBLE: return value->payload.d;
        case DT_COMPLEX:
        case DT_DUAL: return value->payload.pair[0];
        case DT_DCOMPLEX:
        case DT_DDUAL: return value->payload.d;
        default: return 0;
    }
}

bool is64Bit(int type) { return type == DT_LLONG || type == DT_ULLONG; }

// What an integer target of that type gets of an ordinary number.
int64_t truncated(int target, const Value *value) {
    if (is64Bit(target) || is64Bit(static_cast<int>(value->type)))
        return target == DT_ULLONG ? static_cast<int64_t>(readUnsigned64(value))
                                   : readSigned64(value);
    bool isSigned = target == DT_CHAR || target == DT_SHORT || target == DT_INT;
    double number = readDouble(value);
    return isSigned ? truncateToInt32(number) : truncateToInt64(number);
}

int64_t integerFor(int type, const Value *value, StorePlace place) {
    const IntegerTarget &target = integerTargets[type];
    double first = firstPart(value);
    if (std::isnan(first)) {
        bool isVariable = place == StorePlace::VARIABLE;
        runWarning("%s", isVariable ? target.variableText : target.elementText);
        return isVariable ? target.variableNaN : target.elementNaN;
    }
    if (std::isinf(first) && target.hasInfinity)
        return first > 0 ? target.infinity : target.minusInfinity;
    return truncated(type, value);
}

void putInteger(void *address, int type, int64_t number) {
    switch (type) {
        case DT_CHAR:
        case DT_UCHAR: *static_cast<uint8_t *>(address) = static_cast<uint8_t>(number); break;
        case DT_SHORT:
        case DT_USHORT: {
            auto bits = static_cast<uint16_t>(number);
            memcpy(address, &bits, sizeof bits);
            break;
        }
        case DT_INT:
        case DT_UINT: {
            auto bits = static_cast<uint32_t>(number);
            memcpy(address, &bits, sizeof bits);
            break;
        }
        default: memcpy(address, &number, sizeof number);
    }
}

// ---- Other scalars ------------------------------------------------------------------------------

bool isPair(int type) {
    return type == DT_COMPLEX || type == DT_DUAL || type == DT_DCOMPLEX || type == DT_DDUAL;
}

// A pair that reads as -0.0 is a plain zero.
double realFor(const Value *value) {
    double number = readDouble(value);
    return number == 0 && isPair(static_cast<int>(value->type)) ? 0.0 : number;
}

const char *textOf(const Value *value) {
    bool isText = value->type == DT_STRING || isPointer(static_cast<int>(value->type));
    return isText ? value->payload.text : nullptr;
}

void putPointer(void *address, const void *pointer) { memcpy(address, &pointer, sizeof pointer); }

// The old text is released; the new one is a copy.
void putText(void *address, const Value *value) {
    char *old;
    memcpy(&old, address, sizeof old);
    putPointer(address, copyString(textOf(value)));
    free(old);
}

// A pointer owns nothing, so its copy of a text stays for as long as the program is there.
const void *pointerFor(const Value *value) {
    if (value->type == DT_STRING)
        return keepText(copyString(value->payload.text));
    if (isPointer(static_cast<int>(value->type)) || isArrayLike(static_cast<int>(value->type)))
        return pointerOf(value);
    return reinterpret_cast<const void *>(static_cast<uintptr_t>(readUnsigned64(value)));
}

template <class Pair>
void putPair(void *address, Pair pair) {
    memcpy(address, &pair, sizeof pair);
}

}  // namespace

bool storeScalar(void *address, int type, const Value *value, StorePlace place) {
    if (type >= 0 && isIntegral(type)) {
        putInteger(address, type, integerFor(type, value, place));
        return true;
    }
    switch (type) {
        case DT_FLOAT: {
            auto number = static_cast<float>(realFor(value));
            memcpy(address, &number, sizeof number);
            return true;
        }
        case DT_DOUBLE: {
            double number = realFor(value);
            memcpy(address, &number, sizeof number);
            return true;
        }
        case DT_COMPLEX:
        case DT_DUAL: putPair(address, readComplex(value)); return true;
        case DT_DCOMPLEX:
        case DT_DDUAL: putPair(address, readDoubleComplex(value)); return true;
        case DT_STRING: putText(address, value); return true;
        default: break;
    }
    if (!isPointer(type) || type == DT_CARRAY || type == DT_P_CARRAY || type == DT_P_ARRAY)
        return false;
    putPointer(address, pointerFor(value));
    return true;
}

namespace {

constexpr uintptr_t SIGNAL_CONSTANTS = 100;  // small addresses stand for signal handlers

// The function that a value names; an address that isn't one for the constants of signals.
TypeInfo *functionOf(const Value *value) {
    bool isFunction = value->type == DT_NAME || value->type == DT_FUNCTION ||
                      value->type == DT_P_FUNCTION || value->type == DT_P_VOID ||
                      value->type == DT_NULL;
    return isFunction ? value->payload.symbol : nullptr;
}

// A pointer to function has a function record of its own, whose owner is the function.
bool bindFunction(VarCell *cell, const Value *value) {
    auto *own = static_cast<FuncInfo *>(cell->data.p);
    if (!own)
        return false;
    own->owner = functionOf(value);
    bool isDeclared = reinterpret_cast<uintptr_t>(own->owner) > SIGNAL_CONSTANTS;
    const FuncInfo *target = isDeclared ? own->owner->functionLink : nullptr;
    own->parameters = target ? target->parameters : nullptr;
    own->body = target ? target->body : nullptr;
    own->parameterLevel = target ? target->parameterLevel : 0;
    own->variadic = target ? target->variadic : 0;
    return true;
}

}  // namespace

void storeFunctionPointer(void *address, const Value *value) {
    putPointer(address, functionOf(value));
}

bool storeInCell(VarCell *cell, const Value *value) {
    if (cell->type == DT_P_FUNCTION)
        return bindFunction(cell, value);
    if (cell->type == DT_STRUCT)
        return storeObject(cell->data.p, value, cell->structInfo);
    if (cell->type == DT_CARRAY || cell->type == DT_P_CARRAY) {
        assignPointerToCArray(cell, value);
        return true;
    }
    static_assert(offsetof(VarCell, data2) == offsetof(VarCell, data) + sizeof(double),
                  "both halves of a wide pair lie side by side");
    return storeScalar(&cell->data, static_cast<int>(cell->type), value, StorePlace::VARIABLE);
}

void storeByPointerType(void *address, const Value *value, int pointerType) {
    int type =
        isPointer(pointerType) && pointerType != DT_NULL ? dereference(pointerType) : DT_UNDEFINED;
    bool done = type == DT_STRUCT ? storeObject(address, value, value->payload2.structInfo)
                                  : storeScalar(address, type, value, StorePlace::VARIABLE);
    if (!done)
        runError("unsupported data type for indirection operation *");
}

void storeCellByPointer(void *address, const VarCell *cell, int pointerType) {
    Value value{};
    value.kind = NODE_VALUE;
    value.type = cell->type;
    value.payload = cell->data;
    value.payload2 = cell->data2;
    storeByPointerType(address, &value, pointerType);
}

// ---- Targets ------------------------------------------------------------------------------------

namespace {

// A system variable, not a script's global one: its cell is the one in its slot of the base frame.
void afterStore(TypeInfo *symbol, const VarCell *cell) {
    if (symbol->index > LAST_SYSTEM_SLOT || slotOf(baseFrame, symbol->index) != cell)
        return;
    if (symbol->dataType == DT_STRING)
        onSystemVariableSet(symbol->index, symbol);
    else if (symbol->dataType == DT_INT)
        onIntegerSystemVariableSet(symbol->index, symbol);
}

void assignVariable(const Value *value, TypeInfo *symbol) {
    VarCell *cell = findVarCell(symbol);
    if (!storeInCell(cell, value))
        runError("undefined operation");
    if (symbol->level == SYSTEM_LEVEL)
        afterStore(symbol, cell);
}

void assignWhole(Value *value, TypeInfo *symbol) {
    switch (symbol->kind) {
        case KIND_ARRAY:
        case KIND_ASSUMED_ARRAY: assignArrayVariable(symbol, value); break;
        case KIND_P_ARRAY: assignPointerToArray(symbol, value); break;
        default: assignVariable(value, symbol);
    }
}

// A reference takes the variable that it is given first, and is that variable from then on. Given
// any other value it is a variable of its own.
bool bindReference(ExprNode *node, TypeInfo *symbol) {
    VarCell *cell = findVarCellLink(symbol);
    bool isBound = cell->type != DT_LINK || cell->data.p;
    if (isBound)
        return false;
    if (TypeInfo *target = variableOf(node)) {
        cell->data.p = findVarCell(target);
        return true;
    }
    cell->type = static_cast<uint32_t>(symbol->dataType);
    return false;
}

// ---- *p -----------------------------------------------------------------------------------------

// The pointer may lead to the text of a system variable.
void afterStoreAt(const void *address) {
    for (TypeInfo *symbol = systemSymbols; symbol; symbol = symbol->next)
        if (symbol->dataType == DT_STRING && symbol->storageCell &&
            &symbol->storageCell->data == address)
            afterStore(symbol, symbol->storageCell);
}

size_t sizeOfTarget(const TypeInfo *symbol, int type) {
    if (type == DT_STRUCT)
        return symbol->structLink ? symbol->structLink->size : 0;
    return static_cast<size_t>(std::max(elementSize(type), 0));
}

}  // namespace

// A NULL pointer variable gets room for what is stored.
void *allocateFor(TypeInfo *symbol) {
    VarCell *cell = findVarCell(symbol);
    int type = dereference(static_cast<int>(cell->type));
    size_t size = sizeOfTarget(symbol, type);
    if (cell->data.p || !size)
        return nullptr;
    runWarning("assign value to *ptr where ptr = NULL, memory  is automatically allocated for ptr");
    void *block = allocOrFail(size);
    if (block)
        memset(block, 0, size);
    return cell->data.p = block;
}

namespace {

// The address to store through for a pointer that is NULL, or was computed from NULL; NULL after a
// message if nothing is to be stored.
void *addressForNull(ExprNode *inner) {
    if (TypeInfo *symbol = variableOf(inner))
        if (void *block = allocateFor(symbol))
            return block;
    if (inner->kind == NODE_OPERATOR)
        runWarning(
            "assign value to *(ptr op ?) =... where ptr = NULL, memory should be allocated for "
            "ptr before assignment");
    else
        runError("*ptr assignment failed");
    return nullptr;
}

// The first element of an array, or of what a pointer to one points to.
void assignFirstElement(const ExprNode *node, const Value *array, const Value *value) {
    if (isNullAddress(array->payload.p)) {
        runError("*ptr assignment failed");
        return;
    }
    Element element{};
    element.address = array->payload.p;
    element.type = array->payload2.elementType;
    storeInElement(node, element, value);
}

void assignThroughPointer(ExprNode *node, ExprNode *valueNode) {
    bool popped;
    Value *pointer = operandOf(node->left, popped);
    Source source(valueNode);
    if (pointer && isArrayLike(static_cast<int>(pointer->type))) {
        if (source)
            assignFirstElement(node, pointer, source.get());
        if (popped)
            deleteValue(pointer);
        return;
    }
    bool isText = pointer && pointer->type == DT_STRING;  // a string_t that was cast
    if (pointer && source) {
        void *address = pointer->payload.p;
        if (isNullAddress(address))
            address = addressForNull(node->left);
        if (address)
            storeByPointerType(address, source.get(),
                               isText ? +DT_P_CHAR : static_cast<int>(pointer->type));
        if (address && pointer->type == DT_P_STRING)
            afterStoreAt(address);
    }
    if (isText && popped)
        deleteValue(pointer);
    else if (pointer && popped)
        recycleValue(pointer);
}

// ---- Elements -----------------------------------------------------------------------------------

void assignElement(ExprNode *target, ExprNode *valueNode) {
    Element element;
    bool found = findElement(target, ElementUse::WRITE, element);
    Source source(valueNode);
    if (found && source)
        storeInElement(target, element, source.get());
    if (found)
        releaseElement(element);
}

// ---- Dispatch -----------------------------------------------------------------------------------

void assignToOperator(ExprNode *target, ExprNode *value) {
    switch (target->op) {
        case OP_INDIRECTION: assignThroughPointer(target, value); break;
        case OP_REAL_FLOAT:
        case OP_IMAG_FLOAT:
        case OP_REAL_DOUBLE:
        case OP_IMAG_DOUBLE: assignPart(target, value); break;
        case OP_REAL_ARRAY:
        case OP_IMAG_ARRAY: assignPartOfArray(target, value); break;
        case OP_SUBSCRIPT_POINTER:
        case OP_SUBSCRIPT_POINTER2:
        case OP_SUBSCRIPT_POINTER3:
        case OP_SUBSCRIPT: assignElement(target, value); break;
        case OP_MEMBER:
        case OP_SCOPE:
        case OP_ARROW: assignMember(target, value); break;
        default: {
            Source source(value);
            runError("undefined operation");
        }
    }
}

}  // namespace

void assignValue(ExprNode *target, ExprNode *value) {
    if (target->kind == NODE_OPERATOR) {
        assignToOperator(target, value);
        return;
    }
    TypeInfo *symbol = variableOf(target);
    if (!symbol)
        return;
    if (value->kind == NODE_OPERATOR && value->op == OP_PRINT_LIST) {
        assignInitList(value, symbol);
        return;
    }
    Source source(value);
    if (symbol->kind == KIND_REFERENCE && bindReference(value, symbol))
        return;
    if (source)
        assignWhole(source.get(), symbol);
}

}  // namespace zy
