/* A host with two instances side by side: each is a copy of the interpreter of its own. */

#include <embedzy.h>
#include <stdio.h>

int main(void) {
    ZyOptions option = {ZY_REGULAR_SHELL, ZY_HOME, NULL};
    void *first, *second;
    ZyVersionInfo info;

    if (Zy_Initialize(&first, &option) != 0 || Zy_Initialize(&second, &option) != 0)
        return 1;

    Zy_SetGlobalUserData(first, "the first");
    Zy_SetGlobalUserData(second, "the second");

    void *both[] = {first, second};
    for (int i = 0; i < 2; i++) {
        Zy_Version(both[i], &info);
        printf("%s: Zy %d.%d.%d %s, build %d, of %s\n", (char *)Zy_GetGlobalUserData(both[i]),
               info.major, info.minor, info.micro, info.edition, info.build, info.releaseDate);
    }
    return Zy_End(first) != 0 || Zy_End(second) != 0;
}
