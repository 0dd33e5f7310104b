// Files: paths of the system under a temporary folder of the real one.
#include <fcntl.h>
#include <fnmatch.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <memory>

#include "tests/fakes/fakes.h"

namespace fs = std::filesystem;

namespace fakes {

namespace {

int DescriptorOf(HANDLE file) {
    return static_cast<Closable*>(file)->descriptor;
}

fs::path RealPath(const wchar_t* path) {
    std::string text(path, path + wcslen(path));
    std::ranges::replace(text, '\\', '/');
    return Root() / fs::path("./" + text).lexically_normal();
}

BOOL Transferred(ssize_t result, DWORD* count) {
    *count = static_cast<DWORD>(std::max<ssize_t>(result, 0));
    return result >= 0;
}

BOOL NextMatch(Closable& search, WIN32_FIND_DATAW* found) {
    if (search.matches.empty()) {
        return FALSE;
    }
    const std::string name = search.matches.back().filename();
    *found = {fs::is_directory(search.matches.back()) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL, {}};
    std::copy_n(name.begin(), std::min<size_t>(name.size(), MAX_PATH - 1), found->cFileName);
    search.matches.pop_back();
    return TRUE;
}

}  // namespace

const fs::path& Root() {
    static const struct Folder {
        const fs::path path = mkdtemp(std::string(fs::temp_directory_path() / "quorvane-test-XXXXXX").data());
        ~Folder() { fs::remove_all(path); }
    } folder;
    return folder.path;
}

void ResetFiles() {
    for (const auto& entry : fs::directory_iterator(Root())) {
        fs::remove_all(entry.path());
    }
    fs::create_directories(Root() / "Program Files");
    fs::create_directories(Root() / "My Documents");
}

}  // namespace fakes

using namespace fakes;

HANDLE CreateFileW(const wchar_t* path, DWORD access, DWORD, void*, DWORD disposition, DWORD, HANDLE) {
    constexpr int kDispositions[] = {0, O_CREAT | O_EXCL, O_CREAT | O_TRUNC, 0, O_CREAT};
    const int direction = (access & GENERIC_WRITE) == 0 ? O_RDONLY : (access & GENERIC_READ) == 0 ? O_WRONLY : O_RDWR;
    const fs::path real = RealPath(path);
    const bool fails = Fails("CreateFileW") || fs::is_directory(real);
    const int file = fails ? -1 : open(real.c_str(), direction | kDispositions[disposition] | O_CLOEXEC, 0644);
    return file < 0 ? INVALID_HANDLE_VALUE : new Closable(file);
}

BOOL ReadFile(HANDLE file, void* buffer, DWORD bytes, DWORD* count, void*) {
    return Transferred(Fails("ReadFile") ? -1 : read(DescriptorOf(file), buffer, bytes), count);
}

BOOL WriteFile(HANDLE file, const void* buffer, DWORD bytes, DWORD* count, void*) {
    return Transferred(Fails("WriteFile") ? -1 : write(DescriptorOf(file), buffer, bytes), count);
}

DWORD SetFilePointer(HANDLE file, LONG distance, LONG*, DWORD method) {
    return Fails("SetFilePointer") ? INVALID_SET_FILE_POINTER
                                   : static_cast<DWORD>(lseek(DescriptorOf(file), distance, static_cast<int>(method)));
}

DWORD GetFileSize(HANDLE file, DWORD*) {
    struct stat status = {};
    fstat(DescriptorOf(file), &status);
    return Fails("GetFileSize") ? INVALID_FILE_SIZE : static_cast<DWORD>(status.st_size);
}

BOOL CreateDirectoryW(const wchar_t* path, void*) {
    return !Fails("CreateDirectoryW") && mkdir(RealPath(path).c_str(), 0755) == 0;
}

BOOL DeleteFileW(const wchar_t* path) {
    return !Fails("DeleteFileW") && unlink(RealPath(path).c_str()) == 0;
}

BOOL MoveFileW(const wchar_t* from, const wchar_t* to) {
    return !Fails("MoveFileW") && !fs::exists(RealPath(to)) &&
           rename(RealPath(from).c_str(), RealPath(to).c_str()) == 0;
}

HANDLE FindFirstFileW(const wchar_t* pattern, WIN32_FIND_DATAW* found) {
    const fs::path real = RealPath(pattern);
    auto search = std::make_unique<Closable>();
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(real.parent_path(), error)) {
        if (fnmatch(real.filename().c_str(), entry.path().filename().c_str(), FNM_CASEFOLD) == 0) {
            search->matches.push_back(entry.path());
        }
    }
    std::ranges::sort(search->matches, std::greater());
    const bool fails = Fails("FindFirstFileW") || !NextMatch(*search, found);
    return fails ? INVALID_HANDLE_VALUE : search.release();
}

BOOL FindNextFileW(HANDLE search, WIN32_FIND_DATAW* found) {
    return !Fails("FindNextFileW") && NextMatch(*static_cast<Closable*>(search), found);
}

BOOL FindClose(HANDLE search) {
    return CloseHandle(search);
}

BOOL SHGetSpecialFolderPathW(HWND, wchar_t* path, int folder, BOOL) {
    const bool fails = Fails("SHGetSpecialFolderPathW");
    wcscpy(path, fails ? L"" : folder == CSIDL_PROGRAM_FILES ? L"\\Program Files" : L"\\My Documents");
    return !fails;
}
