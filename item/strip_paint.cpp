// The mini graph is drawn into the item surface and reaches the strip in one copy.

#include "item/strip_paint.h"

#include "item/item_state.h"
#include "item/strip.h"
#include "platform/icons.h"
#include "platform/scoped_gdi.h"

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kSilver = RGB(192, 192, 192);

// A line whose pen could not be made is left out.
void DrawLine(HDC context, HPEN pen, POINT from, POINT to) {
    if (pen == nullptr) {
        return;
    }
    const platform::ScopedSelection selection(context, pen);
    const POINT points[] = {from, to};
    Polyline(context, points, 2);
}

void DrawGraphBackground(HDC surface) {
    const GraphGeometry& geometry = CurrentGraphGeometry();
    const platform::ScopedObject bitmap(LoadBitmapW(itemState.instance, MAKEINTRESOURCEW(geometry.background)));
    const platform::ScopedMemoryContext memory(surface);
    if (bitmap.object == nullptr || memory.context == nullptr) {
        return;
    }
    const platform::ScopedSelection selection(memory.context, bitmap.object);
    BitBlt(surface, 0, 0, geometry.width, geometry.backgroundHeight, memory.context, 0, 0, SRCCOPY);
}

void DrawMark(HDC surface, const GraphMark& mark) {
    const bool received = mark.direction == Direction::Received;
    if (mark.from.x == mark.to.x) {
        SetPixel(surface, mark.to.x, mark.to.y, received ? kBlue : kRed);
        return;
    }
    DrawLine(surface, received ? itemState.bluePen : itemState.redPen, mark.from, mark.to);
}

void DrawMiniGraph(HDC surface) {
    DrawGraphBackground(surface);
    if (itemState.sampleCount <= 0) {
        return;
    }
    GraphMark marks[kMostGraphMarks];
    const size_t count = ArrangeMiniGraph(marks);
    for (size_t i = 0; i < count; ++i) {
        DrawMark(surface, marks[i]);
    }
    const GraphGeometry& geometry = CurrentGraphGeometry();
    DrawLine(surface, itemState.silverPen, {1, geometry.baseline}, {geometry.right + 1, geometry.baseline});
}

void DeletePen(HPEN& pen) {
    if (pen != nullptr) {
        DeleteObject(pen);
        pen = nullptr;
    }
}

void DeleteSurface() {
    if (itemState.surfaceContext != nullptr) {
        DeleteDC(itemState.surfaceContext);
    }
    if (itemState.surfaceBitmap != nullptr) {
        DeleteObject(itemState.surfaceBitmap);
    }
    itemState.surfaceContext = nullptr;
    itemState.surfaceBitmap = nullptr;
    itemState.surfacePrevious = nullptr;
}

}  // namespace

void DrawStatusStrip(HDC context, bool fullPaint) {
    if (const int icon = NextSignalIcon(fullPaint); icon != 0) {
        platform::DrawModuleIcon(context, itemState.instance, icon, kSignalIconLeft * ScreenScale(), kStripIconTop);
    }
    if (itemState.surfaceContext == nullptr) {
        return;
    }
    DrawMiniGraph(itemState.surfaceContext);
    const GraphGeometry& geometry = CurrentGraphGeometry();
    BitBlt(context, geometry.left, geometry.top, kGraphCopyWidth, kGraphCopyHeight, itemState.surfaceContext, 0, 0,
           SRCCOPY);
}

void DrawItem(HDC context, bool fullPaint) {
    DrawStatusStrip(context, fullPaint);
    const bool hiRes = IsHiResScreen();
    for (const ToolIcon& tool : kToolIcons) {
        platform::DrawModuleIcon(context, itemState.instance, hiRes ? tool.hiRes : tool.normal, tool.x * ScreenScale(),
                                 kStripIconTop);
    }
}

void CreatePens() {
    const auto create = [](HPEN& pen, COLORREF color) {
        if (pen == nullptr) {
            pen = CreatePen(PS_SOLID, 1, color);
        }
    };
    create(itemState.redPen, kRed);
    create(itemState.bluePen, kBlue);
    create(itemState.silverPen, kSilver);
}

void CreateDrawingResources(HWND item) {
    if (!itemState.gdiReady) {
        const platform::ScopedWindowContext window(item);
        const GraphGeometry& geometry = CurrentGraphGeometry();
        itemState.surfaceContext = CreateCompatibleDC(window.context);
        itemState.surfaceBitmap = CreateCompatibleBitmap(window.context, geometry.width, geometry.height);
        itemState.gdiReady = itemState.surfaceContext != nullptr && itemState.surfaceBitmap != nullptr;
        if (itemState.gdiReady) {
            itemState.surfacePrevious = SelectObject(itemState.surfaceContext, itemState.surfaceBitmap);
        } else {
            DeleteSurface();
        }
    }
    CreatePens();
}

void DeleteDrawingResources() {
    if (!itemState.gdiReady) {
        return;
    }
    SelectObject(itemState.surfaceContext, itemState.surfacePrevious);
    DeleteSurface();
    DeletePen(itemState.redPen);
    DeletePen(itemState.bluePen);
    DeletePen(itemState.silverPen);
    itemState.gdiReady = false;
}
