// tests/device/trace.h - what the item asks of windows, drawing and the registry, one call a line, in a form that two
// systems share: handles are replaced by what they are ("pen 0 1 #ff0000", "bitmap 44 22", "paint item").
#pragma once

#include "tests/device/stand_in.h"

#include <map>
#include <set>
#include <span>
#include <string>

// How one function's calls are written. A letter an argument: h handle, i number, x hexadecimal, c colour, s UTF-16
// text, r RECT*, f LOGFONTW*, p POINT* (the next argument is their number), v the value of a registry's type before it,
// m a message with its two arguments, - left out.
struct CallShape {
    const char* name;
    const char* arguments;
    const char* makes = "";  // kind of the handle that it returns, which is then called by this and the arguments
    bool releases = false;   // the last handle among the arguments is gone afterwards
    bool silent = false;     // only keeps the names
};
std::span<const CallShape> TracedCalls();

struct Trace {
    std::string text;  // the lines so far
    bool isSilent = false;
    uint32_t pointerBytes = sizeof(void*);
    std::map<uint64_t, std::string> names;            // handles in use
    std::map<uint64_t, std::set<uint64_t>> selected;  // by context

    void Add(const std::string& line) { text += isSilent ? "" : line + "\n"; }
    std::string NameOf(uint64_t handle) const;
    uint64_t HandleOf(const std::string& name) const;  // 0: none
    // Writes a call down, if it is of those that are compared, makes it and names what it gives.
    uint64_t Call(const std::string& function, const uint64_t* words, const StandIn& perform);
    void NoteKeyboard(uint64_t window, bool isShown) {
        Add((isShown ? "keyboard for " : "no keyboard for ") + NameOf(window));
    }
    void Open(uint64_t window, const std::string& name, const std::string& title) {
        names[window] = name;
        Add("open " + name + " " + title);
    }
    // A window is gone, with all that is named after it.
    void Close(uint64_t window);
    int64_t CountOf(const std::string& kind) const;  // of handles in use
};

// Of UTF-16 text; what lies beyond ASCII is "?".
std::string Narrow(const char16_t* text);
