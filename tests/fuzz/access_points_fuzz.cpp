// The access-point list as a driver, or the air, may give it.

#include "wireless/access_point_texts.h"
#include "wireless/access_points.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    AccessPointTable table;
    ResetAccessPoints(table);
    MergeAccessPoints(table, {data, size});
    AccessPointTexts texts;
    for (int i = 0; i < table.count; ++i) {
        DescribeSelectedAccessPoint(table.entries[i], texts);
    }
    return 0;
}
