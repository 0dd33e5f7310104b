// host/demo.h - what the demonstration needs besides its library: settings and a traffic log of its own.
#pragma once

#include <string>

// Gives this process registry settings that end with the session, in place of the machine's, and a data folder of its
// own with a made-up traffic log of the last months; the user's settings and log stay untouched. Call it before the
// library is loaded. False when that cannot be had; `error` then says why.
bool PrepareDemo(std::wstring& error);
