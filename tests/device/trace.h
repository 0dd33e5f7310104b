// tests/device/trace.h - what the item asks of windows, drawing and the registry, one call a line, in a form that two
// systems share: handles are replaced by what they are ("pen 0 1 #ff0000", "bitmap 44 22", "paint item").
#pragma once

#include "tests/device/stand_in.h"

#include <map>
#include <set>
#include <string>

struct Trace {
    std::string text;  // the lines so far
    uint32_t pointerBytes = sizeof(void*);
    std::map<uint64_t, std::string> names;            // handles in use
    std::map<uint64_t, std::set<uint64_t>> selected;  // by context

    void Add(const std::string& line) { text += line + "\n"; }
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

// The functions whose calls are written down, and whether they give a handle.
std::vector<std::pair<const char*, bool>> TracedFunctions();
// Of UTF-16 text; what lies beyond ASCII is "?".
std::string Narrow(const char16_t* text);
