#pragma once

#include <sstream>

#include "import/element_context.h"
#include "import/import_context.h"

namespace tessel {

/// Collects the text of a warning by insertion and delivers it when it is destroyed. It does not test the handler: a host
/// that passes none ends its process with the first warning.
struct MessageHandlerStream : std::basic_stringstream<wchar_t> {
  MessageHandlerStream(ProjectDb::ImportOptions::MessageHandler messageHandler, std::int64_t messageOffset);
  ~MessageHandlerStream() override;

  const ImportSeverity severity = ImportSeverity::Warning;
  const ProjectDb::ImportOptions::MessageHandler handler;
  const std::int64_t offset;
};

// Each function makes one message. Errors are dropped without a handler, and those of a field where its context reports
// nothing. Unlike the others, warnings go through the stream.

void reportMissing(const ImportContext& run, const ElementContext& field);
void reportInvalidWord(const ImportContext& run, const ElementContext& field, const pugi::xml_node& element);
void reportNil(const ImportContext& run, const ElementContext& field, const pugi::xml_node& element);
void reportEmpty(const ImportContext& run, const ElementContext& field, const pugi::xml_node& element);
void reportUnresolved(const ImportContext& run, const ElementContext& field, const pugi::xml_node& element,
                      const OdString& search);

/// An exception that ended the reading or saving of an element.
void reportException(const ImportContext& run, const pugi::xml_node& element, const OdString& text);

void warnOfUnknownObject(const ImportContext& run, const pugi::xml_node& element);
void warnOfUnknownProperty(const ImportContext& run, const ElementContext& object, const pugi::xml_node& child);

}  // namespace tessel
