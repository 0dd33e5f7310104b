// libnl does the carrying: socket, family number, acknowledgements. A socket lives for one request, which costs some
// microseconds and outlives a radio's driver being unloaded.

#include "platform/linux/nl80211.h"

#include <linux/nl80211.h>
#include <netlink/genl/ctrl.h>
#include <netlink/genl/genl.h>
#include <netlink/netlink.h>
#include <sys/socket.h>

#include <cerrno>
#include <memory>

namespace helper {
namespace {

using Socket = std::unique_ptr<nl_sock, decltype(&nl_socket_free)>;
using Message = std::unique_ptr<nl_msg, decltype(&nlmsg_free)>;
using Callbacks = std::unique_ptr<nl_cb, decltype(&nl_cb_put)>;

constexpr int kReceiveBytes = 32768;  // the kernel's largest dump packet

struct Exchange {
    bool isOver = false;
    int error = 0;  // errno
    NetlinkMessages* messages = nullptr;
};

int OnMessage(nl_msg* message, void* context) {
    auto* exchange = static_cast<Exchange*>(context);
    const auto* header = static_cast<const genlmsghdr*>(nlmsg_data(nlmsg_hdr(message)));
    const auto* first = reinterpret_cast<const uint8_t*>(genlmsg_attrdata(header, 0));
    const int length = genlmsg_attrlen(header, 0);
    if (exchange->messages != nullptr && length > 0) {
        exchange->messages->emplace_back(first, first + length);
    }
    return NL_OK;
}

int OnEnd(nl_msg*, void* context) {
    static_cast<Exchange*>(context)->isOver = true;
    return NL_STOP;
}

int OnError(sockaddr_nl*, nlmsgerr* error, void* context) {
    auto* exchange = static_cast<Exchange*>(context);
    exchange->isOver = true;
    exchange->error = -error->error;
    return NL_STOP;
}

// A list that changed while it was being sent is still a list.
int OnInterrupted(nl_msg*, void*) {
    return NL_OK;
}

bool Open(const Socket& socket) {
    if (socket == nullptr || genl_connect(socket.get()) != 0) {
        return false;
    }
    const timeval wait{0, kNetlinkWaitMs * 1000};
    nl_socket_set_msg_buf_size(socket.get(), kReceiveBytes);
    return setsockopt(nl_socket_get_fd(socket.get()), SOL_SOCKET, SO_RCVTIMEO, &wait, sizeof(wait)) == 0;
}

int Run(const Socket& socket, const Message& message, NetlinkMessages* messages) {
    Exchange exchange{.messages = messages};
    const Callbacks callbacks(nl_cb_alloc(NL_CB_DEFAULT), nl_cb_put);
    if (callbacks == nullptr || nl_send_auto(socket.get(), message.get()) < 0) {
        return EIO;
    }
    nl_cb_set(callbacks.get(), NL_CB_VALID, NL_CB_CUSTOM, OnMessage, &exchange);
    nl_cb_set(callbacks.get(), NL_CB_FINISH, NL_CB_CUSTOM, OnEnd, &exchange);
    nl_cb_set(callbacks.get(), NL_CB_ACK, NL_CB_CUSTOM, OnEnd, &exchange);
    nl_cb_set(callbacks.get(), NL_CB_DUMP_INTR, NL_CB_CUSTOM, OnInterrupted, nullptr);
    nl_cb_err(callbacks.get(), NL_CB_CUSTOM, OnError, &exchange);
    while (!exchange.isOver) {
        if (nl_recvmsgs(socket.get(), callbacks.get()) < 0 && !exchange.isOver) {
            return ETIMEDOUT;
        }
    }
    return exchange.error;
}

// Builds and runs one request; `addAttributes` returns false when the message is full.
template <typename AddAttributes>
int Request(const char* family, uint8_t command, int flags, NetlinkMessages* messages, AddAttributes addAttributes) {
    const Socket socket(nl_socket_alloc(), nl_socket_free);
    const Message message(nlmsg_alloc(), nlmsg_free);
    if (!Open(socket) || message == nullptr) {
        return EIO;
    }
    const int familyId = genl_ctrl_resolve(socket.get(), family);
    if (familyId < 0) {
        return ENOENT;
    }
    if (genlmsg_put(message.get(), NL_AUTO_PORT, NL_AUTO_SEQ, familyId, 0, flags, command, 0) == nullptr ||
        !addAttributes(message.get())) {
        return ENOMEM;
    }
    return Run(socket, message, messages);
}

// One network of no name stands for all: without it the radio would only listen.
bool AddAnyNetwork(nl_msg* message) {
    nlattr* networks = nla_nest_start(message, NL80211_ATTR_SCAN_SSIDS);
    if (networks == nullptr || nla_put(message, 1, 0, nullptr) != 0) {
        return false;
    }
    nla_nest_end(message, networks);
    return true;
}

}  // namespace

int DumpGenericNetlink(const char* family, uint8_t command, uint32_t interfaceIndex, NetlinkMessages& messages) {
    return Request(family, command, NLM_F_DUMP, &messages, [&](nl_msg* message) {
        return interfaceIndex == 0 || nla_put_u32(message, NL80211_ATTR_IFINDEX, interfaceIndex) == 0;
    });
}

int TriggerScan(uint32_t interfaceIndex) {
    return Request("nl80211", NL80211_CMD_TRIGGER_SCAN, 0, nullptr, [&](nl_msg* message) {
        return nla_put_u32(message, NL80211_ATTR_IFINDEX, interfaceIndex) == 0 && AddAnyNetwork(message);
    });
}

}  // namespace helper
