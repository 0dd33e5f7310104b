// tests/device/trace.h - what the item asks of windows, drawing and the registry, one call a line, in a form that two
// systems share: handles are replaced by what they are ("pen 0 1 0xFF", "bitmap 44 22", "paint item").
#pragma once

#include "tests/device/stand_in.h"

#include <deque>
#include <map>
#include <span>
#include <string>

// How one function's calls are written. A letter an argument: h handle, i number, x hexadecimal, s UTF-16 text, v the
// value of a registry's type before it, m a message with its two arguments, - left out. Letters in parentheses are the
// fields of a record that is pointed to: 32 bits each, but for texts (s) and t, a text that stands in the record. What
// a message's letters name behind "=" is its answer, which is a line of its own.
struct CallShape {
    const char* name;
    const char* arguments;
    const char* makes = "";  // kind of the handle that it returns, which is then called by this and the arguments
    bool releases = false;   // the last handle among the arguments is gone afterwards
    bool isSilent = false;   // only keeps the names
};
std::span<const CallShape> TracedCalls();

struct Trace {
    std::string text;                   // the lines so far
    std::deque<std::string> reference;  // lines of another system that the next ones have to equal
    std::string difference;             // the first
    bool isSilent = false;
    uint32_t pointerBytes = sizeof(void*);
    std::map<uint64_t, std::string> names;  // handles in use

    void Add(const std::string& line);
    std::string NameOf(uint64_t handle) const;
    // Writes a call down, if it is of those that are compared, makes it and names what it gives.
    uint64_t Call(const std::string& function, const uint64_t* words, const StandIn& perform);
    // A dialog, known by the number and the bytes of its template.
    void Open(uint64_t window, uint32_t number, std::span<const uint8_t> dialogTemplate);
};

// Of UTF-16 text; what lies beyond ASCII is "?".
std::string Narrow(const char16_t* text);
std::string Hex(uint64_t value);
