#include "json/printable.h"

#include <bitset>
#include <cwctype>

#include <locale.h>
#include <wctype.h>

namespace tsutils::json::detail {
namespace {

using Units = std::bitset<0x10000>;

// Not the locale of the process, which the host may set: the same value must give the same text everywhere. Where there
// is no such locale only ASCII is printable; the rest is then escaped, which is longer and means the same.
Units printableUnits() {
  Units result;
  const locale_t unicode = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t());
  for (std::size_t unit = 0; unit < result.size(); ++unit) {
    result[unit] = unicode ? ::iswprint_l(static_cast<wint_t>(unit), unicode) != 0 : unit >= 0x20 && unit < 0x7F;
  }
  if (unicode) ::freelocale(unicode);
  return result;
}

}  // namespace

bool isPrintable(char16_t unit) {
  static const Units printable = printableUnits();
  return printable[unit];
}

}  // namespace tsutils::json::detail
