// platform/desktop/link_speed.h - the speed that Wine does not report.
#pragma once

#include "platform/system.h"

namespace platform {

// Under Wine, fills in dwSpeed (bits per second) of a row that lacks it from what the Linux kernel says of the link. A
// speed beyond 32 bits becomes the largest number, as on Windows; a link that knows none (a wireless one) keeps 0.
void CorrectSpeed(MIB_IFROW& row);

}  // namespace platform
