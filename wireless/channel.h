// wireless/channel.h - the 2.4 GHz channel of a DS configuration.
#pragma once

#include <cstdint>

// Channel 1 to 14 of a frequency in kHz or in units of 100 kHz (adapters differ), or -1. The channels are 5 MHz apart
// from 2412 MHz; channel 14 continues these steps at 2477 MHz.
int32_t ChannelFromFrequency(uint32_t frequency);
