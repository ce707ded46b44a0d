// Parts of an instance's start that a stand-alone front end shares.
#pragma once

namespace zy {

// Signals of memory faults and illegal instructions come to this instance from now on.
void installFaultHandlers();

}  // namespace zy
