// The ARP table, read once for all who ask at the same time. A scan asks from 254 threads; Wine cannot answer so many
// reads at once (a service of it dies and the callers hang), and one behind the other takes seconds. So one thread
// reads while the others wait, and each takes the first table whose reading began after its own call.

#include "platform/adapters.h"
#include "platform/desktop/unix_arp.h"
#include "platform/desktop/wine.h"

namespace platform {
namespace {

struct SharedTable {
    SRWLOCK lock = SRWLOCK_INIT;
    CONDITION_VARIABLE changed = CONDITION_VARIABLE_INIT;
    MIB_IPNETTABLE* rows = nullptr;  // the last finished reading, null if it failed; freed when nobody asks any more
    DWORD result = NO_ERROR;         // of the last finished reading
    DWORD rowCount = 0;              // of the last successful reading
    bool everRead = false;
    bool reading = false;
    uint32_t begun = 0;  // readings begun and finished, to tell an older from a newer one
    uint32_t finished = 0;
    uint32_t callers = 0;
};
SharedTable shared;

bool HasHardwareAddress(const MIB_IPNETROW& row) {
    for (DWORD i = 0; i < row.dwPhysAddrLen && i < MAXLEN_PHYSADDR; ++i) {
        if (row.bPhysAddr[i] != 0) {
            return true;
        }
    }
    return false;
}

// Rows of neighbours that have not answered yet carry six zeros.
void DropUnfinishedRows(MIB_IPNETTABLE* rows) {
    DWORD kept = 0;
    for (DWORD i = 0; i < rows->dwNumEntries; ++i) {
        if (HasHardwareAddress(rows->table[i])) {
            rows->table[kept++] = rows->table[i];
        }
    }
    rows->dwNumEntries = kept;
}

// The table grows between the size query and the reading, so both repeat. The caller frees what `rows` gets.
DWORD ReadSystemTable(MIB_IPNETTABLE** rows) {
    if (IsWine() && (*rows = ReadUnixArpTable()) != nullptr) {
        DropUnfinishedRows(*rows);
        return NO_ERROR;
    }
    constexpr int kAttempts = 8;
    constexpr ULONG kRoomForNewcomers = 64 * sizeof(MIB_IPNETROW);
    ULONG bytes = 0;
    DWORD result = ::GetIpNetTable(nullptr, &bytes, TRUE);
    for (int attempt = 0; attempt < kAttempts && result == ERROR_INSUFFICIENT_BUFFER; ++attempt) {
        bytes += kRoomForNewcomers;
        auto* table = static_cast<MIB_IPNETTABLE*>(LocalAlloc(LPTR, bytes));
        if (table == nullptr) {
            return ERROR_NOT_ENOUGH_MEMORY;
        }
        result = ::GetIpNetTable(table, &bytes, TRUE);
        if (result == NO_ERROR) {
            DropUnfinishedRows(table);
            *rows = table;
            return NO_ERROR;
        }
        LocalFree(table);
    }
    return result;
}

// Both are called with the lock held; it is given up during the system's own work.
void ReadForAll() {
    shared.reading = true;
    ++shared.begun;
    ReleaseSRWLockExclusive(&shared.lock);
    MIB_IPNETTABLE* rows = nullptr;
    const DWORD result = ReadSystemTable(&rows);
    AcquireSRWLockExclusive(&shared.lock);
    LocalFree(shared.rows);
    shared.rows = rows;
    shared.result = result;
    shared.rowCount = rows != nullptr ? rows->dwNumEntries : shared.rowCount;
    shared.everRead = true;
    shared.reading = false;
    ++shared.finished;
    WakeAllConditionVariable(&shared.changed);
}

void WaitForFreshTable() {
    const uint32_t wanted = shared.begun + 1;
    while (static_cast<int32_t>(shared.finished - wanted) < 0) {
        if (shared.reading) {
            SleepConditionVariableSRW(&shared.changed, &shared.lock, INFINITE, 0);
        } else {
            ReadForAll();
        }
    }
}

ULONG BytesFor(DWORD rowCount) {
    return static_cast<ULONG>(offsetof(MIB_IPNETTABLE, table) + rowCount * sizeof(MIB_IPNETROW));
}

// The size query need not read again what the data call reads anyway: the last known number of rows and plenty of room
// for newcomers will do.
DWORD AnswerSize(ULONG* bytes) {
    constexpr DWORD kRowsToSpare = 1024;
    *bytes = BytesFor(shared.rowCount + kRowsToSpare);
    return ERROR_INSUFFICIENT_BUFFER;
}

DWORD CopyTable(MIB_IPNETTABLE* table, ULONG* bytes) {
    if (shared.rows == nullptr) {
        return shared.result;
    }
    const ULONG needed = BytesFor(shared.rows->dwNumEntries);
    if (*bytes < needed) {
        return AnswerSize(bytes);
    }
    *bytes = needed;
    memcpy(table, shared.rows, needed);
    return shared.rows->dwNumEntries != 0 ? NO_ERROR : ERROR_NO_DATA;
}

}  // namespace

DWORD GetIpNetTable(MIB_IPNETTABLE* table, ULONG* bytes, BOOL) {
    AcquireSRWLockExclusive(&shared.lock);
    ++shared.callers;
    if (table != nullptr || !shared.everRead) {
        WaitForFreshTable();
    }
    const DWORD result = table != nullptr ? CopyTable(table, bytes) : AnswerSize(bytes);
    if (--shared.callers == 0) {
        LocalFree(shared.rows);
        shared.rows = nullptr;
    }
    ReleaseSRWLockExclusive(&shared.lock);
    return result;
}

}  // namespace platform
