// State of embed/newHandler.cpp. A new program starts without a handler: it is one of the script.
#pragma once

namespace zy {

struct TypeInfo;

extern TypeInfo *newHandler;

}  // namespace zy
