// Reads /proc, lease files and interface flags. Nothing here waits: special files are not opened.

#include "platform/linux/system_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <memory>

#include "platform/linux/lease_text.h"
#include "platform/linux/scoped_descriptor.h"

namespace helper {
namespace {

// Empty when the link cannot be read.
std::string ReadLink(const std::string& path) {
    char target[PATH_MAX];
    const ssize_t length = readlink(path.c_str(), target, sizeof(target));
    return length > 0 ? std::string(target, static_cast<size_t>(length)) : std::string();
}

std::string ReadAll(int descriptor) {
    std::string text;
    char block[16384];
    ssize_t length = 0;
    while (text.size() < kMaxFileBytes && (length = read(descriptor, block, sizeof(block))) > 0) {
        text.append(block, static_cast<size_t>(length));
    }
    return text;
}

std::vector<std::string> ReadArguments(const std::string& folder) {
    const ScopedDescriptor file(open((folder + "/cmdline").c_str(), O_RDONLY | O_CLOEXEC));
    std::vector<std::string> arguments;
    if (!file.IsOpen()) {
        return arguments;
    }
    const std::string text = ReadAll(file.Get());
    for (std::string_view rest = text; !rest.empty();) {
        arguments.emplace_back(TakeUntil(rest, '\0'));
    }
    return arguments;
}

bool IsOwnedBy(const std::string& path, uid_t user) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && status.st_uid == user;
}

// systemd-networkd has a user of its own, who also owns the folder of its state.
bool IsNetworkd(const std::string& folder, const std::vector<std::string>& arguments) {
    struct stat state {};
    return BaseName(arguments[0]) == "systemd-networkd" && stat("/run/systemd/netif", &state) == 0 &&
           IsOwnedBy(folder, state.st_uid);
}

bool IsTrusted(const std::string& folder, const std::vector<std::string>& arguments) {
    return IsOwnedBy(folder, 0) || IsOwnedBy(folder, geteuid()) || IsNetworkd(folder, arguments);
}

bool IsInNamespace(const std::string& folder, const std::string& ownNamespace) {
    const std::string otherNamespace = ReadLink(folder + "/ns/net");
    return otherNamespace.empty() || otherNamespace == ownNamespace;
}

// Calls `accepts` for the interface's entries until it says true.
template <typename Accept>
bool AnyEntry(const std::string& name, Accept accepts) {
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0) {
        return false;
    }
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> owner(list, freeifaddrs);
    for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next) {
        if (name == entry->ifa_name && accepts(*entry)) {
            return true;
        }
    }
    return false;
}

}  // namespace

bool ReadSmallFile(const std::string& path, FileText& file) {
    const ScopedDescriptor descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!descriptor.IsOpen() || fstat(descriptor.Get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return false;
    }
    if (status.st_size > static_cast<off_t>(kMaxFileBytes)) {
        lseek(descriptor.Get(), -static_cast<off_t>(kMaxFileBytes), SEEK_END);
    }
    file.text = ReadAll(descriptor.Get());
    file.modified = static_cast<uint32_t>(status.st_mtime);
    return true;
}

std::vector<Process> ListTrustedProcesses() {
    std::vector<Process> processes;
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir("/proc"), closedir);
    const std::string ownNamespace = ReadLink("/proc/self/ns/net");
    while (const dirent* entry = directory != nullptr ? readdir(directory.get()) : nullptr) {
        const auto id = ParseNumber(entry->d_name);
        const std::string folder = std::string("/proc/") + entry->d_name;
        if (!id || !IsInNamespace(folder, ownNamespace)) {
            continue;
        }
        auto arguments = ReadArguments(folder);
        if (!arguments.empty() && IsTrusted(folder, arguments)) {
            processes.push_back({static_cast<pid_t>(*id), std::move(arguments)});
        }
    }
    return processes;
}

bool IsRunning(const Process& process) {
    return process.id > 0 && ReadArguments("/proc/" + std::to_string(process.id)) == process.arguments;
}

uint32_t InterfaceIndex(const std::string& name) {
    return if_nametoindex(name.c_str());
}

bool HasIpv4Address(const std::string& name) {
    return AnyEntry(
        name, [](const ifaddrs& entry) { return entry.ifa_addr != nullptr && entry.ifa_addr->sa_family == AF_INET; });
}

bool IsInterfaceUp(const std::string& name) {
    return AnyEntry(name, [](const ifaddrs& entry) { return (entry.ifa_flags & IFF_UP) != 0; });
}

std::string BaseName(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

}  // namespace helper
