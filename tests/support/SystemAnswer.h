#pragma once

#include <windows.h>

#include <cstring>

namespace tamvelo::testing {

/// While it lives a function of the system does nothing and answers that number, whoever calls it: its code
/// is written over with `mov eax, answer; ret parameters`.
class SystemAnswer {
public:
    SystemAnswer(const wchar_t* module, const char* function, unsigned char parameters, int answer)
        : m_function(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(module), function))) {
        constexpr unsigned char taken = sizeof(void*) == 8 ? 0 : 4; // off the stack, for each
        unsigned char code[kLength] = {0xB8, 0, 0, 0, 0, 0xC2, static_cast<unsigned char>(taken * parameters),
                                       0};
        memcpy(code + 1, &answer, sizeof answer);
        memcpy(m_before, m_function, kLength);
        Write(code);
    }
    ~SystemAnswer() { Write(m_before); }
    SystemAnswer(const SystemAnswer&) = delete;
    SystemAnswer& operator=(const SystemAnswer&) = delete;

private:
    static constexpr size_t kLength = 8;

    void Write(const unsigned char (&code)[kLength]) {
        DWORD access = 0;
        VirtualProtect(m_function, kLength, PAGE_EXECUTE_READWRITE, &access);
        memcpy(m_function, code, kLength);
        VirtualProtect(m_function, kLength, access, &access);
        FlushInstructionCache(GetCurrentProcess(), m_function, kLength);
    }

    void* const m_function;
    unsigned char m_before[kLength];
};

} // namespace tamvelo::testing
