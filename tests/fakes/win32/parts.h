// tests/fakes/win32/parts.h - what the parts of the stand-in share.
#pragma once

#include <map>

#include "tests/fakes/fakes.h"

struct FakeKey {
    std::map<std::wstring, std::pair<DWORD, std::vector<BYTE>>> values;  // type and data
};

namespace fakes {

void ResetFiles();

inline std::map<std::wstring, FakeKey> keys;  // by full name, and values by theirs, which the product spells one way

// Everything that CloseHandle accepts: a file, a search, an event.
struct Closable {
    const int descriptor;
    std::vector<std::filesystem::path> matches;  // those that a search has not told yet, the next one last
    explicit Closable(int opened = -1) : descriptor(opened) { ++openResources; }
    Closable(const Closable&) = delete;
    Closable& operator=(const Closable&) = delete;
    ~Closable() {
        close(descriptor);
        --openResources;
    }
};

}  // namespace fakes
