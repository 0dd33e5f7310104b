// platform/list_view.h - columns, cells and order of report-style list views.
#pragma once

#include "platform/controls.h"

#include <span>

namespace platform {

// Inserts a left-aligned column, `width` pixels wide. A null heading leaves its head empty.
void InsertColumn(HWND list, int index, const wchar_t* heading, int width);

void SetCell(HWND list, int row, int column, const wchar_t* text);

// The cell's text, cut to what fits; empty for a cell that is not there.
void ReadCell(HWND list, int row, int column, std::span<wchar_t> text);

// Sorts the rows by their data. The comparison answers 1 when the first of two rows has the greater data and else 0,
// never less: the list's stable merge sort needs to know only which rows are to be swapped.
void SortRowsByData(HWND list);

}  // namespace platform
