// Array declarators: the record that each form makes, as a variable and as a formal, and every form
// that is refused.

#include <string>
#include <vector>

#include "decl/arrayInfo.h"
#include "decl/funcInfo.h"
#include "declarations.h"
#include "stmt/parser.h"
#include "stmt/program.h"

namespace zy {

namespace {

std::string boundText(const ExprNode *bound) {
    if (bound->kind != NODE_VALUE || bound->type != DT_INT)
        return "?";
    return bound->payload.i == OPEN_LIMIT ? "open" : std::to_string(bound->payload.i);
}

// kind, shape kind, data type, then the limits of each dimension as they are kept.
std::string describe(const TypeInfo *info) {
    std::string text = std::to_string(info->kind);
    if (!info->arrayLink)
        return text + " " + dataTypeText(info->dataType);
    text += "." + std::to_string(info->arrayLink->shapeKind) + " " + dataTypeText(info->dataType);
    int rank = 0;
    for (const ExprNode *cell = info->arrayLink->bounds; cell; cell = cell->next->next, rank++)
        text += " " + boundText(cell->item) + ":" + boundText(cell->next->item);
    return rank == info->arrayLink->rank ? text : text + " wrong rank";
}

struct Row {
    const char *text, *result;
};

}  // namespace

class ArrayDeclaratorTest : public DeclarationFixture {
protected:
    std::string lastDeclared(const std::string &text) {
        std::string messages = read(text);
        const TypeInfo *info = currentBlock->symbols();
        while (info && info->next)
            info = info->next;
        return !messages.empty() ? messages : info ? describe(info) : "nothing";
    }
    std::string formal(const std::string &text) {
        std::string messages = read("void f(" + text + ");");
        if (!messages.empty())
            return messages;
        const TypeInfo *info = main.symbols()->functionLink->parameters;
        while (info->next)
            info = info->next;
        return describe(info);
    }
    // Also the statements that computed bounds have made.
    void clear() {
        while (TypeInfo *symbol = currentBlock->symbols()) {
            if (symbol->name && symbol->name->symbol == symbol)
                symbol->name->symbol = nullptr;
            currentBlock->symbols() = symbol->next;
            releaseTypeInfo(symbol);
        }
        releaseStatements(pendingBefore);
        pendingBefore = nullptr;
        resetContexts();
    }
};

TEST_F(ArrayDeclaratorTest, Variables) {
    const std::vector<Row> rows = {
        {"int a[3];", "3.0 int 0:3"},
        {"int a[2][3];", "3.0 int 0:2 0:3"},
        {"int a[2, 3];", "3.0 int 0:2 0:3"},
        {"int a[1:3];", "3.0 int 1:4"},
        {"int a[1:3, 0:2];", "3.0 int 1:4 0:3"},
        {"int a[-2:2];", "3.0 int -2:3"},
        {"int a[];", "3.0 int 0:0"},
        {"int a[][3];", "3.0 int 0:0 0:3"},
        {"int a[ restrict 3];", "3.0 int 0:3"},
        {"int a['a' - 90];", "3.0 int 0:7"},
        {"int n; int a[n];", "3.2 int 0:?"},
        {"int n; int a[2 * n][3];", "3.2 int 0:? 0:3"},
        {"int n; int a[1:n];", "3.2 int 1:?"},
        {"array int a[3];", "6.0 int 0:3"},
        {"__declspec(zyarray) int a[3];", "6.0 int 0:3"},
        {"array int *a;", "8.1 int 0:open"},
        {"int (*a)[3];", "5.0 int 0:0 0:3"},
        {"int (*a)[:];", "5.1 int 0:open 0:open"},
        {"array int (*a)[3];", "8.0 int 0:0 0:3"},
        {"int *a[3];", "3.0 pointer to int 0:3"},
        {"array int *a[3];", "6.0 pointer to int 0:3"},
        {"int (*a[3])(int);", "3.0 pointer to function 0:3"},
        {"typedef int T[3]; T a;", "3.0 int 0:3"},
        {"typedef int T[3]; T a[2];", "3.0 int 0:2 0:3"},
        {"typedef int T[3]; T *a;", "5.0 int 0:0 0:3"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(lastDeclared(row.text), row.result) << row.text;
        clear();
    }
}

TEST_F(ArrayDeclaratorTest, Formals) {
    const std::vector<Row> rows = {
        {"int a[3]", "5.0 int 0:3"},
        {"int a[]", "5.0 int 0:0"},
        {"int [3]", "5.0 int 0:3"},
        {"int a[:]", "5.1 int 0:open"},
        {"int a[*]", "5.1 int 0:open"},
        {"int a[:][:]", "5.1 int 0:open 0:open"},
        {"int a[:, 3]", "5.1 int 0:open 0:3"},
        {"int n, int a[n]", "5.1 int 0:open"},
        {"int a[1:]", "5.1 int 1:open"},
        {"int a[&]", "4.1 int 0:open"},
        {"array int a[3]", "8.0 int 0:3"},
        {"array int a[:]", "8.1 int 0:open"},
        {"array int a[&]", "7.1 int 0:open"},
        {"array int &a", "7.1 int"},
        {"array int *a", "8.1 int 0:open"},
        {"int (*a)[3]", "5.0 int 0:0 0:3"},
        {"int (*a)[:]", "5.1 int 0:open 0:open"},
        {"int a[:], int b[3]", "5.0 int 0:3"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(formal(row.text), row.result) << row.text;
        clear();
    }
}

TEST_F(ArrayDeclaratorTest, RefusedVariables) {
    const std::string zero = "ERROR: zero or negative subscript\n";
    const std::string limits = "ERROR: upper limit equal or less than lower limit\n";
    const std::string index = "ERROR: non-integral array index\n";
    const std::string open = "ERROR: missing the upper limit of the subscript in index ";
    const std::string assumed = "ERROR: assumed-shape array not in function prototype scope\n";
    const std::vector<std::pair<const char *, std::string>> rows = {
        {"int a[0];", zero},
        {"int a[-1];", zero},
        {"int a[3][];", zero},
        {"int a[3:2];", limits},
        {"int a[2:2];", limits},
        {"int a[1.5];", index},
        {"int a[1:2.5];", index},
        {"int a[1:];", open + "1\n"},
        {"int a[2, 3:];", open + "2\n"},
        {"int &a[3];", "ERROR: declare array a as reference\n"},
        {"int a[:];", assumed},
        {"int a[*];", assumed},
        {"array int a[&];", assumed},
        {"array int &a;", assumed},
        {"typedef int T[:]; T a;", assumed},
        {"int n; typedef int T[n]; T *a;", "ERROR: pointer to deferred-shape array\n"},
        {"int a[3;", "ERROR: missing ',', '][', or ']'\n"},
        {"int n; int (*a)[n];", "ERROR: pointer to deferred-shape array\n"},
        {"int n; int a[n] = 3;", "ERROR: initialize deferred-shape array\n"},
        {"array int x;",
         "ERROR: computational array type qualifier applied to a scalar variable\n"},
    };
    for (const auto &[text, message] : rows) {
        EXPECT_EQ(lastDeclared(text), message) << text;
        clear();
    }
    enterInner();
    EXPECT_EQ(lastDeclared("int n; static int a[n];"),
              "ERROR: block scope static deferred-shape array \n");
    EXPECT_EQ(lastDeclared("typedef int T[n]; static T b;"),
              "ERROR: block scope static deferred-shape array \n");
    clear();
}

TEST_F(ArrayDeclaratorTest, RefusedFormals) {
    const std::string fixed =
        "ERROR: mixing pointer to assumed-shape with fixed size in array declaration\n";
    const std::string assumed =
        "ERROR: mixing assumed-shape with fixed size in array declaration\n";
    const std::string other = "ERROR: mix pointer to assumed-shape array with other array \n";
    const std::string reference =
        "ERROR: mix pointer to assumed-shape with other array in array declaration\n";
    const std::vector<std::pair<const char *, std::string>> rows = {
        {"int a[3, :]", fixed},
        {"int a[:, 1:3]", assumed},
        {"int a[&, 3]", other},
        {"int a[&, :]", other},
        {"int a[3, &]", reference},
        {"int a[:, &]", reference},
        {"int a[][&]", reference},
        {"int (*a)[&]", reference},
        {"int a[x]", "ERROR: non-integral array index\n"},
    };
    for (const auto &[text, message] : rows) {
        std::string messages = formal(text);
        EXPECT_EQ(messages.substr(0, message.size()), message) << text;
        clear();
    }
    read("int n;");
    std::string deferred = "ERROR: deferred-shape array as formal arg of a function \n";
    EXPECT_EQ(formal("int a[2 * n]").substr(0, deferred.size()), deferred);
    std::string both = "ERROR: mix assumed-shape array with deferred-shape array\n";
    EXPECT_EQ(formal("int a[:, 2 * n]").substr(0, both.size()), both);
}

}  // namespace zy
