#include "instance/langState.h"

#include "extern/include/embedzy.h"
#include "instance/environment.h"
#include "instance/version.h"

extern "C" {
ZyLang *e_lang = nullptr;
void *e_interp = nullptr;
char *e_cmdarg = nullptr;
char e_filenamebuf[ZY_FILENAME_SIZE];
const char *const Zy_edition = zy::versionEdition;
const char *const Zy_version = zy::versionText;
}

namespace zy {

ScriptMode scriptMode = SCRIPT_IDLE;
unsigned char runStatus = RUN_CLEAN;
unsigned char errorFlag = 0;
unsigned char parseOk = 1;
std::atomic<unsigned char> executing{0};
std::atomic<unsigned char> abortRequest{0};

void createLangState() {
    e_lang = new ZyLang{};
    e_lang->macroExpansionOn = 1;
    e_lang->warningLevel = 1;
    e_lang->globalDef = 1;
    e_lang->runInitialisers = 1;
    e_lang->putenvFn = envPut;
    e_lang->getenvFn = envGet;
    scriptMode = SCRIPT_IDLE;
    runStatus = RUN_CLEAN;
    errorFlag = 0;
    parseOk = 1;
    executing = abortRequest = 0;
}

void releaseLangState() {
    delete e_lang;
    e_lang = nullptr;
}

}  // namespace zy
