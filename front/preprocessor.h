// open header: the preprocessor. There is no pass of its own: the reader of file lines leaves out
// what conditional directives exclude (front/conditions.cpp), the lexer runs the other directives
// when it meets the word # (front/directives.cpp), and a macro call is replaced as text in
// lineBuffer (front/macros.h). So a directive may stand anywhere between two tokens.
#pragma once

namespace zy {

// Runs the directive at linePos, behind its #; behind a dot, includes a script. The rest of the
// line is used up, or another file is being read. Errors set errorFlag.
void runDirective();

// The state of a new program: no macro, no open group.
void resetPreprocessor();
// What lives as long as the instance.
void releasePreprocessor();

// Closes the files that a parse which gave up has left on the source stack, but for the bottom one.
void leaveIncludedFiles();
// The bottom of the stack of included files: the folder in which the instance is started.
void rememberStartFolder(const char *folder);

}  // namespace zy
