// The tables of kernels of two operands: by which of them are arrays, then by element type.
#pragma once

#include "numeric/elementLoops.h"
#include "numeric/elementTypes.h"

namespace zy {

using FormTables = std::array<std::array<ElementKernel, ELEMENT_TYPES>, OPERAND_FORMS>;

// A family of kernels in one form, as a table of element types takes it.
template <template <class, OperandForm> class Kernel, OperandForm form>
struct InForm {
    template <class T>
    struct Of : Kernel<T, form> {};
};

template <template <class, OperandForm> class Kernel, OperandForm form>
constexpr auto formTable = elementTable<ElementKernel, InForm<Kernel, form>::template Of>();

template <template <class, OperandForm> class Kernel>
constexpr FormTables formTables() {
    return {formTable<Kernel, ARRAY_ARRAY>, formTable<Kernel, ARRAY_SCALAR>,
            formTable<Kernel, SCALAR_ARRAY>};
}

}  // namespace zy
