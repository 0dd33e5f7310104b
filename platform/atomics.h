// platform/atomics.h - the few interlocked operations that the scan needs; all are full barriers.
#pragma once

#include "platform/system.h"

namespace platform {

int32_t AtomicIncrement(volatile int32_t* value);                      // the new value
int32_t AtomicDecrement(volatile int32_t* value);                      // the new value
int32_t AtomicExchange(volatile int32_t* value, int32_t replacement);  // the old value
int32_t AtomicLoad(volatile int32_t* value);

}  // namespace platform
