#include "platform/utf.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "platform/utfcpp.h"

namespace tessel {

namespace {

// Nearly all text is ASCII. Blocks of this many characters are tested and copied at a time: a text of 24
// letters is converted twelve times as fast as by utfcpp with a back inserter (measured at -O2).
constexpr std::size_t blockSize = 8;

template <typename Char>
bool startsWithAsciiBlock(const Char* in, const Char* end) {
  if (static_cast<std::size_t>(end - in) < blockSize) return false;
  constexpr std::uint64_t beyondAscii = sizeof(Char) == 1 ? 0x8080808080808080u : 0xFF80FF80FF80FF80u;
  std::uint64_t words[blockSize * sizeof(Char) / sizeof(std::uint64_t)];
  std::memcpy(words, in, sizeof words);
  std::uint64_t all = 0;
  for (const std::uint64_t word : words) all |= word;
  return (all & beyondAscii) == 0;
}

// The local array tells the compiler that source and target do not overlap: the loop then becomes a few
// vector instructions.
template <typename From, typename To>
void copyBlock(const From* in, To* out) {
  To block[blockSize];
  for (std::size_t i = 0; i < blockSize; ++i) block[i] = static_cast<To>(in[i]);
  std::memcpy(out, block, sizeof block);
}

bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }
bool isAscii(char16_t unit) { return unit < 0x80; }

/// Copies up to the first character beyond ASCII; moves both pointers behind what was copied.
template <typename From, typename To>
void copyAscii(const From*& in, const From* end, To*& out) {
  for (; startsWithAsciiBlock(in, end); in += blockSize, out += blockSize) copyBlock(in, out);
  while (in != end && isAscii(*in)) *out++ = static_cast<To>(*in++);
}

/// Sums up what each character takes in the other encoding; one of ASCII takes 1.
template <typename Char, typename Size>
std::size_t sumOfSizes(const Char* in, const Char* end, Size sizeOf) {
  std::size_t sum = 0;
  while (in != end) {
    for (; startsWithAsciiBlock(in, end); in += blockSize) sum += blockSize;
    const auto rest = static_cast<std::size_t>(end - in);
    for (const Char* const stop = in + std::min(rest, blockSize); in != stop; ++in) sum += sizeOf(*in);
  }
  return sum;
}

bool isSurrogate(char16_t unit) { return (unit & 0xF800) == 0xD800; }
bool isLeadSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
bool isTrailSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

// Each half of a surrogate pair stands for two of the four bytes.
unsigned utf8Size(char16_t unit) { return isSurrogate(unit) ? 2u : 1u + (unit >= 0x80u) + (unit >= 0x800u); }

// A trail byte takes nothing, and what has four bytes takes a surrogate pair.
unsigned utf16Size(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  return (value & 0xC0u) == 0x80u ? 0u : 1u + (value >= 0xF0u);
}

// wchar_t is signed on some machines; what is negative there is no character.
std::uint32_t codePointOf(wchar_t character) { return static_cast<std::make_unsigned_t<wchar_t>>(character); }

char16_t* appendCodePoint(std::uint32_t codePoint, char16_t* out) {
  if (codePoint > 0xFFFF) {
    codePoint -= 0x10000;
    *out++ = static_cast<char16_t>(0xD800 + (codePoint >> 10));
    codePoint = 0xDC00 + (codePoint & 0x3FF);
  }
  *out++ = static_cast<char16_t>(codePoint);
  return out;
}

}  // namespace

std::size_t utf8Length(std::u16string_view text) noexcept {
  return sumOfSizes(text.data(), text.data() + text.size(), utf8Size);
}

char* writeUtf8(std::u16string_view text, char* out) {
  const char16_t* in = text.data();
  const char16_t* const end = in + text.size();
  for (;;) {
    copyAscii(in, end, out);
    if (in == end) return out;
    const char16_t* const run = in;
    while (in != end && !isAscii(*in)) ++in;
    out = utf8::utf16to8(run, in, out);
  }
}

std::size_t utf16Length(std::string_view text) noexcept {
  return sumOfSizes(text.data(), text.data() + text.size(), utf16Size);
}

char16_t* writeUtf16(std::string_view text, char16_t* out) {
  const char* in = text.data();
  const char* const end = in + text.size();
  for (;;) {
    copyAscii(in, end, out);
    if (in == end) return out;
    do out = appendCodePoint(utf8::next(in, end), out);
    while (in != end && !isAscii(*in));
  }
}

std::size_t utf16Length(std::wstring_view text) noexcept {
  std::size_t length = text.size();
  for (const wchar_t character : text) {
    const std::uint32_t codePoint = codePointOf(character);
    length += codePoint > 0xFFFF;
  }
  return length;
}

char16_t* writeUtf16(std::wstring_view text, char16_t* out) {
  for (const wchar_t character : text) {
    const std::uint32_t codePoint = codePointOf(character);
    if (codePoint > 0x10FFFF) throw utf8::invalid_code_point(codePoint);
    out = appendCodePoint(codePoint, out);
  }
  return out;
}

wchar_t* writeWide(std::u16string_view text, wchar_t* out) noexcept {
  for (std::size_t i = 0; i < text.size(); ++i) {
    std::uint32_t character = text[i];
    if constexpr (sizeof(wchar_t) > sizeof(char16_t)) {
      if (isLeadSurrogate(text[i]) && i + 1 < text.size() && isTrailSurrogate(text[i + 1])) {
        character = 0x10000 + ((character & 0x3FF) << 10) + (text[++i] & 0x3FFu);
      }
    }
    *out++ = static_cast<wchar_t>(character);
  }
  return out;
}

}  // namespace tessel
