// item/adapter_choice.h - which adapter is monitored, and its byte counters.
#pragma once

#include "platform/system.h"

// Chooses the first adapter of type Ethernet: fills adapterName and interfaceIndex of itemState. False when the system
// has no interface, no Ethernet adapter or no memory; the index is then unknown (no interface) or as it was.
bool ChooseAdapter();

struct InterfaceCounters {
    uint32_t transmitted;  // octets, wrapping
    uint32_t received;
};

// The monitored interface's counters, or zeros when they cannot be read. An interface that has vanished is chosen
// again.
InterfaceCounters ReadInterfaceCounters();
