// host/demo_log.h - a made-up traffic log, so that a demonstration's charts have something to show.
#pragma once

#include "trafficlog/log_file.h"

#include <string>
#include <vector>

// The records of one month up to `end` (exclusive hours of its last day count when it lies in that month). The same
// month always gives the same records.
std::vector<TrafficLogRecord> MakeDemoMonth(int year, int month, const SYSTEMTIME& end);

// Writes the log files of the present month and the two before it into the folder. False when one cannot be written.
bool WriteDemoLogs(const std::wstring& folder, const SYSTEMTIME& now);
