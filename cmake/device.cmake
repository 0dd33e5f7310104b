# quorvane.dll for Windows CE on ARM: the product's sources compiled against the desktop's headers with the handheld's
# differences before them, linked at fixed addresses, and converted.

enable_language(ASM)
find_program(DEVICE_HEADERS_COMPILER x86_64-w64-mingw32-g++-posix REQUIRED)
find_program(DEVICE_WINDRES x86_64-w64-mingw32-windres REQUIRED)
execute_process(COMMAND ${DEVICE_HEADERS_COMPILER} -print-file-name=include/c++
    OUTPUT_VARIABLE standard_headers OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

# What is only in headers of the host's standard library, and the headers of the Windows API.
target_include_directories(quorvane_flags SYSTEM INTERFACE
    platform/device/sdk ${standard_headers} ${standard_headers}/x86_64-w64-mingw32 /usr/share/mingw-w64/include)

# ARMv4 without Thumb runs on every handheld. The layout of records is that of Windows under aapcs-linux only.
set(architecture -march=armv4t -marm -mfloat-abi=soft -mabi=aapcs-linux)
target_compile_options(quorvane_flags INTERFACE ${architecture}
    -fshort-wchar -fsigned-char -fno-unwind-tables -fno-asynchronous-unwind-tables -fms-extensions -ffreestanding
    -nostdinc++ -fstack-usage "-D__declspec(x)=")
target_compile_definitions(quorvane_flags INTERFACE
    _WIN32 WIN32_LEAN_AND_MEAN _ARM_ __arm__ WINVER=0x0501 _WIN32_WINNT=0x0501 UNICODE _UNICODE
    _GLIBCXX_EXTERN_TEMPLATE=0 __stdcall= __cdecl= __fastcall= _cdecl=)

set(imports ${CMAKE_SOURCE_DIR}/platform/device/imports.txt)
set(exports ${CMAKE_SOURCE_DIR}/item/quorvane.def)
set(converter ${CMAKE_SOURCE_DIR}/tools/elf-to-pe)
set(linker_script ${CMAKE_SOURCE_DIR}/platform/device/ce.ld)

add_library(quorvane_shows STATIC ${shows_sources})
target_link_libraries(quorvane_shows PRIVATE quorvane_product_flags PUBLIC quorvane_decides)
precompile(quorvane_shows)
file(GLOB device_sources CONFIGURE_DEPENDS platform/device/*.cpp)
add_library(platform_device STATIC ${device_sources})
target_link_libraries(platform_device PRIVATE quorvane_product_flags)
precompile(platform_device)
# What GetProcAddress finds is cast to its true type.
target_compile_options(platform_device PRIVATE -Wno-cast-function-type)

add_custom_command(OUTPUT thunks.s COMMAND ${converter} thunks ${imports} thunks.s
    DEPENDS ${converter} ${imports} VERBATIM)

# As the linker leaves it, with its relocations.
add_executable(quorvane_program item/module.cpp thunks.s)
target_link_libraries(quorvane_program PRIVATE quorvane_product_flags
    -Wl,--start-group quorvane_shows quorvane_decides platform_device -Wl,--end-group gcc)
target_link_options(quorvane_program PRIVATE ${architecture} -nostdlib -T ${linker_script}
    LINKER:-q,--gc-sections,--fatal-warnings,--fix-v4bx-interworking,--no-enum-size-warning,--no-wchar-size-warning)
set_target_properties(quorvane_program PROPERTIES SUFFIX .elf LINK_DEPENDS ${linker_script})

file(GLOB resource_files CONFIGURE_DEPENDS resources/*.rc resources/*.h resources/icons/* resources/bitmaps/*)
add_custom_command(OUTPUT resources.o
    COMMAND ${DEVICE_WINDRES} -O coff -I${CMAKE_SOURCE_DIR} -I${CMAKE_SOURCE_DIR}/resources
        ${CMAKE_SOURCE_DIR}/resources/quorvane.rc resources.o
    DEPENDS ${resource_files} VERBATIM)

add_custom_command(OUTPUT quorvane.dll
    COMMAND ${converter} convert --imports ${imports} --exports ${exports} --resources resources.o
        $<TARGET_FILE:quorvane_program> quorvane.dll
    DEPENDS quorvane_program resources.o ${converter} ${imports} ${exports} VERBATIM)
add_custom_target(quorvane ALL DEPENDS quorvane.dll)
