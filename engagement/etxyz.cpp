// One loaded engagement.
#include "etxyz.h"

void etxyz::InitHardbodies() {
    hardbodiesInitialized = true;
}
