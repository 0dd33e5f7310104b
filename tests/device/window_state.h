// tests/device/window_state.h - the windows of the bed: the host's, the item's, dialogs with the controls of their
// templates, a sheet. Nothing is on a screen; sizes are rough, and nothing that is compared depends on them.
#pragma once

#include "tests/device/bed.h"
#include "tests/device/player.h"

#include <map>

// A control beyond text and state: what the messages of its kind keep.
struct ListColumn {
    std::u16string heading;
    int32_t width;
};
struct ListRow {
    std::vector<std::u16string> cells;
    int32_t image;
    uint32_t data;
};

struct Window : Object {
    std::string kind;  // class, small letters; "dialog" for dialogs and pages
    uint32_t parent = 0;
    int32_t id = 0;
    Address procedure = 0;  // of the guest; 0: a system's control or the host's own window
    std::u16string text;
    bool enabled = true;
    std::array<int32_t, 4> area = {};  // x, y, width, height
    std::vector<uint32_t> children;    // in the template's order
    int64_t check = 0, selected = -1, position = 0;
    bool droppedDown = false;
    std::array<uint16_t, 8> date = {};
    std::vector<std::u16string> items;  // of a drop-down list
    std::vector<ListColumn> columns;
    std::vector<ListRow> rows;
};

struct WindowState {
    Player* player = nullptr;
    std::map<std::u16string, Address> classes;
    std::map<Address, uint32_t> templates;  // the number of each that was found
    struct Page {
        uint32_t templateNumber;
        Address procedure;
    };
    std::vector<Page> pages;  // of the open sheet
    uint32_t sheet = 0, taskbar = 0;
};

// What contexts hold before anything is selected, and the dialogs' font (kind 2): by kind from here on.
inline constexpr uint32_t kSelectedAtFirst = 0x0BAD0000;

Trace& TraceOf(Bed& bed);
void Name(Bed& bed, uint32_t handle, const std::string& name);
// Writes the call down, with the arguments that its shape names, and gives what its result is to be called.
std::string NoteCall(const Arguments& arguments);

Window* FindWindow(Bed& bed, uint32_t handle);
uint32_t AddWindow(Bed& bed, const std::string& kind, uint32_t parent, Address procedure);
void RemoveWindow(Bed& bed, uint32_t handle);                  // with its children
uint32_t FindControl(Bed& bed, uint32_t dialog, uint32_t id);  // 0: none
uint32_t SendToWindow(Bed& bed, uint32_t window, uint32_t message, uint32_t wParam, uint32_t lParam);
uint32_t SendToControl(Bed& bed, Window& control, uint32_t message, uint32_t wParam, uint32_t lParam);
ControlState DescribeWindow(const Window& control);

// Dialogs for the script's side.
uint32_t OpenDialog(Bed& bed, const std::string& name, Address dialogTemplate, uint32_t parent, Address procedure);
uint32_t OpenPage(Bed& bed, uint32_t page);
