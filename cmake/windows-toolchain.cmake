# Cross-building for Windows with MinGW-w64 on Debian; the built programs run under Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../script/wine)

# No DLL of the compiler's need be carried along.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)

# Of the building machine's headers only those of header-only libraries are meant for the target too; a folder of
# links to them keeps the others out of sight.
set(header_only ${CMAKE_BINARY_DIR}/header-only)
file(MAKE_DIRECTORY ${header_only}/include)
file(CREATE_LINK /usr/include/toml++ ${header_only}/include/toml++ SYMBOLIC)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${header_only})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
