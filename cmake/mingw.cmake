# Windows from Linux; TAMVELO_BITS says of how many bits, and mingw32.cmake and mingw64.cmake set it. The -posix compilers by
# name: the plain name is an alternative that another package may point at the threads of Windows, which have no
# std::thread and std::mutex.
set(machine_32 i686)
set(machine_64 x86_64)
set(machine ${machine_${TAMVELO_BITS}})
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${machine})
set(CMAKE_C_COMPILER ${machine}-w64-mingw32-gcc)
set(CMAKE_CXX_COMPILER ${machine}-w64-mingw32-g++)
if(CMAKE_HOST_WIN32)
    set(CMAKE_RC_COMPILER windres)
else()
    string(APPEND CMAKE_C_COMPILER -posix)
    string(APPEND CMAKE_CXX_COMPILER -posix)
    set(CMAKE_RC_COMPILER ${machine}-w64-mingw32-windres)
    set(CMAKE_FIND_ROOT_PATH /usr/${machine}-w64-mingw32)
    set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
    set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
    set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
    set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../tools/wine${TAMVELO_BITS}.sh")
endif()

# -static: the compiler's run-time libraries go inside, so that nothing has to lie beside our files.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
set(CMAKE_SHARED_LINKER_FLAGS_INIT
    "-static -Wl,--kill-at -Wl,--enable-stdcall-fixup -Wl,--no-insert-timestamp")
set(CMAKE_EXE_LINKER_FLAGS_RELEASE_INIT "-s")
set(CMAKE_SHARED_LINKER_FLAGS_RELEASE_INIT "-s")
