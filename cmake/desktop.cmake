# quorvane.dll and todayhost.exe.

# CMake would add the C++ runtime library behind C++ objects even where the C driver links.
set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")

set(system_libraries comctl32 gdi32 user32 advapi32 shell32 ws2_32 iphlpapi ole32 uuid)

# The screen side of the boundary (the Today host's frame) also serves the UI tests; the services below it are replaced by
# scripted ones there.
set(screen_names screen shell dialogs date_picker template_scale icons atomics worker wine property_sheet)
file(GLOB desktop_sources CONFIGURE_DEPENDS platform/desktop/*.cpp)
set(screen_sources ${desktop_sources})
string(REPLACE ";" "|" screen_pattern "${screen_names}")
list(FILTER screen_sources INCLUDE REGEX "/(${screen_pattern})\\.cpp$")
list(FILTER desktop_sources EXCLUDE REGEX "/(${screen_pattern})\\.cpp$")

add_library(quorvane_shows STATIC ${shows_sources})
target_link_libraries(quorvane_shows PRIVATE quorvane_product_flags PUBLIC quorvane_decides)
precompile(quorvane_shows)

add_library(platform_desktop_screen STATIC ${screen_sources})
target_link_libraries(platform_desktop_screen PRIVATE quorvane_product_flags PUBLIC quorvane_flags)
precompile(platform_desktop_screen)
add_library(platform_desktop_services STATIC ${desktop_sources})
target_link_libraries(platform_desktop_services PRIVATE quorvane_product_flags PUBLIC quorvane_flags)
precompile(platform_desktop_services)

file(GLOB resource_files CONFIGURE_DEPENDS resources/*.rc resources/*.h resources/icons/* resources/bitmaps/*)
set_source_files_properties(resources/quorvane.rc PROPERTIES
    OBJECT_DEPENDS "${resource_files}" COMPILE_OPTIONS "-I${CMAKE_SOURCE_DIR};-I${CMAKE_SOURCE_DIR}/resources")

# Linked by the C driver: the C++ runtime library is not there to be used by accident.
add_library(quorvane SHARED item/module.cpp resources/quorvane.rc item/quorvane.def)
set_target_properties(quorvane PROPERTIES PREFIX "" LINKER_LANGUAGE C)
target_link_libraries(quorvane PRIVATE
    -Wl,--start-group quorvane_shows quorvane_decides platform_desktop_screen platform_desktop_services -Wl,--end-group
    ${system_libraries})
target_link_options(quorvane PRIVATE -static-libgcc -Wl,--no-insert-timestamp -Wl,--gc-sections -Wl,--exclude-all-symbols -s)

# The same library over a made-up network, for the host's demonstration.
file(GLOB demo_sources CONFIGURE_DEPENDS platform/demo/*.cpp)
add_library(platform_demo STATIC ${demo_sources} platform/desktop/native_wifi_records.cpp)
target_link_libraries(platform_demo PRIVATE quorvane_product_flags PUBLIC quorvane_flags)
precompile(platform_demo)
add_library(quorvane-demo SHARED item/module.cpp resources/quorvane.rc item/quorvane.def)
set_target_properties(quorvane-demo PROPERTIES PREFIX "" LINKER_LANGUAGE C)
target_link_libraries(quorvane-demo PRIVATE
    -Wl,--start-group quorvane_shows quorvane_decides platform_desktop_screen platform_demo -Wl,--end-group
    ${system_libraries})
target_link_options(quorvane-demo PRIVATE -static-libgcc -Wl,--no-insert-timestamp -Wl,--gc-sections -Wl,--exclude-all-symbols -s)

file(GLOB host_sources CONFIGURE_DEPENDS host/*.cpp host/*.rc)
if(host_sources)
    add_executable(todayhost WIN32 ${host_sources})
    set_source_files_properties(host/todayhost.rc PROPERTIES COMPILE_OPTIONS "-I${CMAKE_SOURCE_DIR}")
    target_link_libraries(todayhost PRIVATE quorvane_flags ${system_libraries})
    precompile(todayhost)
    target_link_options(todayhost PRIVATE -static -municode -Wl,--no-insert-timestamp)

    # The control panel that the strip's last two icons start.
    add_executable(ctlpnl WIN32 host/ctlpnl/main.cpp)
    target_link_libraries(ctlpnl PRIVATE quorvane_flags ${system_libraries})
    target_link_options(ctlpnl PRIVATE -static -municode -Wl,--no-insert-timestamp)
    add_dependencies(todayhost ctlpnl quorvane-demo)
endif()
