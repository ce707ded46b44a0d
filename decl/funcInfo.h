// record header: FuncInfo, what a TypeInfo of a function or a pointer to function adds: formals,
// result and body. A record of the shared format of nodes: `kind` tells it from the others.
#pragma once

#include "decl/typeInfo.h"

namespace zy {

struct StmtNode;

struct FuncInfo {
    TypeInfo *owner;
    TypeInfo *parameters;  // in order; NULL for ()
    uint32_t kind;         // NODE_FUNC_INFO
    int32_t returnType;    // DataType
    StmtNode *body;        // the block; NULL for a prototype
    void *labels;          // of the body
    void *gotos;           // those not resolved yet
    uint16_t parameterLevel;
    uint8_t variadic;   // the list ended in ...
    int8_t returnKind;  // TypeKind: 0, 5, 6, 8, 12, 13, 14
    bool isOpen;        // the end of the body isn't parsed, and may never be: it can't be called
};

// Releases the statements and labels of a body; stmt/program.cpp has it.
void releaseFunctionBody(FuncInfo *function);

// Compares the prototypes of two function types and reports what differs.
void comparePrototypes(const TypeInfo *left, const TypeInfo *right);

}  // namespace zy
