// Interlocked operations by the compiler's own atomics; a desktop's processor has them all.

#include "platform/atomics.h"

namespace platform {

int32_t AtomicIncrement(volatile int32_t* value) {
    return __atomic_add_fetch(value, 1, __ATOMIC_SEQ_CST);
}

int32_t AtomicDecrement(volatile int32_t* value) {
    return __atomic_sub_fetch(value, 1, __ATOMIC_SEQ_CST);
}

int32_t AtomicExchange(volatile int32_t* value, int32_t replacement) {
    return __atomic_exchange_n(value, replacement, __ATOMIC_SEQ_CST);
}

int32_t AtomicLoad(volatile int32_t* value) {
    return __atomic_load_n(value, __ATOMIC_SEQ_CST);
}

}  // namespace platform
