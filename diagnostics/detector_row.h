// diagnostics/detector_row.h - what the detector shows of a host, and what a tap on a row does.
#pragma once

#include "diagnostics/report.h"
#include "diagnostics/scan.h"

// Images of a row.
enum DetectorImage : int { kIntruderImage = 0, kSafeImage = 1 };

struct DetectorRow {
    DetectorCells cells;
    DetectorImage image;
    int order;  // last byte of the address
};

// Describes a host that has answered. The device itself is always safe and, where the ARP table did not know it, gets
// its own hardware address into the record.
void DescribeHost(HostRecord& host, DetectorRow& row);

struct ScanProgress {
    int finished;  // hosts that have answered or will not
    bool complete;
    int Percent() const { return finished * 100 / kScanHosts; }
};

// Asks whether the host of a tapped row should go into the safe list or out of it, and does so. Returns the row's new
// image, or its old one when nothing was changed: the device itself, a host without a hardware address, the answer No,
// or a list that could not be written.
DetectorImage ToggleSafe(HWND owner, const DetectorCells& cells, DetectorImage image);
