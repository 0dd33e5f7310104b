// Finds the DHCP client of an interface among the running processes and hands requests to it.

#include "platform/linux/dhcp_clients.h"

#include <algorithm>
#include <cerrno>
#include <csignal>

namespace helper {
namespace {

using helper_protocol::LeaseState;

// udhcpc takes the interface from -i, and eth0 without.
bool IsUdhcpcFor(const std::vector<std::string>& arguments, const std::string& name) {
    const auto isUdhcpc = [](const std::string& word) { return BaseName(word) == "udhcpc"; };
    const auto first = arguments.begin() + (BaseName(arguments[0]) == "busybox" && arguments.size() > 1 ? 1 : 0);
    if (!isUdhcpc(*first)) {
        return false;
    }
    for (auto word = first + 1; word != arguments.end(); ++word) {
        if (word->starts_with("-i") && word->size() > 2) {
            return word->substr(2) == name;
        }
        if ((*word == "-i" || *word == "--interface") && word + 1 != arguments.end()) {
            return *(word + 1) == name;
        }
    }
    return name == "eth0";
}

bool MayRun(const Process& process, const std::string& name, DhcpClientKind& kind) {
    const std::string program = BaseName(process.arguments[0]);
    if (ServesInterface(process.arguments, name)) {
        kind = DhcpClientKind::kDhclient;
    } else if (IsUdhcpcFor(process.arguments, name)) {
        kind = DhcpClientKind::kUdhcpc;
    } else if (program == "systemd-networkd") {
        kind = DhcpClientKind::kNetworkd;
    } else if (IsDhcpcdFor(process.arguments, name)) {
        kind = DhcpClientKind::kDhcpcd;
    } else if (program == "NetworkManager") {
        kind = DhcpClientKind::kNetworkManager;
    } else {
        return false;
    }
    return true;
}

bool ReadState(const DhcpClient& client, const std::string& name, LeaseState& state) {
    switch (client.kind) {
        case DhcpClientKind::kDhclient:
            state = {.dhcp = true};  // it runs the interface even before its first lease
            ReadDhclientLease(client, name, state);
            return true;
        case DhcpClientKind::kUdhcpc:
            state = {.dhcp = true};  // it keeps no lease file
            return true;
        case DhcpClientKind::kNetworkd:
            return ReadNetworkdLease(name, state);
        case DhcpClientKind::kDhcpcd:
            return ReadDhcpcdLease(name, state);
        case DhcpClientKind::kNetworkManager:
            return ReadNetworkManagerLease(name, state);
    }
    return false;
}

const DhcpClient* FindInCharge(const std::vector<DhcpClient>& clients, const std::string& name, LeaseState& state) {
    for (const DhcpClient& client : clients) {
        if (ReadState(client, name, state)) {
            return &client;
        }
    }
    const auto released = std::find_if(clients.begin(), clients.end(), [](const auto& c) { return c.gaveLeaseBack; });
    if (released == clients.end()) {
        return nullptr;
    }
    state = {.dhcp = true};
    return &*released;
}

uint32_t Signal(const Process& process, int signal) {
    if (!IsRunning(process)) {
        return helper_protocol::kResultGeneralFailure;
    }
    if (kill(process.id, signal) == 0) {
        return helper_protocol::kResultOk;
    }
    return errno == EPERM ? helper_protocol::kResultAccessDenied : helper_protocol::kResultGeneralFailure;
}

uint32_t Release(const DhcpClient& client, const std::string& interfaceName) {
    switch (client.kind) {
        case DhcpClientKind::kDhclient:
            return ReleaseWithDhclient(client, interfaceName);
        case DhcpClientKind::kUdhcpc:
            return Signal(client.process, SIGUSR2);
        case DhcpClientKind::kNetworkd:
            break;
        case DhcpClientKind::kDhcpcd:
            return ReleaseWithDhcpcd(client, interfaceName);
        case DhcpClientKind::kNetworkManager:
            return ReleaseWithNetworkManager(interfaceName);
    }
    return helper_protocol::kResultNotSupported;
}

uint32_t Renew(const DhcpClient& client, const std::string& interfaceName) {
    switch (client.kind) {
        case DhcpClientKind::kDhclient:
            return RenewWithDhclient(client, interfaceName);
        case DhcpClientKind::kUdhcpc:
            return Signal(client.process, SIGUSR1);
        case DhcpClientKind::kNetworkd:
            return RenewWithNetworkd(interfaceName);
        case DhcpClientKind::kDhcpcd:
            return RenewWithDhcpcd(client, interfaceName);
        case DhcpClientKind::kNetworkManager:
            return RenewWithNetworkManager(interfaceName);
    }
    return helper_protocol::kResultNotSupported;
}

uint32_t ControlLease(const std::vector<DhcpClient>& clients, const std::string& interfaceName, size_t& inCharge,
                      uint32_t (*control)(const DhcpClient& client, const std::string& interfaceName)) {
    LeaseState state;
    const DhcpClient* client = FindInCharge(clients, interfaceName, state);
    if (client == nullptr) {
        return helper_protocol::kResultNotSupported;
    }
    inCharge = static_cast<size_t>(client - clients.data());
    return control(*client, interfaceName);
}

}  // namespace

std::vector<DhcpClient> FindDhcpClients(const std::string& interfaceName, const std::vector<Process>& processes) {
    std::vector<DhcpClient> clients;
    for (const Process& process : processes) {
        DhcpClient client{.process = process};
        const auto isKnown = [&](const DhcpClient& other) { return other.kind == client.kind; };
        if (MayRun(process, interfaceName, client.kind) && std::none_of(clients.begin(), clients.end(), isKnown)) {
            clients.push_back(client);
        }
    }
    std::stable_sort(clients.begin(), clients.end(), [](const auto& a, const auto& b) { return a.kind < b.kind; });
    return clients;
}

LeaseState ReadLeaseState(const std::vector<DhcpClient>& clients, const std::string& interfaceName) {
    LeaseState state;
    return FindInCharge(clients, interfaceName, state) != nullptr ? state : LeaseState{};
}

uint32_t ReleaseLease(const std::vector<DhcpClient>& clients, const std::string& interfaceName, size_t& inCharge) {
    return ControlLease(clients, interfaceName, inCharge, Release);
}

uint32_t RenewLease(const std::vector<DhcpClient>& clients, const std::string& interfaceName, size_t& inCharge) {
    return ControlLease(clients, interfaceName, inCharge, Renew);
}

}  // namespace helper
