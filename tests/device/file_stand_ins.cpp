// Files: the device's root "\" is a host folder. Names are kept as they are written.

#include "tests/device/stand_in.h"
#include "tests/device/stand_in_state.h"

#include <fcntl.h>
#include <fnmatch.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

namespace {

namespace files = std::filesystem;

constexpr uint32_t kInvalidHandle = 0xFFFFFFFF;
constexpr uint32_t kRead = 0x80000000;
constexpr uint32_t kWrite = 0x40000000;
enum Error { kFileNotFound = 2, kSharingViolation = 32, kFileExists = 80, kDiskFull = 112, kAlreadyExists = 183 };

struct File : KernelObject {
    int descriptor;
    files::path path;
    ~File() override { close(descriptor); }
};

struct Search : Object {
    std::vector<files::path> names;
    size_t next = 0;
};

files::path HostPath(Bed& bed, const std::u16string& text) {
    std::string path = Narrow(text);
    if (path.empty() || path[0] != '\\') {
        AddFault(bed, "names a file without its folder: " + path);
    }
    std::replace(path.begin(), path.end(), '\\', '/');
    return files::path(bed.folder + path).lexically_normal();
}

uint32_t Fail(Bed& bed, uint32_t error, uint32_t result = 0) {
    bed.lastError = error;
    return result;
}

// Nothing is opened twice, so that it does not matter what handles would share.
bool IsOpen(Bed& bed, const files::path& path) {
    return std::any_of(bed.objects.begin(), bed.objects.end(), [&](const auto& entry) {
        const auto* file = dynamic_cast<const File*>(entry.second.get());
        return file != nullptr && file->path == path;
    });
}

uint32_t CreateFileW(Bed& bed, std::u16string name, uint32_t access, uint32_t, uint32_t, uint32_t disposition) {
    if (name == u"UIO1:") {
        const uint32_t driver = OpenDriver(bed);
        return driver != 0 ? driver : Fail(bed, kFileNotFound, kInvalidHandle);
    }
    constexpr std::array kFlags = {0, O_CREAT | O_EXCL, O_CREAT | O_TRUNC, 0, O_CREAT};  // by disposition
    Disk& disk = Part<Disk>(bed);
    const files::path path = HostPath(bed, name);
    if (++disk.opens == disk.failingOpen || IsOpen(bed, path)) {
        return Fail(bed, kSharingViolation, kInvalidHandle);
    }
    const int mode = (access & kWrite) == 0 ? O_RDONLY : (access & kRead) == 0 ? O_WRONLY : O_RDWR;
    const int descriptor = open(path.c_str(), mode | kFlags.at(disposition) | O_CLOEXEC, 0644);
    if (descriptor < 0) {
        return Fail(bed, errno == EEXIST ? kFileExists : kFileNotFound, kInvalidHandle);
    }
    auto file = std::make_unique<File>();
    file->descriptor = descriptor;
    file->path = path;
    return AddObject(bed, std::move(file));
}

template <bool writes>
bool Transfer(Bed& bed, File& file, Address buffer, uint32_t bytes, Address doneBytes) {
    Disk& disk = Part<Disk>(bed);
    uint8_t* memory = GuestMemory(bed, buffer, bytes, !writes);
    WriteGuest(bed, doneBytes, uint32_t{0});
    if (memory == nullptr || (!writes && disk.failingReads > 0 && disk.failingReads-- > 0)) {
        return false;
    }
    if (writes && ++disk.writes >= disk.fullAtWrite && disk.fullAtWrite != 0) {
        return Fail(bed, kDiskFull) != 0;
    }
    const ssize_t done = writes ? write(file.descriptor, memory, bytes) : read(file.descriptor, memory, bytes);
    WriteGuest(bed, doneBytes, static_cast<uint32_t>(std::max<ssize_t>(done, 0)));
    return done >= 0;
}

uint32_t DeleteFileW(Bed& bed, std::u16string name) {
    const files::path path = HostPath(bed, name);
    return IsOpen(bed, path) ? Fail(bed, kSharingViolation) : unlink(path.c_str()) == 0;
}

uint32_t MoveFileW(Bed& bed, std::u16string name, std::u16string target) {
    const files::path from = HostPath(bed, name);
    const files::path to = HostPath(bed, target);
    if (files::exists(to) || IsOpen(bed, from)) {
        return Fail(bed, files::exists(to) ? kAlreadyExists : kSharingViolation);
    }
    return rename(from.c_str(), to.c_str()) == 0;
}

// WIN32_FIND_DATAW as the handheld has it: 560 bytes, an object number before the name, no short name.
bool FindNextFileW(Bed& bed, Search& search, Address record) {
    constexpr uint32_t kArchive = 0x20, kDirectory = 0x10;
    if (search.next == search.names.size()) {
        return false;
    }
    const files::path& path = search.names[search.next++];
    const bool directory = files::is_directory(path);
    WriteGuest(bed, record, std::array<uint8_t, 560>{});
    WriteGuest(bed, record, directory ? kDirectory : kArchive);
    WriteGuest(bed, record + 32, directory ? 0 : static_cast<uint32_t>(files::file_size(path)));
    WriteText(bed, record + 40, path.filename().u16string());
    return true;
}

uint32_t FindFirstFileW(Bed& bed, std::u16string name, Address record) {
    const files::path pattern = HostPath(bed, name);
    auto search = std::make_unique<Search>();
    std::error_code error;
    for (const auto& entry : files::directory_iterator(pattern.parent_path(), error)) {
        if (fnmatch(pattern.filename().c_str(), entry.path().filename().c_str(), FNM_CASEFOLD) == 0) {
            search->names.push_back(entry.path());
        }
    }
    std::sort(search->names.begin(), search->names.end());
    return FindNextFileW(bed, *search, record) ? AddObject(bed, std::move(search))
                                               : Fail(bed, kFileNotFound, kInvalidHandle);
}

bool GetSpecialFolder(Bed& bed, uint32_t, Address path, uint32_t folder) {
    constexpr uint32_t kPersonal = 0x05, kProgramFiles = 0x26;
    WriteText(bed, path, Widen(folder == kPersonal ? device_script::kDocuments : device_script::kProgramFiles));
    return folder == kPersonal || folder == kProgramFiles;
}

}  // namespace

StandInTable FileStandIns() {
    return {
        {"CreateFileW", CreateFileW},
        {"ReadFile", Transfer<false>},
        {"WriteFile", Transfer<true>},
        {"GetFileSize", [](Bed&, File& file) { return files::file_size(file.path); }},
        {"SetFilePointer",
         [](Bed&, File& file, int32_t distance, uint32_t, int from) { return lseek(file.descriptor, distance, from); }},
        {"DeleteFileW", DeleteFileW},
        {"MoveFileW", MoveFileW},
        {"CreateDirectoryW",
         [](Bed& bed, std::u16string name) {
             return files::create_directory(HostPath(bed, name)) ? 1 : Fail(bed, kAlreadyExists);
         }},
        {"FindFirstFileW", FindFirstFileW},
        {"FindNextFileW", FindNextFileW},
        {"FindClose", RemoveObject<Search>},
        {"SHGetSpecialFolderPath", GetSpecialFolder},
        {"SHGetSpecialFolderPathW", GetSpecialFolder},
    };
}
