// platform/counted_worker.h - what both systems' workers share: each counts as a user of the library. A host that
// unloads it while workers run would otherwise take the code from under them.
#pragma once

#include "platform/system.h"

namespace platform {

struct CountedWork {
    void (*work)(void*);
    void* argument;
    HMODULE library;
};

// The last act of a worker gives up its count and ends the thread in one system call, which does not return into the
// library.
inline DWORD WINAPI RunCountedWork(void* memory) {
    const CountedWork counted = *static_cast<CountedWork*>(memory);
    LocalFree(memory);
    counted.work(counted.argument);
    FreeLibraryAndExitThread(counted.library, 0);
    return 0;  // never reached
}

// Takes over one count of the library, null if it could not be counted; `stackBytes` and `flags` are CreateThread's.
// The thread's handle is closed as soon as the thread exists; nobody needs it. False when nothing was started and the
// count is given up.
inline bool StartCountedWorker(HMODULE library, SIZE_T stackBytes, DWORD flags, void (*work)(void*), void* argument) {
    if (library == nullptr) {
        return false;
    }
    HANDLE thread = nullptr;
    auto* counted = static_cast<CountedWork*>(LocalAlloc(LPTR, sizeof(CountedWork)));
    if (counted != nullptr) {
        *counted = {work, argument, library};
        thread = CreateThread(nullptr, stackBytes, RunCountedWork, counted, flags, nullptr);
    }
    if (thread == nullptr) {
        LocalFree(counted);
        FreeLibrary(library);
        return false;
    }
    CloseHandle(thread);
    return true;
}

}  // namespace platform
