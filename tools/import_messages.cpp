#include "import_messages.h"

#include <iostream>

#include "failures.h"
#include "json_output.h"
#include "terminal.h"
#include "text.h"

namespace tessel::tool {
namespace {

const char* wordOf(ImportSeverity severity) { return severity == ImportSeverity::Error ? "error" : "warning"; }

void printJson(const Document& document, ImportSeverity severity, const OdString& text, std::int64_t offset) {
  const Position position = document.position(offset);
  JsonObject out;
  out.text("severity", wordOf(severity)).text("text", text.toUtf8()).number("offset", offset);
  out.number("line", static_cast<long long>(position.line)).number("column", static_cast<long long>(position.column));
  std::cout << out.text("document", document.path()).str() << "\n";
}

}  // namespace

MessageForm parseMessageForm(const std::string& word) {
  if (word == "text") return MessageForm::Text;
  if (word == "json") return MessageForm::Json;
  throw UsageError("messages come as 'text' or as 'json', not as '" + printable(word) + "'");
}

void printMessage(const std::string& place, ImportSeverity severity, const std::string& text) {
  const Style style = severity == ImportSeverity::Error ? Style::Error : Style::Warning;
  const std::string word = styled(Stream::Err, style, std::string(wordOf(severity)) + ":");
  std::cerr << printable(place) << ": " << word << " " << printable(text) << "\n";
}

void ImportMessages::report(const Document& document, ImportSeverity severity, const OdString& text,
                            std::int64_t offset) {
  ++(severity == ImportSeverity::Error ? errors_ : warnings_);
  if (isFileFailure(text.toUtf8())) ++fileFailures_;
  if (form_ == MessageForm::Json) return printJson(document, severity, text, offset);
  printMessage(placeOf(document.path(), document.position(offset)), severity, text.toUtf8());
}

void ImportMessages::reportError(const Document& document, const std::string& text, std::int64_t offset) {
  report(document, ImportSeverity::Error, OdString::fromUtf8(text), offset);
}

}  // namespace tessel::tool
