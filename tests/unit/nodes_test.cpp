// Trees as records: copies share nothing, releases leave nothing, and neither needs stack for long
// lists and deep trees.

#include "expr/nodes.h"

#include <gtest/gtest.h>

#include "expr/operators.h"
#include "instance.h"

namespace zy {

namespace {

constexpr int DEEP = 200000;

class NodesTest : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        before = liveValueCount();
    }
    int leaked() const { return liveValueCount() - before; }

    static ExprNode *textNode(const char *text) {
        ExprNode *node = newZeroValue(DT_STRING);
        node->payload.text = copyString(text);
        return node;
    }

    int before = 0;
};

TEST_F(NodesTest, DeepTreesAndLongListsNeedNoStack) {
    ExprNode *left = newIntNode(1), *right = newIntNode(1), *list = nullptr;
    for (int i = 0; i < DEEP; i++) {
        left = newOperatorNode(OP_ADD_INT, left, newIntNode(i));
        right = newOperatorNode(OP_ADD_INT, newIntNode(i), right);
        ExprNode *cell = newListCell(newIntNode(i));
        cell->next = list;
        list = cell;
    }
    for (ExprNode *tree : {left, right, list}) {
        ExprNode *copy = copyNode(tree);
        deleteNode(tree);
        deleteNode(copy);
    }
    EXPECT_EQ(0, leaked());
}

TEST_F(NodesTest, LeafOfATypeOwnsTheTypeWithItsShapeAndFormals) {
    TypeInfo *type = newTypeInfo();
    type->level = TYPE_ONLY_LEVEL;
    type->kind = KIND_P_FUNCTION;
    type->arrayLink = newArrayInfo();
    type->arrayLink->rank = 1;
    appendListCell(type->arrayLink->bounds, newIntNode(0));
    appendListCell(type->arrayLink->bounds, newIntNode(5));
    type->functionLink = newFuncInfo(type);
    type->functionLink->parameters = newTypeInfo();
    ExprNode *leaf = newSymbolNode(type);
    ExprNode *copy = copyNode(leaf);
    deleteNode(leaf);

    const TypeInfo *other = copy->payload.symbol;
    EXPECT_EQ(5, other->arrayLink->bounds->next->item->payload.i);
    EXPECT_EQ(other, other->functionLink->owner);
    EXPECT_EQ(DT_INT, other->functionLink->parameters->dataType);
    deleteNode(copy);
    EXPECT_EQ(0, leaked());
}

TEST_F(NodesTest, RecordsOfOtherKindsAreNotCopied) {
    FuncInfo *info = newFuncInfo(nullptr);
    const auto *record = reinterpret_cast<const ExprNode *>(info);
    EXPECT_EQ("ERROR: cannot copy data internally\n",
              errorsOf([&] { EXPECT_EQ(record, copyNode(record)); }));
    EXPECT_EQ(1, errorFlag);
    deleteNode(info);
    EXPECT_EQ(0, leaked());
}

TEST_F(NodesTest, CopyHasItsOwnTextsListsAndOrder) {
    ExprNode *list = nullptr;
    for (const char *text : {"a", "b", "c"})
        appendListCell(list, textNode(text));
    ExprNode *call = newOperatorNode(OP_CALL, newIntNode(7), list);
    call->next = call;  // as if threaded
    ExprNode *copy = copyNode(call);
    deleteNode(call);

    EXPECT_EQ(nullptr, copy->next);
    EXPECT_EQ(7, copy->left->payload.i);
    std::string texts;
    for (ExprNode *cell = copy->right; cell; cell = cell->next)
        texts += cell->item->payload.text;
    EXPECT_EQ("abc", texts);
    deleteNode(copy);
    EXPECT_EQ(0, leaked());
}

}  // namespace

}  // namespace zy
