#include "json/kind.h"

#include <string>

#include <tessel/import_errors.h>

namespace tsutils::json::detail {
namespace {

std::string number(Kind kind) { return std::to_string(static_cast<std::int32_t>(kind)); }

}  // namespace

void throwWrongKind(Kind actual, Kind asked) {
  throw ValueError("value type is " + number(actual) + " not " + number(asked));
}

}  // namespace tsutils::json::detail
