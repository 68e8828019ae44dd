// Uses what crosses the library's edge: objects and their templates, transactions, a document's nodes, a handler that is
// called back, exceptions of the library and of the persistence layer beneath it.

#if !defined(PUGIXML_WCHAR_MODE)
#error "the package does not tell the compiler that pugixml is in its wide-character mode"
#endif

#include <cstdint>
#include <exception>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

#include <odb/exceptions.hxx>
#include <pugixml.hpp>

#include <tessel/tessel.h>

using namespace tessel;

namespace {

using Db = std::shared_ptr<ProjectDb>;

void require(bool condition, const char* what) {
  if (!condition) throw std::runtime_error(what);
}

void fill(const Db& db) {
  Transaction transaction(db, Transaction::BeginCurrent);
  const auto site = db->save(Site::create(L"Harbour"));
  db->save(Building::create(site, L"Tower"));
  transaction.commit();
}

void importDocument(const Db& db) {
  pugi::xml_document document;
  constexpr const wchar_t* text = L"<project>"
                                  L"<site id='1'><name>Quay</name></site>"
                                  L"<building><name>Shed</name><site id='1'/></building>"
                                  L"<building><name>Crane</name><site id='2'/></building>"
                                  L"</project>";
  require(static_cast<bool>(document.load_string(text)), "the document cannot be read");
  int messages = 0;
  ProjectDb::ImportOptions options;
  options.messageHandler = [&](ImportSeverity severity, const OdString& message, std::int64_t) {
    ++messages;
    require(severity == ImportSeverity::Error, "a missing site is no error");
    require(!message.toUtf8().empty(), "a message has no text");
  };
  db->importFromXml(document.document_element(), options);
  require(messages == 1, "the handler was not told of the missing site once");
}

void checkContent(const Db& db) {
  require(db->count<Site>() == 2 && db->count<Building>() == 2, "not all objects are in the file");
  const auto quay = db->get<Site>(NameKey(L"Quay"));
  require(!quay.isNull() && quay->buildings().size() == 1, "what was imported is not in the file");
}

void catchErrorOfLibrary(const Db& db) {
  try {
    db->save(Site::create(L"Harbour"));
  } catch (const Exception& error) {
    require(dynamic_cast<const ObjectNotUnique*>(&error) != nullptr, "not the exception of a name that is taken");
    return;
  }
  require(false, "a name that is taken was taken twice");
}

void catchErrorOfPersistence(const Db& db) {
  try {
    db->get<Site>(4711);
  } catch (const odb::object_not_persistent&) {
    return;
  }
  require(false, "a row that does not exist was read");
}

void catchErrorOfText() {
  try {
    OdString::fromUtf8("\xff");
  } catch (const std::exception&) {
    return;
  }
  require(false, "bytes that are no text were read");
}

}  // namespace

int main(int argc, char** argv) {
  try {
    require(argc == 2, "usage: host FILE");
    const OdString file = OdString::fromUtf8(argv[1]);
    {
      const Db db = ProjectDb::create(file);
      require(db && db->isNew(), "no project was made");
      fill(db);
      importDocument(db);
    }
    const Db db = ProjectDb::open(file, false);
    require(db && !db->isNew(), "the project cannot be opened again");
    checkContent(db);
    catchErrorOfLibrary(db);
    catchErrorOfPersistence(db);
    catchErrorOfText();
    std::cout << "all well\n";
  } catch (const std::exception& error) {
    std::cerr << "host: " << error.what() << "\n";
    return 1;
  } catch (const Exception& error) {
    std::cerr << "host: " << OdString(error.what()).toUtf8() << "\n";
    return 1;
  }
}
