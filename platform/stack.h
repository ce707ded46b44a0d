// The calling thread's stack, for what recurses as deep as a script wants it to.
#pragma once

namespace zy::platform {

// Whether so little is left of the stack that nothing more should be nested. False on a stack that
// the system doesn't know.
bool stackIsLow();

}  // namespace zy::platform
