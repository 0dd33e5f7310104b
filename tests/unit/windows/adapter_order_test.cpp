// Which adapters a desktop hands up, and in which order.

#include "platform/desktop/adapter_order.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr DWORD kWire = 100, kWireless = 600;  // metrics of default routes
constexpr DWORD kAddress = platform::kRankHasAddress;
constexpr DWORD kNone = platform::kRankNoAddress;
constexpr DWORD kOut = platform::kRankLeftOut;

// The indices (1, 2, ... in the system's order) that are left, in their new order.
std::vector<DWORD> Arranged(const std::vector<DWORD>& ranks) {
    std::vector<IP_ADAPTER_INFO> adapters(ranks.size());
    for (size_t i = 0; i < ranks.size(); ++i) {
        adapters[i].Index = static_cast<DWORD>(i + 1);
        adapters[i].ComboIndex = ranks[i];
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

TEST(AdapterOrder, Default_routes_come_first_and_some_are_left_out) {
    const std::pair<std::vector<DWORD>, std::vector<DWORD>> rows[] = {
        {{kWire}, {1}},
        {{kOut}, {}},
        {{kOut, kOut, kOut}, {}},
        {{kOut, kNone}, {2}},
        {{kNone, kOut}, {1}},
        {{kOut, kNone, kAddress, kWire}, {4, 3, 2}},
        {{kAddress, kWireless, kAddress, kWire}, {4, 2, 1, 3}},
        {{kNone, kAddress, kOut, kNone, kAddress}, {2, 5, 1, 4}},
        {{kWire, kWireless, kAddress, kNone, kOut}, {1, 2, 3, 4}},
        {{platform::kRankHighestMetric, 0}, {2, 1}},
    };
    for (const auto& [ranks, indices] : rows) {
        EXPECT_EQ(Arranged(ranks), indices);
    }
}
