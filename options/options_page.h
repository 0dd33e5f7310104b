// options/options_page.h - the "Options" page: taskbar icon, hour format, and the monthly logs.
#pragma once

#include "platform/system.h"

INT_PTR CALLBACK OptionsPageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
