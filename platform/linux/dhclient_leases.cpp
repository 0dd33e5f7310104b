// A reader of dhclient's lease file: blocks `lease { statement; ... }`, later ones replacing earlier ones.

#include "platform/linux/dhclient_leases.h"

#include <algorithm>
#include <array>

#include "platform/linux/lease_text.h"

namespace helper {
namespace {

using helper_protocol::LeaseState;

// One statement's words; more than these are read past.
struct Statement {
    std::array<std::string_view, 8> words;
    size_t count = 0;
};

struct Lease {
    std::string_view interfaceName;
    LeaseState state{.dhcp = true};
    uint32_t seconds = 0;
    uint32_t renewal = 0;
    bool whole = false;
};

// Takes the next word, quoted text (without its quotes) or one of "{};" off the text; empty at its end. A comment
// reaches from # to the end of the line.
std::string_view TakeToken(std::string_view& text, bool& quoted) {
    quoted = false;
    text = text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    while (text.starts_with('#')) {
        TakeUntil(text, '\n');
        text = text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    }
    size_t length = 0;
    if (text.starts_with('"')) {
        quoted = true;
        for (length = 1; length < text.size() && text[length] != '"'; ++length) {
            length += text[length] == '\\' ? 1 : 0;
        }
        const auto token = text.substr(1, std::min(length, text.size()) - 1);
        text.remove_prefix(std::min(length + 1, text.size()));
        return token;
    }
    length = text.find_first_of("{};") == 0 ? 1 : text.find_first_of(" \t\r\n{};\"#");
    const auto token = text.substr(0, length);
    text.remove_prefix(token.size());
    return token;
}

// "6 2026/11/21 07:34:00", "epoch 1795246440" or "never".
uint32_t ParseLeaseTime(std::span<const std::string_view> words) {
    if (words.size() == 1 && words[0] == "never") {
        return helper_protocol::kNeverExpires;
    }
    if (words.size() == 2 && words[0] == "epoch") {
        return ParseNumber(words[1]).value_or(0);
    }
    if (words.size() != 3) {
        return 0;
    }
    std::array<uint32_t, 6> parts{};
    std::string_view date = words[1];
    std::string_view clock = words[2];
    for (size_t i = 0; i < parts.size(); ++i) {
        const auto part = ParseNumber(i < 3 ? TakeUntil(date, '/') : TakeUntil(clock, ':'));
        if (!part) {
            return 0;
        }
        parts[i] = *part;
    }
    return ToUnixTime(parts[0], parts[1], parts[2], parts[3], parts[4], parts[5]);
}

void ApplyOption(Lease& lease, std::string_view name, std::span<const std::string_view> values) {
    if (name == "dhcp-server-identifier") {
        lease.state.server = ParseAddress(values[0]);
    } else if (name == "dhcp-lease-time") {
        lease.seconds = ParseNumber(values[0]).value_or(0);
    } else if (name == "netbios-name-servers") {
        const auto [primary, secondary] = ParseAddressPair(values[0]);
        lease.state.winsPrimary = primary;
        lease.state.winsSecondary = secondary != 0 || values.size() < 2 ? secondary : ParseAddress(values[1]);
    }
}

void ApplyStatement(Lease& lease, const Statement& statement) {
    const std::span<const std::string_view> words(statement.words.data(), statement.count);
    if (words.size() < 2) {
        return;
    }
    if (words[0] == "interface") {
        lease.interfaceName = words[1];
    } else if (words[0] == "option" && words.size() > 2) {
        ApplyOption(lease, words[1], words.subspan(2));
    } else if (words[0] == "renew") {
        lease.renewal = ParseLeaseTime(words.subspan(1));
    } else if (words[0] == "expire") {
        lease.state.expires = ParseLeaseTime(words.subspan(1));
    }
}

// Reads the block that begins after its "{" up to its own "}". Statements of blocks within belong to none.
Lease TakeLease(std::string_view& text) {
    Lease lease;
    Statement statement;
    int depth = 1;
    while (!text.empty()) {
        bool quoted = false;
        const auto token = TakeToken(text, quoted);
        if (quoted || (token != "{" && token != "}" && token != ";")) {
            if (statement.count < statement.words.size()) {
                statement.words[statement.count++] = token;
            }
            continue;
        }
        if (token == ";" && depth == 1) {
            ApplyStatement(lease, statement);
        }
        statement = {};
        depth += token == "{" ? 1 : token == "}" ? -1 : 0;
        if (depth == 0) {
            lease.whole = true;
            break;
        }
    }
    return lease;
}

LeaseState StateOf(const Lease& lease) {
    LeaseState state = lease.state;
    if (state.expires != 0 && state.expires == lease.renewal && state.expires != helper_protocol::kNeverExpires) {
        return {.dhcp = true};
    }
    if (lease.seconds != 0 && lease.seconds < state.expires && state.expires != helper_protocol::kNeverExpires) {
        state.obtained = state.expires - lease.seconds;
    }
    return state;
}

// Calls `use` with every whole lease in the file's order.
template <typename Use>
void ForEachLease(std::string_view text, Use use) {
    std::string_view word;
    while (!text.empty()) {
        bool quoted = false;
        const auto token = TakeToken(text, quoted);
        if (token != "{" || quoted) {
            word = quoted ? std::string_view() : token;
            continue;
        }
        const Lease lease = TakeLease(text);
        if (lease.whole && word == "lease") {
            use(lease);
        }
    }
}

}  // namespace

bool ParseDhclientLeases(std::string_view text, std::string_view interfaceName, LeaseState& state) {
    bool found = false;
    ForEachLease(text, [&](const Lease& lease) {
        if (lease.interfaceName == interfaceName) {
            state = StateOf(lease);
            found = true;
        }
    });
    return found;
}

std::vector<std::string> ListDhclientInterfaces(std::string_view text) {
    std::vector<std::string> names;
    ForEachLease(text, [&](const Lease& lease) {
        std::erase(names, lease.interfaceName);
        if (StateOf(lease).expires != 0) {
            names.emplace_back(lease.interfaceName);
        }
    });
    return names;
}

}  // namespace helper
