#include "json/od_string_json.h"

#include <locale>
#include <sstream>

#include <tessel/import_errors.h>

namespace tsutils::json {
namespace {

// A narrow stream takes characters of 16 bits for a pointer like any other. Nobody can read a key from that, but hosts
// know the text in this form.
[[noreturn]] void throwNoKey(const char16_t* key) {
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << "no key \"" << static_cast<const void*>(key) << "\" in json::wmObject";
  throw tessel::KeyError(text.str());
}

}  // namespace

wmValue read(const OdString& text) {
  wmValue value;
  if (!parse(text.view(), value)) throw tessel::ReadError("fail to read the string into json::wmValue");
  return value;
}

const wmValue& find(const wmObject& object, const char16_t* key) {
  const auto member = object.find(key);
  if (member == object.end()) throwNoKey(key);
  return member->second;
}

wmValue& find(wmObject& object, const char16_t* key) {
  return const_cast<wmValue&>(find(static_cast<const wmObject&>(object), key));
}

}  // namespace tsutils::json
