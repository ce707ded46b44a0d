// Records, the value stack, and reading variables and addresses.

#include "expr/value.h"

#include <cerrno>
#include <cstring>

#include "decl/funcInfo.h"
#include "expr/context.h"
#include "expr/nodes.h"
#include "expr/scope.h"
#include "instance.h"
#include "numeric/shape.h"
#include "stmt/stmtNode.h"

namespace zy {

class ValueTest : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        if (!baseFrame)
            createBaseFrame();
        resetContexts();
        before = liveValueCount();
    }

    Symbol *variable(const char *name, int type) {
        Symbol *symbol = addSystemVariable(name, type, 100);
        symbol->storageCell = newVarCell(type);
        setSlot(baseFrame, slot++, symbol->storageCell);
        return symbol;
    }

    Value *pointer(int type, void *address) {
        Value *value = newZeroValue(type);
        value->payload.p = address;
        return value;
    }

    int before = 0;
    int slot = 200;
};

TEST_F(ValueTest, AnEmptyStackReportsWithThePositionAndTheNextPushWorks) {
    StmtNode statement{};
    statement.file = "a.zy";
    statement.line = 12;
    currentContext->statement = &statement;
    Value *popped = nullptr;
    EXPECT_EQ(errorsOf([&] { popped = popValue(); }),
              "ERROR: no value in stack (internal error)\n       at line 12 in file 'a.zy'\n");
    EXPECT_EQ(popped, nullptr);
    EXPECT_EQ(runStatus, RUN_ERROR);
    evalContext = currentContext;  // no program runs, so there is no position
    EXPECT_EQ(errorsOf([&] { popValue(); }), "ERROR: no value in stack (internal error)\n");
    currentContext->statement = nullptr;
    pushValue(newZeroValue(DT_INT));
    deleteValue(popValue());
}

TEST_F(ValueTest, OperandsAreReadInPlaceOrPopped) {
    bool popped = true;
    ExprNode *constant = newIntNode(7);
    EXPECT_EQ(operandOf(constant, popped), constant);
    EXPECT_FALSE(popped);
    ExprNode *indirect = newZeroValue(DT_CONSTANT);
    indirect->payload.value = constant;
    EXPECT_EQ(operandOf(indirect, popped), constant);
    EXPECT_FALSE(popped);

    Symbol *x = variable("x", DT_INT);
    ExprNode *tag = newZeroValue(DT_TAG), *name = newSymbolNode(x), *node = newZeroValue(DT_INT);
    node->kind = NODE_OPERATOR;
    for (ExprNode *operand : {tag, name, node}) {
        Value *top = newZeroValue(DT_INT);
        pushValue(top);
        EXPECT_EQ(operandOf(operand, popped), top);
        EXPECT_TRUE(popped);
        recycleValue(top);
    }
    errorsOf([&] { EXPECT_EQ(operandOf(name, popped), nullptr); });
    EXPECT_FALSE(popped);
    for (ExprNode *leaf : {constant, indirect, tag, name, node})
        recycleValue(leaf);
}

TEST_F(ValueTest, LiveCountSeesALeakAndTheStackReleasesWhatIsLeft) {
    for (int i = 0; i < 2000; i++) {
        Value *value = newZeroValue(i % 2 ? DT_STRING : DT_ARRAY);
        if (i % 2) {
            value->payload.text = copyString("text");
        } else {
            value->payload.p = calloc(1, sizeof(char *));
            *static_cast<char **>(value->payload.p) = copyString("element");
            value->payload2.elementType = DT_STRING;
            value->count = 1;
            value->shape = newShapeNode(0, 1);
            value->ownership = ARRAY_OWNED;
        }
        pushValue(value);
    }
    EXPECT_EQ(liveValueCount(), before + 2000);
    clearValueStack();
    EXPECT_EQ(liveValueCount(), before);
    preallocateValues(2000);
    EXPECT_EQ(liveValueCount(), before);
}

TEST_F(ValueTest, EachReadOfAStringIsAPrivateCopy) {
    Symbol *s = variable("s", DT_STRING);
    s->storageCell->data.text = copyString("abc");
    fetchVariable(s, 0);
    fetchVariable(s, 0);
    Value *first = popValue(), *second = popValue();
    EXPECT_NE(first->payload.text, second->payload.text);
    EXPECT_NE(first->payload.text, s->storageCell->data.text);
    first->payload.text[0] = 'x';
    deleteValue(first);
    EXPECT_STREQ(second->payload.text, "abc");
    EXPECT_STREQ(s->storageCell->data.text, "abc");
    deleteValue(second);
    s->storageCell->data.text = updateString(s->storageCell->data.text, copyString("longer text"));
    EXPECT_STREQ(s->storageCell->data.text, "longer text");
    s->storageCell->data.text = updateString(s->storageCell->data.text, nullptr);
    fetchVariable(s, 0);
    EXPECT_EQ(currentContext->stack->payload.text, nullptr);
    clearValueStack();
}

TEST_F(ValueTest, ErrnoIsReadFresh) {
    Symbol *symbol = variable("_errno", DT_INT);
    symbol->index = ERRNO_SLOT;
    for (int code : {ENOENT, EDOM}) {
        errno = code;
        fetchVariable(symbol, 0);
        EXPECT_EQ(currentContext->stack->payload.i, code);
        EXPECT_EQ(symbol->storageCell->data.i, code);
        clearValueStack();
    }
}

TEST_F(ValueTest, ArraysAndObjectsAreReadAsViews) {
    Symbol *a = variable("a", DT_DOUBLE);
    a->kind = KIND_ASSUMED_ARRAY;
    double data[3] = {1, 2, 3};
    ShapeNode *shape = newShapeNode(1, 4);
    VarCell *cell = a->storageCell;
    cell->type = DT_P_ARRAY;
    cell->data.p = data;
    cell->data2.elementType = DT_DOUBLE;
    cell->shape = shape;
    cell->count = 3;
    fetchVariable(a, 0);
    const Value *view = currentContext->stack;
    EXPECT_EQ(view->type, DT_ARRAY);
    EXPECT_EQ(view->payload.p, data);
    EXPECT_EQ(view->shape, shape);
    EXPECT_EQ(view->payload2.castFlag, 0);
    EXPECT_EQ(view->ownership, ARRAY_VIEW);
    cell->argumentMark = ARRAY_ARGUMENT;
    fetchVariable(a, 0);
    EXPECT_EQ(currentContext->stack->ownership, ARRAY_ARGUMENT);
    cell->argumentMark = 0;
    clearValueStack();  // releases no view
    EXPECT_EQ(data[0], 1);
}

TEST_F(ValueTest, AReferenceReadsItsTargetAndRefusesWhatCannotBeConverted) {
    Symbol *target = variable("target", DT_P_CHAR);
    char text[] = "abc";
    target->storageCell->data.text = text;
    Symbol *r = variable("r", DT_STRING);
    r->kind = KIND_BY_REFERENCE;
    r->storageCell->type = DT_LINK;
    r->storageCell->data.p = target->storageCell;
    fetchVariable(r, 0);
    EXPECT_EQ(currentContext->stack->type, DT_P_CHAR);
    EXPECT_EQ(currentContext->stack->payload.text, text);
    clearValueStack();
    r->dataType = DT_STRUCT;
    EXPECT_EQ(errorsOf([&] { fetchVariable(r, 0); }), "ERROR: unsupported reference type\n");
    EXPECT_EQ(runStatus, RUN_ERROR);
    clearValueStack();
    r->storageCell->data.p = nullptr;
    EXPECT_EQ(errorsOf([&] { fetchVariable(r, 0); }),
              "ERROR: attempt to access non-existing memory for 'r'\n");
    clearValueStack();
}

TEST_F(ValueTest, AFunctionPointerReadsItsTarget) {
    Symbol *f = variable("f", DT_INT), *local = variable("g", DT_INT);
    f->kind = local->kind = KIND_FUNCTION;
    local->level = 3;
    Symbol *p = variable("p", DT_P_FUNCTION);
    p->kind = KIND_P_FUNCTION;
    initCell(p->storageCell, p, p->kind);
    auto *bound = static_cast<FuncInfo *>(p->storageCell->data.p);
    auto readsAs = [&](TypeInfo *target) {
        bound->owner = target;
        fetchVariable(p, 0);
        TypeInfo *read = currentContext->stack->payload.symbol;
        clearValueStack();
        return read;
    };
    auto *handler = reinterpret_cast<TypeInfo *>(1), *ignored = reinterpret_cast<TypeInfo *>(-1);
    EXPECT_EQ(readsAs(nullptr), nullptr);
    EXPECT_EQ(readsAs(f), f);
    EXPECT_EQ(readsAs(local), local);
    EXPECT_EQ(readsAs(handler), handler);
    EXPECT_EQ(readsAs(ignored), ignored);
}

TEST_F(ValueTest, UnknownStorageIsReported) {
    Symbol *x = variable("x", DT_EVENT);
    EXPECT_EQ(errorsOf([&] { fetchVariable(x, 0); }),
              "ERROR: using unsupported variable type (maybe your application program corrupted "
              "internal data structure\n");
    EXPECT_EQ(runStatus, RUN_ERROR);
    clearValueStack();
}

TEST_F(ValueTest, DereferencingLoadsByWidth) {
    struct {
        unsigned char uc = 200;
        short s = -3;
        float f = 1.5f;
        long long ll = -5000000000;
        double wide[2] = {1, 2};
        const char *text = "abc";
    } memory;
    auto load = [&](int type, void *address) {
        Value *p = pointer(type, address);
        Value *value = derefValue(p);
        recycleValue(p);
        return value;
    };
    Value *values[] = {load(DT_P_UCHAR, &memory.uc),  load(DT_P_SHORT, &memory.s),
                       load(DT_P_FLOAT, &memory.f),   load(DT_P_LLONG, &memory.ll),
                       load(DT_P_DDUAL, memory.wide), load(DT_P_STRING, &memory.text),
                       load(DT_PP_CHAR, &memory.text)};
    const int types[] = {DT_UCHAR, DT_SHORT, DT_FLOAT, DT_LLONG, DT_DDUAL, DT_STRING, DT_P_CHAR};
    for (int i = 0; i < 7; i++)
        EXPECT_EQ(values[i]->type, types[i]);
    EXPECT_EQ(values[0]->payload.uc, 200);
    EXPECT_EQ(values[1]->payload.s, -3);
    EXPECT_EQ(values[2]->payload.f, 1.5f);
    EXPECT_EQ(values[3]->payload.ll, -5000000000);
    EXPECT_EQ(values[4]->payload.d, 1);
    EXPECT_EQ(values[4]->payload2.d, 2);
    EXPECT_STREQ(values[5]->payload.text, "abc");
    EXPECT_NE(values[5]->payload.text, memory.text);
    EXPECT_EQ(values[6]->payload.text, memory.text);
    for (Value *value : values)
        deleteValue(value);
    EXPECT_EQ(liveValueCount(), before);
}

TEST_F(ValueTest, DereferencingNothingWarnsOnceAndGivesZero) {
    Value *null = pointer(DT_P_DOUBLE, nullptr);
    Value *value = nullptr;
    EXPECT_EQ(errorsOf([&] { value = derefValue(null); }),
              "WARNING: Pointer operation *ptr where ptr = NULL, 0 is assigned to *ptr\n");
    EXPECT_EQ(runStatus, RUN_WARNING);
    EXPECT_EQ(value->type, DT_DOUBLE);
    EXPECT_EQ(value->payload.d, 0);
    deleteValue(value);
    null->type = DT_INT;
    EXPECT_EQ(errorsOf([&] { value = derefValue(null); }),
              "ERROR: unsupported data type for indirection operation *\n");
    EXPECT_EQ(errorsOf([&] { EXPECT_FALSE(loadValue(value, nullptr, DT_INT)); }),
              "WARNING: get value from NULL address\n");
    deleteValue(value);
    recycleValue(null);
}

TEST_F(ValueTest, ElementsGoThroughTheSameTable) {
    Value *value = newZeroValue(DT_DCOMPLEX);
    value->payload.d = 1;
    value->payload2.d = 2;
    double pair[2] = {};
    EXPECT_TRUE(storeElement(pair, value));
    EXPECT_EQ(pair[1], 2);
    EXPECT_TRUE(loadElement(value, pair, DT_DOUBLE));
    EXPECT_EQ(value->payload.d, 1);
    char *text = copyString("old");
    Value *string = pointer(DT_STRING, copyString("new"));
    EXPECT_TRUE(storeElement(&text, string));
    EXPECT_STREQ(text, "new");
    EXPECT_NE(text, string->payload.text);
    free(text);
    deleteValue(string);
    auto refusal = [&](int type) {
        return errorsOf([&] { EXPECT_FALSE(loadElement(value, pair, type)); });
    };
    EXPECT_EQ(refusal(DT_TRANS), "ERROR: unimplemented vect and trans array \n");
    EXPECT_EQ(refusal(DT_FRAME), "ERROR: unimplemented frame array \n");
    EXPECT_EQ(refusal(DT_EVENT), "WARNING: unsupported data type\n");
    deleteValue(value);
}

}  // namespace zy
