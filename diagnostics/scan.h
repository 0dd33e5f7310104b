// diagnostics/scan.h - the intruder detector's scan: one worker per address of the own /24, all at once.
//
// Nobody waits for the workers. Each writes only its own record of its own scan's table, and holds that table and the
// library's code (platform/worker.h) until it ends; the dialog holds the table until the scan is over or it closes. A
// new scan takes a new table and leaves the old one to the workers that still hold it.
#pragma once

#include "diagnostics/mac_address.h"
#include "platform/system.h"

inline constexpr int kScanHosts = 254;

enum HostStatus : int32_t { kHostPending = 0, kHostAnswered = 1, kHostSilent = -1 };

struct HostRecord {
    volatile int32_t status;  // HostStatus; the worker writes it last, once, with a barrier before it
    uint32_t listed;          // the dialog has shown the host
    uint32_t address;         // network byte order
    char name[128];           // NetBIOS name in the ANSI code page, at most 15 bytes; empty when none was learned
    MacAddress mac;
    uint32_t macKnown;  // `mac` is from the ARP table
    uint32_t safe;      // the dialog has shown the host as safe
};

// Slot i stands for the i-th address of the scan.
struct HostTable {
    HostRecord hosts[kScanHosts];
    volatile int32_t holders;  // workers that have not ended, and the dialog
};

struct ScanState {
    HostTable* table;     // of the latest scan; null when the dialog holds none
    uint32_t ownAddress;  // network byte order
    MacAddress ownMac;
    volatile int32_t stopRequested;  // workers that see it after their echo leave their record alone
};
extern ScanState scanState;

// Starts a scan of x.y.z.1 to x.y.z.254 around the own address, whatever the real mask is, with a table of its own.
// False when the device has no address, which is told with a message over `owner`, or when there is no memory for the
// table. A worker that cannot be started leaves its host pending for ever.
bool StartScan(HWND owner);

// Says that the device has no address.
void ReportNoAddress(HWND owner);

// The dialog's hold of the table ends; harmless without one.
void ReleaseScanTable();

// The record's status; what its worker wrote before it is visible once this is not kHostPending.
int32_t StatusOf(const HostRecord& host);
