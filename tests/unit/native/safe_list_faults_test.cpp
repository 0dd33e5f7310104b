// Every system call of the safe list fails in turn, and what a tap makes of it.

#include <gtest/gtest.h>

#include "diagnostics/detector_row.h"
#include "diagnostics/safe_list.h"
#include "tests/fakes/fakes.h"
#include "tests/support/data_folder.h"

namespace {

constexpr MacAddress kFirst = {{1, 2, 3, 4, 5, 6}};
constexpr MacAddress kSecond = {{1, 2, 3, 4, 5, 7}};
const Bytes kBoth = {1, 2, 3, 4, 5, 6, 1, 2, 3, 4, 5, 7};

TEST(SafeListFaults, A_failing_call_of_a_removal_leaves_the_list_or_the_rewritten_one) {
    const struct {
        const char* function;
        int nth, times;
        bool found;
        bool removed;
        size_t messages;
    } rows[] = {
        {"CreateFileW", 1, 1, false, false, 0}, {"CreateFileW", 2, 1, false, false, 0},
        {"ReadFile", 1, 1, true, true, 0},      {"ReadFile", 2, 1000, false, false, 0},
        {"WriteFile", 1, 1, false, false, 0},   {"DeleteFileW", 1, 1, true, false, 1},
    };
    for (const auto& row : rows) {
        WriteWholeFile(L"slist.dat", kBoth);
        fakes::shownMessages.clear();
        fakes::FailCall(row.function, row.nth, row.times);
        EXPECT_EQ(SafeListRemove(nullptr, kFirst), row.found) << row.function << row.nth;
        fakes::FailCall(row.function, 0, 0);
        EXPECT_EQ(ReadWholeFile(L"slist.dat") == kBoth, !row.removed) << row.function << row.nth;
        EXPECT_TRUE(SafeListContains(kSecond)) << row.function << row.nth;
        EXPECT_EQ(fakes::shownMessages.size(), row.messages) << row.function << row.nth;
    }
    EXPECT_EQ(fakes::shownMessages[0].text, L"Cannot delete host!");
    EXPECT_EQ(fakes::shownMessages[0].caption, L"Error");
    EXPECT_EQ(fakes::shownMessages[0].flags, static_cast<UINT>(MB_ICONHAND));
    EXPECT_FALSE(FileExists(L"tmpslist"));
}

TEST(SafeListFaults, Looking_up_and_adding_end_whatever_fails) {
    WriteWholeFile(L"slist.dat", kBoth);
    fakes::FailCall("ReadFile", 1, 3);
    EXPECT_TRUE(SafeListContains(kFirst));  // tried again
    fakes::FailCall("ReadFile", 1, 1000);
    EXPECT_FALSE(SafeListContains(kFirst));
    fakes::FailCall("ReadFile", 0, 0);
    fakes::FailCall("CreateFileW", 1, 1);
    EXPECT_FALSE(SafeListAdd(kFirst));
    fakes::FailCall("WriteFile", 1, 1);
    EXPECT_TRUE(SafeListAdd(kFirst));  // a full disk goes unnoticed
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), kBoth);
}

DetectorCells Cells(const wchar_t* host, const wchar_t* address, const wchar_t* mac) {
    DetectorCells cells = {};
    wcscpy(cells.host, host);
    wcscpy(cells.address, address);
    wcscpy(cells.mac, mac);
    return cells;
}

TEST(DetectorTap, Asks_by_name_or_address_and_does_what_was_asked) {
    const DetectorCells named = Cells(L"PRINTER", L"10.0.0.9", L"01:02:03:04:05:06");
    const DetectorCells nameless = Cells(L"", L"10.0.0.9", L"01:02:03:04:05:06");
    fakes::AnswerMessagesWith(IDNO);
    EXPECT_EQ(ToggleSafe(nullptr, named, kIntruderImage), kIntruderImage);
    EXPECT_FALSE(FileExists(L"slist.dat"));
    fakes::AnswerMessagesWith(IDYES);
    EXPECT_EQ(ToggleSafe(nullptr, named, kIntruderImage), kSafeImage);
    EXPECT_TRUE(SafeListContains(kFirst));
    EXPECT_EQ(ToggleSafe(nullptr, nameless, kSafeImage), kIntruderImage);
    EXPECT_FALSE(SafeListContains(kFirst));
    const wchar_t* questions[] = {L"Add PRINTER to safe list?", L"Add PRINTER to safe list?",
                                  L"Delete 10.0.0.9 from safe list?"};
    ASSERT_EQ(fakes::shownMessages.size(), std::size(questions));
    for (size_t i = 0; i < std::size(questions); ++i) {
        EXPECT_EQ(fakes::shownMessages[i].text, questions[i]);
        EXPECT_EQ(fakes::shownMessages[i].caption, L"Question");
        EXPECT_EQ(fakes::shownMessages[i].flags, static_cast<UINT>(MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2));
    }
}

TEST(DetectorTap, The_device_and_hosts_without_hardware_address_ask_nothing) {
    scanState.ownMac = kFirst;
    EXPECT_EQ(ToggleSafe(nullptr, Cells(L"ME", L"10.0.0.1", L"01:02:03:04:05:06"), kSafeImage), kSafeImage);
    EXPECT_EQ(ToggleSafe(nullptr, Cells(L"HOST", L"10.0.0.2", L""), kIntruderImage), kIntruderImage);
    EXPECT_TRUE(fakes::shownMessages.empty());
    scanState = {};
}

TEST(DetectorTap, A_list_that_cannot_be_written_leaves_the_image) {
    const DetectorCells cells = Cells(L"HOST", L"10.0.0.2", L"01:02:03:04:05:06");
    fakes::AnswerMessagesWith(IDYES);
    fakes::FailCall("CreateFileW", 1, 1000);
    EXPECT_EQ(ToggleSafe(nullptr, cells, kIntruderImage), kIntruderImage);
    fakes::FailCall("CreateFileW", 0, 0);
    WriteWholeFile(L"slist.dat", kBoth);
    fakes::FailCall("CreateFileW", 3, 1);  // the temporary file
    EXPECT_EQ(ToggleSafe(nullptr, cells, kSafeImage), kSafeImage);
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), kBoth);
}

}  // namespace
