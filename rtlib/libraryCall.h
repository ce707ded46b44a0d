// record header: functions of the C library as operators. The operands are read by the types of the
// function's parameters, and the result gets the type that the operator's code stands for; so a
// function is a row of expr/operators.inc, libraryCall<function>.
#pragma once

#include <cstdio>
#include <utility>

#include "expr/operands.h"
#include "expr/operators.h"
#include "expr/readers.h"
#include "expr/scalarFamilies.h"

namespace zy {

// What a text or address operand leads to; NULL for a number.
void *addressIn(const Value *value);

template <class T>
T argumentOf(const Value *value) {
    if constexpr (std::is_pointer_v<T>)
        return static_cast<T>(addressIn(value));
    else if constexpr (std::is_floating_point_v<T>)
        return static_cast<T>(readDouble(value));
    else if constexpr (sizeof(T) == 8)
        return static_cast<T>(readUnsigned64(value));
    else
        return static_cast<T>(truncateToInt32(readDouble(value)));
}

void pushAddress(int code, const void *address);
// In the type that the code gives.
void pushInteger(int code, long long number);

template <class Result>
void pushResult(int code, Result result) {
    if constexpr (std::is_pointer_v<Result>)
        pushAddress(code, result);
    else if constexpr (std::is_integral_v<Result>)
        pushInteger(code, result);
    else
        pushScalar(result);
}

template <auto function>
struct LibraryCall;

template <class Result, class... Parameters, Result (*function)(Parameters...)>
struct LibraryCall<function> {
    using Places = std::index_sequence_for<Parameters...>;
    template <size_t... index>
    static void run(ExprNode *node, std::index_sequence<index...>) {
        ExprNode *fields[] = {node->left, node->right, node->third, node->fourth};
        Operand operands[] = {Operand(fields[index], Operand::CONTENTS)...};
        if (!(static_cast<bool>(operands[index]) && ...))
            return;
        pushResult(node->op, function(argumentOf<Parameters>(operands[index].get())...));
    }
    static void run(ExprNode *node, std::index_sequence<>) { pushResult(node->op, function()); }
};

template <auto function>
void libraryCall(ExprNode *node) {
    using Call = LibraryCall<function>;
    Call::run(node, typename Call::Places{});
}

}  // namespace zy
