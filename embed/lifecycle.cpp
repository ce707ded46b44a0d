// Start and end of an instance, inside its own copy of the library.

#include <cstdio>
#include <string>

#include "decl/typeInfo.h"
#include "embed/kernel.h"
#include "embed/lifecycle.h"
#include "embed/scriptDriver.h"
#include "embed/startupFiles.h"
#include "embed/streams.h"
#include "expr/context.h"
#include "expr/nodes.h"
#include "expr/scope.h"
#include "front/aliases.h"
#include "front/lexerState.h"
#include "front/preprocessor.h"
#include "front/tokens.h"
#include "front/vocabularySwitches.h"
#include "instance/environment.h"
#include "instance/report.h"
#include "platform/signals.h"
#include "rtlib/textState.h"
#include "startup/startup.h"
#include "stmt/program.h"
#include "stmt/signalState.h"

namespace zy {

void installFaultHandlers() {
    bool installed = platform::installHandler(platform::memoryFaultSignal, segmentationBusHandler,
                                              &handlerBeforeFault) &&
                     platform::installHandler(platform::illegalInstructionSignal,
                                              segmentationBusHandler, &handlerBeforeIllegal);
    if (!installed)
        plainError("internal signal error in segmentation interrupter");
}

namespace {

// The code of this copy is about to be unmapped: no signal may come to it any more.
void withdrawFaultHandlers() {
    platform::withdrawHandler(platform::memoryFaultSignal, segmentationBusHandler,
                              handlerBeforeFault);
    platform::withdrawHandler(platform::illegalInstructionSignal, segmentationBusHandler,
                              handlerBeforeIllegal);
}

void takeOptions(const ZyOptions *option) {
    e_lang->restricted = option ? option->shellKind : 0;
    e_lang->startupMode = option ? 1 : 0;
    e_lang->zyhome = option ? option->zyhome : nullptr;
}

int startKernel(void **handle, const ZyOptions *option, ZyPutenv put, ZyGetenv get) {
    e_interp = *handle;
    scriptMode = SCRIPT_IDLE;
    installFaultHandlers();
    initConstSysVars();
    withdrawKeyword("free");  // an embedded script reaches the library's function of that name
    e_lang->embedded = 1;
    e_lang->putenvFn = put;
    e_lang->getenvFn = get;
    takeOptions(option);
    initExecution();
    // An error up to here or in the start-up file is the result, whatever comes after it.
    bool failed = errorFlag != 0;
    nullPrompt();
    if (e_lang->startupMode == 0)
        readStartupFile(nullptr);
    else if (e_lang->startupMode == 1 && e_lang->zyhome)
        readStartupFile((std::string(e_lang->zyhome) + "/config/zyrc").c_str());
    return failed || errorFlag ? -1 : 0;
}

}  // namespace

}  // namespace zy

int Zy_Initialize_kernel_kernel(void **handle, ZyOptions *option, ZyPutenv put, ZyGetenv get) {
    return zy::startKernel(handle, option, put, get);
}

int Zy_Initialize2_kernel(void **handle, ZyOptions *option, ZyPutenv put, ZyGetenv get) {
    return zy::startKernel(handle, option, put, get);
}

int Zy_End_kernel(void *) {
    zy::runAtExit();
    zy::withdrawFaultHandlers();
    cleanMemory();
    cleanup();
    return 0;
}

void cleanMemory() {
    zy::releaseProgram();
    zy::releaseReopenList();
    zy::resetVocabularySwitches();
    zy::releaseContexts();
    freePrompt();
    zy::releaseScopes();
    zy::releaseKeptTexts();
    zy::releaseNames();
    zy::releaseValueRecords();
    zy::releaseKeywords();
    zy::releaseAliases();
    zy::releasePreprocessor();
    zy::releaseLexer();
    if (!e_lang->embedded)
        zy::envRelease();
    zy::releaseTokens();
    zy::releaseStartup();
    zy::releaseTypeRecords();
    zy::releaseFreeBlocks();
    zy::releaseFileNames();
    zy::releaseLangState();
}

// Nothing is being recorded: motion data alone would be.
void cleanup() {}
