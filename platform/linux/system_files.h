// platform/linux/system_files.h - small reads of the system: files, processes, interfaces.

#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

namespace helper {

// At most this much of a file is read: a lease file is a few kilobytes, and one of megabytes is not worth waiting for.
inline constexpr size_t kMaxFileBytes = 1u << 20;

struct FileText {
    std::string text;
    uint32_t modified = 0;  // seconds since 1970
};

// False unless `path` is a regular file that can be read. Of a file longer than kMaxFileBytes the end is read.
bool ReadSmallFile(const std::string& path, FileText& file);

struct Process {
    pid_t id = 0;
    std::vector<std::string> arguments;
};

// The processes in this one's network namespace that belong to the superuser or to this user, and systemd-networkd. A
// namespace that this user may not look at counts as the same. Other users' processes are left out because their
// arguments are theirs to choose, and a privileged helper repeats arguments.
std::vector<Process> ListTrustedProcesses();

// False once the process has ended, even if another has its number now.
bool IsRunning(const Process& process);

// The interface's number, 0 when there is none of that name.
uint32_t InterfaceIndex(const std::string& name);

// False too when the interface is not there.
bool HasIpv4Address(const std::string& name);
bool IsInterfaceUp(const std::string& name);

// The part of a path behind its last slash.
std::string BaseName(const std::string& path);

}  // namespace helper
