// What happens when native code or a wild pointer of the script faults: a message that says where
// the script stood, and the end of the process. Nothing can be trusted to go on.

#include <cstdio>
#include <cstdlib>

#include "extern/include/embedzy.h"
#include "instance/report.h"
#include "platform/signals.h"

void segmentationBusHandler(int signal) {
    using namespace zy;
    plainError(signal == platform::illegalInstructionSignal
                   ? "Cannot Recover From Previous Errors"
                   : "cannot recover from previous errors");
    SourcePosition position;
    if (executing ? runPosition(position) : parsePosition(position))
        printErrorPosition(position);
    noteRunError();
    fputc('\n', stderr);
    fflush(stdout);
    fflush(stderr);
    _Exit(1);  // no exit functions: they could fault again
}
