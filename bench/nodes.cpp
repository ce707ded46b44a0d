// nodes: what a node of an expression costs, beside Lua 5.4's lua_pcall() of the same expression in
// turns of the same run. Prints nanoseconds per run and per node, and the ratio, each the median.

#include <lauxlib.h>
#include <lua.h>
#include <lualib.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "expr/context.h"
#include "expr/evaluator.h"
#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/scope.h"
#include "expr/select.h"
#include "expr/thread.h"
#include "extern/include/embedzy.h"
#include "instance/langState.h"

using namespace zy;

namespace {

constexpr int RUNS = 200'000, TURNS = 9;

// A reader of prefix notation, so that one text makes both programs: (+ x (* 2 y)).
struct Source {
    const char *at;
    std::map<std::string, Symbol *> &symbols;
    std::string lua;

    std::string word() {
        const char *start = at;
        while (*at && !strchr(" ()", *at))
            at++;
        return {start, at};
    }
    void blanks() { at += strspn(at, " "); }

    ExprNode *leaf() {
        std::string text = word();
        lua += text;
        if (auto found = symbols.find(text); found != symbols.end())
            return newSymbolNode(found->second);
        bool isReal = text.find('.') != std::string::npos;
        Value *constant = newZeroValue(isReal ? DT_DOUBLE : DT_INT);
        if (isReal)
            constant->payload.d = std::stod(text);
        else
            constant->payload.i = std::stoi(text);
        return constant;
    }
    ExprNode *tree() {
        blanks();
        if (*at != '(')
            return leaf();
        at++;
        static const std::map<std::string, std::pair<int, const char *>> codes = {
            {"+", {OP_PLUS, "+"}},     {"-", {OP_MINUS, "-"}},   {"*", {OP_STAR, "*"}},
            {"/", {OP_SLASH, "/"}},    {"%", {OP_PERCENT, "%"}}, {"<", {OP_LESS, "<"}},
            {"&", {OP_AMPERSAND, "&"}}};
        auto [code, sign] = codes.at(word());
        lua += '(';
        ExprNode *left = tree();
        lua += sign;
        ExprNode *right = tree();
        lua += ')';
        blanks();
        at++;
        return bindOperator(newOperatorNode(code, left, right));
    }
};

int chainLength(const ExprNode *head) {
    int length = 0;
    for (; head; head = head->next)
        length++;
    return length;
}

double nanosecondsOf(auto action) {
    auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < RUNS; i++)
        action();
    std::chrono::duration<double, std::nano> spent = std::chrono::steady_clock::now() - start;
    return spent.count() / RUNS;
}

double median(std::vector<double> times) {
    std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
    return times[times.size() / 2];
}

void measure(lua_State *L, std::map<std::string, Symbol *> &symbols, const char *name,
             const char *text) {
    Source source{text, symbols, {}};
    ExprNode *chain = compileChain(source.tree(), nullptr, false);
    std::string chunk = "local x, y, z, i, j = 1.5, 2.25, 3.75, 7, 3\nreturn function() return " +
                        source.lua + " end";
    if (luaL_dostring(L, chunk.c_str()) != LUA_OK) {
        printf("%s\n", lua_tostring(L, -1));
        exit(1);
    }
    double ours = 0, theirs = 0;
    auto run = [&] {
        currentContext->chain = chain;
        runChain();
        Value *result = popValue();
        ours = result->type == DT_DOUBLE ? result->payload.d : result->payload.i;
        recycleValue(result);
    };
    auto runLua = [&] {
        lua_pushvalue(L, -1);
        lua_pcall(L, 0, 1, 0);
        theirs = lua_isboolean(L, -1) ? lua_toboolean(L, -1) : lua_tonumber(L, -1);
        lua_pop(L, 1);
    };
    std::vector<double> times, luaTimes, ratios;
    for (int turn = 0; turn < TURNS; turn++) {
        times.push_back(nanosecondsOf(run));
        luaTimes.push_back(nanosecondsOf(runLua));
        ratios.push_back(times.back() / luaTimes.back());
    }
    lua_pop(L, 1);
    int length = chainLength(chain);
    printf("%-22s %3d nodes %7.1f ns (%.2f ns per node)  Lua 5.4 %7.1f ns  ratio %.2f%s\n", name,
           length, median(times), median(times) / length, median(luaTimes), median(ratios),
           ours == theirs ? "" : "  RESULTS DIFFER");
}

Symbol *variable(int type, double number) {
    Symbol *symbol = newTypeInfo();
    symbol->dataType = type;
    VarCell *cell = symbol->storageCell = newVarCell(type);
    if (type == DT_INT)
        cell->data.i = static_cast<int>(number);
    else
        cell->data.d = number;
    return symbol;
}

}  // namespace

int main() {
    initConstSysVars();
    resetContexts();
    std::map<std::string, Symbol *> symbols = {{"x", variable(DT_DOUBLE, 1.5)},
                                               {"y", variable(DT_DOUBLE, 2.25)},
                                               {"z", variable(DT_DOUBLE, 3.75)},
                                               {"i", variable(DT_INT, 7)},
                                               {"j", variable(DT_INT, 3)}};
    lua_State *L = luaL_newstate();
    luaL_openlibs(L);
    measure(L, symbols, "one sum", "(+ x y)");
    measure(L, symbols, "doubles",
            "(+ (+ (- (* (+ (* x 3.0) y) 2.5) (/ z 4.0)) (* (- x y) (+ z 1.5)))"
            " (- (* (+ y z) (- z x)) (/ (+ x (* y z)) (+ 2.0 (* x x)))))");
    measure(L, symbols, "ints",
            "(+ (- (* (+ i 3) j) (% (* i i) 5)) (+ (* (- i j) (+ j 11)) (- (* 7 (+ i j)) (& (* i 9)"
            " 255))))");
    measure(L, symbols, "mixed",
            "(< (+ (* i x) (- (* 2 y) (/ j 4.0))) (+ (* (+ i j) z) (* (- x 1) (+ j (* y i)))))");
    lua_close(L);
    cleanMemory();
    return 0;
}
