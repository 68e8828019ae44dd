#include <tessel/unit_conversion.h>

#include <string_view>

#include <tessel/exceptions.h>
#include <tessel/units.h>

#include "units/measure_impl.h"

namespace tessel {
namespace {

constexpr char16_t middleDot = 0x00B7;

bool isDigit(char16_t character) { return character >= u'0' && character <= u'9'; }

/// The superscripts of 1 to 3 are in Latin-1, the others in a block of their own.
char16_t superscript(char16_t digit) {
  if (digit == u'1') return 0x00B9;
  if (digit == u'2' || digit == u'3') return static_cast<char16_t>(digit + 0x80);
  return static_cast<char16_t>(digit + 0x2040);
}

}  // namespace

double convertUnit(double value, const Unit* from, const Unit* to) {
  if (!from && !to) return value;
  if (!from || !to) throw UnitConversionNotPossible();
  if (from->measure()->impl().exponents() != to->measure()->impl().exponents()) throw InvalidUnitConversion();

  const double fromScale = from->scale();
  const double toScale = to->scale();
  if (fromScale == toScale) return value;
  if (fromScale != 1.0) value *= fromScale;
  if (toScale != 1.0) value /= toScale;
  return value;
}

OdString formatUnitString(const OdString& text) {
  const std::u16string_view input = text.view();
  OdString output;
  bool inExponent = false;
  for (std::size_t position = 0; position < input.size(); ++position) {
    const char16_t character = input[position];
    if (inExponent && isDigit(character)) {
      output += superscript(character);
      continue;
    }
    inExponent = character == u'^';
    if (inExponent) continue;
    if (character != u'.') {
      output += character;
      continue;
    }
    output += middleDot;
    // What follows the dot is copied without being looked at.
    if (++position < input.size()) output += input[position];
  }
  return output;
}

}  // namespace tessel
