// Drawing: every call is written down, nothing is drawn. A handle of something else, or one released twice, is a fault.

#include "tests/device/window_state.h"

#include <algorithm>

namespace {

struct Drawing : Object {};  // contexts and what is selected into them

// What a context holds of each kind; other objects than the library's at first.
enum Kind : uint32_t { kBitmap, kPen, kFont, kKinds };
struct Selections {
    std::map<std::pair<uint32_t, uint32_t>, uint32_t> held;  // by context and kind
};

uint32_t KindOf(Bed& bed, uint32_t object) {
    const std::string name = TraceOf(bed).NameOf(object);
    const bool isFirst = object - kSelectedAtFirst < kKinds;
    return isFirst ? object - kSelectedAtFirst : name[0] == 'f' ? kFont : name.rfind("pe", 0) == 0 ? kPen : kBitmap;
}

template <size_t Size>
struct FunctionName {
    char text[Size];
    consteval FunctionName(const char (&name)[Size]) { std::copy_n(name, Size, text); }  // NOLINT: implicit on purpose
};

uint32_t LastHandle(const CallShape& shape, const Arguments& a) {
    const std::string letters = shape.arguments;
    return a[letters.rfind('h')];
}

template <FunctionName name>
uint32_t Record(Bed& bed, const Arguments& a) {
    const CallShape& shape = ShapeOf(name.text);
    const std::string made = NoteCall(bed, name.text, a);
    if (shape.releases) {
        return RemoveObject<Drawing>(bed, LastHandle(shape, a));
    }
    if (made.empty()) {
        return 1;
    }
    const uint32_t handle = AddObject(bed, std::make_unique<Drawing>());
    Name(bed, handle, made);
    return handle;
}

uint32_t SelectObject(Bed& bed, const Arguments& a) {
    if (FindObject<Drawing>(bed, a[0]) == nullptr) {
        AddFault(bed, "selects into what is no context");
    }
    const uint32_t kind = KindOf(bed, a[1]);
    const auto [held, first] = Part<Selections>(bed).held.try_emplace({a[0], kind}, kSelectedAtFirst + kind);
    const uint32_t before = held->second;
    held->second = a[1];
    NoteCall(bed, "SelectObject", a);
    TraceOf(bed).Select(a[0], a[1], before);
    return before;
}

// PAINTSTRUCT: context, erase, rectangle, 10 more words.
uint32_t BeginPaint(Bed& bed, const Arguments& a) {
    const uint32_t context = Record<"BeginPaint">(bed, a);
    WriteGuest(bed, a[1], std::array<uint32_t, 16>{context});
    return context;
}

uint32_t EndPaint(Bed& bed, const Arguments& a) {
    NoteCall(bed, "EndPaint", a);
    const auto context = ReadGuest<uint32_t>(bed, a[1]);
    TraceOf(bed).names.erase(context);
    return RemoveObject<Drawing>(bed, context);
}

// Measuring is not drawing; every character is as wide as the script says.
uint32_t DrawTextW(Bed& bed, const Arguments& a) {
    constexpr uint32_t kMeasure = 0x400;  // DT_CALCRECT
    constexpr int32_t kHeight = 12;
    if ((a[4] & kMeasure) == 0) {
        return Record<"DrawTextW">(bed, a);
    }
    auto area = ReadGuest<std::array<int32_t, 4>>(bed, a[3]);
    area[2] = area[0] + device_script::kCharacterWidth * static_cast<int32_t>(ReadText(bed, a[1]).size());
    area[3] = area[1] + kHeight;
    WriteGuest(bed, a[3], area);
    return kHeight;
}

uint32_t GetTextFaceW(Bed& bed, const Arguments& a) {
    WriteText(bed, a[2], u"Tahoma");
    return 7;
}

constexpr StandInRow kRows[] = {
    {"BeginPaint", BeginPaint},
    {"BitBlt", Record<"BitBlt">},
    {"CreateCompatibleBitmap", Record<"CreateCompatibleBitmap">},
    {"CreateCompatibleDC", Record<"CreateCompatibleDC">},
    {"CreateFontIndirectW", Record<"CreateFontIndirectW">},
    {"CreatePen", Record<"CreatePen">},
    {"DeleteDC", Record<"DeleteDC">},
    {"DeleteObject", Record<"DeleteObject">},
    {"DestroyIcon", Record<"DestroyIcon">},
    {"DrawIconEx", Record<"DrawIconEx">},
    {"DrawTextW", DrawTextW},
    {"EndPaint", EndPaint},
    {"FillRect", Record<"FillRect">},
    {"GetDC", Record<"GetDC">},
    {"GetPixel", [](Bed&, const Arguments&) { return 0U; }},
    {"GetStockObject", Record<"GetStockObject">},
    {"GetSysColorBrush", [](Bed&, const Arguments&) { return 1U; }},
    {"GetTextFaceW", GetTextFaceW},
    {"ImageList_Create", Record<"ImageList_Create">},
    {"ImageList_Destroy", Record<"ImageList_Destroy">},
    {"ImageList_ReplaceIcon", Record<"ImageList_ReplaceIcon">},
    {"LoadBitmapW", Record<"LoadBitmapW">},
    {"LoadIconW", Record<"LoadIconW">},
    {"Polyline", Record<"Polyline">},
    {"ReleaseDC", Record<"ReleaseDC">},
    {"SelectObject", SelectObject},
    {"SetBkColor", Record<"SetBkColor">},
    {"SetBkMode", Record<"SetBkMode">},
    {"SetPixel", Record<"SetPixel">},
    {"SetTextColor", Record<"SetTextColor">},
    {"StretchBlt", Record<"StretchBlt">},
};

}  // namespace

std::span<const StandInRow> GdiStandIns() {
    return kRows;
}
