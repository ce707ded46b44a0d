// The environment proxy. Texts handed to the process environment must outlive the copy that set
// them, so all instances reach it through these functions of the front copy, which their e_lang
// points to; a stand-alone run uses those of its own copy. Defined in embed/environment.cpp.
#pragma once

namespace zy {

// text is NAME=VALUE, NAME VALUE, or NAME, which removes the variable, as NAME= does. 0 or -1.
int envPut(const char *text);
char *envGet(const char *name);

// Takes back what instances have set: each variable gets the value it had before.
void envRelease();

}  // namespace zy
