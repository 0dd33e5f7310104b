// iphlpapi.h of the native build: records of the IP helper service. A field that nothing looks at may be missing.
#pragma once

#include <ctime>

#include "windows.h"

inline constexpr int MAX_ADAPTER_DESCRIPTION_LENGTH = 128, MAX_ADAPTER_ADDRESS_LENGTH = 8, MAXLEN_PHYSADDR = 8,
                     MIB_IF_TYPE_ETHERNET = 6, MIB_IPNET_TYPE_DYNAMIC = 3;

struct IP_OPTION_INFORMATION {
    uint8_t Ttl, Tos, Flags, OptionsSize, *OptionsData;
};
struct IP_ADDR_STRING {
    IP_ADDR_STRING* Next;
    struct {
        char String[16];
    } IpAddress, IpMask;
};
struct IP_ADAPTER_INFO {
    IP_ADAPTER_INFO* Next;
    char AdapterName[260], Description[MAX_ADAPTER_DESCRIPTION_LENGTH + 4];
    UINT AddressLength;
    BYTE Address[MAX_ADAPTER_ADDRESS_LENGTH];
    DWORD Index;
    UINT Type, DhcpEnabled;
    IP_ADDR_STRING *CurrentIpAddress, IpAddressList, GatewayList, DhcpServer;
    BOOL HaveWins;
    IP_ADDR_STRING PrimaryWinsServer, SecondaryWinsServer;
    time_t LeaseObtained, LeaseExpires;
};
struct IP_PER_ADAPTER_INFO {
    IP_ADDR_STRING DnsServerList;
};
struct IP_ADAPTER_INDEX_MAP {
    ULONG Index;
    wchar_t Name[128];
};
struct IP_INTERFACE_INFO {
    LONG NumAdapters;
    IP_ADAPTER_INDEX_MAP Adapter[1];
};
struct MIB_IFROW {
    wchar_t wszName[256];
    DWORD dwIndex, dwType, dwMtu, dwSpeed, dwPhysAddrLen;
    BYTE bPhysAddr[MAXLEN_PHYSADDR];
    DWORD dwAdminStatus, dwOperStatus, dwLastChange, dwInOctets, inPackets[5], dwOutOctets, outPackets[5], dwDescrLen;
    BYTE bDescr[256];
};
struct MIB_IPNETROW {
    DWORD dwIndex, dwPhysAddrLen;
    BYTE bPhysAddr[MAXLEN_PHYSADDR];
    DWORD dwAddr, dwType;
};
struct MIB_IPNETTABLE {
    DWORD dwNumEntries;
    MIB_IPNETROW table[1];
};
