// tests/fuzz/fuzzer.h - tools/fuzz runs every fuzzer by itself; the unit tests replay all seeds, cut and bent.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

using Bytes = std::vector<uint8_t>;
using Input = std::span<const uint8_t>;

struct Fuzzer {
    std::string name;
    std::vector<Bytes> seeds;   // sound inputs to begin with, and what once was a finding
    void (*feed)(Input input);  // ends the program where the parser breaks a promise
};
inline std::vector<Fuzzer> fuzzers;

inline bool AddFuzzers(const std::vector<Fuzzer>& more) {
    fuzzers.insert(fuzzers.end(), more.begin(), more.end());
    return true;
}

// Ends the program unless it holds.
inline void Demand(bool holds) {
    if (!holds) {
        std::abort();
    }
}

inline Bytes BytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

inline std::string_view TextOf(Input input) {
    return {reinterpret_cast<const char*>(input.data()), input.size()};
}

// Takes so many bytes, or all that are left, off the input's start.
inline Input Take(Input& input, size_t bytes) {
    const Input taken = input.first(std::min(bytes, input.size()));
    input = input.subspan(taken.size());
    return taken;
}
