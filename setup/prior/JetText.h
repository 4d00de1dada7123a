#pragma once

#include <span>
#include <stdexcept>
#include <string>

/// What the earlier program's files hold, read with the distrust that a file from elsewhere deserves.
namespace Jet {

/// Something in the file is not as its format wants it. What was read so far counts for nothing.
class Damaged : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

using Bytes = std::span<const unsigned char>;

/// The text of a value as a file of version 4 stores it, in UTF-8. It has two bytes a character, or begins
/// with FF FE and has one byte for those of Latin-1; a NUL then changes between the two ways. Throws Damaged
/// for what no writer leaves: a NUL among the characters, half a character, a change to nothing, and FF FE
/// within the text, which shows that two values have lost their border.
std::string TextOf(Bytes stored);

} // namespace Jet
