#include "bench/OfficeReplay.h"

#include <libpq-fe.h>

#include <stdexcept>

namespace {

/// Reads every value, as a program would.
bool readAll(PGresult* result) {
    const std::unique_ptr<PGresult, void (*)(PGresult*)> held(result, PQclear);
    volatile char seen = 0;
    for (int row = 0; row < PQntuples(result); ++row)
        for (int column = 0; column < PQnfields(result); ++column)
            seen = *PQgetvalue(result, row, column);
    (void)seen;
    const ExecStatusType status = PQresultStatus(result);
    return status != PGRES_FATAL_ERROR && status != PGRES_PIPELINE_ABORTED;
}

} // namespace

void OfficeReplay::Finish::operator()(pg_conn* held) const {
    PQfinish(held);
}

OfficeReplay::OfficeReplay(const QString& address) : connection(PQconnectdb(address.toUtf8().constData())) {
    if (PQstatus(connection.get()) != CONNECTION_OK)
        throw std::runtime_error(PQerrorMessage(connection.get()));
    PQclear(PQexec(connection.get(), "SET search_path = \"$user\", office; SET client_min_messages = error"));
}

int OfficeReplay::run(const std::vector<SentStatement>& statements, const QByteArray& text,
                      const QByteArray& instead) {
    int failed = 0;
    const SentStatement* first = statements.data();
    const SentStatement* const end = first + statements.size();
    while (first != end) {
        const SentStatement* last = first;
        while (!last->endsBatch && last + 1 != end)
            ++last;
        failed += runBatch(first, last + 1, text, instead);
        first = last + 1;
    }
    return failed;
}

void OfficeReplay::send(const SentStatement& statement, const QByteArray& text, const QByteArray& instead) {
    const QByteArray sql = QByteArray(statement.sql).replace(text, instead);
    std::vector<QByteArray> values;
    for (const auto& value : statement.values)
        values.push_back(value ? QByteArray(*value).replace(text, instead) : QByteArray());
    std::vector<const char*> pointers;
    for (std::size_t i = 0; i < values.size(); ++i)
        pointers.push_back(statement.values[i] ? values[i].constData() : nullptr);
    PQsendQueryParams(connection.get(), sql.constData(), int(pointers.size()),
                      statement.types.size() == pointers.size() ? statement.types.data() : nullptr,
                      pointers.data(), nullptr, nullptr, 0);
}

int OfficeReplay::runBatch(const SentStatement* first, const SentStatement* last, const QByteArray& text,
                           const QByteArray& instead) {
    if (first->simple)
        return readAll(PQexec(connection.get(), QByteArray(first->sql).replace(text, instead).constData()))
                   ? 0
                   : 1;
    int failed = 0;
    const bool together = last - first > 1;
    if (together)
        PQenterPipelineMode(connection.get());
    for (const SentStatement* statement = first; statement != last; ++statement)
        send(*statement, text, instead);
    if (together)
        PQpipelineSync(connection.get());
    for (bool ended = false; !ended;) {
        PGresult* result = PQgetResult(connection.get());
        if (!result) {
            ended = !together;
            continue;
        }
        ended = PQresultStatus(result) == PGRES_PIPELINE_SYNC;
        failed += readAll(result) ? 0 : 1;
    }
    if (together)
        PQexitPipelineMode(connection.get());
    return failed;
}
