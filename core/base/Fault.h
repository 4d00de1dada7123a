#pragma once

#include <cstdint>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

/// A run-time failure with the number and description shown in the error report.
class Fault : public std::runtime_error {
  public:
    Fault(std::int32_t number, const std::string& description, std::string source = "Brennoval")
        : std::runtime_error(description), faultNumber(number), faultSource(std::move(source)) {}

    std::int32_t number() const { return faultNumber; }
    /// What raised the failure; a database failure gives its connection here.
    const std::string& source() const { return faultSource; }
    /// The routine that failed, such as "GetNextNumber"; empty if none has added its name.
    const std::string& routine() const { return routineName; }
    /// Adds a routine's name to the failure. The innermost name wins.
    void happenedIn(const std::string& routine) {
        if (routineName.empty())
            routineName = routine;
    }

    static constexpr std::int32_t Overflow = 6;
    static constexpr std::int32_t OutOfMemory = 7;
    static constexpr std::int32_t DivisionByZero = 11;
    static constexpr std::int32_t TypeMismatch = 13;
    static constexpr std::int32_t InternalError = 51;
    static constexpr std::int32_t FileNotFound = 53;
    static constexpr std::int32_t PathFileAccess = 75;
    static constexpr std::int32_t PathNotFound = 76;
    static constexpr std::int32_t ObjectNotSet = 91;
    static constexpr std::int32_t InvalidUseOfNull = 94;
    static constexpr std::int32_t ObjectRequired = 424;
    static constexpr std::int32_t InvalidPicture = 481;
    static constexpr std::int32_t Printer = 482;

  private:
    std::int32_t faultNumber;
    std::string faultSource;
    std::string routineName;
};

/// A failure of the data layer. The numbers are those of the program's original data provider, because users
/// and support know them.
class DatabaseFault : public Fault {
  public:
    using Fault::Fault;

    static constexpr std::int32_t NoDataSource = static_cast<std::int32_t>(0x80040E4D);
    static constexpr std::int32_t Unspecified = static_cast<std::int32_t>(0x80004005);
    static constexpr std::int32_t SyntaxError = static_cast<std::int32_t>(0x80040E14);
    static constexpr std::int32_t NoSuchTable = static_cast<std::int32_t>(0x80040E37);
    static constexpr std::int32_t ConstraintViolation = static_cast<std::int32_t>(0x80040E2F);
    static constexpr std::int32_t DataOverflow = static_cast<std::int32_t>(0x80040E57);
    static constexpr std::int32_t NoSuchColumn = 3265;
    static constexpr std::int32_t NoCurrentRecord = 3021;
    static constexpr std::int32_t InvalidConnection = 3709;
};

/// The database folder does not hold the file, or cannot be reached. The user is asked for the folder.
class NoDatabaseFile : public DatabaseFault {
  public:
    using DatabaseFault::DatabaseFault;
};

/// User data that this program must not work with. The description tells the user why, and what to do.
class RefusedData : public DatabaseFault {
  public:
    using DatabaseFault::DatabaseFault;
};

/// Another program, or another instance of this one, is using the data right now.
class DataLocked : public DatabaseFault {
  public:
    using DatabaseFault::DatabaseFault;
};

/// An office's server wants a password that nobody has given yet, or another one.
class PasswordNeeded : public DatabaseFault {
  public:
    using DatabaseFault::DatabaseFault;
};

/// The record to be saved has been deleted elsewhere. The description is the message for the user.
class RecordGone : public DatabaseFault {
  public:
    explicit RecordGone(const std::string& description) : DatabaseFault(NoCurrentRecord, description) {}
};

/// Someone else has changed what a save would overwrite. The description is the question to the user.
class RecordChanged : public DatabaseFault {
  public:
    explicit RecordChanged(const std::string& question) : DatabaseFault(Unspecified, question) {}
};

/// Runs a routine and adds its name to any failure that leaves it, for the error report. Throws Fault;
/// converts other exceptions to Fault.
template<typename Body>
auto underName(const std::string& routine, Body&& body) -> decltype(body()) {
    try {
        return std::forward<Body>(body)();
    } catch (Fault& fault) {
        fault.happenedIn(routine);
        throw;
    } catch (const std::bad_alloc& error) {
        Fault fault(Fault::OutOfMemory, error.what());
        fault.happenedIn(routine);
        throw fault;
    } catch (const std::exception& error) {
        Fault fault(Fault::InternalError, error.what());
        fault.happenedIn(routine);
        throw fault;
    }
}
