// Feeds any text to the statement tokenizer: it answers or refuses, and the engine can read every answer
// safely.

#include "core/base/Fault.h"
#include "core/store/SqliteEngine.h"

#include <sqlite3.h>

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
    static sqlite3* engine = [] {
        sqlite3* handle = nullptr;
        sqlite3_open(":memory:", &handle);
        sqlite3_exec(handle, "CREATE TABLE tblJobData (TankID TEXT, TankNo INTEGER, JobID TEXT, V DOUBLE)",
                     nullptr, nullptr, nullptr);
        return handle;
    }();
    const QString statement = QString::fromUtf8(data, qsizetype(size));
    try {
        const QByteArray sql = rewriteJetSql(statement, sqliteDialect()).sql.toUtf8();
        sqlite3_stmt* prepared = nullptr;
        sqlite3_prepare_v2(engine, sql.constData(), int(sql.size()), &prepared, nullptr);
        sqlite3_finalize(prepared);
    } catch (const DatabaseFault&) {
        return 0;
    }
    // Quoted text comes out as it went in, whatever it contains.
    if (statement.contains(QChar(0)))
        return 0;
    const QString quoted =
        QStringLiteral("SELECT '") + QString(statement).replace(u'\'', QStringLiteral("''")) + u'\'';
    if (rewriteJetSql(quoted, sqliteDialect()).sql != quoted)
        __builtin_trap();
    return 0;
}
