#pragma once

#include <memory>
#include <string>

#include "bench/MemoryHost.h"
#include "demo/data/Database.h"

namespace tamvelo::bench {

/// A database of its own in a temporary file, gone with the object.
class SqliteHost {
public:
    /// The demo's sample data.
    static SqliteHost Sample();
    /// The demo's articles alone, as many as wanted.
    static SqliteHost Articles(long rows);
    SqliteHost(SqliteHost&& other) noexcept = default;
    ~SqliteHost();

    /// The demo's data class of the articles, asked for by a control that shows the code of some article. It
    /// must be let go of before this.
    Host Objects();

private:
    explicit SqliteHost(std::wstring path) : m_path(std::move(path)) {}

    std::wstring m_path;
    std::shared_ptr<demo::Database> m_database;
};

} // namespace tamvelo::bench
