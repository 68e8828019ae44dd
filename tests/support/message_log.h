#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <pugixml.hpp>

#include <tessel/project_db_import.h>

namespace tessel {

bool operator==(const ImportMessage& left, const ImportMessage& right);
void PrintTo(const ImportMessage& message, std::ostream* out);

}  // namespace tessel

namespace tessel::test {

/// A document as text and as tree.
class Document {
public:
  /// Throws std::invalid_argument if the text is not well-formed.
  explicit Document(const std::wstring& text, unsigned int parsing = pugi::parse_default);

  const std::wstring& text() const { return text_; }
  pugi::xml_node root() const { return tree_.document_element(); }
  pugi::xml_document& tree() { return tree_; }

  /// The tree as it now is, written out.
  std::string written() const;

private:
  std::wstring text_;
  pugi::xml_document tree_;
};

/// What an import of a text said.
struct ImportRun {
  std::wstring document;
  std::vector<ImportMessage> messages;
};

void PrintTo(const ImportRun& run, std::ostream* out);

/// Parses the text and imports its root element. A handler of the options hears the messages after the log.
ImportRun importText(const std::shared_ptr<ProjectDb>& db, const std::wstring& text,
                     const ProjectDb::ImportOptions& options = {}, unsigned int parsing = pugi::parse_default);

/// A message that a run should give. Its place is told by what stands there in the document and must occur only once;
/// that of an element is its name, behind a bracket. Without a place the offset is -1.
struct ExpectedMessage {
  ImportSeverity severity;
  OdString text;
  std::optional<std::wstring> place;
};

ExpectedMessage error(const OdString& text, const std::wstring& place);
ExpectedMessage errorNowhere(const OdString& text);
ExpectedMessage warning(const OdString& text, const std::wstring& place);
ExpectedMessage warningNowhere(const OdString& text);

/// All messages of the run, in their order:
///
///   EXPECT_THAT(importText(db, L"<p><bridge/></p>"), Says({warning(L"Unknown object type 'bridge'", L"<bridge")}));
::testing::Matcher<const ImportRun&> Says(const std::vector<ExpectedMessage>& expected);
::testing::Matcher<const ImportRun&> SaysNothing();

/// The bare texts of the messages.
std::vector<OdString> textsOf(const std::vector<ImportMessage>& messages);

}  // namespace tessel::test
