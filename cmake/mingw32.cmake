set(TAMVELO_BITS 32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
