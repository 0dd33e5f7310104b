// On the real API only what a test may have left in the registry needs to go; the prefix is the tests' own.

#include "item/settings.h"
#include "tests/support/data_folder.h"

void ResetSystemForTest() {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kItemKey);
}
