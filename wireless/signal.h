// wireless/signal.h - the signal reading of every tick.
#pragma once

#include <cstdint>

// Updates SignalDbm, SignalHistory and the presence values of itemState. Returns 1 when a wireless adapter was present
// (or memory ran out before that was known, which leaves the history alone), else 0.
int QuerySignal();
