// platform/scoped.h - small owners that release what an operation took, whichever way the operation ends.
#pragma once

#include "platform/system.h"

namespace platform {

// A failed open is null or INVALID_HANDLE_VALUE, depending on the system.
inline bool IsOpen(HANDLE handle) {
    return handle != nullptr && handle != INVALID_HANDLE_VALUE;
}

struct ScopedHandle {
    HANDLE handle;

    explicit ScopedHandle(HANDLE owned) : handle(owned) {}
    ScopedHandle(const ScopedHandle&) = delete;
    ScopedHandle& operator=(const ScopedHandle&) = delete;
    ~ScopedHandle() { Close(); }

    bool IsOpen() const { return platform::IsOpen(handle); }
    void Close() {
        if (IsOpen()) {
            CloseHandle(handle);
        }
        handle = nullptr;
    }
};

// Zero-filled memory of the local heap; null when it cannot be had.
struct ScopedMemory {
    void* memory;

    explicit ScopedMemory(size_t bytes) : memory(LocalAlloc(LPTR, bytes)) {}
    ScopedMemory(const ScopedMemory&) = delete;
    ScopedMemory& operator=(const ScopedMemory&) = delete;
    ~ScopedMemory() {
        if (memory != nullptr) {
            LocalFree(memory);
        }
    }

    template <class Record>
    Record* As() const {
        return static_cast<Record*>(memory);
    }
};

}  // namespace platform
