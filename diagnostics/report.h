// diagnostics/report.h - the intruder report: the detector's rows as a CSV file in the documents folder.
#pragma once

#include "diagnostics/mac_address.h"

// The cells of one row of the detector's list.
struct DetectorCells {
    wchar_t host[128];    // NetBIOS name, may be empty
    wchar_t address[24];  // dotted
    wchar_t mac[24];      // empty when it is not known
};

// The rows to report, by their place in the list.
struct ReportRows {
    int count;
    void (*read)(HWND list, int row, DetectorCells& cells);
    HWND list;
};

// Writes the rows to the first of QuorvaneRpt001.csv to QuorvaneRpt599.csv that does not exist and tells the outcome
// over `owner`; nothing happens when all exist. A host is an intruder unless its address is in the safe list or is
// ownMac; one without a known address is.
void ExportIntruderReport(HWND owner, const MacAddress& ownMac, const ReportRows& rows);
