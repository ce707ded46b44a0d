// Arrays in column-major order, which no word of the language makes: a list goes to the places that
// its rows name, and printing shows rows again.

#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/scope.h"
#include "instance.h"
#include "numeric/initList.h"
#include "rtlib/printAggregate.h"

namespace zy {

class ColumnMajorTest : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        info = newTypeInfo();
        info->kind = KIND_ARRAY;
        info->dataType = DT_INT;
        info->arrayLink = newArrayInfo();
        info->arrayLink->fortranOrder = 1;
    }
    void TearDown() override {
        if (info->storageCell)
            killEntry(info->storageCell);
        info->storageCell = nullptr;
        releaseTypeInfo(info);
        InstanceTest::TearDown();
    }

    void allocate(std::initializer_list<int> extents) {
        for (int extent : extents) {
            appendListCell(info->arrayLink->bounds, newIntNode(0));
            appendListCell(info->arrayLink->bounds, newIntNode(extent));
            info->arrayLink->rank++;
        }
        info->storageCell = newVarCell(DT_ARRAY);
        initCell(info->storageCell, info, info->kind);
    }

    // A negative number passes over so many elements.
    void assign(std::initializer_list<int> values) {
        ExprNode *list = newOperatorNode(OP_PRINT_LIST);
        for (int value : values) {
            ExprNode *leaf = value < 0 ? newZeroValue(DT_VOID) : newIntNode(value);
            if (value < 0)
                leaf->payload.ull = static_cast<unsigned long long>(-value);
            appendListCell(list->left, leaf);
        }
        appendListCell(list->right, newIntNode(static_cast<int>(values.size())));
        assignInitList(list, info);
        deleteNode(list);
    }

    std::vector<int> memory() const {
        auto *first = static_cast<int *>(info->storageCell->data.p);
        return {first, first + info->storageCell->count};
    }

    std::string printed() const {
        Sink sink;
        printArray(sink, nullptr, DT_INT, info->storageCell->data.p, info->storageCell->shape);
        return sink.text();
    }

    TypeInfo *info;
};

TEST_F(ColumnMajorTest, RowsOfAListAreSpreadOverColumns) {
    allocate({2, 3});
    assign({1, 2, 3, 4, 5, 6});
    EXPECT_EQ(memory(), (std::vector{1, 4, 2, 5, 3, 6}));
    EXPECT_EQ(printed(), "1 2 3 \n4 5 6 \n");
    assign({1, -2, 4});
    EXPECT_EQ(memory(), (std::vector{1, 4, 0, 0, 0, 0}));
}

TEST_F(ColumnMajorTest, PagesAreOfTheFirstTwoDimensions) {
    allocate({2, 2, 2});
    assign({1, 2, 3, 4, 5, 6, 7, 8});
    EXPECT_EQ(memory(), (std::vector{1, 5, 3, 7, 2, 6, 4, 8}));
    EXPECT_EQ(printed(), "1 3 \n5 7 \n\n2 4 \n6 8 \n");
}

}  // namespace zy
