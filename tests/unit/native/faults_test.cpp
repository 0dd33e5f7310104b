// A walk of faults over every operation that touches files, registry, network or radio.
#include <gtest/gtest.h>

#include "adapters/adapter_details.h"
#include "adapters/dhcp_info.h"
#include "adapters/public_ip.h"
#include "diagnostics/detector_row.h"
#include "diagnostics/own_address.h"
#include "diagnostics/ping.h"
#include "diagnostics/report.h"
#include "diagnostics/safe_list.h"
#include "item/adapter_choice.h"
#include "item/item_state.h"
#include "item/settings.h"
#include "item/tick.h"
#include "options/adapter_properties.h"
#include "options/general_settings.h"
#include "options/log_months.h"
#include "tests/fakes/fakes.h"
#include "tests/support/access_point_list.h"
#include "tests/support/host_records.h"
#include "tests/support/traffic_logs.h"
#include "tests/support/wireless_values.h"
#include "tests/unit/native/fault_walk.h"
#include "tests/unit/native/node_responder.h"
#include "trafficlog/export_writer.h"
#include "trafficlog/log_file.h"
#include "trafficlog/log_reader.h"
#include "wireless/access_points.h"
#include "wireless/card_details.h"
#include "wireless/signal.h"

namespace {

void UseNothing() {}

void UseAdapter() {
    scripted::Adapter adapter = {.name = "{eth}", .index = 7, .dhcpEnabled = true, .dhcpServer = "10.0.0.1"};
    adapter.dnsServers = {"9.9.9.9", "8.8.8.8"};
    adapter.leaseObtained = adapter.received = 1;
    adapter.leaseExpires = 2;
    scripted::system.adapters = {adapter};
}

// Three hours of the day at hand in the log, and a full month before it.
void UseFiles() {
    WriteLog(2006, 11, FullMonth(2006, 11, 1, 1));
    WriteLog(2006, 12, LogRecord(15, 9, 7, 0) + LogRecord(15, 10, 8, 0) + LogRecord(15, 11, 9, 0));
    WriteLog(2007, 1, {});
    WriteWholeFile(L"hosts.dat", HostRecordOf(L"one") + HostRecordOf(L"two") + HostRecordOf(L"ONE"));
    WriteWholeFile(L"slist.dat", {'s', 'a', 'f', 'e', '-', '1', 's', 'a', 'f', 'e', '-', '2'});
}

}  // namespace

void UseEverything() {
    UseAdapter();
    UseFiles();
    wcscpy(itemState.adapterName, L"{eth}");
    fakes::AnswerMessagesWith(IDYES);
    WriteStringSetting(L"Adapter", L"stored", 6);
    WriteStringSetting(L"InstallDir", L"\\data", 5);
    for (const wchar_t* name : {L"XLocation", L"TIcon", L"TFormat"}) {
        WriteNumberSetting(name, 0);
    }
    UseWireless();
    scripted::system.wireless.values = {{OID_802_11_RSSI, NdisFields({static_cast<uint32_t>(-60)})},
                                        {OID_802_11_SSID, SsidValue("home", 4)},
                                        {OID_802_11_BSSID, {1, 2, 3, 4, 5, 6}},
                                        {OID_802_11_BSSID_LIST, AccessPointListBuilder().Add("home", 1, -60).Value()},
                                        {OID_802_11_CONFIGURATION, NdisFields({32, 100, 7, 2437000})},
                                        {OID_802_11_AUTHENTICATION_MODE, NdisFields({1})},
                                        {OID_802_11_NETWORK_TYPE_IN_USE, NdisFields({1})},
                                        {OID_802_11_INFRASTRUCTURE_MODE, NdisFields({2})}};
}

namespace {

std::string LogOne() {
    LogTraffic(nullptr, 1, 0);
    return "";
}

TEST(Faults, Of_the_traffic_log) {
    // A record is its day and hour, two bytes between, and what it counts.
    const std::string log = "200612.log: ", added = log + "15 9 171 205 7 15 10 171 205 ";
    WalkFaults("log the first traffic of a month", {log + "15 10 1;", "(200612.log: ;)?", log + "15 10 2;", UseNothing},
               LogOne);
    WalkFaults("log into the record of the hour", {added + "9 15 11 171 205 9;", "", added + "10 15 11 171 205 9;"},
               LogOne);
    // A tick in a full month costs a handful of calls.
    fakes::SetLocalTime({2006, 11, 0, 30, 23, 0, 0, 0});
    fakes::FailCall(0, fakes::Faults::Once);
    LogTraffic(nullptr, 1, 1);
    EXPECT_LE(fakes::EndFaults(), 10);
    WalkFaults("read a month", {"30;48;", "30;(0|24);"}, [] {
        TrafficSeries series;
        const int slots = ReadTrafficLog(UsageMode::Daily, {2006, 11, 5}, series);
        return Told(slots, static_cast<int>(series.received[1] + series.received[30]));
    });
    const std::string csv = "yes;out.csv: \"Date\",\"Xmit\",\"Rcv\",\"Total\"\n", none = "\"0\",\"0\",\"0\"\n;";
    const std::string day = "\"Dec 15, 2006\",\"0\",\"0.02KB\",\"0.02KB\"\n", total = "\"Total for Dec 2006\",";
    WalkFaults("export a month",
               {csv + day + total + "\"0\",\"0.02KB\",\"0.02KB\"\n;", "no;|yes;out.csv: ;|" + csv + total + none}, [] {
                   return Told(ExportTraffic(DataPath(L"out.csv").c_str(), {{2006, 12, 30}, {2006, 12, 31}}));
               });
    // An adapter that was away for a tick comes back with all it ever counted.
    const auto useFirstTick = [] {
        UseAdapter();
        RunTick(nullptr);
        scripted::system.adapters[0].received = 8;
    };
    WalkFaults("tick",
               {"7;8;200612.log: 15 10 7;", "7;8;(200612.log: ;)?|0;0;",
                "7;8;(200612.log: ;)?|0;8;200612.log: 15 10 8;", useFirstTick},
               [] {
                   RunTick(nullptr);
                   return Told(itemState.inDeltas[0], itemState.lastInOctets);
               });
    WalkFaults("list the logs", {"200611.log;200612.log;200701.log;", "(200611.log;(200612.log;)?)?"}, [] {
        std::string text;
        LogSearch search;
        while (const wchar_t* name = NextLogFile(search)) {
            text += Told(name);
        }
        return text;
    });
    WalkFaults("delete the logs",
               {"200611.log gone;200612.log gone;200701.log gone;",
                "(200611.log gone;)?(200612.log gone;)?(200701.log gone;)?"},
               [] {
                   DeleteAllLogs();
                   return Told();
               });
}

std::string LoadDisplay() {
    LoadDisplaySettings();
    return Told(itemState.xLocation, itemState.showTaskbarIcon, itemState.amPmFormat);
}

std::string LoadFolders() {
    LoadFolderSettings();
    return Told(itemState.adapterName, itemState.dataFolder);
}

// What is stored stays, though it could not be read; only what is absent is written.
TEST(Faults, Of_the_settings) {
    WalkFaults("load the display settings", {"0;no;no;", "(0|75);(no|yes);(no|yes);"}, LoadDisplay);
    WalkFaults("load the display settings for the first time",
               {"75;yes;yes;TFormat: 1;TIcon: 1;XLocation: 75;",
                "75;yes;yes;(TFormat: 1;)?(TIcon: 1;)?(XLocation: 75;)?", "", UseNothing},
               LoadDisplay);
    const std::string program = R"(\Program Files\Ostrik\Quorvane;)";
    const std::string pattern = R"(\\Program Files\\Ostrik\\Quorvane;)";
    WalkFaults("load adapter and folder", {R"(stored;\data;)", R"(\{eth\};\\data;|(stored|\{eth\})?;)" + pattern},
               LoadFolders);
    WalkFaults("load adapter and folder for the first time",
               {"{eth};" + program + "Adapter: {eth};", R"((\{eth\})?;)" + pattern, "", UseAdapter}, LoadFolders);
    WalkFaults("change the display settings",
               {"TFormat: 1;TIcon: 1;XLocation: 30;", "(TFormat: 1;)?(TIcon: 1;)?(XLocation: 30;)?"}, [] {
                   SaveXLocation(30);
                   SaveShowTaskbarIcon(true);
                   SaveHourFormat(true);
                   itemState.showTaskbarIcon = itemState.amPmFormat = false;
                   return Told();
               });
}

std::string Add() {
    return Told(AddHost(nullptr, L"new"));
}

std::string Delete() {
    return Told(DeleteHost(nullptr, L"one"));
}

// Whatever fails, no other host gets lost. Only a list that cannot be opened for reading and writing begins anew.
TEST(Faults, Of_the_host_list) {
    WalkFaults("list the hosts", {"one;two;ONE;", "(one;(two;)?)?"}, [] {
        std::string text;
        for (const std::wstring& host : ListedHosts()) {
            text += Told(host);
        }
        return text;
    });
    WalkFaults("add the first host", {"yes;hosts.dat: new;", "no;(hosts.dat: ;)?", "no;hosts.dat: new;", UseNothing},
               Add);
    WalkFaults("add a host",
               {"yes;hosts.dat: one two ONE new;", "no;|yes;hosts.dat: new;", "no;hosts.dat: (one two ONE )?new;"},
               Add);
    const std::string kept = "no;|yes;(tmphosts.dat: (two)?;)?(told: Cannot update host file!;)?|";
    WalkFaults("delete a host", {"yes;hosts.dat: two;", kept + "yes;hosts.dat gone;tmphosts.dat: two;"}, Delete);
    const auto useOneHost = [] {
        UseEverything();
        WriteWholeFile(L"hosts.dat", HostRecordOf(L"one"));
    };
    WalkFaults(
        "delete the only host",
        {"yes;hosts.dat gone;", kept + "yes;hosts.dat(: | gone;tmphosts.dat: );", "no;hosts.dat gone;", useOneHost},
        Delete);
}

constexpr MacAddress kSafe = {{'s', 'a', 'f', 'e', '-', '1'}};
constexpr MacAddress kThird = {{'s', 'a', 'f', 'e', '-', '3'}};

// Rows of the detector's list: a host of the safe list, one whose address is not known, the device itself.
void ReadRow(HWND, int row, DetectorCells& cells) {
    const DetectorCells rows[] = {{L"", L"10.0.0.2", L"73:61:66:65:2D:31"},
                                  {L"A \"b\",c\x00E9", L"10.0.0.3", L""},
                                  {L"", L"10.0.0.4", L"73:61:66:65:2D:33"}};
    cells = rows[row];
}

template <int Row>
std::string Tap() {
    DetectorCells cells;
    ReadRow(nullptr, Row, cells);
    const DetectorImage image = Row == 0 ? kSafeImage : kIntruderImage;
    return Told(ToggleSafe(nullptr, cells, image) != image);
}

TEST(Faults, Of_the_safe_list) {
    WalkFaults("look into the safe list", {"yes;", "no;"}, [] { return Told(SafeListContains(kSafe)); });
    WalkFaults("add to the safe list",
               {"yes;slist.dat: safe-1safe-2safe-3;", "(no|yes);", "yes;slist.dat: safe-1safe-2safe-3safe-3;"},
               [] { return Told(SafeListAdd(kThird)); });
    const std::string kept =
        "(no|yes);(tmpslist: (safe-2)?;)?(told: Cannot delete host!;)?|yes;slist.dat gone;tmpslist: safe-2;";
    WalkFaults("remove from the safe list", {"yes;slist.dat: safe-2;", kept, "no;slist.dat: safe-2;"},
               [] { return Told(SafeListRemove(nullptr, kSafe)); });
    // A list that cannot be opened for the question counts as empty.
    WalkFaults("tap a safe host",
               {"yes;slist.dat: safe-2;", kept + "|no;slist.dat: safe-1safe-2safe-1;", "no;slist.dat: safe-2safe-1;"},
               Tap<0>);
    WalkFaults("tap an intruder", {"yes;slist.dat: safe-1safe-2safe-3;", "(no|yes);", "no;"}, Tap<2>);
    EXPECT_EQ(fakes::shownMessages[0].text, L"Add 10.0.0.4 to safe list?") << "by address without a name";
    EXPECT_EQ(fakes::shownMessages[0].flags, static_cast<UINT>(MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2));
}

// Without a documents folder it goes to the root. A host that cannot be looked up is an intruder.
TEST(Faults, Of_the_report) {
    const std::string head = "\"Host\",\"Intruder\",\"IP\",\"Mac Addr\"\n";
    const std::string safe = "\"\",\"No\",\"10.0.0.2\",\"73:61:66:65:2D:31\"\n";
    const std::string doubted = "\"\",\"Yes\",\"10.0.0.2\",\"73:61:66:65:2D:31\"\n";
    const std::string unknown = "\"A \"b\",c233 \",\"Yes\",\"10.0.0.3\",\"\"\n";  // nothing is escaped
    const std::string own = "\"\",\"No\",\"10.0.0.4\",\"73:61:66:65:2D:33\"\n";
    WalkFaults("report",
               {"QuorvaneRpt001.csv: " + head + safe + unknown + own +
                    ";told: Data output to: \\My Documents\\QuorvaneRpt001.csv;",
                "(QuorvaneRpt001.csv: (" + head + ")?(" + safe + "|" + doubted + ")?(" + unknown + ")?(" + own +
                    ")?;(told: Data output to: (.My Documents)?.QuorvaneRpt001.csv;)?|told: Output to file error!;)?"},
               [] {
                   DeleteFileW(L"\\My Documents\\QuorvaneRpt001.csv");
                   ExportIntruderReport(nullptr, kThird, {3, ReadRow, nullptr});
                   return Told();
               });
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

TEST(Faults, Of_the_network_tools) {
    WalkFaults("ping",
               {"Host (127.0.0.1) is alive;Round Trip Time: 0 ms;MAC Address: 01:02:03:04:05:06;",
                "(Unknown host: localhost|Error: No ping service|Request timed out.);;;|"
                "Host .127.0.0.1. is alive;Round Trip Time: 0 ms;;",
                "", UseNetwork},
               [] {
                   PingLines lines;
                   PingHost("localhost", 5000, lines);
                   return Told(lines.status, lines.roundTrip, lines.mac);
               });
    WalkFaults("own address", {"127.0.0.33;yes;", ";(yes|no);", "", UseNetwork}, [] {
        char text[kAddressTextBytes];
        MacAddress mac;
        GetCurrentAdapterAddress(text, mac);
        return Told(text, !MacEquals(mac, {}));
    });
    WalkFaults("scan",
               {"yes;HOST-1;yes;no;",
                "no;no;(told: Cannot get current IP address!;)?|yes;((HOST-1)?;(yes|no);)?(yes|no);", "", UseNetwork},
               [] {
                   std::string text = Told(StartScanAskingPort(nullptr, NamesPort()));
                   bool pending = false;
                   for (int i = 0; scanState.table != nullptr && i < kScanHosts; ++i) {
                       HostRecord& host = scanState.table->hosts[i];
                       pending = pending || StatusOf(host) == kHostPending;
                       text += StatusOf(host) == kHostAnswered ? Told(host.name, host.macKnown != 0) : "";
                   }
                   ReleaseScanTable();
                   return text + Told(pending);
               });
}

std::string Details() {
    AdapterDetails details;
    ReadAdapterDetails(false, details);
    return Told(details.title, details.type, details.address, details.secondDns, details.wins);
}

TEST(Faults, Of_the_adapter_tools) {
    WalkFaults("choose the adapter", {"yes;{eth};yes;", R"((no|yes);(\{eth\})?;no;)", "", UseAdapter}, [] {
        const bool chosen = ChooseAdapter();
        return Told(chosen, itemState.adapterName, itemState.interfaceIndex == 7);
    });
    const std::string details = "Adapter - Test adapter;ethernet;192.168.7.33;8.8.8.8;N/A;";
    const std::string less = "(Adapter - Test adapter;(ethernet)?;192.168.7.33;(8.8.8.8)?;N/A|;;;;);";
    WalkFaults("adapter details", {details, less}, Details);
    WalkFaults(
        "details of an adapter to be chosen",
        {details + "Adapter: {eth};", less + "(Adapter: .eth.;)?|No adapter is available.;;;;;", details, UseAdapter},
        Details);
    WalkFaults(
        "adapter properties",
        {"6;Test adapter;ethernet;100 Mbps;10.0.0.1;", "-1;;;;;|4;Test adapter;192.168.7.33;02:00:00:00:00:01;;"}, [] {
            AdapterProperty rows[kMostAdapterProperties] = {};
            const int count = ReadAdapterProperties(rows);
            return Told(count, rows[0].value, rows[1].value, rows[2].value, rows[5].value);
        });
    WalkFaults("DHCP lease",
               {"yes;10.0.0.1;Thu. Jan 1, 1970 00:00:01;Thu. Jan 1, 1970 00:00:02;",
                "no;;;;|yes;10.0.0.1;(Thu. Jan 1, 1970 00:00:01)?;(Thu. Jan 1, 1970 00:00:02)?;"},
               [] {
                   DhcpInfo info = {};
                   const DhcpState state = ReadDhcpInfo(info);
                   return Told(state == DhcpState::Ready, info.server, info.obtained, info.expires);
               });
    const Promise done = {"yes;", "no;"};
    WalkFaults("release", done, [] { return Told(ChangeLease(LeaseAction::Release) == LeaseResult::Done); });
    WalkFaults("renew", done, [] { return Told(ChangeLease(LeaseAction::Renew) == LeaseResult::Done); });
    // An answer that breaks off counts as far as it came.
    WalkFaults("public address", {"1.1.1.1;0;", "(2.2.2.2|1.1.|none);0;"}, [] {
        scripted::system.internet.answers = {{L"ip1.quorvane.net", {{"1.1.", "1.1"}}},
                                             {L"ip2.quorvane.net", {{"2.2.2.2"}}}};
        wchar_t address[kPublicIpUnits] = {};
        const bool found = DetectPublicIpFromAny(address);
        return Told(found ? address : L"none", scripted::system.connectionManager.open);
    });
}

TEST(Faults, Of_the_wireless_tools) {
    WalkFaults("signal", {"1;-60;-60;", "[01];-200;-200;|1;-200;-60;"}, [] {
        const int present = QuerySignal();
        return Told(present, itemState.SignalDbm, itemState.SignalHistory[kSignalReadings - 1]);
    });
    WalkFaults("access points", {"yes;yes;home;1;", "no;no;;0;|yes;(yes|no);;1;|yes;yes;home;0;|yes;no;;0;"}, [] {
        AccessPointTable table;
        ResetAccessPoints(table);
        const ScanOutcome outcome = ScanAccessPoints(table);
        return Told(outcome.usable, outcome.bssidChanged, table.shownSsid, table.count);
    });
    WalkFaults("card details",
               {"yes;(channel 6);shared;auto;DSSS;", "no;;;;;|yes;(.channel 6.)?;(shared)?;(auto)?;(DSSS)?;"}, [] {
                   CardDetails details;
                   const bool isThere = ReadCardDetails(details);
                   return Told(isThere, details.channel, details.authentication, details.mode, details.networkType);
               });
}

}  // namespace
