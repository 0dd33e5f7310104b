// Faults under ping, host list, safe list, scan and report; and the names that reports take.
#include <gtest/gtest.h>

#include "diagnostics/detector_row.h"
#include "diagnostics/own_address.h"
#include "diagnostics/ping.h"
#include "diagnostics/report.h"
#include "diagnostics/safe_list.h"
#include "diagnostics/scan.h"
#include "item/item_state.h"
#include "platform/format_text.h"
#include "tests/fakes/fakes.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/host_records.h"
#include "tests/unit/native/fault_walk.h"
#include "tests/unit/native/node_responder.h"

namespace {

std::string Hosts() {
    std::string text;
    for (const std::wstring& host : ListedHosts()) {
        text += Told(host);
    }
    return text;
}

void UseOneHost() {
    WriteWholeFile(L"hosts.dat", HostRecordOf(L"one"));
    fakes::AnswerMessagesWith(IDYES);
}

// Two are equal; the last one is cut, and stands over the record read before it.
void UseFourHosts() {
    UseOneHost();
    WriteWholeFile(L"hosts.dat", HostRecordOf(L"one") + HostRecordOf(L"ONE") + HostRecordOf(L"x") + Bytes{'y', 0});
}

std::string Add() {
    return Told(AddHost(nullptr, L"new"));
}

std::string Delete() {
    return Told(DeleteHost(nullptr, L"one"));
}

// Whatever fails, no other host gets lost. Only a list that cannot be opened for reading and writing begins anew.
TEST(Faults, Of_the_host_list) {
    WalkFaults("list the hosts", UseFourHosts, Hosts, "one;ONE;x;y;", "(one;(ONE;(x;)?)?)?");
    WalkFaults("add the first host", UseNothing, Add, "yes;hosts.dat: new;", "no;(hosts.dat: ;)?",
               "no;hosts.dat: new;");
    WalkFaults("add a host", UseOneHost, Add, "yes;hosts.dat: one new;", "no;|yes;hosts.dat: new;",
               "no;hosts.dat: (one )?new;");
    const std::string promised = "no;|yes;(tmphosts.dat: [xy ]*;)?(told: Cannot update host file!;)?|";
    WalkFaults("delete a host", UseFourHosts, Delete, "yes;hosts.dat: x y;",
               promised + "yes;hosts.dat gone;tmphosts.dat: x y;");
    WalkFaults("delete the only host", UseOneHost, Delete, "yes;hosts.dat gone;",
               promised + "yes;hosts.dat(: | gone;tmphosts.dat: );", "no;hosts.dat gone;");
}

constexpr MacAddress kSafe = {{'s', 'a', 'f', 'e', '-', '1'}};
constexpr MacAddress kThird = {{'s', 'a', 'f', 'e', '-', '3'}};

void UseSafe() {
    WriteWholeFile(L"slist.dat", {'s', 'a', 'f', 'e', '-', '1', 's', 'a', 'f', 'e', '-', '2'});
    fakes::AnswerMessagesWith(IDYES);
}

// A row of the detector's list: the first is safe, the others are not.
void ReadRow(HWND, int row, DetectorCells& cells) {
    cells = {L"", L"10.0.0.2", L"73:61:66:65:2D:31"};
    cells.mac[16] = row == 0 ? L'1' : L'3';
}

std::string Find() {
    return Told(SafeListContains(kSafe));
}

std::string AddThird() {
    return Told(SafeListAdd(kThird));
}

std::string Remove() {
    return Told(SafeListRemove(nullptr, kSafe));
}

template <DetectorImage Image>
std::string Tap() {
    DetectorCells cells;
    ReadRow(nullptr, Image == kSafeImage ? 0 : 1, cells);
    return Told(ToggleSafe(nullptr, cells, Image) != Image);
}

TEST(Faults, Of_the_safe_list) {
    WalkFaults("look into the safe list", UseSafe, Find, "yes;", "no;");
    WalkFaults("add to the safe list", UseSafe, AddThird, "yes;slist.dat: safe-1safe-2safe-3;", "(no|yes);",
               "yes;slist.dat: safe-1safe-2safe-3safe-3;");
    const std::string promised =
        "(no|yes);(tmpslist: (safe-2)?;)?(told: Cannot delete host!;)?|"
        "yes;slist.dat gone;tmpslist: safe-2;";
    WalkFaults("remove from the safe list", UseSafe, Remove, "yes;slist.dat: safe-2;", promised,
               "no;slist.dat: safe-2;");
    // A list that cannot be opened for the question counts as empty.
    WalkFaults("tap a safe host", UseSafe, Tap<kSafeImage>, "yes;slist.dat: safe-2;",
               promised + "|no;slist.dat: safe-1safe-2safe-1;", "no;slist.dat: safe-2safe-1;");
    WalkFaults("tap an intruder", UseSafe, Tap<kIntruderImage>, "yes;slist.dat: safe-1safe-2safe-3;", "(no|yes);",
               "no;");
    const fakes::ShownMessage& question = fakes::shownMessages.back();
    EXPECT_EQ(question.text, L"Add 10.0.0.2 to safe list?") << "by address without a name";
    EXPECT_EQ(question.flags, static_cast<UINT>(MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2));
}

void UseNetwork() {
    NamesPort();
    scripted::system.adapters = {{.address = "127.0.0.33"}};
    // The echo to host 50 is answered by host 1 too, which does not count.
    scripted::system.echo = [](uint32_t address, DWORD timeoutMs) {
        EXPECT_EQ(timeoutMs, 5000U);
        platform::EchoReply reply = {};
        reply.address = inet_addr("127.0.0.1");
        return address == reply.address || address == inet_addr("127.0.0.50") ? std::optional(reply) : std::nullopt;
    };
    scripted::system.arp = {{inet_addr("127.0.0.1"), {1, 2, 3, 4, 5, 6}}};
    fakes::workersRunInline = true;
}

std::string Ping() {
    PingLines lines;
    PingHost("localhost", 5000, lines);
    return Told(lines.status, lines.roundTrip, lines.mac);
}

std::string OwnAddress() {
    char text[kAddressTextBytes];
    MacAddress mac;
    GetCurrentAdapterAddress(text, mac);
    return Told(text, !MacEquals(mac, {}));
}

std::string Scan() {
    if (!StartScanAskingPort(nullptr, NamesPort())) {
        return "not started;";
    }
    std::string text;
    bool pending = false;
    for (HostRecord& host : scanState.table->hosts) {
        pending = pending || StatusOf(host) == kHostPending;
        text += StatusOf(host) == kHostAnswered ? Told(host.name, host.macKnown != 0) : "";
    }
    ReleaseScanTable();
    return text + (pending ? "pending" : "");
}

TEST(Faults, Of_the_network_tools) {
    WalkFaults("ping", UseNetwork, Ping,
               "Host (127.0.0.1) is alive;Round Trip Time: 0 ms;MAC Address: 01:02:03:04:05:06;",
               "(Unknown host: localhost|Error: No ping service|Request timed out.);;;|"
               "Host .127.0.0.1. is alive;Round Trip Time: 0 ms;;");
    WalkFaults("own address", UseNetwork, OwnAddress, "127.0.0.33;yes;", ";(yes|no);");
    WalkFaults("scan", UseNetwork, Scan, "HOST-1;yes;",
               "not started;(told: Cannot get current IP address!;)?|((HOST-1)?;(yes|no);)?(pending)?");
}

const std::string kHeader = "\"Host\",\"Intruder\",\"IP\",\"Mac Addr\"\n";

std::string Report() {
    DeleteFileW(L"\\My Documents\\QuorvaneRpt001.csv");
    ExportIntruderReport(nullptr, {}, {2, ReadRow, nullptr});
    return "";
}

// Without a documents folder it goes to the root. A host that cannot be looked up is an intruder.
TEST(Faults, Of_the_report) {
    const std::string safe = "\"\",\"No\",\"10.0.0.2\",\"73:61:66:65:2D:31\"\n";
    const std::string doubted = "\"\",\"Yes\",\"10.0.0.2\",\"73:61:66:65:2D:31\"\n";
    const std::string intruder = "\"\",\"Yes\",\"10.0.0.2\",\"73:61:66:65:2D:33\"\n";
    WalkFaults("report", UseSafe, Report,
               "QuorvaneRpt001.csv: " + kHeader + safe + intruder +
                   ";told: Data output to: \\My Documents\\QuorvaneRpt001.csv;",
               "(QuorvaneRpt001.csv: (" + kHeader + ")?(" + safe + "|" + doubted + ")?(" + intruder +
                   ")?;(told: Data output to: (.My Documents)?.QuorvaneRpt001.csv;)?|told: Output to file error!;)?");
}

std::wstring ReportName(int number) {
    wchar_t name[32];
    FormatText(name, L"QuorvaneRpt%03d.csv", number);
    return name;
}

std::string ReportText(int number) {
    const Bytes content = ReadWholeFile(ReportName(number));
    return {content.begin(), content.end()};
}

TEST(Report, Escapes_nothing_and_takes_the_first_free_name_up_to_599) {
    const auto read = [](HWND, int row, DetectorCells& cells) {
        const DetectorCells rows[] = {{L"", L"192.168.7.33", L"02:00:00:00:00:FE"},
                                      {L"A \"b\",c\x00E9", L"192.168.7.254", L""}};
        cells = rows[row];
    };
    wcscpy(itemState.dataFolder, L"\\My Documents");
    ExportIntruderReport(nullptr, {{0x02, 0, 0, 0, 0, 0xFE}}, {2, read, nullptr});
    EXPECT_EQ(ReportText(1), kHeader + "\"\",\"No\",\"192.168.7.33\",\"02:00:00:00:00:FE\"\n" +
                                 "\"A \"b\",c\xE9\",\"Yes\",\"192.168.7.254\",\"\"\n");
    EXPECT_EQ(fakes::shownMessages[0].caption, L"Infomation");
    EXPECT_EQ(fakes::shownMessages[0].flags, 0U);
    for (int number = 2; number < 599; ++number) {
        WriteWholeFile(ReportName(number), {});
    }
    ExportIntruderReport(nullptr, {}, {0, read, nullptr});
    ExportIntruderReport(nullptr, {}, {0, read, nullptr});
    EXPECT_EQ(ReportText(599), kHeader);
    EXPECT_FALSE(FileExists(ReportName(600)));
    EXPECT_EQ(fakes::shownMessages.size(), 2U) << "nothing is told when all are in use";
}

}  // namespace
