#pragma once

#include <cstdint>
#include <functional>
#include <type_traits>

#include <pugixml.hpp>

#include <tessel/export.h>
#include <tessel/platform/od_string.h>
#include <tessel/project_db.h>

namespace tessel {

// A tree of narrow characters would be taken for an empty one, without a message.
static_assert(std::is_same_v<pugi::char_t, wchar_t>, "tessel needs pugixml in its wide-character mode");

/// How much of the document a message costs.
enum class ImportSeverity : std::int32_t {
  Warning = 2,  ///< Something was ignored, and reading goes on.
  Error = 3,    ///< One object was dropped, and the next one is read.
};

/// What `ProjectDb::importFromXml` is told.
///
///     pugi::xml_document document;
///     document.load_file("house.xml");
///     ProjectDb::ImportOptions options;
///     options.messageHandler = [](ImportSeverity, const OdString& text, std::int64_t) { print(text); };
///     db->importFromXml(document.document_element(), options);
///
/// The run goes once through the children of the node, in their order, and saves each object as soon as it is read, so
/// a thing stands before what refers to it. Faults of single objects go to the handler; what could be read is committed.
/// An exception that leaves the call rolls everything back, unless the run joined a transaction of the host.
///
/// The tree is written to during the run: elements that have been read carry a mark, which is taken away again.
struct ProjectDb::ImportOptions {
  /// Receives each message: its severity, its text, and its place as `xml_node::offset_debug` gives it, in characters
  /// of the parsed buffer, or -1 where there is none. Called on the same thread, inside the transaction of the run.
  using MessageHandler = std::function<void(ImportSeverity, const OdString&, std::int64_t)>;

  /// Whether the "id" of an object names a row of the file that is to be updated, or removed. Otherwise it is but a
  /// label within the document.
  bool updateExisting = false;

  /// Always install one: without a handler errors are dropped in silence, and the first warning ends the process.
  MessageHandler messageHandler;
};

}  // namespace tessel
