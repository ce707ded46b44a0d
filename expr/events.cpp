#include "expr/events.h"

#include <cstring>

#include "decl/funcInfo.h"
#include "decl/structInfo.h"
#include "expr/value.h"
#include "extern/include/embedzy.h"
#include "front/names.h"
#include "stmt/stmtNode.h"

namespace zy {

namespace {

// The line of the statement that closes a block: the end node of its list.
int lastLineOf(const StmtNode *block) {
    const auto *statement = block->operandA.statement;
    while (statement && statement->kind != STMT_END)
        statement = statement->next;
    return statement ? statement->line : 0;
}

// Scripts know the function that a file's main became by its own name.
const char *shownName(const NameEntry *name) {
    constexpr char hiddenPrefix[] = "___";
    if (!name)
        return nullptr;
    return strncmp(name->text, hiddenPrefix, strlen(hiddenPrefix)) == 0 ? "main" : name->text;
}

void describeFunction(ZyDebugInfo &info, const FuncInfo *function) {
    const TypeInfo *owner = function->owner;
    if (function->body) {
        info.functionFirstLine = function->body->line;
        info.functionLastLine = lastLineOf(function->body);
    }
    if (!owner)
        return;
    info.function = shownName(owner->name);
    info.isConstructor = (owner->flags & FLAG_CONSTRUCTOR) != 0;
    info.isDestructor = (owner->flags & FLAG_DESTRUCTOR) != 0;
    bool isMember = owner->flags & FLAG_MEMBER_FUNCTION;
    if (isMember && owner->structLink && owner->structLink->tag && owner->structLink->tag->name)
        info.className = owner->structLink->tag->name->text;
}

}  // namespace

void deliverEvent(DebugEvent event) {
    if (!e_lang->callbackFn)
        return;
    e_lang->callbackActive = 0;
    ZyDebugInfo info{};
    info.event = event;
    info.interval = e_lang->callbackInterval;
    if (const StmtNode *statement = currentContext->statement) {
        info.line = statement->line;
        info.file = statement->file;
    }
    if (currentContext->function)
        describeFunction(info, currentContext->function);
    e_lang->callbackFn(e_interp, &info, e_lang->callbackData);
    if (e_lang->stackViewBase) {
        currentContext = e_lang->stackViewBase;
        e_lang->stackViewBase = nullptr;
    }
    e_lang->callbackActive = 1;
}

}  // namespace zy
