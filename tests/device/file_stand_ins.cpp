// Files: the device's root "\" is a host folder. Names are kept as they are written, sharing is enforced.

#include "tests/device/stand_in_state.h"

#include <fcntl.h>
#include <fnmatch.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

namespace {

constexpr uint32_t kInvalidHandle = 0xFFFFFFFF;
constexpr uint32_t kRead = 0x80000000;
constexpr uint32_t kWrite = 0x40000000;
enum Disposition { kCreateNew = 1, kCreateAlways, kOpenExisting, kOpenAlways };
enum Error { kFileNotFound = 2, kSharingViolation = 32, kAlreadyExists = 183, kDiskFull = 112 };

struct File : KernelObject {
    int descriptor;
    uint32_t access, share;
    std::string path;
    ~File() override { close(descriptor); }
};

struct Search : Object {
    std::vector<std::filesystem::path> names;
    size_t next = 0;
};

std::string HostPath(Bed& bed, Address text) {
    std::string path = Narrow(ReadText(bed, text));
    if (path.empty() || path[0] != '\\') {
        AddFault(bed, "names a file without its folder: " + path);
    }
    std::replace(path.begin(), path.end(), '\\', '/');
    return bed.folder + path;
}

uint32_t Fail(Bed& bed, uint32_t error, uint32_t result) {
    bed.lastError = error;
    return result;
}

// Whether no open handle forbids, nor is forbidden, this kind of access.
bool MayShare(Bed& bed, const std::string& path, uint32_t access, uint32_t share) {
    const auto allowed = [](uint32_t sharing) {
        return ((sharing & 1) != 0 ? kRead : 0) | ((sharing & 2) != 0 ? kWrite : 0);
    };
    return std::none_of(bed.objects.begin(), bed.objects.end(), [&](const auto& entry) {
        const auto* file = dynamic_cast<const File*>(entry.second.get());
        return file != nullptr &&
               std::filesystem::path(file->path).lexically_normal() == std::filesystem::path(path).lexically_normal() &&
               ((access & ~allowed(file->share)) != 0 || (file->access & ~allowed(share)) != 0);
    });
}

uint32_t CreateFileW(Bed& bed, const Arguments& a) {
    if (ReadText(bed, a[0]) == u"UIO1:") {
        const uint32_t driver = OpenDriver(bed);
        return driver != 0 ? driver : Fail(bed, kFileNotFound, kInvalidHandle);
    }
    constexpr int kFlags[] = {0, O_CREAT | O_EXCL, O_CREAT | O_TRUNC, 0, O_CREAT};
    Disk& disk = Part<Disk>(bed);
    const std::string path = HostPath(bed, a[0]);
    if (++disk.opens == disk.failingOpen || !MayShare(bed, path, a[1], a[2])) {
        return Fail(bed, kSharingViolation, kInvalidHandle);
    }
    const int mode = (a[1] & kWrite) == 0 ? O_RDONLY : (a[1] & kRead) == 0 ? O_WRONLY : O_RDWR;
    const int descriptor = a[4] > kOpenAlways ? -1 : open(path.c_str(), mode | kFlags[a[4]] | O_CLOEXEC, 0644);
    if (descriptor < 0) {
        return Fail(bed, errno == EEXIST ? 80 : kFileNotFound, kInvalidHandle);
    }
    auto file = std::make_unique<File>();
    file->descriptor = descriptor;
    file->access = a[1];
    file->share = a[2];
    file->path = path;
    return AddObject(bed, std::move(file));
}

// Reading and writing: handle, buffer, bytes, bytes done, no overlapping.
uint32_t Transfer(Bed& bed, const Arguments& a, bool writes) {
    Disk& disk = Part<Disk>(bed);
    const File* file = FindObject<File>(bed, a[0]);
    uint8_t* buffer = GuestMemory(bed, a[1], a[2], !writes);
    WriteGuest(bed, a[3], uint32_t{0});
    if (file == nullptr || buffer == nullptr || (!writes && disk.failingReads > 0 && disk.failingReads-- > 0)) {
        return 0;
    }
    if (writes && ++disk.writes >= disk.fullAtWrite && disk.fullAtWrite != 0) {
        return Fail(bed, kDiskFull, 0);
    }
    const ssize_t done = writes ? write(file->descriptor, buffer, a[2]) : read(file->descriptor, buffer, a[2]);
    WriteGuest(bed, a[3], static_cast<uint32_t>(std::max<ssize_t>(done, 0)));
    return done >= 0;
}

uint32_t GetFileSize(Bed& bed, const Arguments& a) {
    struct stat status = {};
    const File* file = FindObject<File>(bed, a[0]);
    return file != nullptr && fstat(file->descriptor, &status) == 0 ? static_cast<uint32_t>(status.st_size)
                                                                    : kInvalidHandle;
}

uint32_t SetFilePointer(Bed& bed, const Arguments& a) {
    const File* file = FindObject<File>(bed, a[0]);
    return file == nullptr ? kInvalidHandle
                           : static_cast<uint32_t>(lseek(file->descriptor, a.Signed(1), static_cast<int>(a[3])));
}

bool IsOpen(Bed& bed, const std::string& path) {
    return !MayShare(bed, path, kRead | kWrite, 0);
}

uint32_t DeleteFileW(Bed& bed, const Arguments& a) {
    const std::string path = HostPath(bed, a[0]);
    return IsOpen(bed, path) ? Fail(bed, kSharingViolation, 0) : unlink(path.c_str()) == 0;
}

uint32_t MoveFileW(Bed& bed, const Arguments& a) {
    const std::string from = HostPath(bed, a[0]);
    const std::string to = HostPath(bed, a[1]);
    if (std::filesystem::exists(to)) {
        return Fail(bed, kAlreadyExists, 0);
    }
    return IsOpen(bed, from) ? Fail(bed, kSharingViolation, 0) : rename(from.c_str(), to.c_str()) == 0;
}

uint32_t CreateDirectoryW(Bed& bed, const Arguments& a) {
    return mkdir(HostPath(bed, a[0]).c_str(), 0755) == 0 ? 1 : Fail(bed, kAlreadyExists, 0);
}

// WIN32_FIND_DATAW as the handheld has it: 560 bytes, an object number before the name, no short name.
bool WriteFound(Bed& bed, Search& search, Address record) {
    constexpr uint32_t kArchive = 0x20;
    constexpr uint32_t kDirectory = 0x10;
    if (search.next == search.names.size()) {
        return false;
    }
    const std::filesystem::path& path = search.names[search.next++];
    const bool directory = std::filesystem::is_directory(path);
    WriteGuest(bed, record, std::array<uint8_t, 560>{});
    WriteGuest(bed, record, directory ? kDirectory : kArchive);
    WriteGuest(bed, record + 32, directory ? 0 : static_cast<uint32_t>(std::filesystem::file_size(path)));
    WriteText(bed, record + 40, Widen(path.filename().string()));
    return true;
}

uint32_t FindFirstFileW(Bed& bed, const Arguments& a) {
    const std::filesystem::path pattern = HostPath(bed, a[0]);
    auto search = std::make_unique<Search>();
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(pattern.parent_path(), error)) {
        if (fnmatch(pattern.filename().c_str(), entry.path().filename().c_str(), FNM_CASEFOLD) == 0) {
            search->names.push_back(entry.path());
        }
    }
    std::sort(search->names.begin(), search->names.end());
    return WriteFound(bed, *search, a[1]) ? AddObject(bed, std::move(search))
                                          : Fail(bed, kFileNotFound, kInvalidHandle);
}

uint32_t FindNextFileW(Bed& bed, const Arguments& a) {
    auto* search = FindObject<Search>(bed, a[0]);
    return search != nullptr && WriteFound(bed, *search, a[1]);
}

uint32_t SHGetSpecialFolderPathW(Bed& bed, const Arguments& a) {
    constexpr uint32_t kPersonal = 0x05;
    constexpr uint32_t kProgramFiles = 0x26;
    if (a[2] != kPersonal && a[2] != kProgramFiles) {
        return 0;
    }
    WriteText(bed, a[1], a[2] == kPersonal ? u"\\My Documents" : u"\\Program Files");
    return 1;
}

constexpr StandInRow kRows[] = {
    {"CreateFileW", CreateFileW},
    {"ReadFile", [](Bed& bed, const Arguments& a) { return Transfer(bed, a, false); }},
    {"WriteFile", [](Bed& bed, const Arguments& a) { return Transfer(bed, a, true); }},
    {"GetFileSize", GetFileSize},
    {"SetFilePointer", SetFilePointer},
    {"DeleteFileW", DeleteFileW},
    {"MoveFileW", MoveFileW},
    {"CreateDirectoryW", CreateDirectoryW},
    {"FindFirstFileW", FindFirstFileW},
    {"FindNextFileW", FindNextFileW},
    {"FindClose", [](Bed& bed, const Arguments& a) -> uint32_t { return RemoveObject<Search>(bed, a[0]); }},
    {"SHGetSpecialFolderPath", SHGetSpecialFolderPathW},
    {"SHGetSpecialFolderPathW", SHGetSpecialFolderPathW},
};

}  // namespace

std::span<const StandInRow> FileStandIns() {
    return kRows;
}
