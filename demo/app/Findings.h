#pragma once

#include "com/WinHeaders.h"

#include <string>
#include <string_view>

namespace tamvelo::demo {

/// What a diagnosis finds, in a text file that is whole after every line: whatever ends the process, what was
/// found until then can be read.
class Findings {
public:
    /// Beside the program, or in the user's folder for temporary files. Throws com::Error.
    Findings();
    ~Findings();
    Findings(const Findings&) = delete;
    Findings& operator=(const Findings&) = delete;

    void Part(std::wstring_view title);
    enum class Verdict { Told, Good, Warning, Bad };
    void Add(Verdict verdict, std::wstring_view what, std::wstring_view found);
    /// The sum of it all. True when nothing is bad.
    bool End();
    const std::wstring& Path() const { return m_path; }

private:
    void Write(std::wstring_view text) const;

    std::wstring m_path;
    HANDLE m_file;
    long m_bad = 0;
    long m_warnings = 0;
};

} // namespace tamvelo::demo
