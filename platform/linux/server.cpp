// One thread and one poll: clients are read and written without blocking, DHCP runs in workers, the radio's answers
// come from the kernel at once.

#include "platform/linux/server.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <limits>
#include <list>

#include "platform/linux/command.h"
#include "platform/linux/connection.h"
#include "platform/linux/requests.h"

namespace helper {
namespace {

struct Server {
    const ScopedDescriptor& listener;
    const std::string& token;
    uint64_t lastId = 0;
    std::list<Connection> connections;  // the oldest first
    Requests requests;
};

bool MakeRoom(std::list<Connection>& connections) {
    if (connections.size() < kMaxConnections) {
        return true;
    }
    const auto stranger =
        std::find_if(connections.begin(), connections.end(), [](const Connection& c) { return !c.isTrusted; });
    if (stranger == connections.end()) {
        return false;
    }
    connections.erase(stranger);
    return true;
}

void AcceptClient(Server& server) {
    Connection connection;
    connection.socket =
        ScopedDescriptor(accept4(server.listener.Get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (!connection.socket.IsOpen() || !MakeRoom(server.connections)) {
        return;
    }
    const int on = 1;
    setsockopt(connection.socket.Get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof(on));
    // The kernel would let answers that nobody takes grow to megabytes.
    const int sendBytes = helper_protocol::kMaxMessageBytes;
    setsockopt(connection.socket.Get(), SOL_SOCKET, SO_SNDBUF, &sendBytes, sizeof(sendBytes));
    connection.id = ++server.lastId;
    connection.since = NowMs();
    server.connections.push_back(std::move(connection));
}

// One message at a time, so that a client with many waits behind the others.
bool HandleMessage(Server& server, Connection& connection) {
    helper_protocol::MessageHeader header;
    std::span<const uint8_t> body;
    if (!ReceiveBytes(connection, server.token)) {
        return false;
    }
    if (!HasMessage(connection, header, body)) {
        return true;
    }
    if (!StartRequest(server.requests, connection, header, body)) {
        return false;
    }
    DropMessage(connection);
    return SendBytes(connection);
}

// The kernel would go on for minutes trying to hand over answers that the peer does not take.
void Abort(const Connection& connection) {
    const linger now{1, 0};
    setsockopt(connection.socket.Get(), SOL_SOCKET, SO_LINGER, &now, sizeof(now));
}

bool HandleEvents(Server& server, Connection& connection, short events) {
    if ((events & (POLLERR | POLLNVAL)) != 0 || (connection.isBusy && (events & (POLLHUP | POLLRDHUP)) != 0)) {
        return false;
    }
    if ((events & POLLOUT) != 0 && !SendBytes(connection)) {
        return false;
    }
    const bool isReadable = (events & (POLLIN | POLLHUP)) != 0 && connection.output.empty();
    if (NowMs() >= DropTime(connection)) {
        Abort(connection);
        return false;
    }
    return !isReadable || HandleMessage(server, connection);
}

short EventsOf(const Connection& connection) {
    if (connection.isBusy) {
        return POLLRDHUP;
    }
    return connection.output.empty() ? POLLIN : POLLOUT;
}

std::vector<pollfd> ListWaits(const Server& server, int watched) {
    std::vector<pollfd> waits{{watched, POLLIN, 0}, {server.listener.Get(), POLLIN, 0}};
    for (const Connection& connection : server.connections) {
        waits.push_back({connection.socket.Get(), EventsOf(connection), 0});
    }
    for (const Worker& worker : server.requests.workers) {
        waits.push_back({worker.output.Get(), POLLIN, 0});
    }
    return waits;
}

int TimeUntilNext(const Server& server) {
    long long next = std::numeric_limits<long long>::max();
    for (const Connection& connection : server.connections) {
        next = std::min(next, DropTime(connection));
    }
    for (const Worker& worker : server.requests.workers) {
        next = std::min(next, worker.deadline);
    }
    return next == std::numeric_limits<long long>::max() ? -1 : static_cast<int>(std::max(next - NowMs(), 0LL));
}

// `events` are the workers' in their order.
void HandleWorkers(Server& server, const pollfd* events) {
    auto worker = server.requests.workers.begin();
    while (worker != server.requests.workers.end()) {
        if (!IsFinished(*worker, (events++)->revents != 0)) {
            ++worker;
            continue;
        }
        const auto owner = std::find_if(server.connections.begin(), server.connections.end(),
                                        [&](const Connection& c) { return c.id == worker->connection; });
        if (owner != server.connections.end()) {
            owner->isBusy = false;
            owner->since = NowMs();
            owner->output = worker->answer;
        }
        NoteResult(server.requests, *worker);
        worker = server.requests.workers.erase(worker);
    }
}

// `events` are the connections' in their order.
void HandleConnections(Server& server, const pollfd* events) {
    for (auto connection = server.connections.begin(); connection != server.connections.end();) {
        const bool goesOn = HandleEvents(server, *connection, (events++)->revents);
        connection = goesOn ? std::next(connection) : server.connections.erase(connection);
    }
}

}  // namespace

ScopedDescriptor ListenOnLoopback(uint16_t& port) {
    ScopedDescriptor listener(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof(address);
    auto* any = reinterpret_cast<sockaddr*>(&address);
    if (!listener.IsOpen() || bind(listener.Get(), any, length) != 0 || listen(listener.Get(), SOMAXCONN) != 0 ||
        getsockname(listener.Get(), any, &length) != 0) {
        return ScopedDescriptor();
    }
    port = ntohs(address.sin_port);
    return listener;
}

void Serve(const ScopedDescriptor& listener, int watched, const std::string& token) {
    Server server{listener, token, 0, {}, {}};
    for (;;) {
        std::vector<pollfd> waits = ListWaits(server, watched);
        if (poll(waits.data(), waits.size(), TimeUntilNext(server)) < 0) {
            continue;
        }
        if (waits[0].revents != 0) {
            return;
        }
        // Workers first: their places in the list are behind the connections', which come and go.
        const pollfd* connectionEvents = waits.data() + 2;
        HandleWorkers(server, connectionEvents + server.connections.size());
        HandleConnections(server, connectionEvents);
        if (waits[1].revents != 0) {
            AcceptClient(server);
        }
    }
}

}  // namespace helper
