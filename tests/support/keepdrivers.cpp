// Keeps drivers and plug-ins loaded to the end of a sanitized test program, so that the leak checker can name them and
// tests/lsan.supp can tell what they keep from leaks of our own.
#include "sanitized.h"

#if SORVANE_IS_SANITIZED
extern "C" int dlclose(void* /*handle*/) {
    return 0;
}
#endif
