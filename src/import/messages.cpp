#include "import/messages.h"

#include <utility>

namespace tessel {
namespace {

void reportError(const ImportContext& run, const ElementContext& field, const OdString& text, std::int64_t offset) {
  if (field.report && run.messageHandler) run.messageHandler(ImportSeverity::Error, text, offset);
}

OdString quoted(const OdString& text) { return u"'" + text + u"'"; }

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
  MessageHandlerStream(run.messageHandler, element.offset_debug())
    << L"Unknown object type '" << element.name() << L"'";
}

void warnOfUnknownProperty(const ImportContext& run, const ElementContext& object, const pugi::xml_node& child) {
  MessageHandlerStream(run.messageHandler, child.offset_debug())
    << L"Unknown property '" << child.name() << L"' for '" << object.path.text().toWide() << L"'";
}

}  // namespace tessel
