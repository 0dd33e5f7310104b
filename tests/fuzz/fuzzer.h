// tests/fuzz/fuzzer.h - one parser's fuzzer. tools/fuzz runs each by itself; the unit tests replay its seeds and what
// small damage makes of them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

using Bytes = std::vector<uint8_t>;
using Input = std::span<const uint8_t>;

// A constant of this type registers itself.
struct Fuzzer {
    const char* name;
    std::vector<const char*> sources;  // where the parser is, for its coverage
    std::vector<Bytes> seeds;          // sound inputs to begin with, and what once was a finding
    void (*feed)(Input input);         // ends the program where the parser breaks a promise

    Fuzzer(const char* name, std::vector<const char*> sources, std::vector<Bytes> seeds, void (*feed)(Input));
};

std::vector<const Fuzzer*>& Fuzzers();

// Ends the program unless it holds.
void Demand(bool holds);

Bytes BytesOf(std::string_view text);
std::string_view TextOf(Input input);

// Takes so many bytes, or all that are left, off the input's start.
Input Take(Input& input, size_t bytes);
