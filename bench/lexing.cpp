// Lexes a file from beginning to end and prints the seconds it took: lexing FILE [TURNS]
// The best of the turns counts. Linked against the library's objects, as no export lexes alone.

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "expr/value.h"
#include "extern/include/embedzy.h"
#include "front/lexer.h"

using namespace zy;

namespace {

FILE *openSource(const char *path) {
    FILE *file = fopen(path, "r");
    if (!file) {
        fprintf(stderr, "cannot open %s\n", path);
        exit(1);
    }
    resetLexerState();
    sourceFiles[0] = file;
    sourceNames[0] = path;
    sourceDepth = 0;
    fileMode = true;
    return file;
}

long lexAll() {
    long tokens = 0;
    readSourceLine();
    for (nextToken(); !endOfInput; nextToken(), tokens++)
        if (tokenClass == TK_CONSTANT)
            deleteValue(tokenValue.constant);
    return tokens;
}

double secondsOf(const char *path, long &tokens) {
    FILE *file = openSource(path);
    auto start = std::chrono::steady_clock::now();
    tokens = lexAll();
    std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
    releaseLexer();
    fclose(file);
    return spent.count();
}

}  // namespace

int main(int argc, char **argv) {
    if (argc < 2) {
        fprintf(stderr, "usage: lexing FILE [TURNS]\n");
        return 1;
    }
    initConstSysVars();
    double best = 1e9;
    long tokens = 0;
    for (int turns = argc > 2 ? atoi(argv[2]) : 1; turns > 0; turns--) {
        double seconds = secondsOf(argv[1], tokens);
        best = seconds < best ? seconds : best;
    }
    printf("%.6f %ld\n", best, tokens);
    cleanMemory();
    return 0;
}
