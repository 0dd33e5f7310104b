// Interlocked operations are calls of coredll: an ARMv4 processor has no instruction for them, and the header's own
// inline forms want a newer one. There is one core, so a load needs no barrier; that it happens is enough.

#include "platform/atomics.h"

#undef InterlockedIncrement
#undef InterlockedDecrement
#undef InterlockedExchange

extern "C" {
LONG InterlockedIncrement(LONG volatile* value);
LONG InterlockedDecrement(LONG volatile* value);
LONG InterlockedExchange(LONG volatile* value, LONG replacement);
}

namespace platform {
namespace {

LONG volatile* AsLong(volatile int32_t* value) {
    static_assert(sizeof(LONG) == sizeof(int32_t));
    return reinterpret_cast<LONG volatile*>(value);
}

}  // namespace

int32_t AtomicIncrement(volatile int32_t* value) {
    return InterlockedIncrement(AsLong(value));
}

int32_t AtomicDecrement(volatile int32_t* value) {
    return InterlockedDecrement(AsLong(value));
}

int32_t AtomicExchange(volatile int32_t* value, int32_t replacement) {
    return InterlockedExchange(AsLong(value), replacement);
}

int32_t AtomicLoad(volatile int32_t* value) {
    return *value;
}

}  // namespace platform
