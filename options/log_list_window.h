// options/log_list_window.h - the list of monthly logs on the "Options" page.
#pragma once

#include "platform/system.h"

// Columns "Year" and "Month", whole rows selected.
void SetUpLogList(HWND list);

// Shows the logs of the data folder by year and month. Where there is none at all the rows shown before stay.
void FillLogList(HWND list);

// Both ask over `page` before they delete. Without a selected row DeleteSelectedLog does nothing.
void DeleteAllListedLogs(HWND page, HWND list);
void DeleteSelectedLog(HWND page, HWND list);
