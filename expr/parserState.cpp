#include "expr/parserState.h"

namespace zy {

ExprNode *keptTexts;
bool parserRunMode;
int expressionNesting;

}  // namespace zy
