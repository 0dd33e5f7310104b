// The intruder report byte for byte, its numbering and its failures.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "diagnostics/report.h"
#include "diagnostics/safe_list.h"
#include "tests/fakes/fakes.h"

namespace {

constexpr char kHeader[] = "\"Host\",\"Intruder\",\"IP\",\"Mac Addr\"\n";
constexpr MacAddress kOwn = {{0x02, 0, 0, 0, 0, 0xFE}};
constexpr MacAddress kSafe = {{0x02, 0, 0, 0, 0, 0x0A}};

const std::vector<DetectorCells> kRows = {
    {L"STRANGER", L"192.168.7.2", L"02:00:00:00:00:02"},
    {L"FRIEND", L"192.168.7.10", L"02:00:00:00:00:0A"},
    {L"", L"192.168.7.33", L"02:00:00:00:00:FE"},
    {L"A \"b\",c\x00E9", L"192.168.7.254", L""},
};

void ReadRow(HWND, int row, DetectorCells& cells) {
    cells = kRows[static_cast<size_t>(row)];
}

void Export(int rows) {
    ExportIntruderReport(nullptr, kOwn, {rows, ReadRow, nullptr});
}

std::filesystem::path ReportPath(const std::string& number) {
    return fakes::Root() / "My Documents" / ("QuorvaneRpt" + number + ".csv");
}

std::string Report(const std::string& number) {
    std::ostringstream text;
    text << std::ifstream(ReportPath(number), std::ios::binary).rdbuf();
    return text.str();
}

void Occupy(const std::string& number) {
    std::ofstream(ReportPath(number)) << "taken";
}

TEST(Report, Lists_the_rows_in_their_order_without_escaping) {
    SafeListAdd(kSafe);
    Export(4);
    EXPECT_EQ(Report("001"), std::string(kHeader) +
                                 "\"STRANGER\",\"Yes\",\"192.168.7.2\",\"02:00:00:00:00:02\"\n"
                                 "\"FRIEND\",\"No\",\"192.168.7.10\",\"02:00:00:00:00:0A\"\n"
                                 "\"\",\"No\",\"192.168.7.33\",\"02:00:00:00:00:FE\"\n"
                                 "\"A \"b\",c\xE9\",\"Yes\",\"192.168.7.254\",\"\"\n");
    ASSERT_EQ(fakes::shownMessages.size(), 1U);
    EXPECT_EQ(fakes::shownMessages[0].text, L"Data output to: \\My Documents\\QuorvaneRpt001.csv");
    EXPECT_EQ(fakes::shownMessages[0].caption, L"Infomation");
    EXPECT_EQ(fakes::shownMessages[0].flags, 0U);
}

TEST(Report, Takes_the_first_free_number_up_to_599) {
    Occupy("001");
    Occupy("003");
    Export(0);
    EXPECT_EQ(Report("002"), kHeader);
    for (int number = 1; number < 599; ++number) {
        char text[8];
        snprintf(text, sizeof(text), "%03d", number);
        Occupy(text);
    }
    Export(0);
    EXPECT_EQ(Report("599"), kHeader);
    fakes::shownMessages.clear();
    Export(4);
    EXPECT_TRUE(fakes::shownMessages.empty());
    EXPECT_FALSE(std::filesystem::exists(ReportPath("600")));
}

TEST(Report, A_file_that_cannot_be_created_is_told) {
    fakes::FailCall("CreateFileW", 2, 1);  // the first looks whether the number is free
    Export(4);
    ASSERT_EQ(fakes::shownMessages.size(), 1U);
    EXPECT_EQ(fakes::shownMessages[0].text, L"Output to file error!");
    EXPECT_EQ(fakes::shownMessages[0].caption, L"Infomation");
    EXPECT_FALSE(std::filesystem::exists(ReportPath("001")));
}

TEST(Report, A_full_disk_is_not_looked_at) {
    fakes::FailCall("WriteFile", 2, 1000);
    Export(4);
    EXPECT_EQ(Report("001"), kHeader);
    EXPECT_EQ(fakes::shownMessages.size(), 1U);
}

}  // namespace
