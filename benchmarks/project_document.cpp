#include "project_document.h"

#include <cmath>
#include <sstream>
#include <stdexcept>
#include <string>

#include "catalogue_texts.h"

namespace tessel::benchmarks {
namespace {

void writeCatalogue(std::ostream& out, const ProjectSize& size) {
  out << R"(<unit><name>metre</name><label>m</label><scale>1</scale><measure name="LENGTH"/></unit>)"
      << "<entitytype><name>Wall</name></entitytype>"
      << "<propertynamespace><name>Common</name><label>Common properties</label></propertynamespace>\n";
  for (const auto& set : setTexts<std::string>(size.sets, ProjectSize::definitionsOfEach)) {
    out << R"(<propertyset><namespace name="Common"/><name>)" << set.name << "</name><label>" << set.label
        << "</label>\n";
    for (const std::string& definition : set.definitions) {
      out << "<property_definition><name>" << definition << R"(</name><unit name="metre"/><ifc_name>)" << definition
          << "</ifc_name><type>Double</type></property_definition>\n";
    }
    out << R"(<entity_type name="Wall"/></propertyset>)"
        << "\n";
  }
}

void writeBuildings(std::ostream& out, const ProjectSize& size) {
  out << R"(<site id="1"><name>Harbour</name></site>)"
      << "\n";
  for (int i = 1; i <= size.buildings; ++i) {
    out << R"(<building id=")" << i << R"("><site id="1"/><name>)" << numbered("Building", i) << "</name></building>\n";
  }
  for (int i = 1; i <= size.stories; ++i) {
    out << R"(<story><building id=")" << 1 + i % size.buildings << R"("/><name>)" << numbered("Story", i)
        << "</name><elevation>" << 3 * i << "</elevation></story>\n";
  }
}

}  // namespace

ProjectSize ProjectSize::scaledTo(int objectCount) const {
  const double factor = static_cast<double>(objectCount) / objects();
  const auto scaled = [factor](int count) { return static_cast<int>(std::lround(count * factor)); };
  return {scaled(sets), scaled(buildings), scaled(stories)};
}

pugi::xml_document projectDocument(const ProjectSize& size) {
  std::ostringstream out;
  out << "<project>\n";
  writeCatalogue(out, size);
  writeBuildings(out, size);
  out << "</project>\n";
  const std::string text = out.str();
  pugi::xml_document document;
  if (!document.load_buffer(text.data(), text.size())) throw std::runtime_error("the document is not well-formed");
  return document;
}

}  // namespace tessel::benchmarks
