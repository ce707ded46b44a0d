// Arrays and objects that a host sets and reads.

#include "host.h"

TEST(Arrays, AreSetFromTheHostByShapeAndReadAsTheyAre) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        char declaration[] = "array double a[3]; array int m[2][2]; int c[3]; array double *p;";
        Zy_DeclareVar(zy, declaration);
        double reals[] = {1.5, 2.5, 3.5}, result[3] = {};
        int numbers[] = {1, 2, 3, 4}, whole[4] = {};
        printf("%d ", Zy_SetVar(zy, "a", ZY_TYPE_ARRAY, ZY_TYPE_DOUBLE, reals, 1, 3));
        printf("%d ", Zy_SetVar(zy, "m", ZY_TYPE_CARRAY, ZY_TYPE_INT, numbers, 2, 2, 2));
        printf("%d ", Zy_ExprCalc(zy, "a", ZY_TYPE_DOUBLE, result));
        printf("%d ", Zy_ExprCalc(zy, "m", ZY_TYPE_P_INT, whole));
        printf("%g %g %d %d\n", result[0], result[2], whole[0], whole[3]);
        // elements are converted; a scalar goes to all of them
        printf("%d ", Zy_SetVar(zy, "a", ZY_TYPE_ARRAY, ZY_TYPE_INT, numbers, 1, 3));
        printf("%d ", Zy_SetVar(zy, "m", ZY_TYPE_DOUBLE, 7.9));
        printf("%d\n", Zy_ExprEval(zy, "printf(a, m)"));
        // other shapes, no shape, no array
        printf("%d", Zy_SetVar(zy, "a", ZY_TYPE_ARRAY, ZY_TYPE_DOUBLE, reals, 1, 2));
        printf("%d", Zy_SetVar(zy, "m", ZY_TYPE_ARRAY, ZY_TYPE_INT, numbers, 1, 4));
        printf("%d", Zy_SetVar(zy, "m", ZY_TYPE_ARRAY, ZY_TYPE_INT, numbers, 2, 2, -2));
        printf("%d", Zy_SetVar(zy, "m", ZY_TYPE_ARRAY, ZY_TYPE_VOID, numbers, 2, 2, 2));
        printf("%d\n", Zy_SetVar(zy, "c", ZY_TYPE_CARRAY, ZY_TYPE_INT, numbers, 1, 3));
        // a type that is wider than the elements doesn't read behind them
        double wide[3] = {};
        printf("%d ", Zy_ExprCalc(zy, "m", ZY_TYPE_CHAR, whole));
        printf("%d ", Zy_ExprCalc(zy, "p", ZY_TYPE_DOUBLE, wide));
        void *address;
        ZyValueHandle value = Zy_ExprValue(zy, "a", &address);
        printf("%g\n", static_cast<double *>(address)[2]);
        Zy_DeleteExprValue(zy, value);
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out,
              "0 0 0 0 1.5 3.5 1 4\n"
              "0 0 1.0000 2.0000 3.0000 \n7 7 \n7 7 \n0\n"
              "-1-1-1-1-1\n"
              "0 0 3\n");
    EXPECT_EQ(run.err,
              "ERROR: array dimensions do not match \n"
              "ERROR: array dimensions do not match \n"
              "ERROR: unknown data type in Zy_SetVar()\n"
              "ERROR: unknown data type in Zy_SetVar()\n"
              "ERROR: 'c' is invalid lvalue in Zy_SetVar()\n");
}

TEST(Objects, AreSetFromTheHostByTheirTag) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        char declaration[] =
            "struct P { int x; double y; } p, *q; int P; union U { int i; } u; typedef struct P T;";
        Zy_DeclareVar(zy, declaration);
        struct {
            int x;
            double y;
        } object = {3, 4.5};
        printf("%d ", Zy_SetVar(zy, "p", ZY_TYPE_STRUCT, "P", &object));
        object.x = 5;
        printf("%d ", Zy_SetVar(zy, "q", ZY_TYPE_P_STRUCT, &object));
        int x = 0, y = 0;
        printf("%d ", Zy_ExprCalc(zy, "p.x", ZY_TYPE_INT, &x));
        printf("%d ", Zy_ExprCalc(zy, "q->x + 1", ZY_TYPE_INT, &y));
        printf("%d %d ", x, y);
        printf("%d ", Zy_SetVar(zy, "p", ZY_TYPE_STRUCT, "T", &object));
        void *address;
        ZyValueHandle value = Zy_ExprValue(zy, "p", &address);
        printf("%d\n", *static_cast<int *>(address));
        Zy_DeleteExprValue(zy, value);
        printf("%d", Zy_SetVar(zy, "u", ZY_TYPE_STRUCT, "P", &object));
        printf("%d", Zy_SetVar(zy, "p", ZY_TYPE_STRUCT, "p", &object));
        printf("%d", Zy_SetVar(zy, "p", ZY_TYPE_STRUCT, nullptr, &object));
        printf("%d", Zy_SetVar(zy, "p", ZY_TYPE_STRUCT, "P", nullptr));
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "0 0 0 0 3 6 0 5\n-1-1-1-1");
    EXPECT_EQ(run.err,
              "ERROR: different structs 'U' and 'P' are incompatible data types\n"
              "ERROR: invalid argument following struct/class/union type\n"
              "ERROR: invalid argument following struct/class/union type\n"
              "ERROR: invalid argument following struct/class/union type\n");
}

TEST(Declarations, OfOneTextAreAllGlobalAndHaveTheirValues) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        char declarations[] =
            "int first = 1; double x = 1.25, y = x + first; string_t t = \"a\";"
            "int twice(int a) { int b = a; return a + b; } int z = twice(3);";
        printf("%d ", Zy_DeclareVar(zy, declarations));
        double y = 0;
        int z = 0, result = 0, equal = 0;
        printf("%d ", Zy_ExprCalc(zy, "y", ZY_TYPE_DOUBLE, &y));
        printf("%d ", Zy_ExprCalc(zy, "z\n", ZY_TYPE_INT, &z));
        printf("%d ", Zy_ExprEval(zy, "t = \"b\""));
        Zy_ExprCalc(zy, "t == \"b\"", ZY_TYPE_INT, &equal);
        printf("%g %d %d ", y, z, equal);
        void *function = nullptr;
        ZyValueHandle value = Zy_ExprValue(zy, "twice", &function);
        printf("%d ", Zy_CallFuncByAddr(zy, function, &result, 4));
        printf("%d %d\n", result, Zy_DeleteExprValue(zy, value));
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "0 0 0 0 2.25 6 1 0 8 -1\n");
    EXPECT_EQ(run.err, "");
}
