# The headers that nearly every source reads are compiled once for each way of compiling: reading them is most of the work
# for a short source. What a source needs it still includes itself: the preset checked has none of this.
set(TAMVELO_HEADERS "${PROJECT_SOURCE_DIR}/com/WinHeaders.h" <commctrl.h> <algorithm> <array> <functional> <map> <memory>
    <optional> <span> <string> <string_view> <utility> <vector>)

# tamvelo_headers(NAME small [MORE headers...] [OPTIONS ...] [LIBRARIES ...])
function(tamvelo_headers)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "NAME" "MORE;OPTIONS;LIBRARIES")
    file(CONFIGURE OUTPUT Headers.cpp CONTENT "")
    add_library(tamvelo_headers_${arg_NAME} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/Headers.cpp)
    target_link_libraries(tamvelo_headers_${arg_NAME} PRIVATE tamvelo_options ${arg_LIBRARIES})
    target_compile_options(tamvelo_headers_${arg_NAME} PRIVATE ${arg_OPTIONS})
    target_precompile_headers(tamvelo_headers_${arg_NAME} PRIVATE ${TAMVELO_HEADERS} ${arg_MORE})
endfunction()

function(tamvelo_use_headers target name)
    if(TARGET tamvelo_headers_${name})
        target_precompile_headers(${target} REUSE_FROM tamvelo_headers_${name})
        # GCC 12 is wrong about this inside the strings of its own library, and says so where that comes precompiled.
        target_compile_options(${target} PRIVATE "$<$<COMPILE_LANGUAGE:CXX>:-Wno-array-bounds;-Wno-stringop-overread>")
    endif()
endfunction()
