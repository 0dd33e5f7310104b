// Files: paths of the system under a temporary folder of the real one.

#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include "tests/fakes/fakes.h"
#include "tests/fakes/win32/parts.h"

namespace fs = std::filesystem;

namespace fakes {
namespace {

struct File : Closable {
    int descriptor;
    explicit File(int opened) : descriptor(opened) {}
    ~File() override { close(descriptor); }
};

struct Search : Closable {
    std::vector<fs::path> matches;
    size_t next = 0;
};

fs::path& RootPath() {
    static fs::path root;
    return root;
}

std::string Narrow(const wchar_t* text) {
    std::string narrow;
    for (; *text != 0; ++text) {
        narrow += *text < 0x80 ? static_cast<char>(*text) : '?';
    }
    return narrow;
}

fs::path RealPath(const wchar_t* path) {
    std::string text = Narrow(path);
    std::replace(text.begin(), text.end(), '\\', '/');
    if (text.size() > 1 && text[1] == ':') {
        text.erase(0, 2);
    }
    return RootPath() / fs::path("./" + text).lexically_normal();
}

BOOL Answer(bool succeeded, DWORD error = ERROR_ACCESS_DENIED) {
    if (!succeeded) {
        SetLastError(errno == ENOENT ? ERROR_FILE_NOT_FOUND : errno == EEXIST ? ERROR_ALREADY_EXISTS : error);
    }
    return succeeded ? TRUE : FALSE;
}

bool FailsByScript(const char* function) {
    if (!Fails(function)) {
        return false;
    }
    SetLastError(ERROR_ACCESS_DENIED);
    return true;
}

int OpenFlags(DWORD access, DWORD disposition) {
    const int direction = (access & GENERIC_WRITE) == 0 ? O_RDONLY : (access & GENERIC_READ) == 0 ? O_WRONLY : O_RDWR;
    switch (disposition) {
        case CREATE_NEW:
            return direction | O_CREAT | O_EXCL;
        case CREATE_ALWAYS:
            return direction | O_CREAT | O_TRUNC;
        case OPEN_ALWAYS:
            return direction | O_CREAT;
        default:
            return direction;
    }
}

BOOL NextMatch(Search& search, WIN32_FIND_DATAW* found) {
    if (search.next == search.matches.size()) {
        SetLastError(ERROR_NO_MORE_FILES);
        return FALSE;
    }
    const fs::path& match = search.matches[search.next++];
    *found = {};
    found->dwFileAttributes = fs::is_directory(match) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL;
    const std::string name = match.filename().string();
    std::copy_n(name.begin(), std::min<size_t>(name.size(), MAX_PATH - 1), found->cFileName);
    return TRUE;
}

}  // namespace

const fs::path& Root() {
    return RootPath();
}

void ResetFiles() {
    if (RootPath().empty()) {
        std::string pattern = fs::temp_directory_path() / "quorvane-test-XXXXXX";
        RootPath() = mkdtemp(pattern.data());
        std::atexit([] { fs::remove_all(RootPath()); });
    }
    for (const auto& entry : fs::directory_iterator(RootPath())) {
        fs::remove_all(entry.path());
    }
    fs::create_directories(RootPath() / "Program Files");
    fs::create_directories(RootPath() / "My Documents");
}

}  // namespace fakes

using namespace fakes;

HANDLE CreateFileW(const wchar_t* path, DWORD access, DWORD, void*, DWORD disposition, DWORD, HANDLE) {
    if (FailsByScript("CreateFileW")) {
        return INVALID_HANDLE_VALUE;
    }
    const fs::path real = RealPath(path);
    const int descriptor = fs::is_directory(real)
                               ? (errno = EISDIR, -1)
                               : open(real.c_str(), OpenFlags(access, disposition) | O_CLOEXEC, 0644);
    if (descriptor < 0) {
        Answer(false);
        return INVALID_HANDLE_VALUE;
    }
    return static_cast<Closable*>(new File(descriptor));
}

BOOL ReadFile(HANDLE file, void* buffer, DWORD bytes, DWORD* count, void*) {
    *count = 0;
    if (FailsByScript("ReadFile")) {
        return FALSE;
    }
    const ssize_t result = read(static_cast<File*>(static_cast<Closable*>(file))->descriptor, buffer, bytes);
    *count = result > 0 ? static_cast<DWORD>(result) : 0;
    return Answer(result >= 0);
}

BOOL WriteFile(HANDLE file, const void* buffer, DWORD bytes, DWORD* count, void*) {
    *count = 0;
    if (FailsByScript("WriteFile")) {
        return FALSE;
    }
    const ssize_t result = write(static_cast<File*>(static_cast<Closable*>(file))->descriptor, buffer, bytes);
    *count = result > 0 ? static_cast<DWORD>(result) : 0;
    return Answer(result == static_cast<ssize_t>(bytes), ERROR_DISK_FULL);
}

DWORD SetFilePointer(HANDLE file, LONG distance, LONG*, DWORD method) {
    if (FailsByScript("SetFilePointer")) {
        return INVALID_SET_FILE_POINTER;
    }
    constexpr int kOrigins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
    const off_t place = lseek(static_cast<File*>(static_cast<Closable*>(file))->descriptor, distance, kOrigins[method]);
    return static_cast<DWORD>(place);
}

DWORD GetFileSize(HANDLE file, DWORD*) {
    struct stat status = {};
    if (FailsByScript("GetFileSize") ||
        fstat(static_cast<File*>(static_cast<Closable*>(file))->descriptor, &status) != 0) {
        return INVALID_FILE_SIZE;
    }
    return static_cast<DWORD>(status.st_size);
}

BOOL CloseHandle(HANDLE handle) {
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    delete static_cast<Closable*>(handle);
    return TRUE;
}

BOOL CreateDirectoryW(const wchar_t* path, void*) {
    return FailsByScript("CreateDirectoryW") ? FALSE : Answer(mkdir(RealPath(path).c_str(), 0755) == 0);
}

BOOL DeleteFileW(const wchar_t* path) {
    return FailsByScript("DeleteFileW") ? FALSE : Answer(unlink(RealPath(path).c_str()) == 0);
}

BOOL MoveFileW(const wchar_t* from, const wchar_t* to) {
    if (FailsByScript("MoveFileW")) {
        return FALSE;
    }
    if (fs::exists(RealPath(to))) {
        SetLastError(ERROR_ALREADY_EXISTS);
        return FALSE;
    }
    return Answer(rename(RealPath(from).c_str(), RealPath(to).c_str()) == 0);
}

HANDLE FindFirstFileW(const wchar_t* pattern, WIN32_FIND_DATAW* found) {
    const fs::path real = RealPath(pattern);
    auto search = std::make_unique<Search>();
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(real.parent_path(), error)) {
        if (fnmatch(real.filename().c_str(), entry.path().filename().c_str(), FNM_CASEFOLD) == 0) {
            search->matches.push_back(entry.path());
        }
    }
    std::sort(search->matches.begin(), search->matches.end());
    if (FailsByScript("FindFirstFileW") || !NextMatch(*search, found)) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    return static_cast<Closable*>(search.release());
}

BOOL FindNextFileW(HANDLE search, WIN32_FIND_DATAW* found) {
    return FailsByScript("FindNextFileW") ? FALSE
                                          : NextMatch(*static_cast<Search*>(static_cast<Closable*>(search)), found);
}

BOOL FindClose(HANDLE search) {
    return CloseHandle(search);
}

BOOL SHGetSpecialFolderPathW(HWND, wchar_t* path, int folder, BOOL) {
    if (FailsByScript("SHGetSpecialFolderPathW")) {
        return FALSE;
    }
    wcscpy(path, folder == CSIDL_PROGRAM_FILES ? L"\\Program Files" : L"\\My Documents");
    return TRUE;
}
