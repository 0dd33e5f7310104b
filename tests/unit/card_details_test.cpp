// The radio settings, each from its own query, and the signal view's lines.

#include "wireless/card_details.h"

#include <gtest/gtest.h>

#include "tests/support/wireless_values.h"
#include "wireless/signal_graph.h"

namespace {

CardDetails Read() {
    CardDetails details;
    EXPECT_TRUE(ReadCardDetails(details));
    return details;
}

TEST(CardDetails, Frequencies_in_both_scales) {
    struct Row {
        uint32_t frequency;
        const wchar_t* shown;
        const wchar_t* channel;
    };
    const Row rows[] = {{2437000, L"2437000 kHz", L"(channel 6)"},
                        {24370, L"24370 kHz", L"(channel 6)"},
                        {2484000, L"2484000 kHz", L"(unknown channel)"}};
    UseWireless();
    for (const Row& row : rows) {
        scripted::system.wireless.values[OID_802_11_CONFIGURATION] = NdisFields({32, 100, 7, row.frequency});
        const CardDetails details = Read();
        EXPECT_STREQ(details.beacon, L"100 Kusec");
        EXPECT_STREQ(details.atimWindow, L"7 Kusec");
        EXPECT_STREQ(details.frequency, row.shown);
        EXPECT_STREQ(details.channel, row.channel);
    }
}

TEST(CardDetails, Names_by_the_low_byte_or_nothing) {
    UseWireless();
    auto& values = scripted::system.wireless.values;
    values[OID_802_11_AUTHENTICATION_MODE] = NdisFields({5});
    values[OID_802_11_INFRASTRUCTURE_MODE] = NdisFields({0xFF01});
    values[OID_802_11_NETWORK_TYPE_IN_USE] = NdisFields({3});
    values[OID_802_11_WEP_STATUS] = NdisFields({3});
    CardDetails details = Read();
    EXPECT_STREQ(details.authentication, L"WPANone");
    EXPECT_STREQ(details.mode, L"infrastructure mode");
    EXPECT_STREQ(details.networkType, L"");
    EXPECT_STREQ(details.wep, L"key is not supported");
    EXPECT_STREQ(details.beacon, L"");
    values[OID_802_11_AUTHENTICATION_MODE] = NdisFields({6});
    values.erase(OID_802_11_INFRASTRUCTURE_MODE);
    values[OID_802_11_NETWORK_TYPE_IN_USE] = NdisFields({1});
    details = Read();
    EXPECT_STREQ(details.authentication, L"");
    EXPECT_STREQ(details.mode, L"");
    EXPECT_STREQ(details.networkType, L"DSSS");
}

TEST(SignalGraph, Lines_by_reading) {
    struct Row {
        int32_t reading;
        int top;  // 0: no line
    };
    const Row rows[] = {{kNoSignal, 0}, {-90, 0}, {-89, 66}, {-59, 6}, {-58, 4}, {-57, 4}, {0, 4}, {0x7FFFFFFF, 4}};
    for (const Row& row : rows) {
        int32_t history[kSignalReadings];
        std::fill_n(history, kSignalReadings, kNoSignal);
        history[39] = row.reading;
        SignalLine lines[kSignalReadings];
        const size_t count = ArrangeSignalGraph(history, lines);
        ASSERT_EQ(count, row.top == 0 ? 0U : 1U) << row.reading;
        if (count == 1) {
            EXPECT_EQ(lines[0].x, 162);
            EXPECT_EQ(lines[0].bottom, 68);
            EXPECT_EQ(lines[0].top, row.top) << row.reading;
        }
    }
}

TEST(SignalGraph, Status_words_change_at_their_boundaries) {
    for (const auto& [dbm, status] : std::map<int32_t, std::wstring>{{-200, L"No Signal"},
                                                                     {-90, L"No Signal"},
                                                                     {-89, L"Very Low"},
                                                                     {-81, L"Very Low"},
                                                                     {-80, L"Low"},
                                                                     {-71, L"Low"},
                                                                     {-70, L"Good"},
                                                                     {-67, L"Good"},
                                                                     {-66, L"Very Good"}}) {
        EXPECT_EQ(SignalStatus(dbm), status) << dbm;
    }
}

}  // namespace
