// record header: an expression of element-wise operators as one program. Its leaves are arrays and
// scalars; the operators between them become steps that run block by block, so that what is between
// two operators never has an array of its own.
#pragma once

#include "expr/value.h"
#include "numeric/elementLoops.h"

namespace zy {

// The operators of a program are - + * / .* ./ pow and the mathematical functions, on arrays and on
// arrays with scalars.
bool isElementwise(int op);
// The operands of an expression, the left ones first. An expression with more leaves or operators
// than a program can have is a program of its topmost operator alone.
constexpr int MAX_LEAVES = 8;
constexpr int MAX_STEPS = 16;  // operators
struct ProgramLeaves {
    ExprNode *nodes[MAX_LEAVES];
    int count = 0, steps = 0;
    bool isSingle = false;
};
void collectLeaves(ExprNode *node, ProgramLeaves &leaves);

class ElementProgram {
public:
    // With the Values of the leaves in their order. A program whose arrays don't fit each other,
    // or have different orders in memory, or no elements, isn't usable.
    ElementProgram(const ExprNode *node, Value *const *leaves, bool isSingle);
    bool isUsable() const { return usable; }
    int elementType() const { return result.type; }
    uint32_t count() const { return result.count; }
    const Value *model() const { return result.model; }  // has the shape of the result
    // Whether elements can be written there while the leaves are read.
    bool canWriteTo(const void *data, int elementType) const;
    void run(void *to);

private:
    // A leaf, or what an operator gives.
    struct Part {
        int type = 0;
        uint32_t count = 0;
        const Value *model = nullptr;  // NULL: a scalar
        const Value *scalar = nullptr;
        ElementSource source;
    };
    Part plan(const ExprNode *node);
    Part planOperand(const ExprNode *node);
    ElementStep planStep(const ExprNode *node, const Part &left, const Part &right, Part &part);
    Part planLeaf(const Value *value);
    ElementSource sourceFor(const Part &part, int type);
    bool fit(const Part &left, const Part &right) const;

    Value *const *leaves;
    int leafCount = 0, stepCount = 0, scalarCount = 0;
    ElementStep steps[MAX_STEPS];
    alignas(16) unsigned char scalars[MAX_LEAVES][16];
    bool isSingle, usable = true;
    Part result;
};

}  // namespace zy
