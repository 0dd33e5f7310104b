// Faults under ping, host list, safe list, scan and report.
#include <gtest/gtest.h>

#include "diagnostics/detector_row.h"
#include "diagnostics/own_address.h"
#include "diagnostics/ping.h"
#include "diagnostics/report.h"
#include "diagnostics/safe_list.h"
#include "diagnostics/scan.h"
#include "tests/fakes/fakes.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/host_records.h"
#include "tests/support/texts.h"
#include "tests/unit/native/fault_walk.h"
#include "tests/unit/native/node_responder.h"

namespace {

std::string LastMessage() {
    return fakes::shownMessages.empty() ? "" : Narrow(fakes::shownMessages.back().text);
}

std::string Hosts() {
    std::string text;
    for (const std::wstring& host : ListedHosts()) {
        text += Narrow(host) + " ";
    }
    return text;
}

std::string HostsAndMessage() {
    const std::string hosts = Hosts();
    return hosts + (FileExists(L"tmphosts.dat") ? "tmp " : "") + LastMessage();
}

void UseOneHost() {
    WriteWholeFile(L"hosts.dat", HostRecordOf(L"one"));
    fakes::AnswerMessagesWith(IDYES);
}

void UseTwoHosts() {
    UseOneHost();
    WriteWholeFile(L"hosts.dat", HostRecordOf(L"one") + HostRecordOf(L"two"));
}

std::string Add() {
    return YesOrNo(AddHost(nullptr, L"new"));
}

std::string Delete() {
    return YesOrNo(DeleteHost(nullptr, L"one"));
}

// Whatever fails, no other host gets lost. Only a list that cannot be opened for reading and writing begins anew.
TEST(Faults, Of_the_host_list) {
    const std::string asked = "Are you sure you want to delete this host?";
    WalkFaults("list the hosts", {UseTwoHosts, Hosts}, "one two ", {"", "one "});
    WalkFaults("add the first host", {[] {}, Add, Hosts}, "yes | new ", {"no"}, {"yes | new ", "no | new "});
    WalkFaults("add a host", {UseTwoHosts, Add, Hosts}, "yes | one two new ", {"no | one two ", "yes | new "},
               {"yes | one two new ", "no | one two new ", "no | new "});
    WalkFaults("delete a host", {UseTwoHosts, Delete, HostsAndMessage}, "yes | two " + asked,
               {"yes | one two ", "no | one two " + asked, "yes | one two Cannot update host file!",
                "yes | one two tmp " + asked});
    WalkFaults("delete the only host", {UseOneHost, Delete, HostsAndMessage}, "yes | " + asked,
               {"yes | one ", "no | one " + asked, "yes | one Cannot update host file!", "yes | one tmp " + asked},
               {"yes | " + asked, "no | " + asked});
}

constexpr MacAddress kSafe = {{1, 2, 3, 4, 5, 6}};

void UseSafe() {
    WriteWholeFile(L"slist.dat", {1, 2, 3, 4, 5, 6, 1, 2, 3, 4, 5, 7});
    fakes::AnswerMessagesWith(IDYES);
}

// The last digit of each entry.
std::string SafeAndMessage() {
    SafeListContains(kSafe);
    std::string text;
    const Bytes list = ReadWholeFile(L"slist.dat");
    for (size_t offset = 0; offset < list.size(); offset += 6) {
        text += std::to_string(list[offset + 5]) + " ";
    }
    return text + (FileExists(L"tmpslist") ? "tmp " : "") + LastMessage();
}

// A row of the detector's list: the first is safe, the others are not.
void ReadRow(HWND, int row, DetectorCells& cells) {
    cells = {L"HOST", L"10.0.0.2", L"01:02:03:04:05:06"};
    cells.mac[16] = row == 0 ? L'6' : L'8';
}

template <DetectorImage Image>
std::string Tap() {
    DetectorCells cells;
    ReadRow(nullptr, Image == kSafeImage ? 0 : 1, cells);
    return YesOrNo(ToggleSafe(nullptr, cells, Image) != Image);
}

TEST(Faults, Of_the_safe_list) {
    const std::string add = "Add HOST to safe list?";
    const std::string remove = "Delete HOST from safe list?";
    const std::string error = "Cannot delete host!";
    WalkFaults("look into the safe list", {UseSafe, [] { return YesOrNo(SafeListContains(kSafe)); }}, "yes", {"no"});
    WalkFaults("add to the safe list",
               {UseSafe,
                [] {
                    return YesOrNo(SafeListAdd({{1, 2, 3, 4, 5, 8}}));
                },
                SafeAndMessage},
               "yes | 6 7 8 ", {"no | 6 7 ", "yes | 6 7 "}, {"yes | 6 7 8 ", "yes | 6 7 8 8 "});
    WalkFaults("remove from the safe list",
               {UseSafe, [] { return YesOrNo(SafeListRemove(nullptr, kSafe)); }, SafeAndMessage}, "yes | 7 ",
               {"no | 6 7 ", "yes | 6 7 " + error, "no | 6 7 tmp ", "yes | 6 7 tmp "},
               {"yes | 7 ", "no | 7 ", "yes | 7 " + error});
    // A list that cannot be opened for the question counts as empty.
    WalkFaults("tap a safe host", {UseSafe, Tap<kSafeImage>, SafeAndMessage}, "yes | 7 " + remove,
               {"no | 6 7 6 " + add, "no | 6 7 ", "no | 6 7 " + remove, "yes | 6 7 " + error, "no | 6 7 tmp " + remove,
                "yes | 6 7 tmp " + remove},
               {"yes | 7 " + remove, "no | 7 6 " + add});
    WalkFaults("tap an intruder", {UseSafe, Tap<kIntruderImage>, SafeAndMessage}, "yes | 6 7 8 " + add,
               {"no | 6 7 ", "no | 6 7 " + add, "yes | 6 7 " + add}, {"yes | 6 7 8 " + add, "no | 6 7 " + remove});
}

uint16_t PeersPort() {
    static const NodeResponder peers(NodeResponder::Names{{"127.0.0.1", "ONE"}});
    return peers.port;
}

void UseNetwork() {
    PeersPort();
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
    return Narrow(Joined({lines.status, lines.roundTrip, lines.mac}));
}

std::string OwnAddress() {
    char text[kAddressTextBytes];
    MacAddress mac;
    GetCurrentAdapterAddress(text, mac);
    return text + std::string(MacEquals(mac, {}) ? " no mac" : " mac");
}

std::string Scan() {
    if (!StartScanAskingPort(nullptr, PeersPort())) {
        return "not started";
    }
    std::string text;
    bool pending = false;
    for (HostRecord& host : scanState.table->hosts) {
        pending = pending || StatusOf(host) == kHostPending;
        if (StatusOf(host) == kHostAnswered) {
            text += "<" + std::string(host.name) + (host.macKnown != 0 ? " at 6>" : ">");
        }
    }
    ReleaseScanTable();
    return text + (pending ? " pending" : "");
}

constexpr wchar_t kReport[] = L"\\My Documents\\QuorvaneRpt001.csv";

std::string Report() {
    DeleteFileW(kReport);
    ExportIntruderReport(nullptr, {}, {2, ReadRow, nullptr});
    return {};
}

// The second field of each line and what the user was told.
std::string ReportAndMessage() {
    std::string text;
    int quotes = 0;
    for (const uint8_t byte : ReadWholePath(kReport)) {
        quotes = byte == '\n' ? 0 : quotes + (byte == '"' ? 1 : 0);
        text += quotes == 3 && byte != '"' ? std::string(1, static_cast<char>(byte)) : byte == '\n' ? " " : "";
    }
    return text + LastMessage();
}

TEST(Faults, Of_the_network_tools) {
    const std::string told = "Data output to: \\My Documents\\QuorvaneRpt001.csv";
    const std::string alive = "Host (127.0.0.1) is alive|Round Trip Time: 0 ms|";
    WalkFaults("ping", {UseNetwork, Ping}, alive + "MAC Address: 01:02:03:04:05:06",
               {"Unknown host: localhost||", "Error: No ping service||", "Request timed out.||", alive});
    WalkFaults("own address", {UseNetwork, OwnAddress}, "127.0.0.33 mac", {" no mac"});
    WalkFaults(
        "scan", {UseNetwork, Scan}, "<ONE at 6>",
        {"not started", " pending", "", "<ONE>", "< at 6>", "<ONE at 6> pending", "<> pending", "< at 6> pending"});
    // Without a documents folder it goes to the root. A host that cannot be looked up is an intruder.
    WalkFaults(
        "report", {UseSafe, Report, ReportAndMessage}, "Intruder No Yes " + told,
        {"Data output to: \\QuorvaneRpt001.csv", "Output to file error!", "No Yes " + told, "Intruder Yes Yes " + told,
         "Intruder Yes " + told, "Intruder No " + told, "Intruder No Yes ", "", "Intruder ", "Intruder No "});
}

}  // namespace
