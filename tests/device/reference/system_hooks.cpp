// What the script decides about the system. Only what differs between a desktop and a handheld, or between two runs, is
// replaced; files and registry are the real ones.

#include "tests/device/reference/hooks.h"

#include "platform/desktop/today_frame.h"
#include "tests/support/node_status_reply.h"

using namespace device_script;

namespace {

uint32_t askedHost = 0;  // network byte order, of the latest datagram

std::wstring Wide(const char* text) {
    return {text, text + strlen(text)};
}

void WINAPI ScriptedLocalTime(SYSTEMTIME* time) {
    memcpy(time, player->world.time.data(), sizeof(*time));
}

BOOL WINAPI ScriptedFolder(HWND, wchar_t* path, int folder, BOOL) {
    wcscpy(path, Wide(folder == CSIDL_PERSONAL ? kDocuments : kProgramFiles).c_str());
    return TRUE;
}

BOOL WINAPI ScriptedClientArea(HWND window, RECT* area) {
    const World& world = player->world;
    const bool isItem = player->trace.NameOf(Number(window)) == "item";
    *area = {0, 0, static_cast<LONG>(world.screenWidth), static_cast<LONG>(world.HeightOf(isItem))};
    return TRUE;
}

int WINAPI ScriptedFace(HDC, int, wchar_t* face) {
    wcscpy(face, L"Tahoma");
    return 7;
}

BOOL WINAPI NoteProgram(const wchar_t*, wchar_t* arguments, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL, DWORD,
                        void*, const wchar_t*, STARTUPINFOW*, PROCESS_INFORMATION*) {
    NoteCall("CreateProcessW", 0, arguments, 0, 0, 0, 0, 0, 0, 0, 0);
    return FALSE;
}

UINT_PTR WINAPI NoteTimer(HWND window, UINT_PTR timer, UINT period, TIMERPROC) {
    NoteCall("SetTimer", window, timer, period, 0);
    return timer;
}

BOOL WINAPI NoteTimerEnd(HWND window, UINT_PTR timer) {
    NoteCall("KillTimer", window, timer);
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

int WINAPI ReadAnswer(SOCKET, char* buffer, int, int, sockaddr*, int*) {
    const std::vector<uint8_t> reply = NodeStatusReply({FindHost(askedHost)->name});
    std::copy(reply.begin(), reply.end(), buffer);
    return static_cast<int>(reply.size());
}

hostent* WINAPI FindByName(const char* name) {
    static uint32_t address;
    static char* addresses[] = {reinterpret_cast<char*>(&address), nullptr};
    static hostent entry = {nullptr, nullptr, AF_INET, sizeof(address), addresses};
    const Host* host = FindHostNamed(name);
    address = host != nullptr ? AddressOf(*host) : 0;
    return host != nullptr ? &entry : nullptr;
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

}  // namespace

void ScriptSystem() {
    const std::pair<const char*, void*> rows[] = {
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
    for (const auto& [name, replacement] : rows) {
        ReplaceImport(name, replacement);
    }
    createThread = reinterpret_cast<decltype(createThread)>(ReplaceImport("CreateThread", Pointer(RunThread)));
}
