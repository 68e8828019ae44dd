#pragma once

#include <string>
#include <string_view>

namespace tessel::tool {

/// The characters of a document.
struct DecodedText {
  std::wstring text;     ///< One wide character for each code point, a byte order mark included.
  bool complete = true;  ///< False if the bytes behind `text` are no text in their encoding.

  /// What the XML declaration calls the encoding, if that is none of ours: the bytes were then taken for UTF-8.
  std::string unknownEncoding;
};

/// Reads the bytes in the encoding in which an XML parser finds them: UTF-8, UTF-16 and UTF-32 of either byte order,
/// with or without a byte order mark, and Latin-1 if the XML declaration says so.
///
/// The parser itself would pass over what is no text, and names would come in with letters missing.
DecodedText decode(std::string_view bytes);

/// Whether the number is that of a Unicode character: in range, and no surrogate.
bool isCharacter(char32_t character);

}  // namespace tessel::tool
