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

TEST_F(ValueTest, UnknownStorageIsReported) {
    Symbol *x = variable("x", DT_EVENT);
    EXPECT_EQ(errorsOf([&] { fetchVariable(x, 0); }),
              "ERROR: using unsupported variable type (maybe your application program corrupted "
              "internal data structure\n");
    EXPECT_EQ(runStatus, RUN_ERROR);
    clearValueStack();
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

}  // namespace zy
