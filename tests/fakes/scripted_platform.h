// tests/fakes/scripted_platform.h - the boundary's services as a test scripts them. Portable: unit tests use it on
// Linux and under Wine, UI tests behind real dialogs.
#pragma once

#include "platform/adapters.h"
#include "platform/connection.h"
#include "platform/echo.h"
#include "platform/radio.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace scripted {

struct Adapter {
    std::string name = "{00000001-0000-0000-0000-000000000001}", description = "Test adapter";
    uint32_t index = 1, type = MIB_IF_TYPE_ETHERNET;
    std::vector<uint8_t> hardwareAddress = {0x02, 0x00, 0x00, 0x00, 0x00, 0x01};
    std::string address = "192.168.7.33", mask = "255.255.255.0", gateway = "192.168.7.1";
    std::vector<std::string> dnsServers = {};
    bool dhcpEnabled = false;
    std::string dhcpServer = {};
    time_t leaseObtained = 0, leaseExpires = 0;
    bool haveWins = false;
    std::string primaryWins = {}, secondaryWins = {};
    uint32_t speed = 100000000, received = 0, transmitted = 0;  // bits a second, and octets
};

struct Wireless {
    bool present = false;                             // the device opens
    std::vector<uint8_t> bindingAnswer;               // its name, as the driver gives it
    std::map<uint32_t, std::vector<uint8_t>> values;  // by OID; one without a value fails
};

struct ArpRow {
    uint32_t address;  // network byte order
    std::vector<uint8_t> hardwareAddress;
};

// The connection manager, which connects at once and knows no proxy unless told otherwise.
struct ConnectionManager {
    std::vector<DWORD> statuses;  // one per query, then connected (16)
    HRESULT proxyResult = E_NOINTERFACE;
    std::u16string proxy;
};

// The internet library: the hosts that were asked, and what each answers, read piece by piece (an unknown one nothing).
struct Internet {
    std::map<std::wstring, std::vector<std::string>> answers;
    std::vector<std::wstring> hosts;
};

struct Platform {
    std::vector<Adapter> adapters;
    std::vector<ArpRow> arp;
    Wireless wireless;
    // What an echo to an address (network byte order) brings, in any thread; without it nobody answers.
    std::function<std::optional<platform::EchoReply>(uint32_t address, DWORD timeoutMs)> echo;
    ConnectionManager connectionManager;
    Internet internet;
    std::vector<std::pair<std::string, uint32_t>> dhcpCalls;  // "release" or "renew", interface index
    SIZE screen = {240, 320};                                 // native tests; UI tests have a real frame
};

extern Platform system;

// A platform with nothing in it. Runs before every test.
void Reset();

}  // namespace scripted
