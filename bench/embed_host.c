/* embed_host SCRIPT COUNT: create an instance, run SCRIPT in it, call work(i % 50), end it; COUNT
 * times. Prints the sum of the results. */

#include <embedzy.h>
#include <stdio.h>
#include <stdlib.h>

int main(int argc, char **argv) {
    ZyOptions option = {ZY_REGULAR_SHELL, ZY_HOME, NULL};
    char *script[2] = {NULL, NULL};
    long long total = 0;

    if (argc != 3) {
        fprintf(stderr, "usage: embed_host SCRIPT COUNT\n");
        return 2;
    }
    script[0] = argv[1];
    int count = atoi(argv[2]);
    for (int i = 0; i < count; i++) {
        void *interp;
        int result = 0;
        if (Zy_Initialize(&interp, &option) != 0 || Zy_RunScript(interp, script) != 0 ||
            Zy_CallFuncByName(interp, "work", &result, i % 50) != 0)
            return 1;
        total += result;
        if (Zy_End(interp) != 0)
            return 1;
    }
    printf("embed %lld\n", total);
    return 0;
}
