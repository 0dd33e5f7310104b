// Decides a request's way: the radio is asked at once, DHCP goes to a worker.

#include "platform/linux/requests.h"

#include <algorithm>

#include "platform/linux/command.h"
#include "platform/linux/radio.h"
#include "platform/linux/server.h"

namespace helper {
namespace {

using helper_protocol::MessageHeader;
using helper_protocol::Request;
using helper_protocol::RequestKind;

size_t AnswerBinding(const MessageHeader& header, std::span<uint8_t> space) {
    std::string name;
    std::string description;
    if (!FindRadio(name, description)) {
        return EncodeResult(space, header, helper_protocol::kResultGeneralFailure);
    }
    return EncodeBindingAnswer(space, header, name, description);
}

size_t AnswerQuery(const MessageHeader& header, const Request& request, std::span<uint8_t> space) {
    const size_t capacity = std::min<size_t>(request.capacity, helper_protocol::kMaxBodyBytes - sizeof(uint32_t));
    std::vector<uint8_t> value;
    const uint32_t result = QueryRadio(std::string(request.interfaceName), request.oid, capacity, value);
    if (result != helper_protocol::kResultOk) {
        return EncodeResult(space, header, result);
    }
    return EncodeValueAnswer(space, header, value);
}

void AnswerFromRadio(Connection& connection, const MessageHeader& header, const Request& request) {
    connection.output.resize(helper_protocol::kMaxMessageBytes);
    size_t length = 0;
    if (request.kind == RequestKind::kRadioBinding) {
        length = AnswerBinding(header, connection.output);
    } else if (request.kind == RequestKind::kRadioQuery) {
        length = AnswerQuery(header, request, connection.output);
    } else {
        const uint32_t result = SetRadio(std::string(request.interfaceName), request.oid, request.value);
        length = EncodeResult(connection.output, header, result);
    }
    connection.output.resize(length);
}

bool IsChange(RequestKind kind) {
    return kind == RequestKind::kRelease || kind == RequestKind::kRenew;
}

bool IsBusy(const Requests& requests, const Worker& worker) {
    const auto isInTheWay = [&](const Worker& other) {
        return IsChange(worker.kind) && IsChange(other.kind) && other.interfaceName == worker.interfaceName;
    };
    return requests.workers.size() >= kMaxWorkers ||
           std::any_of(requests.workers.begin(), requests.workers.end(), isInTheWay);
}

std::vector<DhcpClient> FindClients(const Requests& requests, const std::string& name) {
    std::vector<DhcpClient> clients = FindDhcpClients(name, ListTrustedProcesses());
    const auto released = requests.released.find(name);
    if (released == requests.released.end()) {
        return clients;
    }
    const DhcpClient& old = released->second;
    const auto same =
        std::find_if(clients.begin(), clients.end(), [&](const DhcpClient& client) { return client.kind == old.kind; });
    if (same == clients.end()) {
        clients.push_back(old);
    } else {
        same->gaveLeaseBack = true;
    }
    return clients;
}

}  // namespace

bool StartRequest(Requests& requests, Connection& connection, const MessageHeader& header,
                  std::span<const uint8_t> body) {
    Request request;
    if (!DecodeRequest(header.kind, body, request)) {
        return false;
    }
    const bool isDhcp = request.kind == RequestKind::kLeaseState || IsChange(request.kind);
    if (!isDhcp) {
        AnswerFromRadio(connection, header, request);
        return true;
    }
    Worker worker;
    worker.connection = connection.id;
    worker.header = header;
    worker.kind = request.kind;
    worker.interfaceName = request.interfaceName;
    const bool isBusy = IsBusy(requests, worker);
    if (!isBusy) {
        worker.clients = FindClients(requests, worker.interfaceName);
    }
    if (isBusy || !StartWorker(worker)) {
        connection.output.resize(helper_protocol::kMaxMessageBytes);
        connection.output.resize(EncodeResult(connection.output, header, helper_protocol::kResultBusy));
        return true;
    }
    connection.isBusy = true;
    requests.workers.push_back(std::move(worker));
    return true;
}

bool IsFinished(Worker& worker, bool hasOutput) {
    if (hasOutput && ContinueWorker(worker)) {
        return true;
    }
    if (NowMs() < worker.deadline) {
        return false;
    }
    GiveUpWorker(worker);
    return true;
}

void NoteResult(Requests& requests, const Worker& worker) {
    uint32_t result = 0;
    std::span<const uint8_t> rest;
    const auto body = std::span<const uint8_t>(worker.answer).subspan(helper_protocol::kHeaderBytes);
    if (!IsChange(worker.kind) || !helper_protocol::DecodeResult(body, result, rest) ||
        result != helper_protocol::kResultOk) {
        return;
    }
    if (worker.kind == RequestKind::kRenew) {
        requests.released.erase(worker.interfaceName);
        return;
    }
    DhcpClient client = worker.clients[worker.inCharge];
    client.gaveLeaseBack = true;
    requests.released[worker.interfaceName] = client;
}

}  // namespace helper
