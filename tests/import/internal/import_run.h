#pragma once

#include <string>

#include "import/import_context.h"
#include "support/message_log.h"
#include "support/samples.h"

namespace tessel::test {

/// The state of a run over a document, with its messages.
class RunOn {
public:
  explicit RunOn(const std::wstring& text, unsigned int parsing = pugi::parse_default)
      : document(text, parsing), run(*project.db, types, {false, messages.handler(), {}}, document.root()) {}

  pugi::xml_node root() { return document.root(); }

  Document document;
  SampleProject project;
  ImportMessages messages;
  const std::set<ObjectType> types;
  ImportContext run;
};

}  // namespace tessel::test
