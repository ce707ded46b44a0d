#include "stmt/program.h"

#include <cstdlib>
#include <cstring>

#include "decl/declState.h"
#include "decl/funcInfo.h"
#include "decl/functionFiles.h"
#include "decl/typeInfo.h"
#include "expr/context.h"
#include "expr/nodes.h"
#include "expr/scope.h"
#include "front/lexer.h"
#include "front/macros.h"
#include "front/preprocessor.h"
#include "front/tokens.h"
#include "front/vocabularySwitches.h"
#include "instance/langState.h"
#include "startup/predefinedMacros.h"
#include "stmt/callPlan.h"
#include "stmt/execute.h"
#include "stmt/functionName.h"
#include "stmt/lists.h"
#include "stmt/objectLife.h"
#include "stmt/parseStack.h"

namespace zy {

// ---- Release ------------------------------------------------------------------------------------

namespace {

void releaseTypeList(TypeInfo *&list) {
    while (TypeInfo *symbol = list) {
        list = symbol->next;
        if (symbol->name && symbol->name->symbol == symbol)
            symbol->name->symbol = nullptr;
        releaseTypeInfo(symbol);
    }
}

void releaseTags(TagEntry *&list) {
    while (TagEntry *tag = list) {
        list = tag->next;
        delete tag;
    }
}

void releaseLabels(Label *&list) {
    while (Label *label = list) {
        list = label->next;
        free(label->enclosing);
        delete label;
    }
}

// What stands before the first label: it ends at the switch, at an end of its own if there is no
// label, or, in a body that wasn't closed, at the label.
void releaseFirstPart(StmtNode *part, const StmtNode *switchNode, const StmtNode *labelled) {
    while (part && part != switchNode && part != labelled) {
        StmtNode *next = part->kind == STMT_END ? nullptr : part->next;
        releaseOperands(part);
        delete part;
        part = next;
    }
}

// The groups' statements are the rest of the body's list.
void releaseSwitch(StmtNode *statement) {
    CaseGroup *group = statement->operandB.groups;
    StmtNode *labelled = group && group->next ? group->next->first : nullptr;
    if (StmtNode *block = statement->operandC.statement) {
        releaseFirstPart(block->operandA.statement, statement, labelled);
        releaseTypeList(block->operandC.symbols);
        releaseTags(block->operandD.tags);
        delete block;
    }
    releaseStatements(labelled);
    while (group) {
        CaseGroup *next = group->next;
        deleteNode(group->labels);
        delete group;
        group = next;
    }
}

void releaseBlock(StmtNode *block) {
    releaseStatements(block->operandA.statement);
    releaseTypeList(block->operandC.symbols);
    releaseTags(block->operandD.tags);
    releaseCallPlan(block);
}

void releaseLoop(StmtNode *statement) {
    // The step hangs in the body's list if there is one, the first statement of a `for` in none.
    StmtNode *body = statement->operandC.statement;
    releaseStatements(body ? body : statement->operandD.statement);
    if (StmtNode *first = statement->operandB.statement) {
        releaseOperands(first);
        delete first;
    }
}

void releaseTrees(StmtNode *statement) {
    deleteNode(statement->operandA.tree);
    deleteNode(statement->operandB.tree);
}

}  // namespace

void releaseOperands(StmtNode *statement) {
    switch (statement->kind) {
        case STMT_BLOCK: releaseBlock(statement); break;
        case STMT_FOREACH:
            releaseTrees(statement);
            deleteNode(statement->operandC.tree);
            deleteNode(statement->operandD.tree);
            releaseStatements(statement->operandE.statement);
            break;
        case STMT_IF:
            deleteNode(statement->operandA.tree);
            releaseStatements(statement->operandB.statement);
            releaseStatements(statement->operandC.statement);
            break;
        case STMT_LOOP:
        case STMT_DO:
            deleteNode(statement->operandA.tree);
            releaseLoop(statement);
            break;
        case STMT_SWITCH:
            deleteNode(statement->operandA.tree);
            releaseSwitch(statement);
            break;
        case STMT_LONGJMP:
        case STMT_INITIALISE:
        case STMT_CONSTRUCT:
        case STMT_DELETE: releaseTrees(statement); break;
        case STMT_RETURN:
            deleteNode(statement->operandA.tree);
            deleteNode(statement->operandD.tree);
            break;
        case STMT_EXIT:
        case STMT_STOP:
        case STMT_ABORT:
        case STMT_PERROR:
        case STMT_FREE:
        case STMT_CLEARERR:
        case STMT_SRAND:
        case STMT_EXPRESSION:
        case STMT_CASESEN:
        case STMT_FLOATCONST: deleteNode(statement->operandA.tree); break;
        case STMT_GOTO: free(statement->operandC.enclosing); break;
        case STMT_CONTINUE: free(statement->operandD.enclosing); break;
        default: break;
    }
}

void releaseStatements(StmtNode *first) {
    while (StmtNode *statement = first) {
        first = statement->kind == STMT_END ? nullptr : statement->next;
        releaseOperands(statement);
        delete statement;
    }
}

void releaseFunctionBody(FuncInfo *function) {
    StmtNode *body = function->body;
    function->body = nullptr;
    function->isOpen = false;
    auto *labels = static_cast<Label *>(function->labels);
    releaseLabels(labels);
    function->labels = nullptr;
    if (!body)
        return;
    StmtNode *closing = body->next;
    releaseBlock(body);
    delete body;
    delete closing;
}

namespace {

// Declarations of level 0 outlive the program, and so must the classes that they refer to.
bool hasGlobalObjects() {
    for (const TypeInfo *list : {systemSymbols, removedSymbols})
        for (; list; list = list->next)
            if (list->structLink || list->kind == KIND_FUNCTION)
                return true;
    return false;
}

}  // namespace

void releaseProgram() {
    releaseProgramStorage();
    releaseFunctionFiles();
    setFunctionName(nullptr);
    functionNameFrame = nullptr;
    functionNameCell = nullptr;  // an instance may end, and the next have no base frame
    forgetStaticObjects();
    if (!rootStmt)
        return;
    releaseBlock(globalBlock);
    delete globalBlock;
    releaseLabels(rootStmt->operandB.label);
    delete rootStmt;
    rootStmt = globalBlock = currentBlock = nullptr;
    releaseRemovedSymbols();
    if (!hasGlobalObjects())
        releaseRetiredTags();
    parseTop = -1;
    freeMacros();
    releaseSourceLines();
    releaseKeptTexts();
}

// ---- Start --------------------------------------------------------------------------------------

void newProgram() {
    resetPreprocessor();
    for (const PredefinedMacro &macro : predefinedMacros)
        if (!macro.onlyRestricted || e_lang->restricted)
            defineMacro(macro.name, macro.value, nameHash(macro.name));
    rootStmt = newStmtNode(STMT_ROOT);
    globalBlock = newStmtNode(STMT_BLOCK);
    rootStmt->operandA.statement = globalBlock;
    parseTop = -1;
    pushCursor(rootStmt);
    pushCursor(globalBlock);
    currentBlock = nullptr;
    openBlock(globalBlock, FILE_LEVEL);
    // The list's end leads to the root, which ends the run.
    cursor()->operandB.statement = rootStmt;
    lineConstant = lookupName("__LINE__");
    fileConstant = lookupName("__FILE__");
}

void resetRunState() {
    resetContexts();
    resetVocabularySwitches();
    restoreKeywords();
    resetDeclState();
}

void rewindRunState() { rewindContexts(); }

}  // namespace zy
