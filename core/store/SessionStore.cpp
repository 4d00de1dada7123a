#include "core/store/SessionStore.h"

#include "core/store/SessionTask.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTimer>

#include <memory>
#include <utility>

namespace Registry {

namespace {

constexpr int bufferSize = 1024;      // characters, including the trailing NUL
constexpr long errorFileNotFound = 2; // the system's error code for a missing key
const QString keyMarker = QStringLiteral("Created");

/// The settings that implement a root; the group is the key's path.
std::unique_ptr<QSettings> openRoot(RegistryRoot root, const QString& keyPath) {
#ifdef Q_OS_WIN
    const QString prefix = root == RegistryRoot::CurrentUser ? QStringLiteral("HKEY_CURRENT_USER\\")
                                                             : QStringLiteral("HKEY_LOCAL_MACHINE\\");
    return std::make_unique<QSettings>(prefix + keyPath, QSettings::NativeFormat);
#else
    const auto scope = root == RegistryRoot::CurrentUser ? QSettings::UserScope : QSettings::SystemScope;
    auto settings = std::make_unique<QSettings>(QSettings::IniFormat, scope, QStringLiteral("Fennerbrooke"),
                                                QStringLiteral("Brennoval"));
    settings->setFallbacksEnabled(false);
    settings->beginGroup(QString(keyPath).replace(u'\\', u'/'));
    return settings;
#endif
}

/// Makes the file readable by the user alone, whatever the umask; rewriting keeps the mode.
void keepPrivate(const QSettings& settings) {
#ifndef Q_OS_WIN
    if (settings.scope() != QSettings::UserScope)
        return;
    constexpr auto ownersAlone = QFile::ReadOwner | QFile::WriteOwner;
    constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                            QFile::WriteOther | QFile::ExeOther;
    QFile file(settings.fileName());
    QDir().mkpath(QFileInfo(file).path());
    if (file.open(QIODevice::NewOnly | QIODevice::WriteOnly, ownersAlone) || (file.permissions() & others))
        file.setPermissions(ownersAlone);
#endif
}

/// The stored spelling of a value's name; empty if the value is absent.
QString storedName(const QSettings& settings, const QString& valueName) {
    const QStringList names = settings.childKeys();
    for (const QString& name : names)
        if (name.compare(valueName, Qt::CaseInsensitive) == 0)
            return name;
    return {};
}

bool keyExists(const QSettings& settings) {
    return !settings.childKeys().isEmpty() || !settings.childGroups().isEmpty();
}

/// A value that belongs to a task.
struct TaskName {
    QString name;
    std::optional<QString> Session::TaskValues::*text;
};

const TaskName taskNames[] = {{QStringLiteral("Mode"), &Session::TaskValues::mode},
                              {QStringLiteral("JobID"), &Session::TaskValues::jobID},
                              {QStringLiteral("TankID"), &Session::TaskValues::tankID},
                              {QStringLiteral("TankClass"), &Session::TaskValues::tankClass}};

struct AtWork {
    Session::Task task;
    Session::TaskValues stored; // what the file holds for these values, as far as this instance knows
    bool storing = false;       // whether a write of the task's values is scheduled
    std::function<void(const Session::Task&, const Session::TaskValues&)> listener;
};

AtWork& atWork() {
    static AtWork instance;
    return instance;
}

/// The value of the task at work with this name; null if it is not a task value.
const TaskName* taskValue(RegistryRoot root, const QString& keyPath, const QString& valueName) {
    if (!atWork().task || root != HKeyCurrentUser() ||
        keyPath.compare(AppRegistryKey(), Qt::CaseInsensitive) != 0)
        return nullptr;
    for (const TaskName& own : taskNames)
        if (valueName.compare(own.name, Qt::CaseInsensitive) == 0)
            return &own;
    return nullptr;
}

/// A stored text as readers see it: cut at a NUL, and nothing if it does not fit the buffer.
std::optional<QString> readable(const QString& stored) {
    if (stored.size() >= bufferSize)
        return std::nullopt;
    const auto end = stored.indexOf(QChar::Null);
    return end < 0 ? stored : stored.left(end);
}

/// Records a written or removed value in the task at work.
void noteWrite(const TaskName& value, const std::optional<QString>& now) {
    std::optional<QString>& text = (*atWork().task).*value.text;
    atWork().stored.*value.text = now;
    if (text == now)
        return;
    const Session::Task task = atWork().task;
    const Session::TaskValues before = *task;
    text = now;
    if (atWork().listener)
        atWork().listener(task, before);
}

} // namespace

RegistryRoot HKeyCurrentUser() {
    return RegistryRoot::CurrentUser;
}
RegistryRoot HKeyLocalMachine() {
    return RegistryRoot::LocalMachine;
}
QString AppRegistryKey() {
    return QStringLiteral("SOFTWARE\\Fennerbrooke\\Brennoval");
}
QString DatabaseDirectoryValue() {
    return QStringLiteral("DatabaseDirectory");
}

bool GetRegValue(RegistryRoot root, const QString& keyPath, const QString& valueName, QString& text) {
    // Not from the file: another instance of the program may have written its own work there.
    if (const TaskName* own = taskValue(root, keyPath, valueName)) {
        const std::optional<QString>& value = (*atWork().task).*own->text;
        text = value.value_or(QString());
        return value.has_value();
    }
    const auto settings = openRoot(root, keyPath);
    const QString name = storedName(*settings, valueName);
    if (name.isEmpty()) {
        text.clear();
        return false;
    }
    const QVariant value = settings->value(name);
    if (value.typeId() == QMetaType::QByteArray) { // a number is stored as its four bytes
        const QByteArray bytes = value.toByteArray();
        std::uint32_t number = 0;
        for (auto byte = bytes.crbegin(); byte != bytes.crend(); ++byte)
            number = number << 8U | static_cast<unsigned char>(*byte);
        text = QString::number(static_cast<std::int32_t>(number));
        return true;
    }
    // An ini reader splits at a comma into a list; the writer quotes such texts, but older files may not.
    const QString stored =
        value.typeId() == QMetaType::QStringList ? value.toStringList().join(u',') : value.toString();
    const auto read = readable(stored);
    text = read.value_or(QString());
    return read.has_value();
}

void SetRegValue(const QString& keyPath, const QString& valueName, const QVariant& value, RegistryType type) {
    if (!keyExists(*openRoot(RegistryRoot::CurrentUser, keyPath)))
        return;
    SetValueEx({RegistryRoot::CurrentUser, keyPath}, valueName, type, value);
}

long SetValueEx(const RegistryKey& openKey, const QString& valueName, RegistryType type,
                const QVariant& value) {
    const auto settings = openRoot(openKey.root, openKey.path);
    const QString known = storedName(*settings, valueName);
    const QString& name = known.isEmpty() ? valueName : known;
    keepPrivate(*settings);
    switch (type) {
    case RegistryType::Text:
        settings->setValue(name, value.toString());
        break;
    case RegistryType::Number: {
        const auto number = static_cast<std::uint32_t>(value.toInt());
        QByteArray bytes;
        for (unsigned shift = 0; shift < 32; shift += 8)
            bytes.append(static_cast<char>(number >> shift & 0xFFU));
        settings->setValue(name, bytes);
        break;
    }
    default:
        return 0;
    }
    settings->sync();
    if (const auto* own = taskValue(openKey.root, openKey.path, valueName); own && type == RegistryType::Text)
        noteWrite(*own, readable(value.toString()));
    return settings->status() == QSettings::NoError ? 0 : errorFileNotFound;
}

void removeRegValue(RegistryRoot root, const QString& keyPath, const QString& valueName) {
    const auto settings = openRoot(root, keyPath);
    if (const QString name = storedName(*settings, valueName); !name.isEmpty())
        settings->remove(name);
    settings->sync();
    if (const TaskName* own = taskValue(root, keyPath, valueName))
        noteWrite(*own, std::nullopt);
}

long createRegistryKey(RegistryRoot root, const QString& keyPath) {
    const auto settings = openRoot(root, keyPath);
    keepPrivate(*settings);
    if (!keyExists(*settings))
        settings->setValue(keyMarker, QString());
    settings->sync();
    return settings->status() == QSettings::NoError && settings->isWritable() ? 0 : errorFileNotFound;
}

bool SessionValue::read(QString& text) const {
    return GetRegValue(HKeyCurrentUser(), AppRegistryKey(), QString::fromLatin1(name), text);
}

QString SessionValue::text() const {
    QString text;
    read(text);
    return text;
}

void SessionValue::write(const QString& text) const {
    SetRegValue(AppRegistryKey(), QString::fromLatin1(name), text, RegistryType::Text);
}

} // namespace Registry

using namespace Registry;

namespace Session {

std::optional<Application> application() {
    return applicationNamed(TankClass.text().toStdString());
}

QString lineOf(const TaskValues& values) {
    const QString tank = values.tankID.value_or(QString());
    return tank == u"Add New..." ? QString() : tank;
}

QString tankLine() {
    const TaskValues values{.mode = {}, .jobID = {}, .tankID = TankID.text(), .tankClass = {}};
    return lineOf(values);
}

Task taskAtWork() {
    return atWork().task;
}

Task newTask() {
    auto task = std::make_shared<TaskValues>();
    for (const TaskName& value : taskNames)
        if (QString text; GetRegValue(HKeyCurrentUser(), AppRegistryKey(), value.name, text))
            (*task).*value.text = text;
    return task;
}

void putToWork(const Task& task) {
    AtWork& work = atWork();
    const Task before = std::exchange(work.task, task);
    if (!task) {
        work.storing = false;
        return;
    }
    if (!before) // it starts from what is stored
        work.stored = *task;
    if (*task == work.stored || std::exchange(work.storing, true))
        return;
    // The program reads the values from the task itself. The file only serves the next start, and each write
    // waits for the disk; switching between windows must not.
    constexpr int soon = 500; // milliseconds
    if (QCoreApplication::instance())
        QTimer::singleShot(soon, QCoreApplication::instance(), storeTask);
    else
        storeTask();
}

void storeTask() {
    AtWork& work = atWork();
    if (!std::exchange(work.storing, false) || !work.task)
        return;
    const auto settings = openRoot(HKeyCurrentUser(), AppRegistryKey());
    if (!keyExists(*settings))
        return;
    for (const TaskName& value : taskNames) {
        const std::optional<QString>& text = (*work.task).*value.text;
        if (text == work.stored.*value.text)
            continue;
        const QString known = storedName(*settings, value.name);
        const QString name = known.isEmpty() ? value.name : known;
        if (text)
            settings->setValue(name, *text);
        else
            settings->remove(name);
    }
    work.stored = *work.task;
}

void onTaskWrite(std::function<void(const Task&, const TaskValues&)> listener) {
    atWork().listener = std::move(listener);
}

} // namespace Session
