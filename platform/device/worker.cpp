// Each worker counts as a user of the library: a Today screen that drops the item while workers run would otherwise
// take the code from under them. The last act of a worker gives up its count and ends the thread in one call of coredll
// (ordinal 1216), which does not return into the library.
//
// There is no way to ask for a module by an address in it, so it is counted by loading its own file once more.

#include "platform/worker.h"

#include "platform/system.h"

namespace platform {
namespace {

struct Start {
    void (*work)(void*);
    void* argument;
    HMODULE library;
};

DWORD WINAPI RunWorker(void* argument) {
    const Start start = *static_cast<Start*>(argument);
    LocalFree(argument);
    start.work(start.argument);
    FreeLibraryAndExitThread(start.library, 0);
    return 0;  // never reached
}

HMODULE CountThisLibrary() {
    wchar_t path[MAX_PATH] = {};
    HMODULE library = GetModuleHandleW(L"quorvane.dll");
    const bool found = library != nullptr && GetModuleFileNameW(library, path, MAX_PATH) != 0;
    return found ? LoadLibraryW(path) : nullptr;
}

bool Launch(Start* start) {
    start->library = CountThisLibrary();
    if (start->library == nullptr) {
        return false;
    }
    HANDLE thread = CreateThread(nullptr, 0, RunWorker, start, 0, nullptr);
    if (thread == nullptr) {
        FreeLibrary(start->library);
        return false;
    }
    CloseHandle(thread);
    return true;
}

}  // namespace

bool StartWorker(void (*work)(void*), void* argument) {
    auto* start = static_cast<Start*>(LocalAlloc(LPTR, sizeof(Start)));
    if (start == nullptr) {
        return false;
    }
    start->work = work;
    start->argument = argument;
    if (!Launch(start)) {
        LocalFree(start);
        return false;
    }
    return true;
}

}  // namespace platform
