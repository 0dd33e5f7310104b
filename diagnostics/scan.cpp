// Starts the workers and keeps the table alive for as long as anyone may touch it.

#include "diagnostics/scan.h"

#include "diagnostics/own_address.h"
#include "diagnostics/scan_worker.h"
#include "platform/atomics.h"
#include "platform/worker.h"

ScanState scanState;

namespace {

void StartWorkerOf(HostTable* table, int index, uint32_t hostAddress) {
    auto* params = static_cast<ScanWorkerParams*>(LocalAlloc(LPTR, sizeof(ScanWorkerParams)));
    if (params == nullptr) {
        return;
    }
    params->index = index;
    params->hostAddress = hostAddress;
    params->table = table;
    platform::AtomicIncrement(&table->holders);
    if (!platform::StartWorker(ScanHost, params)) {
        ReleaseTable(table);
        LocalFree(params);
    }
}

}  // namespace

void ReleaseTable(HostTable* table) {
    if (platform::AtomicDecrement(&table->holders) == 0) {
        LocalFree(table);
    }
}

void ReleaseScanTable() {
    if (scanState.table != nullptr) {
        ReleaseTable(scanState.table);
        scanState.table = nullptr;
    }
}

void ReportNoAddress(HWND owner) {
    MessageBoxW(owner, L"Cannot get current IP address!", L"Error", MB_OK);
}

bool StartScan(HWND owner) {
    constexpr uint32_t kNetworkMask = 0xFFFFFF00;
    platform::AtomicExchange(&scanState.stopRequested, 0);
    char ownText[kAddressTextBytes];
    GetCurrentAdapterAddress(ownText, scanState.ownMac);
    if (ownText[0] == 0) {
        ReportNoAddress(owner);
        return false;
    }
    ReleaseScanTable();
    scanState.ownAddress = inet_addr(ownText);
    auto* table = static_cast<HostTable*>(LocalAlloc(LPTR, sizeof(HostTable)));
    if (table == nullptr) {
        return false;
    }
    table->holders = 1;
    scanState.table = table;
    const uint32_t first = (ntohl(scanState.ownAddress) & kNetworkMask) + 1;
    for (int i = 0; i < kScanHosts; ++i) {
        StartWorkerOf(table, i, first + static_cast<uint32_t>(i));
    }
    return true;
}

int32_t StatusOf(const HostRecord& host) {
    return platform::AtomicLoad(const_cast<volatile int32_t*>(&host.status));
}
