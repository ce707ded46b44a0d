/* A host that computes with a script: it defines functions, calls them, and reads results back. */

#include <embedzy.h>
#include <stdio.h>
#include <stdlib.h>

static char program[] =
    "double mean(int n, double values[]) {"
    "    double sum = 0; int i;"
    "    for (i = 0; i < n; i++) sum += values[i];"
    "    return sum / n;"
    "}"
    "string_t greeting(string_t name) { string_t all = \"hello, \"; return stradd(all, name); }";

int main(void) {
    ZyOptions option = {ZY_REGULAR_SHELL, ZY_HOME, NULL};
    void *interp;
    double values[] = {1, 2, 6}, result, root[2];
    char *text;

    if (Zy_Initialize(&interp, &option) != 0)
        return 1;
    if (Zy_AppendParseScript(interp, program) != 0)
        return Zy_End(interp), 1;

    Zy_CallFuncByName(interp, "mean", &result, 3, values);
    printf("mean %g\n", result);
    Zy_CallFuncByName(interp, "greeting", &text, "host");
    printf("%s\n", text);
    free(text);

    /* Variables and expressions of the script. */
    Zy_DeclareVar(interp, "double limit;");
    Zy_SetVar(interp, "limit", ZY_TYPE_DOUBLE, 9.0);
    Zy_ExprCalc(interp, "sqrt(limit) + 1", ZY_TYPE_DOUBLE, &result);
    printf("%g\n", result);
    Zy_ExprCalc(interp, "sqrt(complex(3, 4))", ZY_TYPE_DCOMPLEX, root);
    printf("%g %g\n", root[0], root[1]);

    /* A fault is reported, and the instance goes on. */
    if (Zy_ExprEval(interp, "limit +") != 0)
        printf("refused\n");
    return Zy_End(interp);
}
