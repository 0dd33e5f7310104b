// The connection manager, if the handheld has one: cellcore.dll came with the Pocket PC and is missing elsewhere.

#include "platform/connection.h"

#include "platform/device/library_function.h"

namespace platform {
namespace {

// IID_ConnPrv_IProxyExtension
constexpr GUID kProxyExtension = {0xAF96B0BD, 0xA481, 0x482C, {0xA0, 0x94, 0xA8, 0x44, 0x87, 0x67, 0xA0, 0xC0}};

using EstablishFunction = HRESULT (*)(const ConnectionRequest* request, HANDLE* connection);
using StatusFunction = HRESULT (*)(HANDLE connection, DWORD* status);
using ReleaseFunction = HRESULT (*)(HANDLE connection, LONG cache);
using ProviderFunction = HRESULT (*)(HANDLE connection, const GUID* provider, DWORD* index, DWORD message1,
                                     DWORD message2, void* parameters, ULONG parameterBytes);

LateLibrary cellcore = {L"cellcore.dll", nullptr};

}  // namespace

HRESULT ConnMgrEstablishConnection(const ConnectionRequest& request, HANDLE* connection) {
    const auto establish = cellcore.Find<EstablishFunction>(L"ConnMgrEstablishConnection");
    return establish != nullptr ? establish(&request, connection) : E_FAIL;
}

HRESULT ConnMgrConnectionStatus(HANDLE connection, DWORD* status) {
    const auto ask = cellcore.Find<StatusFunction>(L"ConnMgrConnectionStatus");
    return ask != nullptr ? ask(connection, status) : E_FAIL;
}

HRESULT ConnMgrReleaseConnection(HANDLE connection, LONG cache) {
    const auto release = cellcore.Find<ReleaseFunction>(L"ConnMgrReleaseConnection");
    return release != nullptr ? release(connection, cache) : E_FAIL;
}

HRESULT QueryProxy(HANDLE connection, ProxyRecord* proxy) {
    const auto ask = cellcore.Find<ProviderFunction>(L"ConnMgrProviderMessage");
    return ask != nullptr ? ask(connection, &kProxyExtension, nullptr, 0, 0, proxy, sizeof(*proxy)) : E_NOINTERFACE;
}

}  // namespace platform
