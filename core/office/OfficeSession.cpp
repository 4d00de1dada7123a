#include "core/office/OfficeSession.h"

#include "core/store/OfficeDialect.h"

#include <optional>
#include <utility>

namespace {

/// A column, from the name of its type. The schema has a type of its own for each size of text.
ColumnInfo columnOf(const QString& name, const QString& type) {
    using Kind = ColumnInfo::Kind;
    static const struct {
        const char* word;
        Kind kind;
        int size;
    } types[] = {{"memo", Kind::Memo, 536870910}, {"float8", Kind::Double, 8},
                 {"int2", Kind::SmallInteger, 2}, {"int4", Kind::Integer, 4},
                 {"yesno", Kind::Boolean, 2},     {"moment", Kind::Moment, 8}};
    for (const auto& known : types)
        if (type == QLatin1String(known.word))
            return {name, known.kind, known.size};
    const QLatin1String text("text_");
    if (type.startsWith(text))
        return {name, Kind::Text, type.mid(text.size()).toInt()};
    return {name, Kind::Unknown, 0};
}

bool isQuery(QByteArrayView statement) {
    return statement.startsWith("SELECT");
}

Postgres::Connection connected(const OfficeOptions& options) {
    try {
        return Postgres::Connection(options.address, options.password);
    } catch (const Postgres::PasswordNeeded& needed) {
        throw PasswordNeeded(needed.number(), needed.what(), options.connectionString.toStdString());
    } catch (const Postgres::ServerFault& fault) {
        throw DatabaseFault(fault.number(), fault.what(), options.connectionString.toStdString());
    }
}

} // namespace

OfficeSession::OfficeSession(const OfficeOptions& options, EventAnswers& kept)
    : connection(connected(options)), answers(kept), address(options.address),
      source(options.connectionString.toStdString()) {
    constexpr int longestWait = 4000; // milliseconds for another's write
    // The role's own tables come first.
    runScript(QStringLiteral("SET search_path = \"$user\", office; SET lock_timeout = %1; "
                             "SET extra_float_digits = 1; SET datestyle = ISO; SET intervalstyle = postgres; "
                             "SET standard_conforming_strings = on; SET client_min_messages = error;")
                  .arg(longestWait));
    readColumns();
}

template<typename Body>
auto OfficeSession::reported(Body&& body) -> decltype(body()) {
    try {
        return std::forward<Body>(body)();
    } catch (const Postgres::ServerFault& fault) {
        const QByteArray& state = fault.sqlState();
        if (state == "55P03" || state == "40P01" || state == "40001") // waited too long, or for each other
            throw DataLocked(fault.number(),
                             "Could not use the database; it is locked by another user or program.", source);
        const bool denied = state == "42501" && connection.inTransaction(); // which answers nothing more
        if (denied || ((state == "42P01" || state == "42501") && isLockedOut()))
            throw DatabaseFault(fault.number(),
                                "You are no longer one of the office's users. Please ask whoever keeps the "
                                "office's database.",
                                source);
        if (state == "57014")
            throw DatabaseFault(fault.number(), "The database takes too long to answer.", source);
        throw DatabaseFault(fault.number(), fault.what(), source);
    }
}

bool OfficeSession::isLockedOut() {
    if (connection.inTransaction())
        return false;
    try {
        return connection.run(QStringLiteral("SELECT has_schema_privilege('office', 'USAGE')")).text(0, 0) ==
               u"f";
    } catch (const DatabaseFault&) {
        return false;
    }
}

/// What anything but a query does to the data makes the answers of this event old.
void OfficeSession::noteWrite(QByteArrayView statement) {
    if (!isQuery(statement))
        answers.forget();
}

/// What starts the transaction, on its way with the statement that comes next.
std::vector<Postgres::Question> OfficeSession::takeOpening() {
    std::vector<Postgres::Question> questions;
    for (const QByteArray& statement : std::exchange(opening, {}))
        questions.push_back({.statement = statement});
    return questions;
}

Postgres::Result OfficeSession::run(const QString& statement, const QVariantList& parameters) {
    noteWrite(statement.toUtf8());
    if (!inTransaction())
        return isQuery(statement.toUtf8()) ? reported([&] { return connection.run(statement, parameters); })
                                           : writeAlone(statement, parameters);
    if (opening.isEmpty())
        return reported([&] { return connection.run(statement, parameters); });
    return runTogether({{.statement = statement.toUtf8(), .parameters = parameters}}).back();
}

/// The question in front fails in an office of another version, and then the server does not come to the
/// write.
Postgres::Result OfficeSession::writeAlone(const QString& statement, const QVariantList& parameters) {
    const QByteArray guard = "SELECT 1 / (version = " + QByteArray::number(BRENNOVAL_OFFICE_VERSION) +
                             ")::int FROM office.version";
    try {
        return runTogether(
                   {{.statement = guard}, {.statement = statement.toUtf8(), .parameters = parameters}})
            .back();
    } catch (const DatabaseFault& fault) {
        if (fault.number() == Fault::DivisionByZero) // of the guard or of the statement itself
            requireVersion(run(QStringLiteral("SELECT version FROM office.version")));
        throw;
    }
}

std::vector<Postgres::Result> OfficeSession::runTogether(const std::vector<Postgres::Question>& questions) {
    std::vector<Postgres::Question> all = takeOpening();
    const auto before = static_cast<std::ptrdiff_t>(all.size());
    all.insert(all.end(), questions.begin(), questions.end());
    std::vector<Postgres::Result> results = reported([&] { return connection.runTogether(all); });
    if (before > 0 && asksForVersion)
        requireVersion(results[std::size_t(before) - 1]);
    results.erase(results.begin(), results.begin() + before);
    return results;
}

std::vector<Postgres::Result> OfficeSession::ask(const std::vector<Postgres::Question>& questions) {
    if (inTransaction())
        return runTogether(questions);
    const auto knownOf = [&](const Postgres::Question& question) { return answers.find(address, question); };
    // What is read later must not be older than what told whether anything had changed.
    if (questions.size() > 1 && !knownOf(questions.front()))
        answers.forget();
    std::vector<std::optional<Postgres::Result>> known;
    std::vector<Postgres::Question> unknown;
    for (const Postgres::Question& question : questions) {
        known.push_back(knownOf(question));
        if (!known.back())
            unknown.push_back(question);
    }
    const std::vector<Postgres::Result> news =
        unknown.size() == 1 // a batch takes the client a little longer
            ? std::vector{run(QString::fromUtf8(unknown[0].statement), unknown[0].parameters)}
            : unknown.empty() ? std::vector<Postgres::Result>() : runTogether(unknown);
    std::vector<Postgres::Result> results;
    for (std::size_t i = 0, next = 0; i < questions.size(); ++i) {
        if (!known[i])
            answers.keep(address, questions[i], news[next]);
        results.push_back(known[i] ? *known[i] : news[next++]);
    }
    return results;
}

/// The office may have been brought up to another version while the program was open.
void OfficeSession::requireVersion(const Postgres::Result& found) const {
    if (found.rows() == 0 || found.text(0, 0).toInt() != BRENNOVAL_OFFICE_VERSION)
        throw RefusedData(DatabaseFault::Unspecified,
                          "The office's database is of another version than the program by now. Nothing was "
                          "stored. Please close the program and start it again.",
                          source);
}

void OfficeSession::runScript(const QString& statements) {
    noteWrite({});
    QString script;
    for (const Postgres::Question& question : takeOpening())
        script += QString::fromUtf8(question.statement) + u';';
    reported([&] { connection.runScript(script + statements); });
}

void OfficeSession::queue(const QByteArray& statement, const QVariantList& parameters) {
    noteWrite(statement);
    if (!opening.isEmpty()) // whose answers count
        runTogether({});
    reported([&] { connection.queue(statement, parameters); });
}

void OfficeSession::finish() {
    reported([&] { connection.finish(); });
}

void OfficeSession::refuseChanged() const {
    throw DatabaseFault(DatabaseFault::Unspecified, "Could not update; currently locked or changed.", source);
}

void OfficeSession::readColumns() {
    const Postgres::Result found = run(
        QStringLiteral(
            "SELECT c.oid, a.attnum, a.attname, t.typname, c.relname, obj_description(c.oid, 'pg_class'), "
            "CASE a.attname WHEN '%1' THEN pg_get_serial_sequence(quote_ident(n.nspname) || '.' || "
            "quote_ident(c.relname), '%1') END "
            "FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace "
            "JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0 AND NOT a.attisdropped "
            "JOIN pg_type t ON t.oid = a.atttypid "
            "WHERE c.relkind = 'r' AND n.nspname IN ('office', current_user) "
            "ORDER BY n.nspname = current_user, c.oid, a.attnum")
            .arg(officeRow));
    for (int row = 0; row < found.rows(); ++row) {
        QString name = found.text(row, 2);
        const QStringList spelled = found.text(row, 5).split(u' ');
        if (const auto place = spelled.indexOf(name, 0); place < 0)
            for (const QString& spelling : spelled)
                if (spelling.compare(name, Qt::CaseInsensitive) == 0)
                    name = spelling;
        const quint32 table = found.text(row, 0).toUInt();
        const int place = found.text(row, 1).toInt();
        columns.insert({table, place}, columnOf(name, found.text(row, 3)));
        lastColumns.insert(table, place);         // they come in order
        tables.insert(found.text(row, 4), table); // the role's own table comes last and hides a shared one
        if (!found.isNull(row, 6))
            sequences.insert(found.text(row, 4), found.text(row, 6));
    }
}

const ColumnInfo* OfficeSession::column(quint32 table, int number) const {
    const auto found = columns.constFind({table, number});
    return found == columns.cend() ? nullptr : &*found;
}

QList<ColumnInfo> OfficeSession::columnsOf(const QString& table) const {
    QList<ColumnInfo> found;
    const auto number = tables.constFind(table.toLower());
    const int last = number == tables.cend() ? 0 : lastColumns.value(*number);
    for (int place = 1; place <= last; ++place)
        if (const ColumnInfo* known = column(*number, place)) // a dropped one leaves a gap
            found.append(*known);
    return found;
}

std::unique_ptr<OfficeSession> OfficePool::take(const OfficeOptions& options) {
    for (;;) {
        std::unique_ptr<OfficeSession> session;
        {
            const QMutexLocker lock(&mutex);
            auto& waiting = idle[options.address];
            if (waiting.empty())
                break;
            session = std::move(waiting.back());
            waiting.pop_back();
        }
        if (!session->isSound())
            continue;
        session->setSource(options.connectionString);
        return session;
    }
    refuseAfterWaiting(options);
    const auto start = std::chrono::steady_clock::now();
    try {
        return std::make_unique<OfficeSession>(options, answers);
    } catch (const DatabaseFault& fault) {
        constexpr std::chrono::seconds longTime(1);
        const auto now = std::chrono::steady_clock::now();
        const QMutexLocker lock(&mutex);
        if (now - start > longTime && !dynamic_cast<const PasswordNeeded*>(&fault))
            longWait = {.address = options.address,
                        .end = now,
                        .number = fault.number(),
                        .description = fault.what()};
        throw;
    }
}

void OfficePool::refuseAfterWaiting(const OfficeOptions& options) {
    constexpr std::chrono::seconds pause(5);
    const QMutexLocker lock(&mutex);
    if (longWait && longWait->address == options.address &&
        std::chrono::steady_clock::now() - longWait->end < pause)
        throw DatabaseFault(longWait->number, longWait->description, options.connectionString.toStdString());
}

void OfficePool::giveBack(const QString& address, std::unique_ptr<OfficeSession> session) noexcept {
    constexpr std::size_t most = 4; // events open few connections at once
    const QMutexLocker lock(&mutex);
    auto& waiting = idle[address];
    if (waiting.size() < most && session->isSound() && !session->inTransaction())
        waiting.push_back(std::move(session));
}

void OfficePool::close() {
    const QMutexLocker lock(&mutex);
    idle.clear();
}
