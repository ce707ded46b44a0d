// Trees for tests of the checks and the threading: typed variables, operators bound as the parser
// binds them, and a chain or tree as compact text.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "expr/guards.h"
#include "expr/nodeClasses.h"
#include "expr/nodes.h"
#include "expr/select.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "front/names.h"
#include "instance.h"

namespace zy {

class TreeTest : public InstanceTest {
protected:
    void TearDown() override {
        for (TypeInfo *symbol : symbols)
            releaseTypeInfo(symbol);
        InstanceTest::TearDown();
    }

    // A variable at file level, out of every list. Its shape is one extent a dimension.
    TypeInfo *variable(const char *name, int type, int kind = KIND_SIMPLE,
                       std::vector<int> extents = {}, int shapeKind = SHAPE_FIXED) {
        TypeInfo *symbol = newTypeInfo();
        NameEntry *entry = lookupName(name);
        symbol->name = entry ? entry : addName(name);
        symbol->dataType = type;
        symbol->kind = static_cast<int8_t>(kind);
        if (isArray(dataTypeOf(symbol)))
            symbol->arrayLink = shape(extents, shapeKind);
        symbols.push_back(symbol);
        return symbol;
    }

    static ArrayInfo *shape(const std::vector<int> &extents, int shapeKind) {
        ArrayInfo *info = newArrayInfo();
        info->rank = static_cast<int>(extents.size());
        info->shapeKind = static_cast<ShapeKind>(shapeKind);
        for (int extent : extents) {
            appendListCell(info->bounds, newIntNode(0));
            appendListCell(info->bounds, newIntNode(extent));
        }
        return info;
    }

    TypeInfo *function(const char *name, int returnType, std::vector<TypeInfo *> formals) {
        TypeInfo *symbol = variable(name, returnType, KIND_FUNCTION);
        symbol->functionLink = newFuncInfo(symbol);
        symbol->functionLink->returnType = returnType;
        TypeInfo **end = &symbol->functionLink->parameters;
        for (TypeInfo *formal : formals) {
            *end = formal;
            end = &formal->next;
            std::erase(symbols, formal);  // now the function's
        }
        return symbol;
    }

    ExprNode *v(int type) { return newSymbolNode(variable("v", type)); }
    static ExprNode *leaf(TypeInfo *symbol) { return newSymbolNode(symbol); }
    static ExprNode *number(int n) { return newIntNode(n); }
    static ExprNode *constant(int type) { return zeroCell(type); }
    static ExprNode *text() { return zeroCell(DT_P_CHAR); }

    static ExprNode *bind(int op, ExprNode *left, ExprNode *right = nullptr,
                          ExprNode *third = nullptr) {
        ExprNode *node = newOperatorNode(op, left, right);
        node->third = third;
        return bindOperator(node);
    }
    // A node that the parser makes with its final code.
    static ExprNode *node(int op, ExprNode *left, ExprNode *right = nullptr) {
        return newOperatorNode(op, left, right);
    }
    static ExprNode *list(std::initializer_list<ExprNode *> items) {
        ExprNode *cells = nullptr;
        for (ExprNode *item : items)
            appendListCell(cells, item);
        return cells;
    }

    // The code of a tree, which is released.
    static int codeOf(ExprNode *tree) {
        int code = tree->op;
        deleteNode(tree);
        return code;
    }

    static std::string nameOf(const ExprNode *node) {
        if (const TypeInfo *symbol = variableOf(node))
            return symbol->name ? symbol->name->text : "type";
        if (node->kind == NODE_VALUE)
            return node->type == DT_INT ? std::to_string(node->payload.i) + "i" : "const";
        return std::to_string(node->op);
    }

    static std::string textOf(const ExprNode *head) {
        std::string text;
        for (; head; head = head->next)
            if (head->kind != NODE_BRANCHES)  // the end of a branch
                text += (text.empty() ? "" : " ") + nameOf(head);
        return text;
    }

    // The chain of a tree; threading it again must not change it.
    static std::string chainOf(ExprNode *tree, bool keepConstants = false) {
        std::string text = textOf(compileChain(tree, nullptr, keepConstants));
        int count = liveValueCount();
        EXPECT_EQ(textOf(compileChain(tree, nullptr, keepConstants)), text);
        EXPECT_EQ(liveValueCount(), count);
        return text;
    }
    static std::string chainAndRelease(ExprNode *tree, bool keepConstants = false) {
        std::string text = chainOf(tree, keepConstants);
        deleteNode(tree);
        return text;
    }

    std::vector<TypeInfo *> symbols;
};

}  // namespace zy
