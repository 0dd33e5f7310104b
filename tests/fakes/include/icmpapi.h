// icmpapi.h of the native build: what is used of it is in iphlpapi.h.
