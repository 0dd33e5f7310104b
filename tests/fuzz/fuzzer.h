// tests/fuzz/fuzzer.h - one parser's fuzzer. tools/fuzz runs each by itself; the unit tests replay its seeds and what
// small damage makes of them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

using Bytes = std::vector<uint8_t>;
using Input = std::span<const uint8_t>;

// A constant of this type registers itself.
struct Fuzzer {
    const char* name;
    std::vector<const char*> sources;  // where the parser is, for its coverage
    void (*feed)(Input input);         // ends the program where the parser breaks a promise
    std::vector<Bytes> seeds;          // sound inputs to begin with, and what once was a finding

    Fuzzer(const char* name, std::vector<const char*> sources, void (*feed)(Input), std::vector<Bytes> seeds);
};

std::vector<const Fuzzer*>& Fuzzers();

// Ends the program unless it holds.
void Demand(bool holds);

// An empty system and data folder.
void PrepareForFuzzing();

Bytes BytesOf(std::string_view text);
std::string_view TextOf(Input input);

// Takes so many bytes, or all that are left, off the input's start.
Input Take(Input& input, size_t bytes);
