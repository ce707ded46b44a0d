// Macros. A macro is text: `#define` turns the rest of its line into pieces of text, and a call is
// replaced inside lineBuffer, where the lexer then goes on reading. There are no lists of tokens.
// What a macro's own text brings forth isn't replaced by that macro again. Macros in an argument
// are replaced before it takes its place, unless it is put in quotes or joined to its neighbour.
#pragma once

#include "front/preprocessorState.h"

namespace zy {

struct MacroCell {
    int32_t paramIndex;  // of a body: 0 for text, else which parameter, from 1 on
    char *text;          // owned
    MacroCell *next;
    bool raw;  // a parameter beside ##: its argument is taken as it was written
};

// The body of a macro with parameters has cells of text and of parameters, to be joined as they
// are. A text "#" says that the parameter behind it is put in quotes.
struct MacroEntry {
    char *name;  // owned
    uint8_t functionLike;
    uint8_t variadic;  // the last parameter is __VA_ARGS__
    uint16_t hash;
    const char *file;  // of the definition; lives as long as the program
    int32_t line;      // 0 for predefined ones
    MacroCell *params, *body;
    MacroEntry *next;
};

// #define and #undef, behind their word.
//
// 0: new or unchanged; 1: changed; -1, -2 after a message.
int defineDirective();
// 0: removed; 1: there was none; -1 after a message.
int undefDirective();

// A macro that isn't defined by a text of the program. 1 if there was one of that name, else 0.
int defineMacro(const char *name, const char *text, uint16_t hash);

MacroEntry *findMacro(const char *name);  // folds the name as the lexer does
MacroEntry *findHashedMacro(const char *name, uint16_t hash);
void freeMacros();
MacroCell *newMacroCell(int paramIndex, const char *text);
void freeMacroCells(MacroCell *&list);
void freeMacro(MacroEntry *macro);
void linkMacro(MacroEntry *macro);
bool removeMacro(const char *name);

}  // namespace zy
