// Before each native test the whole stand-in is emptied.

#include "tests/fakes/fakes.h"
#include "tests/support/data_folder.h"

void ResetSystemForTest() {
    fakes::ResetSystem();
}
