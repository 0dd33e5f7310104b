// tests/fuzz/fuzzer.h - one parser's fuzzer. tools/fuzz runs each in a program of its own; the unit tests replay its
// seeds and what small damage makes of them.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>
#include <vector>

using Bytes = std::vector<uint8_t>;

struct Fuzzer {
    const char* name;                              // its file's, without _fuzz.cpp
    std::vector<const char*> sources;              // where the parser is, for its coverage
    void (*feed)(std::span<const uint8_t> input);  // ends the program where the parser breaks a promise
    std::vector<Bytes> (*seeds)();                 // sound inputs to begin with, and what once was a finding
};

// Those linked into the program.
std::vector<Fuzzer>& Fuzzers();

// One constant of this type in every fuzzer's file.
struct RegisteredFuzzer {
    explicit RegisteredFuzzer(const Fuzzer& fuzzer) { Fuzzers().push_back(fuzzer); }
};

// Ends the program unless it holds.
void Demand(bool holds);

// An empty system and data folder.
void PrepareForFuzzing();

Bytes BytesOf(std::string_view text);
std::string_view TextOf(std::span<const uint8_t> input);

// Takes so many bytes, or all that are left, off the input's start.
std::span<const uint8_t> Take(std::span<const uint8_t>& input, size_t bytes);
