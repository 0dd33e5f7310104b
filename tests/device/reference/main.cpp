// device_reference.exe FOLDER - performs the device script with the desktop's objects and the scripted services, and
// leaves in FOLDER what the library as ARM code has to leave too: the handheld's folders, strip.txt, dialogs.txt and
// registry.txt.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <set>

#include "item/item_state.h"
#include "item/item_window.h"
#include "item/settings.h"
#include "platform/desktop/today_frame.h"
#include "platform/today.h"
#include "tests/device/reference/hooks.h"
#include "tests/fakes/scripted_platform.h"

using namespace device_script;
namespace files = std::filesystem;

Player* player = nullptr;
HWND hostWindow = nullptr;

namespace {

std::vector<uint8_t> Bytes(const void* data, size_t size) {
    const auto* bytes = static_cast<const uint8_t*>(data);
    return {bytes, bytes + size};
}

scripted::Adapter MakeAdapter(const Adapter& row, const World::AdapterState& now) {
    const auto text = [](const char* value) { return std::string(value != nullptr ? value : ""); };
    scripted::Adapter adapter;
    adapter.name = row.name;
    adapter.description = row.description;
    adapter.index = now.index;
    adapter.hardwareAddress = Bytes(row.mac, sizeof(row.mac));
    adapter.address = row.address;
    adapter.mask = row.mask;
    adapter.gateway = row.gateway;
    for (const char* server : row.dns) {
        if (server != nullptr) {
            adapter.dnsServers.emplace_back(server);
        }
    }
    adapter.dhcpEnabled = row.dhcpServer != nullptr;
    adapter.dhcpServer = text(row.dhcpServer);
    adapter.leaseObtained = row.leaseObtained;
    adapter.leaseExpires = row.leaseExpires;
    adapter.haveWins = row.wins[0] != nullptr;
    adapter.primaryWins = text(row.wins[0]);
    adapter.secondaryWins = text(row.wins[1]);
    adapter.speed = row.speed;
    adapter.received = now.received;
    adapter.transmitted = now.transmitted;
    return adapter;
}

std::optional<platform::EchoReply> AnswerEcho(uint32_t address, DWORD) {
    const Host* host = FindHost(address);
    if (host == nullptr) {
        return std::nullopt;
    }
    platform::EchoReply reply = {};
    reply.address = address;
    reply.roundTripTime = host->roundTripMs;
    reply.timeToLive = 64;
    return reply;
}

void FillWireless(const World& world) {
    scripted::Wireless& wireless = scripted::system.wireless;
    wireless.present = world.radio;
    wireless.bindingName = std::wstring(kBinding, kBinding + strlen(kBinding));
    for (const OidValue& value : kOids) {
        wireless.values[value.oid] = Bytes(value.bytes, value.size);
    }
    wireless.values[kOidRssi] = Bytes(&world.dbm, sizeof(world.dbm));
    if (world.associated) {
        wireless.values[kOidBssid] = Bytes(kAssociatedBssid, 6);
    }
}

LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == platform::kFrameKeyboardMessage) {
        player->trace.NoteKeyboard(static_cast<uint64_t>(lParam), wParam != 0);
        return 0;
    }
    if (message != TODAYM_DRAWWATERMARK) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    const auto& request = *reinterpret_cast<const TODAYDRAWWATERMARKINFO*>(lParam);
    player->trace.NoteWatermark(Number(request.hwnd), static_cast<uint32_t>(request.rc.right),
                                static_cast<uint32_t>(request.rc.bottom));
    return TRUE;
}

struct Desktop : System {
    TODAYLISTITEM record = {};

    void OnWorldChanged(const World& world) override {
        scripted::Reset();
        for (size_t i = 0; i < std::size(kAdapters); ++i) {
            if (world.adapters[i].up) {
                scripted::system.adapters.push_back(MakeAdapter(kAdapters[i], world.adapters[i]));
            }
        }
        for (const Host& row : kHosts) {
            if (row.mac != nullptr) {
                scripted::system.arp.push_back({AddressOf(row), Bytes(row.mac, 6)});
            }
        }
        scripted::system.echo = AnswerEcho;
        for (const wchar_t* server : {L"ip1.quorvane.net", L"ip2.quorvane.net"}) {
            scripted::system.internet.answers[server].pieces = {kEchoBody};
        }
        FillWireless(world);
    }
    uint64_t Attach() override {
        hostWindow =
            CreateWindowExW(0, L"Static", nullptr, WS_POPUP, 0, 0, 480, 480, nullptr, nullptr, nullptr, nullptr);
        SetWindowLongPtrW(hostWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(HostProc));
        RegisterItemWindowClass();
        InitializeItem();
        record = {};
        record.fEnabled = TRUE;
        HWND item = InitializeCustomItem(&record, hostWindow);
        player->trace.names[Number(item)] = "item";
        return Number(item);
    }
    void Detach() override {
        DestroyWindow(hostWindow);
        UnregisterItemWindowClass();
    }
    void OpenOptions() override { OpenOptionsDialog(); }
    uint64_t OpenPage(uint32_t page) override { return OpenPageOfSheet(page); }
    void CloseWindow(uint64_t window) override { DestroyWindow(Handle(window)); }
    int64_t Send(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam) override {
        return SendMessageW(Handle(window), message, wParam, static_cast<LPARAM>(lParam));
    }
    int64_t SendData(uint64_t window, uint32_t message, uint64_t wParam, std::span<const uint32_t> data) override {
        return Send(window, message, wParam, Number(data.data()));
    }
    uint32_t WordsOfHandle() const override { return 2; }
    uint64_t Record() override { return Number(&record); }
    uint32_t RecordedHeight() override { return record.cyp; }
    uint64_t Control(uint64_t window, uint32_t id) override {
        return Number(GetDlgItem(Handle(window), static_cast<int>(id)));
    }
    uint64_t Context(uint64_t window) override { return Number(GetWindowDC(Handle(window))); }
    std::vector<ControlState> Controls(uint64_t window) override { return ControlsOf(Handle(window)); }
};

void WriteText(const files::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

// A value a line, by name: texts in quotes, numbers as such. (A text's length differs: a desktop adds a terminator.)
std::string RegistryText() {
    std::set<std::string> lines;
    wchar_t name[64];
    wchar_t text[256] = {};
    DWORD units = 64, type = 0, bytes = sizeof(text);
    HKEY key = nullptr;
    RegOpenKeyExW(HKEY_LOCAL_MACHINE, kItemKey, 0, KEY_READ, &key);
    for (DWORD index = 0;
         RegEnumValueW(key, index, name, &units, nullptr, &type, reinterpret_cast<BYTE*>(text), &bytes) == 0; ++index) {
        DWORD number = 0;
        memcpy(&number, text, sizeof(number));
        lines.insert(TextOf(name) + " " + (type == REG_SZ ? '"' + TextOf(text) + '"' : std::to_string(number)) + "\n");
        units = 64;
        bytes = sizeof(text);
    }
    RegCloseKey(key);
    return std::accumulate(lines.begin(), lines.end(), std::string());
}

const files::path kFolders[] = {"C:\\Program Files\\Ostrik", "C:\\My Documents"};

void PrepareSystem() {
    for (const files::path& folder : kFolders) {
        files::remove_all(folder);
    }
    files::create_directories(kFolders[1]);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kItemKey);
    SetCurrentDirectoryW(L"C:\\");
    const INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_WIN95_CLASSES | ICC_DATE_CLASSES};
    InitCommonControlsEx(&controls);
    itemState.instance = GetModuleHandleW(nullptr);
}

void KeepResults(const files::path& folder) {
    files::remove_all(folder);
    for (const files::path& source : kFolders) {
        const files::path target = folder / source.relative_path();
        files::create_directories(target);
        files::copy(source, target, files::copy_options::recursive);
    }
    WriteText(folder / "strip.txt", player->trace.strip);
    WriteText(folder / "dialogs.txt", player->trace.dialogs);
    WriteText(folder / "registry.txt", RegistryText());
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        fputs("device_reference FOLDER\n", stderr);
        return 2;
    }
    Desktop desktop;
    Player all(desktop);
    player = &all;
    all.trace.memory = [](uint64_t address, size_t) { return reinterpret_cast<const void*>(address); };
    PrepareSystem();
    ScriptSystem();
    ScriptDialogs();
    RecordCalls();
    all.Run();
    KeepResults(arguments[1]);
    printf("%zu steps\n", all.next);
    return 0;
}
