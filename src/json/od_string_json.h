#pragma once

#include <string>

#include <tessel/platform/od_string.h>

#include "json/config_map.h"
#include "json/config_vector.h"
#include "json/parser.h"
#include "json/value.h"
#include "json/writer.h"

// JSON in the texts of this library. All else in this folder works on any text of 16-bit units and does not know OdString.

namespace tsutils::json {

template <>
struct StringTraits<OdString> {
  static std::u16string_view view(const OdString& text) noexcept { return text.view(); }
  [[noreturn]] static void outOfMemory() { throw OdError(eOutOfMemory); }
};

/// For values with a structure.
using wmValue = Value_impl<Config_map<std::u16string>>;
using wmObject = wmValue::Object;

/// For the single values that a text holds as a whole; use `parse` to read one, as it tells faults without an exception.
using OdValue = Value_impl<Config_vector<OdString>>;

/// The first value of the text. Throws tessel::ReadError if there is none or it has a fault, and std::bad_alloc for a
/// string without a closing quote.
wmValue read(const OdString& text);

/// The member of that key. Throws tessel::KeyError if there is none. The text of the error shows the address of the
/// characters in the place of the key.
const wmValue& find(const wmObject& object, const char16_t* key);
wmValue& find(wmObject& object, const char16_t* key);

}  // namespace tsutils::json
