// Aggregates print one member a line, each under its path.

#include <cstring>
#include <string>

#include "decl/arrayInfo.h"
#include "decl/initialiserList.h"
#include "decl/layout.h"
#include "expr/memberAccess.h"
#include "expr/value.h"
#include "front/names.h"
#include "instance/report.h"
#include "rtlib/printAggregate.h"
#include "rtlib/printValue.h"

namespace zy {

namespace {

class StructPrinter {
public:
    explicit StructPrinter(Sink &sink) : sink(sink) {}
    // Whether what was written ends with a line feed.
    bool printMembers(const std::string &path, const StructInfo *info, const char *object);

private:
    bool printMember(const std::string &path, const TypeInfo *member, const char *object);
    bool printArrayMember(const TypeInfo *member, const char *address);
    bool printStructs(const std::string &path, const TypeInfo *member, const char *address);
    void printScalar(const TypeInfo *member, const char *address);

    Sink &sink;
};

bool isPrinted(const TypeInfo *member) {
    return member->storage != STORAGE_STATIC && member->storage != STORAGE_TYPEDEF &&
           member->kind != KIND_FUNCTION && member->kind != KIND_REFERENCE &&
           !isEnumerator(member) && !isPad(member);
}

const TypeInfo *firstPrinted(const TypeInfo *member) {
    while (member && !isPrinted(member))
        member = member->next;
    return member;
}

bool StructPrinter::printMembers(const std::string &path, const StructInfo *info,
                                 const char *object) {
    bool lineEnded = true;
    const TypeInfo *member = firstPrinted(info->members);
    while (member) {
        bool isAnonymous = member->flags & FLAG_ANONYMOUS;
        lineEnded =
            printMember(isAnonymous ? path : path + "." + member->name->text, member, object);
        member = firstPrinted(member->next);
        if (member && !lineEnded)
            sink.write("\n");
    }
    return lineEnded;
}

bool StructPrinter::printMember(const std::string &path, const TypeInfo *member,
                                const char *object) {
    const char *address = object + member->level;
    bool isArray = member->kind == KIND_C_ARRAY || member->kind == KIND_ARRAY;
    bool isStruct = member->dataType == DT_STRUCT && (isArray || member->kind == KIND_SIMPLE);
    if (isStruct && isArray)
        return printStructs(path, member, address);
    if (isStruct)
        return printMembers(path, member->structLink, address);
    sink.write(path.c_str());
    sink.write(" = ");
    if (isArray)
        return printArrayMember(member, address);
    printScalar(member, address);
    return false;
}

bool StructPrinter::printArrayMember(const TypeInfo *member, const char *address) {
    ShapeList shape = declaredShape(member->arrayLink);
    int type = member->dataType;
    if (member->arrayLink->rank > 1)
        sink.write("\n");
    if (type == DT_CHAR || type == DT_UCHAR) {
        sink.write(address, strnlen(address, shapeCount(shape)));
        sink.write("\n");
    } else {
        printArray(sink, nullptr, type, address, shape);
    }
    releaseShape(shape);
    return true;
}

bool StructPrinter::printStructs(const std::string &path, const TypeInfo *member,
                                 const char *address) {
    if (member->arrayLink->rank > 1)
        runWarning("multiple dimension array of struct is treated as one dimensional array");
    ShapeList shape = declaredShape(member->arrayLink);
    uint32_t count = shapeCount(shape);
    int lower = shape ? shape->extent.lower : 0;
    releaseShape(shape);
    bool lineEnded = true;
    for (uint32_t i = 0; i < count; i++) {
        if (!lineEnded)
            sink.write("\n");
        std::string element = path + "[" + std::to_string(lower + static_cast<int>(i)) + "]";
        lineEnded = printMembers(element, member->structLink,
                                 address + size_t{i} * member->structLink->size);
    }
    return lineEnded;
}

void StructPrinter::printScalar(const TypeInfo *member, const char *address) {
    Value view{};
    view.kind = NODE_VALUE;
    int type = dataTypeOf(member);
    view.type = static_cast<uint32_t>(type);
    if (member->bitField) {
        readBitField(&view, address, pointerTo(member->dataType), member->bitWidth,
                     member->bitOffset);
        view.type = static_cast<uint32_t>(member->dataType);
    } else if (type == DT_STRING || type == DT_P_ARRAY || isPointer(type)) {
        memcpy(&view.payload.p, address, sizeof(void *));
        if (type == DT_P_ARRAY || type == DT_P_CARRAY || type == DT_P_FUNCTION)
            view.type = DT_P_VOID;
    } else if (!loadElement(&view, address, type)) {
        return;
    }
    printView(sink, nullptr, &view);
}

}  // namespace

void printStruct(Sink &sink, const char *prefix, const StructInfo *info, const void *object) {
    if (info && object)
        StructPrinter(sink).printMembers(prefix, info, static_cast<const char *>(object));
}

}  // namespace zy
