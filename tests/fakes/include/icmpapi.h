// icmpapi.h of the native build: the options of an echo request.
#pragma once

#include "windows.h"

struct IP_OPTION_INFORMATION {
    uint8_t Ttl, Tos, Flags, OptionsSize;
    uint8_t* OptionsData;
};
