// item/dialog_placement.h - where a tool dialog goes when it opens.
#pragma once

#include "platform/system.h"

enum class Placement {
    Centred,                // on the whole screen
    BelowTaskbar,           // centred, its top not above the taskbar's height
    LandscapeBelowTaskbar,  // BelowTaskbar on a landscape screen, Centred on a portrait one
    Lifted,                 // centred, then 26 pixels higher
};

struct DialogPlace {
    int x;
    int y;
    int width;
    int height;
};

// Place of a dialog whose window is width by height, on the screen recorded in itemState. It grows by one pixel each
// way. taskbarHeight counts only where the placement asks for it.
DialogPlace ArrangeDialog(Placement placement, int width, int height, int taskbarHeight);

// Height of the taskbar, or 26 when there is none.
int TaskbarHeight();

// Rereads the screen's size and moves the dialog there, without repainting.
void PlaceDialog(HWND dialog, Placement placement);
