set(TAMVELO_BITS 64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
