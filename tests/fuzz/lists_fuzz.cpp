// Any bytes as the item's two lists and as its registry values.

#include "diagnostics/safe_list.h"
#include "item/item_state.h"
#include "item/settings.h"
#include "tests/fakes/fakes.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/support/host_records.h"

namespace {

void FeedHostList(Input input) {
    WriteWholeFile(L"hosts.dat", Bytes(input.begin(), input.end()));
    const std::vector<std::wstring> before = ListedHosts();
    for (const std::wstring& host : before) {
        Demand(host.size() <= kHostUnits);
    }
    const bool isCut = input.size() % kHostRecordBytes != 0;
    const bool added = AddHost(nullptr, L"added.example");
    const size_t after = ListedHosts().size();
    Demand(isCut || after == before.size() + (added ? 1 : 0));
    Demand(!AddHost(nullptr, L"ADDED.example") || isCut);
    fakes::AnswerMessagesWith(IDYES);
    fakes::shownMessages.clear();  // what grows from input to input would look like a leak
    Demand(DeleteHost(nullptr, L"added.example"));
    for (const std::wstring& host : ListedHosts()) {
        Demand(_wcsicmp(host.c_str(), L"added.example") != 0);
    }
}

const Fuzzer kHostList("host_list", {"diagnostics/host_list.cpp", "diagnostics/record_file.cpp"}, FeedHostList,
                       {HostRecordOf(L"a") + HostRecordOf(L"b.example"), HostRecordOf(std::wstring(kHostUnits, L'x')),
                        HostRecordOf(L"Added.Example") + Bytes{'b', 0, 0}});

void FeedSafeList(Input input) {
    constexpr wchar_t kList[] = L"slist.dat";
    constexpr MacAddress kMac = {{0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}};
    const Bytes whole(input.begin(), input.end() - static_cast<std::ptrdiff_t>(input.size() % 6));
    WriteWholeFile(kList, whole);
    const bool there = SafeListContains(kMac);
    SafeListAdd(kMac);
    Demand(SafeListContains(kMac) && SafeListRemove(nullptr, kMac) && !SafeListContains(kMac));
    Demand(there || ReadWholeFile(kList) == whole);
    WriteWholeFile(kList, Bytes(input.begin(), input.end()));  // with a cut tail
    SafeListRemove(nullptr, kMac);
    Demand(!SafeListContains(kMac) && ReadWholeFile(kList).size() % 6 == 0);
}

const Fuzzer kSafeList("safe_list", {"diagnostics/safe_list.cpp", "diagnostics/record_file.cpp"}, FeedSafeList,
                       {{0, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E, 1, 2, 3, 4, 5, 6, 0, 0x1A, 0x2B}, {1, 2, 3, 4, 5, 6}});

// The first byte is the type, the rest every value.
void FeedSettings(Input input) {
    const DWORD type = input.empty() ? REG_SZ : input[0];
    Take(input, 1);
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, kItemKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
    for (const wchar_t* name : {L"Adapter", L"InstallDir", L"XLocation", L"TIcon", L"TFormat", L"EchoHost"}) {
        RegSetValueExW(key, name, 0, type, input.data(), static_cast<DWORD>(input.size()));
    }
    RegCloseKey(key);
    LoadFolderSettings();
    LoadDisplaySettings();
    Demand(itemState.xLocation <= kLargestXLocation);
    Demand(wcsnlen(itemState.dataFolder, kPathUnits) < kPathUnits);
    wchar_t few[4] = L"?";
    Demand(!ReadStringSetting(L"EchoHost", few) || (type == REG_SZ && wcsnlen(few, 4) < 4));
}

const Fuzzer kSettings("settings", {"item/settings.cpp"}, FeedSettings,
                       {{REG_DWORD, 75, 0, 0, 0},
                        {REG_DWORD, 0x80, 2, 0, 0},
                        {REG_SZ, 'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0, 0, 0},
                        Bytes(1 + kPathUnits * sizeof(wchar_t), REG_SZ)});

}  // namespace
