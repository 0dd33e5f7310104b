// platform/linux/dhcp_clients.h - the DHCP clients that a Linux machine may run, each through the interface that its
// manual documents. These functions block: they run in a process of their own, and each keeps within its bound.

#pragma once

#include <string>
#include <vector>

#include "platform/helper_protocol.h"
#include "platform/linux/system_files.h"

namespace helper {

enum class DhcpClientKind { kDhclient, kUdhcpc, kNetworkd, kDhcpcd, kNetworkManager };

// A client that may be in charge of an interface; whether it is, its lease state tells.
struct DhcpClient {
    DhcpClientKind kind = DhcpClientKind::kDhclient;
    Process process;             // as it was when last seen running
    bool gaveLeaseBack = false;  // released through this helper: DHCP runs the interface although there is no lease
};

inline constexpr int kReleaseBoundMs = 10000;
inline constexpr int kRenewBoundMs = 20000;
inline constexpr int kReportBoundMs = 2000;

// The clients of `processes` that may run the interface, the likeliest first.
std::vector<DhcpClient> FindDhcpClients(const std::string& interfaceName, const std::vector<Process>& processes);

// The state told by the first of `clients` that runs the interface; state.dhcp is false when none does.
helper_protocol::LeaseState ReadLeaseState(const std::vector<DhcpClient>& clients, const std::string& interfaceName);

// Results as helper_protocol names them; kResultNotSupported when no client runs the interface or the one that does
// has no documented way. A renewal succeeds when the interface has its new lease, and gives kResultTimeout when the
// server stays silent; the client goes on trying then. `inCharge` becomes the index of the client that did it.
uint32_t ReleaseLease(const std::vector<DhcpClient>& clients, const std::string& interfaceName, size_t& inCharge);
uint32_t RenewLease(const std::vector<DhcpClient>& clients, const std::string& interfaceName, size_t& inCharge);

// One triple per client, for the three functions above.
bool ReadDhclientLease(const DhcpClient& client, const std::string& name, helper_protocol::LeaseState& state);
uint32_t ReleaseWithDhclient(const DhcpClient& client, const std::string& name);
uint32_t RenewWithDhclient(const DhcpClient& client, const std::string& name);

bool ReadDhcpcdLease(const std::string& name, helper_protocol::LeaseState& state);
uint32_t ReleaseWithDhcpcd(const DhcpClient& client, const std::string& name);
uint32_t RenewWithDhcpcd(const DhcpClient& client, const std::string& name);

// True for a dhcpcd of this interface, or of all. It rewrites its arguments to one title: "dhcpcd: eth0 [ip4] [ip6]" or
// "dhcpcd: [manager] ..."; since version 9 the process of the superuser is "dhcpcd: [privileged proxy] eth0 [ip4]", and
// the others have users of their own.
bool IsDhcpcdFor(const std::vector<std::string>& arguments, const std::string& name);

bool ReadNetworkdLease(const std::string& name, helper_protocol::LeaseState& state);
uint32_t RenewWithNetworkd(const std::string& name);

bool ReadNetworkManagerLease(const std::string& name, helper_protocol::LeaseState& state);
uint32_t ReleaseWithNetworkManager(const std::string& name);
uint32_t RenewWithNetworkManager(const std::string& name);

// True when a dhclient with these arguments runs the interface.
bool ServesInterface(const std::vector<std::string>& dhclientArguments, const std::string& name);

}  // namespace helper
