// Imports a document into a project that has some of its names already. A reactor decides about each clash: what is there
// is kept for sites, overwritten for buildings, and a story gets a new name.

#include <iostream>

#include <tessel/tessel.h>

using namespace tessel;

namespace {

class Decisions : public ProjectDb::Reactor {
public:
  SaveResolution onNameNotUnique(ObjectInfo& info) override {
    const OdString taken = info.name();
    std::cout << "\"" << taken.toUtf8() << "\" is taken: ";
    switch (info.objectType()) {
    case ObjectType::Site:
      std::cout << "keep what is there\n";
      return SaveResolution::Kept;
    case ObjectType::Building:
      std::cout << "overwrite it\n";
      return SaveResolution::Overwritten;
    default:
      break;
    }
    // setName tells whether a candidate is free.
    for (int number = 2; !info.setName(OdString::format(L"%ls (%d)", taken.toWide().c_str(), number)); ++number) {
    }
    std::cout << "call it \"" << info.name().toUtf8() << "\"\n";
    return SaveResolution::Renamed;
  }
};

// The place of a message in the document is left to the host, which has the text.
constexpr char document[] = R"(
<project>
  <site id="1"><name>Harbour</name><town>Oslo</town></site>
  <building id="2"><site id="1"/><name>House</name><number_of_storeys>2</number_of_storeys></building>
  <story><building id="2"/><name>Ground</name><elevation>-0.5</elevation></story>
  <story><building id="7"/><name>Nowhere</name></story>
</project>)";

void import(ProjectDb& db, const pugi::xml_document& parsed) {
  ImportMessages messages;
  ProjectDb::ImportOptions options;
  options.messageHandler = messages.handler();
  db.importFromXml(parsed.document_element(), options);
  for (const ImportMessage& message : messages.all()) std::cout << "error: " << message.text.toUtf8() << "\n";
}

}  // namespace

int main() {
  Decisions decisions;
  const auto db = ProjectDb::create(L"harbour.tessel");
  if (!db) return 1;
  db->setReactor(&decisions);

  const auto site = Site::create(L"Harbour");
  site->set_town(L"Bergen");
  Story::create(Building::create(site, L"House"), L"Ground", 0.0)->save(db);

  pugi::xml_document parsed;
  if (!parsed.load_buffer(document, sizeof document - 1)) return 1;
  import(*db, parsed);

  const auto kept = db->get<Site>(NameKey(L"Harbour"));
  std::cout << "The site is still in " << kept->town().toUtf8() << ".\n";
  for (const auto& building : kept->buildings()) {
    std::cout << building->name().toUtf8() << ", " << building->number_of_storeys() << " storeys:";
    for (const auto& story : building->stories()) std::cout << " \"" << story->name().toUtf8() << "\"";
    std::cout << "\n";
  }
}
