// diagnostics/arp_lookup.h - what the ARP table knows of one host.
#pragma once

#include "platform/system.h"

// Copies the first row of `address` (network byte order). False when the table cannot be read or has none; `row` then
// stays untouched.
bool FindArpRow(uint32_t address, MIB_IPNETROW& row);
