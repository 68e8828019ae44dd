#include "encoding.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <set>

#include <pugixml.hpp>
#include <utf8.h>

#include <tessel/platform/od_string.h>

namespace tessel::tool {
namespace {

static_assert(sizeof(wchar_t) == 4, "one wide character is taken for one code point");

// The encoding is told by the first bytes, or by the XML declaration, which is shorter than this.
constexpr std::size_t beginning = 1024;

pugi::xml_encoding detectEncoding(std::string_view bytes) {
  return pugi::xml_document().load_buffer(bytes.data(), std::min(bytes.size(), beginning)).encoding;
}

/// The bytes as units of so many bytes each; bytes that are too few for a unit are left out.
template <typename Unit>
std::basic_string<Unit> readUnits(std::string_view bytes, bool bigEndian) {
  std::basic_string<Unit> units(bytes.size() / sizeof(Unit), Unit());
  for (std::size_t i = 0; i < units.size() * sizeof(Unit); ++i) {
    const std::size_t place = i % sizeof(Unit);
    const std::size_t shift = 8 * (bigEndian ? sizeof(Unit) - 1 - place : place);
    const auto byte = static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i]));
    units[i / sizeof(Unit)] = static_cast<Unit>(units[i / sizeof(Unit)] | (byte << shift));
  }
  return units;
}

/// Empty without an XML declaration that names one. For bytes in which ASCII characters are what they are in ASCII.
std::string declaredEncoding(std::string_view bytes) {
  pugi::xml_document document;
  document.load_buffer(bytes.data(), std::min(bytes.size(), beginning), pugi::parse_declaration, pugi::encoding_latin1);
  const pugi::xml_node first = document.first_child();
  if (first.type() != pugi::node_declaration) return {};
  return pugi::as_utf8(first.attribute(L"encoding").value());
}

/// Whether it is one of the names of UTF-8, UTF-16 and UTF-32, or of ASCII, which is a part of UTF-8. UTF-7 is none of
/// them: it looks like ASCII and means something else.
bool isNameOfOurs(std::string name) {
  static const std::set<std::string_view> names = {
    "utf-8",  "utf8",     "us-ascii", "ascii", "utf-16", "utf-16le",        "utf-16be",
    "utf-32", "utf-32le", "utf-32be", "ucs-2", "ucs-4",  "iso-10646-ucs-2", "iso-10646-ucs-4",
  };
  std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
  return names.count(name) > 0;
}

/// For bytes that are taken for UTF-8. A declaration of UTF-16 in single bytes is mistaken, but it names nothing unknown.
std::string unknownEncodingOf(std::string_view bytes) {
  const std::string declared = declaredEncoding(bytes);
  return isNameOfOurs(declared) ? std::string() : declared;
}

DecodedText fromUtf8(std::string_view bytes) {
  const auto bad = utf8::find_invalid(bytes.begin(), bytes.end());
  return {pugi::as_wide(std::string(bytes.begin(), bad)), bad == bytes.end(), unknownEncodingOf(bytes)};
}

DecodedText fromUtf16(std::string_view bytes, bool bigEndian) {
  return {OdString(readUnits<char16_t>(bytes, bigEndian)).toWide(), bytes.size() % sizeof(char16_t) == 0, {}};
}

DecodedText fromUtf32(std::string_view bytes, bool bigEndian) {
  const std::u32string units = readUnits<char32_t>(bytes, bigEndian);
  return {std::wstring(units.begin(), units.end()), bytes.size() % sizeof(char32_t) == 0, {}};
}

DecodedText fromLatin1(std::string_view bytes) {
  std::wstring text(bytes.size(), L'\0');
  std::transform(bytes.begin(), bytes.end(), text.begin(), [](char c) { return static_cast<unsigned char>(c); });
  return {text, true, {}};
}

DecodedText decodeAs(pugi::xml_encoding encoding, std::string_view bytes) {
  switch (encoding) {
  case pugi::encoding_utf16_le:
  case pugi::encoding_utf16_be:
    return fromUtf16(bytes, encoding == pugi::encoding_utf16_be);
  case pugi::encoding_utf32_le:
  case pugi::encoding_utf32_be:
    return fromUtf32(bytes, encoding == pugi::encoding_utf32_be);
  case pugi::encoding_latin1:
    return fromLatin1(bytes);
  default:
    return fromUtf8(bytes);
  }
}

}  // namespace

bool isCharacter(char32_t character) { return character <= 0x10FFFF && !(character >= 0xD800 && character <= 0xDFFF); }

DecodedText decode(std::string_view bytes) {
  DecodedText decoded = decodeAs(detectEncoding(bytes), bytes);
  const auto bad = std::find_if_not(decoded.text.begin(), decoded.text.end(),
                                    [](wchar_t c) { return isCharacter(static_cast<char32_t>(c)); });
  if (bad != decoded.text.end()) {
    decoded.text.erase(bad, decoded.text.end());
    decoded.complete = false;
  }
  return decoded;
}

}  // namespace tessel::tool
