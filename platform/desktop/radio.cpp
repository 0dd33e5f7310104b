// Plays the NDIS user-mode I/O device: Native Wifi answers on Windows, the Linux helper under Wine.

#include "platform/radio.h"

#include "platform/desktop/linux_helper.h"
#include "platform/desktop/native_wifi.h"
#include "platform/desktop/wine.h"
#include "platform/ndis.h"
#include "platform/scoped.h"

namespace platform {
namespace {

// Under Wine one radio is open at a time; its handle is this record. Every tick opens it anew, so the helper's answer
// is remembered for a while on the same connection; that there is no adapter is not.
struct HelperRadio {
    wchar_t name[kHelperNameUnits];
    wchar_t description[kHelperNameUnits];
    bool isThere;
    uint32_t connection;  // by which it was found
    DWORD foundAt;        // GetTickCount
};
HelperRadio helperRadio;

bool FindHelperRadio() {
    const DWORD age = GetTickCount() - helperRadio.foundAt;
    if (helperRadio.isThere && helperRadio.connection == HelperConnectionNumber() && age < kRadioBindingMs) {
        return true;
    }
    if (HelperRadioBinding(helperRadio.name, helperRadio.description)) {
        helperRadio.isThere = true;
        helperRadio.connection = HelperConnectionNumber();
        helperRadio.foundAt = GetTickCount();
        return true;
    }
    // A helper that was late once has not lost the adapter: an open scanner would take that for its end.
    helperRadio.isThere = helperRadio.isThere && IsHelperPausing() && age < kRadioMissedMs;
    return helperRadio.isThere;
}

bool IsHelperRadio(HANDLE radio) {
    return radio == &helperRadio;
}

bool AnswerBinding(HANDLE radio, void* buffer, DWORD outputBytes, DWORD* returned) {
    wchar_t guid[kHelperNameUnits] = {};
    const wchar_t* name = helperRadio.name;
    if (!IsHelperRadio(radio)) {
        NativeWifiName(radio, guid);
        name = guid;
    }
    NdisBindingRequest answer = {};
    answer.deviceNameOffset = sizeof(answer);
    answer.deviceNameLength = static_cast<uint32_t>(wcslen(name) * sizeof(wchar_t));
    if (answer.deviceNameOffset + answer.deviceNameLength > outputBytes) {
        return false;
    }
    memcpy(buffer, &answer, sizeof(answer));
    memcpy(static_cast<uint8_t*>(buffer) + answer.deviceNameOffset, name, answer.deviceNameLength);
    *returned = answer.deviceNameOffset + answer.deviceNameLength;
    return true;
}

bool Query(HANDLE radio, NdisOidRequest& request, size_t& bytes) {
    if (IsHelperRadio(radio)) {
        return HelperRadioQuery(request.deviceName, request.oid, request.data, bytes) == ERROR_SUCCESS;
    }
    return QueryNativeWifi(radio, request.oid, request.data, bytes);
}

bool Set(HANDLE radio, const NdisOidRequest& request) {
    if (IsHelperRadio(radio)) {
        return HelperRadioSet(request.deviceName, request.oid, {}) == ERROR_SUCCESS;
    }
    return SetNativeWifi(radio, request.oid);
}

}  // namespace

HANDLE OpenRadio() {
    if (!IsWine()) {
        return OpenNativeWifi();
    }
    return FindHelperRadio() ? &helperRadio : nullptr;
}

void CloseRadio(HANDLE radio) {
    if (!IsHelperRadio(radio)) {
        CloseNativeWifi(radio);
    }
}

bool RadioIoControl(HANDLE radio, DWORD controlCode, void* buffer, DWORD inputBytes, DWORD outputBytes,
                    DWORD* returned) {
    if (controlCode == IOCTL_NDISUIO_QUERY_BINDING) {
        return AnswerBinding(radio, buffer, outputBytes, returned);
    }
    if (inputBytes < sizeof(NdisOidRequest) || outputBytes < sizeof(NdisOidRequest)) {
        return false;
    }
    auto* request = static_cast<NdisOidRequest*>(buffer);
    if (controlCode == IOCTL_NDISUIO_SET_OID_VALUE) {
        return Set(radio, *request);
    }
    size_t bytes = 0;
    if (!Query(radio, *request, bytes)) {
        return false;
    }
    *returned = static_cast<DWORD>(offsetof(NdisOidRequest, data) + bytes);
    return true;
}

}  // namespace platform
