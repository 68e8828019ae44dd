#include <algorithm>
#include <cstddef>
#include <iostream>
#include <list>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <tessel/project_db.h>
#include <tessel/project_db_import.h>

#include "arguments.h"
#include "command.h"
#include "document.h"
#include "failures.h"
#include "file_kind.h"
#include "import_messages.h"
#include "interruption.h"
#include "object_types.h"
#include "progress.h"
#include "project_file.h"
#include "text.h"

namespace tessel::tool {
namespace {

using Documents = std::list<Document>;

struct Request {
  explicit Request(const Words& words) {
    const Arguments arguments(words, {{"--update"}, {"--types", true}, {"--messages", true}, {"--force"}});
    if (arguments.operands().size() < 2) throw UsageError("a project file and at least one document are needed");
    file = arguments.operands().front();
    documents.assign(arguments.operands().begin() + 1, arguments.operands().end());
    update = arguments.has("--update");
    types = parseObjectTypes(arguments.value("--types").value_or(objectTypeNames()));
    form = parseMessageForm(arguments.value("--messages").value_or("text"));
    force = arguments.has("--force");
  }

  std::string file;
  std::vector<std::string> documents;
  bool update;
  std::set<ObjectType> types;
  MessageForm form;
  bool force;
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

/// Whether the library knows the element: an object, the default of a measure, or notes for other programs.
bool isImportElement(const pugi::xml_node& element) {
  static const std::set<std::string> names = [] {
    std::set<std::string> all = {"default_unit", "meta"};
    for (const ObjectType type : allObjectTypes()) {
      all.emplace(objectTypeName(type));
    }
    return all;
  }();
  return names.count(pugi::as_utf8(element.name())) > 0;
}

pugi::xml_node firstElement(const Document& document) {
  return document.root().find_child([](const pugi::xml_node& node) { return node.type() == pugi::node_element; });
}

/// A document without any element is a project without content, whatever its root is called.
bool isOther(const Document& document) {
  const auto children = document.root().children();
  return firstElement(document) && !isImportElement(document.root()) &&
         std::none_of(children.begin(), children.end(), isImportElement);
}

void reportOther(const Document& document, ImportMessages& messages) {
  const pugi::xml_node first = firstElement(document);
  const std::string name = pugi::as_utf8(first.name());
  messages.reportError(document, "holds no element of an import document, but '" + name + "'", first.offset_debug());
}

/// Others, such as a page of the web, are most likely not what was meant; they are reported and taken out.
void takeOutOthers(Documents& documents, ImportMessages& messages, Progress& progress) {
  documents.remove_if([&](const Document& document) {
    if (!isOther(document)) return false;
    progress.clear();
    reportOther(document, messages);
    return true;
  });
}

/// With --update a removal is final at once, and so is what stood in front of it: what is left of a document that was
/// not imported.
std::string exceptRemovals(const Request& request) {
  return request.update ? ", but for what was removed and what stood in front of it" : "";
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
    Interruption::check();
    const std::size_t percent = total < worthTelling ? 0 : done * 100 / total;
    if (percent != std::exchange(shown, percent)) progress.show(progressLine, " " + std::to_string(percent) + " %");
  };
  progress.show(progressLine);
  try {
    db.importFromXml(document.root(), request.types, options);
  } catch (const Interrupted&) {
    throw;
  } catch (...) {
    throw Failure("tessel: " + document.path() + ": nothing of this document was imported" + exceptRemovals(request) +
                  ": " + whyWorkFailed(request.file));
  }
}

/// Returns how many have been imported, which are all unless the program was interrupted.
std::size_t importAll(ProjectDb& db, const Documents& documents, const Request& request, ImportMessages& messages,
                      Progress& progress) {
  std::size_t done = 0;
  try {
    for (const Document& document : documents) {
      const std::string line = "importing " + std::to_string(done + 1) + " of " + std::to_string(documents.size()) +
                               ": " + printable(document.path());
      importDocument(db, document, request, messages, progress, line);
      ++done;
    }
  } catch (const Interrupted&) {
    // The library has taken back what it did of this document.
  }
  progress.clear();
  return done;
}

void summarize(const Request& request, std::size_t documents, const ImportMessages& messages) {
  std::cerr << printable(request.file) << ": " << counted(documents, "document", "documents") << " imported, "
            << counted(messages.errors(), "error", "errors") << ", "
            << counted(messages.warnings(), "warning", "warnings") << "\n";
}

ExitStatus reportInterruption(const Request& request, std::size_t done, std::size_t total) {
  std::string imported = "nothing was imported";
  if (done > 0) {
    imported = "only " + std::to_string(done) + " of " + std::to_string(total) + " documents " +
               (done == 1 ? "was imported" : "were imported");
  }
  std::cerr << "tessel: " << printable(request.file) << ": interrupted; " << imported << exceptRemovals(request)
            << "\n";
  return ExitStatus::Interrupted;
}

/// The messages do not tell whether an object was lost because of its values or because of the file.
ExitStatus reportLoss(const Request& request, unsigned long long lost) {
  std::cerr << "tessel: " << printable(request.file) << ": this file cannot be written now, which may have cost "
            << counted(lost, "object", "objects") << "\n";
  return ExitStatus::Unusable;
}

ExitStatus importInto(const std::shared_ptr<ProjectDb>& db, const Documents& documents, const Request& request,
                      ImportMessages& messages, Progress& progress) {
  const std::size_t done = importAll(*db, documents, request, messages, progress);
  if (done < documents.size()) return reportInterruption(request, done, documents.size());
  summarize(request, done, messages);
  if (messages.fileFailures() > 0 && !canBeWritten(db)) return reportLoss(request, messages.fileFailures());
  return messages.errors() == 0 ? ExitStatus::Done : ExitStatus::DoneWithErrors;
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
  Documents documents = readDocuments(request, progress);
  takeOutOthers(documents, messages, progress);
  if (documents.empty()) {
    summarize(request, 0, messages);
    return ExitStatus::DoneWithErrors;
  }
  const Interruption interruption;  // From here on there is something that could be left half done.
  const auto db = createForWriting(request.file, request.force, "imported");
  return importInto(db, documents, request, messages, progress);
}

}  // namespace

const Command importCommand = {
  "import",
  "[--update] [--types LIST] [--messages text|json] [--force]\n"
  "                     FILE DOCUMENT...",
  "fill a project file from XML documents",
  R"(
Reads each DOCUMENT into the project file FILE, which is made if it is missing.
The DOCUMENT "-" is standard input. What is wrong in a document is told, and the
rest of it is imported; if one of the documents cannot be read at all, nothing
is. An interrupted import leaves nothing of the document that it was at.

  --update           an "id" in a document names the object of the file that is
                     to be updated or removed, and not just a place to refer to
  --types LIST       import these kinds only, for example "site,building";
                     named as the elements of documents are
  --messages text    one line on standard error for each message:
                     DOCUMENT:LINE:COLUMN: error: TEXT (or "warning:")
  --messages json    one JSON object on a line on standard output instead, with
                     "severity", "text", "offset" (in characters), "line",
                     "column" and "document"; line 0 if the place is not known
  --force            put the project into an SQLite database of another program
)",
  run,
};

}  // namespace tessel::tool
