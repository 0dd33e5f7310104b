// platform/desktop/today_frame.h - how the library finds the Today host's frame window, whose client area is the
// screen.
#pragma once

#include "platform/system.h"

namespace platform {

inline constexpr wchar_t kFrameClass[] = L"QuorvaneTodayFrame";
inline constexpr wchar_t kTaskbarClass[] = L"HHTaskBar";  // a child of the frame

// Sent to the frame: wParam 1 raises its on-screen keyboard, 0 lowers it; lParam is the window that asked.
inline constexpr UINT kFrameKeyboardMessage = WM_APP + 1;

// The frame of this process, or null. With several in turn, the one that exists now.
HWND FindTodayFrame();

}  // namespace platform
