// The reset of the whole stand-in.

#include "tests/fakes/fakes.h"
#include "tests/fakes/win32/parts.h"

void fakes::ResetSystem() {
    EndFaults();
    workersRunInline = false;
    ResetFiles();
    ResetRegistry();
    ResetClock();
    ResetMessages();
}
