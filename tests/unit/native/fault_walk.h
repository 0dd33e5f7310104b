// tests/unit/native/fault_walk.h - every faked call of an operation fails: alone, with all that follow it, with those
// of its function.
#pragma once

#include <string>

#include "tests/support/texts.h"

// What operations work on: files, settings, an adapter with a lease, an access point.
void UseEverything();

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

// An outcome is what the operation told ("yes;2;") and then all that it changed, as "name: new content;": files,
// settings, what the user was told.
struct Promise {
    std::string whole;       // the outcome without a fault
    std::string onFault;     // an expression for the others with one
    std::string again = "";  // one for a repetition without faults, unless that always ends in `whole`
    void (*prepare)() = UseEverything;
};

// Runs an operation with a fault in its first call, its second ... until it gets by with fewer, and repeats it each
// time. After each run nothing may be open that was not before.
void WalkFaults(const char* name, const Promise& promise, std::string (*run)());
