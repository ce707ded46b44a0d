// State of the kernel layer.

#include "embed/newHandler.h"
#include "embed/streams.h"

namespace zy {

ReopenEntry *reopenList;
TypeInfo *newHandler;

}  // namespace zy
