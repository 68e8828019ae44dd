#include "file_kind.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace tessel::tool {
namespace {

constexpr std::string_view databaseMark("SQLite format 3\0", 16);
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool startsWith(std::string_view text, std::string_view start) { return text.substr(0, start.size()) == start; }

std::string beginningOf(const std::string& path) {
  // A pipe could be read once only, and a device for ever.
  std::error_code unknown;
  if (!std::filesystem::is_regular_file(path, unknown)) return {};
  std::array<char, 256> block{};
  std::ifstream file(path, std::ios::binary);
  file.read(block.data(), block.size());
  return std::string(block.data(), static_cast<std::size_t>(file.gcount()));
}

}  // namespace

bool isDatabase(std::string_view bytes) { return startsWith(bytes, databaseMark); }

bool isDatabaseFile(const std::string& path) { return isDatabase(beginningOf(path)); }

bool looksLikeXml(const std::string& path) {
  const std::string beginning = beginningOf(path);
  std::string_view text = beginning;
  if (startsWith(text, byteOrderMark)) text.remove_prefix(byteOrderMark.size());
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && text[first] == '<';
}

}  // namespace tessel::tool
