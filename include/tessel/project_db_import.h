#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <type_traits>
#include <vector>

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

  /// Always install one, such as an ImportMessages: without a handler errors are dropped in silence, and the first warning
  /// ends the process.
  MessageHandler messageHandler;

  /// Told before each child of the node, and once more at the end, how many of how many children are done. It is not told
  /// anything of a node that is itself an object. It is called as the message handler is.
  using Progress = std::function<void(std::size_t done, std::size_t total)>;
  /// May be empty.
  Progress progress;
};

/// A message that a run has sent to its handler.
struct ImportMessage {
  ImportSeverity severity;  ///< What it costs.
  OdString text;            ///< The complete message.
  std::int64_t offset;      ///< Its place in the parsed buffer, in characters; -1 where there is none.
};

/// Collects the messages of a run, to be read when it is over:
///
///     ImportMessages messages;
///     options.messageHandler = messages.handler();
///     db->importFromXml(document.document_element(), options);
///     if (messages.errors() > 0) show(messages.all());
///
/// It must live as long as a handler that it has handed out is used. For one thread at a time.
class TESSEL_API ImportMessages {
public:
  ImportMessages() = default;
  ImportMessages(const ImportMessages&) = delete;
  ImportMessages& operator=(const ImportMessages&) = delete;

  /// Adds each message to this collection.
  ProjectDb::ImportOptions::MessageHandler handler();

  /// In the order in which they came.
  const std::vector<ImportMessage>& all() const { return messages_; }

  /// How many there are of this severity.
  ///@{
  std::size_t warnings() const { return count(ImportSeverity::Warning); }
  std::size_t errors() const { return count(ImportSeverity::Error); }
  ///@}

private:
  std::size_t count(ImportSeverity severity) const;

  std::vector<ImportMessage> messages_;
};

}  // namespace tessel
