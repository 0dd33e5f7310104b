// Which adapters a desktop hands up, and in which order.

#include "platform/desktop/adapter_order.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using platform::AdapterRank;

namespace {

constexpr auto kRoute = AdapterRank::DefaultRoute;
constexpr auto kAddress = AdapterRank::HasAddress;
constexpr auto kNone = AdapterRank::NoAddress;
constexpr auto kDown = AdapterRank::Down;

// The indices (1, 2, ... in the system's order) that are left, in their new order.
std::vector<DWORD> Arranged(const std::vector<AdapterRank>& ranks) {
    std::vector<IP_ADAPTER_INFO> adapters(ranks.size());
    for (size_t i = 0; i < ranks.size(); ++i) {
        adapters[i].Index = static_cast<DWORD>(i + 1);
        adapters[i].ComboIndex = static_cast<DWORD>(ranks[i]);
        adapters[i].Next = i + 1 < ranks.size() ? &adapters[i + 1] : nullptr;
    }
    std::vector<DWORD> indices;
    const bool any = platform::ArrangeAdapters(adapters.data());
    const IP_ADAPTER_INFO* adapter = any ? adapters.data() : nullptr;
    for (; adapter != nullptr; adapter = adapter->Next) {
        EXPECT_EQ(adapter->ComboIndex, 0u);
        indices.push_back(adapter->Index);
    }
    return indices;
}

}  // namespace

TEST(AdapterOrder, The_default_route_comes_first_and_down_ones_are_left_out) {
    const struct {
        std::vector<AdapterRank> ranks;
        std::vector<DWORD> indices;
    } rows[] = {
        {{kRoute}, {1}},
        {{kDown}, {}},
        {{kDown, kDown, kDown}, {}},
        {{kDown, kNone}, {2}},
        {{kNone, kDown}, {1}},
        {{kDown, kNone, kAddress, kRoute}, {4, 3, 2}},
        {{kAddress, kAddress, kRoute, kAddress}, {3, 1, 2, 4}},
        {{kNone, kAddress, kDown, kNone, kAddress}, {2, 5, 1, 4}},
        {{kRoute, kAddress, kNone, kDown}, {1, 2, 3}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Arranged(row.ranks), row.indices);
    }
}
