// record header: the main state record of an instance, and the cells that tell how a run stands.
// One library image holds one instance, so these are plain variables of the image. All of them are
// defined and get their first values in instance/langState.cpp.
#pragma once

#include <atomic>
#include <cstdint>

namespace zy {
struct TypeInfo;
struct AtExitEntry;
struct NameCell;
struct StmtNode;
struct ExecContext;
struct IncludeSite;
struct VarCell;
}  // namespace zy

extern "C" {
struct ZyDebugInfo;

using ZyPutenv = int (*)(const char *text);
using ZyGetenv = char *(*)(const char *name);
using ZyDebugCallback = int (*)(void *interp, struct ZyDebugInfo *info, void *userData);

// Fields keep their order: a stand-alone front end fills them before it starts the interpreter.
struct ZyLang {
    int startupMode;           // start-up file: 0 the user's, 1 zyrc under zyhome, 2 none
    const char *zyhome;        // the option's home, not copied
    int embedded;              // 1 for an instance made by Zy_Initialize
    int multiRun;              // 1 once a service that runs any number of scripts was used
    int ignoreFirstLine;       // 1: the option line of a script is not honoured
    int copyStartupFile;       // 1: offer to copy the model start-up file
    int scriptGiven;           // stand-alone: a script was named on the command line
    int loginShell;            // run the login file
    int restricted;            // the restricted shell is in force
    int restrictionSuspended;  // lifted while trusted code is read
    int savedRestricted;       // value of `restricted` to return to
    int parseOnly;             // parse, do not run
    int noOptionalLib;         // leave lib/libopt out of _fpath
    int classLevel;            // nesting of class bodies
    int macroExpansionOn;      // identifiers are looked up as macros
    int rawLineMode;           // lines are read without directives; a line's end delivers ;
    int inStringContinuation;  // the next line of a string literal is being read
    int warningLevel;          // value of _warning
    int errnoMirror;           // value of _errno
    int globalDef;             // macros live past the parse that made them
    int debugLevel;            // value of _debug
    int castMode;
    int errorsToOutput;  // either of these two sends standard error to standard output at start
    int errorsToOutputUnbuffered;
    int initGlobals;      // class objects at file level are constructed at their declaration
    int runInitialisers;  // 0 while a script is parsed without running its initialisers
    int abortedRun;       // Zy_Abort ended the run; cleared before each run
    int appType;          // 0 console, 1 windows, 2 console library
    // Symbols whose running value is read through them.
    zy::TypeInfo *histsize, *setlocale, *ignoreeof, *ignoretrigraph, *status, *histnum, *formatf,
        *formatd;
    int lineOffset;                // added to the line number for __LINE__
    const char *lineFileName;      // stands for __FILE__ when set; interned
    int packAlignment;             // member alignment limit, 0 for none
    int commaEndsExpression;       // a comma ends the expression, as in an argument list
    void *userData;                // the host's own
    zy::AtExitEntry *atExitList;   // functions given to atexit, newest first
    zy::IncludeSite *includeSite;  // folders of the files being included, innermost first
    void *reservedSite[2];
    zy::VarCell *mainArgv;  // the copy of _argv given to main, released after the run
    ZyPutenv putenvFn;      // the process environment is reached through these two alone
    ZyGetenv getenvFn;
    zy::NameCell *fileNameList;    // file names that live as long as the program
    zy::NameCell *hostFuncBlocks;  // bodies made for host functions
    int callbackActive;            // debug events are delivered now
    ZyDebugCallback callbackFn;
    int callbackMask, callbackInterval;
    void *callbackData;
    zy::ExecContext *stackViewBase;  // the running context while the view of the stack is moved
};

__attribute__((visibility("default"))) extern struct ZyLang *e_lang;
}

namespace zy {

constexpr int SOURCE_LINE_MAX = 5120;  // bytes of a source line, of a path, of a macro buffer

// A cell of a list of names.
struct NameCell {
    NameCell *next;
    char *text;  // owned
};

// How the last script was run; a second run is refused until Zy_Reset.
enum ScriptMode { SCRIPT_IDLE, SCRIPT_RUN, SCRIPT_EXECUTED };
extern ScriptMode scriptMode;

enum RunStatus : unsigned char { RUN_CLEAN, RUN_ERROR, RUN_WARNING };
extern unsigned char runStatus;  // the worst that happened at run time; an error outweighs warnings
extern unsigned char errorFlag;  // a parse error happened; refuses execution
extern unsigned char parseOk;    // cleared by a failing reference check

// Zy_Abort reads and writes these two from another thread.
extern std::atomic<unsigned char> executing;     // statements of a program are running
extern std::atomic<unsigned char> abortRequest;  // tested before each statement

// Allocates e_lang with its start values; releases it.
void createLangState();
void releaseLangState();

}  // namespace zy
