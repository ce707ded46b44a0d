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
    VarCell *reference;  // for arguments of reference kind
    Payload data;        // the scalar itself, a pointer, or the first of two halves
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
constexpr uint32_t CELL_OWNS_TEXT = 1;  // flags of a pointer to char

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
};

// A member function being called or parsed. The bottom record has no `thisFormal`.
struct ClassContext {
    ClassContext *next;
    void *object;          // the `this` data
    TypeInfo *thisFormal;  // the hidden formal; its structLink gives the class
    TypeInfo *member;      // the member function
    uint8_t qualified;     // how a qualified name resolved: 1 a function, 2 a static data member
    uint8_t noFree;
};
extern ClassContext *classContext;

extern ScopeFrame *baseFrame;    // level 0: the system variables
extern TypeInfo *systemSymbols;  // the list of level 0

// The declaration that a name has where the parser stands, NULL for none. memberList, if given, is
// searched first. *classOut gets the record of a member found through classContext.
Symbol *lookupSymbolParse(NameEntry *name, TypeInfo *memberList, ClassContext **classOut);
// The same where a running script stands.
Symbol *lookupSymbolRun(ExecContext *context, StmtNode *statement, NameEntry *name,
                        ClassContext **classOut);

// The storage of a variable, links followed; findVarCellLink gives the link itself. Never NULL: a
// scratch cell after a message if there is none.
VarCell *findVarCell(TypeInfo *symbol);
VarCell *findVarCellLink(TypeInfo *symbol);
VarCell *lookupSlot(int level, int slot);

// A zeroed cell of a type. Puts a cell into a slot of a frame, which then owns it.
VarCell *newVarCell(int type);
void setSlot(ScopeFrame *frame, int slot, VarCell *cell);
VarCell *slotOf(const ScopeFrame *frame, int slot);  // NULL for an empty one
// A frame of a function (its FuncInfo), a block (its StmtNode) or, without an owner, of level 0. It
// isn't linked anywhere. NULL after a message if memory is exhausted.
ScopeFrame *newScopeFrame(void *owner, bool isFunction);
void releaseFrame(ScopeFrame *frame);  // with its cells, in slot order

void enterBlock();  // a frame for the current block statement
void popFrame();    // releases the innermost frame of the current context with its cells

// Adds a predefined name: level 0, storage 6, with a constant value or of a type.
Symbol *addPredefinedConstant(const char *name, Value *value);
Symbol *addSystemVariable(const char *name, int dataType, int slot);

void removeSymbol(TypeInfo *symbol, TypeInfo **head);
int remvar(Value *value);  // the language's removal of a global variable
int isvar(Value *value);   // the language's test of a name
void checkRedeclaration(TypeInfo *fresh, TypeInfo *old);

void releaseScopes();  // all of the above, at the end of the instance

}  // namespace zy

extern "C" __attribute__((visibility("default"))) void killEntry(zy::VarCell *cell);
