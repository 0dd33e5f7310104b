// Waiting for the connection manager, on a scripted clock.

#include "adapters/internet_connection.h"

#include <gtest/gtest.h>

#include "adapters/public_ip.h"
#include "tests/fakes/fakes.h"
#include "tests/fakes/scripted_platform.h"

namespace {

using fakes::WaitOutcome;

constexpr auto kWaitTimeout = static_cast<DWORD>(WAIT_TIMEOUT);

TEST(InternetConnection, Every_outcome_of_the_wait) {
    struct Row {
        std::vector<WaitOutcome> waits;
        std::vector<DWORD> statuses;
        HRESULT statusResult;
        HRESULT result;
        std::vector<DWORD> waitedMs;
    };
    const auto code = [](uint32_t value) { return static_cast<HRESULT>(value); };
    const Row rows[] = {
        {{{0, 0, 300}}, {16}, S_OK, S_OK, {12000}},
        {{{0, 0, 300}, {0, 0, 700}}, {17, 16}, S_OK, S_OK, {12000, 11700}},
        {{{0}}, {0}, S_OK, E_FAIL, {12000}},
        {{{0}}, {33}, S_OK, E_FAIL, {12000}},
        {{{0}}, {37}, S_OK, E_FAIL, {12000}},
        {{{0}}, {66}, S_OK, E_FAIL, {12000}},
        {{{0}, {0}, {0}}, {32, 38, 16}, S_OK, S_OK, {12000, 12000, 12000}},
        {{{0}}, {16}, code(0x8007000E), code(0x8007000E), {12000}},
        {{{0, 0, 12001}}, {}, S_OK, E_FAIL, {12000}},
        {{{kWaitTimeout}}, {}, S_OK, E_FAIL, {12000}},
        {{{WAIT_FAILED, 6}}, {}, S_OK, code(0x80070006), {12000}},
        {{{WAIT_FAILED, 0x12345}}, {}, S_OK, code(0x80072345), {12000}},
        {{{WAIT_FAILED, 0x80040111}}, {}, S_OK, code(0x80040111), {12000}},
        {{{WAIT_FAILED, 0}, {0}}, {16}, S_OK, S_OK, {12000, 12000}},
        {{{0x80, 0, 5}, {0}}, {16}, S_OK, S_OK, {12000, 11995}},  // abandoned
        {{{0, 0, 11999}, {0, 0, 1}}, {17, 17, 16}, S_OK, E_FAIL, {12000, 1}},
    };
    for (const Row& row : rows) {
        scripted::Reset();
        fakes::waitedMs.clear();
        fakes::ScriptWaits(row.waits);
        auto& manager = scripted::system.connectionManager;
        manager.statuses = row.statuses;
        manager.statusResult = row.statusResult;
        InternetConnection out;
        EXPECT_EQ(EstablishInternetConnection(out), row.result);
        EXPECT_EQ(fakes::waitedMs, row.waitedMs);
        EXPECT_EQ(out.accessType, kAccessDirect);
        EXPECT_EQ(manager.open, row.result < 0 ? 0 : 1);
        EXPECT_EQ(out.connection != nullptr, row.result >= 0);
        CloseHandle(out.connection);
    }
}

TEST(InternetConnection, The_request_names_the_internet) {
    InternetConnection out;
    EstablishInternetConnection(out);
    CloseHandle(out.connection);
    const platform::ConnectionRequest& request = scripted::system.connectionManager.request;
    const uint32_t fields[] = {request.cbSize, request.dwParams, request.dwFlags, request.dwPriority};
    EXPECT_TRUE(std::equal(std::begin(fields), std::end(fields), std::begin({64U, 1U, 1U, 8192U})));
    const GUID internet = {0x436EF144, 0xB4FB, 0x4863, {0xA0, 0x41, 0x8F, 0x90, 0x5A, 0x62, 0xC5, 0x72}};
    EXPECT_EQ(request.guidDestNet, internet);
    EXPECT_EQ(request.bExclusive + request.bDisabled + request.hWnd + request.uMsg + request.lParam +
                  request.ulMaxCost + request.ulMinRcvBw + request.ulMaxConnLatency,
              0U);
}

TEST(InternetConnection, The_proxy_query_decides_the_way) {
    struct Row {
        HRESULT proxy, result;
        DWORD accessType;
    };
    const Row rows[] = {{S_OK, S_OK, kAccessThroughProxy},
                        {E_NOINTERFACE, S_OK, kAccessDirect},
                        {1, 1, kAccessDirect},
                        {E_FAIL, E_FAIL, kAccessDirect}};
    for (const Row& row : rows) {
        scripted::Reset();
        scripted::system.connectionManager.proxyResult = row.proxy;
        scripted::system.connectionManager.proxy = std::u16string(256, u'p');  // without its terminator
        InternetConnection out;
        EXPECT_EQ(EstablishInternetConnection(out), row.result);
        EXPECT_EQ(out.accessType, row.accessType);
        EXPECT_EQ(wcslen(out.proxy), row.accessType == kAccessThroughProxy ? 255U : 0U);
        EXPECT_EQ(out.connection != nullptr, row.result >= 0);
        CloseHandle(out.connection);
    }
}

TEST(InternetConnection, Detection_needs_memory_for_the_answer_before_it_asks_anyone) {
    fakes::FailCall("LocalAlloc", 1);
    wchar_t address[kPublicIpUnits] = {};
    EXPECT_FALSE(DetectPublicIp(L"host", L"path", address));
    EXPECT_TRUE(scripted::system.internet.calls.empty());
}

}  // namespace
