// Each worker counts as a user of the library: a host that unloads it while workers run would otherwise take the code
// from under them. The last act of a worker gives up its count and ends the thread in one system call, which does not
// return into the library. The thread's handle is closed as soon as the thread exists; nobody needs it.

#include "platform/worker.h"

#include "platform/system.h"

namespace platform {
namespace {

constexpr SIZE_T kStackBytes = 128 * 1024;

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
}

bool Launch(Start* start) {
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<const wchar_t*>(&RunWorker),
                            &start->library)) {
        return false;
    }
    HANDLE thread = CreateThread(nullptr, kStackBytes, RunWorker, start, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
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
