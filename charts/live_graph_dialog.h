// charts/live_graph_dialog.h - the traffic of the last forty seconds, repainted every two.
#pragma once

#include "platform/system.h"

// Template IDD_LIVE_GRAPH.
INT_PTR CALLBACK LiveGraphDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
