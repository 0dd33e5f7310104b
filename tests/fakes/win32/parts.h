// tests/fakes/win32/parts.h - what the parts of the stand-in share.
#pragma once

#include "platform/system.h"

namespace fakes {

void ResetFiles();
void ResetRegistry();
void ResetClock();
void ResetMessages();

// Everything that CloseHandle accepts.
struct Closable {
    virtual ~Closable() = default;
};

}  // namespace fakes
