// Names, frames, the search for declarations, and what changes declarations later. The blocks,
// functions and classes that a parser would make are made by hand.

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

TEST_F(ScopeTest, FileStaticNamesAreHiddenWhileAFileIsReadAndComeBack) {
    TypeInfo *outer = declareGlobal("helper");
    outer->storage = STORAGE_STATIC;
    TypeInfo *plain = declareGlobal("plain");
    NameEntry *outerName = outer->name;
    hideFileNames();
    EXPECT_EQ(lookupName("helper"), nullptr);
    EXPECT_EQ(lookupName("plain"), plain->name);
    TypeInfo *inner = declareGlobal("helper");
    inner->storage = STORAGE_STATIC;
    restoreFileNames();
    EXPECT_EQ(lookupName("helper"), outerName);
    EXPECT_EQ(outerName->symbol, outer);
    EXPECT_STREQ(inner->name->text, "helper");  // messages still name it
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

TEST_F(ScopeTest, EachInvocationHasItsOwnLocals) {
    FuncInfo *function = newFuncInfo(nullptr);
    function->parameterLevel = 2;
    TypeInfo *formal = declare(&function->parameters, "n", 2, DT_INT);
    auto invoke = [&](int value) {
        ExecContext *context = newContext();
        context->caller = currentContext;
        ScopeFrame *frame = newScopeFrame(function, true);
        frame->outer = baseFrame;
        context->frames = frame;
        currentContext = context;
        setSlot(frame, 0, newVarCell(DT_INT));
        findVarCell(formal)->data.i = value;
    };
    invoke(1);
    invoke(2);
    EXPECT_EQ(findVarCell(formal)->data.i, 2);
    ExecContext *inner = currentContext;
    popFrame();
    currentContext = inner->caller;
    releaseContext(inner);
    EXPECT_EQ(findVarCell(formal)->data.i, 1);
    deleteNode(function);
}

TEST_F(ScopeTest, OnlyTheBaseFrameStaysWhenFramesArePopped) {
    currentContext->frames = baseFrame;
    popFrame();
    EXPECT_EQ(currentContext->frames, baseFrame);
}

TEST_F(ScopeTest, CellsAreSetUpAndReleasedByKind) {
    TypeInfo *a = declareArray("a", DT_DOUBLE, {1, 4, 0, 2});
    TypeInfo *fortran = declareArray("fa", DT_INT, {0, 2, 0, 3}, KIND_ARRAY);
    fortran->arrayLink->fortranOrder = 1;
    TypeInfo *open = declareArray("pa", DT_INT, {0, OPEN_LIMIT}, KIND_P_ARRAY);
    open->arrayLink->shapeKind = SHAPE_ASSUMED;
    TypeInfo *texts = declareArray("texts", DT_STRING, {0, 2});
    TypeInfo *tag = declareGlobal("S", DT_TAG);
    tag->structLink = newStructInfo(tag);
    tag->structLink->size = 24;
    TypeInfo *object = declareGlobal("object", DT_STRUCT);
    object->structLink = tag->structLink;
    for (TypeInfo *symbol : {a, fortran, open, texts, object})
        allocateStorage(symbol);

    const VarCell *cell = a->storageCell;
    EXPECT_EQ(cell->type, DT_CARRAY);
    EXPECT_EQ(cell->count, 6u);
    EXPECT_EQ(cell->shape->extent.stride, 2u);
    EXPECT_EQ(static_cast<double *>(cell->data.p)[5], 0);
    EXPECT_EQ(fortran->storageCell->type, DT_ARRAY);
    EXPECT_EQ(fortran->storageCell->shape->next->extent.stride, 2u);
    EXPECT_EQ(open->storageCell->type, DT_P_ARRAY);
    EXPECT_EQ(open->storageCell->adoptShape, 1u);
    EXPECT_EQ(open->storageCell->data.p, nullptr);
    static_cast<char **>(texts->storageCell->data.p)[1] = copyString("released with the array");
    EXPECT_EQ(static_cast<char *>(object->storageCell->data.p)[23], 0);

    VarCell *text = newVarCell(DT_P_CHAR);
    text->flags = CELL_OWNS_TEXT;
    text->text = copyString("owned");
    text->data.text = text->text + 2;
    killEntry(text);
    char borrowed[] = "borrowed";
    for (int type : {DT_P_CHAR, DT_P_VOID, DT_STRUCT}) {
        VarCell *view = newVarCell(type);
        view->data.p = borrowed;
        view->noFree = type == DT_STRUCT;
        killEntry(view);
    }
    VarCell *argument = newVarCell(DT_P_CARRAY);
    argument->data.p = calloc(3, 8);
    argument->argumentMark = ARRAY_ARGUMENT;
    argument->shape = newShapeNode(0, 3);
    killEntry(argument);
    EXPECT_STREQ(borrowed, "borrowed");
}

TEST_F(ScopeTest, ABoundMayNameAVariableThatIsReleasedBeforeIt) {
    TypeInfo *n = declareGlobal("n");
    TypeInfo *a = declareArray("a", DT_INT, {0});
    a->arrayLink->shapeKind = SHAPE_DEFERRED;
    appendListCell(a->arrayLink->bounds, newSymbolNode(n));
    allocateStorage(a);
    EXPECT_EQ(a->storageCell->shape, nullptr);  // each run of the declaration makes it
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

// ---- The search for declarations --------------------------------------------------------------

// int f, m; class A { int m; int f(); int g(); };  int A::f(int p) { int v; { int w; } }
class MemberTest : public ScopeTest {
protected:
    void SetUp() override {
        ScopeTest::SetUp();
        fileM = declareGlobal("m");
        fileF = declareGlobal("f");
        fileG = declareGlobal("g");
        tag = declareGlobal("A", DT_TAG);
        tag->structLink = newStructInfo(tag);
        memberM = declare(&tag->structLink->members, "m", 0, DT_INT);
        memberM->flags = FLAG_MEMBER | FLAG_RESTRICT;
        memberG = declare(&tag->structLink->members, "g", 0, DT_INT);
        memberG->flags = FLAG_MEMBER | FLAG_MEMBER_FUNCTION;
        memberP = declare(&tag->structLink->members, "p", 0, DT_INT);

        member.name = name("f");
        function = newFuncInfo(&member);
        function->parameterLevel = 2;
        member.functionLink = function;
        self = declare(&function->parameters, "this", 2, DT_P_STRUCT);
        self->structLink = tag->structLink;
        formalP = declare(&function->parameters, "p", 2, DT_INT);
        body.kind = inner.kind = STMT_BLOCK;
        body.level = 3;
        inner.level = 4;
        body.operandB.statement = &block;
        inner.operandB.statement = &body;
        localV = declare(&body.symbols(), "v", 3, DT_INT);
        innerW = declare(&inner.symbols(), "w", 4, DT_INT);
        function->body = &body;

        ClassContext *record = claimClassContext();
        record->thisFormal = self;
        record->member = &member;
        declaration.kind = STMT_DECLARATION;
        ParseEntry entries[] = {
            {true, &declaration}, {false, function}, {true, &body}, {true, &inner}, {true, &end}};
        end.kind = STMT_END;
        for (const ParseEntry &entry : entries)
            parseStack[++parseTop] = entry;
    }
    void TearDown() override {
        releaseTypeInfoList(body.symbols());
        releaseTypeInfoList(inner.symbols());
        deleteNode(function);
        ScopeTest::TearDown();
    }
    Symbol *find(const char *text, const char *rest = ";") {
        strcpy(lineBuffer, rest);
        linePos = 0;
        found = nullptr;
        return lookupSymbolParse(name(text), nullptr, &found);
    }

    TypeInfo *fileM, *fileF, *fileG, *tag, *memberM, *memberG, *memberP, *self, *formalP, *localV,
        *innerW;
    TypeInfo member{};
    FuncInfo *function;
    StmtNode body{}, inner{}, end{}, declaration{};
    ClassContext *found = nullptr;
};

TEST_F(MemberTest, MembersStandBetweenTheFunctionAndFileScope) {
    EXPECT_EQ(find("w"), innerW);
    EXPECT_EQ(find("v"), localV);
    EXPECT_EQ(find("p"), formalP);  // hides the member
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(find("m"), memberM);  // hides the file-scope name
    EXPECT_EQ(found, classContext);
    EXPECT_EQ(find("f"), fileF);
    EXPECT_EQ(find("nowhere"), nullptr);
    TypeInfo *local = declare(&inner.symbols(), "m", 4, DT_INT);
    EXPECT_EQ(find("m"), local);  // a block's local hides the member
    EXPECT_EQ(lookupSymbolParse(name("m"), tag->structLink->members, nullptr), memberM);
}

TEST_F(MemberTest, AMemberFunctionIsMeantOnlyWhereItIsCalled) {
    EXPECT_EQ(find("g", "  (1);"), memberG);
    EXPECT_EQ(find("g", " + 1;"), fileG);
}

TEST_F(MemberTest, OutsideEveryBlockTheFileScopeDeclarationCounts) {
    parseTop = 0;
    EXPECT_EQ(find("m"), fileM);
}

TEST_F(MemberTest, TheRunTimeSearchSeesTheSame) {
    ExecContext *call = newContext();
    call->caller = currentContext;
    call->function = function;
    call->level = 2;
    StmtNode statement{};
    statement.kind = 41;
    statement.next = &end;
    end.operandB.statement = &inner;
    auto findAt = [&](ExecContext *context, const char *text) {
        strcpy(lineBuffer, ";");
        linePos = 0;
        found = nullptr;
        return lookupSymbolRun(context, &statement, name(text), &found);
    };
    EXPECT_EQ(findAt(call, "w"), innerW);
    EXPECT_EQ(findAt(call, "v"), localV);
    EXPECT_EQ(findAt(call, "p"), formalP);
    EXPECT_EQ(findAt(call, "m"), memberM);
    EXPECT_EQ(found, classContext);

    // A function nested in it sees its caller's locals and members, tags not; a plain function that
    // it calls sees neither.
    call->statement = &statement;
    declare(&inner.symbols(), "T", 4, DT_TAG);
    FuncInfo other{};
    ExecContext *nested = newContext();
    nested->caller = call;
    nested->function = &other;
    nested->level = 5;
    auto findIn = [&](ExecContext *context, const char *text) {
        return lookupSymbolRun(context, nullptr, name(text), &found);
    };
    EXPECT_EQ(findIn(nested, "w"), innerW);
    EXPECT_EQ(findIn(nested, "m"), memberM);
    EXPECT_EQ(findIn(nested, "T"), nullptr);
    nested->level = 2;
    EXPECT_EQ(findIn(nested, "w"), nullptr);
    EXPECT_EQ(findIn(nested, "m"), fileM);
    releaseContext(nested);
    releaseContext(call);
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

TEST_F(ScopeTest, SystemVariablesKeepTheirSlotsWhenAnotherIsRemoved) {
    Symbol *first = addSystemVariable("_one", DT_INT, 90);
    Symbol *second = addSystemVariable("_two", DT_INT, 91);
    EXPECT_EQ(call(remvar, "_two"), 0);
    EXPECT_EQ(first->index, 90);
    EXPECT_EQ(second->name->symbol, nullptr);
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

TEST_F(RedeclarationTest, ARepeatedDefinitionKeepsTheVariable) {
    TypeInfo *x = declareGlobal("x");
    allocateStorage(x);
    x->storageCell->data.i = 5;
    VarCell *cell = x->storageCell;
    TypeInfo *again = declareGlobal("x");
    allocateStorage(again);
    EXPECT_EQ(redeclare(again, x), "");
    EXPECT_EQ(x->storageCell, cell);
    EXPECT_EQ(findVarCell(x)->data.i, 5);
    allocateStorage(x);  // once more changes nothing
    TypeInfo *sameCell = declareGlobal("x");
    sameCell->storageCell = cell;
    allocateStorage(sameCell);
    EXPECT_EQ(redeclare(sameCell, x), "");
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
