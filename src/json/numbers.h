#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tsutils::json::detail {

// Numbers from and to text, in the same way whatever the locales of the process are. What is read has the form of a
// JSON number; a minus comes first, if at all.

/// Saturates: a number that is too large gives the largest there is.
std::uint64_t toUnsigned(const std::string& digits);

/// Saturates at both ends.
std::int64_t toSigned(const std::string& digits);

/// The nearest value: infinity where the number is too large, a denormal value or zero where it is too small.
double toReal(const std::string& text);

/// The longest text of a real: a minus, 309 digits, the point and 16 digits.
constexpr std::size_t longestReal = 327;
/// The longest text of an integer: a minus and 19 digits, or 20 digits.
constexpr std::size_t longestInteger = 20;

/// These write into a buffer of at least that length and return the end of the text, which has no zero behind it.
char* write(std::int64_t value, char* out);
char* write(std::uint64_t value, char* out);
/// Fixed notation with 16 digits behind the point; "inf", "-inf", "nan" or "-nan" for what is no number.
char* write(double value, char* out);

}  // namespace tsutils::json::detail
