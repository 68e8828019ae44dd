#include "document.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cwchar>
#include <memory>

#include "encoding.h"
#include "failures.h"
#include "file_kind.h"

namespace tessel::tool {
namespace {

constexpr wchar_t byteOrderMark = L'\xFEFF';

constexpr const char* standardInput = "-";

struct Close {
  void operator()(std::FILE* file) const noexcept {
    if (file != stdin) std::fclose(file);
  }
};

/// Finds the first node with a character that does not exist, in its text or attributes. The text of the document
/// has none, but a reference such as "&#xD800;" can make one. The parser does not mind, but nothing could be done with it:
/// neither a file nor a message can hold it.
class NoCharacterFinder : public pugi::xml_tree_walker {
public:
  pugi::xml_node found;

private:
  static bool isText(const wchar_t* text) {
    return std::all_of(text, text + std::wcslen(text), [](wchar_t c) { return isCharacter(static_cast<char32_t>(c)); });
  }

  bool for_each(pugi::xml_node& node) override {
    const auto attributes = node.attributes();
    const bool good = isText(node.value()) && std::all_of(attributes.begin(), attributes.end(),
                                                          [](pugi::xml_attribute a) { return isText(a.value()); });
    if (!good) found = node;
    return good;
  }
};

std::string readFile(const std::string& path) {
  const std::unique_ptr<std::FILE, Close> file(path == standardInput ? stdin : std::fopen(path.c_str(), "rb"));
  if (!file) throw Failure("tessel: " + path + ": " + openErrorText(errno));
  std::string bytes;
  std::array<char, 65536> block{};
  while (const std::size_t count = std::fread(block.data(), 1, block.size(), file.get())) {
    bytes.append(block.data(), count);
  }
  if (std::ferror(file.get())) throw Failure("tessel: " + path + ": " + openErrorText(errno));
  return bytes;
}

std::string readDocument(const std::string& path) {
  std::string bytes = readFile(path);
  if (!isDatabase(bytes)) return bytes;
  throw Failure("tessel: " + path +
                ": this is a database and no XML document; 'tessel copy' copies from one to another");
}

std::string whyNoText(const DecodedText& decoded) {
  if (decoded.unknownEncoding.empty()) return "the bytes here are no text in this encoding";
  return "the encoding '" + decoded.unknownEncoding + "' is not known; UTF-8 is";
}

}  // namespace

Document::Document(const std::string& path) : path_(path) {
  DecodedText decoded = decode(readDocument(path));
  text_ = std::move(decoded.text);
  indexLines();
  if (!decoded.complete) fail(static_cast<std::int64_t>(text_.size()), whyNoText(decoded));
  parse();
}

void Document::indexLines() {
  lineStarts_ = {!text_.empty() && text_.front() == byteOrderMark ? std::size_t(1) : std::size_t(0)};
  for (std::size_t i = 0; i < text_.size(); ++i) {
    const bool beforeLf = i + 1 < text_.size() && text_[i + 1] == L'\n';
    if (text_[i] == L'\n' || (text_[i] == L'\r' && !beforeLf)) lineStarts_.push_back(i + 1);
  }
}

void Document::parse() {
  const pugi::xml_parse_result result =
    tree_.load_buffer_inplace(text_.data(), text_.size() * sizeof(wchar_t), pugi::parse_default, pugi::encoding_wchar);
  if (!result) fail(result.offset, result.description());
  NoCharacterFinder finder;
  if (!tree_.traverse(finder)) fail(finder.found.offset_debug(), "a character reference names no character");
}

void Document::fail(std::int64_t offset, const std::string& why) const {
  throw DocumentFailure(placeOf(path_, position(offset)), why);
}

Position Document::position(std::int64_t offset) const {
  if (offset < 0) return {};
  const std::size_t place = std::max(static_cast<std::size_t>(offset), lineStarts_.front());
  const auto next = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), place);
  return {static_cast<std::size_t>(next - lineStarts_.begin()), place - *(next - 1) + 1};
}

std::string placeOf(const std::string& path, const Position& position) {
  if (position.line == 0) return path;
  return path + ":" + std::to_string(position.line) + ":" + std::to_string(position.column);
}

}  // namespace tessel::tool
