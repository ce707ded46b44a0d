/* instances_zy COUNT: create and end an instance, COUNT times. */

#include <embedzy.h>
#include <stdlib.h>

int main(int argc, char **argv) {
    ZyOptions option = {ZY_REGULAR_SHELL, ZY_HOME, NULL};
    void *interp;

    for (int i = argc == 2 ? atoi(argv[1]) : 0; i > 0; i--)
        if (Zy_Initialize(&interp, &option) != 0 || Zy_End(interp) != 0)
            return 1;
    return 0;
}
