// What asks or tells the user: deleting from the host list, taps on the detector's rows, the intruder report.
#include <gtest/gtest.h>

#include "diagnostics/detector_row.h"
#include "diagnostics/report.h"
#include "diagnostics/safe_list.h"
#include "item/item_state.h"
#include "platform/format_text.h"
#include "tests/fakes/fakes.h"
#include "tests/support/host_records.h"

namespace {

TEST(HostListDelete, Deletes_every_equal_entry_and_keeps_the_order_of_the_rest) {
    WriteWholeFile(L"hosts.dat", HostRecordOf(L"c") + HostRecordOf(L"a") + HostRecordOf(L"bb") + HostRecordOf(L"A") +
                                     Bytes{'d', 0});  // cut: over the record read before it
    fakes::AnswerMessagesWith(IDYES);
    EXPECT_TRUE(DeleteHost(nullptr, L"a"));
    EXPECT_EQ(ReadWholeFile(L"hosts.dat"), HostRecordOf(L"c") + HostRecordOf(L"bb") + HostRecordOf(L"d"));
    for (const wchar_t* host : {L"c", L"bb", L"d"}) {
        EXPECT_TRUE(FileExists(L"hosts.dat"));
        DeleteHost(nullptr, host);
    }
    EXPECT_FALSE(FileExists(L"hosts.dat")) << "it goes with the last one";
}

TEST(DetectorTap, Asks_by_address_where_there_is_no_name_and_takes_no_for_the_likely_answer) {
    const DetectorCells nameless = {L"", L"10.0.0.9", L"01:02:03:04:05:06"};
    EXPECT_EQ(ToggleSafe(nullptr, nameless, kIntruderImage), kIntruderImage);
    EXPECT_EQ(fakes::shownMessages[0].text, L"Add 10.0.0.9 to safe list?");
    EXPECT_EQ(fakes::shownMessages[0].flags, static_cast<UINT>(MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2));
    EXPECT_FALSE(FileExists(L"slist.dat"));
}

void ReadRow(HWND, int row, DetectorCells& cells) {
    const DetectorCells rows[] = {
        {L"STRANGER", L"192.168.7.2", L"02:00:00:00:00:02"},
        {L"FRIEND", L"192.168.7.10", L"02:00:00:00:00:0A"},
        {L"", L"192.168.7.33", L"02:00:00:00:00:FE"},
        {L"A \"b\",c\x00E9", L"192.168.7.254", L""},
    };
    cells = rows[row];
}

std::wstring ReportName(int number) {
    wchar_t name[32];
    FormatText(name, L"QuorvaneRpt%03d.csv", number);
    return name;
}

std::string Report(int number) {
    const Bytes content = ReadWholePath(L"\\My Documents\\" + ReportName(number));
    return {content.begin(), content.end()};
}

TEST(Report, Lists_the_rows_in_their_order_without_escaping_in_the_first_free_file_up_to_599) {
    SafeListAdd({{0x02, 0, 0, 0, 0, 0x0A}});
    ExportIntruderReport(nullptr, {{0x02, 0, 0, 0, 0, 0xFE}}, {4, ReadRow, nullptr});
    const std::string header = "\"Host\",\"Intruder\",\"IP\",\"Mac Addr\"\n";
    EXPECT_EQ(Report(1), header +
                             "\"STRANGER\",\"Yes\",\"192.168.7.2\",\"02:00:00:00:00:02\"\n"
                             "\"FRIEND\",\"No\",\"192.168.7.10\",\"02:00:00:00:00:0A\"\n"
                             "\"\",\"No\",\"192.168.7.33\",\"02:00:00:00:00:FE\"\n"
                             "\"A \"b\",c\xE9\",\"Yes\",\"192.168.7.254\",\"\"\n");
    EXPECT_EQ(fakes::shownMessages[0].caption, L"Infomation");
    EXPECT_EQ(fakes::shownMessages[0].flags, 0U);
    wcscpy(itemState.dataFolder, L"\\My Documents");
    for (int number = 2; number < 599; ++number) {
        WriteWholeFile(ReportName(number), {});
    }
    ExportIntruderReport(nullptr, {}, {0, ReadRow, nullptr});
    ExportIntruderReport(nullptr, {}, {0, ReadRow, nullptr});
    EXPECT_EQ(Report(599), header);
    EXPECT_FALSE(FileExists(ReportName(600)));
    EXPECT_EQ(fakes::shownMessages.size(), 2U) << "nothing is told when all are in use";
}

}  // namespace
