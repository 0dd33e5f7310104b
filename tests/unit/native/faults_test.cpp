// A walk of faults over every operation that touches files, registry, network or radio.
#include "adapters/adapter_details.h"
#include "adapters/dhcp_info.h"
#include "adapters/public_ip.h"
#include "diagnostics/ping.h"
#include "diagnostics/report.h"
#include "diagnostics/safe_list.h"
#include "diagnostics/scan.h"
#include "item/adapter_choice.h"
#include "item/item_state.h"
#include "item/settings.h"
#include "options/adapter_properties.h"
#include "options/general_settings.h"
#include "options/log_months.h"
#include "tests/support/access_point_list.h"
#include "tests/support/host_records.h"
#include "tests/support/traffic_logs.h"
#include "tests/support/wireless_values.h"
#include "tests/unit/native/fault_walk.h"
#include "trafficlog/export_writer.h"
#include "trafficlog/log_file.h"
#include "trafficlog/log_reader.h"
#include "wireless/access_points.h"
#include "wireless/card_details.h"
#include "wireless/signal.h"

namespace {

void UseAdapter() {
    scripted::Adapter adapter = {.name = "{eth}", .index = 7, .dhcpEnabled = true, .dhcpServer = "10.0.0.1"};
    adapter.dnsServers = {"9.9.9.9", "8.8.8.8"};
    adapter.received = 1;
    scripted::system.adapters = {adapter};
    fakes::AnswerMessagesWith(IDYES);
}

// Three hours of the day at hand in the log, and a full month before it.
void UseFiles() {
    UseAdapter();
    WriteLog(2006, 11, FullMonth(2006, 11, 1, 1));
    WriteLog(2006, 12, LogRecord(15, 9, 7, 0) + LogRecord(15, 10, 8, 0) + LogRecord(15, 11, 9, 0));
    WriteWholeFile(L"hosts.dat", HostRecordOf(L"one") + HostRecordOf(L"two") + HostRecordOf(L"ONE"));
    WriteWholeFile(L"slist.dat", {'s', 'a', 'f', 'e', '-', '1', 's', 'a', 'f', 'e', '-', '2'});
    WriteStringSetting(L"Adapter", L"stored", 6);
    WriteStringSetting(L"InstallDir", L"\\data", 5);
    for (const wchar_t* name : {L"XLocation", L"TIcon", L"TFormat"}) {
        WriteNumberSetting(name, 0);
    }
}

Told LogOne() {
    LogTraffic(nullptr, 1, 0);
    return Told{};
}

TEST(Faults, Of_the_traffic_log) {
    WalkFaults(UseAdapter, {}, {}, LogOne);
    WalkFaults(UseFiles, {}, {}, LogOne);
    WalkFaults(UseFiles, {L"30", L"48", L"1"}, {L"0", L"24"}, [] {
        TrafficSeries series;
        return Told{ReadTrafficLog(UsageMode::Daily, {2006, 11, 5}, series), series.received[1] + series.received[30],
                    ExportTraffic(DataPath(L"out.csv").c_str(), {{2006, 12, 30}, {2006, 12, 31}})};
    });
    WalkFaults(UseFiles, {L"2"}, {L"0", L"1"}, [] {
        LogSearch search;
        const int logs = (NextLogFile(search) != nullptr ? 1 : 0) + (NextLogFile(search) != nullptr ? 1 : 0);
        return DeleteAllLogs(), Told{logs};
    });
}

Told Load() {
    LoadDisplaySettings();
    LoadFolderSettings();
    return Told{itemState.xLocation, itemState.showTaskbarIcon, itemState.amPmFormat, itemState.adapterName,
                itemState.dataFolder};
}

// What is stored stays, though it could not be read; only what is absent is written.
TEST(Faults, Of_the_settings) {
    const wchar_t folder[] = LR"(\Program Files\Ostrik\Quorvane)";
    WalkFaults(UseFiles, {L"0", L"0", L"0", L"stored", LR"(\data)"}, {L"75", L"1", L"{eth}", folder}, Load);
    WalkFaults(UseAdapter, {L"75", L"1", L"1", L"{eth}", folder}, {}, Load);
    WalkFaults(UseFiles, {}, {}, [] {
        itemState.showTaskbarIcon = itemState.amPmFormat = false;
        return SaveXLocation(7), SaveShowTaskbarIcon(true), SaveHourFormat(true), Told{};
    });
}

Told Add() {
    return Told{AddHost(nullptr, L"new")};
}

constexpr MacAddress kSafe = {{'s', 'a', 'f', 'e', '-', '1'}};
constexpr MacAddress kThird = {{'s', 'a', 'f', 'e', '-', '3'}};

// Whatever fails, no other host gets lost. Only a list that cannot be opened for reading and writing begins anew.
TEST(Faults, Of_the_lists) {
    const Bytes added = HostRecordOf(L"new");
    WalkFaults(UseAdapter, {L"1"}, {L"0"}, Add);
    WalkFaults(UseFiles, {L"1"}, {L"0", std::wstring(added.begin(), added.end())}, Add);
    WalkFaults(UseFiles, {L"3", L"1"}, {L"0", L"1", L"2", L"Cannot update host file!"}, [] {
        return Told{ListedHosts().size(), DeleteHost(nullptr, L"one")};
    });
    WalkFaults(UseFiles, {L"1"}, {L"0"}, [] { return Told{SafeListAdd(kThird)}; });
    WalkFaults(UseFiles, {L"1", L"1"}, {L"0", L"Cannot delete host!"}, [] {
        return Told{SafeListContains(kSafe), SafeListRemove(nullptr, kSafe)};
    });
}

// Without a documents folder it goes to the root.
TEST(Faults, Of_the_report) {
    const wchar_t elsewhere[] = LR"(Data output to: \QuorvaneRpt001.csv)";
    WalkFaults(UseFiles, {}, {elsewhere, L"Output to file error!"}, [] {
        DeleteFileW(L"\\My Documents\\QuorvaneRpt001.csv");
        const auto read = [](HWND, int, DetectorCells& cells) { wcscpy(cells.mac, L"73:61:66:65:2D:31"); };
        ExportIntruderReport(nullptr, kThird, {2, read, nullptr});
        return Told{};
    });
}

void UseNetwork() {
    scripted::system.adapters = {{.address = "127.0.0.33"}};
    scripted::system.echo = [](uint32_t address, DWORD) {
        platform::EchoReply reply = {};
        reply.address = inet_addr("127.0.0.1");
        return address == reply.address ? std::optional(reply) : std::nullopt;
    };
    scripted::system.arp = {{inet_addr("127.0.0.1"), {1, 2, 3, 4, 5, 6}}};
    fakes::workersRunInline = true;
}

TEST(Faults, Of_the_network_tools) {
    WalkFaults(UseNetwork, {L"Host (127.0.0.1) is alive", L"Round Trip Time: 0 ms", L"MAC Address: 01:02:03:04:05:06"},
               {L"Error: No ping service", L"Request timed out."}, [] {
                   PingLines lines;
                   PingHost("127.0.0.1", 5000, lines);
                   return Told{lines.status, lines.roundTrip, lines.mac};
               });
    WalkFaults(UseNetwork, {L"1", L"1", L"HOST-1", L"1"}, {L"0", L"-1", L"Cannot get current IP address!"}, [] {
        const bool started = StartScan(nullptr);
        const HostRecord first = scanState.table != nullptr ? scanState.table->hosts[0] : HostRecord();
        ReleaseScanTable();
        return Told{started, first.status, first.name, first.macKnown};
    });
}

TEST(Faults, Of_the_adapter_tools) {
    WalkFaults(UseFiles, {L"1", L"Adapter - Test adapter", L"ethernet", L"8.8.8.8"},
               {L"0", L"No adapter is available."}, [] {
                   wcscpy(itemState.adapterName, L"{eth}");
                   AdapterDetails details;
                   ReadAdapterDetails(false, details);
                   return Told{ReadInterfaceCounters().received, details.title, details.type, details.secondDns};
               });
    WalkFaults(UseFiles, {L"6", L"Test adapter", L"10.0.0.1"}, {L"-1", L"4", L""}, [] {
        AdapterProperty rows[kMostAdapterProperties] = {};
        return Told{ReadAdapterProperties(rows), rows[0].value, rows[5].value};
    });
    WalkFaults(UseFiles, {L"1", L"10.0.0.1", L"Thu. Jan 1, 1970 00:00:00", L"1", L"1"}, {L"0"}, [] {
        DhcpInfo info = {};
        return Told{ReadDhcpInfo(info) == DhcpState::Ready, info.server, info.expires,
                    ChangeLease(LeaseAction::Release) == LeaseResult::Done,
                    ChangeLease(LeaseAction::Renew) == LeaseResult::Done};
    });
    // An answer that breaks off counts as far as it came.
    WalkFaults(UseAdapter, {L"1", L"1.1.1.1"}, {L"0", L"2.2.2.2", L"1.1."}, [] {
        auto& answers = scripted::system.internet.answers;
        answers = {{L"ip1.quorvane.net", {"1.1.", "1.1"}}, {L"ip2.quorvane.net", {"2.2.2.2"}}};
        wchar_t address[kPublicIpUnits] = {};
        return Told{DetectPublicIpFromAny(address), address};
    });
}

TEST(Faults, Of_the_wireless_tools) {
    const auto useRadio = [] {
        UseWireless();
        scripted::system.wireless.values = {
            {OID_802_11_RSSI, NdisFields({static_cast<uint32_t>(-60)})},
            {OID_802_11_SSID, SsidValue("home", 4)},
            {OID_802_11_BSSID, {1, 2, 3, 4, 5, 6}},
            {OID_802_11_BSSID_LIST, AccessPointListBuilder().Add("home", 1, -60).Value()},
            {OID_802_11_CONFIGURATION, NdisFields({32, 100, 7, 2437000})}};
    };
    WalkFaults(useRadio, {L"1", L"-60", L"1", L"home", L"1", L"1", L"(channel 6)"}, {L"0", L"-200"}, [] {
        AccessPointTable table;
        ResetAccessPoints(table);
        CardDetails details;
        return Told{QuerySignal(),   itemState.SignalDbm, ScanAccessPoints(table).usable,
                    table.shownSsid, table.count,         ReadCardDetails(details),
                    details.channel};
    });
}

}  // namespace
