// A non-blocking Winsock connection on which every wait is a select with what is left of the bound.

#include "platform/desktop/helper_connection.h"

namespace platform {
namespace {

using helper_protocol::kHeaderBytes;
using helper_protocol::MessageHeader;

// An answer's value with its result and header, and some slack for texts.
constexpr size_t kMessageBytes = kHelperValueBytes + 512;

struct HelperConnection {
    bool isOpen;
    uint32_t number;  // of the last one opened
    SOCKET socket;
    uint32_t sequence;
    bool hasFailed;
    DWORD failedAt;  // GetTickCount
    uint8_t message[kMessageBytes];
};

HelperConnection connection;

struct Bound {
    DWORD start;
    DWORD milliseconds;
};

struct HelperAddress {
    uint16_t port;
    char token[helper_protocol::kTokenDigits + 1];
};

DWORD TimeLeft(const Bound& bound) {
    const DWORD passed = GetTickCount() - bound.start;
    return passed < bound.milliseconds ? bound.milliseconds - passed : 0;
}

bool ReadAddress(HelperAddress& address) {
    char port[8] = {};
    const DWORD digits = GetEnvironmentVariableA("QUORVANE_HELPER_PORT", port, sizeof(port));
    const DWORD tokenDigits = GetEnvironmentVariableA("QUORVANE_HELPER_TOKEN", address.token, sizeof(address.token));
    if (digits == 0 || digits > 5 || tokenDigits != helper_protocol::kTokenDigits) {
        return false;
    }
    uint32_t value = 0;
    for (DWORD i = 0; i < digits; ++i) {
        if (port[i] < '0' || port[i] > '9') {
            return false;
        }
        value = value * 10 + static_cast<uint32_t>(port[i] - '0');
    }
    address.port = static_cast<uint16_t>(value);
    return value > 0 && value <= 0xFFFF && helper_protocol::IsToken({address.token, tokenDigits});
}

// True when the socket becomes readable (or writable) in time; a refused connection counts as neither.
bool Await(SOCKET socket, bool forWriting, const Bound& bound) {
    const DWORD left = TimeLeft(bound);
    fd_set ready;
    fd_set failed;
    FD_ZERO(&ready);
    FD_ZERO(&failed);
    FD_SET(socket, &ready);
    FD_SET(socket, &failed);
    timeval time{static_cast<long>(left / 1000), static_cast<long>(left % 1000 * 1000)};
    const int count = select(0, forWriting ? nullptr : &ready, forWriting ? &ready : nullptr, &failed, &time);
    return count > 0 && FD_ISSET(socket, &ready);
}

bool SendAll(std::span<const uint8_t> bytes, const Bound& bound) {
    while (!bytes.empty()) {
        const int sent =
            send(connection.socket, reinterpret_cast<const char*>(bytes.data()), static_cast<int>(bytes.size()), 0);
        if (sent > 0) {
            bytes = bytes.subspan(static_cast<size_t>(sent));
        } else if (WSAGetLastError() != WSAEWOULDBLOCK || !Await(connection.socket, true, bound)) {
            return false;
        }
    }
    return true;
}

bool ReceiveAll(std::span<uint8_t> bytes, const Bound& bound) {
    while (!bytes.empty()) {
        const int received =
            recv(connection.socket, reinterpret_cast<char*>(bytes.data()), static_cast<int>(bytes.size()), 0);
        if (received > 0) {
            bytes = bytes.subspan(static_cast<size_t>(received));
        } else if (received == 0 || WSAGetLastError() != WSAEWOULDBLOCK || !Await(connection.socket, false, bound)) {
            return false;
        }
    }
    return true;
}

bool Connect(SOCKET socket, uint16_t port) {
    u_long nonBlocking = 1;
    BOOL noDelay = TRUE;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    if (ioctlsocket(socket, static_cast<long>(FIONBIO), &nonBlocking) != 0) {
        return false;
    }
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&noDelay), sizeof(noDelay));
    if (connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0) {
        return true;
    }
    return WSAGetLastError() == WSAEWOULDBLOCK && Await(socket, true, {GetTickCount(), kHelperConnectMs});
}

bool OpenConnection(const HelperAddress& address) {
    WSADATA data;
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0) {
        return false;
    }
    connection.socket = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    connection.isOpen = connection.socket != INVALID_SOCKET && Connect(connection.socket, address.port);
    if (!connection.isOpen) {
        if (connection.socket != INVALID_SOCKET) {
            closesocket(connection.socket);
        }
        WSACleanup();
        return false;
    }
    ++connection.number;
    uint8_t opening[helper_protocol::kOpeningBytes];
    helper_protocol::EncodeOpening(opening, {address.token, helper_protocol::kTokenDigits});
    return SendAll(opening, {GetTickCount(), kHelperConnectMs});
}

// The answer's body, inside connection.message; false unless it is the answer to this very request.
bool TakeAnswer(const MessageHeader& request, const Bound& bound, std::span<const uint8_t>& body) {
    MessageHeader answer;
    const std::span<uint8_t> message(connection.message);
    if (!ReceiveAll(message.first(kHeaderBytes), bound) ||
        !helper_protocol::DecodeHeader(message.first(kHeaderBytes), answer) ||
        answer.kind != (request.kind | helper_protocol::kAnswerBit) || answer.sequence != request.sequence ||
        answer.bodyBytes > message.size()) {
        return false;
    }
    body = message.first(answer.bodyBytes);
    return ReceiveAll(message.first(answer.bodyBytes), bound);
}

bool Exchange(const helper_protocol::Request& request, const Bound& bound, uint32_t& result,
              std::span<const uint8_t>& rest) {
    const MessageHeader header{0, static_cast<uint16_t>(request.kind), ++connection.sequence};
    const size_t length = helper_protocol::EncodeRequest(connection.message, header.sequence, request);
    std::span<const uint8_t> body;
    return SendAll({connection.message, length}, bound) && TakeAnswer(header, bound, body) &&
           helper_protocol::DecodeResult(body, result, rest);
}

}  // namespace

bool HasHelper() {
    HelperAddress address;
    return ReadAddress(address);
}

uint32_t HelperConnectionNumber() {
    return connection.isOpen ? connection.number : 0;
}

bool IsHelperPausing() {
    return connection.hasFailed && GetTickCount() - connection.failedAt < kHelperPauseMs;
}

void CloseHelper() {
    if (connection.isOpen) {
        closesocket(connection.socket);
        WSACleanup();
    }
    connection.isOpen = false;
    connection.hasFailed = false;
}

bool ExchangeWithHelper(const helper_protocol::Request& request, HelperPatience patience, DWORD& result,
                        std::span<const uint8_t>& rest) {
    HelperAddress address;
    if (!ReadAddress(address)) {
        result = ERROR_NOT_SUPPORTED;
        return false;
    }
    // A request that the helper would end the connection for is not sent.
    const bool isSensible = request.kind == helper_protocol::RequestKind::kRadioBinding ||
                            helper_protocol::IsInterfaceName(request.interfaceName);
    const bool isLong = patience == HelperPatience::Long;
    if (!isSensible || request.value.size() > kHelperValueBytes || (!isLong && IsHelperPausing())) {
        result = ERROR_GEN_FAILURE;
        return false;
    }
    const Bound bound{GetTickCount(), isLong ? kHelperChangeMs : kHelperQueryMs};
    uint32_t answered = 0;
    if ((connection.isOpen || OpenConnection(address)) && Exchange(request, bound, answered, rest)) {
        result = answered;
        return answered == helper_protocol::kResultOk;
    }
    result = TimeLeft(bound) == 0 ? ERROR_TIMEOUT : ERROR_GEN_FAILURE;
    CloseHelper();
    connection.hasFailed = true;
    connection.failedAt = GetTickCount();
    return false;
}

}  // namespace platform
