#include "import_messages.h"

#include <iostream>

#include "failures.h"
#include "json_output.h"
#include "text.h"

namespace tessel::tool {
namespace {

void printText(const Document& document, const char* severity, const OdString& text, std::int64_t offset) {
  std::cerr << printable(placeOf(document.path(), document.position(offset))) << ": " << severity << ": "
            << printable(text) << "\n";
}

void printJson(const Document& document, const char* severity, const OdString& text, std::int64_t offset) {
  const Position position = document.position(offset);
  JsonObject out;
  out.text("severity", severity).text("text", text.toUtf8()).number("offset", offset);
  out.number("line", static_cast<long long>(position.line)).number("column", static_cast<long long>(position.column));
  std::cout << out.text("document", document.path()).str() << "\n";
}

}  // namespace

MessageForm parseMessageForm(const std::string& word) {
  if (word == "text") return MessageForm::Text;
  if (word == "json") return MessageForm::Json;
  throw UsageError("messages come as 'text' or as 'json', not as '" + printable(word) + "'");
}

void ImportMessages::report(const Document& document, ImportSeverity severity, const OdString& text,
                            std::int64_t offset) {
  const bool isError = severity == ImportSeverity::Error;
  ++(isError ? errors_ : warnings_);
  const auto print = form_ == MessageForm::Text ? printText : printJson;
  print(document, isError ? "error" : "warning", text, offset);
}

}  // namespace tessel::tool
