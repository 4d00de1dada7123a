#include "core/postgres/Postgres.h"

#include "core/base/Numbers.h"
#include "core/base/ServerAddress.h"

#include <QRegularExpression>

#include <libpq-fe.h>

#include <array>
#include <utility>
#include <vector>

namespace Postgres {

namespace {

// The server's own numbers for its types.
constexpr Oid doubleType = 701;
constexpr Oid wholeType = 20;
constexpr Oid anyType = 0; // the server reads the type from the statement

const char* const lostConnection = "08006";

/// libpq would cut the text at a NUL, and the server holds none.
QByteArray textOf(const QVariant& value) {
    QByteArray text = value.toString().toUtf8();
    if (text.contains('\0'))
        throw DatabaseFault(DatabaseFault::DataOverflow, "A text with the character NUL cannot be stored.");
    return text;
}

/// The values of a statement as libpq wants them.
struct Values {
    explicit Values(const QVariantList& parameters) {
        for (const QVariant& value : parameters) {
            if (value.typeId() == QMetaType::Double)
                texts.push_back(QByteArray::fromStdString(shownNumberText(value.toDouble())));
            else if (value.isValid())
                texts.push_back(textOf(value));
            else
                texts.emplace_back();
            types.push_back(value.typeId() == QMetaType::Double ? doubleType
                            : !value.isValid() || value.typeId() == QMetaType::QString ||
                                    value.typeId() == QMetaType::QDate
                                ? anyType
                                : wholeType);
        }
        for (qsizetype i = 0; i < parameters.size(); ++i)
            pointers.push_back(parameters[i].isValid() ? texts[std::size_t(i)].constData() : nullptr);
    }
    std::vector<QByteArray> texts;
    std::vector<Oid> types;
    std::vector<const char*> pointers;
};

QString trimmed(const char* message) {
    return QString::fromUtf8(message).trimmed();
}

/// Whether a server has refused a connection because of its password, and not, say, because there is no such
/// database. It says why only in a message that may be in any language. So it is asked once more, for the
/// five characters of SQLSTATE; the connection may then succeed.
bool isPasswordRefused(pg_conn* connection) {
    if (!PQconnectionUsedPassword(connection))
        return false;
    PQsetErrorVerbosity(connection, PQERRORS_SQLSTATE);
    PQreset(connection);
    PQsetErrorVerbosity(connection, PQERRORS_DEFAULT);
    if (PQstatus(connection) == CONNECTION_OK)
        return false;
    static const QRegularExpression wrongPassword(QStringLiteral("\\b28(P01|000)$")); // 000: other methods
    return wrongPassword.match(trimmed(PQerrorMessage(connection))).hasMatch();
}

/// The provider's number for a failure of the server.
std::int32_t numberOf(QByteArrayView state) {
    if (state == "22012")
        return Fault::DivisionByZero;
    if (state == "22003" || state == "2201F")
        return Fault::Overflow;
    if (state == "42P01")
        return DatabaseFault::NoSuchTable;
    if (state == "42501" || !state.startsWith("42"))
        return state.startsWith("23")                         ? DatabaseFault::ConstraintViolation
               : state.startsWith("2200") || state == "22P02" ? DatabaseFault::DataOverflow
                                                              : DatabaseFault::Unspecified;
    return DatabaseFault::SyntaxError;
}

} // namespace

Result::Result(pg_result* result) : held(result, PQclear) {}

int Result::rows() const {
    return PQntuples(held.get());
}
int Result::columns() const {
    return PQnfields(held.get());
}
QString Result::name(int column) const {
    return QString::fromUtf8(PQfname(held.get(), column));
}
quint32 Result::type(int column) const {
    return PQftype(held.get(), column);
}
quint32 Result::table(int column) const {
    return PQftable(held.get(), column);
}
int Result::tableColumn(int column) const {
    return PQftablecol(held.get(), column);
}
bool Result::isNull(int row, int column) const {
    return PQgetisnull(held.get(), row, column) != 0;
}
QByteArrayView Result::bytes(int row, int column) const {
    return {PQgetvalue(held.get(), row, column), PQgetlength(held.get(), row, column)};
}
QString Result::text(int row, int column) const {
    return QString::fromUtf8(bytes(row, column));
}
qint64 Result::changedRows() const {
    return QByteArrayView(PQcmdTuples(held.get())).toLongLong();
}
QByteArray Result::command() const {
    return PQcmdStatus(held.get());
}

void Connection::Finish::operator()(pg_conn* connection) const {
    PQfinish(connection);
}

Connection::Connection(const QString& uri, const QString& password)
    : source(ServerAddress::withoutPassword(uri)) {
    const QByteArray address = uri.toUtf8();
    const QByteArray secret = password.toUtf8();
    // What stands before the address can be set differently in it; what stands after it cannot.
    std::vector<std::pair<const char*, const char*>> settings = {
        {"connect_timeout", "10"},         {"keepalives_idle", "30"},       {"tcp_user_timeout", "20000"},
        {"application_name", "Brennoval"}, {"dbname", address.constData()}, {"client_encoding", "UTF8"}};
    if (!password.isEmpty())
        settings.emplace_back("password", secret.constData());
    std::vector<const char*> names;
    std::vector<const char*> values;
    for (const auto& [name, value] : settings) {
        names.push_back(name);
        values.push_back(value);
    }
    names.push_back(nullptr);
    values.push_back(nullptr);
    handle.reset(PQconnectdbParams(names.data(), values.data(), 1));
    if (!handle)
        throw std::bad_alloc();
    if (PQstatus(handle.get()) != CONNECTION_OK) {
        // What libpq cannot understand it repeats, with the password if there is one.
        const std::string message = withoutPassword(trimmed(PQerrorMessage(handle.get()))).toStdString();
        if (PQconnectionNeedsPassword(handle.get()) || isPasswordRefused(handle.get()))
            throw PasswordNeeded("28P01", DatabaseFault::Unspecified, message, source.toStdString());
        if (PQstatus(handle.get()) != CONNECTION_OK)
            throw ServerFault("08001", DatabaseFault::Unspecified, message, source.toStdString());
    }
    PQsetNoticeProcessor(
        handle.get(), [](void*, const char*) {}, nullptr);
}

void Connection::fail(const pg_result* result) const {
    const auto field = [result](int code) -> QByteArray {
        return result ? QByteArray(PQresultErrorField(result, code)) : QByteArray();
    };
    QByteArray state = field(PG_DIAG_SQLSTATE);
    QString message = QString::fromUtf8(field(PG_DIAG_MESSAGE_PRIMARY));
    if (PQstatus(handle.get()) != CONNECTION_OK || state.isEmpty()) {
        state = state.isEmpty() ? QByteArray(lostConnection) : state;
        message = QStringLiteral("The connection to the office's database is lost: ") +
                  (message.isEmpty() ? trimmed(PQerrorMessage(handle.get())) : message);
    }
    throw ServerFault(state, numberOf(state), message.toStdString(), source.toStdString());
}

Result Connection::checked(pg_result* result) const {
    Result held(result);
    switch (PQresultStatus(result)) {
    case PGRES_COMMAND_OK:
    case PGRES_TUPLES_OK:
    case PGRES_EMPTY_QUERY:
        return held;
    default:
        fail(result);
    }
}

Result Connection::run(const QString& statement, const QVariantList& parameters) {
    finish();
    const Values values(parameters);
    return checked(PQexecParams(handle.get(), statement.toUtf8().constData(), int(values.pointers.size()),
                                values.types.data(), values.pointers.data(), nullptr, nullptr, 0));
}

void Connection::runScript(const QString& statements) {
    finish();
    checked(PQexec(handle.get(), statements.toUtf8().constData()));
}

void Connection::queue(const QByteArray& statement, const QVariantList& parameters) {
    constexpr qsizetype most = 500; // beyond that both sides might wait for each other with full buffers
    if (queued >= most)
        finish();
    if (queued == 0 && !PQenterPipelineMode(handle.get()))
        fail(nullptr);
    ++queued;
    const Values values(parameters);
    if (!PQsendQueryParams(handle.get(), statement.constData(), int(values.pointers.size()),
                           values.types.data(), values.pointers.data(), nullptr, nullptr, 0))
        fail(nullptr);
}

void Connection::finish() {
    if (queued > 0)
        awaitQueued();
}

std::vector<Result> Connection::runTogether(const std::vector<Question>& questions) {
    finish();
    for (const Question& question : questions)
        queue(question.statement, question.parameters);
    return awaitQueued();
}

std::vector<Result> Connection::awaitQueued() {
    queued = 0;
    if (!PQpipelineSync(handle.get()))
        fail(nullptr);
    std::vector<Result> answers;
    const pg_result* failed = nullptr;
    for (bool synchronised = false; !synchronised;) {
        pg_result* result = PQgetResult(handle.get());
        if (!result) { // the end of one statement
            if (PQstatus(handle.get()) != CONNECTION_OK)
                break;
            continue;
        }
        const ExecStatusType status = PQresultStatus(result);
        answers.emplace_back(result);
        synchronised = status == PGRES_PIPELINE_SYNC;
        if (!failed && (status == PGRES_FATAL_ERROR || status == PGRES_BAD_RESPONSE))
            failed = result;
    }
    PQexitPipelineMode(handle.get());
    if (failed || PQstatus(handle.get()) != CONNECTION_OK)
        fail(failed);
    answers.pop_back(); // the end of the batch
    return answers;
}

bool Connection::isSound() const {
    // A server that has gone has closed the connection, which shows without asking it. The first look may
    // find only what it said before, the second one then finds the end.
    return PQconsumeInput(handle.get()) && PQconsumeInput(handle.get()) &&
           PQstatus(handle.get()) == CONNECTION_OK;
}
bool Connection::inTransaction() const {
    return PQtransactionStatus(handle.get()) != PQTRANS_IDLE;
}
QString Connection::role() const {
    return QString::fromUtf8(PQuser(handle.get()));
}
QString Connection::database() const {
    return QString::fromUtf8(PQdb(handle.get()));
}
QString Connection::host() const {
    return QString::fromUtf8(PQhost(handle.get()));
}
int Connection::serverVersion() const {
    return PQserverVersion(handle.get());
}

Transaction::Transaction(Connection& over) : connection(over) {
    connection.runScript(QStringLiteral("BEGIN"));
}

Transaction::~Transaction() {
    if (committed)
        return;
    try {
        connection.runScript(QStringLiteral("ROLLBACK"));
    } catch (const DatabaseFault&) { // the connection is gone, and the transaction with it
    }
}

void Transaction::commit() {
    // The server answers COMMIT after a failure with a rollback, and calls that a success.
    if (connection.run(QStringLiteral("COMMIT")).command() != "COMMIT")
        throw DatabaseFault(DatabaseFault::Unspecified, "The transaction had failed and was undone.");
    committed = true;
}

QString quotedName(const QString& name) {
    return u'"' + QString(name).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

QString quotedText(const QString& text) {
    return u'\'' + QString(text).replace(u'\'', QStringLiteral("''")) + u'\'';
}

} // namespace Postgres
