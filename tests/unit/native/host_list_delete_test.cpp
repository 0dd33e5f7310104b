// Deleting from the host list, and every system call of adding and deleting failing in turn.

#include <gtest/gtest.h>

#include "diagnostics/host_list.h"
#include "tests/fakes/fakes.h"
#include "tests/support/data_folder.h"
#include "tests/support/host_records.h"

namespace {

using Hosts = std::vector<std::wstring>;

const Bytes kThree = HostRecordOf(L"one") + HostRecordOf(L"two") + HostRecordOf(L"three");

TEST(HostListDelete, Deletes_every_equal_entry_and_keeps_the_order_of_the_rest) {
    const struct {
        Bytes before;
        const wchar_t* host;
        bool result;
        Bytes after;
    } rows[] = {
        {kThree, L"TWO", true, HostRecordOf(L"one") + HostRecordOf(L"three")},
        {kThree, L"four", true, kThree},
        {HostRecordOf(L"a") + HostRecordOf(L"b") + HostRecordOf(L"A"), L"a", true, HostRecordOf(L"b")},
        {HostRecordOf(L"a"), L"a", true, {}},
        {HostRecordOf(L"aa") + Bytes{'b', 0}, L"b", true, HostRecordOf(L"aa") + HostRecordOf(L"ba")},
    };
    fakes::AnswerMessagesWith(IDYES);
    for (const auto& row : rows) {
        WriteWholeFile(L"hosts.dat", row.before);
        EXPECT_EQ(DeleteHost(nullptr, row.host), row.result);
        EXPECT_EQ(ReadWholeFile(L"hosts.dat"), row.after);
        EXPECT_EQ(FileExists(L"hosts.dat"), !row.after.empty());
        EXPECT_FALSE(FileExists(L"tmphosts.dat"));
    }
    ASSERT_EQ(fakes::shownMessages.size(), std::size(rows));
    EXPECT_EQ(fakes::shownMessages[0].text, L"Are you sure you want to delete this host?");
    EXPECT_EQ(fakes::shownMessages[0].caption, L"Question");
    EXPECT_EQ(fakes::shownMessages[0].flags, 36U);
}

TEST(HostListDelete, Any_answer_but_yes_changes_nothing) {
    WriteWholeFile(L"hosts.dat", kThree);
    fakes::AnswerMessagesWith(IDNO);
    EXPECT_TRUE(DeleteHost(nullptr, L"one"));
    EXPECT_EQ(ReadWholeFile(L"hosts.dat"), kThree);
}

TEST(HostListDelete, Without_a_list_there_is_nothing_to_show_again) {
    fakes::AnswerMessagesWith(IDYES);
    EXPECT_FALSE(DeleteHost(nullptr, L"one"));
    EXPECT_FALSE(FileExists(L"tmphosts.dat"));
}

// Whatever fails, the other hosts stay in the list or, when only the last renaming failed, in the file beside it.
TEST(HostListFaults, No_failing_call_loses_other_hosts) {
    for (const char* function : {"CreateFileW", "ReadFile", "WriteFile", "DeleteFileW", "MoveFileW"}) {
        for (int nth = 1; nth <= 8; ++nth) {
            for (const int times : {1, 1000}) {
                fakes::ResetSystem();
                UseEmptyDataFolder();
                WriteWholeFile(L"hosts.dat", kThree);
                fakes::AnswerMessagesWith(IDYES);
                fakes::FailCall(function, nth, times);
                DeleteHost(nullptr, L"two");
                fakes::FailCall(function, 0, 0);
                const Bytes list =
                    FileExists(L"hosts.dat") ? ReadWholeFile(L"hosts.dat") : ReadWholeFile(L"tmphosts.dat");
                EXPECT_TRUE(list == kThree || list == HostRecordOf(L"one") + HostRecordOf(L"three"))
                    << function << " " << nth << " " << times << ": " << list.size();
                if (fakes::shownMessages.size() == 2) {  // the user was told that nothing changed
                    EXPECT_EQ(list, kThree) << function << " " << nth << " " << times;
                }
            }
        }
    }
}

TEST(HostListFaults, A_list_that_cannot_be_replaced_is_told_and_kept) {
    WriteWholeFile(L"hosts.dat", kThree);
    fakes::AnswerMessagesWith(IDYES);
    fakes::FailCall("DeleteFileW", 1);
    EXPECT_TRUE(DeleteHost(nullptr, L"two"));
    ASSERT_EQ(fakes::shownMessages.size(), 2U);
    EXPECT_EQ(fakes::shownMessages[1].text, L"Cannot update host file!");
    EXPECT_EQ(fakes::shownMessages[1].caption, L"Error");
    EXPECT_EQ(ReadWholeFile(L"hosts.dat"), kThree);
    EXPECT_FALSE(FileExists(L"tmphosts.dat"));
}

TEST(HostListFaults, Adding_reports_only_what_was_written) {
    const struct {
        const char* function;
        int nth, times;
        bool added;
    } rows[] = {
        {"CreateFileW", 1, 1, true},  // the second way of opening still works
        {"CreateFileW", 1, 2, false}, {"WriteFile", 1, 1, false},
        {"ReadFile", 1, 3, true},     {"SHGetSpecialFolderPathW", 1, 1, true},
    };
    for (const auto& row : rows) {
        DeleteFileW(DataPath(L"hosts.dat").c_str());
        fakes::FailCall(row.function, row.nth, row.times);
        EXPECT_EQ(AddHost(nullptr, L"host"), row.added) << row.function;
        fakes::FailCall(row.function, 0, 0);
        EXPECT_EQ(ListedHosts(), row.added ? Hosts{L"host"} : Hosts{}) << row.function;
    }
    fakes::FailCall("ReadFile", 1, 1000);
    EXPECT_EQ(ListedHosts(), Hosts{});  // ends
}

TEST(HostListFaults, The_default_folders_are_made_before_the_first_host) {
    AddHost(nullptr, L"host");
    EXPECT_TRUE(std::filesystem::is_directory(fakes::Root() / "Program Files/Ostrik/Quorvane"));
}

}  // namespace
