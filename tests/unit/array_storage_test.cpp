// Shapes, subscripts and the storage of arrays, where no script reaches: column-major order has no
// word in the language.

#include "numeric/arrayStorage.h"

#include <string>

#include "decl/arrayInfo.h"
#include "expr/context.h"
#include "expr/nodes.h"
#include "instance.h"
#include "numeric/arrayValue.h"
#include "numeric/subscripts.h"

namespace zy {

class ArrayStorageTest : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        resetContexts();
        before = liveValueCount();
    }
    void TearDown() override {
        EXPECT_EQ(liveValueCount(), before);
        releaseContexts();
        InstanceTest::TearDown();
    }

    static ExprNode *listOf(std::initializer_list<int> numbers) {
        ExprNode *list = nullptr;
        for (int number : numbers)
            appendListCell(list, newIntNode(number));
        return list;
    }
    // Bounds in pairs, the lower limit first.
    static ShapeList shapeOf(std::initializer_list<int> bounds, bool fortranOrder = false) {
        ExprNode *list = listOf(bounds);
        uint32_t count;
        ShapeList shape = evalArrayBounds(list, fortranOrder, count, true);
        EXPECT_EQ(count, shapeCount(shape));
        deleteNode(list);
        return shape;
    }
    static std::string text(ShapeList shape) {
        std::string result;
        for (const ShapeNode *node = shape; node; node = node->next)
            result += (node == shape ? "" : " ") + std::to_string(node->extent.lower) + ":" +
                      std::to_string(node->extent.limit) + "*" +
                      std::to_string(node->extent.stride);
        releaseShape(shape);
        return result;
    }
    static int64_t offset(const ShapeNode *shape, std::initializer_list<int> subscripts,
                          bool mayBeEnd = false, int unsubscripted = 0) {
        ExprNode *list = listOf(subscripts), *rest = list;
        int64_t result = subscriptOffset(shape, unsubscripted, rest, mayBeEnd);
        deleteNode(list);
        return result;
    }

    int before = 0;
};

TEST_F(ArrayStorageTest, BoundsGiveStridesInBothOrders) {
    EXPECT_EQ(text(shapeOf({0, 2, 0, 3})), "0:2*3 0:3*1");
    EXPECT_EQ(text(shapeOf({0, 2, 0, 3}, true)), "0:2*1 0:3*2");
    EXPECT_EQ(text(shapeOf({1, 3, -1, 2, 0, 4})), "1:3*12 -1:2*4 0:4*1");
    EXPECT_EQ(text(shapeOf({1, 3, -1, 2, 0, 4}, true)), "1:3*1 -1:2*2 0:4*6");
}

TEST_F(ArrayStorageTest, OnlyTheFirstDimensionMayBeEmpty) {
    EXPECT_EQ(text(shapeOf({2, 2, 0, 3})), "2:2*3 0:3*1");
    const std::string refused =
        "ERROR: zero or negative subscript, or upper limit equal or less than lower limit for "
        "dimension ";
    EXPECT_EQ(errorsOf([] {
                  EXPECT_EQ(text(shapeOf({0, 3, 1, 1})), "0:3*1 0:1*1");
              }),
              refused + "2 of array\n");
    EXPECT_EQ(errorsOf([] {
                  EXPECT_EQ(text(shapeOf({5, 3})), "0:1*1");
              }),
              refused + "1 of array\n");
    EXPECT_EQ(errorsOf([] {
                  EXPECT_EQ(text(shapeOf({3, -1})), "0:1*1");
              }),
              refused + "1 of array\n");
    EXPECT_EQ(runStatus, RUN_ERROR);
}

TEST_F(ArrayStorageTest, SubscriptsGoByTheStridesAlone) {
    ShapeList rows = shapeOf({0, 2, 0, 3}), columns = shapeOf({0, 2, 0, 3}, true);
    EXPECT_EQ(offset(rows, {1, 2}), 5);
    EXPECT_EQ(offset(columns, {1, 2}), 5);
    EXPECT_EQ(offset(rows, {0, 1}), 1);
    EXPECT_EQ(offset(columns, {0, 1}), 2);
    EXPECT_EQ(offset(rows, {1}, false, 1), 3);
    releaseShape(rows);
    releaseShape(columns);
}

TEST_F(ArrayStorageTest, SubscriptsOutsideAreClamped) {
    e_lang->warningLevel = 1;
    ShapeList shape = shapeOf({1, 4});
    auto at = [&](int subscript, bool mayBeEnd, int64_t expected) {
        return errorsOf([&] { EXPECT_EQ(offset(shape, {subscript}, mayBeEnd), expected); });
    };
    EXPECT_EQ(at(3, false, 2), "");
    EXPECT_EQ(at(4, true, 3), "");
    EXPECT_EQ(at(4, false, 2), "WARNING: subscript value 4 greater than upper limit 3\n");
    EXPECT_EQ(at(5, true, 2), "WARNING: subscript value 5 greater than upper limit 3\n");
    EXPECT_EQ(at(0, false, 0), "WARNING: subscript value 0 less than lower limit 1\n");
    EXPECT_EQ(at(INT32_MIN, false, 0),
              "WARNING: subscript value -2147483648 less than lower limit 1\n");
    EXPECT_EQ(runStatus, RUN_WARNING);
    releaseShape(shape);
    // An open first dimension has no upper limit.
    shape = shapeOf({0, 0, 0, 3});
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(offset(shape, {1000, 2}), 3002); }), "");
    releaseShape(shape);
}

TEST_F(ArrayStorageTest, AnOrderIsToldFromTheStrides) {
    struct {
        std::initializer_list<int> bounds;
        bool fortranOrder, expected;
    } rows[] = {
        {{0, 2, 0, 3}, true, true}, {{0, 2, 0, 3}, false, false}, {{0, 1, 0, 3}, true, false},
        {{0, 3, 0, 1}, true, true}, {{0, 6}, true, false},
    };
    for (const auto &row : rows) {
        ShapeList shape = shapeOf(row.bounds, row.fortranOrder);
        EXPECT_EQ(isFortranOrdered(shape), row.expected);
        releaseShape(shape);
    }
}

TEST_F(ArrayStorageTest, ColumnsAreReorderedIntoRows) {
    ShapeList rows = shapeOf({0, 2, 0, 3}), columns = shapeOf({0, 2, 0, 3}, true);
    int source[] = {11, 21, 12, 22, 13, 23}, target[6] = {};
    reorderElements(target, source, rows, columns, 6, sizeof(int));
    for (int i = 0; i < 6; i++)
        EXPECT_EQ(target[i], (i / 3 + 1) * 10 + i % 3 + 1);
    releaseShape(rows);
    releaseShape(columns);
}

TEST_F(ArrayStorageTest, PointersTakeShapesOver) {
    VarCell cell{};
    cell.shape = shapeOf({0, 0, 0, 0 + 1});
    Value array{};
    array.shape = shapeOf({2, 5, 1, 3});
    adoptShape(&cell, &array);
    EXPECT_EQ(cell.count, 6u);
    EXPECT_EQ(text(copyShape(cell.shape)), "2:5*2 1:3*1");
    ExprNode *formal = listOf({1, OPEN_LIMIT, 0, OPEN_LIMIT});
    adoptExtents(&cell, formal, &array);
    EXPECT_EQ(text(copyShape(cell.shape)), "1:4*2 0:2*1");
    // A dimension that the array hasn't.
    releaseShape(array.shape);
    array.shape = shapeOf({0, 4});
    cell.fortranOrder = 1;
    adoptExtents(&cell, formal, &array);
    EXPECT_EQ(text(cell.shape), "1:5*1 0:1*4");
    EXPECT_EQ(cell.count, 4u);
    releaseShape(array.shape);
    deleteNode(formal);
}

TEST_F(ArrayStorageTest, FillsConvertTheScalarOnce) {
    Value number{};
    number.kind = NODE_VALUE;
    number.type = DT_DOUBLE;
    number.payload.d = 300.75;
    unsigned char bytes[5];
    EXPECT_EQ(fillFromScalar(bytes, 5, DT_UCHAR, &number), 0);
    EXPECT_EQ(bytes[4], 300 - 256);
    long long wide[3];
    EXPECT_EQ(fillFromScalar(wide, 3, DT_LLONG, &number), 0);
    EXPECT_EQ(wide[2], 300);
    double pairs[6];
    EXPECT_EQ(fillFromScalar(pairs, 3, DT_DCOMPLEX, &number), 0);
    EXPECT_EQ(pairs[4], 300.75);
    EXPECT_EQ(pairs[5], 0);
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(fillFromScalar(bytes, 5, DT_STRING, &number), -1); }),
              "ERROR: unsupported data type for scalar to array promotion\n");
    number.type = DT_P_INT;
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(fillFromScalar(bytes, 5, DT_STRING, &number), -1); }),
              "ERROR: unsupported data type for scalar pointer to array promotion\n");
}

}  // namespace zy
