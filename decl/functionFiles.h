// open header: Function files. A function that is used and nowhere defined is looked for in a file
// of its own name along _fpath. At a call its head is read, so that the call has a prototype; at
// the end of the parse the file becomes the source of the running parse, as if it stood at the end
// of the program. A library is a folder of such files.
#pragma once

#include <string>

#include "decl/typeInfo.h"

namespace zy {

// The path of a function's file, along _fpath and _fpathext; false if there is none that can be
// read. startup/ has it, where the tables are.
bool findFunctionFile(const char *name, std::string &path);

// At a call of a name without a declaration: declares the function as the head of the file says.
// False after a message.
bool declareFromFunctionFile(NameEntry *name, const std::string &path);
// Whether the head of the file is that of the function; messages.
bool checkFunctionFile(NameEntry *name, const std::string &path);

enum FunctionFileResult {
    FUNCTION_FILE_NONE,     // there is none, or it was parsed before
    FUNCTION_FILE_OPENED,   // the parse goes on with it
    FUNCTION_FILE_REFUSED,  // after a message
};
FunctionFileResult continueWithFunctionFile(const TypeInfo *function);

// The name that a bare `main` at the head of the file being parsed stands for.
const char *bareMainName();

// At the end of a parse: the script's own view of names, and its restrictions, are back.
void leaveFunctionFiles();
// Forgets the files of the program.
void releaseFunctionFiles();

// Parses the whole file at once, for a text that a running script evaluates: it has no end of the
// parse to come. embed/ has it.
bool loadFunctionFile(NameEntry *name, const std::string &path);

}  // namespace zy
