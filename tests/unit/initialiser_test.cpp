// Initial values of scalars and pointers: static ones are there when the text has been read,
// automatic ones when the statements that they became have run.

#include "decl/initialiser.h"

#include <cmath>

#include "declarations.h"
#include "expr/evaluator.h"
#include "expr/nodes.h"
#include "stmt/parser.h"
#include "stmt/program.h"

namespace zy {

class InitialiserTest : public DeclarationFixture {
protected:
    void TearDown() override {
        dropPending();
        DeclarationFixture::TearDown();
    }

    // Runs the statements that automatic initialisers became.
    static std::string runPending() {
        return errorsOf([] {
            for (StmtNode *statement = pendingBefore; statement; statement = statement->next) {
                Value *stack = currentContext->stack;
                if (statement->chain)
                    runNested(statement->chain);
                while (currentContext->stack != stack)
                    deleteValue(popValue());
            }
        });
    }
    static void dropPending() {
        releaseStatements(pendingBefore);
        pendingBefore = nullptr;
    }

    static VarCell *cellOf(const char *name) { return findVarCell(lookupName(name)->symbol); }
};

// With the initialisers of a program put off, those of static duration wait as well.
TEST_F(InitialiserTest, PutOff) {
    e_lang->runInitialisers = 0;
    EXPECT_EQ(read("extern int i = 3;"), "");
    EXPECT_EQ(cellOf("i")->data.i, 0);
    EXPECT_EQ(runPending(), "");
    EXPECT_EQ(cellOf("i")->data.i, 3);
}

TEST_F(InitialiserTest, GlobalsAtOnce) {
    e_lang->initGlobals = 1;
    EXPECT_EQ(read("int i = 3;"), "");
    EXPECT_EQ(cellOf("i")->data.i, 3);
}

TEST_F(InitialiserTest, PointersOfTheRestrictedShell) {
    e_lang->restricted = 1;
    EXPECT_EQ(read("extern int *p = 0;"),
              "ERROR: lvalue of pointer type is restricted in safe shell\n");
    e_lang->restricted = 0;
}

}  // namespace zy
