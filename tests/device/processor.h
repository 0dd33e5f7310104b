// tests/device/processor.h - what lies behind a Bed; for the bed's own files only.
#pragma once

#include "tests/device/guest_memory.h"

#include <unicorn/unicorn.h>

struct Processor {
    uc_engine* engine = nullptr;
    GuestMap memory;
    std::deque<std::string> trapNames;  // stand-ins hold on to theirs
    std::map<std::string, Address> traps;
    std::map<uint32_t, uint32_t> exports;
    uint32_t entry = 0;  // from the image's base, as the exports and the resources
    uint32_t resources = 0;
    uint32_t systemMode = 0;  // 1: the system's functions are Thumb code
    Address trap = 0;         // that stopped the processor; 0: none
    bool dead = false;        // after a fault of the guest's code
    bool ending = false;      // the running thread has asked to end
    int threads = 0;          // stacks in use
    int depth = 0;            // calls under way
};

std::unique_ptr<Bed> NewBed(Core core);  // stand-ins, heap and stacks, no code

// `rights` are UC_PROT_...
void MapGuest(Bed& bed, Address base, uint32_t bytes, uint32_t rights, std::span<const uint8_t> contents = {});

std::string Hex(uint32_t value);
