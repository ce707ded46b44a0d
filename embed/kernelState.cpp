// State of the kernel layer.

#include "embed/streams.h"

namespace zy {

ReopenEntry *reopenList;

}  // namespace zy
