// tests/fakes/win32/parts.h - what CloseHandle accepts.
#pragma once
#include "tests/fakes/fakes.h"
