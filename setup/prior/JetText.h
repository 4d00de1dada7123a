#pragma once

#include <span>
#include <stdexcept>
#include <string>

/// Reads the earlier program's files, with the distrust that a file from elsewhere deserves.
namespace Jet {

/// Something in the file violates its format. Whatever was read so far is void.
class Damaged : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

using Bytes = std::span<const unsigned char>;

/// Decodes a text value as a version 4 file stores it to UTF-8. It has two bytes per character, or starts
/// with FF FE and has one byte for each Latin-1 character; a NUL then switches between the two modes. Throws
/// Damaged for what no writer produces: a NUL among the characters, half a character, a switch with nothing
/// after it, and FF FE within the text, which shows that two values have run together.
std::string textOf(Bytes stored);

} // namespace Jet
