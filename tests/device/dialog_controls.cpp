// The controls of dialogs, as far as the library speaks to them: what they are told they keep and answer.

#include "tests/device/window_state.h"

#include <algorithm>

namespace {

struct Call {
    Bed& bed;
    Window& control;
    uint32_t wParam;
    uint32_t lParam;
};
struct MessageRow {
    const char* kind;  // null: of every kind
    uint32_t message;
    int64_t (*answer)(const Call& call);
};

// Words of an LVITEMW.
constexpr uint32_t kMask = 0, kRow = 4, kColumn = 8, kItemText = 20, kRoom = 24, kImage = 28, kData = 32;
constexpr uint32_t kHasText = 1, kHasImage = 2, kHasData = 4;

uint32_t Field(const Call& call, uint32_t field) {
    return ReadGuest<uint32_t>(call.bed, call.lParam + field);
}

std::u16string TextOf(const Call& call) {
    return ReadText(call.bed, call.lParam);
}

int64_t Ignore(const Call&) {
    return 1;
}

int64_t SetText(const Call& call) {
    call.control.text = TextOf(call);
    return 1;
}

int64_t ResetList(const Call& call) {
    call.control.items.clear();
    call.control.selected = -1;
    call.control.text.clear();
    return 0;
}

int64_t DeleteItems(const Call& call) {
    call.control.rows.clear();
    return call.control.selected = -1;
}

int64_t AddEntry(const Call& call) {
    call.control.items.push_back(TextOf(call));
    return static_cast<int64_t>(call.control.items.size() - 1);
}

int64_t ChooseEntry(const Call& call) {
    call.control.selected = call.wParam < call.control.items.size() ? static_cast<int32_t>(call.wParam) : -1;
    call.control.text = call.control.selected >= 0 ? call.control.items[call.wParam] : u"";
    return call.wParam;
}

int64_t SetDate(const Call& call) {
    call.control.date = ReadGuest<std::array<uint16_t, 8>>(call.bed, call.lParam);
    return 1;
}

int64_t InsertColumn(const Call& call) {
    const uint32_t heading = (Field(call, 0) & 4) != 0 ? Field(call, 12) : 0;
    call.control.columns.insert(call.control.columns.begin() + call.wParam,
                                {ReadText(call.bed, heading), static_cast<int32_t>(Field(call, 8))});
    return call.wParam;
}

ListRow* RowOf(const Call& call, uint32_t row) {
    return row < call.control.rows.size() ? &call.control.rows[row] : nullptr;
}

std::u16string* CellOf(const Call& call) {
    ListRow* row = RowOf(call, call.wParam);
    return row != nullptr && Field(call, kColumn) < row->cells.size() ? &row->cells[Field(call, kColumn)] : nullptr;
}

void TakeItem(const Call& call, ListRow& row) {
    const uint32_t mask = Field(call, kMask);
    if ((mask & kHasText) != 0) {
        row.cells[0] = ReadText(call.bed, Field(call, kItemText));
    }
    row.image = (mask & kHasImage) != 0 ? static_cast<int32_t>(Field(call, kImage)) : row.image;
    row.data = (mask & kHasData) != 0 ? Field(call, kData) : row.data;
}

int64_t InsertItem(const Call& call) {
    const auto place = static_cast<ptrdiff_t>(std::min<size_t>(Field(call, kRow), call.control.rows.size()));
    ListRow row = {std::vector<std::u16string>(std::max<size_t>(1, call.control.columns.size())), 0, 0};
    TakeItem(call, row);
    call.control.rows.insert(call.control.rows.begin() + place, row);
    return place;
}

int64_t SetItem(const Call& call) {
    ListRow* row = RowOf(call, Field(call, kRow));
    if (row != nullptr) {
        TakeItem(call, *row);
    }
    return row != nullptr;
}

int64_t GetItem(const Call& call) {
    const ListRow* row = RowOf(call, Field(call, kRow));
    if (row != nullptr) {
        WriteGuest(call.bed, call.lParam + kImage, row->image);
        WriteGuest(call.bed, call.lParam + kData, row->data);
    }
    return row != nullptr;
}

int64_t SetItemText(const Call& call) {
    std::u16string* cell = CellOf(call);
    if (cell != nullptr) {
        *cell = ReadText(call.bed, Field(call, kItemText));
    }
    return cell != nullptr;
}

int64_t GetItemText(const Call& call) {
    const std::u16string* cell = CellOf(call);
    if (cell != nullptr && Field(call, kRoom) != 0) {
        WriteText(call.bed, Field(call, kItemText), cell->substr(0, Field(call, kRoom) - 1));
    }
    return cell != nullptr;
}

// By data alone: LVFINDINFOW's flags, text, data.
int64_t FindItem(const Call& call) {
    const auto& rows = call.control.rows;
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const ListRow& row) { return row.data == Field(call, 8); });
    return found != rows.end() ? found - rows.begin() : -1;
}

// The guest's comparison says 1 for rows that are to be swapped, and otherwise 0.
int64_t SortItems(const Call& call) {
    auto& rows = call.control.rows;
    for (size_t i = 1; i < rows.size(); ++i) {
        for (size_t j = i;
             j > 0 && CallGuest(call.bed, call.lParam, {rows[j - 1].data, rows[j].data, call.wParam}) == 1; --j) {
            std::swap(rows[j - 1], rows[j]);
        }
    }
    return 1;
}

constexpr char kButton[] = "button", kCombo[] = "combobox", kList[] = "syslistview32", kPicker[] = "sysdatetimepick32",
               kProgress[] = "msctls_progress32", kSpin[] = "msctls_updown32", kEdit[] = "edit";

constexpr MessageRow kMessages[] = {
    {nullptr, 0x000C, SetText},
    {kButton, 0x00F0, [](const Call& call) { return call.control.check; }},
    {kButton, 0x00F1, [](const Call& call) { return call.control.check = call.wParam; }},
    {kEdit, 0x00C5, Ignore},   // EM_LIMITTEXT
    {kCombo, 0x0141, Ignore},  // CB_LIMITTEXT
    {kCombo, 0x0143, AddEntry},
    {kCombo, 0x0147, [](const Call& call) { return call.control.selected; }},
    {kCombo, 0x014B, ResetList},
    {kCombo, 0x014E, ChooseEntry},
    {kCombo, 0x014F, [](const Call& call) -> int64_t { return call.control.droppedDown = call.wParam != 0; }},
    {kCombo, 0x0157, [](const Call& call) -> int64_t { return call.control.droppedDown; }},
    {kProgress, 0x0402, [](const Call& call) { return call.control.position = call.wParam; }},
    {kSpin, 0x0465, Ignore},  // UDM_SETRANGE
    {kSpin, 0x0467, Ignore},  // UDM_SETPOS; the library writes the number next to it itself
    {kSpin, 0x2007, Ignore},  // CCM_SETVERSION
    {kPicker, 0x1002, SetDate},
    {kPicker, 0x1032, Ignore},  // DTM_SETFORMATW
    {kList, 0x1003, Ignore},    // LVM_SETIMAGELIST
    {kList, 0x1004, [](const Call& call) { return static_cast<int64_t>(call.control.rows.size()); }},
    {kList, 0x1009, DeleteItems},
    {kList, 0x100C, [](const Call& call) { return call.control.selected; }},
    {kList, 0x102B, [](const Call& call) { return call.control.selected = call.wParam; }},
    {kList, 0x1030, SortItems},
    {kList, 0x1036, Ignore},  // styles
    {kList, 0x1037, [](const Call&) -> int64_t { return 0; }},
    {kList, 0x104B, GetItem},
    {kList, 0x104C, SetItem},
    {kList, 0x104D, InsertItem},
    {kList, 0x1053, FindItem},
    {kList, 0x1061, InsertColumn},
    {kList, 0x1073, GetItemText},
    {kList, 0x1074, SetItemText},
};

}  // namespace

uint32_t SendToControl(Bed& bed, Window& control, uint32_t message, uint32_t wParam, uint32_t lParam) {
    const auto* row = std::find_if(std::begin(kMessages), std::end(kMessages), [&](const MessageRow& candidate) {
        return candidate.message == message && (candidate.kind == nullptr || control.kind == candidate.kind);
    });
    if (row == std::end(kMessages)) {
        AddFault(bed, "message " + std::to_string(message) + " to a " + control.kind);
        return 0;
    }
    return static_cast<uint32_t>(row->answer({bed, control, wParam, lParam}));
}

ControlState DescribeWindow(const Window& control) {
    ControlState state = {control.id,      control.kind,  Narrow(control.text),
                          control.enabled, control.check, control.selected};
    for (const std::u16string& item : control.items) {
        state.items.push_back(Narrow(item));
    }
    for (const ListColumn& column : control.columns) {
        state.items.push_back(Narrow(column.heading) + " " + std::to_string(column.width));
    }
    for (const ListRow& row : control.rows) {
        state.items.push_back(std::to_string(row.image));
        for (const std::u16string& cell : row.cells) {
            state.items.back() += "|" + Narrow(cell);
        }
    }
    if (control.kind == kProgress) {
        state.text = std::to_string(control.position);
    } else if (control.kind == kPicker) {
        state.text = DateText(control.date);
    }
    return state;
}
