// The controls of dialogs, as far as the library asks them what it or a person told them.

#include "tests/device/handheld.h"

#include <algorithm>

namespace {

constexpr uint32_t kSetText = 0x000C, kResetEntries = 0x014B, kCountRows = 0x1004, kDeleteRows = 0x1009,
                   kNextRow = 0x100C, kSortRows = 0x1030, kGetRow = 0x104B, kSetRow = 0x104C, kInsertRow = 0x104D,
                   kFindRow = 0x1053, kGetCell = 0x1073, kSetCell = 0x1074;

// Check state, chosen entry, drop-down state, selected row: a message tells it (wParam), another one asks for it.
const std::map<uint32_t, uint32_t> kTold = {{0x00F1, 0x00F0}, {0x014E, 0x0147}, {0x014F, 0x0157}, {0x102B, kNextRow}};

struct Item {  // LVITEMW
    uint32_t mask, row, column, state, stateMask;
    Address text;
    uint32_t room;
    int32_t image;
    uint32_t data;
};

void Change(ListRow& row, const Item& item) {
    constexpr uint32_t kHasText = 1, kHasImage = 2, kHasData = 4;
    if ((item.mask & kHasText) != 0) {
        row.cells[item.column] = At<char16_t>(item.text);
    }
    row.image = (item.mask & kHasImage) != 0 ? item.image : row.image;
    row.data = (item.mask & kHasData) != 0 ? item.data : row.data;
}

// The guest's comparison says 1 for rows that are to be swapped, and otherwise 0.
void Sort(std::vector<ListRow>& rows, Address compare) {
    for (size_t i = 1; i < rows.size(); ++i) {
        for (size_t j = i; j > 0 && CallGuest(compare, {rows[j - 1].data, rows[j].data, 0}) == 1; --j) {
            std::swap(rows[j - 1], rows[j]);
        }
    }
}

uint32_t AnswerForRow(std::vector<ListRow>& rows, uint32_t message, uint32_t row, Item& item) {
    switch (message) {
        case kInsertRow:
            item.row = std::min(item.row, static_cast<uint32_t>(rows.size()));
            rows.insert(rows.begin() + item.row, ListRow());
            [[fallthrough]];
        case kSetRow:
            Change(rows.at(item.row), item);
            return item.row;
        case kGetRow:
            item.image = rows.at(item.row).image;
            item.data = rows.at(item.row).data;
            return 1;
        case kSetCell:
            rows.at(row).cells[item.column] = At<char16_t>(item.text);
            return 1;
        default:
            const std::u16string& cell = rows.at(row).cells[item.column];
            At<char16_t>(item.text)[cell.copy(At<char16_t>(item.text), item.room - 1)] = 0;
            return static_cast<uint32_t>(cell.size());
    }
}

}  // namespace

uint32_t AnswerAsControl(Window& control, uint32_t message, uint32_t wParam, uint32_t lParam) {
    if (kTold.count(message) != 0) {
        return control.values[kTold.at(message)] = wParam;
    }
    switch (message) {
        case kSetText:
            control.text = At<char16_t>(lParam);
            return 1;
        case kResetEntries:
        case kDeleteRows:
            control.text.clear();
            control.rows.clear();
            control.values.clear();
            return 1;
        case kNextRow:
            return control.values.count(message) != 0 ? control.values[message] : 0xFFFFFFFF;
        case kCountRows:
            return static_cast<uint32_t>(control.rows.size());
        case kSortRows:
            Sort(control.rows, lParam);
            return 1;
        case kFindRow: {  // by data alone: LVFINDINFOW's flags, text, data
            const auto found = std::find_if(control.rows.begin(), control.rows.end(),
                                            [&](const ListRow& row) { return row.data == At<uint32_t>(lParam)[2]; });
            return found != control.rows.end() ? static_cast<uint32_t>(found - control.rows.begin()) : 0xFFFFFFFF;
        }
        case kInsertRow:
        case kSetRow:
        case kGetRow:
        case kSetCell:
        case kGetCell:
            return AnswerForRow(control.rows, message, wParam, *At<Item>(lParam));
        default:
            return control.values[message];
    }
}
