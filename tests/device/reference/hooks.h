// tests/device/reference/hooks.h - the program's own table of imports, changed so that what the product asks of the
// system is written down, and what the script answers is answered by it.
#pragma once

#include "tests/device/player.h"

// All calls that are compared, the script's answers, and `others`.
void HookSystem(const StandInTable& others);
// What the system itself has by that name.
void* Original(const std::string& function);
StandIn CallOriginal(const std::string& function);
