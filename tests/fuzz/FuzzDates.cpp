// Feeds any text to the date literals: the result is a day or a refusal.

#include "core/base/Fault.h"
#include "core/store/SqliteEngine.h"

#include <QDate>

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
    const QString text = QString::fromUtf8(data, qsizetype(size)).remove(u'#');
    try {
        const QString sql = rewriteJetSql(u'#' + text + u'#', sqliteDialect()).sql;
        if (!QDate::fromString(sql.mid(1, sql.size() - 2), Qt::ISODate).isValid())
            __builtin_trap();
    } catch (const DatabaseFault&) {
    }
    return 0;
}
