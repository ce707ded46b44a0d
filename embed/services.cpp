// The small services: version, home, application type, user data, callback, signal cells.

#include "embed/kernel.h"
#include "expr/value.h"
#include "instance/version.h"
#include "startup/startupState.h"

int Zy_Version_kernel(void *, ZyVersionInfo *info) {
    *info = {zy::versionEdition, zy::versionReleaseDate, zy::versionText, zy::versionMajor,
             zy::versionMinor,   zy::versionMicro,       zy::versionBuild};
    return 0;
}

char *Zy_Home_kernel(void *) { return zy::homeFolder; }

int Zy_AppType_kernel(void *) { return e_lang->appType; }

int Zy_SetGlobalUserData_kernel(void *, void *data) {
    e_lang->userData = data;
    return 0;
}

void *Zy_GetGlobalUserData_kernel(void *) { return e_lang->userData; }

int Zy_AddCallback_kernel(void *, int mask, ZyCallback function, void *userData, int interval) {
    e_lang->callbackActive = 1;
    e_lang->callbackFn = function;
    e_lang->callbackMask = mask;
    e_lang->callbackData = userData;
    e_lang->callbackInterval = interval;
    return 0;
}

void *ZyCurtdbForSignalptr_kernel(void *, int **longjumSIG, void ***curtdbForSignal,
                                  int **longjumSSIG, void ***curtdbForSSignal, int **longjumSIGset,
                                  void ***curtdbForSignalset, int **longjumSIGaction,
                                  void ***curtdbForSignalaction) {
    *longjumSIG = &ZyLongjumSIG;
    *curtdbForSignal = ZyCurtdbForSignal;
    *longjumSSIG = &ZyLongjumSSIG;
    *curtdbForSSignal = ZyCurtdbForSSignal;
    *longjumSIGset = &ZyLongjumSIGset;
    *curtdbForSignalset = ZyCurtdbForSignalset;
    *longjumSIGaction = &ZyLongjumSIGaction;
    *curtdbForSignalaction = ZyCurtdbForSignalaction;
    return zy::currentContext ? zy::currentContext->caller : nullptr;
}
