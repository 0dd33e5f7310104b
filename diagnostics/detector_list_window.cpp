// Columns, rows and images of the detector's list.

#include "diagnostics/detector_list_window.h"

#include "item/item_state.h"
#include "platform/icons.h"
#include "platform/list_view.h"
#include "resources/resource_ids.h"

namespace {

struct Column {
    const wchar_t* heading;
    int width;  // pixels on any screen
};
constexpr Column kColumns[] = {{L"Host", 80}, {L"IP", 120}, {L"Mac Address", 160}};

HIMAGELIST LoadImages() {
    constexpr int kSide = 16;
    constexpr int kIcons[] = {IDI_DETECTOR_INTRUDER, IDI_DETECTOR_SAFE};
    HIMAGELIST images = ImageList_Create(kSide, kSide, ILC_COLOR, 2, 0);
    for (const int number : kIcons) {
        if (HICON icon = platform::LoadModuleIcon(itemState.instance, number)) {
            ImageList_AddIcon(images, icon);
            DestroyIcon(icon);
        }
    }
    return images;
}

}  // namespace

HIMAGELIST SetUpDetectorList(HWND list) {
    HIMAGELIST images = LoadImages();
    SendMessageW(list, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images));
    int index = 0;
    for (const Column& column : kColumns) {
        platform::InsertColumn(list, index++, column.heading, column.width);
    }
    return images;
}

void AddDetectorRow(HWND list, const DetectorRow& row) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
    item.pszText = const_cast<wchar_t*>(row.cells.host);
    item.iImage = row.image;
    item.lParam = row.order;
    if (SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)) < 0) {
        return;
    }
    platform::SetCell(list, 0, 1, row.cells.address);
    if (row.cells.mac[0] != 0) {
        platform::SetCell(list, 0, 2, row.cells.mac);
    }
}

void ReadDetectorCells(HWND list, int row, DetectorCells& cells) {
    platform::ReadCell(list, row, 0, cells.host);
    platform::ReadCell(list, row, 1, cells.address);
    platform::ReadCell(list, row, 2, cells.mac);
}

RowMark ReadRowMark(HWND list, int row) {
    LVITEMW item = {};
    item.mask = LVIF_IMAGE | LVIF_PARAM;
    item.iItem = row;
    SendMessageW(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return {item.iImage == kSafeImage ? kSafeImage : kIntruderImage, static_cast<int>(item.lParam)};
}

void SetImageOfRow(HWND list, const RowMark& mark) {
    LVFINDINFOW wanted = {};
    wanted.flags = LVFI_PARAM;
    wanted.lParam = mark.order;
    const LRESULT row = SendMessageW(list, LVM_FINDITEMW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&wanted));
    LVITEMW item = {};
    item.mask = LVIF_IMAGE;
    item.iItem = static_cast<int>(row);
    item.iImage = mark.image;
    SendMessageW(list, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void SortDetectorRows(HWND list) {
    platform::SortRowsByData(list);
}
