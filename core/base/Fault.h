#pragma once

#include <cstdint>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

/// A run-time failure with the number and description that the error report shows.
class Fault : public std::runtime_error {
  public:
    Fault(std::int32_t number, const std::string& description, std::string source = "Brennoval")
        : std::runtime_error(description), faultNumber(number), faultSource(std::move(source)) {}

    std::int32_t number() const { return faultNumber; }
    /// The object that raised the failure; a database failure names its connection here.
    const std::string& source() const { return faultSource; }
    /// The routine in which it happened, such as "GetNextNumber"; an empty text when none has put its name to
    /// it.
    const std::string& routine() const { return routineName; }
    /// Puts the name of a routine to the failure. The innermost routine's name stays.
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

  private:
    std::int32_t faultNumber;
    std::string faultSource;
    std::string routineName;
};

/// A failure of the data layer. The numbers are those of the provider that the program grew up with,
/// as its users and its support know them.
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

/// The database folder holds no such file, or cannot be seen. The user is asked for the folder.
class NoDatabaseFile : public DatabaseFault {
  public:
    using DatabaseFault::DatabaseFault;
};

/// Another program, or another copy of this one, works on the data just now.
class DataLocked : public DatabaseFault {
  public:
    using DatabaseFault::DatabaseFault;
};

/// The record that a save is for has been deleted elsewhere. The description is what the user is told.
class RecordGone : public DatabaseFault {
  public:
    explicit RecordGone(const std::string& description) : DatabaseFault(NoCurrentRecord, description) {}
};

/// Someone else has changed what a save would write over. The description is the question to the user.
class RecordChanged : public DatabaseFault {
  public:
    explicit RecordChanged(const std::string& question) : DatabaseFault(Unspecified, question) {}
};

/// Runs a routine of the program. A failure that leaves it carries the routine's name, for the error report.
/// Throws Fault; other exceptions become one.
template<typename Body>
auto Named(const std::string& routine, Body&& body) -> decltype(body()) {
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
