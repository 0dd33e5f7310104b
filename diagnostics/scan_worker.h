// diagnostics/scan_worker.h - the probe of one host.
#pragma once

#include "diagnostics/scan.h"

// Handed to one worker, which frees it.
struct ScanWorkerParams {
    int32_t index;         // of the host's record
    uint32_t hostAddress;  // host byte order
    HostTable* table;      // held for the worker, which releases it
};

// Echo, ARP table, NetBIOS name. The worker's routine; `argument` is a ScanWorkerParams.
void ScanHost(void* argument);

// Ends one hold of the table; the last one frees it.
void ReleaseTable(HostTable* table);
