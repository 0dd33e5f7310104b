// platform/worker.h - threads that nobody waits for.
#pragma once

namespace platform {

// Runs work(argument) on a thread of its own and returns at once; the library stays loaded until the work is done.
// False when the thread cannot be started; `work` is not called then.
bool StartWorker(void (*work)(void*), void* argument);

}  // namespace platform
