# The library may import DLLs of Windows only, and exports the five functions of a COM server.
cmake_policy(VERSION 3.25)
execute_process(COMMAND ${OBJDUMP} -p ${DLL} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
set(windows advapi32 comctl32 comdlg32 gdi32 kernel32 msimg32 msvcrt ole32 oleacc oleaut32 shell32 shlwapi user32
            uxtheme version winmm winspool.drv)
string(REGEX MATCHALL "DLL Name: [^\n]+" imports "${headers}")
foreach(import IN LISTS imports)
    string(REGEX REPLACE "DLL Name: (.+)" "\\1" name "${import}")
    string(TOLOWER "${name}" name)
    string(REGEX REPLACE "\\.dll$" "" name "${name}")
    if(NOT name IN_LIST windows)
        message(SEND_ERROR "${DLL} imports ${name}")
    endif()
endforeach()
string(REPLACE "] Dll" "export Dll" headers "${headers}") # lists do not bear single brackets
string(REGEX MATCHALL "export Dll[A-Za-z]+" exports "${headers}")
string(REPLACE "export " "" exports "${exports}")
list(JOIN exports " " exports)
if(NOT imports OR NOT exports STREQUAL
                  "DllCanUnloadNow DllGetClassObject DllInstall DllRegisterServer DllUnregisterServer")
    message(SEND_ERROR "${DLL} exports ${exports}")
endif()
