#define INNER __LINE__
int innerLine = __LINE__;
