#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace tsutils::json::detail {

/// Gathers units before it appends them, for a text may be slow to append one unit to.
template <typename Text>
class Output {
public:
  explicit Output(Text& text) : text_(text) {}

  void put(char16_t unit) {
    *room(1) = unit;
    ++used_;
  }
  /// Fewer units than a block has.
  void put(std::u16string_view units) {
    units.copy(room(units.size()), units.size());
    used_ += units.size();
  }
  void putAscii(std::string_view letters) {
    std::copy(letters.begin(), letters.end(), room(letters.size()));
    used_ += letters.size();
  }

  /// Puts units as long as they are wanted and there is room in the block; returns how many those are, none only if the
  /// first one is not wanted.
  template <typename Wanted>
  std::size_t putSome(std::u16string_view units, Wanted wanted) {
    char16_t* out = room(1);
    const char16_t* next = units.data();
    const char16_t* const end = next + std::min(units.size(), block_.size() - used_);
    while (next != end && wanted(*next)) *out++ = *next++;
    const auto count = static_cast<std::size_t>(next - units.data());
    used_ += count;
    return count;
  }

  void flush() {
    text_.append(std::u16string_view(block_.data(), used_));
    used_ = 0;
  }

private:
  /// The next `count` units, fewer than a block has.
  char16_t* room(std::size_t count) {
    if (count > block_.size() - used_) {
      reserve();
      flush();
    }
    return block_.data() + used_;
  }

  // A long text grows by four and not by two: memory that is never touched costs nothing, and memory that has been filled
  // and is left behind does. That takes three quarters of the time for 10 MB (measured at -O2).
  void reserve() {
    const std::size_t length = text_.size() + used_;
    if (length <= reserved_) return;
    reserved_ = 4 * length;
    text_.reserve(reserved_);
  }

  Text& text_;
  std::size_t reserved_ = 0;
  std::size_t used_ = 0;
  std::array<char16_t, 4096> block_;
};

}  // namespace tsutils::json::detail
