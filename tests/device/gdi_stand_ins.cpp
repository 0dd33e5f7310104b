// Drawing: every call is written down, nothing is drawn. A handle of something else, or one released twice, is a fault.

#include "tests/device/stand_in.h"
#include "tests/device/window_state.h"

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

// What a shape says all of.
uint32_t Record(Bed& bed, const Arguments& a) {
    const CallShape& shape = ShapeOf(a.function);
    const std::string made = NoteCall(a);
    if (shape.releases) {
        return RemoveObject<Drawing>(bed, a[std::string(shape.arguments).rfind('h')]);
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
    uint32_t& held = Part<Selections>(bed).held.try_emplace({a[0], kind}, kSelectedAtFirst + kind).first->second;
    const uint32_t before = std::exchange(held, a[1]);
    NoteCall(a);
    TraceOf(bed).Select(a[0], a[1], before);
    return before;
}

// PAINTSTRUCT: context, erase, rectangle, 10 more words.
uint32_t BeginPaint(Bed& bed, const Arguments& a) {
    const uint32_t context = Record(bed, a);
    WriteGuest(bed, a[1], std::array<uint32_t, 16>{context});
    return context;
}

bool EndPaint(Bed& bed, const Arguments& a) {
    NoteCall(a);
    const auto context = ReadGuest<uint32_t>(bed, a[1]);
    TraceOf(bed).names.erase(context);
    return RemoveObject<Drawing>(bed, context);
}

// Measuring is not drawing; every character is as wide as the script says.
uint32_t DrawTextW(Bed& bed, const Arguments& a) {
    constexpr uint32_t kMeasure = 0x400;  // DT_CALCRECT
    constexpr int32_t kHeight = 12;
    if ((a[4] & kMeasure) == 0) {
        return Record(bed, a);
    }
    auto area = ReadGuest<std::array<int32_t, 4>>(bed, a[3]);
    area[2] = area[0] + device_script::kCharacterWidth * static_cast<int32_t>(ReadText(bed, a[1]).size());
    area[3] = area[1] + kHeight;
    WriteGuest(bed, a[3], area);
    return kHeight;
}

}  // namespace

StandInTable GdiStandIns() {
    StandInTable table;
    for (const CallShape& shape : CallShapes()) {
        table.push_back({shape.name, Record});
    }
    const StandInTable others = {
        {"BeginPaint", BeginPaint},
        {"DrawTextW", DrawTextW},
        {"EndPaint", EndPaint},
        {"GetPixel", [](Bed&) { return 0; }},
        {"GetSysColorBrush", Ignore},
        {"GetTextFaceW", [](Bed& bed, uint32_t, uint32_t, Address face) { return WriteText(bed, face, u"Tahoma"), 7; }},
        {"SelectObject", SelectObject},
    };
    table.insert(table.end(), others.begin(), others.end());
    return table;
}
