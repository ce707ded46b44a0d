#include <string>

#include "decl/aggregates.h"
#include "decl/declState.h"
#include "decl/scopeLists.h"
#include "expr/nodes.h"
#include "instance/report.h"
#include "stmt/parseStack.h"

namespace zy {

namespace {

constexpr std::string_view hiddenPrefix = "_zy_";

std::string hiddenText(const NameEntry *name) { return std::string(hiddenPrefix) + name->text; }

NameEntry *internName(const std::string &text) {
    NameEntry *name = lookupName(text.c_str());
    return name ? name : addName(text.c_str());
}

bool isTag(const Symbol *symbol) {
    return symbol->dataType == DT_TAG || (symbol->dataType == DT_ENUM && symbol->structLink);
}

Symbol *tagNamed(TypeInfo *list, const NameEntry *name, const NameEntry *hidden) {
    for (; list; list = list->next)
        if ((list->name == name || (hidden && list->name == hidden)) && isTag(list))
            return list;
    return nullptr;
}

// As in C, a tag that was declared inside a struct is known behind it by its own name as well.
Symbol *tagInside(TypeInfo *list, const NameEntry *name, const NameEntry *hidden) {
    for (; list; list = list->next) {
        if (list->dataType != DT_TAG || !list->structLink || list->flags & FLAG_IN_CLASS)
            continue;
        TypeInfo *members = list->structLink->members;
        Symbol *tag = tagNamed(members, name, hidden);
        if (!tag)
            tag = tagInside(members, name, hidden);
        if (tag)
            return tag;
    }
    return nullptr;
}

}  // namespace

Symbol *tagInList(const NameEntry *name, TypeInfo *list) {
    return tagNamed(list, name, lookupName(hiddenText(name).c_str()));
}

Symbol *visibleTag(const NameEntry *name, TypeInfo *list) {
    const NameEntry *hidden = lookupName(hiddenText(name).c_str());
    Symbol *tag = tagNamed(list, name, hidden);
    for (const OpenBody *body = innermostBody; body && !tag; body = body->outer)
        tag = tagNamed(body->info->members, name, hidden);
    for (StmtNode *block = currentBlock; block && !tag; block = block->enclosingBlock())
        if (block->kind == STMT_BLOCK)
            tag = tagNamed(block->symbols(), name, hidden);
    for (StmtNode *block = currentBlock; block && !tag; block = block->enclosingBlock())
        if (block->kind == STMT_BLOCK)
            tag = tagInside(block->symbols(), name, hidden);
    return tag;
}

Symbol *findTag(const NameEntry *name, TypeInfo *list, AggregateKind aggregateKind) {
    Symbol *tag = visibleTag(name, list);
    return tag && tag->structLink->aggregateKind == aggregateKind ? tag : nullptr;
}

bool tagMatches(const Symbol *tag, AggregateKind aggregateKind) {
    if (tag->structLink->aggregateKind == aggregateKind)
        return true;
    if (tag->dataType == DT_ENUM)
        parseError("enum tag '%s' redeclared", plainTagName(tag));
    else
        parseError("struct/union tag '%s' redeclared", plainTagName(tag));
    return false;
}

bool tagIsOpen(const Symbol *tag) {
    if (tag->structLink->size == 0)
        return true;
    if (tag->dataType == DT_ENUM)
        parseError("enum tag '%s' redeclared", plainTagName(tag));
    else
        parseError(" struct/class/union tag '%s' redeclared", plainTagName(tag));
    return false;
}

const char *plainTagName(const Symbol *tag) {
    std::string_view text = tag->name->text;
    return tag->name->text + (text.starts_with(hiddenPrefix) ? hiddenPrefix.size() : 0);
}

Symbol *newTagRecord(NameEntry *name, AggregateKind aggregateKind) {
    StmtNode *block = currentBlock;
    return newTagIn({&block->symbols(), &block->operandD.tags, block->level}, name, aggregateKind);
}

Symbol *newTagIn(const TagHome &home, NameEntry *name, AggregateKind aggregateKind) {
    NameEntry *own = name;
    if (findInList(*home.symbols, name) || (home.level <= FILE_LEVEL && name->symbol))
        own = internName(hiddenText(name));
    TypeInfo *tag = own ? newTypeInfo() : nullptr;
    if (!tag)
        return nullptr;
    tag->structLink = newStructInfo(tag);
    if (!tag->structLink) {
        releaseTypeInfo(tag);
        return nullptr;
    }
    tag->name = own;
    tag->level = home.level;
    tag->storage = STORAGE_TYPEDEF;
    tag->dataType = aggregateKind == AGGREGATE_ENUM ? DT_ENUM : DT_TAG;
    tag->structLink->aggregateKind = aggregateKind;
    tag->structLink->memberLevel =
        static_cast<uint16_t>(tag->level <= SYSTEM_LEVEL ? 2 : tag->level + 1);
    appendSymbol(home.symbols, tag);
    addTagToBlock(home.tags, name, tag->structLink, aggregateKind);
    return tag;
}

void hideTag(Symbol *tag) {
    NameEntry *own = internName(hiddenText(tag->name));
    if (!own)
        return;
    if (tag->name->symbol == tag) {
        tag->name->symbol = nullptr;
        own->symbol = tag;
    }
    tag->name = own;
}

void addTagToBlock(TagEntry **tagList, NameEntry *name, StructInfo *info,
                   AggregateKind aggregateKind) {
    auto *entry = new TagEntry{*tagList, name, info, static_cast<uint16_t>(aggregateKind)};
    *tagList = entry;
}

}  // namespace zy
