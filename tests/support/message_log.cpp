#include "support/message_log.h"

#include <sstream>
#include <stdexcept>

#include "support/printers.h"

namespace tessel {

bool operator==(const ImportMessage& left, const ImportMessage& right) {
  return left.severity == right.severity && left.text == right.text && left.offset == right.offset;
}

void PrintTo(const ImportMessage& message, std::ostream* out) {
  *out << (message.severity == ImportSeverity::Warning ? "warning" : "error") << " at " << message.offset << ": ";
  PrintTo(message.text, out);
}

}  // namespace tessel

namespace tessel::test {
namespace {

/// Throws if the part is not there, or there twice.
std::int64_t offsetOf(const std::wstring& part, const std::wstring& document) {
  const std::size_t found = document.find(part);
  if (found == std::wstring::npos || document.find(part, found + 1) != std::wstring::npos) {
    throw std::invalid_argument("the place of a message must occur once: " + OdString(part.c_str()).toUtf8());
  }
  return static_cast<std::int64_t>(part.front() == L'<' ? found + 1 : found);
}

class SaysMatcher {
public:
  using is_gtest_matcher = void;

  explicit SaysMatcher(std::vector<ExpectedMessage> expected) : expected_(std::move(expected)) {}

  bool MatchAndExplain(const ImportRun& run, std::ostream* explanation) const {
    const std::vector<ImportMessage> expected = messagesFor(run.document);
    if (run.messages == expected) return true;
    if (explanation) *explanation << "which says " << ::testing::PrintToString(run.messages);
    if (explanation) *explanation << "\nand not " << ::testing::PrintToString(expected);
    return false;
  }

  void DescribeTo(std::ostream* out) const { *out << "says " << expected_.size() << " given messages"; }
  void DescribeNegationTo(std::ostream* out) const { *out << "says something else"; }

private:
  std::vector<ImportMessage> messagesFor(const std::wstring& document) const {
    std::vector<ImportMessage> messages;
    for (const ExpectedMessage& message : expected_) {
      messages.push_back({message.severity, message.text, message.place ? offsetOf(*message.place, document) : -1});
    }
    return messages;
  }

  std::vector<ExpectedMessage> expected_;
};

}  // namespace

Document::Document(const std::wstring& text, unsigned int parsing) : text_(text) {
  const pugi::xml_parse_result result = tree_.load_string(text_.c_str(), parsing);
  if (!result) throw std::invalid_argument(std::string("no document: ") + result.description());
}

std::string Document::written() const {
  std::ostringstream out;
  tree_.save(out, L"", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  return out.str();
}

void PrintTo(const ImportRun& run, std::ostream* out) { PrintTo(OdString(run.document.c_str()), out); }

ImportRun importText(const std::shared_ptr<ProjectDb>& db, const std::wstring& text,
                     const ProjectDb::ImportOptions& options, unsigned int parsing) {
  const Document document(text, parsing);
  ImportMessages log;
  ProjectDb::ImportOptions logged = options;
  logged.messageHandler = [record = log.handler(), &options](ImportSeverity severity, const OdString& message,
                                                             std::int64_t offset) {
    record(severity, message, offset);
    if (options.messageHandler) options.messageHandler(severity, message, offset);
  };
  db->importFromXml(document.root(), logged);
  return {text, log.all()};
}

ExpectedMessage error(const OdString& text, const std::wstring& place) { return {ImportSeverity::Error, text, place}; }
ExpectedMessage errorNowhere(const OdString& text) { return {ImportSeverity::Error, text, {}}; }
ExpectedMessage warning(const OdString& text, const std::wstring& place) {
  return {ImportSeverity::Warning, text, place};
}
ExpectedMessage warningNowhere(const OdString& text) { return {ImportSeverity::Warning, text, {}}; }

::testing::Matcher<const ImportRun&> Says(const std::vector<ExpectedMessage>& expected) {
  return SaysMatcher(expected);
}

::testing::Matcher<const ImportRun&> SaysNothing() { return Says({}); }

std::vector<OdString> textsOf(const std::vector<ImportMessage>& messages) {
  std::vector<OdString> texts;
  for (const ImportMessage& message : messages) texts.push_back(message.text);
  return texts;
}

}  // namespace tessel::test
