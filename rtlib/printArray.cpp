// The last two dimensions are a page of rows and columns; of a column-major array the first two.

#include <cstring>

#include "expr/value.h"
#include "numeric/arrayValue.h"
#include "rtlib/printAggregate.h"
#include "rtlib/printValue.h"

namespace zy {

namespace {

uint32_t extentOf(const ShapeNode *node) {
    return static_cast<uint32_t>(node->extent.limit) - static_cast<uint32_t>(node->extent.lower);
}

struct Page {
    uint32_t rows = 1, columns = 1, count = 1;
    uint32_t rowStep = 1, columnStep = 1;  // in elements
};

Page pageOf(const ShapeNode *shape) {
    Page page;
    bool isFortran = isFortranOrdered(shape);
    const ShapeNode *last = shape, *beforeLast = nullptr;
    for (; last->next; last = last->next)
        beforeLast = last;
    if (isFortran) {
        beforeLast = shape;
        last = shape->next;
    }
    page.rows = beforeLast ? extentOf(beforeLast) : 1;
    page.columns = extentOf(last);
    uint32_t size = page.rows * page.columns;
    page.count = size ? shapeCount(shape) / size : 0;
    page.rowStep = isFortran ? 1 : page.columns;
    page.columnStep = isFortran ? page.rows : 1;
    return page;
}

// Lines on a terminal don't get longer than this; pairs, which take more room, end them sooner.
constexpr int LINE_LENGTH = 75, COMPLEX_LINE_LENGTH = 69;

class ArrayPrinter {
public:
    ArrayPrinter(Sink &sink, const Conversion *conversion, int type)
        : sink(sink), conversion(conversion), type(type), size(elementSize(type)) {
        bool isComplex = type == DT_COMPLEX || type == DT_DCOMPLEX;
        lineLength = isComplex ? COMPLEX_LINE_LENGTH : LINE_LENGTH;
    }
    void printPage(const char *data, const Page &page);

private:
    void printElement(const char *address);

    Sink &sink;
    const Conversion *conversion;
    int type, size, lineLength;
};

void ArrayPrinter::printElement(const char *address) {
    Value view{};
    view.kind = NODE_VALUE;
    view.type = static_cast<uint32_t>(type);
    bool isLoaded = true;
    if (type == DT_STRING)
        memcpy(&view.payload.text, address, sizeof view.payload.text);
    else
        isLoaded = loadElement(&view, address, type);
    if (isLoaded)
        printView(sink, conversion, &view);
}

void ArrayPrinter::printPage(const char *data, const Page &page) {
    for (uint32_t row = 0; row < page.rows; row++) {
        long long lineStart = sink.count();
        for (uint32_t column = 0; column < page.columns; column++) {
            size_t index = size_t{row} * page.rowStep + size_t{column} * page.columnStep;
            printElement(data + index * size);
            sink.write(" ");
            if (sink.wrapsLines() && sink.count() - lineStart >= lineLength) {
                sink.write("\n");
                lineStart = sink.count();
            }
        }
        sink.write("\n");
    }
}

}  // namespace

void printArray(Sink &sink, const Conversion *conversion, int elementType, const void *data,
                const ShapeNode *shape) {
    if (!shape || !data || elementSize(elementType) <= 0)
        return;
    Page page = pageOf(shape);
    ArrayPrinter printer(sink, conversion, elementType);
    const auto *bytes = static_cast<const char *>(data);
    size_t pageBytes = size_t{page.rows} * page.columns * elementSize(elementType);
    for (uint32_t number = 0; number < page.count; number++) {
        if (number > 0)
            sink.write("\n");
        printer.printPage(bytes + number * pageBytes, page);
    }
}

}  // namespace zy
