#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

/// A run-time failure with the number and description that the error report shows.
class Fault : public std::runtime_error {
  public:
    Fault(std::int32_t number, const std::string& description, std::string source = "Brennoval")
        : std::runtime_error(description), faultNumber(number), faultSource(std::move(source)) {}

    std::int32_t number() const { return faultNumber; }
    /// The object that raised the failure; a database failure names its connection here.
    const std::string& source() const { return faultSource; }

    static constexpr std::int32_t Overflow = 6;
    static constexpr std::int32_t DivisionByZero = 11;
    static constexpr std::int32_t TypeMismatch = 13;
    static constexpr std::int32_t FileNotFound = 53;
    static constexpr std::int32_t PathFileAccess = 75;
    static constexpr std::int32_t PathNotFound = 76;
    static constexpr std::int32_t ObjectNotSet = 91;

  private:
    std::int32_t faultNumber;
    std::string faultSource;
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

/// Ends a procedure whose failure has been shown to the user already; the error trap swallows it.
struct AlreadyReported {};
