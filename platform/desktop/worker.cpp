// A thread whose stack takes no more of the address space than a worker needs: a scan starts 254 of them.

#include "platform/worker.h"

#include "platform/counted_worker.h"

namespace platform {

bool StartWorker(void (*work)(void*), void* argument) {
    constexpr SIZE_T kStackBytes = 128 * 1024;
    HMODULE library = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<const wchar_t*>(&StartWorker),
                       &library);
    return StartCountedWorker(library, kStackBytes, STACK_SIZE_PARAM_IS_A_RESERVATION, work, argument);
}

}  // namespace platform
