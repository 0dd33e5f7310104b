// The window belongs to the asking dialog, so that it lies over it, is not disabled with the frame and ends with it.

#include "host/keyboard_window.h"

#include "host/keyboard_keys.h"
#include "platform/scoped_gdi.h"

namespace {

constexpr wchar_t kKeyboardClass[] = L"QuorvaneKeyboard";
constexpr int kTextHeight = 11;
constexpr UINT_PTR kLiftTimer = 1;
constexpr UINT kLiftMs = 100;

struct Keyboard {
    HWND window;
    int scale;
    bool shift;
    const Key* pressed;
};
Keyboard keyboard;

SIZE KeyboardSize() {
    RECT area;
    GetClientRect(keyboard.window, &area);
    return {area.right, area.bottom};
}

COLORREF KeyColor(const Key& key) {
    if (&key == keyboard.pressed || (key.kind == KeyKind::Shift && keyboard.shift)) {
        return RGB(150, 190, 230);
    }
    return key.label == nullptr || key.units > 3 ? RGB(250, 251, 253) : RGB(222, 228, 236);
}

void DrawKey(HDC context, const Key& key, RECT area) {
    const platform::ScopedObject brush(CreateSolidBrush(KeyColor(key)));
    area.right -= 1;
    area.bottom -= 1;
    FillRect(context, &area, static_cast<HBRUSH>(brush.object));
    const wchar_t text[] = {keyboard.shift ? key.shifted : key.normal, 0};
    DrawTextW(context, key.label != nullptr ? key.label : text, -1, &area,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

void PaintKeyboard(HWND window) {
    PAINTSTRUCT paint;
    HDC context = BeginPaint(window, &paint);
    LOGFONTW description = {};
    description.lfHeight = -kTextHeight * keyboard.scale;
    wcscpy(description.lfFaceName, L"Tahoma");
    {
        const platform::ScopedObject font(CreateFontIndirectW(&description));
        const platform::ScopedSelection selection(context, font.object);
        SetBkMode(context, TRANSPARENT);
        SetTextColor(context, RGB(20, 30, 44));
        const auto rows = KeyboardRows();
        for (size_t row = 0; row < rows.size(); ++row) {
            for (size_t key = 0; key < rows[row].size(); ++key) {
                DrawKey(context, rows[row][key], KeyArea(KeyboardSize(), row, key));
            }
        }
    }
    EndPaint(window, &paint);
}

// Keys are posted, as a real keyboard's are, and so pass the dialog's own handling of Tab and Enter.
void SendKey(const Key& key) {
    HWND focus = GetFocus();
    if (focus == nullptr) {
        return;
    }
    if (key.kind == KeyKind::Character) {
        PostMessageW(focus, WM_CHAR, keyboard.shift ? key.shifted : key.normal, 1);
    } else {
        PostMessageW(focus, WM_KEYDOWN, key.normal, 1);
        PostMessageW(focus, WM_KEYUP, key.normal, static_cast<LPARAM>(0xC0000001));
    }
    keyboard.shift = false;
}

void OnPress(LPARAM place) {
    keyboard.pressed = FindKey(KeyboardSize(), {static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))});
    SetCapture(keyboard.window);
    InvalidateRect(keyboard.window, nullptr, FALSE);
}

void OnRelease() {
    ReleaseCapture();
    const Key* key = keyboard.pressed;
    keyboard.pressed = nullptr;
    if (key == nullptr) {
        return;
    }
    if (key->kind == KeyKind::Hide) {
        LowerKeyboard();
        return;
    }
    if (key->kind == KeyKind::Shift) {
        keyboard.shift = !keyboard.shift;
    } else {
        SendKey(*key);
    }
    InvalidateRect(keyboard.window, nullptr, FALSE);
}

// Without a window manager Wine lifts the dialog over a window just shown, some time after that.
void StayAboveDialog() {
    HWND dialog = GetWindow(keyboard.window, GW_OWNER);
    HWND below = keyboard.window;
    while (below != nullptr && below != dialog) {
        below = GetWindow(below, GW_HWNDNEXT);
    }
    if (below == nullptr) {
        SetWindowPos(keyboard.window, HWND_TOP, 0, 0, 0, 0, SWP_NOACTIVATE | SWP_NOMOVE | SWP_NOSIZE);
    }
}

LRESULT CALLBACK KeyboardProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_MOUSEACTIVATE:
            return MA_NOACTIVATE;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            OnPress(lParam);
            return 0;
        case WM_LBUTTONUP:
            OnRelease();
            return 0;
        case WM_PAINT:
            PaintKeyboard(window);
            return 0;
        case WM_TIMER:
            StayAboveDialog();
            return 0;
        case WM_NCDESTROY:
            keyboard = {};
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

void RegisterKeyboardClass() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = KeyboardProc;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_3DSHADOW + 1);
    windowClass.lpszClassName = kKeyboardClass;
    RegisterClassW(&windowClass);
}

}  // namespace

void RaiseKeyboard(HWND window, const RECT& place, int scale) {
    HWND dialog = GetAncestor(window, GA_ROOT);
    if (keyboard.window != nullptr && GetWindow(keyboard.window, GW_OWNER) == dialog) {
        return;
    }
    LowerKeyboard();
    RegisterKeyboardClass();
    keyboard.scale = scale;
    keyboard.window = CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW, kKeyboardClass, nullptr, WS_POPUP,
                                      place.left, place.top, place.right - place.left, place.bottom - place.top, dialog,
                                      nullptr, GetModuleHandleW(nullptr), nullptr);
    ShowWindow(keyboard.window, SW_SHOWNOACTIVATE);
    SetTimer(keyboard.window, kLiftTimer, kLiftMs, nullptr);
}

void LowerKeyboard() {
    if (keyboard.window != nullptr) {
        DestroyWindow(keyboard.window);
    }
}
