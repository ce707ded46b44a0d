/* The public header from C: the records have the layout that hosts are told, and a host that is
 * plain C gets by. */

#include <embedzy.h>
#include <stddef.h>
#include <string.h>

_Static_assert(offsetof(ZyOptions, zyhome) == 8 && offsetof(ZyOptions, copyFolder) == 16,
               "ZyOptions");
_Static_assert(offsetof(ZyVersionInfo, major) == 24 && sizeof(ZyVersionInfo) == 40,
               "ZyVersionInfo");
_Static_assert(offsetof(ZyDebugInfo, file) == 24 && offsetof(ZyDebugInfo, isDestructor) == 52,
               "ZyDebugInfo");
_Static_assert(offsetof(ZyUserInfo, memberCount) == 20, "ZyUserInfo");
_Static_assert(offsetof(ZyMemberInfo, extents) == 56 && offsetof(ZyMemberInfo, bits) == 84 &&
                   offsetof(ZyMemberInfo, tag) == 96,
               "ZyMemberInfo");
_Static_assert(ZY_TYPE_INT == 14 && ZY_TYPE_P_FUNCTION == 116 && ZY_TYPE_PPP_STRUCT == 318,
               "types");

/* The number of the line that went wrong, 0 for none. */
int runCHost(void) {
    ZyOptions option = {ZY_REGULAR_SHELL, ZY_HOME, NULL};
    ZyVersionInfo info;
    void *interp;
    int *longjumSIG, *other;
    void **table;

    if (Zy_Initialize(&interp, &option) != 0)
        return __LINE__;
    if (Zy_Version(interp, &info) != 0 || strcmp(info.edition, "Professional") != 0 ||
        strcmp(info.releaseDate, "February 11, 2017") != 0 || strcmp(info.version, "") != 0 ||
        info.major != 8 || info.minor != 0 || info.micro != 0 || info.build != 15421)
        return __LINE__;
    if (strcmp(Zy_Home(interp), ZY_HOME) != 0 || Zy_AppType(interp) != 0)
        return __LINE__;
    if (ZyCurtdbForSignalptr(interp, &longjumSIG, &table, &other, &table, &other, &table, &other,
                             &table) != NULL ||
        *longjumSIG != 0 || table[ZY_SIGNAL_COUNT - 1] != NULL)
        return __LINE__;
    if (longjumSIG == &ZyLongjumSIG)
        return __LINE__; /* this program's own library is no instance */
    return Zy_End(interp) == 0 ? 0 : __LINE__;
}
