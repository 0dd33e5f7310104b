// tests/fakes/win32/parts.h - what the parts of the stand-in share.
#pragma once

#include "platform/system.h"
#include "tests/fakes/faults.h"

namespace fakes {

void ResetFiles();
void ResetRegistry();

// Everything that CloseHandle accepts.
struct Closable {
    Closable() { CountResource(1); }
    Closable(const Closable&) = delete;
    Closable& operator=(const Closable&) = delete;
    virtual ~Closable() { CountResource(-1); }
};

}  // namespace fakes
