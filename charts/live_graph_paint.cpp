// The picture is made off screen and copied at once, so that the refresh every two seconds does not flicker.

#include "charts/live_graph_paint.h"

#include "charts/chart_paint.h"
#include "charts/live_graph.h"
#include "platform/scoped_gdi.h"

#include <span>

namespace {

void DrawGraph(HDC picture, const LiveGraph& graph, HPEN transmittedPen, HPEN receivedPen) {
    for (const ChartBar& line : std::span(graph.lines).first(graph.lineCount)) {
        DrawChartLine(picture, line.traffic == Traffic::Transmitted ? transmittedPen : receivedPen, line.x, line.foot,
                      line.top);
    }
    SetTextColor(picture, RGB(0, 0, 0));
    SetBkMode(picture, TRANSPARENT);
    for (const ChartText& label : graph.labels) {
        DrawChartText(picture, label, DT_RIGHT);
    }
}

void WhitenPicture(HWND dialog, HDC picture) {
    RECT area = {};
    GetClientRect(dialog, &area);
    FillRect(picture, &area, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
}

void CopyToDialog(HDC window, HDC picture) {
    const int scale = ScreenScale();
    BitBlt(window, kLiveGraphLeft * scale, kLiveGraphTop * scale, kLiveGraphWidth * scale, kLiveGraphHeight * scale,
           picture, 0, 0, SRCCOPY);
}

}  // namespace

void PaintLiveGraph(HWND dialog, HPEN transmittedPen, HPEN receivedPen) {
    const int scale = ScreenScale();
    const ChartImage background = LiveGraphBackground();
    const platform::ScopedWindowContext window(dialog);
    const platform::ScopedObject image(LoadBitmapW(itemState.instance, MAKEINTRESOURCEW(background.bitmap)));
    const platform::ScopedObject surface(
        CreateCompatibleBitmap(window.context, kLiveGraphWidth * scale, kLiveGraphHeight * scale));
    const platform::ScopedMemoryContext imageContext(window.context);
    const platform::ScopedMemoryContext picture(window.context);
    if (window.context == nullptr || image.object == nullptr || surface.object == nullptr ||
        imageContext.context == nullptr || picture.context == nullptr) {
        return;
    }
    const platform::ScopedSelection target(picture.context, surface.object);
    WhitenPicture(dialog, picture.context);
    StretchChartImage(picture.context, imageContext.context, image.object, background);
    const platform::ScopedObject font(CreateChartFont(dialog, picture.context));
    const platform::ScopedSelection text(picture.context, font.object);
    PAINTSTRUCT paint;
    BeginPaint(dialog, &paint);
    LiveGraph graph;
    if (ArrangeLiveGraph(graph)) {
        DrawGraph(picture.context, graph, transmittedPen, receivedPen);
    }
    CopyToDialog(window.context, picture.context);
    EndPaint(dialog, &paint);
}
