// The types of the arguments of built-in functions: what may stand where. Most functions have a row
// of types; the others say in their own words what they need.

#include <cstring>

#include "decl/structInfo.h"
#include "expr/guards.h"
#include "expr/nodeClasses.h"
#include "expr/parserParts.h"
#include "expr/typeQueries.h"
#include "instance/report.h"

namespace zy {

namespace {

// ---- Rows of types ------------------------------------------------------------------------------

// s: a text, i: an integer, d: a number, f: a stream, p: an address, ".": anything.
struct TypeRow {
    int code;
    const char *types;
};
constexpr TypeRow typeRows[] = {
    {OP_ISALNUM, "i"},       {OP_ISALPHA, "i"},    {OP_ISCNTRL, "i"},     {OP_ISDIGIT, "i"},
    {OP_ISGRAPH, "i"},       {OP_ISLOWER, "i"},    {OP_ISPRINT, "i"},     {OP_ISPUNCT, "i"},
    {OP_ISSPACE, "i"},       {OP_ISUPPER, "i"},    {OP_ISXDIGIT, "i"},    {OP_ISASCII, "i"},
    {OP_TOASCII, "i"},       {OP_TOLOWER, "i"},    {OP_TOUPPER, "i"},     {OP_ISINTEGER, "s"},
    {OP_ISHEX, "s"},         {OP_ISNUM, "s"},      {OP_ISENV, "s"},       {OP_ISKEY, "s"},
    {OP_STRCMP, "ss"},       {OP_STRCOLL, "ss"},   {OP_ACCESS, "si"},     {OP_OPEN, "si"},
    {OP_FEOF, "f"},          {OP_FERROR, "f"},     {OP_STRTOL, "spi"},    {OP_FCLOSE, "f"},
    {OP_PCLOSE, "f"},        {OP_WAIT, "p"},       {OP_FFLUSH, "f"},      {OP_FSEEK, "fii"},
    {OP_FGETPOS, "fp"},      {OP_FSETPOS, "fp"},   {OP_SYSTEM, "s"},      {OP_UMASK, "i"},
    {OP_CLOSE, "i"},         {OP_FPUTC, "if"},     {OP_PUTCHAR, "i"},     {OP_FPUTS, "sf"},
    {OP_PUTS, "s"},          {OP_STRPARSE, "s"},   {OP_FGETC, "f"},       {OP_FILENO, "f"},
    {OP_UNGETC, "if"},       {OP_READ, "ipi"},     {OP_WRITE, "ipi"},     {OP_GETPRIORITY, "ii"},
    {OP_SETPRIORITY, "iii"}, {OP_LISTEN, "ii"},    {OP_SHUTDOWN, "ii"},   {OP_DUP2, "ii"},
    {OP_LSEEK, "iii"},       {OP_FCNTL, "ii."},    {OP_LOCKF, "iii"},     {OP_IOCTL, "ii."},
    {OP_PIPE, "p"},          {OP_EXECV, "sp"},     {OP_EXECVP, "sp"},     {OP_PUTENV, "s"},
    {OP_REMENV, "s"},        {OP_REMOVE, "s"},     {OP_RENAME, "ss"},     {OP_UTIME, "s."},
    {OP_STAT, "s."},         {OP_LSTAT, "s."},     {OP_FSTAT, "i."},      {OP_SETVBUF, "f.ii"},
    {OP_GETRLIMIT, "i."},    {OP_SETRLIMIT, "i."}, {OP_ACCEPT, "i.p"},    {OP_GETPEERNAME, "i.p"},
    {OP_GETSOCKNAME, "i.p"}, {OP_BIND, "i.i"},     {OP_CONNECT, "i.i"},   {OP_SOCKET, "iii"},
    {OP_SOCKETPAIR, "iiip"}, {OP_RECV, "ipii"},    {OP_SEND, "ipii"},     {OP_VFPRINTF, "fs."},
    {OP_VPRINTF, "s."},      {OP_VSPRINTF, "ss."}, {OP_FTELL, "f"},       {OP_STRLEN, "s"},
    {OP_STRTOUL, "spi"},     {OP_FREAD, "piif"},   {OP_STRFTIME, "sis."}, {OP_STRXFRM, "ssi"},
    {OP_FWRITE, "piif"},     {OP_TIME, "p"},       {OP_STRTOD, "sp"},     {OP_STRCPY, "ss"},
    {OP_STRNCPY, "ssi"},     {OP_STRCAT, "ss"},    {OP_STRTOK, "ss"},     {OP_FGETS, "sif"},
    {OP_GETS, "s"},          {OP_TMPNAM, "s"},     {OP_MEMSET, ".ii"},    {OP_MEMCPY, "..i"},
    {OP_STRNCAT, "ssi"},     {OP_GETENV, "s"},     {OP_STRERROR, "i"},    {OP_SETLOCALE, "is"},
    {OP_CTIME, "p"},         {OP_FOPEN, "ss"},     {OP_POPEN, "ss"},      {OP_FREOPEN, "ssf"},
    {OP_GMTIME, "p"},        {OP_LOCALTIME, "p"},  {OP_MALLOC, "i"},      {OP_CALLOC, "ii"},
    {OP_DLOPEN, "si"},       {OP_DLSYM, "ps"},     {OP_REALLOC, "pi"},    {OP_STREVAL, "s"},
    {OP_CRYPT, "ss"},        {OP_SSCANF, "s"},     {OP_DLCLOSE, "p"},     {OP_VA_ARG, "p"},
    {OP_VA_COUNT, "p"},      {OP_VA_ARRAY, "pi"},  {OP_SETJMP, "p"},
};

bool isAddress(const ExprNode *tree) {
    return isPointer(treeType(tree)) || isArray(treeType(tree)) || treeType(tree) == DT_STRING;
}

void checkOne(ExprNode *tree, char type) {
    switch (type) {
        case 's': convertTree(tree, DT_STRING); break;
        case 'i': convertTree(tree, DT_INT); break;
        case 'd': convertTree(tree, DT_DOUBLE); break;
        case 'f': convertTree(tree, DT_P_FILE); break;
        case 'p':
            if (!isAddress(tree))
                convertTree(tree, DT_P_VOID);
            break;
        default: break;
    }
}

void checkByRow(int code, const ExprNode *list) {
    for (const TypeRow &row : typeRows) {
        if (row.code != code)
            continue;
        const char *type = row.types;
        for (const ExprNode *cell = list; cell && *type; cell = cell->next)
            checkOne(cell->item, *type++);
    }
}

// ---- Addresses of records -----------------------------------------------------------------------

// One argument must point to a class of that name, or of the other.
struct RecordRow {
    int code, position;
    const char *name, *other;
    const char *message;
};
constexpr RecordRow recordRows[] = {
    {OP_ASCTIME, 1, "tm", nullptr, "argument of asctime() is not pointer to struct tm "},
    {OP_MKTIME, 1, "tm", nullptr, "argument of mktime() is not pointer to struct tm "},
    {OP_STRFTIME, 4, "tm", nullptr, "4th argument of strftime() is not pointer to struct tm"},
    {OP_STAT, 2, "stat", nullptr, "2nd argument of stat() is not pointer to stat "},
    {OP_LSTAT, 2, "stat", nullptr, "2nd argument of lstat() is not pointer to stat "},
    {OP_FSTAT, 2, "stat", nullptr, "2nd argument of fstat() is not pointer to stat "},
    {OP_CONNECT, 2, "sockaddr", "sockaddr_in",
     "2nd argument for function connect() is not pointer to struct sockaddr/sockaddr_in"},
    {OP_BIND, 2, "sockaddr", "sockaddr_in",
     "2nd argument for function bind() is not pointer to struct sockaddr/sockaddr_in"},
    {OP_GETSOCKNAME, 2, "sockaddr", nullptr,
     "2nd argument for function getsockname() is not pointer to struct sockaddr"},
    {OP_GETPEERNAME, 2, "sockaddr", nullptr,
     "2nd argument for function getpeername() is not pointer to struct sockaddr"},
    {OP_ACCEPT, 2, "sockaddr", nullptr,
     "2nd argument for function accept() is not pointer to struct sockaddr"},
    {OP_SETRLIMIT, 2, "rlimit", nullptr,
     "2nd argument for function setrlimit() is not pointer to struct rlimit"},
    {OP_GETRLIMIT, 2, "rlimit", nullptr,
     "2nd argument for function getrlimit() is not pointer to struct rlimit"},
    {OP_UTIME, 2, "utimbuf", nullptr, "2nd argument of utime() is not pointer to struct utimbuf "},
};

bool pointsToRecord(const ExprNode *tree, const RecordRow &row) {
    DataType type = treeDataType(tree);
    if (type == DT_NULL)
        return true;
    // The results of these two are of a class that the script may not have declared.
    if (isOperator(tree) && (tree->op == OP_LOCALTIME || tree->op == OP_GMTIME))
        return strcmp(row.name, "tm") == 0;
    const StructInfo *info = structInfoOf(tree);
    if (type != DT_P_STRUCT || !info || !info->tag || !info->tag->name)
        return false;
    const char *name = plainTag(info->tag->name->text);
    return strcmp(name, row.name) == 0 || (row.other && strcmp(name, row.other) == 0);
}

const ExprNode *argumentAt(const ExprNode *list, int position) {
    while (list && --position > 0)
        list = list->next;
    return list ? list->item : nullptr;
}

void checkRecords(int code, const ExprNode *list) {
    for (const RecordRow &row : recordRows) {
        const ExprNode *tree = row.code == code ? argumentAt(list, row.position) : nullptr;
        if (tree && !pointsToRecord(tree, row))
            parseError("%s", row.message);
    }
}

// ---- Conversions --------------------------------------------------------------------------------

bool areNumbers(const ExprNode *list) {
    for (; list; list = list->next)
        if (!isScalarNumeric(treeType(list->item)))
            return false;
    return true;
}

const char *conversionWord(int code) {
    switch (code) {
        case OP_TO_CHAR: return "char";
        case OP_TO_SHORT: return "short";
        case OP_TO_INT: return "int";
        case OP_TO_UINT: return "unsigned";
        case OP_TO_FLOAT: return "float";
        default: return "double";
    }
}

void checkConversion(int code, const ExprNode *list) {
    if (!areNumbers(list))
        parseError("invalid argument for type constructor %s()", conversionWord(code));
}

void checkComplex(int, const ExprNode *list) {
    if (!areNumbers(list))
        parseError("invalid data type for constructor complex( , )");
}

void checkDual(int, const ExprNode *list) {
    if (!areNumbers(list))
        parseError("invalid data type for constructor dual( , )");
}

void checkString(int, const ExprNode *list) {
    DataType type = treeDataType(list->item);
    if (type >= 17 && type != DT_STRING && type != DT_P_CHAR)
        parseError("the argument of string(arg) must be a string");
}

// ---- Formatted input and output -----------------------------------------------------------------

bool isStream(const ExprNode *tree) {
    DataType type = treeType(tree);
    return type == DT_P_FILE || type == DT_NULL;
}

// A text, or an address of one level: of an array that of its first element.
bool isSinglePointer(const ExprNode *tree) {
    DataType type = treeType(tree);
    return isArray(type) || type == DT_STRING || (isPointer(type) && pointerDepth(type) <= 1);
}

void checkFprintf(int, const ExprNode *list) {
    if (!isStream(list->item))
        parseError("the first argument for fprintf() must be pointer to file");
}

void checkFscanf(int, const ExprNode *list) {
    if (!isStream(list->item))
        parseError("the first argument for fscanf() must be pointer to file");
    int position = 1;
    for (const ExprNode *cell = list->next; cell; cell = cell->next) {
        position++;
        if (position == 2 && !isSinglePointer(cell->item))
            parseError("argument 2 of fscanf() is not a single pointer or string ");
        else if (!isAddress(cell->item))
            parseError("the argument %d of fscanf() is not a pointer", position);
    }
}

void checkScanf(int, const ExprNode *list) {
    int position = 0;
    for (const ExprNode *cell = list; cell; cell = cell->next) {
        position++;
        if (position == 1 && !isSinglePointer(cell->item))
            parseError("argument 1 of scanf() is not a single pointer or string ");
        else if (!isAddress(cell->item))
            parseError("argument %d of scanf() is not a pointer", position);
    }
}

void checkSscanf(int, const ExprNode *list) {
    int position = 1;
    for (const ExprNode *cell = list->next; cell; cell = cell->next) {
        position++;
        if (isSinglePointer(cell->item))
            continue;
        if (position == 2)
            parseError("argument 2 of sscanf() is not a single pointer or string ");
        else
            parseError("argument %d of sscanf() is not a single pointer", position);
    }
}

void checkStradd(int, const ExprNode *list) {
    int position = 0;
    for (const ExprNode *cell = list; cell; cell = cell->next) {
        position++;
        if (position == 1 && !isStringLike(treeDataType(cell->item)))
            parseError("argument 1 of stradd() is not a string ");
        else if (!isSinglePointer(cell->item))
            parseError("argument %d of stradd() is not a single pointer", position);
    }
}

// ---- Memory, streams, functions -----------------------------------------------------------------

void checkMemcpy(int, const ExprNode *list) {
    if (!isAddress(list->item))
        parseError("the first argument of memcpy() is not a pointer");
    if (list->next && !isAddress(list->next->item))
        parseError("the second argument of memcpy() is not a pointer");
}

void checkMemset(int, const ExprNode *list) {
    if (!isAddress(list->item))
        parseError("the first argument of memset() is not a pointer");
}

void checkIoctl(int, const ExprNode *list) {
    const ExprNode *third = argumentAt(list, 3);
    if (third && !isIntegral(treeType(third)) && !isAddress(third))
        parseError("3rd argument of ioctl() is not integral or piinter data type");
}

void checkSetvbuf(int, const ExprNode *list) {
    const ExprNode *buffer = argumentAt(list, 2);
    if (buffer && treeType(buffer) == DT_STRING)
        parseError(
            "buf of setvbuf(stream, buf, bufmode, size) is a string, use pointer to char "
            "instead");
}

void checkAtexit(int, const ExprNode *list) {
    TypeInfo *function = variableOf(list->item);
    bool isFunction =
        function && (function->kind == KIND_FUNCTION || function->kind == KIND_P_FUNCTION);
    if (!isFunction) {
        parseError("invalid argument for function atexit()");
    } else if (function->level > FILE_LEVEL) {
        parseError("cannot register a local function for atexit()");
    } else if (e_lang->restricted && (function->flags & FLAG_RESTRICT)) {
        parseError("restricted function '%s' is used as a function argument", function->name->text);
    } else {
        function->used = 1;
    }
}

void checkGets(int, const ExprNode *list) {
    parseWarning("function gets() is dangerous and should not be used, use fgets()");
    if (e_lang->restricted && isArray(treeType(list->item)))
        parseError("array argument is restricted in safe shell");
}

// ---- Arrays -------------------------------------------------------------------------------------

void checkShape(int, const ExprNode *list) {
    DataType type = treeType(list->item);
    if (!isArray(type))
        parseError("found %s where array is expected", dataTypeText(type));
}

void checkMatrices(int, const ExprNode *list) {
    for (; list; list = list->next)
        if (DataType type = treeType(list->item); !isArray(type))
            parseError("found %s where computational array is expected", dataTypeText(type));
}

struct CheckRow {
    int code;
    void (*check)(int code, const ExprNode *list);
};
constexpr CheckRow checkRows[] = {
    {OP_TO_CHAR, checkConversion}, {OP_TO_SHORT, checkConversion}, {OP_TO_INT, checkConversion},
    {OP_TO_UINT, checkConversion}, {OP_TO_FLOAT, checkConversion}, {OP_TO_DOUBLE, checkConversion},
    {OP_TO_COMPLEX, checkComplex}, {OP_TO_DUAL, checkDual},        {OP_TO_STRING, checkString},
    {OP_FPRINTF, checkFprintf},    {OP_FSCANF, checkFscanf},       {OP_SCANF, checkScanf},
    {OP_SSCANF, checkSscanf},      {OP_STRADD, checkStradd},       {OP_MEMCPY, checkMemcpy},
    {OP_MEMSET, checkMemset},      {OP_IOCTL, checkIoctl},         {OP_SETVBUF, checkSetvbuf},
    {OP_ATEXIT, checkAtexit},      {OP_GETS, checkGets},           {OP_SHAPE, checkShape},
    {OP_TRANSPOSE, checkMatrices}, {OP_INVERSE, checkMatrices},    {OP_LINEARSOLVER, checkMatrices},
};

}  // namespace

void checkBuiltinArguments(int code, const ExprNode *list) {
    if (!list)
        return;
    checkByRow(code, list);
    checkRecords(code, list);
    for (const CheckRow &row : checkRows)
        if (row.code == code)
            row.check(code, list);
}

}  // namespace zy
