// tests/unit/native/fault_walk.h - every faked call of an operation fails once, alone and with all that follow it.
#pragma once

#include <string>

#include "tests/support/texts.h"

template <typename Value>
std::string AsText(const Value& value) {
    if constexpr (std::is_same_v<Value, bool>) {
        return value ? "yes" : "no";
    } else if constexpr (std::is_arithmetic_v<Value>) {
        return std::to_string(value);
    } else if constexpr (std::is_convertible_v<Value, std::wstring>) {
        return Narrow(value);
    } else {
        return value;
    }
}

// "a;b;c;"
template <typename... Values>
std::string Told(const Values&... values) {
    return (std::string() + ... + (AsText(values) + ";"));
}

// Runs an operation with a fault in its first call, its second ... until it gets by with fewer. After each run nothing
// may be open that was not before. An outcome is what the operation told and then all that it changed, as "name: new
// content;": files, settings, what the user was told. It is `whole` without a fault; with one it is that or matches the
// expression `promised`. Run again without faults the operation ends as `again` says, or in `whole` when that is empty.
void WalkFaults(const char* name, void (*prepare)(), std::string (*run)(), const std::string& whole,
                const std::string& promised, const std::string& again = "");

inline void UseNothing() {}
