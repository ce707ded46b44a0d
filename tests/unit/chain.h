// Expressions built by hand for tests of the evaluator: constants, variables, operators, threaded
// and run without a parser.
#pragma once

#include <bit>
#include <climits>
#include <cstring>
#include <initializer_list>
#include <list>

#include "expr/context.h"
#include "expr/evaluator.h"
#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/routineChoice.h"
#include "expr/scope.h"
#include "expr/thread.h"
#include "instance.h"
#include "stmt/stmtNode.h"

namespace zy {

class ChainTest : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        resetContexts();
        statement.file = "test.zy";
        statement.line = 7;
        currentContext->statement = &statement;
    }
    void TearDown() override {
        clearValueStack();
        EXPECT_EQ(currentContext->chain, nullptr);
        for (ExprNode &tree : nodes)
            releaseMadeByThreading(tree);
        InstanceTest::TearDown();
    }

    bool isOwn(const ExprNode *record) const {
        for (const ExprNode &mine : nodes)
            if (&mine == record)
                return true;
        return false;
    }
    // Threading hangs copies of targets on the operators, and a record on those that branch.
    void releaseMadeByThreading(ExprNode &tree) {
        if (tree.kind != NODE_OPERATOR)
            return;
        if (tree.fourth && tree.fourth->kind == NODE_BRANCHES) {
            deleteNode(tree.fourth);
            tree.fourth = nullptr;
        }
        for (ExprNode *field : {tree.left, tree.right, tree.third, tree.fourth})
            if (field && !isOwn(field))
                deleteNode(field);
    }

    ExprNode *node(NodeKind kind) {
        ExprNode &fresh = nodes.emplace_back();
        fresh = {};
        fresh.kind = kind;
        return &fresh;
    }
    ExprNode *constant(DataType type, uint64_t bits = 0) {
        ExprNode *leaf = node(NODE_VALUE);
        leaf->type = type;
        leaf->payload.bits = bits;
        return leaf;
    }
    ExprNode *number(int value) { return constant(DT_INT, static_cast<uint32_t>(value)); }
    ExprNode *number(unsigned value) { return constant(DT_UINT, value); }
    ExprNode *number(long long value) { return constant(DT_LLONG, static_cast<uint64_t>(value)); }
    ExprNode *number(unsigned long long value) { return constant(DT_ULLONG, value); }
    ExprNode *number(signed char value) { return constant(DT_CHAR, static_cast<uint8_t>(value)); }
    ExprNode *number(unsigned char value) { return constant(DT_UCHAR, value); }
    ExprNode *number(short value) { return constant(DT_SHORT, static_cast<uint16_t>(value)); }
    ExprNode *number(unsigned short value) { return constant(DT_USHORT, value); }
    ExprNode *number(float value) { return constant(DT_FLOAT, std::bit_cast<uint32_t>(value)); }
    ExprNode *number(double value) { return constant(DT_DOUBLE, std::bit_cast<uint64_t>(value)); }

    // A file-scope variable that holds what the constant does.
    ExprNode *variable(const ExprNode *initial) {
        TypeInfo &symbol = symbols.emplace_back();
        symbol = {};
        symbol.level = FILE_LEVEL;
        symbol.dataType = static_cast<DataType>(initial->type);
        VarCell &cell = cells.emplace_back();
        cell = {};
        cell.type = initial->type;
        cell.data = initial->payload;
        cell.data2 = initial->payload2;
        symbol.storageCell = &cell;
        ExprNode *leaf = node(NODE_VALUE);
        leaf->type = DT_NAME;
        leaf->payload.symbol = &symbol;
        return leaf;
    }
    static VarCell *cellOf(const ExprNode *leaf) { return leaf->payload.symbol->storageCell; }

    ExprNode *apply(int code, ExprNode *left, ExprNode *right = nullptr,
                    ExprNode *third = nullptr) {
        ExprNode *operation = node(NODE_OPERATOR);
        operation->op = code;
        operation->left = left;
        operation->right = right;
        operation->third = third;
        return operation;
    }

    // The nodes in the order in which they run.
    ExprNode *thread(std::initializer_list<ExprNode *> order) {
        ExprNode *head = nullptr, **tail = &head;
        for (ExprNode *member : order) {
            *tail = member;
            tail = &member->next;
            member->routine = routineFor(member);
        }
        *tail = nullptr;
        return head;
    }
    // The value on the stack after the chain has run, still there; NULL if there is none.
    Value *run(ExprNode *chain) {
        currentContext->chain = chain;
        runChain();
        return currentContext->stack;
    }
    Value *evaluate(ExprNode *tree) {
        clearValueStack();
        return run(compileChain(tree, nullptr, false));
    }

    StmtNode statement{};
    std::list<ExprNode> nodes;
    std::list<TypeInfo> symbols;
    std::list<VarCell> cells;
};

}  // namespace zy
