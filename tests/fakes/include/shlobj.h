// shlobj.h of the native build: what is used of it is in windows.h.
