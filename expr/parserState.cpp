#include "expr/parserState.h"

namespace zy {

ExprNode *keptTexts;
bool parserRunMode;
bool nestedFaultReported;

}  // namespace zy
