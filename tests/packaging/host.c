/* A host outside the tree. It names the library's data, so it must have been compiled the way the
 * package says. */

#include <embedzy.h>
#include <stdio.h>

int main(int argc, char **argv) {
    ZyOptions option = {ZY_REGULAR_SHELL, argv[1], NULL};
    ZyVersionInfo info;
    void *interp;

    if (argc != 2 || Zy_Initialize(&interp, &option) != 0)
        return 1;
    Zy_Version(interp, &info);
    printf("%s %d %s\n", Zy_edition, info.build, e_filenamebuf);
    return Zy_End(interp);
}
