#include "stmt/objectLife.h"

#include <algorithm>
#include <cstdlib>

#include "decl/aggregates.h"
#include "decl/construction.h"
#include "decl/funcInfo.h"
#include "decl/layout.h"
#include "expr/evaluator.h"
#include "expr/nodes.h"
#include "expr/objects.h"
#include "expr/operators.h"
#include "expr/routines.h"
#include "expr/scope.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "stmt/calls.h"
#include "stmt/objectLifeState.h"
#include "stmt/parseStack.h"

namespace zy {

// ---- Calls on objects ---------------------------------------------------------------------------

void callOnObject(TypeInfo *function, void *object, bool noFree) {
    ClassContext *record = claimClassContext();
    if (!record)
        return;
    record->object = object;
    record->thisFormal = function->functionLink->parameters;
    record->member = function;
    record->noFree = noFree;
    record->ownership = OBJECT_OF_OTHERS;
    ExprNode leaf{}, call{};
    leaf.kind = NODE_VALUE;
    leaf.type = DT_NAME;
    leaf.payload.symbol = function;
    call.kind = NODE_OPERATOR;
    call.op = OP_CALL;
    call.left = &leaf;
    call.routine = callPrepared;
    Value *below = currentContext->stack;
    runNested(&call);
    if (classContext == record)
        popClassContext();  // the call was refused
    if (currentContext->stack != below)
        if (Value *result = popValue())
            recycleValue(result);
}

namespace {

uint32_t countOf(const TypeInfo *member) {
    return static_cast<uint32_t>(memberSize(member)) / member->structLink->size;
}

// Calls act(objects, count, class) for each member of an object that lives with it.
template <class Act>
void visitLivingMembers(void *object, const StructInfo *info, const TypeInfo *first, Act act) {
    if (!info->ownsObjects)
        return;
    for (const TypeInfo *member = first; member; member = member->next)
        if (livesAsMember(member))
            act(static_cast<char *>(object) + member->level, countOf(member), member->structLink);
}

// A constructor begins with the members of its object by itself.
void constructObject(void *object, const StructInfo *info) {
    if (info->constructor)
        callOnObject(info->constructor, object, true);
    else
        constructMembers(object, info, info->members);
}

void destroyObject(void *object, const StructInfo *info) {
    if (info->destructor)
        callOnObject(info->destructor, object, true);
    visitLivingMembers(object, info, info->members, destroyObjects);
}

void doForEach(void (*act)(void *, const StructInfo *), void *objects, uint32_t count,
               const StructInfo *info) {
    auto *object = static_cast<char *>(objects);
    for (uint32_t i = 0; hasLife(info) && objects && i < count; i++)
        act(object + static_cast<size_t>(i) * info->size, info);
}

}  // namespace

void constructMembers(void *object, const StructInfo *info, const TypeInfo *first) {
    visitLivingMembers(object, info, first, constructObjects);
}

void constructObjects(void *objects, uint32_t count, const StructInfo *info) {
    doForEach(constructObject, objects, count, info);
}

void destroyObjects(void *objects, uint32_t count, const StructInfo *info) {
    doForEach(destroyObject, objects, count, info);
}

void constructHeapObjects(void *objects, uint32_t count, const StructInfo *info) {
    if (!hasLife(info) || !objects)
        return;
    heapObjects[objects] = count;
    constructObjects(objects, count, info);
}

void destroyHeapObjects(void *objects, uint32_t count, const StructInfo *info) {
    if (!info || !objects)
        return;
    auto made = heapObjects.find(objects);
    if (made != heapObjects.end()) {
        count = count == 0 ? made->second : std::min(count, made->second);
        heapObjects.erase(made);
    }
    if (hasLife(info))
        destroyObjects(objects, count, info);
    auto *object = static_cast<char *>(objects);
    for (uint32_t i = 0; info->ownsTexts && i < count; i++, object += info->size)
        releaseObject(object, info);
}

// ---- Variables ----------------------------------------------------------------------------------

namespace {

uint32_t countOf(const VarCell *cell) { return cell->type == DT_STRUCT ? 1 : cell->count; }

bool isStaticInside(const TypeInfo *symbol) {
    return symbol->storage == STORAGE_STATIC && symbol->level > FILE_LEVEL;
}

}  // namespace

void beginLife(TypeInfo *symbol) {
    findVarCell(symbol)->flags |= CELL_LIVES;
    if (isStaticInside(symbol))
        staticObjects.push_back(symbol);
}

void constructVariable(TypeInfo *symbol) {
    destroyVariable(symbol);  // a jump back to its declaration
    VarCell *cell = findVarCell(symbol);
    beginLife(symbol);
    constructObjects(cell->data.p, countOf(cell), symbol->structLink);
}

void destroyVariable(TypeInfo *symbol) {
    VarCell *cell = findVarCell(symbol);
    if (!(cell->flags & CELL_LIVES))
        return;
    cell->flags &= ~CELL_LIVES;
    destroyObjects(cell->data.p, countOf(cell), symbol->structLink);
}

void endTemporaryObject(void *object, const StructInfo *info) {
    if (object && info)
        destroyObjects(object, 1, info);
    if (object && info)
        releaseObject(object, info);
    free(object);
}

// ---- Scopes -------------------------------------------------------------------------------------

void runDestructors(TypeInfo *symbols) {
    for (TypeInfo *symbol = symbols; symbol; symbol = symbol->next) {
        bool isHere = symbol->storage != STORAGE_TYPEDEF && symbol->storage != STORAGE_EXTERN &&
                      !isStaticInside(symbol);
        if (isHere && isLivingObject(symbol))
            destroyVariable(symbol);
    }
}

void destroyInBlock(const StmtNode *block, const FuncInfo *function) {
    if (!block->hasObjects)
        return;
    runDestructors(block->operandC.symbols);
    if (function && function->body == block)
        runDestructors(function->parameters);
}

void destroyStaticObjects() {
    if (globalBlock)
        runDestructors(globalBlock->symbols());
    for (size_t i = 0; i < staticObjects.size(); i++)
        destroyVariable(staticObjects[i]);
    staticObjects.clear();
}

void forgetStaticObjects() {
    staticObjects.clear();
    heapObjects.clear();
}

// ---- return -------------------------------------------------------------------------------------

namespace {

bool hasLivingObject(const TypeInfo *list) {
    for (; list; list = list->next)
        if (isLivingObject(list))
            return true;
    return false;
}

}  // namespace

void noteParameters(StmtNode *body, const FuncInfo *function) {
    if (hasLivingObject(function->parameters))
        body->hasObjects = 1;
}

bool returnDestroys(const FuncInfo *function) {
    for (const StmtNode *block = currentBlock; block && block != globalBlock;
         block = block->enclosingBlock()) {
        if (block->hasObjects)
            return true;
        if (block == function->body)
            break;
    }
    return hasLivingObject(function->parameters);
}

void addDestruction(StmtNode *statement) {
    ExprNode *node = newOperatorNode(OP_ELEMENT_DESTRUCTORS);
    if (!node)
        return;
    TypeInfo *value = variableOf(statement->operandA.tree);
    if (value && isLivingObject(value) && value->level > FILE_LEVEL)
        node->left = newSymbolNode(value);
    node->routine = leaveObjects;
    node->next = statement->chain;
    statement->operandD.tree = node;
    statement->chain = node;
}

namespace {

bool isFrameOf(const ScopeFrame *frame, const ExecContext *context) {
    return frame && context->function && frame->level >= context->function->parameterLevel;
}

}  // namespace

void leaveObjects(ExprNode *node) {
    if (TypeInfo *kept = variableOf(node->left))
        findVarCell(kept)->flags &= ~CELL_LIVES;
    ExecContext *context = currentContext;
    for (const ScopeFrame *frame = context->frames; isFrameOf(frame, context);
         frame = frame->outer) {
        if (frame->isFunction) {
            runDestructors(static_cast<const FuncInfo *>(frame->owner)->parameters);
            break;
        }
        runDestructors(static_cast<const StmtNode *>(frame->owner)->operandC.symbols);
    }
}

}  // namespace zy
