// trafficlog/export.h - the export of the logged traffic, from the question to the file.
#pragma once

#include "platform/system.h"

// Asks for the range of dates and the file, modally over `owner`, and exports.
void OpenExport(HWND owner);
