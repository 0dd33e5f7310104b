// diagnostics/detector_list_window.h - the detector's list view.
#pragma once

#include "diagnostics/detector_row.h"
#include "platform/controls.h"

// Gives the list its columns and images. The caller owns the images and takes them from the list before it destroys
// them; null when they could not be made.
HIMAGELIST SetUpDetectorList(HWND list);

// Adds the row at the top.
void AddDetectorRow(HWND list, const DetectorRow& row);

void ReadDetectorCells(HWND list, int row, DetectorCells& cells);

// Image and number (last byte of the address) of a row.
struct RowMark {
    DetectorImage image;
    int order;
};
RowMark ReadRowMark(HWND list, int row);

// Rows move while a question is open, so the row is found again by its number.
void SetImageOfRow(HWND list, const RowMark& mark);

// Orders the rows by the last byte of their addresses.
void SortDetectorRows(HWND list);
