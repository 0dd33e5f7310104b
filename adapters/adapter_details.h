// adapters/adapter_details.h - one reading of the first Ethernet adapter, as the texts that its dialog shows.
#pragma once

#include "adapters/adapter_texts.h"
#include "platform/system.h"

inline constexpr size_t kAddressPairUnits = 40;  // two dotted addresses joined by ", "

// A text that could not be had is empty.
struct AdapterDetails {
    wchar_t title[MAX_ADAPTER_DESCRIPTION_LENGTH + 16];
    wchar_t hardwareAddress[kHardwareAddressUnits];
    wchar_t type[16];
    wchar_t speed[24];
    wchar_t address[16];
    wchar_t mask[16];
    wchar_t gateway[16];
    wchar_t dns[kAddressPairUnits];  // on a landscape screen both servers
    wchar_t secondDns[16];           // portrait only
    wchar_t wins[kAddressPairUnits];
    wchar_t secondWins[16];
};

// What the dialog shows on opening. Chooses and stores the monitored adapter when none is known yet, then reads the
// first Ethernet adapter, which becomes the monitored one whatever was chosen before. Each failing call ends the
// reading and leaves the rest empty. `landscape` joins the server addresses.
void ReadAdapterDetails(bool landscape, AdapterDetails& details);

// Index of the interface whose name equals `adapterName` exactly, which becomes the monitored interface; or
// kUnknownInterface when there is none or a call fails.
uint32_t FindInterfaceIndex(const wchar_t* adapterName);
