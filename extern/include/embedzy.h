/* embedzy.h: the interface between a host program and the Zy interpreter.
 *
 * A host creates instances, runs scripts and expressions in them, reads and sets their variables,
 * and lets scripts call its own functions:
 *
 *     void *interp;
 *     ZyOptions option = {ZY_REGULAR_SHELL, "/opt/zy/toolkit/embedzy", NULL};
 *     char *script[] = {"hello.zy", NULL};
 *
 *     if (Zy_Initialize(&interp, &option) == 0)
 *         Zy_RunScript(interp, script);
 *     Zy_End(interp);
 *
 * Conventions
 *
 * 1. interp is the handle of an instance, from Zy_Initialize(). Each function with this parameter
 *    prints a message and gives its failure value if the handle is NULL or no living instance's.
 * 2. An instance is a copy of this library, loaded from the copy folder under a number of its own;
 *    so it has all its state to itself. Instances run side by side on different threads, one
 *    thread per instance at any moment. Zy_Abort() alone may come from another thread.
 * 3. An int result is 0 for success and -1 for failure unless said otherwise. Nothing is thrown.
 *    Messages go to the standard error stream, which Zy_Reopen() redirects.
 * 4. Texts that a host passes are read during the call, unless said otherwise. Texts that it gets
 *    belong to the instance and live until Zy_End(), unless said otherwise; they aren't to be
 *    written to.
 * 5. Integers are 32 bits; sizes are bytes.
 * 6. "Runs script code" marks what can take as long as a script likes, and can call back the host.
 *
 * A process that names the data declared at the end must be compiled with -fPIC (the pkg-config
 * file and the CMake package say so): an executable that isn't would get cells of its own.
 *
 * This file is made from embed/embedzy.h.in, embed/services.inc and embed/hostTypes.inc by
 * `make header`.
 */
#ifndef EMBEDZY_H
#define EMBEDZY_H

#include <stdarg.h>
#include <stddef.h>

#if defined(__GNUC__)
#define ZY_API __attribute__((visibility("default")))
#else
#define ZY_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ---------------------------------------------------------------------------------
 * Field order and widths are fixed. */

#define ZY_REGULAR_SHELL 0
#define ZY_RESTRICTED_SHELL 1 /* scripts reach the machine through prepared programs alone */

/* What Zy_Initialize() is told. The strings must live as long as the instance. */
typedef struct ZyOptions {
    int shellKind;          /* ZY_REGULAR_SHELL or ZY_RESTRICTED_SHELL */
    const char *zyhome;     /* home of the embedding toolkit; not NULL */
    const char *copyFolder; /* folder of zymt1.dl, zymt2.dl, ...; NULL or not readable: extern/lib
                               of zyhome */
} ZyOptions;

/* Filled by Zy_Version(). */
typedef struct ZyVersionInfo {
    const char *edition;
    const char *releaseDate;
    const char *version;
    int major;
    int minor;
    int micro;
    int build;
} ZyVersionInfo;

/* Filled by Zy_ChangeStack() and for the debug callback. */
typedef struct ZyDebugInfo {
    int event;             /* ZY_EVENT_ bit, 0 for Zy_ChangeStack() */
    int interval;          /* as given to Zy_AddCallback() */
    int level;             /* stack levels above the innermost one */
    int line;              /* of the current statement, 0 if none */
    int functionFirstLine; /* of the function's body, 0 outside a function */
    int functionLastLine;
    const char *file;      /* of the current statement */
    const char *function;  /* NULL outside a function */
    const char *className; /* of a member function, else NULL */
    int isConstructor;
    int isDestructor;
} ZyDebugInfo;

/* Filled by Zy_UserDefinedInfo(). */
typedef struct ZyUserInfo {
    int type;         /* ZY_TYPE_STRUCT, ZY_TYPE_CLASS, ZY_TYPE_UNION or 0 */
    const char *name; /* the tag */
    int size;
    int memberCount;
} ZyUserInfo;

/* Opaque: a value, a struct type, a list of arguments for a call, the next argument of a host
 * function. */
typedef struct ZyValueRecord *ZyValueHandle;
typedef struct ZyTagRecord *ZyTagHandle;
typedef struct ZyVarArgRecord *ZyVarArgs;
typedef struct ZyArgRecord *ZyVaList;

#define ZY_MAX_RANK 7
#define ZY_UNKNOWN 2147483647 /* an extent or count that only the call decides */

/* Filled by Zy_UserDefinedMemInfoByName() and Zy_UserDefinedMemInfoByIndex(). */
typedef struct ZyMemberInfo {
    int index;
    const char *name;
    int offset;
    int type; /* ZY_TYPE_ code */
    int isPublic;
    int isFunction;
    int isMemberFunction;
    int isConstructor;
    int isDestructor;
    int argCount;  /* member function: 1 if it takes `...` */
    int arrayType; /* ZY_ARRAY_ code */
    int arrayDim;
    int extents[ZY_MAX_RANK]; /* first dimension first; 0 for an unknown one */
    int bits[3];              /* bit-field: 1, width, offset */
    ZyTagHandle tag;          /* of a struct, class or union or a pointer to one, else NULL */
} ZyMemberInfo;

/* ---- Codes ------------------------------------------------------------------------------------
 * Types. P_ is a pointer, PP_ a pointer to a pointer, PPP_ a triple pointer. */

enum {
    ZY_TYPE_CHAR = 10, /* char */
    ZY_TYPE_UCHAR = 11, /* unsigned char */
    ZY_TYPE_SHORT = 12, /* short */
    ZY_TYPE_USHORT = 13, /* unsigned short */
    ZY_TYPE_INT = 14, /* int */
    ZY_TYPE_UINT = 15, /* unsigned int */
    ZY_TYPE_LLONG = 16, /* long long */
    ZY_TYPE_ULLONG = 17, /* unsigned long long */
    ZY_TYPE_FLOAT = 18, /* float */
    ZY_TYPE_DOUBLE = 19, /* double */
    ZY_TYPE_LDOUBLE = 20, /* reserved: no value of it exists */
    ZY_TYPE_COMPLEX = 21, /* complex: two float */
    ZY_TYPE_DCOMPLEX = 22, /* double complex: two double */
    ZY_TYPE_STRING = 23, /* string_t */
    ZY_TYPE_FILE = 24, /* FILE */
    ZY_TYPE_VOID = 25, /* void */
    ZY_TYPE_FUNCTION = 26, /* function */
    ZY_TYPE_STRUCT = 27, /* struct */
    ZY_TYPE_CLASS = 28, /* class */
    ZY_TYPE_UNION = 29, /* union */
    ZY_TYPE_ENUM = 30, /* enum */
    ZY_TYPE_CARRAY = 80, /* C array */
    ZY_TYPE_ARRAY = 83, /* computational array */
    ZY_TYPE_NULLPTR = 100, /* NULL pointer */
    ZY_TYPE_P_VOID = 101, /* void * */
    ZY_TYPE_P_CHAR = 102, /* char * */
    ZY_TYPE_P_UCHAR = 103, /* unsigned char * */
    ZY_TYPE_P_SHORT = 104, /* short * */
    ZY_TYPE_P_USHORT = 105, /* unsigned short * */
    ZY_TYPE_P_INT = 106, /* int * */
    ZY_TYPE_P_UINT = 107, /* unsigned int * */
    ZY_TYPE_P_LLONG = 108, /* long long * */
    ZY_TYPE_P_ULLONG = 109, /* unsigned long long * */
    ZY_TYPE_P_FLOAT = 110, /* float * */
    ZY_TYPE_P_DOUBLE = 111, /* double * */
    ZY_TYPE_P_COMPLEX = 113, /* complex * */
    ZY_TYPE_P_DCOMPLEX = 114, /* double complex * */
    ZY_TYPE_P_STRING = 115, /* string_t * */
    ZY_TYPE_P_FUNCTION = 116, /* pointer to function */
    ZY_TYPE_P_FILE = 117, /* FILE * */
    ZY_TYPE_P_STRUCT = 118, /* struct * */
    ZY_TYPE_P_CLASS = 119, /* class * */
    ZY_TYPE_P_UNION = 120, /* union * */
    ZY_TYPE_P_ENUM = 121, /* enum * */
    ZY_TYPE_PP_VOID = 200, /* void ** */
    ZY_TYPE_PP_CHAR = 201, /* char ** */
    ZY_TYPE_PP_UCHAR = 202, /* unsigned char ** */
    ZY_TYPE_PP_SHORT = 203, /* short ** */
    ZY_TYPE_PP_USHORT = 204, /* unsigned short ** */
    ZY_TYPE_PP_INT = 205, /* int ** */
    ZY_TYPE_PP_UINT = 206, /* unsigned int ** */
    ZY_TYPE_PP_LLONG = 207, /* long long ** */
    ZY_TYPE_PP_ULLONG = 208, /* unsigned long long ** */
    ZY_TYPE_PP_FLOAT = 209, /* float ** */
    ZY_TYPE_PP_DOUBLE = 210, /* double ** */
    ZY_TYPE_PP_COMPLEX = 212, /* complex ** */
    ZY_TYPE_PP_DCOMPLEX = 213, /* double complex ** */
    ZY_TYPE_PP_STRING = 214, /* string_t ** */
    ZY_TYPE_PP_FILE = 215, /* FILE ** */
    ZY_TYPE_PP_STRUCT = 216, /* struct ** */
    ZY_TYPE_PP_CLASS = 217, /* class ** */
    ZY_TYPE_PP_UNION = 218, /* union ** */
    ZY_TYPE_PP_ENUM = 219, /* enum ** */
    ZY_TYPE_PPP_VOID = 300, /* void *** */
    ZY_TYPE_PPP_CHAR = 301, /* char *** */
    ZY_TYPE_PPP_UCHAR = 302, /* unsigned char *** */
    ZY_TYPE_PPP_SHORT = 303, /* short *** */
    ZY_TYPE_PPP_USHORT = 304, /* unsigned short *** */
    ZY_TYPE_PPP_INT = 305, /* int *** */
    ZY_TYPE_PPP_UINT = 306, /* unsigned int *** */
    ZY_TYPE_PPP_LLONG = 307, /* long long *** */
    ZY_TYPE_PPP_ULLONG = 308, /* unsigned long long *** */
    ZY_TYPE_PPP_FLOAT = 309, /* float *** */
    ZY_TYPE_PPP_DOUBLE = 310, /* double *** */
    ZY_TYPE_PPP_COMPLEX = 312, /* complex *** */
    ZY_TYPE_PPP_DCOMPLEX = 313, /* double complex *** */
    ZY_TYPE_PPP_STRING = 314, /* string_t *** */
    ZY_TYPE_PPP_FILE = 315, /* FILE *** */
    ZY_TYPE_PPP_UNION = 316, /* union *** */
    ZY_TYPE_PPP_CLASS = 317, /* class *** */
    ZY_TYPE_PPP_STRUCT = 318 /* struct *** */
};

/* Arrays. */
enum {
    ZY_ARRAY_NONE = 0,
    ZY_ARRAY_C = 80,             /* C array of known extents */
    ZY_ARRAY_C_OPEN = 82,        /* C array whose extents the parse doesn't fix */
    ZY_ARRAY_COMPUTATIONAL = 83, /* computational array of known extents */
    ZY_ARRAY_POINTER = 84,       /* pointer to computational array */
    ZY_ARRAY_OPEN = 85           /* any computational form whose extents the parse doesn't fix */
};

/* Debug events. */
enum {
    ZY_EVENT_FUNCTION_ENTER = 1,
    ZY_EVENT_FUNCTION_LEAVE = 2,
    ZY_EVENT_BLOCK_ENTER = 4,
    ZY_EVENT_BLOCK_LEAVE = 8,
    ZY_EVENT_STATEMENT = 16,  /* before a statement that has a line of its own */
    ZY_EVENT_STEP = 32,       /* between steps of the expression evaluator */
    ZY_EVENT_ABORT = 64,      /* Zy_Abort() ends the run */
    ZY_EVENT_IN_NATIVE = 256  /* no event: keeps events on during host functions */
};

/* The debug callback. It runs on the instance's thread and may call all services but those that
 * run a script. info is valid during the call. */
typedef int (*ZyCallback)(void *interp, ZyDebugInfo *info, void *userData);

/* A function that scripts call; cast your own function to it. See "Host functions". */
typedef void (*ZyHostFunction)(void);

/* ---- Creating an instance -------------------------------------------------------------------- */

/* Creates an instance: takes the lowest free copy, loads it, starts the interpreter in it and reads
 * the start-up file. *interp gets the handle. With all copies in use it waits for a Zy_End() on
 * another thread, with a warning the first time. option NULL: the home comes from the machine's
 * store. Instances are created one after the other, on the whole machine.
 * 0, or -1 after a message. If *interp isn't NULL then, end the instance with Zy_End() all the
 * same.
 * Runs script code (the start-up file). */
ZY_API int Zy_Initialize(void **interp, ZyOptions *option) __asm__("Zy_Initialize_kernel");

/* The same with waiting and set-up of its own. A process uses one of the two throughout. */
ZY_API int Zy_Initialize2(void **interp, ZyOptions *option);

/* ---- Scripts ---------------------------------------------------------------------------------
 * A script is parsed whole, then its file-level statements run, then its main(). Paths and
 * texts are read during the call only, but for argv, whose strings must outlive the run.
 * The running services share one state: after Zy_RunScript() or Zy_ExecScript() a further
 * run is refused with a message and -1 until Zy_Reset(); the M forms need no Zy_Reset().
 * Run results: 0 normal end, 1 ended by Zy_Abort(), -1 any failure: no such file, a parse
 * error, a run-time error, a main() or exit() with another status than 0. */

/* Runs the script argv[0]; the words behind it are its arguments, and NULL ends them.
 * Functions given to atexit() run at Zy_Reset() or Zy_End(). Runs script code.
 * Failure value: -1. */
ZY_API int Zy_RunScript(void *interp, char **argv);

/* Zy_RunScript() for any number of scripts, one after the other; functions given to atexit()
 * run at the end of each run. Runs script code.
 * Failure value: -1. */
ZY_API int Zy_RunScriptM(void *interp, char **argv);

/* Parses the script argv[0], for Zy_ExecScript() or for calls of its functions. Global
 * variables get their initial values now. 0, or -1 for a parse error or a file that can't
 * be opened (the latter without a message).
 * Failure value: -1. */
ZY_API int Zy_ParseScript(void *interp, char **argv);

/* Zy_ParseScript() without warnings, and without constructing global objects.
 * Failure value: -1. */
ZY_API int Zy_ParseScriptNoInit(void *interp, char **argv);

/* Runs what Zy_ParseScript() has parsed. command is the script's name, and behind a blank
 * its arguments. Runs script code.
 * Failure value: -1. */
ZY_API int Zy_ExecScript(void *interp, char *command);

/* Zy_ExecScript() for any number of runs. Runs script code.
 * Failure value: -1. */
ZY_API int Zy_ExecScriptM(void *interp, char *command);

/* Parses more text into the program, at file level, and runs nothing. 0 or -1.
 * Failure value: -1. */
ZY_API int Zy_AppendParseScript(void *interp, char *code);

/* Zy_AppendParseScript() with the text of a file.
 * Failure value: -1. */
ZY_API int Zy_AppendParseScriptFile(void *interp, char *path);

/* Parses more text into the program and runs the statements it added; needs no earlier run
 * and no Zy_Reset(). Run results. Runs script code.
 * Failure value: -1. */
ZY_API int Zy_AppendRunScript(void *interp, char *code);

/* Zy_AppendRunScript() with the text of a file. Runs script code.
 * Failure value: -1. */
ZY_API int Zy_AppendRunScriptFile(void *interp, char *path);

/* Runs the functions given to atexit() and allows another run. The program stays until the
 * next run replaces it. 0. Runs script code.
 * Failure value: -1. */
ZY_API int Zy_Reset(void *interp);

/* Asks the running script to end before its next statement. The one service that another
 * thread may call while a script runs. 0, also with no script running: then it does nothing.
 * Failure value: -1. */
ZY_API int Zy_Abort(void *interp);

/* ---- Standard streams and the instance itself ------------------------------------------------
 * fd is 0 for standard input, 1 for standard output, 2 for standard error of the process. */

/* Reopens a standard stream on a file, with a mode as for fopen(). The new descriptor, to be
 * given to Zy_Close() and Zy_Flush(), or -1; a bad fd prints a message.
 * Failure value: -1. */
ZY_API int Zy_Reopen(void *interp, char *path, char *mode, int fd);

/* Zy_Reopen() with wide texts.
 * Failure value: -1. */
ZY_API int Zy_WReopen(void *interp, wchar_t *path, wchar_t *mode, int fd);

/* Closes a stream by the descriptor that Zy_Reopen() gave. The result of fclose(), or -1
 * with a message for a descriptor that isn't open that way.
 * Failure value: -1. */
ZY_API int Zy_Close(void *interp, int fd);

/* Flushes a stream by the descriptor that Zy_Reopen() gave; results as of Zy_Close().
 * Failure value: -1. */
ZY_API int Zy_Flush(void *interp, int fd);

/* setbuf() on a standard stream. buffer has BUFSIZ bytes and stays in use until the stream is
 * closed; NULL turns buffering off. 0, or -1 with a message for a bad fd.
 * Failure value: -1. */
ZY_API int Zy_Setbuf(void *interp, int fd, char *buffer);

/* Fills *info; its strings are the library's own. 0.
 * Failure value: -1. */
ZY_API int Zy_Version(void *interp, ZyVersionInfo *info);

/* The home folder in use, valid until Zy_End(). NULL on failure.
 * Failure value: NULL. */
ZY_API char *Zy_Home(void *interp);

/* What the script's headers make it: 0 a console program, 1 a windows program, 2 one of the
 * console library.
 * Failure value: -1. */
ZY_API int Zy_AppType(void *interp);

/* ---- Expressions and variables ---------------------------------------------------------------
 * Texts are parsed as one source line, so they are shorter than 5119 bytes. The services may
 * be called between runs and from a host function, but not during a parse. Types are the
 * ZY_TYPE_ codes. */

/* 1: global class objects get their default constructor call when they are declared. 0.
 * Failure value: -1. */
ZY_API int Zy_InitGlobalVar(void *interp, int on);

/* Adds global declarations, which stay until the instance ends. 0 or -1.
 * Failure value: -1. */
ZY_API int Zy_DeclareVar(void *interp, char *declaration);

/* Makes a name declared by Zy_DeclareVar() into a type name. 0 or -1.
 * Failure value: -1. */
ZY_API int Zy_DeclareTypedef(void *interp, const char *name);

/* Evaluates expr and stores its value in *result as the given type: a char for ZY_TYPE_CHAR
 * and so on, a char * (to be freed by the caller) for ZY_TYPE_STRING, all elements for an
 * array, whose element type `type` must name. result NULL: only evaluates. 0 or -1.
 * Runs script code.
 * Failure value: -1. */
ZY_API int Zy_ExprCalc(void *interp, const char *expr, int type, void *result);

/* Evaluates expr and drops its value. 0, 1 when Zy_Abort() ended it, -1. Runs script code.
 * Failure value: -1. */
ZY_API int Zy_ExprEval(void *interp, const char *expr);

/* Only parses: 0 if expr is one well-formed expression, else -1.
 * Failure value: -1. */
ZY_API int Zy_ExprParse(void *interp, const char *expr);

/* Evaluates expr and gives its value, to be released with Zy_DeleteExprValue(). *address gets
 * the address of the data, valid until then. NULL when Zy_Abort() ended it. Runs script code.
 * Failure value: NULL. */
ZY_API ZyValueHandle Zy_ExprValue(void *interp, const char *expr, void **address);

/* Releases a value handle. -1 after a release, 0 for NULL.
 * Failure value: -1. */
ZY_API int Zy_DeleteExprValue(void *interp, ZyValueHandle value);

/* Assigns to a variable. Behind type stands the value: an int, long long, double or pointer by
 * its type; for struct, class and union a tag name and the address of the object; for arrays
 * the element type, the data, the number of dimensions and each extent. 0 or -1.
 * Failure value: -1. */
ZY_API int Zy_SetVar(void *interp, const char *name, int type, ...);

/* ---- Calls of script functions ---------------------------------------------------------------
 * result may be NULL, else it points to room for the function's return value: 1 byte for char,
 * 4 for float, 8 for double, a char * that the caller frees for string, all elements for an
 * array. The result of a call is 0, 1 when Zy_Abort() ended it (*result is then zero), -1. */

/* Calls a function with the arguments behind result, as its prototype says: float as double,
 * double complex and struct by address, an array by address and, where the prototype leaves
 * its shape open, the number of dimensions and each extent. An unknown function is looked
 * for in function files. Runs script code.
 * Failure value: -1. */
ZY_API int Zy_CallFuncByName(void *interp, const char *name, void *result, ...);

/* Zy_CallFuncByName() with a va_list. Runs script code.
 * Failure value: -1. */
ZY_API int Zy_CallFuncByNamev(void *interp, const char *name, void *result, va_list arguments);

/* Zy_CallFuncByName() with the function's handle, as Zy_GlobalSymbolAddrByName() gives it.
 * Runs script code.
 * Failure value: -1. */
ZY_API int Zy_CallFuncByAddr(void *interp, void *function, void *result, ...);

/* Zy_CallFuncByAddr() with a va_list. Runs script code.
 * Failure value: -1. */
ZY_API int Zy_CallFuncByAddrv(void *interp, void *function, void *result, va_list arguments);

/* Calls a function with an argument list, which stays the caller's. The list is compared with
 * the prototype first. Runs script code.
 * Failure value: -1. */
ZY_API int Zy_CallFuncByNameVar(void *interp, const char *name, void *result, ZyVarArgs arguments);

/* An empty argument list, which is NULL.
 * Failure value: NULL. */
ZY_API ZyVarArgs Zy_VarArgsCreate(void *interp);

/* Appends an argument, given as for Zy_SetVar(); structs are copied, arrays are not. 0 or -1.
 * Failure value: -1. */
ZY_API int Zy_VarArgsAddArg(void *interp, ZyVarArgs *arguments, int type, ...);

/* Appends an expression, to be evaluated at the call. 0 or -1; then 0 stands in its place.
 * Failure value: -1. */
ZY_API int Zy_VarArgsAddArgExpr(void *interp, ZyVarArgs *arguments, const char *expr);

/* Releases an argument list. */
ZY_API void Zy_VarArgsDelete(void *interp, ZyVarArgs arguments);

/* ---- Symbols ---------------------------------------------------------------------------------
 * Listed are variables, functions and tags, not typedef names and built-in constants. The
 * Global services see file level, the others what the statement being run sees. Indices
 * count from 0. Strings and addresses are the instance's own and live as long as the program.
 * A name not yet known is looked for in function files. */

/* The address of a variable's data, or the handle of a function; NULL for all else.
 * Failure value: NULL. */
ZY_API void *Zy_GlobalSymbolAddrByName(void *interp, const char *name);

/* The same among the visible symbols.
 * Failure value: NULL. */
ZY_API void *Zy_SymbolAddrByName(void *interp, const char *name);

/* The same by index.
 * Failure value: NULL. */
ZY_API void *Zy_GlobalSymbolAddrByIndex(void *interp, int index);

/* The same by index among the visible symbols.
 * Failure value: NULL. */
ZY_API void *Zy_SymbolAddrByIndex(void *interp, int index);

/* The name at an index, "main" for the script's main function. NULL out of range.
 * Failure value: NULL. */
ZY_API char *Zy_GlobalSymbolNameByIndex(void *interp, int index);

/* The same among the visible symbols.
 * Failure value: NULL. */
ZY_API char *Zy_SymbolNameByIndex(void *interp, int index);

/* The index of a name, -1 when absent.
 * Failure value: -1. */
ZY_API int Zy_GlobalSymbolIndexByName(void *interp, const char *name);

/* The same among the visible symbols.
 * Failure value: -1. */
ZY_API int Zy_SymbolIndexByName(void *interp, const char *name);

/* The number of listed symbols.
 * Failure value: 0. */
ZY_API int Zy_GlobalSymbolTotalNum(void *interp);

/* The same among the visible symbols.
 * Failure value: 0. */
ZY_API int Zy_SymbolTotalNum(void *interp);

/* ---- The call stack --------------------------------------------------------------------------
 * For debuggers, from a callback or a host function. Level 0 is the innermost call. */

/* *current gets the levels that the view has been moved by, *total the number of callers. 0.
 * Failure value: -1. */
ZY_API int Zy_StackLevel(void *interp, int *current, int *total);

/* The function at a level. *kind: 0 file level (the result is the script's name), 1 a
 * function, 2 a member function, with *className its class. NULL: no such level.
 * Failure value: NULL. */
ZY_API char *Zy_StackName(void *interp, int level, int *kind, char **className);

/* Moves the view that name look-up has to a caller, or back with level 0, and fills *info.
 * 2 if there are fewer levels or level is negative, else 0.
 * Failure value: -1. */
ZY_API int Zy_ChangeStack(void *interp, int level, ZyDebugInfo *info);

/* ---- Types of names and expressions ----------------------------------------------------------
 * name is a symbol or, where a type is asked, any expression, which is parsed and not run.
 * Results are ZY_TYPE_ and ZY_ARRAY_ codes, bytes and counts. */

/* The type; of an array the type of its elements. 0 if nothing answers.
 * Failure value: 0. */
ZY_API int Zy_DataType(void *interp, const char *name);

/* The array code, 0 for no array.
 * Failure value: 0. */
ZY_API int Zy_ArrayType(void *interp, const char *name);

/* The number of dimensions, 0 for none.
 * Failure value: 0. */
ZY_API int Zy_ArrayDim(void *interp, const char *name);

/* The number of elements; 1 for no shape. Evaluates an expression.
 * Failure value: 0. */
ZY_API int Zy_ArrayNum(void *interp, const char *name);

/* The size in bytes, of an array that of all elements. 0 if nothing answers.
 * Failure value: 0. */
ZY_API int Zy_DataSize(void *interp, const char *name);

/* 0 no function, 1 a function with a body, 2 a prototype, 3 a pointer to function, 4 a member
 * function, 5 a constructor, 6 a destructor.
 * Failure value: 0. */
ZY_API int Zy_FuncType(void *interp, const char *name);

/* 1 if the function takes `...`.
 * Failure value: 0. */
ZY_API int Zy_IsFuncVarArg(void *interp, const char *name);

/* 0 no variable, 1 one of file level, 2 any other. `::name` asks for file level alone.
 * Failure value: 0. */
ZY_API int Zy_VarType(void *interp, const char *name);

/* The extent of a dimension, counted from 0; 0 out of range or unknown.
 * Failure value: 0. */
ZY_API int Zy_ArrayExtent(void *interp, const char *name, int dimension);

/* The number of parameters, -1 for no function.
 * Failure value: -1. */
ZY_API int Zy_FuncArgNum(void *interp, const char *name);

/* ---- Parameters of a function ----------------------------------------------------------------
 * name is a function, argument a parameter's place from 0. Past the last: the failure value. */

/* The parameter's type; of an array the type of its elements.
 * Failure value: 0. */
ZY_API int Zy_FuncArgDataType(void *interp, const char *name, int argument);

/* Its array code.
 * Failure value: 0. */
ZY_API int Zy_FuncArgArrayType(void *interp, const char *name, int argument);

/* Its number of dimensions; ZY_UNKNOWN if the call decides it.
 * Failure value: 0. */
ZY_API int Zy_FuncArgArrayDim(void *interp, const char *name, int argument);

/* Its number of elements; ZY_UNKNOWN if the call decides it.
 * Failure value: 0. */
ZY_API int Zy_FuncArgArrayNum(void *interp, const char *name, int argument);

/* 1 if it is a function or a pointer to one.
 * Failure value: 0. */
ZY_API int Zy_FuncArgIsFunc(void *interp, const char *name, int argument);

/* 1 if that function takes `...`.
 * Failure value: 0. */
ZY_API int Zy_FuncArgIsFuncVarArg(void *interp, const char *name, int argument);

/* The extent of a dimension; ZY_UNKNOWN if the call decides it.
 * Failure value: 0. */
ZY_API int Zy_FuncArgArrayExtent(void *interp, const char *name, int argument, int dimension);

/* The number of parameters of a function parameter, -1 if it is none.
 * Failure value: -1. */
ZY_API int Zy_FuncArgFuncArgNum(void *interp, const char *name, int argument);

/* The size of a struct, class or union parameter, else -1.
 * Failure value: -1. */
ZY_API int Zy_FuncArgUserDefinedSize(void *interp, const char *name, int argument);

/* The tag of a struct, class or union parameter, else NULL.
 * Failure value: NULL. */
ZY_API char *Zy_FuncArgUserDefinedName(void *interp, const char *name, int argument);

/* ---- Struct, class and union -----------------------------------------------------------------
 * A tag handle is valid as long as the program. */

/* The tag of a variable, of what a pointer points to, or of a type expression.
 * Failure value: NULL. */
ZY_API ZyTagHandle Zy_UserDefinedTag(void *interp, const char *name);

/* Fills *info. 0 or -1.
 * Failure value: -1. */
ZY_API int Zy_UserDefinedInfo(void *interp, ZyTagHandle tag, ZyUserInfo *info);

/* Fills *info for a member by name. 0 or -1.
 * Failure value: -1. */
ZY_API int Zy_UserDefinedMemInfoByName(void *interp, ZyTagHandle tag, const char *member,
           ZyMemberInfo *info);

/* Fills *info for a listed member by its place. 0 or -1.
 * Failure value: -1. */
ZY_API int Zy_UserDefinedMemInfoByIndex(void *interp, ZyTagHandle tag, int index,
           ZyMemberInfo *info);

/* The tag of a variable's type, NULL if it has none.
 * Failure value: NULL. */
ZY_API char *Zy_UserDefinedName(void *interp, const char *name);

/* The size of a variable's struct, class or union, -1 if it is none.
 * Failure value: -1. */
ZY_API int Zy_UserDefinedSize(void *interp, const char *name);

/* ---- Host functions --------------------------------------------------------------------------
 * A host function has one parameter, `void *varg`, and takes its arguments from it:
 *
 *     int add(void *varg) {
 *         void *interp;
 *         ZyVaList ap;
 *         int a, b;
 *         Zy_VaStart(interp, ap, varg);
 *         a = Zy_VaArg(interp, ap, int);
 *         b = Zy_VaArg(interp, ap, int);
 *         Zy_VaEnd(interp, ap);
 *         return a + b;
 *     }
 *
 * It runs on the instance's thread in the middle of a script, and may use the services for
 * expressions, calls and symbols, but not run another script. */

/* Declares a global function of scripts that calls `function`. 0 or -1.
 * Failure value: -1. */
ZY_API int Zy_DeclareFunc(void *interp, char *prototype, ZyHostFunction function);

/* Stores a pointer for the host's own use, one per instance. 0.
 * Failure value: -1. */
ZY_API int Zy_SetGlobalUserData(void *interp, void *data);

/* The pointer stored last, NULL before.
 * Failure value: NULL. */
ZY_API void *Zy_GetGlobalUserData(void *interp);

/* Installs the debug callback, in place of an earlier one. mask holds ZY_EVENT_ bits;
 * interval counts the evaluation steps between two ZY_EVENT_STEP. 0.
 * Failure value: -1. */
ZY_API int Zy_AddCallback(void *interp, int mask, ZyCallback function, void *userData,
           int interval);

/* In a native constructor: the object being made lives at `object` and has that size. 0 or -1.
 * Failure value: -1. */
ZY_API int Zy_CppChangeThisPointer(void *interp, void *object, size_t size);

/* In a native destructor: 1 if the object is an element of an array.
 * Failure value: 0. */
ZY_API int Zy_CppIsArrayElement(void *interp);

/* ---- Arguments of a host function ------------------------------------------------------------
 * ap stands at the next argument; NULL means that none is left. */

/* The address of the next argument's data; moves on. NULL with a message if none is left.
 * Failure value: NULL. */
ZY_API void *__builtin_Zy_VaArg_kernel(void *interp, ZyVaList *ap);

/* The number of arguments left.
 * Failure value: 0. */
ZY_API int Zy_VaCount(void *interp, ZyVaList ap);

/* The argument's type; of arrays and functions the element or return type.
 * Failure value: 0. */
ZY_API int Zy_VaDataType(void *interp, ZyVaList ap);

/* Its array code.
 * Failure value: 0. */
ZY_API int Zy_VaArrayType(void *interp, ZyVaList ap);

/* 1 for a function.
 * Failure value: 0. */
ZY_API int Zy_VaIsFunc(void *interp, ZyVaList ap);

/* 1 if that function takes `...`.
 * Failure value: 0. */
ZY_API int Zy_VaIsFuncVarArg(void *interp, ZyVaList ap);

/* The number of dimensions, 0 for none.
 * Failure value: -1. */
ZY_API int Zy_VaArrayDim(void *interp, ZyVaList ap);

/* The number of elements, 0 for no array.
 * Failure value: -1. */
ZY_API int Zy_VaArrayNum(void *interp, ZyVaList ap);

/* The number of parameters of a function, -1 for none.
 * Failure value: -1. */
ZY_API int Zy_VaFuncArgNum(void *interp, ZyVaList ap);

/* The size of a struct, class or union, else -1.
 * Failure value: -1. */
ZY_API int Zy_VaUserDefinedSize(void *interp, ZyVaList ap);

/* The extent of a dimension, counted from 0.
 * Failure value: 0. */
ZY_API int Zy_VaArrayExtent(void *interp, ZyVaList ap, int dimension);

/* The type of a parameter of a function.
 * Failure value: 0. */
ZY_API int Zy_VaFuncArgDataType(void *interp, ZyVaList ap, int argument);

/* The address of a struct, class or union, else NULL.
 * Failure value: NULL. */
ZY_API void *Zy_VaUserDefinedAddr(void *interp, ZyVaList ap);

/* Its tag, else NULL.
 * Failure value: NULL. */
ZY_API char *Zy_VaUserDefinedName(void *interp, ZyVaList ap);

/* Ends the reading; does nothing else. */
ZY_API void Zy_VaEnd(void *interp, ZyVaList ap);

/* The remaining arguments as a va_list that a v function such as vfprintf() takes. *memory
 * owns it, until Zy_VaVarArgsDelete().
 * Failure value: NULL. */
ZY_API void *Zy_VaVarArgsCreate(void *interp, ZyVaList ap, void **memory);

/* Releases what Zy_VaVarArgsCreate() made. */
ZY_API void Zy_VaVarArgsDelete(void *interp, void *memory);

/* ---- Signals ---------------------------------------------------------------------------------
 * For native functions that provide the signal interfaces to scripts. */

/* Gives the addresses of the instance's signal cells, by pairs: the number of the signal being
 * handled, and a table of 64 stack frames by signal number. The result is the caller of the
 * current frame.
 * Failure value: NULL. */
ZY_API void *ZyCurtdbForSignalptr(void *interp, int **longjumSIG, void ***curtdbForSignal,
           int **longjumSSIG, void ***curtdbForSSignal, int **longjumSIGset,
           void ***curtdbForSignalset, int **longjumSIGaction, void ***curtdbForSignalaction);

/* ---- End ------------------------------------------------------------------------------------- */

/* Ends an instance: runs the functions given to atexit(), releases all it has, unloads its
 * copy and frees the place for another. The handle is invalid afterwards. The end of the last
 * instance takes back what instances have changed in the environment. 0; 1 if the copy could
 * not be unloaded. Runs script code.
 * Failure value: -1. */
ZY_API int Zy_End(void *interp);

/* ---- Reading the arguments of a host function ------------------------------------------------ */

/* Gives the first argument of varg and the instance's handle (interp may be NULL). */
ZY_API ZyVaList __builtin_Zy_VaStart(void **interp, void *varg);

#define Zy_VaStart(interp, ap, varg) ((ap) = __builtin_Zy_VaStart(&(interp), (varg)))
#define Zy_VaArg(interp, ap, type) (*(type *)__builtin_Zy_VaArg_kernel((interp), &(ap)))

/* ---- Data and functions for a stand-alone front end ---------------------------------------------
 * A program that is itself the interpreter uses these instead of the services above. */

#define ZY_FILENAME_SIZE 5120

/* The storage of a variable, opaque. */
#ifdef __cplusplus
}
namespace zy {
struct VarCell;
}
typedef zy::VarCell ZyCell;
extern "C" {
#else
typedef struct ZyCell ZyCell;
#endif

typedef struct ZyLang ZyLang;
ZY_API extern ZyLang *e_lang;                         /* the main state record */
ZY_API extern void *e_interp;                         /* this copy's own handle */
ZY_API extern char *e_cmdarg;                         /* text of the command's arguments */
ZY_API extern char e_filenamebuf[ZY_FILENAME_SIZE];   /* path of the script being run */
ZY_API extern const char *const Zy_edition;
ZY_API extern const char *const Zy_version;

/* Signals: the number being handled, and the stack frame in force when a handler was set, for each
 * of the interfaces signal, ssignal, sigset and sigaction. */
#define ZY_SIGNAL_COUNT 64
ZY_API extern int ZyLongjumSIG, ZyLongjumSSIG, ZyLongjumSIGset, ZyLongjumSIGaction;
ZY_API extern void *ZyCurtdbForSignal[ZY_SIGNAL_COUNT], *ZyCurtdbForSSignal[ZY_SIGNAL_COUNT],
    *ZyCurtdbForSignalset[ZY_SIGNAL_COUNT], *ZyCurtdbForSignalaction[ZY_SIGNAL_COUNT];

ZY_API void initConstSysVars(void); /* allocates e_lang; then fill its flags */
ZY_API int initExecution(void);     /* makes the instance ready to run; 0, -1 after a message */
ZY_API void nullPrompt(void);       /* the prompt follows no expression: there is no console */
ZY_API void freePrompt(void);       /* releases the prompt's expression */
ZY_API int console(void);           /* runs the script named in e_filenamebuf; its exit status */
ZY_API void consoleMessage(void);   /* prints which version this is */
ZY_API void executezylogout(void);  /* runs the user's logout file, if there is one */
ZY_API void copyArgcArgv(int argc, char **argv); /* script arguments; not copied */

/* Splits a command text at blanks, but not within double quotes, into a record of texts: first,
 * unless it is NULL, then the words, then NULL. The first word loses its quotes. Released by
 * killEntry(). */
ZY_API ZyCell *strToArgcArgv(const char *text, const char *first);
ZY_API void killEntry(ZyCell *cell); /* releases the storage of a variable */
ZY_API void cleanMemory(void);      /* releases all that the instance has */
ZY_API void cleanup(void);          /* ends recordings; call it last */
ZY_API void segmentationBusHandler(int signal);  /* prints where the script stood, then exits */

#ifdef __cplusplus
}
#endif

#endif
