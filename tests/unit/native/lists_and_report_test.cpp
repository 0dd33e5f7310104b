// What asks or tells the user: deleting from the host list, taps on the detector's rows, the intruder report.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "diagnostics/detector_row.h"
#include "diagnostics/report.h"
#include "diagnostics/safe_list.h"
#include "tests/fakes/fakes.h"
#include "tests/support/host_records.h"

namespace {

TEST(HostListDelete, Deletes_every_equal_entry_and_keeps_the_order_of_the_rest) {
    const Bytes three = HostRecordOf(L"one") + HostRecordOf(L"two") + HostRecordOf(L"three");
    const std::tuple<Bytes, const wchar_t*, Bytes> rows[] = {
        {three, L"TWO", HostRecordOf(L"one") + HostRecordOf(L"three")},
        {three, L"four", three},
        {HostRecordOf(L"a") + HostRecordOf(L"b") + HostRecordOf(L"A"), L"a", HostRecordOf(L"b")},
        {HostRecordOf(L"a"), L"a", {}},
        {HostRecordOf(L"aa") + Bytes{'b', 0}, L"b", HostRecordOf(L"aa") + HostRecordOf(L"ba")},
    };
    fakes::AnswerMessagesWith(IDYES);
    for (const auto& [before, host, after] : rows) {
        WriteWholeFile(L"hosts.dat", before);
        EXPECT_TRUE(DeleteHost(nullptr, host));
        EXPECT_EQ(ReadWholeFile(L"hosts.dat"), after);
        EXPECT_EQ(FileExists(L"hosts.dat"), !after.empty());
    }
    EXPECT_EQ(fakes::shownMessages[0].caption, L"Question");
    EXPECT_EQ(fakes::shownMessages[0].flags, 36U);
}

DetectorCells Cells(const wchar_t* host, const wchar_t* mac) {
    DetectorCells cells = {};
    wcscpy(cells.host, host);
    wcscpy(cells.address, L"10.0.0.9");
    wcscpy(cells.mac, mac);
    return cells;
}

TEST(DetectorTap, Asks_by_name_or_address_and_never_about_the_device_or_a_host_without_hardware_address) {
    const wchar_t mac[] = L"01:02:03:04:05:06";
    EXPECT_EQ(ToggleSafe(nullptr, Cells(L"PRINTER", mac), kIntruderImage), kIntruderImage);
    EXPECT_EQ(ToggleSafe(nullptr, Cells(L"", mac), kIntruderImage), kIntruderImage);
    EXPECT_FALSE(FileExists(L"slist.dat"));
    ASSERT_EQ(fakes::shownMessages.size(), 2U);
    EXPECT_EQ(fakes::shownMessages[0].text, L"Add PRINTER to safe list?");
    EXPECT_EQ(fakes::shownMessages[1].text, L"Add 10.0.0.9 to safe list?");
    EXPECT_EQ(fakes::shownMessages[1].flags, static_cast<UINT>(MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2));
    scanState.ownMac = {{1, 2, 3, 4, 5, 6}};
    EXPECT_EQ(ToggleSafe(nullptr, Cells(L"ME", mac), kSafeImage), kSafeImage);
    EXPECT_EQ(ToggleSafe(nullptr, Cells(L"HOST", L""), kIntruderImage), kIntruderImage);
    EXPECT_EQ(fakes::shownMessages.size(), 2U);
    scanState = {};
}

constexpr char kHeader[] = "\"Host\",\"Intruder\",\"IP\",\"Mac Addr\"\n";

const std::vector<DetectorCells> kRows = {
    {L"STRANGER", L"192.168.7.2", L"02:00:00:00:00:02"},
    {L"FRIEND", L"192.168.7.10", L"02:00:00:00:00:0A"},
    {L"", L"192.168.7.33", L"02:00:00:00:00:FE"},
    {L"A \"b\",c\x00E9", L"192.168.7.254", L""},
};

void ReadRow(HWND, int row, DetectorCells& cells) {
    cells = kRows[static_cast<size_t>(row)];
}

std::filesystem::path ReportPath(int number) {
    char name[32];
    snprintf(name, sizeof(name), "QuorvaneRpt%03d.csv", number);
    return fakes::Root() / "My Documents" / name;
}

std::string Report(int number) {
    std::ostringstream text;
    text << std::ifstream(ReportPath(number), std::ios::binary).rdbuf();
    return text.str();
}

TEST(Report, Lists_the_rows_in_their_order_without_escaping) {
    SafeListAdd({{0x02, 0, 0, 0, 0, 0x0A}});
    ExportIntruderReport(nullptr, {{0x02, 0, 0, 0, 0, 0xFE}}, {4, ReadRow, nullptr});
    EXPECT_EQ(Report(1), std::string(kHeader) +
                             "\"STRANGER\",\"Yes\",\"192.168.7.2\",\"02:00:00:00:00:02\"\n"
                             "\"FRIEND\",\"No\",\"192.168.7.10\",\"02:00:00:00:00:0A\"\n"
                             "\"\",\"No\",\"192.168.7.33\",\"02:00:00:00:00:FE\"\n"
                             "\"A \"b\",c\xE9\",\"Yes\",\"192.168.7.254\",\"\"\n");
    EXPECT_EQ(fakes::shownMessages[0].caption, L"Infomation");
    EXPECT_EQ(fakes::shownMessages[0].flags, 0U);
}

TEST(Report, Takes_the_first_free_number_up_to_599) {
    for (int number = 1; number < 599; ++number) {
        std::ofstream(ReportPath(number)) << "taken";
    }
    for (int i = 0; i < 2; ++i) {
        ExportIntruderReport(nullptr, {}, {0, ReadRow, nullptr});
        EXPECT_EQ(Report(599), kHeader);
        EXPECT_EQ(fakes::shownMessages.size(), 1U) << "nothing is written or told when all are in use";
    }
    EXPECT_FALSE(std::filesystem::exists(ReportPath(600)));
}

}  // namespace
