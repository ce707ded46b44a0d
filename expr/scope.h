// record header: how a name finds its declaration, and a declaration its storage. A TypeInfo is
// found at parse time; its VarCell is found at run time by (level, slot) in the frames of the
// running context, so one TypeInfo serves any number of live invocations.
#pragma once

#include "decl/typeInfo.h"
#include "expr/value.h"
#include "front/names.h"

namespace zy {

// The storage of one variable. A cell of type DT_LINK stands for the cell that data.p points to.
struct VarCell {
    uint32_t type;  // DataType
    uint32_t flags;
    union {
        VarCell *reference;      // for arguments of reference kind
        StructInfo *structInfo;  // of an object, or of objects: their class
        char *text;              // of a pointer with CELL_OWNS_TEXT: released with the cell
    };
    Payload data;  // the scalar itself, a pointer, or the first of two halves
    union {
        Payload2 data2;  // the second half
        uint8_t noFree;  // of aggregates: the object is no heap block of its own
    };
    ShapeNode *shape;      // owned
    uint32_t count;        // elements, 0 while incomplete
    int16_t argumentMark;  // 3: data is a temporary that came from an argument
    int16_t fortranOrder;
    uint32_t adoptShape;  // 1: each assignment replaces the whole shape
};
constexpr uint32_t CELL_OWNS_TEXT = 1;  // flags of a pointer that was given a string
constexpr uint32_t CELL_LIVES = 2;      // of an object, or an array of them: to be destroyed

constexpr int ERRNO_SLOT = 42;  // the system variable _errno

constexpr int SLOTS_PER_CHUNK = 10;
constexpr int DIRECT_CHUNKS = 5;

struct SlotChunk {
    SlotChunk *next;
    VarCell *cells[SLOTS_PER_CHUNK];
};

struct ScopeFrame {
    ScopeFrame *outer;
    SlotChunk *chunks[DIRECT_CHUNKS];  // further ones hang on the last
    int16_t slotCount;                 // one more than the highest slot in use
    uint8_t isFunction;
    int16_t level;  // that of the owner, kept here for the walk along the frames
    void *owner;    // FuncInfo of a function frame, StmtNode of a block frame
    uint64_t key;   // of this use of the record: no other frame ever has it; low 16 bits 0
};

// A member function being called or parsed. The bottom record has no `thisFormal`.
struct ClassContext {
    ClassContext *next;
    void *object;          // the `this` data
    TypeInfo *thisFormal;  // the hidden formal; its structLink gives the class
    TypeInfo *member;      // the member function
    uint8_t qualified;     // how a qualified name resolved: 1 a function, 2 a static data member
    uint8_t noFree;
    uint8_t ownership;  // ObjectOwnership
};
enum ObjectOwnership : uint8_t {
    OBJECT_OF_OTHERS = 0,
    OBJECT_TEMPORARY = 1,  // ends with the call
    OBJECT_MADE = 2,       // by a constructor, whose result owns it
};
extern ClassContext *classContext;

// The top record if it is free, else a new one. NULL after a message if memory is exhausted.
ClassContext *claimClassContext();
void popClassContext();    // the bottom record stays, without its function
void resetClassContext();  // the bottom record alone, created if need be
void releaseClassContext();

extern ScopeFrame *baseFrame;    // level 0: the system variables
extern TypeInfo *systemSymbols;  // the list of level 0
extern TypeInfo *removedSymbols;

// The declaration that a name has where the parser stands, NULL for none. memberList, if given, is
// searched first. *classOut gets the record of a member found through classContext.
Symbol *lookupSymbolParse(NameEntry *name, TypeInfo *memberList, ClassContext **classOut);
// The same where a running script stands.
Symbol *lookupSymbolRun(ExecContext *context, StmtNode *statement, NameEntry *name,
                        ClassContext **classOut);

// ---- Storage ----------------------------------------------------------------------------------

// A zeroed cell of a type.
VarCell *newVarCell(int type);
// Sets a cell up for a declaration applied as `kind` says (the declaration's own, or KIND_SIMPLE
// for a reference that is passed by value): type, shape, zeroed memory. False if memory is
// exhausted.
bool initCell(VarCell *cell, TypeInfo *info, int kind);
// The slot and cell of a file-scope or system variable in the frame of its level; the cell of a
// static local or member, which is in no frame. A cell that the record has already stays.
void allocateStorage(TypeInfo *symbol);
void allocateStaticCell(TypeInfo *symbol);

// A frame of a function (its FuncInfo), a block (its StmtNode) or, without an owner, of level 0. It
// isn't linked anywhere. NULL after a message if memory is exhausted.
ScopeFrame *newScopeFrame(void *owner, bool isFunction);
void releaseFrame(ScopeFrame *frame);  // with its cells, in slot order
// The frame of a call whose formals are plain numbers, ten at most; a kept one has the cells of its
// last use. The call's end keeps it with the context.
ScopeFrame *newNumberFrame(ExecContext *context);
void keepNumberFrame(ExecContext *context);
void freeNumberFrame(ScopeFrame *frame);
// Puts a cell into a slot of a frame, which then owns it. False if it can't; the cell stays the
// caller's.
bool setSlot(ScopeFrame *frame, int slot, VarCell *cell);

inline bool fillSlot(ScopeFrame *frame, int slot, VarCell *cell) {
    SlotChunk *first = frame->chunks[0];
    if (!first || slot >= SLOTS_PER_CHUNK)
        return setSlot(frame, slot, cell);
    first->cells[slot] = cell;
    if (slot >= frame->slotCount)
        frame->slotCount = static_cast<int16_t>(slot + 1);
    return true;
}

void enterBlock();  // a frame for the current block statement
void popFrame();    // releases the innermost frame of the current context with its cells

// NULL for an empty slot.
inline VarCell *slotOf(const ScopeFrame *frame, int slot) {
    if (slot >= frame->slotCount)
        return nullptr;
    int number = slot / SLOTS_PER_CHUNK;
    const SlotChunk *chunk = frame->chunks[number < DIRECT_CHUNKS ? number : DIRECT_CHUNKS - 1];
    for (; chunk && number >= DIRECT_CHUNKS; number--)
        chunk = chunk->next;
    return chunk ? chunk->cells[slot % SLOTS_PER_CHUNK] : nullptr;
}

// The cell in the innermost frame of that level, NULL if there is none.
inline VarCell *findSlot(int level, int slot) {
    const ScopeFrame *frame = level == SYSTEM_LEVEL ? baseFrame : currentContext->frames;
    while (frame && frame->level > level)
        frame = frame->outer;
    return frame && frame->level == level ? slotOf(frame, slot) : nullptr;
}

// What stands in for storage that isn't there, after a message; never NULL. The first is for a slot
// and may have no symbol to tell what it should hold.
VarCell *missingSlot(TypeInfo *symbol);
VarCell *missingCell(TypeInfo *symbol);
extern VarCell scratchCell;
void releaseScratchCell();

inline VarCell *lookupSlot(int level, int slot) {
    VarCell *cell = findSlot(level, slot);
    return cell ? cell : missingSlot(nullptr);
}

// The cell of a variable as it is; findVarCell follows links. Never NULL.
inline VarCell *findVarCellLink(TypeInfo *symbol) {
    if (VarCell *cell = symbol->storageCell)
        return cell;
    if (symbol->level <= FILE_LEVEL) [[unlikely]]
        return missingCell(symbol);
    VarCell *cell = findSlot(symbol->level, symbol->index);
    return cell ? cell : missingSlot(symbol);
}

inline VarCell *findVarCell(TypeInfo *symbol) {
    VarCell *cell = findVarCellLink(symbol);
    while (cell->type == DT_LINK) {
        if (!cell->data.p) [[unlikely]]
            return missingCell(symbol);
        cell = static_cast<VarCell *>(cell->data.p);
    }
    return cell;
}

// ---- Declarations -----------------------------------------------------------------------------

// Adds a predefined name: level 0, storage 6, with a constant value or of a type.
Symbol *addPredefinedConstant(const char *name, Value *value);
Symbol *addSystemVariable(const char *name, int dataType, int slot);

// Takes a declaration out of its list. The record and what it owns live on until the program is
// released: chains may still refer to it.
void removeSymbol(TypeInfo *symbol, TypeInfo **head);
void releaseRemovedSymbols();  // those of the program

// The language's removal of a global variable and its test of a name. Both take the text of a
// string argument.
int remvar(Value *value);
int isvar(Value *value);

// Merges a file-scope declaration that repeats an earlier one into it, and reports what differs.
void checkRedeclaration(TypeInfo *fresh, TypeInfo *old);

void releaseScopes();  // all of the above, at the end of the instance

}  // namespace zy

extern "C" __attribute__((visibility("default"))) void killEntry(zy::VarCell *cell);
