// Lists of array elements. A row is in braces of its own or follows the one before it; a text in
// braces is a row of characters. Where a row isn't full the list gets a gap.

#include <algorithm>
#include <cstring>

#include "decl/construction.h"
#include "decl/currentToken.h"
#include "decl/listReader.h"
#include "expr/guards.h"
#include "expr/members.h"
#include "expr/operators.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/convert.h"

namespace zy {

namespace {

constexpr uint64_t UNLIMITED = UINT64_MAX;
constexpr int ARRAY_RANK_MAX = 3, STRUCT_ARRAY_RANK_MAX = 2;

int boundOf(const ExprNode *cell) {
    const Value *leaf = cell ? constantOf(cell->item) : nullptr;
    return leaf ? leaf->payload.i : 0;
}

uint64_t product(uint64_t a, uint64_t b) { return a != 0 && b > UNLIMITED / a ? UNLIMITED : a * b; }

uint64_t roundedUp(uint64_t number, uint64_t unit) {
    return unit == 0 || unit == UNLIMITED ? number : (number + unit - 1) / unit * unit;
}

bool isChar(int type) { return type == DT_CHAR || type == DT_UCHAR; }

// Characters of a text with the NUL at its end.
uint64_t textLength(const Value *text) {
    if (text->count > 0)
        return text->count;
    if (!text->payload.text)
        return 1;
    return strlen(text->payload.text) + 1;
}

}  // namespace

// What is said of a list depends on what is listed.
struct ArrayTexts {
    const char *invalid, *tooMany, *unclosed;
};

namespace {

constexpr ArrayTexts arrayTexts = {"invalid array initializer ",
                                   "too many array initializers in {...} ",
                                   "missing ',' or '}' at array initialization "};
constexpr ArrayTexts structTexts = {"invalid struct initializer ",
                                    "too many struct array initializers in {...} ",
                                    "missing ',' or '}'"};
constexpr const char *unclosedField =
    "missing closing } for array field in struct/class/union initialization";
constexpr ArrayTexts fieldTexts = {"invalid struct initializer ", unclosedField, unclosedField};

bool refuse(const char *text) {
    parseError("%s", text);
    return false;
}

}  // namespace

bool isRowText(int elementType, int valueType) {
    if (isChar(elementType))
        return valueType == DT_P_CHAR || valueType == DT_P_UCHAR || valueType == DT_STRING;
    return elementType == DT_USHORT && valueType == DT_P_USHORT;
}

ArrayReader::ArrayReader(ListReader &reader, const TypeInfo *symbol, bool ofMember)
    : list(reader), array(symbol), isMember(ofMember), count(reader.addCount(0)) {
    for (const ExprNode *cell = symbol->arrayLink->bounds; cell && cell->next;
         cell = cell->next->next) {
        int64_t lower = boundOf(cell), limit = boundOf(cell->next);
        extents.push_back(static_cast<uint64_t>(std::max<int64_t>(limit - lower, 0)));
    }
    if (extents.empty())
        extents.push_back(0);
    if (isOpen())
        extents[0] = UNLIMITED;
}

const ArrayTexts &ArrayReader::texts() const {
    if (isMember)
        return fieldTexts;
    return isStructArray() && !isConstructed() ? structTexts : arrayTexts;
}

bool ArrayReader::isOpen() const {
    const ExprNode *lower = array->arrayLink->bounds;
    int limit = lower ? boundOf(lower->next) : 0;
    return !isMember && (limit == OPEN_LIMIT || limit == boundOf(lower));
}

// How many elements one subscript of the dimension before stands for.
uint64_t ArrayReader::groupSize(size_t dimension) const {
    uint64_t size = 1;
    for (size_t i = dimension; i < extents.size(); i++)
        size = product(size, extents[i]);
    return size;
}

// ---- Groups -----------------------------------------------------------------------------------

bool ArrayReader::parseGroup(size_t dimension) {
    uint64_t begin = position;
    Rows rows = Rows::UNKNOWN;
    if (!list.closeFollows()) {
        do {
            if (!parseItem(dimension, rows))
                return false;
        } while (list.anotherFollows());
    }
    bool fits = position - begin <= groupSize(dimension);
    return (fits || refuse(texts().tooMany)) && (list.acceptClose() || refuse(texts().unclosed));
}

bool ArrayReader::parseItem(size_t dimension, Rows &rows) {
    if (dimension + 1 == extents.size())
        return parseElement(false);
    if (list.acceptOpen())
        return parseBracedItem(dimension, rows);
    if (isStructArray())
        return parseElement(false);
    const ExprNode *tree = list.peekTree();
    bool isRow = tree && isRowText(array->dataType, treeDataType(tree));
    if (tree && !isRow && rows == Rows::BRACED)
        return refuse("missing { at array initialization ");
    if (rows == Rows::UNKNOWN)
        rows = isRow ? Rows::BRACED : Rows::FLAT;
    return parseElement(false);
}

namespace {

bool isAggregate(const TypeInfo *member) {
    return member && (member->kind == KIND_C_ARRAY || member->kind == KIND_ARRAY ||
                      (member->kind == KIND_SIMPLE && member->dataType == DT_STRUCT));
}

}  // namespace

// With the { consumed: a row, or, of structs, one of them. Of structs only a second brace that
// their first member can't have tells a row.
bool ArrayReader::parseBracedItem(size_t dimension, Rows &rows) {
    bool isElement = isStructArray() && !isConstructed() &&
                     (!list.openFollows() || isAggregate(firstListMember(array->structLink)));
    if (isElement)
        return parseElement(true);
    if (rows == Rows::FLAT && !isStructArray())
        return refuse(texts().invalid);
    rows = Rows::BRACED;
    uint64_t size = groupSize(dimension + 1);
    position = roundedUp(position, size);
    uint64_t begin = position;
    if (!parseGroup(dimension + 1))
        return false;
    position = begin + size;
    return true;
}

bool ArrayReader::parseUnbraced() {
    uint64_t total = groupSize(0);
    if (isChar(array->dataType) && list.peekTree() && treeType(list.peekTree()) == DT_NULL) {
        addAt(list.takeTree(), 1);
        return true;
    }
    do {
        if (!parseElement(false))
            return false;
    } while (position < total && list.anotherFollows());
    return true;
}

// ---- Elements ---------------------------------------------------------------------------------

// The list tells how many elements before the next value it has no values for.
void ArrayReader::fillGap() {
    uint64_t gap = position - written;
    written = position;
    if (gap == 0)
        return;
    hasGap = true;
    if (isStructArray()) {
        list.addCount(-static_cast<int>(gap));
    } else if (ExprNode *leaf = newZeroValue(DT_VOID)) {
        leaf->payload.ull = gap;
        list.addValue(leaf);
    }
    count->payload.i++;
}

void ArrayReader::addAt(ExprNode *tree, uint64_t size) {
    fillGap();
    list.addValue(tree);
    count->payload.i++;
    position = written = position + size;
}

bool ArrayReader::parseElement(bool opened) {
    if (isStructArray()) {
        fillGap();
        count->payload.i++;
        uint64_t index = position;
        position = written = position + 1;
        return isConstructed() ? parseObject(index)
                               : list.parseStructValues(array->structLink, opened);
    }
    ExprNode *tree = list.takeTree();
    return tree ? addTree(tree) : refuse(texts().invalid);
}

namespace {

bool isConstructorCall(const ExprNode *tree, const StructInfo *info) {
    bool isCall = tree->kind == NODE_OPERATOR && tree->op == OP_CALL;
    return isCall && variableOf(tree->left) == info->constructor;
}

// The call runs on the element: (*((T *)array + index)).constructor(...).
ExprNode *elementConstructorCall(TypeInfo *array, uint64_t index, ExprNode *call) {
    StructInfo *info = array->structLink;
    TypeInfo *type = newTypeInfo();
    type->level = TYPE_ONLY_LEVEL;
    type->dataType = DT_P_STRUCT;
    type->structLink = info;
    ExprNode *first = newOperatorNode(OP_CAST, newSymbolNode(type), newSymbolNode(array));
    ExprNode *place = newOperatorNode(OP_POINTER_ADD, first, newIntNode(static_cast<int>(index)));
    ExprNode *element = newOperatorNode(OP_INDIRECTION, place);
    deleteNode(call->left);
    call->left =
        newOperatorNode(OP_MEMBER, element, newIntNode(memberIndex(info, info->constructor)));
    return call;
}

}  // namespace

bool ArrayReader::parseObject(uint64_t index) {
    ExprNode *tree = list.takeTree();
    if (!tree)
        return refuse(texts().invalid);
    if (isConstructorCall(tree, array->structLink)) {
        list.addCount(CONSTRUCTED_OBJECT);
        list.addValue(elementConstructorCall(const_cast<TypeInfo *>(array), index, tree));
    } else {
        list.addWholeStruct(array->structLink, tree);
    }
    return true;
}

bool ArrayReader::checkRest() const {
    bool isFull = extents[0] == UNLIMITED ? written == roundedUp(written, groupSize(1))
                                          : written == groupSize(0);
    bool isComplete = isFull && !hasGap;
    return isComplete || !isLivingObject(array) || checkConstruction(array);
}

namespace {

// A plain number becomes one of the element's type now, where that loses nothing that the store
// would report.
void convertConstant(ExprNode *tree, int type) {
    if (tree->kind != NODE_VALUE || !isReal(static_cast<int>(tree->type)) || !isReal(type))
        return;
    if (isIntegral(static_cast<int>(tree->type)) || !isIntegral(type))
        convertScalar(tree, type);
}

// The name of a function is its address.
void noteFunctionUse(const ExprNode *tree) {
    TypeInfo *variable = variableOf(tree);
    if (variable && variable->kind == KIND_FUNCTION)
        variable->used = 1;
}

}  // namespace

bool ArrayReader::addTree(ExprNode *tree) {
    int type = array->dataType;
    if (isRowText(type, treeDataType(tree)))
        return addText(tree);
    bool isWhole = isMember && array->kind == KIND_ARRAY && isArray(treeType(tree));
    const Value *constant = constantOf(tree);
    noteFunctionUse(tree);
    convertTree(tree, type);
    bool isText =
        constant && constant->type != DT_NULL && isStringLike(static_cast<int>(constant->type));
    if (isText && isScalarNumeric(type))
        checkType(type, static_cast<int>(constant->type));
    convertConstant(tree, type);
    addAt(tree, isWhole ? groupSize(0) : 1);
    return true;
}

// A text fills a row. Takes the tree.
bool ArrayReader::addText(ExprNode *tree) {
    uint64_t row = extents.back();
    const Value *constant = constantOf(tree);
    bool tooLong = isMember && constant && row < textLength(constant) - 1;
    bool isUnknown = row == UNLIMITED && !constant;
    if (tooLong || isUnknown) {
        deleteNode(tree);
        return refuse(tooLong ? "string is longer than array size" : texts().invalid);
    }
    position = roundedUp(position, row);
    addAt(tree, row == UNLIMITED ? textLength(constant) : row);
    return true;
}

// ---- Texts in place of a list -----------------------------------------------------------------

bool ArrayReader::takeText(ExprNode *tree) {
    const Value *constant = constantOf(tree);
    bool isText =
        isVector() && constant && isRowText(array->dataType, static_cast<int>(constant->type));
    bool isNull = isVector() && isChar(array->dataType) && tree && treeType(tree) == DT_NULL;
    const char *message = nullptr;
    if (!isText && !isNull)
        message = "missing { at array initialization ";
    else if (isText && textLength(constant) > extents[0])
        message = "string is longer than array size";
    else if (isNull && extents[0] != UNLIMITED)
        message = "initilize incomplete array of char with NULL";
    if (message) {
        deleteNode(tree);
        return refuse(message);
    }
    addAt(tree, isText ? textLength(constant) : 1);
    return true;
}

bool ArrayReader::setOpenLimit() {
    if (extents[0] != UNLIMITED)
        return true;
    uint64_t size = groupSize(1);
    uint64_t rows = size > 0 ? roundedUp(position, size) / size : 0;
    ExprNode *lower = array->arrayLink->bounds;
    if (rows == 0 || !lower)
        return refuse(texts().invalid);
    lower->next->item->payload.i = boundOf(lower) + static_cast<int>(rows);
    return true;
}

// ---- Entries ----------------------------------------------------------------------------------

namespace {

bool readArray(ListReader &list, const TypeInfo *symbol) {
    ArrayReader elements(list, symbol, false);
    bool isRead = list.acceptOpen() ? elements.parseGroup(0) : elements.takeText(list.takeTree());
    return isRead && elements.checkRest() && elements.setOpenLimit();
}

bool refuseList(const char *text) {
    refuse(text);
    skipBraceList();
    return false;
}

// After a message the rest of the list is no statement.
bool finishList(ListReader &list, bool isRead, StmtNode *statement) {
    if (isRead)
        list.finish(statement);
    else
        list.skipRest();
    return isRead;
}

}  // namespace

bool parseBraceList(TypeInfo *symbol, StmtNode *statement) {
    const char *refusal = nullptr;
    if (!symbol->arrayLink)
        refusal = "initializer starting with '{'";
    else if (symbol->arrayLink->rank > ARRAY_RANK_MAX)
        refusal = "cannot initialize an array with more than 3 dimension";
    if (refusal)
        return refuseList(refusal);
    ListReader list;
    return finishList(list, readArray(list, symbol), statement);
}

bool makeTextList(TypeInfo *symbol, StmtNode *statement, ExprNode *tree) {
    ListReader list;
    ArrayReader elements(list, symbol, false);
    return finishList(list, elements.takeText(tree) && elements.setOpenLimit(), statement);
}

bool parseStructList(TypeInfo *symbol, StmtNode *statement, bool isArray) {
    if (isArray && symbol->arrayLink->rank > STRUCT_ARRAY_RANK_MAX)
        return refuseList("cannot initialize an array more than 2 dim");
    ListReader list;
    bool isRead =
        isArray ? readArray(list, symbol) : list.parseStructValues(symbol->structLink, false);
    return finishList(list, isRead, statement);
}

}  // namespace zy
