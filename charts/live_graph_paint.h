// charts/live_graph_paint.h - paints the live graph.
#pragma once

#include "platform/system.h"

// Answers a paint message of the dialog. Without the objects that it needs, nothing is painted and the dialog stays
// invalid.
void PaintLiveGraph(HWND dialog, HPEN transmittedPen, HPEN receivedPen);
