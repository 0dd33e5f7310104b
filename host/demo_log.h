// host/demo_log.h - a made-up traffic log, so that a demonstration's charts have something to show.
#pragma once

#include "platform/system.h"

#include <string>

// Writes the log files of the present month, up to the hour before `now`, and of the two months before it into the
// folder. False when one cannot be written. The same hour always gets the same traffic.
bool WriteDemoLogs(const std::wstring& folder, const SYSTEMTIME& now);
