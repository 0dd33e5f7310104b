// There is no way to ask for a module by an address in it, so the library is counted by loading its own file once more.
// FreeLibraryAndExitThread, by which a worker ends, is coredll's ordinal 1216.

#include "platform/worker.h"

#include "platform/counted_worker.h"

namespace platform {
namespace {

HMODULE CountThisLibrary() {
    wchar_t path[MAX_PATH] = {};
    HMODULE library = GetModuleHandleW(L"quorvane.dll");
    const bool found = library != nullptr && GetModuleFileNameW(library, path, MAX_PATH) != 0;
    return found ? LoadLibraryW(path) : nullptr;
}

}  // namespace

bool StartWorker(void (*work)(void*), void* argument) {
    return StartCountedWorker(CountThisLibrary(), 0, 0, work, argument);
}

}  // namespace platform
