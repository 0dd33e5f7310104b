// What the script decides about the system. Only what differs between a desktop and a handheld, or between two runs, is
// replaced; files and registry are the real ones.

#include "tests/device/reference/hooks.h"

#include "platform/desktop/today_frame.h"

#include <algorithm>

using namespace device_script;

namespace {

uint32_t askedHost = 0;  // network byte order, of the latest datagram

std::wstring Wide(const char* text) {
    return {text, text + strlen(text)};
}

const Host* FindHost(uint32_t address) {
    const auto* found = std::find_if(std::begin(kHosts), std::end(kHosts),
                                     [&](const Host& host) { return host.lastByte == address >> 24; });
    return found == std::end(kHosts) ? nullptr : found;
}

void WINAPI ScriptedLocalTime(SYSTEMTIME* time) {
    const World& world = player->world;
    *time = {static_cast<WORD>(world.year),
             static_cast<WORD>(world.month),
             0,
             static_cast<WORD>(world.day),
             static_cast<WORD>(world.hour),
             kMinute,
             kSecond,
             0};
}

BOOL WINAPI ScriptedFolder(HWND, wchar_t* path, int folder, BOOL) {
    wcscpy(path, Wide(folder == CSIDL_PERSONAL ? kDocuments : kProgramFiles).c_str());
    return TRUE;
}

// The item has the strip's size, every other window the screen's.
BOOL WINAPI ScriptedClientArea(HWND window, RECT* area) {
    const World& world = player->world;
    const bool hiRes = std::max(world.screenWidth, world.screenHeight) > 320;
    const bool isItem = player->trace.NameOf(Number(window)) == "item";
    *area = {0, 0, static_cast<LONG>(world.screenWidth), static_cast<LONG>(world.screenHeight)};
    area->bottom = isItem ? (hiRes ? 40 : 24) : area->bottom;
    return TRUE;
}

int WINAPI ScriptedFace(HDC, int, wchar_t* face) {
    wcscpy(face, L"Tahoma");
    return 7;
}

BOOL WINAPI NoteProgram(const wchar_t*, wchar_t* arguments, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL, DWORD,
                        void*, const wchar_t*, STARTUPINFOW*, PROCESS_INFORMATION*) {
    const uint64_t values[10] = {0, Number(arguments)};
    player->trace.Note(ShapeOf("CreateProcessW"), values);
    return FALSE;
}

UINT_PTR WINAPI NoteTimer(HWND window, UINT_PTR timer, UINT period, TIMERPROC) {
    const uint64_t values[] = {Number(window), timer, period, 0};
    player->trace.Note(ShapeOf("SetTimer"), values);
    return timer;
}

BOOL WINAPI NoteTimerEnd(HWND window, UINT_PTR timer) {
    const uint64_t values[] = {Number(window), timer};
    player->trace.Note(ShapeOf("KillTimer"), values);
    return TRUE;
}

// Workers take turns: each ends before the next begins.
decltype(&CreateThread) createThread = nullptr;
HANDLE WINAPI RunThread(SECURITY_ATTRIBUTES* rights, SIZE_T stack, LPTHREAD_START_ROUTINE start, void* argument,
                        DWORD flags, DWORD* id) {
    HANDLE thread = createThread(rights, stack, start, argument, flags, id);
    WaitForSingleObject(thread, 10000);
    return thread;
}

int WINAPI AskHost(SOCKET, const char*, int bytes, int, const sockaddr* host, int) {
    askedHost = reinterpret_cast<const sockaddr_in*>(host)->sin_addr.s_addr;
    return bytes;
}

// A closed port answers with an error, which the exceptional set would tell.
int WINAPI HasAnswered(SOCKET, fd_set*) {
    const Host* host = FindHost(askedHost);
    return host != nullptr && host->name != nullptr;
}

int WINAPI ReadAnswer(SOCKET, char* reply, int, int, sockaddr*, int*) {
    constexpr int kBytes = 57 + 18;
    std::fill_n(reply, kBytes, char{0});
    reply[56] = 1;
    std::fill_n(reply + 57, 15, ' ');
    const char* name = FindHost(askedHost)->name;
    std::copy_n(name, strlen(name), reply + 57);
    return kBytes;
}

hostent* WINAPI FindByName(const char* name) {
    static uint32_t address;
    static char* addresses[] = {reinterpret_cast<char*>(&address), nullptr};
    static hostent entry = {nullptr, nullptr, AF_INET, sizeof(address), addresses};
    for (const Host& host : kHosts) {
        if (host.dnsName != nullptr && _stricmp(host.dnsName, name) == 0) {
            address = 0x0007A8C0 | static_cast<uint32_t>(host.lastByte) << 24;
            return &entry;
        }
    }
    return nullptr;
}

// The host's window is the frame that the desktop takes for the screen. It has no taskbar.
HWND WINAPI FindFrame(HWND parent, HWND after, const wchar_t* kind, const wchar_t*) {
    return parent == nullptr && after == nullptr && wcscmp(kind, platform::kFrameClass) == 0 ? hostWindow : nullptr;
}

HDC WINAPI GetScreen(HWND window, HRGN, DWORD) {
    const uint64_t screen[] = {0};
    const std::string name = player->trace.Note(ShapeOf("GetDC"), screen);
    HDC context = GetWindowDC(window);
    player->trace.names[Number(context)] = name;
    return context;
}

template <class Function>
void* Pointer(Function function) {
    return reinterpret_cast<void*>(+function);
}

}  // namespace

void ScriptSystem() {
    const struct {
        const char* name;
        void* replacement;
    } rows[] = {
        {"GetLocalTime", Pointer(ScriptedLocalTime)},
        {"GetTickCount", Pointer([] { return player->world.tickCount; })},
        {"GetTimeZoneInformation",
         Pointer([](TIME_ZONE_INFORMATION* zone) { return *zone = {}, TIME_ZONE_ID_UNKNOWN; })},
        {"Sleep", Pointer([](DWORD) {})},
        {"SHGetSpecialFolderPathW", Pointer(ScriptedFolder)},
        {"GetClientRect", Pointer(ScriptedClientArea)},
        {"FindWindowExW", Pointer(FindFrame)},
        {"GetDCEx", Pointer(GetScreen)},
        {"GetPixel", Pointer([](HDC, int, int) { return COLORREF{0}; })},
        {"GetTextFaceW", Pointer(ScriptedFace)},
        {"CreateProcessW", Pointer(NoteProgram)},
        {"SetTimer", Pointer(NoteTimer)},
        {"KillTimer", Pointer(NoteTimerEnd)},
        {"socket", Pointer([](int, int, int) { return SOCKET{1}; })},
        {"closesocket", Pointer([](SOCKET) { return 0; })},
        {"ioctlsocket", Pointer([](SOCKET, long, u_long*) { return 0; })},
        {"sendto", Pointer(AskHost)},
        {"select", Pointer([](int, fd_set*, fd_set*, fd_set*, const timeval*) { return 1; })},
        {"__WSAFDIsSet", Pointer(HasAnswered)},
        {"recvfrom", Pointer(ReadAnswer)},
        {"gethostbyname", Pointer(FindByName)},
    };
    for (const auto& row : rows) {
        ReplaceImport(row.name, row.replacement);
    }
    createThread = reinterpret_cast<decltype(createThread)>(ReplaceImport("CreateThread", Pointer(RunThread)));
}
