// The access-point list as a driver, or the air, may give it.

#include "tests/fuzz/fuzzer.h"
#include "tests/support/access_point_list.h"
#include "wireless/access_point_texts.h"
#include "wireless/access_points.h"

namespace {

void MergeList(std::span<const uint8_t> list) {
    AccessPointTable table;
    ResetAccessPoints(table);
    MergeAccessPoints(table, list);
    const int count = table.count;
    Demand(count >= 0 && count <= kMostAccessPoints && static_cast<size_t>(count) <= list.size());
    AccessPointTexts texts;
    for (int i = 0; i < count; ++i) {
        Demand(strnlen(table.entries[i].ssid, kSsidBytes + 1) <= kSsidBytes);
        DescribeSelectedAccessPoint(table.entries[i], texts);
    }
    MergeAccessPoints(table, list);
    Demand(table.count == count || count == kMostAccessPoints);  // all are known by now
}

std::vector<Bytes> Lists() {
    AccessPointListBuilder full;
    for (uint8_t i = 0; i <= kMostAccessPoints; ++i) {
        full.Add("", i, -50);
    }
    return {AccessPointListBuilder().Add("home", 1, -60, 1).Add(std::string(32, 's'), 2, -200, 0, 0).Value(),
            AccessPointListBuilder().Add("long", 1, -60).WithSsidLength(4000000000u).WithCount(9).Value(),
            AccessPointListBuilder().Add("still", 1, -60).Add("", 2, 0).WithLength(0, 0).Value(), full.Value()};
}

const RegisteredFuzzer kFuzzer(
    {"access_points", {"wireless/access_points.cpp", "wireless/access_point_texts.cpp"}, MergeList, Lists});

}  // namespace
