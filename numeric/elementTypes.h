// record header: the element types of computational arrays as types of C++, and tables with a
// routine for each: a code selects the routine once for an array, no element asks for its type.
#pragma once

#include <array>

#include "decl/dataType.h"
#include "numeric/pairs.h"

namespace zy {

template <class... T>
struct TypeList {};
// By code. There is no element type with the code of void's place.
using ElementTypes = TypeList<signed char, unsigned char, short, unsigned short, int, unsigned,
                              long long, unsigned long long, float, double, void, Complex<float>,
                              Complex<double>, Dual<float>, Dual<double>>;
constexpr int ELEMENT_TYPES = DT_DDUAL + 1;

constexpr bool isElementType(int type) {
    return type >= 0 && type < ELEMENT_TYPES && type != DT_LDOUBLE;
}
constexpr bool isPairElement(int type) { return type >= DT_COMPLEX && type <= DT_DDUAL; }

// Family<T>::run by the code of T; NULL where there is no element type.
template <class Routine, template <class> class Family>
constexpr auto elementTable() {
    return []<class... T>(TypeList<T...>) {
        return std::array<Routine, ELEMENT_TYPES>{[] {
            if constexpr (std::is_void_v<T>)
                return static_cast<Routine>(nullptr);
            else
                return static_cast<Routine>(Family<T>::run);
        }()...};
    }(ElementTypes{});
}

}  // namespace zy
