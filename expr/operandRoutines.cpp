#include "expr/operandRoutines.h"

#include "expr/operands.h"
#include "expr/scope.h"
#include "instance/report.h"

namespace zy {

namespace {

// Numbers up to double, and pointers that are one word: the Value is a copy of the cell's word.
bool isOneWord(int type) {
    return isReal(type) || (type >= DT_P_VOID && type <= DT_P_DOUBLE) || type == DT_P_FILE;
}

// A variable whose cell can only hold its declared type, and whose reading has no side effect.
bool isPlainVariable(const TypeInfo *symbol) {
    return symbol->kind == KIND_SIMPLE && isOneWord(symbol->dataType) &&
           symbol->level != SYSTEM_LEVEL;
}

inline void pushCell(TypeInfo *symbol, const VarCell *cell) {
    bool plain = cell->type == static_cast<uint32_t>(symbol->dataType);
    Value *value = plain ? pushFreeValue() : nullptr;
    if (!value) [[unlikely]] {
        fetchVariable(symbol, 0);
        return;
    }
    value->type = cell->type;
    value->payload = cell->data;
}

// One with storage of its own is found without a look at the frames.
void pushStaticVariable(ExprNode *leaf) {
    TypeInfo *symbol = leaf->payload.symbol;
    if (symbol->storageCell) [[likely]]
        pushCell(symbol, symbol->storageCell);
    else
        fetchVariable(symbol, 0);
}

void pushFrameVariable(ExprNode *leaf) {
    TypeInfo *symbol = leaf->payload.symbol;
    pushCell(symbol, findVarCell(symbol));
}

void pushAnyVariable(ExprNode *leaf) { fetchVariable(leaf->payload.symbol, 0); }

}  // namespace

void pushVariable(ExprNode *leaf) {
    const TypeInfo *symbol = leaf->payload.symbol;
    if (!isPlainVariable(symbol))
        leaf->routine = pushAnyVariable;
    else
        leaf->routine = symbol->storageCell ? pushStaticVariable : pushFrameVariable;
    leaf->routine(leaf);
}

namespace {

// The operator that pops a text owns it, so that of a constant is copied.
void pushCopy(const ExprNode *constant) {
    if (Value *value = copyRecord(constant))
        pushValue(value);
    else
        endChain();
}

}  // namespace

void pushFunctionName(ExprNode *leaf) { pushCopy(leaf); }

void pushConstant(ExprNode *leaf) { pushCopy(operandInPlace(leaf)); }

void pushNamedConstant(ExprNode *leaf) { pushCopy(leaf->payload.symbol->constant); }

void pushTag(ExprNode *leaf) { pushCopy(leaf); }

void passOver(ExprNode *) {}

void refuseNode(ExprNode *) { runError("error in evaluate expression "); }

}  // namespace zy
