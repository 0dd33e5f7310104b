// windows.h of the native build: the small subset of the system that deciding code uses, implemented in
// tests/fakes/win32 over a temporary folder, a scripted clock, an in-memory registry and threads of the real system.
#pragma once

#include <cstdint>
#include <cwchar>

using BOOL = int;
using BYTE = uint8_t;
using WORD = uint16_t;
using DWORD = uint32_t;
using LONG = int32_t;
using ULONG = uint32_t;
using UINT = uint32_t;
using HRESULT = int32_t;
using DWORD_PTR = uintptr_t;
using UINT_PTR = uintptr_t;
using HANDLE = void*;
using HKEY = struct FakeKey*;
using HWND = struct FakeWindow*;
using HINSTANCE = struct FakeModule*;
using HDC = struct FakeContext*;
using HGDIOBJ = void*;
using HBITMAP = struct FakeBitmap*;
using HPEN = struct FakePen*;

struct POINT {
    LONG x, y;
};
struct SIZE {
    LONG cx, cy;
};
struct RECT {
    LONG left, top, right, bottom;
};
struct GUID {
    uint32_t Data1;
    uint16_t Data2, Data3;
    uint8_t Data4[8];
};

inline constexpr BOOL TRUE = 1, FALSE = 0;
inline constexpr LONG NO_ERROR = 0, ERROR_SUCCESS = 0, ERROR_FILE_NOT_FOUND = 2, ERROR_ACCESS_DENIED = 5,
                      ERROR_INVALID_HANDLE = 6, ERROR_GEN_FAILURE = 31, ERROR_INVALID_PARAMETER = 87,
                      ERROR_BUFFER_OVERFLOW = 111, ERROR_INSUFFICIENT_BUFFER = 122, ERROR_NO_DATA = 232,
                      ERROR_MORE_DATA = 234;
inline constexpr HRESULT S_OK = 0, E_NOINTERFACE = -0x7FFFBFFE, E_FAIL = -0x7FFFBFFB;
DWORD GetLastError();

inline constexpr UINT LPTR = 0x40, CP_ACP = 0;
void* LocalAlloc(UINT flags, size_t bytes);
void* LocalFree(void* memory);

int MultiByteToWideChar(UINT codePage, DWORD flags, const char* text, int bytes, wchar_t* out, int room);
int WideCharToMultiByte(UINT codePage, DWORD flags, const wchar_t* text, int units, char* out, int room, const char*,
                        BOOL*);
inline constexpr auto& _wcsicmp = wcscasecmp;

struct SYSTEMTIME {
    WORD wYear, wMonth, wDayOfWeek, wDay, wHour, wMinute, wSecond, wMilliseconds;
};
struct FILETIME {
    DWORD dwLowDateTime, dwHighDateTime;
};
struct TIME_ZONE_INFORMATION {
    LONG Bias;
};
inline constexpr DWORD TIME_ZONE_ID_INVALID = 0xFFFFFFFF;
void GetLocalTime(SYSTEMTIME* now);
DWORD GetTickCount();
DWORD GetTimeZoneInformation(TIME_ZONE_INFORMATION* zone);
BOOL FileTimeToSystemTime(const FILETIME* fileTime, SYSTEMTIME* systemTime);

#define INVALID_HANDLE_VALUE reinterpret_cast<HANDLE>(static_cast<intptr_t>(-1))
inline constexpr int MAX_PATH = 260, CSIDL_PERSONAL = 5, CSIDL_PROGRAM_FILES = 0x26, IDOK = 1, IDYES = 6;
inline constexpr DWORD GENERIC_READ = 0x80000000, GENERIC_WRITE = 0x40000000, FILE_SHARE_READ = 1, FILE_SHARE_WRITE = 2,
                       CREATE_NEW = 1, CREATE_ALWAYS = 2, OPEN_EXISTING = 3, OPEN_ALWAYS = 4,
                       FILE_ATTRIBUTE_DIRECTORY = 0x10, FILE_ATTRIBUTE_NORMAL = 0x80, FILE_BEGIN = 0, FILE_END = 2,
                       INVALID_SET_FILE_POINTER = 0xFFFFFFFF, INVALID_FILE_SIZE = 0xFFFFFFFF;
struct WIN32_FIND_DATAW {
    DWORD dwFileAttributes;
    wchar_t cFileName[MAX_PATH];
};
HANDLE CreateFileW(const wchar_t* path, DWORD access, DWORD sharing, void*, DWORD disposition, DWORD, HANDLE);
BOOL ReadFile(HANDLE file, void* buffer, DWORD bytes, DWORD* read, void*);
BOOL WriteFile(HANDLE file, const void* buffer, DWORD bytes, DWORD* written, void*);
DWORD SetFilePointer(HANDLE file, LONG distance, LONG* high, DWORD method);
DWORD GetFileSize(HANDLE file, DWORD* high);
BOOL CloseHandle(HANDLE handle);
BOOL CreateDirectoryW(const wchar_t* path, void*);
BOOL DeleteFileW(const wchar_t* path);
BOOL MoveFileW(const wchar_t* from, const wchar_t* to);
HANDLE FindFirstFileW(const wchar_t* pattern, WIN32_FIND_DATAW* found);
BOOL FindNextFileW(HANDLE search, WIN32_FIND_DATAW* found);
BOOL FindClose(HANDLE search);
BOOL SHGetSpecialFolderPathW(HWND owner, wchar_t* path, int folder, BOOL create);

#define HKEY_LOCAL_MACHINE reinterpret_cast<HKEY>(static_cast<uintptr_t>(0x80000002u))
inline constexpr DWORD KEY_READ = 0x20019, KEY_WRITE = 0x20006, REG_SZ = 1, REG_DWORD = 4;
LONG RegOpenKeyExW(HKEY, const wchar_t* name, DWORD, DWORD access, HKEY* key);
LONG RegCreateKeyExW(HKEY, const wchar_t* name, DWORD, wchar_t*, DWORD, DWORD access, void*, HKEY* key, DWORD*);
LONG RegQueryValueExW(HKEY key, const wchar_t* name, DWORD*, DWORD* type, BYTE* data, DWORD* bytes);
LONG RegSetValueExW(HKEY key, const wchar_t* name, DWORD, DWORD type, const BYTE* data, DWORD bytes);
LONG RegCloseKey(HKEY key);

inline constexpr DWORD WAIT_OBJECT_0 = 0, WAIT_TIMEOUT = 258, WAIT_FAILED = 0xFFFFFFFF;
HANDLE CreateEventW(void*, BOOL manualReset, BOOL signalled, const wchar_t* name);
DWORD WaitForSingleObject(HANDLE object, DWORD timeoutMs);

inline constexpr UINT MB_OK = 0, MB_YESNO = 4, MB_ICONHAND = 0x10, MB_ICONQUESTION = 0x20, MB_DEFBUTTON2 = 0x100;
inline constexpr UINT WM_USER = 0x400;
int MessageBoxW(HWND owner, const wchar_t* text, const wchar_t* caption, UINT flags);
