// platform/device/sdk/mm_malloc.h - stands before the host compiler's header of that name, which is for x86 only.
