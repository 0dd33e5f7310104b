// The hit test of the strip. The ranges are wider by one pixel than the icons they cover.

#include "item/tap_dispatch.h"

#include "item/item_state.h"
#include "resources/resource_ids.h"

namespace {

struct IconRange {
    uint32_t left;  // logical pixels; both bounds inclusive, doubled on a high-resolution screen
    Tool tool;
};

constexpr uint32_t kRangeWidth = 16;
constexpr uint32_t kRowTop = 4;  // not doubled

// In test order.
constexpr IconRange kRanges[] = {
    {50, {IDD_SIGNAL, kNoTool, nullptr}},
    {145, {IDD_SCANNER, IDD_SCANNER_LANDSCAPE, nullptr}},
    {164, {IDD_WIRELESS_DETAILS, kNoTool, nullptr}},
    {69, {IDD_USAGE, IDD_USAGE_LANDSCAPE, nullptr}},
    {88, {IDD_DHCP, kNoTool, nullptr}},
    {107, {IDD_PING, IDD_PING_LANDSCAPE, nullptr}},
    {183, {IDD_DETECTOR, kNoTool, nullptr}},
    {202, {kNoTool, kNoTool, L"cplmain.cpl,17"}},
    {221, {kNoTool, kNoTool, L"cplmain.cpl,19"}},
    {126, {IDD_ADAPTER_DETAILS, IDD_ADAPTER_DETAILS_LANDSCAPE, nullptr}},
};

bool IsWithin(uint32_t value, uint32_t from, uint32_t to) {
    return value >= from && value <= to;
}

}  // namespace

const Tool* FindToolAt(uint32_t x, uint32_t y) {
    const auto scale = static_cast<uint32_t>(ScreenScale());
    if (!IsWithin(y, kRowTop, kRangeWidth * scale + kRowTop)) {
        return nullptr;
    }
    for (const IconRange& range : kRanges) {
        if (IsWithin(x, range.left * scale, (range.left + kRangeWidth) * scale)) {
            return &range.tool;
        }
    }
    return nullptr;
}

bool IsOnMiniGraph(uint32_t x, uint32_t y) {
    return IsHiResScreen() ? IsWithin(y, 3, 36) && IsWithin(x, 3, 91) : IsWithin(y, 1, 23) && IsWithin(x, 3, 47);
}
