// Conditional directives. They live in the reader of file lines: what a false branch excludes never
// reaches the lexer. Their expressions are any that can be evaluated while the text is parsed.

#include <cstring>

#include "expr/constants.h"
#include "expr/guards.h"
#include "expr/nodes.h"
#include "expr/parser.h"
#include "expr/scope.h"
#include "expr/thread.h"
#include "front/macros.h"
#include "front/preprocessorParts.h"
#include "instance/report.h"

namespace zy {

namespace {

constexpr char DEFINED[] = "defined";
constexpr int DEFINED_CODE = 75;

// ---- Expressions ------------------------------------------------------------------------------

int truthOf(ExprNode *tree) {
    int number = 0;
    if (Value *value = runParsed(tree)) {
        constantToInt(value, number);
        deleteValue(value);
    }
    return number;
}

void reportCondition() {
    parseOk = 0;
    errorFlag = 1;
    plainError("invalid expression following #if or #elif");
    fprintf(stderr, "       at line %d in file %s\n", currentLine,
            sourceNames[0] ? sourceNames[0] : "");
}

// With the word `defined` in the language. NULL if there is no sound expression.
ExprNode *parseCondition() {
    unsigned char earlierError = errorFlag;
    errorFlag = 0;
    addKeyword(KC_OPERATOR, DEFINED, DEFINED_CODE);
    ExprNode *tree = parseLineExpression();
    removeKeyword(DEFINED, nameHash(DEFINED), keywordTable);
    if (tree && !errorFlag)
        convertTree(tree, DT_INT);
    if (errorFlag) {
        deleteNode(tree);
        tree = nullptr;
    }
    errorFlag = earlierError;
    return tree;
}

// The truth of the expression at linePos; 0 if only its form counts.
int evaluateCondition(bool parseOnly) {
    conditionIdle = parseOnly;
    ExprNode *tree = parseCondition();
    conditionIdle = false;
    if (!tree)
        reportCondition();
    int truth = tree && !parseOnly ? truthOf(tree) : 0;
    deleteNode(tree);
    return truth;
}

// ---- Groups -----------------------------------------------------------------------------------

void openGroup() {
    conditionGroup = new ConditionGroup{conditionGroup, true};
    condDepth++;
}

void closeGroup() {
    ConditionGroup *group = conditionGroup;
    conditionGroup = group->outer;
    delete group;
    if (skipLevel == condDepth)
        skipLevel = 0;
    condDepth--;
}

void beginIf() {
    openGroup();
    if (skipLevel)
        evaluateCondition(true);
    else if (!evaluateCondition(false))
        skipLevel = condDepth;
}

// Whether a branch begins that the name at linePos lets in.
bool nameLetsIn(bool wantDefined) {
    DirectiveLine line(false);
    nextToken();
    int isDefined = tokenIsDefined();
    dropToken();
    if (isDefined < 0)
        parseWarning("#ifdef or #ifndef must be followed by an identifier");
    return isDefined < 0 || (isDefined != 0) == wantDefined;
}

void beginIfdef(bool wantDefined) {
    openGroup();
    if (!skipLevel && !nameLetsIn(wantDefined))
        skipLevel = condDepth;
}

void switchElse() {
    if (skipLevel == condDepth && conditionGroup->mayTake)
        skipLevel = 0;
    else if (!skipLevel)
        skipLevel = condDepth;
}

void switchElif() {
    if (skipLevel == condDepth && conditionGroup->mayTake) {
        if (!evaluateCondition(false))
            return;
        skipLevel = 0;
    } else {
        bool wasTaken = !skipLevel;
        if (wasTaken)
            skipLevel = condDepth;
        evaluateCondition(true);
        if (!wasTaken)
            return;
    }
    conditionGroup->mayTake = false;
}

// Of #else, #elif and #endif.
bool groupIsOpen(const char *complaint) {
    if (condDepth)
        return true;
    parseOk = 0;
    errorFlag = 1;
    plainError("%s", complaint);
    SourcePosition position;
    if (e_lang->warningLevel != 0 && parsePosition(position))
        printErrorPosition(position);
    return false;
}

// False if the word is not conditional.
bool runConditional(Directive word) {
    switch (word) {
        case DIR_IF: beginIf(); break;
        case DIR_IFDEF: beginIfdef(true); break;
        case DIR_IFNDEF: beginIfdef(false); break;
        case DIR_ELSE:
            if (groupIsOpen("#else has no preceding #if"))
                switchElse();
            break;
        case DIR_ELIF:
            if (groupIsOpen("#elif has no preceding #if"))
                switchElif();
            break;
        case DIR_ENDIF:
            if (groupIsOpen("#endif has no preceding #if"))
                closeGroup();
            break;
        default: return false;
    }
    return true;
}

// With the cursor behind the # of a line. False: the line is none of a conditional.
bool runConditionalLine() {
    DirectiveLine line(true);
    if (atLineEnd())
        return false;
    if (!runConditional(directiveNumber())) {
        dropToken();
        return false;
    }
    skipRestOfLine();  // a comment there may go on
    return true;
}

// A directive in a string literal that goes on over lines is text.
bool isExcluded() {
    int16_t start = 0;
    skipBlanks(start, lineBuffer);
    if (lineBuffer[start] == '#' && !e_lang->inStringContinuation) {
        linePos = static_cast<int16_t>(start + 1);
        skipBlanks(linePos, lineBuffer);
        if (runConditionalLine())
            return true;
        linePos = 0;
    }
    return skipLevel != 0;
}

void reportOpenGroup() {
    if (condDepth == 0 || sourceDepth != 0)
        return;
    parseError("missing #endif ");
    resetConditions();
}

}  // namespace

void readFilteredLine(FILE *stream) {
    do {
        if (!readRawLine(stream)) {
            reportOpenGroup();
            return;
        }
    } while (isExcluded());
}

// ---- What counts as defined -------------------------------------------------------------------

int tokenIsDefined() {
    const char *name = tokenName();
    if (!name)
        return -1;
    if (findMacro(name))
        return 1;
    for (const char *constant :
         {"NULL", "__FILE__", "__DATE__", "__TIME__", "__STDC__", "__STDC_VERSION__", "__LINE__"})
        if (tokenClass == TK_IDENTIFIER && strcmp(name, constant) == 0)
            return 1;
    return 0;
}

namespace {

// Reads `name` or `(name)`; -1 if it is neither.
int readDefined() {
    DirectiveLine line(false);
    bool parenthesis = expectChar('(', false);
    nextToken();
    int isDefined = tokenIsDefined();
    dropToken();
    if (isDefined >= 0 && parenthesis && !expectChar(')', false))
        return -1;
    return isDefined;
}

}  // namespace

ExprNode *parseDefined() {
    int isDefined = readDefined();
    if (isDefined < 0) {
        parseError("invalid operand for defined() operation ");
        return nullptr;
    }
    return newIntNode(isDefined);
}

}  // namespace zy
