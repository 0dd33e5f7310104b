// What only a desktop has: the order of its adapters, the Today host's command line and its keyboard.
#include "platform/desktop/adapter_order.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>

#include "host/command_line.h"
#include "host/keyboard_keys.h"
#include "tests/support/texts.h"

namespace {

// The indices (1, 2, ... in the system's order) that are left, in their new order.
std::wstring Arranged(const std::vector<DWORD>& ranks) {
    std::vector<IP_ADAPTER_INFO> adapters(ranks.size());
    for (size_t i = 0; i < ranks.size(); ++i) {
        adapters[i].Index = static_cast<DWORD>(i + 1);
        adapters[i].ComboIndex = ranks[i];
        adapters[i].Next = i + 1 < ranks.size() ? &adapters[i + 1] : nullptr;
    }
    std::wstring indices;
    const IP_ADAPTER_INFO* adapter = platform::ArrangeAdapters(adapters.data()) ? adapters.data() : nullptr;
    for (; adapter != nullptr; adapter = adapter->Next) {
        EXPECT_EQ(adapter->ComboIndex, 0u);
        indices += std::to_wstring(adapter->Index);
    }
    return indices;
}

TEST(AdapterOrder, Default_routes_come_first_and_some_are_left_out) {
    constexpr DWORD kWire = 100, kWireless = 600;  // metrics of default routes
    constexpr DWORD kAddress = platform::kRankHasAddress, kNone = platform::kRankNoAddress,
                    kOut = platform::kRankLeftOut;
    using Ranks = std::vector<DWORD>;
    EXPECT_EQ(Each(Arranged, {Ranks{kWire}, {kOut, kOut, kOut}, {kOut, kNone}, {kNone, kOut}}), L"1||2|1");
    EXPECT_EQ(Each(Arranged, {Ranks{kOut, kNone, kAddress, kWire, kOut}, {kAddress, kWireless, kAddress, kWire}}),
              L"432|4213");
    EXPECT_EQ(Each(Arranged, {Ranks{kNone, kAddress, kOut, kNone, kAddress}, {platform::kRankHighestMetric, 0}}),
              L"2514|21");
}

TEST(HostCommandLine, Refuses_what_it_does_not_understand) {
    const wchar_t* wrong[] = {L"--sized",          L"extra",      L"--size",        L"--size 240",
                              L"--size 240x",      L"--size 2x2", L"--size 1x320",  L"--size 2001x9",
                              L"--screenshot",     L"--reload 0", L"--seconds ten", L"--seconds -1",
                              L"--size 240x320x1", L"--tap 1;2",  L"--tap -1,2",    L"--seconds 9999999999999"};
    HostOptions options;
    std::wstring error;
    for (const wchar_t* line : wrong) {
        std::wistringstream words(line);
        error.clear();
        EXPECT_FALSE(ParseCommandLine({std::istream_iterator<std::wstring, wchar_t>(words), {}}, options, error))
            << line;
        EXPECT_FALSE(error.empty());
    }
    EXPECT_FALSE(ParseCommandLine({L"--library", L""}, options, error));
    EXPECT_TRUE(ParseCommandLine({L"--reload", L"3", L"--help"}, options, error));
    EXPECT_EQ(std::pair(options.reloads, options.help), std::pair(3, true));
}

TEST(HostKeyboard, Every_pixel_belongs_to_a_key_and_every_host_name_can_be_typed) {
    for (const SIZE size : {SIZE{240, 80}, SIZE{321, 83}, SIZE{640, 160}}) {
        std::wstring characters;
        for (LONG pixel = 0; pixel < size.cx * size.cy; ++pixel) {
            const Key* key = FindKey(size, {pixel % size.cx, pixel / size.cx});
            ASSERT_NE(key, nullptr) << pixel;
            characters += key->normal;
        }
        EXPECT_EQ(std::wstring(L"abcdefghijklmnopqrstuvwxyz0123456789.-_\\:/ \b").find_first_not_of(characters),
                  std::wstring::npos);
    }
    EXPECT_EQ(FindKey({240, 80}, {240, 10}), nullptr);
    EXPECT_EQ(FindKey({240, 80}, {10, -1}), nullptr);
}

}  // namespace
