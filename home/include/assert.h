/* No guard: assert follows NDEBUG as it stands at each inclusion. */
#include <stdlib.h>

#undef assert
#ifdef NDEBUG
#define assert(expression) ((void)0)
#else
void __assertFailed(char *expression, char *file, int line);
#define assert(expression) \
    ((expression) ? 0 : (__assertFailed(#expression, __FILE__, __LINE__), 0))
#endif
