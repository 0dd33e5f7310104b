// The radio settings, each from its own query, and the signal view's lines.
#include "wireless/card_details.h"

#include <gtest/gtest.h>

#include "tests/support/texts.h"
#include "tests/support/wireless_values.h"
#include "wireless/signal_graph.h"

namespace {

TEST(CardDetails, Frequencies_in_both_scales) {
    const std::pair<uint32_t, const wchar_t*> rows[] = {{2437000, L"2437000 kHz|(channel 6)"},
                                                        {24370, L"24370 kHz|(channel 6)"},
                                                        {2484000, L"2484000 kHz|(unknown channel)"}};
    UseWireless();
    for (const auto& [frequency, texts] : rows) {
        scripted::system.wireless.values[OID_802_11_CONFIGURATION] = NdisFields({32, 100, 7, frequency});
        CardDetails details;
        EXPECT_TRUE(ReadCardDetails(details));
        EXPECT_EQ(Joined({details.frequency, details.channel}), texts);
        EXPECT_EQ(Joined({details.beacon, details.atimWindow}), L"100 Kusec|7 Kusec");
    }
}

TEST(CardDetails, Names_by_the_low_byte_or_nothing) {
    UseWireless();
    const std::tuple<uint32_t, uint32_t, uint32_t, uint32_t, const wchar_t*> rows[] = {
        {5, 0xFF01, 3, 3, L"WPANone|infrastructure mode||key is not supported|"}, {6, 9, 1, 9, L"||DSSS||"}};
    for (const auto& [authentication, mode, type, wep, texts] : rows) {
        auto& values = scripted::system.wireless.values;
        values[OID_802_11_AUTHENTICATION_MODE] = NdisFields({authentication});
        values[OID_802_11_INFRASTRUCTURE_MODE] = NdisFields({mode});
        values[OID_802_11_NETWORK_TYPE_IN_USE] = NdisFields({type});
        values[OID_802_11_WEP_STATUS] = NdisFields({wep});
        CardDetails details;
        EXPECT_TRUE(ReadCardDetails(details));
        EXPECT_EQ(Joined({details.authentication, details.mode, details.networkType, details.wep, details.beacon}),
                  texts);
    }
}

TEST(SignalGraph, Lines_by_reading) {
    const std::pair<int32_t, int> rows[] = {{kNoSignal, 0}, {-90, 0}, {-89, 66}, {-59, 6},
                                            {-58, 4},       {-57, 4}, {0, 4},    {0x7FFFFFFF, 4}};
    for (const auto& [reading, top] : rows) {
        int32_t history[kSignalReadings];
        std::fill_n(history, kSignalReadings, kNoSignal);
        history[39] = reading;
        SignalLine lines[kSignalReadings];
        ASSERT_EQ(ArrangeSignalGraph(history, lines), top == 0 ? 0U : 1U) << reading;
        if (top != 0) {
            EXPECT_EQ(std::tuple(lines[0].x, lines[0].bottom, lines[0].top), std::tuple(162, 68, top)) << reading;
        }
    }
}

TEST(SignalGraph, Status_words_change_at_their_boundaries) {
    const std::pair<int32_t, const wchar_t*> rows[] = {{-90, L"No Signal"}, {-89, L"Very Low"}, {-81, L"Very Low"},
                                                       {-80, L"Low"},       {-71, L"Low"},      {-70, L"Good"},
                                                       {-67, L"Good"},      {-66, L"Very Good"}};
    for (const auto& [dbm, status] : rows) {
        EXPECT_STREQ(SignalStatus(dbm), status) << dbm;
    }
}

}  // namespace
