// item/tick.h - the 2000 ms sampling tick: signal, counters, rings, taskbar icon, log.
#pragma once

#include "platform/system.h"

inline constexpr UINT_PTR kTickTimerId = 11;
inline constexpr UINT kTickPeriodMs = 2000;

// Bytes since the last reading. Read as signed: a wrapped 32-bit counter gives its true small step, a counter that fell
// back (an interface reset) gives 0 instead of four gigabytes.
uint32_t IncrementSince(uint32_t last, uint32_t now);

// Steps the ring indices and the sample count of itemState to the entry that the coming increments fill.
void AdvanceRings();

// One tick; `owner` is the item window. The first one only primes the counters.
void RunTick(HWND owner);
