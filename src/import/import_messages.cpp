#include <tessel/project_db_import.h>

#include <algorithm>

namespace tessel {

ProjectDb::ImportOptions::MessageHandler ImportMessages::handler() {
  return [this](ImportSeverity severity, const OdString& text, std::int64_t offset) {
    messages_.push_back({severity, text, offset});
  };
}

std::size_t ImportMessages::count(ImportSeverity severity) const {
  const auto isOfSeverity = [severity](const ImportMessage& message) { return message.severity == severity; };
  return static_cast<std::size_t>(std::count_if(messages_.begin(), messages_.end(), isOfSeverity));
}

}  // namespace tessel
