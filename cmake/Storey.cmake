# The folders of the library, bottom up. A storey may use those of lower rank only: forms (rank 6) do not know each other.
set(TAMVELO_STOREYS base com contract win objects grid environment frame search selection gridconfig reports dates entry)
set(TAMVELO_RANKS 0 1 2 2 3 3 4 5 6 6 6 6 6 7)

# What every target of ours is compiled with. Not -Wnon-virtual-dtor: COM interfaces have no destructor by design, and
# deleting through a base without one is caught by -Wall.
add_library(tamvelo_options INTERFACE)
target_include_directories(tamvelo_options INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/generated)
target_compile_options(
    tamvelo_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Werror -Wshadow -Wold-style-cast>)
if(WIN32)
    # GCC 12 folds functions with the same body into one even where their calling conventions differ.
    target_compile_options(tamvelo_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fno-ipa-icf>)
    target_compile_definitions(
        tamvelo_options INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:TAMVELO_LIBRARY=L\"Tamvelo${TAMVELO_SUFFIX}.dll\">")
    target_compile_definitions(tamvelo_options INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN STRICT
                                                         _WIN32_WINNT=0x0A00 WINVER=0x0A00 _WIN32_IE=0x0A00)
endif()

function(tamvelo_rank folder result)
    list(FIND TAMVELO_STOREYS "${folder}" at)
    if(at EQUAL -1)
        message(FATAL_ERROR "${folder} is no storey: see TAMVELO_STOREYS in cmake/Storey.cmake")
    endif()
    list(GET TAMVELO_RANKS ${at} rank)
    set(${result} ${rank} PARENT_SCOPE)
endfunction()

# Most of it runs once for each thing a person does: small counts for more than fast.
set(TAMVELO_SMALL $<$<CONFIG:Release>:-Os>)
if(WIN32 AND CMAKE_BUILD_TYPE STREQUAL Release)
    tamvelo_headers(NAME small OPTIONS ${TAMVELO_SMALL})
    tamvelo_headers(NAME fast)
endif()

# tamvelo_storey(NAME grid [FAST] SOURCES a.cpp b.cpp... [USES contract com base] [LIBRARIES comctl32...])
# The static library tamvelo_<NAME> of the folder; USES are storeys below it, LIBRARIES anything else to link. FAST is what
# runs for each row.
function(tamvelo_storey)
    cmake_parse_arguments(PARSE_ARGV 0 arg "FAST" "NAME" "SOURCES;USES;LIBRARIES")
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "tamvelo_storey(${arg_NAME}): what is ${arg_UNPARSED_ARGUMENTS}?")
    endif()
    tamvelo_rank(${arg_NAME} own)
    add_library(tamvelo_${arg_NAME} STATIC ${arg_SOURCES})
    target_link_libraries(tamvelo_${arg_NAME} PUBLIC tamvelo_options)
    if(arg_FAST)
        tamvelo_use_headers(tamvelo_${arg_NAME} fast)
    else()
        target_compile_options(tamvelo_${arg_NAME} PRIVATE ${TAMVELO_SMALL})
        tamvelo_use_headers(tamvelo_${arg_NAME} small)
    endif()
    foreach(used IN LISTS arg_USES)
        tamvelo_rank(${used} below)
        if(NOT below LESS own)
            message(FATAL_ERROR "${arg_NAME} may not use ${used}: it is not below it")
        endif()
        target_link_libraries(tamvelo_${arg_NAME} PUBLIC tamvelo_${used})
    endforeach()
    target_link_libraries(tamvelo_${arg_NAME} PUBLIC ${arg_LIBRARIES})
endfunction()
