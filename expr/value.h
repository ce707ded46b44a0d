// record header: Value and ExprNode, one record for every intermediate result of a running script
// and for every node of a parsed expression, so that an operand is read where it stands. Records
// come from one free list; a Value is on at most one of: a value stack, the free list, a tree.
#pragma once

#include <cstddef>

#include "decl/typeInfo.h"

namespace zy {

struct ScopeFrame;
struct ShapeNode;
struct StmtNode;
struct ExecContext;
struct ExprNode;

// Record kinds. Other records share the allocator under kinds of their own.
enum NodeKind : uint32_t {
    NODE_OPERATOR = 0,
    NODE_VALUE = 1,
    NODE_LIST = 2,  // a list cell: item, next
    NODE_CASE_GROUP = 3,
    NODE_LABELLED_CASE_GROUP = 4,
    NODE_FOREACH = 5,
    NODE_ARRAY_INFO = 6,
    NODE_EXTENT = 7,
    NODE_BRANCHES = 8,  // what threading hangs on an operator. left, right, not owned: where the
                        // chains of && || ?: begin, or the direct tree whose number the node pushes
                        // and a call in front of it. third, fourth: the ends of branches
    NODE_FUNC_INFO = 9,
    NODE_STRUCT_INFO = 10,
};

// What a Value or a variable holds, by its data type.
union Payload {
    char c;
    signed char sc;
    unsigned char uc;
    short s;
    unsigned short us;
    int i;
    unsigned int u;
    long long ll;
    unsigned long long ull;
    float f;
    double d;
    float pair[2];  // complex, dual: real or primary part first
    void *p;
    char *text;        // string: owned by the Value; pointer to char: not
    TypeInfo *symbol;  // DT_NAME; pointer to function
    ExprNode *value;   // DT_CONSTANT: the value that holds the constant
    uint64_t bits;
};

union Payload2 {
    double d;  // imaginary or dual part of the wide types
    StructInfo *structInfo;
    NameEntry *name;
    ScopeFrame *frame;  // of a function's cell: where it was defined
    struct {
        int32_t elementType;  // of arrays
        int32_t castFlag;     // 1: the result of a cast to pointer to computational array
    };
    uint64_t bits;
};

// Runs one operator node; chosen when the node is threaded into a chain.
using NodeRoutine = void (*)(ExprNode *node);
// Computes the number of a tree that needs no stack (expr/direct.h).
using DirectInteger = int64_t (*)(ExprNode *tree);
using DirectReal = double (*)(ExprNode *tree);
using DirectNumber = void (*)(ExprNode *tree, ExprNode *result);
using DirectPlace = void *(*)(ExprNode *target);  // where its number lies, or NULL

struct ExprNode {
    ExprNode *next;  // the Value below on a stack; the next free record; the next node of a chain
    union {
        void *link;             // cleared at allocation
        NodeRoutine routine;    // of a threaded operator
        DirectInteger integer;  // of a direct tree, by its static type
        DirectReal real;
        DirectPlace place;
        DirectNumber number;  // of the list cell of an argument that is a direct tree
    };
    uint32_t kind;  // NodeKind
    union {
        uint32_t type;  // of a Value: DataType
        int32_t op;     // of an operator: its code
    };
    union {
        struct {
            Payload payload;
            Payload2 payload2;
            union {
                ShapeNode *shape;   // of arrays
                uint64_t frameKey;  // of a direct leaf: the frame in which `next` is its cell
                struct {            // of aggregates and pointers to them, and of leaves
                    uint8_t owned;  // 1: the object, of a DT_NAME leaf its type record, is released
                                    // with the Value; 2: made for a return
                    uint8_t noFree;  // the object is no heap block of its own
                };
            };
            uint32_t count;     // elements of an array
            uint8_t ownership;  // of an array's data and shape
        };
        struct {
            ExprNode *left, *right, *third, *fourth;  // operands, NULL where absent
        };
        ExprNode *item;  // of a list cell
    };
};
using Value = ExprNode;
static_assert(sizeof(ExprNode) == 56);

// One activation of script code: the top level, or a call that has not returned.
struct ExecContext {
    ExecContext *allNext;
    ExecContext *readyNext;
    int16_t level;   // block level of the function's body
    uint16_t phase;  // how far the current statement has got; 0: not started
    int16_t priority;
    uint8_t isCall;
    uint8_t hasSavedProgress;  // resumeStatus has the callers' (stmt/callPlan.h)
    uint32_t state;  // 0 new, 1 running, 2 ready, 3 waiting, 6 for children, 7 for a call
    unsigned char *resumeStatus;  // a buffer that is kept with the context
    ExprNode *varArgs;            // copies of the arguments that went to ...
    ScopeFrame *frames;           // innermost first
    StmtNode *statement;          // NULL ends the statement loop
    ExprNode *chain;              // next node; NULL ends the evaluator
    Value *stack;                 // top of the value stack
    ExecContext *caller;
    FuncInfo *function;  // NULL at top level
    void *join;
    ScopeFrame *spareFrame;  // of one that waits for its next call, with cells of numbers
};

// The activation that runs. Read anew after anything that can call.
extern ExecContext *currentContext;
// The one in which texts are evaluated outside a program; its statements have no position.
extern ExecContext *evalContext;

// ---- Records ----------------------------------------------------------------------------------

extern Value *valueFreeList;
Value *newRecord();  // from the heap; NULL after a message if memory is exhausted
void releaseRecord(Value *record);

// A record with `next` and `link` NULL. kind, type and payload are left from its last use: set what
// you use. NULL after a message if memory is exhausted.
inline Value *newValue() {
    Value *value = valueFreeList;
    if (!value) [[unlikely]]
        return newRecord();
    valueFreeList = value->next;
    value->next = nullptr;
    value->link = nullptr;
    return value;
}

// Gives a record back without touching its payload. With ZY_HEAP_RECORDS the list stays empty and
// each record goes back to the heap, so that sanitizers see a use after it.
inline void recycleValue(Value *value) {
#ifdef ZY_HEAP_RECORDS
    releaseRecord(value);
#else
    value->next = valueFreeList;
    valueFreeList = value;
#endif
}

// Releases what the Value owns, by its type, then recycles it.
void deleteValue(Value *value);
// Fills valueFreeList ahead of use.
void preallocateValues(int count);
// How many records are in use: not on the free list. For tests of leaks.
int liveValueCount();
// All records back to the heap; the instance ends.
void releaseValueRecords();

// A Value of that type with a zero payload.
Value *newZeroValue(int type);
// The same for use inside a tree.
Value *zeroCell(int type);

// ---- Stack ------------------------------------------------------------------------------------

Value *reportEmptyStack();  // NULL, after a message and with runStatus set

inline void pushValue(Value *value) {
    value->next = currentContext->stack;
    currentContext->stack = value;
}

// NULL, after a message and with runStatus set, if the stack is empty.
inline Value *popValue() {
    Value *top = currentContext->stack;
    if (!top) [[unlikely]]
        return reportEmptyStack();
    currentContext->stack = top->next;
    return top;
}

void clearValueStack();

// An operator's operand: a constant where it stands (popped false: not to be released), all else
// from the stack (popped true if there was one).
inline Value *operandOf(ExprNode *operand, bool &popped) {
    if (operand->kind == NODE_VALUE && operand->type != DT_NAME && operand->type != DT_TAG) {
        popped = false;
        return operand->type == DT_CONSTANT ? operand->payload.value : operand;
    }
    Value *value = popValue();
    popped = value != nullptr;
    return value;
}

// ---- Memory ------------------------------------------------------------------------------------

// A heap block; NULL after a message, with errorFlag set, if memory is exhausted.
void *allocOrFail(size_t size);
char *copyString(const char *text);                // NULL in, NULL out
char *updateString(char *old, char *replacement);  // takes both; gives the buffer to keep

// ---- Variables --------------------------------------------------------------------------------

// Pushes the current value of a variable. code 0, or an array reference code for a subscript.
void fetchVariable(TypeInfo *symbol, int code);
// The Value that a pointer points to; the pointer stays the caller's. Never NULL but when memory is
// exhausted: zero after a message if there is nothing to read.
Value *derefValue(Value *pointer);

// Reads what stands at an address as a data type, by its width: a string as a private copy. False,
// with the Value unchanged, for a type that can't be read and, after a warning, for NULL.
bool loadValue(Value *value, const void *address, int type);
// The same for an element of an array, and the way back with a Value of the element's own type;
// they report a type that can't be an element.
bool loadElement(Value *value, const void *address, int type);
bool storeElement(void *address, const Value *value);

}  // namespace zy
