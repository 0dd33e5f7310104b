// options/adapter_page.h - the "Adapter" page, which shows the monitored adapter, and the "About" page.
#pragma once

#include "platform/system.h"

INT_PTR CALLBACK AdapterPageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK AboutPageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
