// What tests of declarations share: a program with an empty main block and a block inside it, and
// the reading of declarations from text.
#pragma once

#include <cstdio>
#include <string>

#include "decl/declaration.h"
#include "expr/context.h"
#include "expr/nodes.h"
#include "expr/scope.h"
#include "front/lexer.h"
#include "instance.h"
#include "stmt/parseStack.h"

namespace zy {

class DeclarationFixture : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        if (!baseFrame)
            createBaseFrame();
        resetContexts();
        main = {};
        main.kind = STMT_BLOCK;
        main.level = FILE_LEVEL;
        main.symbols() = nullptr;
        inner = main;
        inner.level = 2;
        inner.operandB.statement = &main;
        globalBlock = currentBlock = &main;
        parseStack[0] = parseStack[1] = parseStack[2] = {true, &main};
        parseTop = 2;
        declaration.kind = STMT_DECLARATION;
        before = liveValueCount();
    }
    void TearDown() override {
        dropConstant();
        releaseContexts();
        releaseKeptTexts();
        for (StmtNode *block : {&main, &inner}) {
            releaseTypeInfoList(block->symbols());
            while (TagEntry *entry = block->operandD.tags) {
                block->operandD.tags = entry->next;
                delete entry;
            }
        }
        globalBlock = currentBlock = nullptr;
        parseTop = -1;
        releaseRemovedSymbols();
        releaseRetiredTags();
        EXPECT_EQ(liveValueCount(), before);
        InstanceTest::TearDown();
    }

    void enterInner() {
        currentBlock = &inner;
        parseStack[3] = {true, &inner};
        parseTop = 3;
    }

    // What a refused text left to be read.
    static void dropConstant() {
        if (tokenClass == TK_CONSTANT)
            deleteValue(tokenValue.constant);
        tokenClass = TK_CHAR;
    }

    // Puts a text before the lexer and reads its first token.
    static void begin(const std::string &text) {
        snprintf(lineBuffer, sizeof lineBuffer, "%s", text.c_str());
        lineLength = static_cast<int16_t>(text.size());
        linePos = 0;
        dropConstant();
        pushedBack = endOfInput = false;
        errorFlag = 0;
        nextToken();
    }

    // Reads the declarations of a text one after the other. What they printed.
    std::string read(const std::string &text) {
        return errorsOf([&] {
            begin(text);
            // As the statement parser has it: const objects take their initial values.
            parseStack[++parseTop] = {true, &declaration};
            while (!endOfInput && !errorFlag) {
                declare(nullptr, currentBlock->level, &currentBlock->operandD.tags,
                        &currentBlock->symbols(), nullptr, nullptr, CONTEXT_PLAIN);
                if (linePos >= lineLength)
                    break;
                nextToken();
            }
            parseTop--;
        });
    }

    StmtNode main, inner;
    StmtNode declaration = {};
    int before = 0;
};

}  // namespace zy
