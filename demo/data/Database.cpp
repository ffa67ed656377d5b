#include "demo/data/Database.h"

#include <sqlite3.h>

#include "base/Text.h"
#include "demo/data/SpanishSql.h"

namespace tamvelo::demo {

namespace {

/// Another program may hold the file for a moment; longer than this the user should hear of it.
constexpr int kBusyMilliseconds = 5000;

std::wstring FromSqlite(std::string_view utf8) { return base::FromUtf8(utf8).value_or(L"(texto dañado)"); }

[[noreturn]] void Fail(sqlite3* handle) {
    throw DataError(L"Error de la base de datos: " + FromSqlite(sqlite3_errmsg(handle)),
                    sqlite3_extended_errcode(handle));
}

} // namespace

DataError::DataError(std::wstring_view message, int code)
    : std::runtime_error(base::ToUtf8(message)), m_code(code) {}

std::wstring DataError::Message() const { return FromSqlite(what()); }

void Database::Closer::operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }

Database::Database(std::wstring_view path) {
    sqlite3* handle = nullptr;
    const int result = sqlite3_open(base::ToUtf8(path).c_str(), &handle);
    m_handle.reset(handle); // also after a failure: SQLite keeps the reason in it
    if (result != SQLITE_OK) {
        Fail(handle);
    }
    sqlite3_busy_timeout(handle, kBusyMilliseconds);
    RegisterSpanish(handle);
}

void Database::Execute(std::wstring_view sql) {
    if (sqlite3_exec(Handle(), base::ToUtf8(sql).c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        Fail(Handle());
    }
}

long long Database::MemoryInUse() { return sqlite3_memory_used(); }

std::int64_t Database::Number(std::wstring_view sql) {
    Statement statement(*this, sql);
    return statement.Step() ? statement.Integer(0) : 0;
}

std::int64_t Database::LastId() const { return sqlite3_last_insert_rowid(Handle()); }

void Statement::Finalizer::operator()(sqlite3_stmt* handle) const { sqlite3_finalize(handle); }

std::wstring Database::Path() const {
    const char* path = sqlite3_db_filename(Handle(), "main");
    return path != nullptr ? FromSqlite(path) : L"";
}

Statement::Statement(Database& database, std::wstring_view sql) : m_database(database.Handle()) {
    const std::string utf8 = base::ToUtf8(sql);
    sqlite3_stmt* handle = nullptr;
    const char* rest = nullptr;
    Check(sqlite3_prepare_v2(m_database, utf8.c_str(), static_cast<int>(utf8.size()) + 1, &handle, &rest));
    m_handle.reset(handle);
    if (handle == nullptr || rest != utf8.c_str() + utf8.size()) {
        throw DataError(L"La consulta no es una sola instrucción SQL.");
    }
}

Statement& Statement::Bind(int parameter, std::int64_t number) {
    Check(sqlite3_bind_int64(m_handle.get(), parameter, number));
    return *this;
}

Statement& Statement::Bind(int parameter, std::string_view utf8) {
    Check(sqlite3_bind_text(m_handle.get(), parameter, utf8.data(), static_cast<int>(utf8.size()),
                            SQLITE_TRANSIENT));
    return *this;
}

Statement& Statement::Bind(int parameter, const Value& value) {
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        return Bind(parameter, *number);
    }
    if (const auto* text = std::get_if<std::wstring>(&value)) {
        return Bind(parameter, base::ToUtf8(*text));
    }
    return BindNull(parameter);
}

Statement& Statement::BindNull(int parameter) {
    Check(sqlite3_bind_null(m_handle.get(), parameter));
    return *this;
}

bool Statement::BindNamed(const char* name, const Value& value) {
    const int parameter = sqlite3_bind_parameter_index(m_handle.get(), name);
    if (parameter != 0) {
        Bind(parameter, value);
    }
    return parameter != 0;
}

bool Statement::Step() {
    const int result = sqlite3_step(m_handle.get());
    if (result != SQLITE_ROW && result != SQLITE_DONE) {
        Check(result);
    }
    return result == SQLITE_ROW;
}

void Statement::Run() {
    Step();
    Reset();
}

void Statement::Reset() {
    sqlite3_reset(m_handle.get());
} // repeats the error of the last step, already thrown

std::int64_t Statement::Integer(int column) const { return sqlite3_column_int64(m_handle.get(), column); }

Value Statement::Cell(int column) const {
    switch (sqlite3_column_type(m_handle.get(), column)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return Integer(column);
    default:
        const void* text = sqlite3_column_text(m_handle.get(), column);
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(m_handle.get(), column));
        return FromSqlite({static_cast<const char*>(text), size});
    }
}

void Statement::Check(int result) const {
    if (result != SQLITE_OK) {
        Fail(m_database);
    }
}

// At once for writing: two programs that both begin as readers could block each other for good.
Transaction::Transaction(Database& database) : m_database(database) {
    m_database.Execute(L"begin immediate");
}

Transaction::~Transaction() {
    if (m_open) {
        // Not through Execute: a destructor may not throw, and SQLite may have rolled back by itself.
        sqlite3_exec(m_database.Handle(), "rollback", nullptr, nullptr, nullptr);
    }
}

void Transaction::Commit() {
    m_database.Execute(L"commit");
    m_open = false;
}

} // namespace tamvelo::demo
