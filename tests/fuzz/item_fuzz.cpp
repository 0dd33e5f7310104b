// What the item reads: others' texts and replies, drivers' values, its own files and registry values.
#include "adapters/public_ip.h"
#include "charts/usage_chart.h"
#include "charts/usage_table.h"
#include "diagnostics/node_status.h"
#include "diagnostics/safe_list.h"
#include "item/item_state.h"
#include "item/settings.h"
#include "options/log_months.h"
#include "platform/desktop/arp_text.h"
#include "platform/desktop/proxy_list.h"
#include "tests/fakes/fakes.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/support/access_point_list.h"
#include "tests/support/host_records.h"
#include "tests/support/node_status_reply.h"
#include "tests/support/traffic_logs.h"
#include "tests/support/wireless_values.h"
#include "trafficlog/export_writer.h"
#include "trafficlog/log_file.h"
#include "wireless/access_points.h"
#include "wireless/card_details.h"
#include "wireless/signal.h"

namespace {

void FeedTexts(Input input) {
    const std::wstring text(input.begin(), input.end());
    std::vector<MIB_IPNETROW> rows(input.size() / platform::kShortestArpLine + 1);
    rows.resize(platform::ParseArpText(std::string(TextOf(input)).c_str(), rows));
    wchar_t host[platform::kProxyHostUnits] = L"?";
    WORD port = 0;
    Demand(!platform::FindHttpProxy(text.c_str(), host, &port) || port != 0);
    Demand(wcsnlen(host, platform::kProxyHostUnits) < platform::kProxyHostUnits);
    wchar_t address[kPublicIpUnits] = L"?";
    ParseEchoBody(TextOf(input), address);
    Demand(wcsnlen(address, kPublicIpUnits) <= kPublicIpCharacters);
    LogMonth month;
    Demand(!ParseLogName(text.c_str(), month) || text.starts_with(std::wstring(month.year) + month.month));
}

void FeedAccessPoints(Input list) {
    AccessPointTable table{};
    table.count = kMostAccessPoints - 1;  // room for one more
    MergeAccessPoints(table, list);
    for (int i = 0; i < table.count; ++i) {
        Demand(i < kMostAccessPoints && strnlen(table.entries[i].ssid, kSsidBytes + 1) <= kSsidBytes);
    }
}

void FeedReplies(Input input) {
    FeedAccessPoints(input);
    char name[kNodeNameBytes + 1];
    std::ranges::fill(name, '?');
    Demand(ParseNodeStatus(input, name) == (name[kNodeNameBytes] == 0));
}

// The first byte parts the input into the binding and the value that every other question gets.
void FeedCardValues(Input input) {
    const size_t bindingBytes = input.empty() ? 0 : input[0];
    Take(input, 1);
    const Input binding = Take(input, bindingBytes);
    UseWireless();
    auto& wireless = scripted::system.wireless;
    wireless.bindingAnswer = {binding.begin(), binding.end()};
    for (const uint32_t oid :
         {OID_802_11_BSSID, OID_802_11_SSID, OID_802_11_INFRASTRUCTURE_MODE, OID_802_11_AUTHENTICATION_MODE,
          OID_802_11_WEP_STATUS, OID_802_11_NETWORK_TYPE_IN_USE, OID_802_11_RSSI, OID_802_11_CONFIGURATION}) {
        wireless.values[oid] = {input.begin(), input.end()};
    }
    CardDetails details;
    AccessPointTable table;
    ResetAccessPoints(table);
    Demand(ReadCardDetails(details) == ScanAccessPoints(table).usable);
    QuerySignal();
    Demand(strnlen(table.shownSsid, sizeof(table.shownSsid)) < sizeof(table.shownSsid));
}

// Adding one and taking it away leaves whole records without it.
void FeedLists(Input input) {
    constexpr MacAddress kMac = {{1, 2, 3, 4, 5, 6}};
    WriteWholeFile(L"hosts.dat", Bytes(input.begin(), input.end()));
    WriteWholeFile(L"slist.dat", Bytes(input.begin(), input.end()));
    AddHost(nullptr, L"added.example");
    SafeListAdd(kMac);
    fakes::AnswerMessagesWith(IDYES);
    fakes::shownMessages.clear();  // what grows from input to input would look like a leak
    Demand(DeleteHost(nullptr, L"added.example"));
    SafeListRemove(nullptr, kMac);
    for (const std::wstring& host : ListedHosts()) {
        Demand(host.size() <= kHostUnits && _wcsicmp(host.c_str(), L"added.example") != 0);
    }
    Demand(!SafeListContains(kMac) && ReadWholeFile(L"slist.dat").size() % sizeof(kMac) == 0);
}

// The first byte is the type, the rest every value.
void FeedSettings(Input input) {
    const DWORD type = input.empty() ? REG_SZ : input[0];
    Take(input, 1);
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, kItemKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
    for (const wchar_t* name : {L"Adapter", L"InstallDir", L"XLocation", L"TIcon", L"EchoHost"}) {
        RegSetValueExW(key, name, 0, type, input.data(), static_cast<DWORD>(input.size()));
    }
    RegCloseKey(key);
    LoadFolderSettings();
    LoadDisplaySettings();
    Demand(itemState.xLocation <= kLargestXLocation && wcsnlen(itemState.dataFolder, kPathUnits) < kPathUnits);
}

// A month's log through everything that reads it, and through the writer.
void FeedLog(Input input) {
    WriteLog(2006, 12, Bytes(input.begin(), input.end()));
    UsageView view = InitialUsageView();
    view.date = {2006, 12, 5};
    for (const UsageMode mode : {UsageMode::Daily, UsageMode::Hourly}) {
        view.mode = mode;
        ReadUsage(view);
        UsageChart chart;
        ArrangeUsageChart(view, chart);
        for (view.page = 0; view.page < 5; ++view.page) {
            UsageTable table;
            ArrangeUsageTable(view, table);
        }
    }
    Demand(ExportTraffic(DataPath(L"out.csv").c_str(), {{2006, 12, 3}, {2006, 12, 20}}));
    LogTrafficAt({2006, 12, 0, 5, 10, 0, 0, 0}, 3, 4);
    Demand(ReadWholeFile(L"200612.log").size() - input.size() <= sizeof(TrafficLogRecord));
}

const bool kAdded = AddFuzzers({
    {"texts",
     {BytesOf("IP address\n192.168.7.1 0x1 0x0 00:00:00:00:00:00 * eth0\n10.0.0.1 0x1 0x6 fe:dc:ba:98:76:54 *\n"),
      BytesOf("https=other:1;http=http://10.0.0.1:3128"), BytesOf("203.0.113.7\r\n"), BytesOf("200612.log")},
     FeedTexts},
    {"replies",
     {AccessPointListBuilder().Add("home", 1, -60, 1).Add(std::string(32, 's'), 2, -200).Value(),
      NodeStatusReply({"PRINTER"}), NodeStatusReply({"FIFTEEN LETTERS", ""})},
     FeedReplies},
    // A binding whose name stands behind the record's five fields, then a configuration.
    {"card_values",
     {Bytes{26} + NdisFields({0, 20, 6, 0, 0}) + Bytes{'a', 0, 'b', 0, 'c', 0} + NdisFields({32, 100, 0, 2437000})},
     FeedCardValues},
    {"lists", {HostRecordOf(std::wstring(kHostUnits, L'x')), {1, 2, 3, 4, 5, 6, 1, 2, 3}}, FeedLists},
    {"settings", {{REG_DWORD, 75, 0, 0, 0}, Bytes(1 + kPathUnits * sizeof(wchar_t), REG_SZ)}, FeedSettings},
    {"log", {LogRecord(5, 9, 1000, 10) + LogRecord(20, 23, 0xFFFFFFFF, 0x80000000) + Bytes(7, 5)}, FeedLog},
});

}  // namespace
