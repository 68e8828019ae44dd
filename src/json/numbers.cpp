#include "json/numbers.h"

#include <charconv>
#include <clocale>
#include <cstdlib>
#include <limits>
#include <system_error>

#include <locale.h>

namespace tsutils::json::detail {
namespace {

template <typename Integer>
Integer saturated(const std::string& digits, Integer beyond) {
  Integer value = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return result.ec == std::errc::result_out_of_range ? beyond : value;
}

// std::from_chars does not tell a number that is too large from one that is too small; the C function does.
double outOfRangeReal(const char* text) {
  static const locale_t plain = ::newlocale(LC_ALL_MASK, "C", locale_t());
  return ::strtod_l(text, nullptr, plain);
}

}  // namespace

std::uint64_t toUnsigned(const std::string& digits) {
  return saturated(digits, std::numeric_limits<std::uint64_t>::max());
}

std::int64_t toSigned(const std::string& digits) {
  const bool negative = digits.front() == '-';
  return saturated(digits,
                   negative ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max());
}

double toReal(const std::string& text) {
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  return result.ec == std::errc::result_out_of_range ? outOfRangeReal(text.c_str()) : value;
}

char* write(std::int64_t value, char* out) { return std::to_chars(out, out + longestInteger, value).ptr; }

char* write(std::uint64_t value, char* out) { return std::to_chars(out, out + longestInteger, value).ptr; }

char* write(double value, char* out) {
  return std::to_chars(out, out + longestReal, value, std::chars_format::fixed, 16).ptr;
}

}  // namespace tsutils::json::detail
