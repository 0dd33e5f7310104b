// tests/fakes/faults.h - one countdown that every faked call consults, so that a test can make each call of an
// operation fail in turn; and how much of what the fakes handed out has not come back.
#pragma once

#include <string>

namespace fakes {

enum class Faults { Once, FromThereOn, OfItsFunction };

// Of the faked calls that this thread makes from now on, the n-th (1 is the next one; 0 is none) fails as that function
// does, and so do all after it, or all of its function. A write that fails writes nothing.
void FailCall(int nth, Faults faults);

// All calls succeed again. Returns how many there were since FailCall.
int EndFaults();

// The function that failed first since FailCall; empty when none did.
std::string FailedCall();

// Handles, keys and memory that were taken and not returned.
int OpenResources();

// For the fakes: counts a call and tells whether it must fail; counts a resource in (1) or out (-1).
bool Fails(const char* function);
void CountResource(int change);

}  // namespace fakes
