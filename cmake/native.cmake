# On Linux the product's deciding code stands on the fakes; the Linux helper is a program of its own.

target_include_directories(quorvane_flags INTERFACE ${CMAKE_SOURCE_DIR}/tests/fakes/include)
if(EXISTS ${CMAKE_SOURCE_DIR}/platform/linux/CMakeLists.txt)
    add_subdirectory(platform/linux)
endif()
