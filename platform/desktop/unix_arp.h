// platform/desktop/unix_arp.h - the ARP table as Linux itself tells it, for a library that runs under Wine.
//
// Wine's own reading takes tens of milliseconds with few rows and up to two seconds while a scan keeps its network
// service busy; the kernel's text takes half of one.
#pragma once

#include "platform/system.h"

namespace platform {

// The rows whose hardware address is known, ordered by address, without interface indexes. Null when the text cannot be
// read; the caller frees the table.
MIB_IPNETTABLE* ReadUnixArpTable();

}  // namespace platform
