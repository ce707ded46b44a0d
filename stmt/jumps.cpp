// return, goto and labels, break, continue.

#include <cstring>

#include "decl/arrays.h"
#include "decl/funcInfo.h"
#include "decl/structInfo.h"
#include "expr/direct.h"
#include "expr/guards.h"
#include "expr/nodes.h"
#include "expr/parser.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "front/lexer.h"
#include "front/names.h"
#include "instance/report.h"
#include "stmt/arrayArguments.h"
#include "stmt/objectLife.h"
#include "stmt/statements.h"

namespace zy {

// ---- return -------------------------------------------------------------------------------------

namespace {

bool isConstructor(const FuncInfo *function) {
    return function->owner && (function->owner->flags & FLAG_CONSTRUCTOR);
}

const char *nameOf(const FuncInfo *function) {
    return function->owner && function->owner->name ? function->owner->name->text : "";
}

// A return without a value: functions that have one give a zero.
void returnZero(StmtNode *statement, const FuncInfo *function) {
    if (function->returnType == DT_VOID || isConstructor(function))
        return;
    parseWarning("missing return expression for function %s() and default zero is used",
                 nameOf(function));
    statement->operandA.tree = newZeroValue(function->returnType);
}

void returnValue(StmtNode *statement, const FuncInfo *function) {
    ExprNode *tree = parseTree();
    statement->operandA.tree = tree;
    if (errorFlag)
        return;
    if (isConstructor(function)) {
        const StructInfo *structInfo = function->owner->structLink;
        parseError("unexpected return value for constructor %s::%s()",
                   structInfo ? structInfo->tag->name->text : "", nameOf(function));
        return;
    }
    int type = treeType(tree);
    if (returnsArray(function) && isAssumedShape(function->owner) && !isArray(type)) {
        parseError("cannot detemine the shape of the returned array");
        return;
    }
    // The elements of an array are converted as those of any other.
    if (returnsArray(function) && isArray(type))
        checkType(function->returnType, elementTypeOf(tree));
    else
        convertTree(tree, function->returnType);
    if (errorFlag)
        return;
    statement->operandE.compute = makeDirectNumber(tree);
    if (!statement->operandE.compute)
        statement->chain = compileChain(tree, nullptr, false);
}

}  // namespace

void parseReturn(StmtNode *statement) {
    FuncInfo *function = parsedFunction();
    if (!function) {
        parseError("no function definition for a return statement");
        return;
    }
    statement->operandB.function = function;
    statement->operandC.number = 1;
    peekNonBlank();
    if (lineBuffer[linePos] == ';')
        returnZero(statement, function);
    else
        returnValue(statement, function);
    if (!errorFlag && returnDestroys(function))
        addDestruction(statement);
    if (!errorFlag)
        expectChar(';', true);
}

namespace {

enum Returning { RETURNS, RETURNS_NOT, RETURNS_SOMETIMES };

Returning returningOf(const StmtNode *first, const StmtNode *stop);

Returning returningOfIf(const StmtNode *statement) {
    Returning then = returningOf(statement->operandB.statement, nullptr);
    if (!statement->operandC.statement)
        return then == RETURNS_NOT ? RETURNS_NOT : RETURNS_SOMETIMES;
    Returning otherwise = returningOf(statement->operandC.statement, nullptr);
    return then == otherwise ? then : RETURNS_SOMETIMES;
}

Returning returningOfSwitch(const StmtNode *statement) {
    const CaseGroup *group = statement->operandB.groups->next;
    if (!group)
        return RETURNS_NOT;
    for (; group; group = group->next)
        if (returningOf(group->first, group->next ? group->next->first : nullptr) != RETURNS)
            return RETURNS_SOMETIMES;
    return RETURNS;
}

Returning returningOfStatement(const StmtNode *statement) {
    switch (statement->kind) {
        case STMT_RETURN:
        case STMT_EXIT: return RETURNS;
        case STMT_BLOCK: return returningOf(statement->operandA.statement, nullptr);
        case STMT_LOOP:
        case STMT_DO: return returningOf(statement->operandC.statement, nullptr);
        case STMT_FOREACH: return returningOf(statement->operandE.statement, nullptr);
        case STMT_IF: return returningOfIf(statement);
        case STMT_SWITCH: return returningOfSwitch(statement);
        default: return RETURNS_NOT;
    }
}

// Of a list of statements what its last one does; a return before the end counts as well.
Returning returningOf(const StmtNode *first, const StmtNode *stop) {
    Returning found = RETURNS_NOT;
    for (; first && first != stop && first->kind != STMT_END; first = first->next) {
        Returning now = returningOfStatement(first);
        if (now == RETURNS)
            return RETURNS;
        if (now == RETURNS_SOMETIMES)
            found = now;
    }
    return found;
}

// Whether the last thing that a list does is an `if` without `else`.
bool endsInLoneIf(const StmtNode *first) {
    const StmtNode *last = nullptr;
    for (; first && first->kind != STMT_END; first = first->next)
        if (first->kind != STMT_NULL)
            last = first;
    if (!last)
        return false;
    switch (last->kind) {
        case STMT_BLOCK: return endsInLoneIf(last->operandA.statement);
        case STMT_LOOP:
        case STMT_DO: return endsInLoneIf(last->operandC.statement);
        case STMT_FOREACH: return endsInLoneIf(last->operandE.statement);
        case STMT_IF: return !last->operandC.statement;
        default: return false;
    }
}

}  // namespace

void checkReturn(StmtNode *block, FuncInfo *function) {
    bool isInternal = strncmp(nameOf(function), "___", 3) == 0;
    bool isDestructor = function->owner && (function->owner->flags & FLAG_DESTRUCTOR);
    if (function->returnType == DT_VOID || isConstructor(function) || isDestructor || isInternal)
        return;
    switch (returningOf(block->operandA.statement, nullptr)) {
        case RETURNS: break;
        case RETURNS_NOT:
            parseWarning("missing return statement for function %s() and default zero is used",
                         nameOf(function));
            break;
        case RETURNS_SOMETIMES:
            if (endsInLoneIf(block->operandA.statement))
                parseWarning("if with return but no else with return");
            parseWarning(
                "maybe missing return statement for function %s() and default zero is used",
                nameOf(function));
            break;
    }
}

// ---- goto ---------------------------------------------------------------------------------------

namespace {

Label *&labelsOf(FuncInfo *function) {
    return function ? reinterpret_cast<Label *&>(function->labels) : rootStmt->operandB.label;
}

Label *findLabel(FuncInfo *function, NameEntry *name) {
    Label *&list = labelsOf(function);
    for (Label *label = list; label; label = label->next)
        if (label->name == name)
            return label;
    return list = new Label{list, name, nullptr, nullptr, function, false, nullptr};
}

// The compound statements that are open, down to the entry given at the stack's lower end.
Enclosing *enclosingStatements(int bottom = FILE_LEVEL_TOP) {
    auto *list = static_cast<Enclosing *>(
        allocOrFail(sizeof(Enclosing) + sizeof(StmtNode *) * PARSE_STACK_SIZE));
    if (!list)
        return nullptr;
    list->count = 0;
    for (int index = parseTop - 1; index >= bottom && !functionAt(index); index--)
        if (StmtNode *owner = ownerAt(index))
            list->statements[list->count++] = owner;
    return list;
}

}  // namespace

void parseGoto(StmtNode *statement) {
    nextToken();
    if (tokenClass != TK_IDENTIFIER) {
        pushedBack = true;
        parseError("invalid label following goto ");
        return;
    }
    Label *label = findLabel(parsedFunction(), tokenValue.name);
    label->wanted = true;
    statement->operandA.label = label;
    statement->operandB.statement = currentBlock;
    statement->operandC.enclosing = enclosingStatements();
    expectChar(';', true);
}

void defineLabel(StmtNode *statement, NameEntry *name) {
    Label *label = findLabel(parsedFunction(), name);
    if (label->statement) {
        parseError("duplicated label '%s'", name->text);
        return;
    }
    label->statement = statement;
    label->block = currentBlock;
    label->enclosing = enclosingStatements();
}

// A goto out of a function means a label of file level. The records move up.
static void moveLabelsUp(FuncInfo *function) {
    Label **link = &labelsOf(function);
    while (Label *label = *link) {
        if (label->statement) {
            link = &label->next;
            continue;
        }
        *link = label->next;
        label->next = rootStmt->operandB.label;
        rootStmt->operandB.label = label;
    }
}

// The file-level label of the same name that an unresolved record stands for.
static const Label *definedTwin(const Label *label) {
    for (const Label *other = rootStmt->operandB.label; other; other = other->next)
        if (other->name == label->name && other->statement)
            return other;
    return nullptr;
}

static void resolveAtFileLevel(Label *label) {
    if (label->statement || !label->wanted)
        return;
    if (const Label *twin = definedTwin(label)) {
        label->statement = twin->statement;
        label->block = twin->block;
        label->function = nullptr;
        return;
    }
    const FuncInfo *function = label->function;
    if (!function)
        parseError("label '%s' undefined in a goto statement", label->name->text);
    else if (strncmp(nameOf(function), "___", 3) == 0)
        parseError("label '%s' inside function main() undefined", label->name->text);
    else
        parseError("label '%s' inside function '%s()' undefined", label->name->text,
                   nameOf(function));
    parseOk = 0;
}

void finishLabels(FuncInfo *function) {
    if (function)
        moveLabelsUp(function);
    else
        for (Label *label = rootStmt->operandB.label; label; label = label->next)
            resolveAtFileLevel(label);
}

// ---- break and continue -------------------------------------------------------------------------

namespace {

// The block that the list with that entry belongs to.
StmtNode *blockBelow(int index) {
    while (--index > FILE_LEVEL_TOP)
        if (StmtNode *owner = ownerAt(index); owner && owner->kind == STMT_BLOCK)
            return owner;
    return globalBlock;
}

// The entry of the innermost statement that a jump of this sort belongs to; 0 if there is none in
// this function.
int jumpTarget(bool isBreak) {
    for (int index = parseTop - 1; index >= FILE_LEVEL_TOP && !functionAt(index); index--) {
        const StmtNode *owner = ownerAt(index);
        if (!owner)
            continue;
        bool isLoop =
            owner->kind == STMT_LOOP || owner->kind == STMT_DO || owner->kind == STMT_FOREACH;
        if (isLoop || (isBreak && owner->kind == STMT_SWITCH))
            return index;
    }
    return 0;
}

// The entry of the target, which is noted in the statement.
int parseJump(StmtNode *statement, bool isBreak, const char *word) {
    int index = jumpTarget(isBreak);
    if (!index) {
        parseError("invalid place for '%s'", word);
        return 0;
    }
    statement->operandA.statement = ownerAt(index);
    statement->operandB.statement = currentBlock;
    statement->operandC.statement = blockBelow(index);
    expectChar(';', true);
    return index;
}

}  // namespace

void parseBreak(StmtNode *statement) { parseJump(statement, true, "break"); }

void parseContinue(StmtNode *statement) {
    int target = parseJump(statement, false, "continue");
    // A switch on the way may be one whose label is still to be found.
    if (target && jumpTarget(true) != target)
        statement->operandD.enclosing = enclosingStatements(target + 1);
}

}  // namespace zy
