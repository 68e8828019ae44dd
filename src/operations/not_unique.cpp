#include "operations/not_unique.h"

#include <string_view>

#include <tessel/exceptions.h>

#include "database/schema.h"

namespace tessel {
namespace {

constexpr std::string_view uniqueFailurePrefix = "UNIQUE constraint failed:";

/// " tessel_Unit.label" without the prefix of our tables. Where a text has no such prefix, as many characters are dropped
/// as the schema's name is long: the end of what was not found.
std::string_view withoutTablePrefix(std::string_view column) {
  const std::string prefix = schemaName + "_";
  const std::size_t found = column.rfind(prefix);
  const std::size_t behind = found == std::string_view::npos ? schemaName.size() : found + prefix.size();
  return behind < column.size() ? column.substr(behind) : std::string_view();
}

std::string columnsOf(std::string_view message) {
  std::string columns;
  message.remove_prefix(uniqueFailurePrefix.size());
  while (!message.empty()) {
    const std::size_t end = std::min(message.find(','), message.size());
    if (end > 0) {
      if (!columns.empty()) columns += ',';
      columns += withoutTablePrefix(message.substr(0, end));
    }
    message.remove_prefix(std::min(end + 1, message.size()));
  }
  return columns;
}

}  // namespace

bool isUniqueFailure(const std::string& message) {
  return message.compare(0, uniqueFailurePrefix.size(), uniqueFailurePrefix) == 0;
}

void throwNotUnique(const FailureMessage& message) {
  if (!message) throw ObjectNotUnique();
  throw ObjectNotUnique(OdString::fromUtf8(columnsOf(*message)));
}

}  // namespace tessel
