#include "display_width.h"

#include <cwchar>

#include <locale.h>
#include <utf8.h>

namespace tessel::tool {
namespace {

constexpr const char* ellipsis = "…";

/// The C library knows the widths, but only in a locale of Unicode, and the user's may be none.
class UnicodeLocale {
public:
  UnicodeLocale() : before_(::uselocale(unicode())) {}
  UnicodeLocale(const UnicodeLocale&) = delete;
  UnicodeLocale& operator=(const UnicodeLocale&) = delete;
  ~UnicodeLocale() { ::uselocale(before_); }

private:
  /// Without such a locale on the machine the user's one has to do.
  static locale_t unicode() {
    static const locale_t locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
  }

  locale_t before_;
};

std::size_t widthOfCharacter(char32_t character) {
  const int width = ::wcwidth(static_cast<wchar_t>(character));
  return width < 0 ? 1 : static_cast<std::size_t>(width);
}

/// The start of the text that takes no more than `width` columns, with all that joins its last character.
std::string_view startOf(std::string_view text, std::size_t width) {
  std::size_t taken = 0;
  for (auto at = text.begin(); at != text.end();) {
    const auto from = at;
    taken += widthOfCharacter(static_cast<char32_t>(utf8::unchecked::next(at)));
    if (taken > width) return text.substr(0, static_cast<std::size_t>(from - text.begin()));
  }
  return text;
}

}  // namespace

std::size_t displayWidth(std::string_view text) {
  const UnicodeLocale locale;
  std::size_t width = 0;
  for (auto at = text.begin(); at != text.end();) {
    width += widthOfCharacter(static_cast<char32_t>(utf8::unchecked::next(at)));
  }
  return width;
}

std::string shortened(const std::string& text, std::size_t width) {
  if (displayWidth(text) <= width) return text;
  const UnicodeLocale locale;
  return std::string(startOf(text, width == 0 ? 0 : width - 1)) + ellipsis;
}

}  // namespace tessel::tool
