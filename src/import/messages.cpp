#include "import/messages.h"

#include <string>
#include <utility>

namespace tessel {
namespace {

void reportError(const ImportContext& run, const ElementContext& field, const OdString& text, std::int64_t offset) {
  if (field.report && run.messageHandler) run.messageHandler(ImportSeverity::Error, text, offset);
}

OdString quoted(const OdString& text) { return u"'" + text + u"'"; }

/// Throws for a name that is no text, before there is a stream whose destructor would.
std::wstring nameOf(const pugi::xml_node& node) { return OdString(node.name()).toWide(); }

}  // namespace

MessageHandlerStream::MessageHandlerStream(ProjectDb::ImportOptions::MessageHandler messageHandler,
                                           std::int64_t messageOffset)
    : handler(std::move(messageHandler)), offset(messageOffset) {}

MessageHandlerStream::~MessageHandlerStream() { handler(severity, OdString::fromWide(str()), offset); }

void reportMissing(const ImportContext& run, const ElementContext& field) {
  reportError(run, field, u"Missing " + quoted(field.path.text()) + u" property", field.offset);
}

void reportInvalidWord(const ImportContext& run, const ElementContext& field, const pugi::xml_node& element) {
  reportError(run, field,
              u"Invalid " + quoted(field.path.text()) + u" property value: " + OdString(element.text().get()),
              element.offset_debug());
}

void reportNil(const ImportContext& run, const ElementContext& field, const pugi::xml_node& element) {
  reportError(run, field, u"Property " + quoted(field.path.text()) + u" can not be nil", element.offset_debug());
}

void reportEmpty(const ImportContext& run, const ElementContext& field, const pugi::xml_node& element) {
  reportError(run, field, u"Property " + quoted(field.path.text()) + u" can not be empty", element.offset_debug());
}

void reportUnresolved(const ImportContext& run, const ElementContext& field, const pugi::xml_node& element,
                      const OdString& search) {
  reportError(run, field, u"Could not find referenced object " + quoted(field.path.text()) + u" with " + search,
              element.offset_debug());
}

void reportException(const ImportContext& run, const pugi::xml_node& element, const OdString& text) {
  if (run.messageHandler) run.messageHandler(ImportSeverity::Error, text, element.offset_debug());
}

void warnOfUnknownObject(const ImportContext& run, const pugi::xml_node& element) {
  const std::wstring name = nameOf(element);
  MessageHandlerStream(run.messageHandler, element.offset_debug()) << L"Unknown object type '" << name << L"'";
}

void warnOfUnknownProperty(const ImportContext& run, const ElementContext& object, const pugi::xml_node& child) {
  const std::wstring name = nameOf(child);
  MessageHandlerStream(run.messageHandler, child.offset_debug())
    << L"Unknown property '" << name << L"' for '" << object.path.text().toWide() << L"'";
}

}  // namespace tessel
