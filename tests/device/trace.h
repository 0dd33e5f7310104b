// tests/device/trace.h - what the item asks of windows and drawing, one call a line, in a form that two systems share:
// handles are replaced by what they are ("pen 0 1 #ff0000", "bitmap 44 22", "paint item").
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

// How one function's calls are written. A letter an argument: h handle, i number, x hexadecimal, c colour, s UTF-16
// text, r RECT*, f LOGFONTW*, p POINT* (the next argument is their number), - left out.
struct CallShape {
    const char* name;
    const char* arguments;
    const char* makes = "";  // kind of the handle that it returns, which is then called by this and the arguments
    bool releases = false;   // the last handle among the arguments is gone afterwards
    bool silent = false;     // only keeps the names
};
const CallShape& ShapeOf(const std::string& name);  // ends the program for an unknown one
std::span<const CallShape> CallShapes();

std::string DateText(std::span<const uint16_t, 8> date);  // of a SYSTEMTIME

// A control of a dialog as a person sees it.
struct ControlState {
    int32_t id;
    std::string kind;  // window class, small letters
    std::string text;
    bool enabled;
    int64_t check = 0;                    // buttons
    int64_t selected = -1;                // index in a list, -1 without
    std::vector<std::string> items = {};  // of a list; a list view's columns, then rows: cells and image
};

struct Trace {
    std::string strip, dialogs;  // the lines so far: without and with a dialog open
    int dialogsOpen = 0;
    std::map<uint64_t, std::string> names;            // handles in use
    std::set<uint64_t> kept;                          // handles that the system itself destroys
    std::map<uint64_t, std::set<uint64_t>> selected;  // by context
    std::map<std::string, std::string> controls;      // as last written
    std::function<const void*(uint64_t address, size_t bytes)> memory;

    void Add(const std::string& line) { (dialogsOpen > 0 ? dialogs : strip) += line + "\n"; }
    std::string NameOf(uint64_t handle) const;
    std::string TextAt(uint64_t address) const;
    // Writes a call down, before it is made, and gives what its result is to be called ("" for none).
    std::string Note(const CallShape& shape, std::span<const uint64_t> arguments);
    void Select(uint64_t context, uint64_t object, uint64_t before);
    void NoteWatermark(uint64_t window, uint32_t right, uint32_t bottom);
    void NoteKeyboard(uint64_t window, bool isShown);
    // A dialog or page of that name opens; and it is gone, with all that is named after it.
    void Open(const std::string& name);
    void Close(uint64_t window);
    // Writes down which controls have changed since the last time.
    void NoteControls(uint64_t window, std::span<const ControlState> controls);
    // Objects that were made and never released; a list view destroys its images itself.
    std::string Leftovers() const;
};
