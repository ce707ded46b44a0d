// The part of a declarator between [ and ]. Each dimension becomes two cells, the lower limit and
// one more than the largest subscript; what was seen in the declarator as a whole decides which
// forms may stand beside each other.

#include <algorithm>
#include <cstring>

#include "decl/arrayInfo.h"
#include "decl/arrays.h"
#include "decl/currentToken.h"
#include "expr/constantTrees.h"
#include "expr/guards.h"
#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/parser.h"
#include "expr/typeQueries.h"
#include "front/names.h"
#include "instance/report.h"

namespace zy {

namespace {

class ArrayDeclarator {
public:
    ArrayDeclarator(TypeInfo *record, bool inParameters, bool pointerPrefix, TypeInfo *list)
        : info(record), isParameter(inParameters), hasPrefix(pointerPrefix), formals(list) {}
    ~ArrayDeclarator() {
        deleteNode(bounds);
        deleteNode(lower);
    }
    ArrayDeclarator(const ArrayDeclarator &) = delete;
    ArrayDeclarator &operator=(const ArrayDeclarator &) = delete;

    bool run();

private:
    bool begin();
    bool readDimension();
    bool readLower();
    bool readReference();
    bool readOpen();
    bool readStar();
    bool readExpression();
    bool takeExpression(ExprNode *tree);
    void skipRestrict();
    bool formalFollows();

    bool endWithoutLimit();
    bool readLimit();
    void endOpen();
    bool takeLimit(ExprNode *tree, bool failed);
    bool nextDimension();
    bool finish();

    void assumeShape();
    void addDimension(ExprNode *limit);
    int constantLower() const;

    TypeInfo *info;
    bool isParameter, hasPrefix;
    TypeInfo *formals;
    int dimensions = 0;
    ExprNode *lower = nullptr;   // the bound that was read last
    ExprNode *bounds = nullptr;  // of the dimensions read
    bool more = true;
    // What the declarator as a whole has had.
    bool pointerAssumed = false, assumed = false, fixed = false, deferred = false;
    bool emptySeen = false, openFirst = false, openForm = false;
};

bool refuse(const char *text) {
    parseError("%s", text);
    return false;
}

// ---- The declarator as a whole ------------------------------------------------------------------

bool ArrayDeclarator::run() {
    if (!begin())
        return false;
    while (more)
        if (!readDimension())
            return false;
    return finish();
}

// The kind that the words and stars in front made, as that of an array.
bool ArrayDeclarator::begin() {
    if (info->kind == KIND_REFERENCE) {
        parseError("declare array %s as reference", info->name ? info->name->text : "");
        return false;
    }
    if (info->kind == KIND_P_ARRAY) {
        info->kind = KIND_ARRAY;
        info->dataType = pointerTo(info->dataType);
    } else if (info->kind == KIND_P_FUNCTION) {
        info->kind = KIND_C_ARRAY;
        info->dataType = DT_P_FUNCTION;
    } else if (info->kind < KIND_ARRAY && !info->arrayLink) {
        info->kind = KIND_C_ARRAY;
    }
    if (!info->arrayLink)
        info->arrayLink = newArrayInfo();
    return info->arrayLink;
}

void ArrayDeclarator::assumeShape() {
    assumed = true;
    if (isParameter && info->kind == KIND_C_ARRAY)
        info->kind = KIND_P_C_ARRAY;
    else if (isParameter && info->kind == KIND_ARRAY)
        info->kind = KIND_P_ARRAY;
}

// The lower limit is the bound read last; both cells belong to the list.
void ArrayDeclarator::addDimension(ExprNode *limit) {
    appendListCell(bounds, lower);
    appendListCell(bounds, limit);
    lower = nullptr;
}

// Puts the dimensions in front of those that a typedef brought.
bool ArrayDeclarator::finish() {
    ArrayInfo *shape = info->arrayLink;
    ExprNode **end = &bounds;
    while (*end)
        end = &(*end)->next;
    *end = shape->bounds;
    bool wasDeferred = shape->shapeKind == SHAPE_DEFERRED;
    shape->bounds = bounds;
    shape->rank += dimensions;
    bounds = nullptr;
    if (openForm && shape->rank == 1)
        assumeShape();
    if (assumed && deferred)
        parseError("mix assumed-shape array with deferred-shape array");
    if (assumed || pointerAssumed)
        shape->shapeKind = SHAPE_ASSUMED;
    else
        shape->shapeKind = deferred || wasDeferred ? SHAPE_DEFERRED : SHAPE_FIXED;
    return true;
}

// ---- The first bound ----------------------------------------------------------------------------

bool ArrayDeclarator::readDimension() {
    dimensions++;
    if (!readLower())
        return false;
    nextToken();
    if (!isChar(':')) {
        if (!endWithoutLimit())
            return false;
    } else if (!readLimit()) {
        return false;
    }
    return nextDimension();
}

void ArrayDeclarator::skipRestrict() {
    constexpr char word[] = "restrict";
    constexpr int length = sizeof word - 1;
    peekNonBlank();
    char behind = strncmp(lineBuffer + linePos, word, length) ? '\0' : lineBuffer[linePos + length];
    if (behind != ' ' && behind != ']')
        return;
    linePos = static_cast<int16_t>(linePos + length);
    peekNonBlank();
}

bool ArrayDeclarator::readLower() {
    skipRestrict();
    switch (lineBuffer[linePos]) {
        case '&': return readReference();
        case ']': return readOpen();
        case ':':
        case '*': return readStar();
        default: return readExpression();
    }
}

bool ArrayDeclarator::readReference() {
    linePos++;
    lower = newIntNode(OPEN_LIMIT);
    if (assumed || fixed || hasPrefix || emptySeen)
        parseError("mix pointer to assumed-shape with other array in array declaration");
    pointerAssumed = true;
    return true;
}

bool ArrayDeclarator::readOpen() {
    if (pointerAssumed)
        parseError("mix pointer to assumed-shape array with other array ");
    lower = newIntNode(0);
    emptySeen = openFirst = true;
    return true;
}

bool ArrayDeclarator::readStar() {
    if (pointerAssumed)
        parseError("mix pointer to assumed-shape array with other array ");
    if (fixed)
        parseError("mixing pointer to assumed-shape with fixed size in array declaration");
    linePos++;
    lower = newIntNode(OPEN_LIMIT);
    assumeShape();
    return true;
}

// Whether the bound is an integral formal of the same list, by its name alone.
bool ArrayDeclarator::formalFollows() {
    nextToken();
    pushedBack = true;
    if (!isParameter || tokenClass != TK_IDENTIFIER)
        return false;
    for (const TypeInfo *formal = formals; formal; formal = formal->next) {
        if (formal->name != tokenValue.name || formal->dataType > DT_ULLONG)
            continue;
        peekNonBlank();
        char behind = lineBuffer[linePos];
        return behind == ']' || behind == ',';
    }
    return false;
}

bool ArrayDeclarator::readExpression() {
    if (pointerAssumed)
        parseError("mix pointer to assumed-shape array with other array ");
    if (formalFollows()) {
        pushedBack = false;
        lower = newIntNode(OPEN_LIMIT);
        assumeShape();
        return true;
    }
    return takeExpression(parseAssignmentExpression(false));
}

// A constant is an integer leaf from now on; all else waits for the run.
bool ArrayDeclarator::takeExpression(ExprNode *tree) {
    bool isIntegralTree = tree && isIntegral(treeDataType(tree));
    if (!isIntegralTree) {
        deleteNode(tree);
        return refuse("non-integral array index");
    }
    if (isConstantTree(tree)) {
        lower = newIntNode(evaluateConstant(tree));
        deleteNode(tree);
    } else {
        lower = tree;
        deferred = true;
    }
    return true;
}

// ---- The second bound ---------------------------------------------------------------------------

int ArrayDeclarator::constantLower() const {
    const Value *constant = constantOf(lower);
    return constant ? constant->payload.i : 0;
}

// One bound was written: it is the limit.
bool ArrayDeclarator::endWithoutLimit() {
    if (!pointerAssumed && !assumed && !openFirst)
        fixed = true;
    bool mayBeOpen = dimensions == 1 && openFirst;
    if (mayBeOpen)
        openFirst = false;
    else if (!deferred && constantOf(lower) && constantLower() <= 0)
        parseError("zero or negative subscript");
    ExprNode *limit = lower;
    lower = newIntNode(0);
    addDimension(limit);
    return true;
}

bool ArrayDeclarator::readLimit() {
    nextToken();
    pushedBack = true;
    if (isChar(',') || isChar(']')) {
        endOpen();
        return true;
    }
    if (assumed)
        parseError("mixing assumed-shape with fixed size in array declaration");
    fixed = true;
    unsigned char earlier = errorFlag;
    errorFlag = 0;
    ExprNode *tree = convertTree(parseAssignmentExpression(false), DT_INT);
    bool failed = errorFlag;
    errorFlag |= earlier;
    return takeLimit(tree, failed);
}

// `lower:` without the other limit. As a first dimension it is that of a parameter alone.
void ArrayDeclarator::endOpen() {
    pushedBack = false;
    int limit = OPEN_LIMIT;
    bool isFirst = dimensions == 1 && !hasPrefix;
    if (!isParameter || (!isFirst && fixed)) {
        parseError("missing the upper limit of the subscript in index %d", dimensions);
        limit = 0;
    } else if (isFirst) {
        openForm = true;
    } else {
        assumeShape();
    }
    addDimension(newIntNode(limit));
}

bool ArrayDeclarator::takeLimit(ExprNode *tree, bool failed) {
    if (!tree || failed || !isIntegral(treeDataType(tree))) {
        deleteNode(tree);
        return refuse("non-integral array index");
    }
    if (isConstantTree(tree)) {
        int upper = std::min(evaluateConstant(tree), OPEN_LIMIT - 2);
        deleteNode(tree);
        if (!deferred && upper <= constantLower())
            parseError("upper limit equal or less than lower limit");
        addDimension(newIntNode(upper + 1));
    } else {
        addDimension(newOperatorNode(OP_ADD_INT, tree, newIntNode(1)));
        deferred = true;
    }
    nextToken();
    return true;
}

// ---- Between dimensions -------------------------------------------------------------------------

// With the token behind a dimension current.
bool ArrayDeclarator::nextDimension() {
    if (isChar(',') && !errorFlag)
        return true;
    if (!isChar(']')) {
        if (!errorFlag)
            parseError("missing ',', '][', or ']'");
        pushedBack = true;
        return false;
    }
    peekNonBlank();
    more = lineBuffer[linePos] == '[';
    if (more)
        nextToken();
    return true;
}

}  // namespace

bool parseArrayDeclarator(TypeInfo *info, bool isParameter, int hasPointerPrefix,
                          TypeInfo *parameterList) {
    return ArrayDeclarator(info, isParameter, hasPointerPrefix > 0, parameterList).run();
}

}  // namespace zy
