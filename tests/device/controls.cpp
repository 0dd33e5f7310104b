// The controls of dialogs, as far as the library asks them what it or a person told them.

#include "tests/device/handheld.h"

#include <algorithm>

namespace {

struct Item {  // LVITEMW
    uint32_t mask, row, column, state, stateMask;
    Address text;
    uint32_t room;
    int32_t image;
    uint32_t data;
};
constexpr uint32_t kHasText = 1, kHasImage = 2, kHasData = 4;

struct Call {
    Window& control;
    uint32_t wParam;
    uint32_t lParam;

    Item& ItemAt() const { return *At<Item>(lParam); }
};

int64_t ResetList(const Call& call) {
    call.control.items.clear();
    call.control.rows.clear();
    call.control.text.clear();
    return call.control.selected = -1;
}

int64_t AddEntry(const Call& call) {
    call.control.items.push_back(At<char16_t>(call.lParam));
    return static_cast<int64_t>(call.control.items.size() - 1);
}

int64_t ChooseEntry(const Call& call) {
    call.control.text = call.control.items.at(call.wParam);
    return call.control.selected = static_cast<int32_t>(call.wParam);
}

int64_t SetItem(const Call& call) {
    const Item& item = call.ItemAt();
    ListRow& row = call.control.rows.at(item.row);
    if ((item.mask & kHasText) != 0) {
        row.cells[item.column] = At<char16_t>(item.text);
    }
    row.image = (item.mask & kHasImage) != 0 ? item.image : row.image;
    row.data = (item.mask & kHasData) != 0 ? item.data : row.data;
    return 1;
}

int64_t InsertItem(const Call& call) {
    Item& item = call.ItemAt();
    item.row = std::min(item.row, static_cast<uint32_t>(call.control.rows.size()));
    call.control.rows.insert(call.control.rows.begin() + item.row, ListRow());
    SetItem(call);
    return item.row;
}

int64_t GetItem(const Call& call) {
    const ListRow& row = call.control.rows.at(call.ItemAt().row);
    call.ItemAt().image = row.image;
    call.ItemAt().data = row.data;
    return 1;
}

int64_t SetItemText(const Call& call) {
    call.control.rows.at(call.wParam).cells[call.ItemAt().column] = At<char16_t>(call.ItemAt().text);
    return 1;
}

int64_t GetItemText(const Call& call) {
    const std::u16string& cell = call.control.rows.at(call.wParam).cells[call.ItemAt().column];
    auto* text = At<char16_t>(call.ItemAt().text);
    text[cell.copy(text, call.ItemAt().room - 1)] = 0;
    return static_cast<int64_t>(cell.size());
}

// By data alone: LVFINDINFOW's flags, text, data.
int64_t FindItem(const Call& call) {
    const auto& rows = call.control.rows;
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [&](const ListRow& row) { return row.data == At<uint32_t>(call.lParam)[2]; });
    return found != rows.end() ? found - rows.begin() : -1;
}

// The guest's comparison says 1 for rows that are to be swapped, and otherwise 0.
int64_t SortItems(const Call& call) {
    auto& rows = call.control.rows;
    for (size_t i = 1; i < rows.size(); ++i) {
        for (size_t j = i; j > 0 && CallGuest(call.lParam, {rows[j - 1].data, rows[j].data, call.wParam}) == 1; --j) {
            std::swap(rows[j - 1], rows[j]);
        }
    }
    return 1;
}

constexpr struct {
    uint32_t message;
    int64_t (*answer)(const Call& call);
} kMessages[] = {
    {0x000C, [](const Call& call) -> int64_t { return call.control.text = At<char16_t>(call.lParam), 1; }},
    {0x00F0, [](const Call& call) -> int64_t { return call.control.check; }},
    {0x00F1, [](const Call& call) -> int64_t { return call.control.check = call.wParam; }},
    {0x0143, AddEntry},
    {0x0147, [](const Call& call) -> int64_t { return call.control.selected; }},
    {0x014B, ResetList},
    {0x014E, ChooseEntry},
    {0x014F, [](const Call& call) -> int64_t { return call.control.isDroppedDown = call.wParam != 0; }},
    {0x0157, [](const Call& call) -> int64_t { return call.control.isDroppedDown; }},
    {0x1004, [](const Call& call) -> int64_t { return static_cast<int64_t>(call.control.rows.size()); }},
    {0x1009, ResetList},
    {0x100C, [](const Call& call) -> int64_t { return call.control.selected; }},
    {0x102B, [](const Call& call) -> int64_t { return call.control.selected = static_cast<int32_t>(call.wParam); }},
    {0x1030, SortItems},
    {0x104B, GetItem},
    {0x104C, SetItem},
    {0x104D, InsertItem},
    {0x1053, FindItem},
    {0x1073, GetItemText},
    {0x1074, SetItemText},
};

}  // namespace

uint32_t SendToControl(Window& control, uint32_t message, uint32_t wParam, uint32_t lParam) {
    const auto* row = std::find_if(std::begin(kMessages), std::end(kMessages),
                                   [&](const auto& candidate) { return candidate.message == message; });
    return row != std::end(kMessages) ? static_cast<uint32_t>(row->answer({control, wParam, lParam})) : 1;
}
