// Trees. Copying and releasing walk with a worklist that is linked through fields which the records
// of a tree at rest don't need: neither a list of a million cells nor a left-deep tree costs stack.

#include "expr/nodes.h"

#include <cstdlib>
#include <cstring>

#include "expr/operators.h"
#include "instance/report.h"
#include "numeric/shape.h"

namespace zy {

static_assert(sizeof(ArrayInfo) <= sizeof(ExprNode) && sizeof(FuncInfo) <= sizeof(ExprNode) &&
              sizeof(StructInfo) <= sizeof(ExprNode));
static_assert(offsetof(ArrayInfo, kind) == offsetof(ExprNode, kind) &&
              offsetof(FuncInfo, kind) == offsetof(ExprNode, kind) &&
              offsetof(StructInfo, kind) == offsetof(ExprNode, kind));

namespace {

ExprNode *newZeroRecord(NodeKind kind) {
    ExprNode *record = newZeroValue(0);
    if (record)
        record->kind = kind;
    return record;
}

// A record of the shared format in the room of a node.
template <class Record>
Record *newInfoRecord(NodeKind kind) {
    return reinterpret_cast<Record *>(newZeroRecord(kind));
}

}  // namespace

ExprNode *newOperatorNode(int code) {
    ExprNode *node = newZeroRecord(NODE_OPERATOR);
    if (node)
        node->op = code;
    return node;
}

ExprNode *newOperatorNode(int code, ExprNode *left, ExprNode *right) {
    ExprNode *node = newOperatorNode(code);
    if (node) {
        node->left = left;
        node->right = right;
    }
    return node;
}

ExprNode *newListCell(ExprNode *item) {
    ExprNode *cell = newZeroRecord(NODE_LIST);
    if (cell)
        cell->item = item;
    return cell;
}

void appendListCell(ExprNode *&list, ExprNode *item) {
    ExprNode **end = &list;
    while (*end)
        end = &(*end)->next;
    *end = newListCell(item);
}

ExprNode *newIntNode(int number) {
    ExprNode *node = newZeroValue(DT_INT);
    if (node)
        node->payload.i = number;
    return node;
}

ExprNode *newSizeNode(unsigned long long number) {
    ExprNode *node = newZeroValue(DT_ULLONG);
    if (node)
        node->payload.ull = number;
    return node;
}

ExprNode *newSymbolNode(TypeInfo *symbol) {
    ExprNode *node = newZeroValue(DT_NAME);
    if (node) {
        node->payload.symbol = symbol;
        node->payload2.name = symbol->name;
        node->owned = symbol->level == TYPE_ONLY_LEVEL;
    }
    return node;
}

ArrayInfo *newArrayInfo() { return newInfoRecord<ArrayInfo>(NODE_ARRAY_INFO); }

FuncInfo *newFuncInfo(TypeInfo *owner) {
    auto *info = newInfoRecord<FuncInfo>(NODE_FUNC_INFO);
    if (info)
        info->owner = owner;
    return info;
}

StructInfo *newStructInfo(TypeInfo *tag) {
    auto *info = newInfoRecord<StructInfo>(NODE_STRUCT_INFO);
    if (info)
        info->tag = tag;
    return info;
}

// ---- Copies -------------------------------------------------------------------------------------

namespace {

// `fourth` is a record of the threading, no operand.
bool keepsBranches(const ExprNode *node) {
    return node->fourth && node->fourth->kind == NODE_BRANCHES;
}

// Told by the leaf alone: a variable may have been released before a tree that names it.
bool isTypeLeaf(const ExprNode *node) {
    return node->kind == NODE_VALUE && node->type == DT_NAME && node->owned;
}

// Copies whose operands are still those of the model, linked through `link`.
struct CopyWork {
    ExprNode *top = nullptr;

    void push(ExprNode *copy) {
        copy->link = top;
        top = copy;
    }
    ExprNode *pop() {
        ExprNode *copy = top;
        top = static_cast<ExprNode *>(copy->link);
        copy->link = nullptr;
        return copy;
    }
};

// The leaf's own things, where the copy would share them.
void copyLeaf(ExprNode *copy) {
    copy->next = nullptr;
    copy->link = nullptr;
    if (copy->type == DT_STRING)
        copy->payload.text = copyString(copy->payload.text);
    else if (isTypeLeaf(copy))
        copy->payload.symbol = newTypeOnly(copy->payload.symbol);
    else if (copy->type == DT_NAME)
        copy->frameKey = 0;
}

ExprNode *copyRecord(const ExprNode *node, CopyWork &work) {
    if (node->kind > NODE_LIST) {
        plainError("cannot copy data internally");
        errorFlag = 1;
        return const_cast<ExprNode *>(node);
    }
    ExprNode *copy = newValue();
    if (!copy)
        return nullptr;
    *copy = *node;
    if (node->kind == NODE_VALUE) {
        copyLeaf(copy);
        return copy;
    }
    if (node->kind == NODE_OPERATOR)
        copy->next = nullptr;  // no longer part of a chain
    work.push(copy);
    return copy;
}

void copyInto(ExprNode *&field, CopyWork &work) {
    if (field)
        field = copyRecord(field, work);
}

void copyOperands(ExprNode *copy, CopyWork &work) {
    if (copy->kind == NODE_LIST) {
        copyInto(copy->item, work);
        copyInto(copy->next, work);
        return;
    }
    if (keepsBranches(copy))
        copy->fourth = nullptr;
    copyInto(copy->left, work);
    copyInto(copy->right, work);
    copyInto(copy->third, work);
    copyInto(copy->fourth, work);
}

}  // namespace

ExprNode *copyNode(const ExprNode *node) {
    if (!node)
        return nullptr;
    CopyWork work;
    ExprNode *copy = copyRecord(node, work);
    while (work.top)
        copyOperands(work.pop(), work);
    return copy;
}

ArrayInfo *copyArrayInfo(const ArrayInfo *info) {
    ArrayInfo *copy = info ? newArrayInfo() : nullptr;
    if (copy) {
        *copy = *info;
        copy->bounds = copyNode(info->bounds);
        copy->fixedShape = nullptr;
    }
    return copy;
}

namespace {

// All that hangs on a declaration and is its own.
void copyOwned(TypeInfo *copy) {
    copy->arrayLink = copyArrayInfo(copy->arrayLink);
    copy->functionLink = copyFuncInfo(copy->functionLink, copy);
    copy->pointerFunction = copyFuncInfo(copy->pointerFunction, copy);
}

}  // namespace

FuncInfo *copyFuncInfo(const FuncInfo *info, TypeInfo *owner) {
    FuncInfo *copy = info ? newFuncInfo(owner) : nullptr;
    if (!copy)
        return nullptr;
    *copy = *info;
    copy->owner = owner;
    TypeInfo **end = &copy->parameters;
    *end = nullptr;
    for (const TypeInfo *formal = info->parameters; formal; formal = formal->next) {
        if (!(*end = newTypeInfo()))
            break;
        **end = *formal;
        (*end)->next = nullptr;
        copyOwned(*end);
        end = &(*end)->next;
    }
    return copy;
}

TypeInfo *newTypeOnly(const TypeInfo *model) {
    TypeInfo *copy = newTypeInfo();
    if (!copy)
        return nullptr;
    copy->level = TYPE_ONLY_LEVEL;
    copy->dataType = model->dataType;
    copy->kind = model->kind;
    copy->context = CONTEXT_PARAMETER;
    copy->structLink = model->structLink;
    copy->arrayLink = model->arrayLink;
    if (model->dataType != DT_CONSTANT && !(model->qualifiers & QUALIFIER_BUILTIN))
        copy->functionLink = model->functionLink;
    copy->pointerFunction = model->pointerFunction;
    copyOwned(copy);
    return copy;
}

// ---- Release ------------------------------------------------------------------------------------

namespace {

void releaseTypeList(TypeInfo *list) {
    while (list) {
        TypeInfo *next = list->next;
        releaseTypeInfo(list);
        list = next;
    }
}

// What has no operands.
void releaseLeaf(ExprNode *node) {
    switch (node->kind) {
        case NODE_VALUE:
            if (isTypeLeaf(node))
                releaseTypeInfo(node->payload.symbol);
            deleteValue(node);
            return;
        case NODE_ARRAY_INFO:
            releaseShape(reinterpret_cast<ArrayInfo *>(node)->fixedShape);
            deleteNode(reinterpret_cast<ArrayInfo *>(node)->bounds);
            break;
        case NODE_BRANCHES:
            for (ExprNode *end : {node->third, node->fourth})
                if (end)
                    recycleValue(end);
            break;
        case NODE_FUNC_INFO: releaseTypeList(reinterpret_cast<FuncInfo *>(node)->parameters); break;
        case NODE_STRUCT_INFO:
            releaseTypeList(reinterpret_cast<StructInfo *>(node)->members);
            break;
        default: break;
    }
    recycleValue(node);
}

// Operators and list cells still to be released, linked through `link`.
struct DeleteWork {
    ExprNode *top = nullptr;

    void push(ExprNode *node) {
        if (!node)
            return;
        if (node->kind != NODE_OPERATOR && node->kind != NODE_LIST) {
            releaseLeaf(node);
            return;
        }
        node->link = top;
        top = node;
    }
    ExprNode *pop() {
        ExprNode *node = top;
        top = static_cast<ExprNode *>(node->link);
        return node;
    }
};

void pushOperands(const ExprNode *node, DeleteWork &work) {
    if (node->kind == NODE_LIST) {
        work.push(node->item);
        work.push(node->next);
        return;
    }
    work.push(node->left);
    work.push(node->right);
    work.push(node->third);
    work.push(node->fourth);
}

}  // namespace

void deleteNode(void *record) {
    DeleteWork work;
    work.push(static_cast<ExprNode *>(record));
    while (work.top) {
        ExprNode *node = work.pop();
        pushOperands(node, work);
        recycleValue(node);
    }
}

}  // namespace zy
