#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

struct sqlite3;
struct sqlite3_stmt;

namespace tamvelo::demo {

/// A cell: Null, a whole number (also a Boolean, 0 or 1, and money, in cents) or a text (also a date,
/// "2026-11-21").
using Value = std::variant<std::monostate, std::int64_t, std::wstring>;

/// Whatever the data layer cannot do, in words for the user. `Code` is SQLite's, 0 when it had no part in it.
class DataError : public std::runtime_error {
public:
    explicit DataError(std::wstring_view message, int code = 0);
    std::wstring Message() const;
    int Code() const { return m_code; }

private:
    int m_code;
};

/// An open SQLite file whose texts sort and compare in Spanish (SpanishSql.h). It outlives its statements.
class Database {
public:
    /// Opens the file or creates it; L":memory:" is a database of its own that no file holds. Throws
    /// DataError.
    explicit Database(std::wstring_view path);

    /// Runs one or more statements that answer nothing. Throws DataError with SQLite's text.
    void Execute(std::wstring_view sql);
    /// The number that a query answers in its first row; 0 when it answers no row.
    std::int64_t Number(std::wstring_view sql);
    std::int64_t LastId() const;
    /// Its file; empty for one in memory.
    std::wstring Path() const;
    /// Bytes that SQLite holds for this process: statements and pages of every database.
    static long long MemoryInUse();
    sqlite3* Handle() const { return m_handle.get(); }

private:
    struct Closer {
        void operator()(sqlite3* handle) const;
    };
    std::unique_ptr<sqlite3, Closer> m_handle;
};

/// One prepared statement. Every member throws DataError with SQLite's text when it fails.
class Statement {
public:
    /// Exactly one statement: text after it is refused, so that a filter cannot smuggle in a second one.
    Statement(Database& database, std::wstring_view sql);

    /// Parameters count from 1. Texts are copied.
    Statement& Bind(int parameter, std::int64_t number);
    Statement& Bind(int parameter, std::string_view utf8);
    Statement& Bind(int parameter, const Value& value);
    Statement& BindNull(int parameter);
    /// A parameter by its name (":desde"); false when the statement has none of that name.
    bool BindNamed(const char* name, const Value& value);

    /// True: there is a row to read. False: done.
    bool Step();
    /// Runs a statement that answers nothing and makes it ready for the next values.
    void Run();
    void Reset();

    /// Columns count from 0.
    std::int64_t Integer(int column) const;
    Value Cell(int column) const;

private:
    struct Finalizer {
        void operator()(sqlite3_stmt* handle) const;
    };
    void Check(int result) const;

    sqlite3* m_database;
    std::unique_ptr<sqlite3_stmt, Finalizer> m_handle;
};

/// Writes together or not at all: what is not committed is rolled back when the object goes.
class Transaction {
public:
    explicit Transaction(Database& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void Commit();

private:
    Database& m_database;
    bool m_open = true;
};

} // namespace tamvelo::demo
