// The kernels of matrix products. Numbers go in tiles: a few rows by a few vectors of columns,
// whose sums stay in registers while the inner index runs over a panel of the right operand that
// was copied together. A sum is always made in the order of the inner index, and no product is
// fused with a sum, so neither tiles nor vectors change a result.

#include "numeric/productKernels.h"

#include <algorithm>
#include <cstring>

#include "expr/scalarFamilies.h"
#include "numeric/elementTypes.h"
#include "numeric/independent.h"
#include "platform/processor.h"

namespace zy {

namespace {

template <class T>
T sumOf(T sum, T a, T b) {
    if constexpr (isPairType<T>)
        return complexAdd(sum, multiplyPairs(a, b));
    else
        return sum + a * b;
}

// ---- Without tiles ------------------------------------------------------------------------------

// Row by row, each row of the right operand added as a whole.
template <class T>
void plainProduct(T *to, const T *left, const T *right, ProductSize size) {
    std::fill_n(to, size.rows * size.columns, T{});
    for (size_t row = 0; row < size.rows; row++) {
        T *target = to + row * size.columns;
        for (size_t k = 0; k < size.inner; k++) {
            const T factor = left[row * size.inner + k], *from = right + k * size.columns;
            ZY_INDEPENDENT
            for (size_t column = 0; column < size.columns; column++)
                target[column] = sumOf(target[column], factor, from[column]);
        }
    }
}

// By a vector: several rows at a time, since the terms of one sum wait for each other.
template <class T>
void productWithVector(T *to, const T *left, const T *right, ProductSize size) {
    constexpr size_t together = 8;
    for (size_t row = 0; row < size.rows; row += together) {
        size_t rows = std::min(together, size.rows - row);
        T sums[together] = {};
        const T *from[together];
        for (size_t i = 0; i < together; i++)
            from[i] = left + (row + std::min(i, rows - 1)) * size.inner;
        for (size_t k = 0; k < size.inner; k++)
            for (size_t i = 0; i < together; i++)
                sums[i] = sumOf(sums[i], from[i][k], right[k]);
        std::copy_n(sums, rows, to + row);
    }
}

// ---- Tiles --------------------------------------------------------------------------------------

constexpr size_t TILE_ROWS = 4;
constexpr size_t TILE_VECTORS = 2;
constexpr size_t PANEL_DEPTH = 256;  // a panel and the rows of a tile stay in the nearest cache
constexpr size_t BLOCK_ROWS = 128;   // the rows that meet a panel stay in the second one

// One product in tiles of vectors of that many bytes.
template <class T, size_t vectorBytes>
class Tiling {
    typedef T Vector __attribute__((vector_size(vectorBytes), aligned(alignof(T)), may_alias));
    static constexpr size_t lanes = vectorBytes / sizeof(T);
    static constexpr size_t width = TILE_VECTORS * lanes;  // columns of a tile

public:
    [[gnu::always_inline]] inline static void run(T *to, const T *left, const T *right,
                                                  ProductSize size) {
        for (size_t k = 0; k < size.inner; k += PANEL_DEPTH)
            for (size_t row = 0; row < size.rows; row += BLOCK_ROWS)
                runBlock(to + row * size.columns, left + row * size.inner + k,
                         right + k * size.columns,
                         {std::min(BLOCK_ROWS, size.rows - row),
                          std::min(PANEL_DEPTH, size.inner - k), size.columns},
                         size, k == 0);
    }

private:
    [[gnu::always_inline]] inline static void runBlock(T *to, const T *left, const T *right,
                                                       ProductSize block, ProductSize size,
                                                       bool isFirst) {
        alignas(64) T panel[PANEL_DEPTH * width];
        for (size_t column = 0; column < size.columns; column += width) {
            size_t columns = std::min(width, size.columns - column);
            copyPanel(panel, right + column, block.inner, columns, size.columns);
            for (size_t row = 0; row < block.rows; row += TILE_ROWS)
                runTile(to + row * size.columns + column, left + row * size.inner, panel,
                        {std::min(TILE_ROWS, block.rows - row), block.inner, columns}, size,
                        isFirst);
        }
    }

    [[gnu::always_inline]] inline static void copyPanel(T *panel, const T *from, size_t depth,
                                                        size_t columns, size_t step) {
        for (size_t k = 0; k < depth; k++, panel += width, from += step)
            for (size_t i = 0; i < width; i++)
                panel[i] = i < columns ? from[i] : T{};
    }

    // Rows behind the last one repeat it, and columns behind the last are zero; neither is stored.
    [[gnu::always_inline]] inline static void runTile(T *to, const T *left, const T *panel,
                                                      ProductSize tile, ProductSize size,
                                                      bool isFirst) {
        const T *rows[TILE_ROWS];
        Vector sums[TILE_ROWS][TILE_VECTORS];
        for (size_t i = 0; i < TILE_ROWS; i++) {
            size_t row = std::min(i, tile.rows - 1);
            rows[i] = left + row * size.inner;
            T start[width] = {};
            if (!isFirst)
                memcpy(start, to + row * size.columns, tile.columns * sizeof(T));
            memcpy(sums[i], start, sizeof start);
        }
        for (size_t k = 0; k < tile.inner; k++) {
            const auto *from = reinterpret_cast<const Vector *>(panel + k * width);
            for (size_t i = 0; i < TILE_ROWS; i++)
                for (size_t j = 0; j < TILE_VECTORS; j++)
                    sums[i][j] += rows[i][k] * from[j];
        }
        for (size_t i = 0; i < tile.rows; i++)
            memcpy(to + i * size.columns, sums[i], tile.columns * sizeof(T));
    }
};

// ---- By processor -------------------------------------------------------------------------------

#if defined(__x86_64__)
template <class T>
[[gnu::target("avx512f")]] void tiles512(T *to, const T *left, const T *right, ProductSize size) {
    Tiling<T, 64>::run(to, left, right, size);
}
template <class T>
[[gnu::target("avx2")]] void tiles256(T *to, const T *left, const T *right, ProductSize size) {
    Tiling<T, 32>::run(to, left, right, size);
}
#endif
template <class T>
void tiles128(T *to, const T *left, const T *right, ProductSize size) {
    Tiling<T, 16>::run(to, left, right, size);
}

template <class T>
void tiledProduct(T *to, const T *left, const T *right, ProductSize size) {
#if defined(__x86_64__)
    if (platform::hasVectors512())
        return tiles512(to, left, right, size);
    if (platform::hasVectors256())
        return tiles256(to, left, right, size);
#endif
    tiles128(to, left, right, size);
}

// ---- Tables -------------------------------------------------------------------------------------

template <class Element>
struct Product {
    static void run(void *target, const void *leftData, const void *rightData, ProductSize size) {
        using T = Wrapping<Element>;
        auto *to = static_cast<T *>(target);
        auto *left = static_cast<const T *>(leftData), *right = static_cast<const T *>(rightData);
        if (size.columns == 1)
            productWithVector(to, left, right, size);
        else if constexpr (isPairType<T> || sizeof(T) < sizeof(int))
            plainProduct(to, left, right, size);
        else if (size.rows < TILE_ROWS || size.inner < 8 || size.columns < 8)
            plainProduct(to, left, right, size);
        else
            tiledProduct(to, left, right, size);
    }
};

template <class Element>
struct Dot {
    static void run(void *target, const void *leftData, const void *rightData, size_t count) {
        using T = Wrapping<Element>;
        auto *left = static_cast<const T *>(leftData), *right = static_cast<const T *>(rightData);
        T sum{};
        for (size_t i = 0; i < count; i++)
            sum = sumOf(sum, left[i], right[i]);
        memcpy(target, &sum, sizeof sum);
    }
};

constexpr auto products = elementTable<ProductKernel, Product>();
constexpr auto dots = elementTable<DotKernel, Dot>();

}  // namespace

ProductKernel productKernel(int elementType) {
    return isElementType(elementType) && elementType >= DT_INT ? products[elementType] : nullptr;
}
DotKernel dotKernel(int elementType) {
    return isElementType(elementType) && elementType >= DT_INT ? dots[elementType] : nullptr;
}

}  // namespace zy
