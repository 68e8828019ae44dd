#include <cstddef>
#include <deque>
#include <iostream>
#include <set>

#include <tessel/project_db.h>
#include <tessel/project_db_import.h>

#include "arguments.h"
#include "command.h"
#include "document.h"
#include "failures.h"
#include "file_kind.h"
#include "import_messages.h"
#include "object_types.h"
#include "progress.h"
#include "project_file.h"
#include "text.h"

namespace tessel::tool {
namespace {

using Documents = std::deque<Document>;

struct Request {
  explicit Request(const Words& words) {
    const Arguments arguments(words, {{"--update"}, {"--types", true}, {"--messages", true}});
    if (arguments.operands().size() < 2) throw UsageError("a project file and at least one document are needed");
    file = arguments.operands().front();
    documents.assign(arguments.operands().begin() + 1, arguments.operands().end());
    update = arguments.has("--update");
    types = parseObjectTypes(arguments.value("--types").value_or(objectTypeNames()));
    form = parseMessageForm(arguments.value("--messages").value_or("text"));
  }

  std::string file;
  std::vector<std::string> documents;
  bool update;
  std::set<ObjectType> types;
  MessageForm form;
};

/// All of them before anything is written: a document that cannot be read then leaves no half of the work behind.
Documents readDocuments(const Request& request, Progress& progress) {
  Documents documents;
  for (const std::string& path : request.documents) {
    progress.show("reading " + printable(path));
    documents.emplace_back(path);
  }
  return documents;
}

void importDocument(ProjectDb& db, const Document& document, const Request& request, ImportMessages& messages,
                    Progress& progress, const std::string& progressLine) {
  ProjectDb::ImportOptions options;
  options.updateExisting = request.update;
  options.messageHandler = [&](ImportSeverity severity, const OdString& text, std::int64_t offset) {
    progress.clear();
    messages.report(document, severity, text, offset);
    progress.show(progressLine);
  };
  // A document of a few objects is done before anybody has read the line.
  constexpr std::size_t worthTelling = 1000;
  std::size_t shown = 0;
  options.progress = [&](std::size_t done, std::size_t total) {
    const std::size_t percent = total < worthTelling ? 0 : done * 100 / total;
    if (percent != std::exchange(shown, percent)) progress.show(progressLine, " " + std::to_string(percent) + " %");
  };
  progress.show(progressLine);
  try {
    db.importFromXml(document.root(), request.types, options);
  } catch (...) {
    throw Failure("tessel: " + document.path() + ": nothing of this document was imported: " + currentErrorText());
  }
}

void importAll(ProjectDb& db, const Documents& documents, const Request& request, ImportMessages& messages,
               Progress& progress) {
  std::size_t number = 0;
  for (const Document& document : documents) {
    const std::string line = "importing " + std::to_string(++number) + " of " + std::to_string(documents.size()) +
                             ": " + printable(document.path());
    importDocument(db, document, request, messages, progress, line);
  }
}

void summarize(const Request& request, const ImportMessages& messages) {
  std::cerr << printable(request.file) << ": " << counted(request.documents.size(), "document", "documents")
            << " imported, " << counted(messages.errors(), "error", "errors") << ", "
            << counted(messages.warnings(), "warning", "warnings") << "\n";
}

/// Otherwise the complaint would be about the project file that stands where a document is wanted.
void refuseDocumentInFront(const Request& request) {
  if (!looksLikeXml(request.file)) return;
  throw Failure("tessel: " + request.file +
                ": this is an XML document; the project file comes in front of the documents");
}

ExitStatus run(const Words& words) {
  const Request request(words);
  refuseDocumentInFront(request);
  ImportMessages messages(request.form);
  Progress progress;
  const Documents documents = readDocuments(request, progress);
  const auto db = createForWriting(request.file);
  importAll(*db, documents, request, messages, progress);
  progress.clear();
  summarize(request, messages);
  return messages.errors() == 0 ? ExitStatus::Done : ExitStatus::DoneWithErrors;
}

}  // namespace

const Command importCommand = {
  "import",
  "[--update] [--types LIST] [--messages text|json] FILE DOCUMENT...",
  "fill a project file from XML documents",
  R"(
Reads each DOCUMENT into the project file FILE, which is made if it is missing.
What is wrong in a document is told, and the rest of it is imported; if one of
the documents cannot be read at all, nothing is.

  --update           an "id" in a document names the object of the file that is
                     to be updated or removed, and not just a place to refer to
  --types LIST       import these classes only, for example "site,building";
                     named as the elements of documents are
  --messages text    one line on standard error for each message:
                     DOCUMENT:LINE:COLUMN: error: TEXT (or "warning:")
  --messages json    one JSON object on a line on standard output instead, with
                     "severity", "text", "offset" (in characters), "line",
                     "column" and "document"; line 0 if the place is not known
)",
  run,
};

}  // namespace tessel::tool
