#pragma once

#include <stdexcept>
#include <string>

#include <tessel/export.h>

/// @file
/// What leaves `ProjectDb::importFromXml` when the JSON in "type_spec2" of an enumeration is not what it has to be:
/// that of the document, or that of the row which it updates. Unlike every other fault of a document these end the run,
/// and nothing of the run stays in the file, unless it joined a transaction of the host; then the host decides. None of
/// them derives from tessel::Exception, so a host that wants to go on catches them by name, or all as
/// std::runtime_error.

namespace tessel {

/// The text is no JSON. Correct "type_spec2" in the document or in the row, and import again.
struct TESSEL_API ReadError : std::runtime_error {
  /// `text` is what what() returns.
  explicit ReadError(const std::string& text);
  ReadError(const ReadError&) = default;
  ReadError& operator=(const ReadError&) = default;
  ~ReadError() override;
};

/// The JSON object lacks a member, such as "type" or "values". The text shows an address in the place of the name.
struct TESSEL_API KeyError : std::runtime_error {
  /// `text` is what what() returns.
  explicit KeyError(const std::string& text);
  KeyError(const KeyError&) = default;
  KeyError& operator=(const KeyError&) = default;
  ~KeyError() override;
};

}  // namespace tessel

/// The JSON values inside the library, of which a host meets nothing but an error.
namespace tsutils::json {

/// A JSON value is of another kind than the one asked for, such as "values" that is no array. The text names both kinds
/// by number: 0 object, 1 array, 2 string, 3 bool, 4 integer, 5 real, 6 null.
struct TESSEL_API ValueError : std::runtime_error {
  /// `text` is what what() returns.
  explicit ValueError(const std::string& text);
  ValueError(const ValueError&) = default;
  ValueError& operator=(const ValueError&) = default;
  ~ValueError() override;
};

}  // namespace tsutils::json
