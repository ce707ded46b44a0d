// zy: the stand-alone front end, on the same library that hosts embed.

#include <cstdio>
#include <cstring>

#include "embedzy.h"

int main(int argc, char **argv) {
    if (argc == 2 && strcmp(argv[1], "--version") == 0) {
        printf("Zy %s%s%d.%d.%d (%s)\n", Zy_version, *Zy_version ? " " : "", 8, 0, 0, Zy_edition);
        return 0;
    }
    fprintf(stderr, "zy: this build doesn't run scripts yet; zy --version works\n");
    return 1;
}
