// tests/unit/native/fault_walk.h - every faked call of an operation fails once, alone and with all that follow it.
#pragma once

#include <string>
#include <vector>

struct Operation {
    void (*prepare)();
    std::string (*run)();             // what the operation answered
    std::string (*look)() = nullptr;  // what it left behind
};

// Runs the operation with a fault in its first call, its second ... until it gets by with fewer. After each run nothing
// may be open that was not before. An outcome is "answer | left": `whole` without a fault; one of `degraded`, each of
// which must occur, or `whole` with one. Run again without faults it ends in one of `again`, or in `whole` when there
// is none.
void WalkFaults(const char* name, const Operation& operation, const std::string& whole,
                const std::vector<std::string>& degraded, const std::vector<std::string>& again = {});

std::string YesOrNo(bool yes);
