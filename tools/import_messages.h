#pragma once

#include <cstdint>
#include <string>

#include <tessel/project_db_import.h>

#include "document.h"

namespace tessel::tool {

enum class MessageForm { Text, Json };

/// Throws UsageError for a word that is neither "text" nor "json".
MessageForm parseMessageForm(const std::string& word);

/// "PLACE: error: TEXT" on standard error.
void printMessage(const std::string& place, ImportSeverity severity, const std::string& text);

/// Prints the messages of imports and counts them: as text on standard error, where editors and compilers' users look
/// for them, as JSON on standard output, one object a line.
class ImportMessages {
public:
  explicit ImportMessages(MessageForm form) : form_(form) {}

  void report(const Document& document, ImportSeverity severity, const OdString& text, std::int64_t offset);

  /// The same for an error that is told in words of ours.
  void reportError(const Document& document, const std::string& text, std::int64_t offset);

  unsigned long long errors() const { return errors_; }
  unsigned long long warnings() const { return warnings_; }

  /// How many of the errors may be failures of the project file.
  unsigned long long fileFailures() const { return fileFailures_; }

private:
  MessageForm form_;
  unsigned long long errors_ = 0;
  unsigned long long warnings_ = 0;
  unsigned long long fileFailures_ = 0;
};

}  // namespace tessel::tool
