// diagnostics/safe_list.h - "slist.dat": the hardware addresses that the user has declared known.
//
// Six bytes an entry, in the order in which they were added; no header. The file is there from the first entry on.
#pragma once

#include "diagnostics/mac_address.h"

bool SafeListContains(const MacAddress& mac);

// Appends without looking for an equal entry, nor at the result of the write. False when the file cannot be opened or
// its end not be found.
bool SafeListAdd(const MacAddress& mac);

// Removes every entry equal to `mac`, rewriting the file in any case. True when there was one, also when the file then
// could not be replaced, of which the user is told with a message over `owner`. A list that cannot be read to its end
// or copied whole (a full disk) stays as it was, and the answer is false.
bool SafeListRemove(HWND owner, const MacAddress& mac);
