#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <pugixml.hpp>

namespace tessel::tool {

/// A place in a document as editors count it: lines and columns from 1, columns in code points; a byte order mark is no
/// column. LF, CR LF and CR end a line.
struct Position {
  std::size_t line = 0;  ///< 0 if the place is not known.
  std::size_t column = 0;
};

/// A parsed document that knows where its nodes stand. Comments are not in the tree.
class Document {
public:
  /// Reads the file, or standard input for "-". Throws Failure if that cannot be done, or if it is not well-formed.
  explicit Document(const std::string& path);

  // The tree points into the text.
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  const std::string& path() const { return path_; }
  pugi::xml_node root() const { return tree_.document_element(); }

  /// The place of an offset as `xml_node::offset_debug` gives it.
  Position position(std::int64_t offset) const;

private:
  void indexLines();
  void parse();
  [[noreturn]] void fail(std::int64_t offset, const std::string& why) const;

  std::string path_;
  std::wstring text_;  // Parsed in place, so offsets count its characters.
  std::vector<std::size_t> lineStarts_;
  pugi::xml_document tree_;
};

/// "PATH:LINE:COLUMN", the form in which editors look for a place; the path alone if the place is not known.
std::string placeOf(const std::string& path, const Position& position);

}  // namespace tessel::tool
