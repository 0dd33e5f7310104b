// Pictures are copied window by window from the windows' own contexts: PrintWindow gives an empty frame on some
// systems, and the monitor's context is missing where there is no monitor.

#include "host/picture.h"

#include "platform/scoped.h"
#include "platform/scoped_gdi.h"

#include <algorithm>

namespace {

BITMAPINFOHEADER HeaderOf(int width, int height) {
    BITMAPINFOHEADER header = {};
    header.biSize = sizeof(header);
    header.biWidth = width;
    header.biHeight = -height;
    header.biPlanes = 1;
    header.biBitCount = 32;
    header.biCompression = BI_RGB;
    return header;
}

void PaintPending(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

// One window of the composition; its place is relative to the frame's client area.
struct Layer {
    HWND window;
    RECT place;
    bool wholeWindow;  // with its border, else the client area alone
};

void CopyLayer(HDC target, const Layer& layer) {
    const DWORD kind = layer.wholeWindow ? DCX_WINDOW : 0;
    HDC source = GetDCEx(layer.window, nullptr, DCX_CACHE | kind);
    if (source == nullptr) {
        return;
    }
    const RECT& place = layer.place;
    BitBlt(target, place.left, place.top, place.right - place.left, place.bottom - place.top, source, 0, 0, SRCCOPY);
    ReleaseDC(layer.window, source);
}

Picture Compose(const std::vector<Layer>& layers) {
    Picture picture;
    for (const Layer& layer : layers) {
        picture.width = std::max(picture.width, static_cast<int>(layer.place.right));
        picture.height = std::max(picture.height, static_cast<int>(layer.place.bottom));
    }
    const BITMAPINFOHEADER header = HeaderOf(picture.width, picture.height);
    void* bits = nullptr;
    const platform::ScopedMemoryContext memory(nullptr);
    const platform::ScopedObject bitmap(CreateDIBSection(memory.context, reinterpret_cast<const BITMAPINFO*>(&header),
                                                         DIB_RGB_COLORS, &bits, nullptr, 0));
    if (bitmap.object == nullptr) {
        return {};
    }
    {
        const platform::ScopedSelection selection(memory.context, bitmap.object);
        for (const Layer& layer : layers) {
            CopyLayer(memory.context, layer);
        }
        GdiFlush();
    }
    const auto* first = static_cast<const uint32_t*>(bits);
    picture.pixels.assign(first, first + static_cast<size_t>(picture.width) * static_cast<size_t>(picture.height));
    std::for_each(picture.pixels.begin(), picture.pixels.end(), [](uint32_t& pixel) { pixel &= 0xFFFFFF; });
    return picture;
}

Layer ClientLayer(HWND window) {
    RECT client = {};
    GetClientRect(window, &client);
    return {window, client, false};
}

BOOL CALLBACK CollectVisible(HWND window, LPARAM list) {
    if (IsWindowVisible(window)) {
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    }
    return TRUE;
}

}  // namespace

COLORREF Picture::At(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height) {
        return CLR_INVALID;
    }
    const uint32_t pixel = pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
    return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
}

Picture TakePicture(HWND window) {
    PaintPending(window);
    return Compose({ClientLayer(window)});
}

Picture TakeScreenPicture(HWND frame) {
    std::vector<HWND> windows;  // topmost first
    EnumThreadWindows(GetWindowThreadProcessId(frame, nullptr), CollectVisible, reinterpret_cast<LPARAM>(&windows));
    std::erase(windows, frame);
    PaintPending(frame);
    POINT origin = {};
    ClientToScreen(frame, &origin);
    std::vector<Layer> layers = {ClientLayer(frame)};
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        PaintPending(*window);
        Layer layer = {*window, {}, true};
        GetWindowRect(*window, &layer.place);
        OffsetRect(&layer.place, -origin.x, -origin.y);
        layers.push_back(layer);
    }
    return Compose(layers);
}

bool SavePicture(const Picture& picture, const wchar_t* file) {
    const BITMAPINFOHEADER header = HeaderOf(picture.width, picture.height);
    const auto pixelBytes = static_cast<DWORD>(picture.pixels.size() * sizeof(uint32_t));
    // The two-byte type stands before a record that is aligned to four bytes.
    constexpr WORD kType = 0x4D42;
    constexpr DWORD kPixelOffset = 14 + sizeof(BITMAPINFOHEADER);
    const DWORD rest[] = {kPixelOffset + pixelBytes, 0, kPixelOffset};
    const platform::ScopedHandle output(
        CreateFileW(file, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    return output.IsOpen() && WriteFile(output.handle, &kType, sizeof(kType), &written, nullptr) &&
           WriteFile(output.handle, rest, sizeof(rest), &written, nullptr) &&
           WriteFile(output.handle, &header, sizeof(header), &written, nullptr) &&
           WriteFile(output.handle, picture.pixels.data(), pixelBytes, &written, nullptr);
}
