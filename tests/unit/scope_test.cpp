// Names, frames, and what removes or changes declarations. The blocks and functions that a parser
// would make are made by hand.

#include "expr/scope.h"

#include <cstring>
#include <string>
#include <vector>

#include "decl/arrayInfo.h"
#include "decl/funcInfo.h"
#include "decl/structInfo.h"
#include "expr/context.h"
#include "expr/nodes.h"
#include "front/lexerState.h"
#include "instance.h"
#include "numeric/shape.h"
#include "stmt/parseStack.h"

namespace zy {

class ScopeTest : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        if (!baseFrame)
            createBaseFrame();
        resetContexts();
        block = {};
        block.kind = STMT_BLOCK;
        block.level = FILE_LEVEL;
        globalBlock = &block;
        parseStack[0] = parseStack[1] = {true, &block};
        parseTop = 1;
        before = liveValueCount();
    }
    void TearDown() override {
        releaseContexts();
        releaseTypeInfoList(block.symbols());
        globalBlock = nullptr;
        parseTop = -1;
        releaseRemovedSymbols();
        releaseRetiredTags();
        EXPECT_EQ(liveValueCount(), before + constants);
        InstanceTest::TearDown();
    }

    static NameEntry *name(const char *text) {
        NameEntry *entry = lookupName(text);
        return entry ? entry : addName(text);
    }

    // A declaration at the end of a list.
    static TypeInfo *declare(TypeInfo **list, const char *text, int level, int dataType) {
        TypeInfo *symbol = newTypeInfo();
        symbol->name = name(text);
        symbol->level = level;
        symbol->dataType = dataType;
        for (; *list; list = &(*list)->next)
            symbol->index++;
        *list = symbol;
        return symbol;
    }
    TypeInfo *declareGlobal(const char *text, int dataType = DT_INT) {
        TypeInfo *symbol = declare(&block.symbols(), text, FILE_LEVEL, dataType);
        block.symbolCount++;
        symbol->name->symbol = symbol;
        return symbol;
    }
    TypeInfo *declareArray(const char *text, int dataType, std::vector<int> bounds,
                           int kind = KIND_C_ARRAY) {
        TypeInfo *symbol = declareGlobal(text, dataType);
        symbol->kind = kind;
        symbol->arrayLink = newArrayInfo();
        symbol->arrayLink->rank = bounds.size() / 2;
        ExprNode **tail = &symbol->arrayLink->bounds;
        for (int bound : bounds) {
            *tail = newListCell(newIntNode(bound));
            tail = &(*tail)->next;
        }
        return symbol;
    }
    // A string argument, which remvar() and isvar() take.
    static int call(int (*function)(Value *), const char *text) {
        Value *value = newZeroValue(DT_STRING);
        value->payload.text = copyString(text);
        int result = function(value);
        EXPECT_EQ(value->payload.text, nullptr);
        recycleValue(value);
        return result;
    }

    StmtNode block{};
    int before = 0;
    int constants = 0;  // added by the test; they live until the instance ends
};

TEST_F(ScopeTest, NamesAreFoundOnceAddedAndInBucketsByFirstCharacter) {
    EXPECT_EQ(bucketOf('a'), 35);
    EXPECT_EQ(bucketOf('b'), 36);
    EXPECT_EQ(bucketOf('Y'), 35);
    EXPECT_EQ(bucketOf('_'), 5);
    EXPECT_EQ(nameHash("ab"), 'a' + 'b');
    EXPECT_EQ(nameHash("\xff"), 0xffff);
    NameEntry *ab = addName("ab_"), *ba = addName("ba_");
    EXPECT_EQ(lookupName("ab_"), ab);
    EXPECT_EQ(nameTable[bucketOf('a')], ab);  // newest first
    EXPECT_EQ(lookupHashedName("ab_", ab->hash + 1), nullptr);
    EXPECT_EQ(lookupNamePrefix("ab_ = 1", ab->hash, 3), ab);
    EXPECT_EQ(lookupNamePrefix("ax_", ab->hash, 1), ab);  // one character: the hash alone
    ab->hidden = 1;
    EXPECT_EQ(lookupName("ab_"), nullptr);
    removeName("ba_");
    EXPECT_EQ(lookupName("ba_"), nullptr);
    (void)ba;
}

// The index has fewer places than there are names here, grows on the way, and forgets the removed.
TEST_F(ScopeTest, ManyNamesAreFoundAndTheRemovedAreNot) {
    NameEntry *older = addName("twice_"), *newer = addName("twice_");
    constexpr int COUNT = 6000;
    auto text = [](int i) {  // sums of characters recur; some texts are long
        return "n" + std::to_string(i) + (i % 7 == 0 ? "_a_name_of_more_than_usual_length" : "");
    };
    std::vector<NameEntry *> added;
    for (int i = 0; i < COUNT; i++) {
        EXPECT_EQ(lookupName(text(i).c_str()), nullptr);
        added.push_back(addName(text(i).c_str()));
    }
    EXPECT_EQ(lookupName("twice_"), newer);
    removeName("twice_");
    EXPECT_EQ(lookupName("twice_"), older);
    for (int i = 0; i < COUNT; i += 2)
        removeName(text(i).c_str());
    for (int i = 0; i < COUNT; i++)
        EXPECT_EQ(lookupName(text(i).c_str()), i % 2 == 0 ? nullptr : added[i]) << i;
    EXPECT_NE(lookupName("_path"), nullptr);
}

TEST_F(ScopeTest, SlotsBeyondFiftyAreReachedThroughTheChain) {
    StmtNode inner{};
    inner.kind = STMT_BLOCK;
    inner.level = 2;
    const int count = 123;
    for (int i = 0; i < count; i++)
        declare(&inner.symbols(), ("v" + std::to_string(i)).c_str(), 2, i % 3 ? DT_INT : DT_STRING);
    currentContext->statement = &inner;
    enterBlock();
    int i = 0;
    for (TypeInfo *symbol = inner.symbols(); symbol; symbol = symbol->next, i++) {
        VarCell *cell = findVarCell(symbol);
        ASSERT_EQ(cell->type, static_cast<uint32_t>(symbol->dataType)) << i;
        if (symbol->dataType == DT_INT)
            cell->data.i = i;
        else
            cell->data.text = copyString("owned by the frame");
    }
    for (int slot : {1, 49, 50, 59, 61, 122})
        EXPECT_EQ(lookupSlot(2, slot)->data.i, slot);
    errorsOf([&] { lookupSlot(2, count); });
    EXPECT_EQ(runStatus, RUN_ERROR);
    popFrame();
    EXPECT_EQ(errorsOf([&] { EXPECT_NE(findVarCell(inner.symbols()), nullptr); }),
              "ERROR: attempt to access non-existing memory\n");
    EXPECT_EQ(errorFlag, 1);
    releaseTypeInfoList(inner.symbols());
}

TEST_F(ScopeTest, OnlyTheBaseFrameStaysWhenFramesArePopped) {
    currentContext->frames = baseFrame;
    popFrame();
    EXPECT_EQ(currentContext->frames, baseFrame);
}

TEST_F(ScopeTest, AnArrayTooLargeToCountIsRefused) {
    TypeInfo *a = declareArray("huge", DT_DOUBLE, {0, 100000, 0, 100000});
    EXPECT_EQ(errorsOf([&] { allocateStorage(a); }), "ERROR: out of memory in Zy\n");
    EXPECT_EQ(a->storageCell->data.p, nullptr);
}

TEST_F(ScopeTest, AVariableWithoutStorageGivesAScratchCellOfItsType) {
    TypeInfo *a = declareArray("a", DT_STRING, {0, 3});
    EXPECT_EQ(errorsOf([&] {
                  VarCell *cell = findVarCell(a);
                  EXPECT_EQ(cell->count, 3u);
                  static_cast<char **>(cell->data.p)[0] = copyString("in the scratch cell");
              }),
              "ERROR: attempt to access non-existing memory for 'a'\n");
    TypeInfo *n = declareGlobal("n");
    errorsOf([&] { EXPECT_EQ(findVarCell(n)->type, DT_INT); });
    EXPECT_EQ(errorFlag, 1);
    EXPECT_EQ(runStatus, RUN_ERROR);
}

TEST_F(ScopeTest, LinksAreFollowedToTheirEnd) {
    TypeInfo *r = declareGlobal("r");
    VarCell *target = newVarCell(DT_INT), *middle = newVarCell(DT_LINK);
    middle->data.p = target;
    r->storageCell = newVarCell(DT_LINK);
    r->storageCell->data.p = middle;
    EXPECT_EQ(findVarCell(r), target);
    EXPECT_EQ(findVarCellLink(r), r->storageCell);
    for (VarCell *cell : {r->storageCell, middle, target})
        killEntry(cell);
    r->storageCell = nullptr;
}

TEST_F(ScopeTest, AnotherRunStartsFromTheVariablesOfTheFile) {
    TypeInfo *x = declareGlobal("x");
    allocateStorage(x);
    x->storageCell->data.i = 5;
    StmtNode inner{};
    inner.kind = STMT_BLOCK;
    inner.level = 2;
    declare(&inner.symbols(), "local", 2, DT_STRING);
    currentContext->statement = &inner;
    enterBlock();
    for (int depth = 0; depth < 3; depth++) {  // calls that never returned share the block's frame
        ExecContext *context = newContext();
        context->caller = currentContext;
        context->statement = &inner;
        currentContext = context;
        enterBlock();
        pushValue(newZeroValue(DT_INT));
    }
    claimClassContext()->thisFormal = x;
    claimClassContext();
    rewindContexts();
    EXPECT_EQ(currentContext, baseContext);
    EXPECT_EQ(allContexts, baseContext);
    EXPECT_EQ(currentContext->frames->level, FILE_LEVEL);
    EXPECT_EQ(currentContext->frames->outer, baseFrame);
    EXPECT_EQ(findVarCell(x)->data.i, 5);
    EXPECT_EQ(classContext->next, nullptr);
    EXPECT_EQ(classContext->thisFormal, nullptr);
    releaseTypeInfoList(inner.symbols());
}

// ---- Removal and redeclaration ----------------------------------------------------------------

TEST_F(ScopeTest, RemvarRemovesGlobalsAndConstantsAndReportsTheRest) {
    TypeInfo *a = declareGlobal("a"), *b = declareGlobal("b"), *c = declareGlobal("c");
    for (TypeInfo *symbol : {a, b, c})
        allocateStorage(symbol);
    EXPECT_EQ(call(remvar, "a"), 0);
    EXPECT_EQ(lookupName("a")->symbol, nullptr);
    EXPECT_EQ(block.symbols(), b);
    EXPECT_EQ(c->index, 1);
    EXPECT_EQ(block.symbolCount, 2);
    TypeInfo *d = declareGlobal("d");  // takes the number of c's slot: c keeps its cell
    allocateStorage(d);
    c->storageCell->data.i = 5;
    d->storageCell->data.i = 6;
    EXPECT_EQ(findVarCell(c)->data.i, 5);

    constants = 1;
    addPredefinedConstant("TWO_PI", newZeroValue(DT_DOUBLE));
    EXPECT_EQ(call(remvar, "TWO_PI"), 0);
    EXPECT_EQ(call(isvar, "TWO_PI"), 0);

    name("local");
    EXPECT_EQ(errorsOf([] { EXPECT_EQ(call(remvar, "local"), 1); }),
              "WARNING: variable 'local' in remvar() is not a global or top level variable \n");
    EXPECT_EQ(errorsOf([] { EXPECT_EQ(call(remvar, "unheard"), 1); }),
              "WARNING: 'unheard' in remvar() is undefined \n");
    EXPECT_EQ(errorsOf([] { EXPECT_EQ(call(remvar, nullptr), -1); }),
              "WARNING: remvar() removing null variable \n");
    EXPECT_EQ(runStatus, RUN_WARNING);
}

TEST_F(ScopeTest, IsvarTellsConstantsVariablesAndFunctionsApart) {
    constants = 1;
    addPredefinedConstant("C0", newZeroValue(DT_INT));
    addSystemVariable("_v0", DT_INT, 95);
    declareGlobal("v1");
    TypeInfo *f = declareGlobal("f1");
    f->kind = KIND_FUNCTION;
    f->functionLink = newFuncInfo(f);
    name("local");
    const std::pair<const char *, int> cases[] = {{"C0", 1}, {"_v0", 2},   {"v1", 3},
                                                  {"f1", 4}, {"local", 0}, {"unheard", 0}};
    for (auto [text, expected] : cases)
        EXPECT_EQ(call(isvar, text), expected) << text;
    EXPECT_EQ(call(isvar, nullptr), 0);

    Value *pointer = newZeroValue(DT_P_FUNCTION);
    pointer->payload.symbol = f;
    EXPECT_EQ(isvar(pointer), 0);  // no body, no name
    f->functionLink->body = &block;
    EXPECT_EQ(isvar(pointer), 4);
    pointer->payload.bits = 1;  // a signal handler constant
    EXPECT_EQ(isvar(pointer), 0);
    recycleValue(pointer);
    f->functionLink->body = nullptr;  // the test's own block
}

class RedeclarationTest : public ScopeTest {
protected:
    std::string redeclare(TypeInfo *fresh, TypeInfo *old) {
        NameEntry *entry = old->name;
        std::string errors = errorsOf([&] { checkRedeclaration(fresh, old); });
        EXPECT_EQ(entry->symbol, old);
        EXPECT_EQ(errorFlag, !errors.empty());
        return errors;
    }
};

TEST_F(RedeclarationTest, ChangesAreReported) {
    TypeInfo *a = declareArray("a", DT_INT, {0, 5});
    EXPECT_EQ(redeclare(declareArray("a", DT_INT, {0, 10}), a),
              "ERROR: upper limit for array extent of dimension 1 is changed from 4 to 9 \n");
    errorFlag = 0;
    EXPECT_EQ(redeclare(declareArray("a", DT_INT, {1, 5}), a),
              "ERROR: lower limit for array extent of dimension 1 is changed from 0 to 1 \n");
    errorFlag = 0;
    EXPECT_EQ(redeclare(declareArray("a", DT_INT, {0, 5, 0, 2}), a),
              "ERROR: rank of array is changed from 1 to 2 \n");
    errorFlag = 0;
    EXPECT_EQ(redeclare(declareArray("a", DT_INT, {0, 5}, KIND_ARRAY), a),
              "ERROR: inconsistent array for variable 'a' \n");
    errorFlag = 0;
    TypeInfo *x = declareGlobal("x", DT_P_FUNCTION);
    EXPECT_EQ(redeclare(declareGlobal("x", DT_DUAL), x),
              "ERROR: variable 'x' was defined as pointer to function, redefine it as dual\n");
    EXPECT_EQ(block.symbols(), a);
    EXPECT_EQ(a->next, x);
    EXPECT_EQ(x->next, nullptr);
}

TEST_F(RedeclarationTest, ADefinitionCompletesAnExternDeclaration) {
    TypeInfo *a = declareArray("a", DT_INT, {0, 0});
    a->storage = STORAGE_EXTERN;
    TypeInfo *definition = declareArray("a", DT_INT, {0, 3});
    allocateStorage(definition);
    EXPECT_EQ(redeclare(definition, a), "");
    EXPECT_EQ(a->storage, STORAGE_AUTO);
    EXPECT_EQ(findVarCell(a)->count, 3u);
    EXPECT_EQ(a->arrayLink->bounds->next->item->payload.i, 3);
    EXPECT_EQ(redeclare(declareArray("a", DT_INT, {0, 0}), a), "");

    TypeInfo *empty = declareArray("empty", DT_INT, {0, 0});
    allocateStorage(empty);
    TypeInfo *sized = declareArray("empty", DT_INT, {0, 4});
    allocateStorage(sized);
    EXPECT_EQ(redeclare(sized, empty), "");
    EXPECT_EQ(findVarCell(empty)->count, 4u);
}

TEST_F(RedeclarationTest, ExternAndStatic) {
    TypeInfo *x = declareGlobal("x");
    x->storage = STORAGE_EXTERN;
    TypeInfo *fresh = declareGlobal("x");
    fresh->storage = STORAGE_STATIC;
    EXPECT_EQ(redeclare(fresh, x), "");
    EXPECT_EQ(x->storage, STORAGE_STATIC);
    x->level = 2;
    fresh = declareGlobal("x");
    fresh->storage = STORAGE_EXTERN;
    EXPECT_EQ(redeclare(fresh, x), "ERROR: 'x' as static variable redeclared\n");
    x->level = FILE_LEVEL;
}

TEST_F(RedeclarationTest, ADefinitionFollowsAPrototype) {
    TypeInfo *f = declareGlobal("f");
    f->kind = KIND_FUNCTION;
    f->used = 1;
    f->functionLink = newFuncInfo(f);
    TypeInfo *definition = declareGlobal("f");
    definition->kind = KIND_FUNCTION;
    FuncInfo *defined = definition->functionLink = newFuncInfo(definition);
    defined->body = &block;
    declare(&defined->parameters, "n", 2, DT_INT);
    EXPECT_EQ(redeclare(definition, f), "");
    EXPECT_EQ(f->functionLink, defined);
    EXPECT_EQ(defined->owner, f);
    EXPECT_EQ(f->used, 1);
    EXPECT_STREQ(f->functionLink->parameters->name->text, "n");
    defined->body = nullptr;  // the test's own block
}

}  // namespace zy
