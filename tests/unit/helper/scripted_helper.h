// tests/unit/helper/scripted_helper.h - a helper on loopback that answers as a test says, for tests under Wine.
#pragma once

#include "platform/desktop/linux_helper.h"

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

using helper_protocol::MessageHeader;
using helper_protocol::Request;

inline constexpr const char* kToken = "00112233445566778899aabbccddeeff";
using Bytes = std::vector<uint8_t>;

// Gets a request and returns what to send. An empty answer closes the connection.
using Answer = std::function<Bytes(const MessageHeader&, const Request&)>;

inline void SetHelper(const char* port, const char* token) {
    platform::CloseHelper();
    SetEnvironmentVariableA("QUORVANE_HELPER_PORT", port);
    SetEnvironmentVariableA("QUORVANE_HELPER_TOKEN", token);
}

// A listening socket that the environment names; answers one connection after the other on its own thread.
struct Server {
    SOCKET listener = INVALID_SOCKET;
    std::atomic<int> connections = 0;
    std::atomic<bool> saidNonsense = false;
    std::thread thread;

    // Without an answer function nothing is accepted and nothing said: the system completes the connection by itself.
    explicit Server(Answer answer = nullptr) {
        WSADATA data;
        WSAStartup(MAKEWORD(2, 2), &data);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        int length = sizeof(address);
        listener = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
        bind(listener, reinterpret_cast<sockaddr*>(&address), length);
        listen(listener, 5);
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
        SetHelper(std::to_string(ntohs(address.sin_port)).c_str(), kToken);
        if (answer) {
            thread = std::thread([this, answer] { Serve(answer); });
        }
    }

    ~Server() {
        platform::CloseHelper();
        closesocket(listener);
        if (thread.joinable()) {
            thread.join();
        }
        WSACleanup();
    }

    void Serve(const Answer& answer) {
        for (SOCKET client; (client = accept(listener, nullptr, nullptr)) != INVALID_SOCKET; closesocket(client)) {
            ++connections;
            const Bytes opening = Receive(client, helper_protocol::kOpeningBytes);
            saidNonsense = saidNonsense || !helper_protocol::IsOpening(opening, kToken);
            while (AnswerOne(client, answer)) {
            }
        }
    }

    bool AnswerOne(SOCKET client, const Answer& answer) {
        MessageHeader header;
        if (!DecodeHeader(Receive(client, helper_protocol::kHeaderBytes), header)) {
            return false;
        }
        const Bytes body = Receive(client, header.bodyBytes);
        Request request;
        saidNonsense = saidNonsense || !DecodeRequest(header.kind, body, request);
        const Bytes bytes = answer(header, request);
        send(client, reinterpret_cast<const char*>(bytes.data()), static_cast<int>(bytes.size()), 0);
        return !bytes.empty();
    }

    static Bytes Receive(SOCKET client, size_t count) {
        Bytes bytes(count);
        // One that asks for nothing would wait for the next message.
        const int got =
            count == 0 ? 0 : recv(client, reinterpret_cast<char*>(bytes.data()), static_cast<int>(count), MSG_WAITALL);
        bytes.resize(static_cast<size_t>(std::max(got, 0)));
        return bytes;
    }
};
