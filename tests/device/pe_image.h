// tests/device/pe_image.h - a PE32 library for ARM handhelds, laid out as its loader lays it out, before binding. What
// is wrong in its headers and tables, tests/device/check-library tells.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

inline constexpr uint32_t kPageBytes = 0x1000;

struct ImageSection {
    uint32_t address;  // from the base; a multiple of kPageBytes, as `bytes` is
    uint32_t bytes;
    bool writable;
    bool executable;
};

struct ImageImport {
    std::string library;  // lower case, without ".dll"
    std::string name;     // empty: by ordinal
    uint32_t ordinal;
    uint32_t slot;  // from the base: where the function's address belongs
};

struct PeImage {
    uint32_t base;               // where `bytes` belong now
    uint32_t entry;              // from the base
    uint32_t resources;          // from the base
    std::vector<uint8_t> bytes;  // headers and sections
    std::vector<ImageSection> sections;
    std::vector<ImageImport> imports;
    std::vector<uint32_t> relocations;     // from the base: words that hold addresses
    std::map<uint32_t, uint32_t> exports;  // ordinal, address from the base
};

// False for what is no PE file for ARM, reaches outside of itself, or has a section that is writable and executable.
bool LayOutImage(std::span<const uint8_t> file, PeImage& image);

void RelocateImage(PeImage& image, uint32_t base);
