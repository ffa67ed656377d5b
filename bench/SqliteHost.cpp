#include "bench/SqliteHost.h"

#include "demo/data/SampleData.h"
#include "demo/data/Schema.h"
#include "demo/data/View.h"
#include "demo/host/HostObjects.h"

namespace tamvelo::bench {

namespace {

constexpr wchar_t kClass[] = L"articulos";
constexpr long kSoughtRow = 99; // in the shortest table too

std::wstring TemporaryFile() {
    wchar_t folder[MAX_PATH];
    wchar_t file[MAX_PATH];
    GetTempPathW(ARRAYSIZE(folder), folder);
    GetTempFileNameW(folder, L"tam", 0, file);
    return file;
}

} // namespace

SqliteHost SqliteHost::Sample() {
    SqliteHost host(TemporaryFile());
    host.m_database = std::make_shared<demo::Database>(demo::OpenSampleData(host.m_path));
    return host;
}

SqliteHost SqliteHost::Articles(long rows) {
    SqliteHost host(TemporaryFile());
    host.m_database = std::make_shared<demo::Database>(host.m_path);
    demo::Transaction whole(*host.m_database);
    demo::CreateTables(*host.m_database);
    host.m_database->Execute(
        L"with recursive numero(n) as (select 1 union all select n + 1 from numero where n < " +
        std::to_wstring(rows) +
        L") insert into articulos(id, codigo, descripcion, familia, precio, existencias, impuesto, "
        L"proveedor, alta, "
        L"activo, observaciones) "
        L"select n, printf('%08d', n), 'Artículo de prueba ' || n, printf('%02d', n % 40), n * 7 % 90000, n "
        L"% 500, "
        L"'01', printf('%05d', n % 300), date('2020-01-01', '+' || (n % 2000) || ' days'), n % 20 <> 0, "
        L"case when n % 7 = 0 then 'Consultar plazo' end from numero");
    demo::FinishTables(*host.m_database);
    whole.Commit();
    return host;
}

SqliteHost::~SqliteHost() {
    if (m_database) { // else it was moved from
        m_database.reset();
        DeleteFileW(m_path.c_str());
    }
}

Host SqliteHost::Objects() {
    demo::View view(*m_database, *demo::FindTable(kClass));
    return {MakeSilentSink(), demo::MakeDataClass(m_database, kClass),
            MakeTextControl(std::get<std::wstring>(view.Row(kSoughtRow)[0]))};
}

} // namespace tamvelo::bench
