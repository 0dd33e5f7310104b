// item/taskbar_icon.h - the status icon that the item paints straight onto the screen, over the taskbar.
#pragma once

#include "platform/system.h"

// Resource number of the icon for the newest ring entry and the signal. Icon 215 does not exist.
int TaskbarIconId();

// Side in pixels and top edge of the icon's square on this screen.
int TaskbarIconSide();
int TaskbarIconTop();

// Paints the icon at xLocation, keeping what was under it in iconBackground.
void DrawTaskbarIcon();

// Captures the clean screen under the icon into taskbarBackground.
void CaptureTaskbarBackground();

// Copies a captured square back onto the screen at xLocation. Does nothing with a null.
void RestoreUnderIcon(HBITMAP background);
