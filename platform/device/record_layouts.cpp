// What the handheld's libraries fill and read, checked against the desktop's headers that the device build compiles
// with: a difference would show on a device only, as nonsense in a field. Nothing here makes code.

#include "platform/controls.h"
#include "platform/today.h"

namespace {

template <class Code>
constexpr int32_t NotificationCode(Code code) {
    return static_cast<int32_t>(code);
}

static_assert(sizeof(void*) == 4 && sizeof(wchar_t) == 2 && sizeof(time_t) == 4 && sizeof(IF_OPER_STATUS) == 4);

// iphlpapi
static_assert(sizeof(IP_ADAPTER_INFO) == 640 && offsetof(IP_ADAPTER_INFO, Index) == 412 &&
              offsetof(IP_ADAPTER_INFO, CurrentIpAddress) == 424 && offsetof(IP_ADAPTER_INFO, LeaseObtained) == 632);
static_assert(sizeof(MIB_IFROW) == 860 && offsetof(MIB_IFROW, dwInOctets) == 552 &&
              offsetof(MIB_IFROW, dwOutOctets) == 576);
static_assert(sizeof(MIB_IPNETROW) == 24 && offsetof(MIB_IPNETTABLE, table) == 4);
static_assert(sizeof(IP_ADAPTER_INDEX_MAP) == 260 && offsetof(IP_INTERFACE_INFO, Adapter) == 4);
static_assert(sizeof(IP_PER_ADAPTER_INFO) == 52 && offsetof(IP_PER_ADAPTER_INFO, DnsServerList) == 12);
static_assert(sizeof(IP_OPTION_INFORMATION) == 8);

// ws2
static_assert(sizeof(WSADATA) == 400 && sizeof(fd_set) == 260 && sizeof(timeval) == 8 && sizeof(sockaddr_in) == 16);
static_assert(sizeof(hostent) == 16 && offsetof(hostent, h_length) == 10 && offsetof(hostent, h_addr_list) == 12);

// coredll
static_assert(sizeof(WIN32_FIND_DATAW) == 560 && offsetof(WIN32_FIND_DATAW, cFileName) == 40);
static_assert(sizeof(SYSTEMTIME) == 16 && sizeof(TIME_ZONE_INFORMATION) == 172 && sizeof(PROCESS_INFORMATION) == 16);
static_assert(sizeof(WNDCLASSW) == 40 && sizeof(PAINTSTRUCT) == 64 && sizeof(LOGFONTW) == 92);

// commctrl
static_assert(sizeof(NMHDR) == 12 && sizeof(NMLISTVIEW) == 44 && sizeof(NMDATETIMECHANGE) == 32);
static_assert(offsetof(LVITEMW, pszText) == 20 && offsetof(LVITEMW, lParam) == 32 && sizeof(LVFINDINFOW) == 24);
static_assert(offsetof(LVCOLUMNW, pszText) == 12 && offsetof(LVCOLUMNW, iSubItem) == 20);
static_assert(NotificationCode(NM_CLICK) == -2 && NotificationCode(PSN_KILLACTIVE) == -201 &&
              NotificationCode(PSN_APPLY) == -202 && NotificationCode(DTN_DATETIMECHANGE) == -759);
static_assert(DTM_SETSYSTEMTIME == 0x1002 && DTM_SETFORMATW == 0x1032 && LVM_INSERTITEMW == 0x104D &&
              LVM_SETITEMTEXTW == 0x1074 && UDM_SETRANGE == WM_USER + 101 && PBM_SETPOS == WM_USER + 2);

// The Today screen
static_assert(sizeof(TODAYLISTITEM) == 628 && offsetof(TODAYLISTITEM, cyp) == 72 &&
              sizeof(TODAYDRAWWATERMARKINFO) == 24);

}  // namespace
