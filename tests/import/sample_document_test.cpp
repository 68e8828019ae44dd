#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <tessel/project_db_import.h>
#include <tessel/project_db_reactor.h>

#include "catalogue/ifc_types.h"
#include "support/message_log.h"
#include "support/raw_file.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

using Lines = std::vector<std::string>;

std::string utf8(const wchar_t* text) { return OdString(text).toUtf8(); }
std::string textOf(const pugi::xml_node& element, const wchar_t* key) { return utf8(element.child(key).text().get()); }
std::string numberOf(const pugi::xml_node& element, const wchar_t* key, const char* otherwise) {
  const pugi::xml_node child = element.child(key);
  return child ? std::to_string(child.text().as_double()) : std::string(otherwise);
}

Lines linesOf(RawFile& file, const std::string& sql) {
  Lines lines;
  for (const RawFile::Row& row : file.rows(sql)) {
    std::string line;
    for (const std::string& value : row) line += (line.empty() ? "" : "|") + value;
    lines.push_back(line);
  }
  return lines;
}

/// The sample catalogue, imported once into a new file. What the file must hold is told from the document by the code of
/// this test alone, and read from the file by plain SQLite.
class SampleDocument : public ::testing::Test {
protected:
  SampleDocument() {
    tree_.load_file(TESSEL_EXAMPLES "/ifc-common-elements.xml");
    import();
  }

  ImportMessages& import() {
    const auto db = ProjectDb::create(OdString::fromUtf8(path_));
    ProjectDb::ImportOptions options;
    options.messageHandler = messages_.handler();
    db->importFromXml(root(), options);
    return messages_;
  }

  pugi::xml_node root() const { return tree_.document_element(); }

  TempFolder folder_;
  std::string path_ = folder_.path("sample.tessel");
  pugi::xml_document tree_;
  ImportMessages messages_;
};

TEST_F(SampleDocument, GivesNoMessage) { EXPECT_THAT(messages_.all(), ::testing::IsEmpty()); }

TEST_F(SampleDocument, LeavesASoundFile) {
  RawFile file(path_);
  EXPECT_EQ("ok", file.scalarText("PRAGMA integrity_check"));
  EXPECT_THAT(file.rows("PRAGMA foreign_key_check"), ::testing::IsEmpty());
}

// A new file has four measures already; those of the document that have their names give way to them.
TEST_F(SampleDocument, MeasuresAreAllInTheFile) {
  Lines expected = {"AREA|2.0|0.0|0.0|0.0|0.0", "LENGTH|1.0|0.0|0.0|0.0|0.0", "MASS|0.0|1.0|0.0|0.0|0.0",
                    "VOLUME|3.0|0.0|0.0|0.0|0.0"};
  const auto exponent = [](const pugi::xml_node& measure, const wchar_t* key) {
    return "|" + std::to_string(measure.child(key).text().as_int()) + ".0";
  };
  for (const pugi::xml_node& measure : root().children(L"measure")) {
    const std::string name = textOf(measure, L"name");
    if (name == "AREA" || name == "LENGTH" || name == "MASS" || name == "VOLUME") continue;
    expected.push_back(name + exponent(measure, L"length") + exponent(measure, L"mass") + exponent(measure, L"time") +
                       exponent(measure, L"thermodynamic_temperature") + exponent(measure, L"luminous_intensity"));
  }
  RawFile file(path_);
  EXPECT_THAT(linesOf(file, "SELECT name, length + 0.0, mass + 0.0, time + 0.0, thermodynamic_temperature + 0.0, "
                            "luminous_intensity + 0.0 FROM tessel_Measure"),
              ::testing::UnorderedElementsAreArray(expected));
}

TEST_F(SampleDocument, UnitsAndTheirDefaultsAreAllInTheFile) {
  std::map<std::string, std::string> measureNames;
  for (const pugi::xml_node& measure : root().children(L"measure")) {
    measureNames[utf8(measure.attribute(L"id").value())] = textOf(measure, L"name");
  }
  // A unit that is told a second time is the same unit.
  std::set<std::string> expected;
  for (const pugi::xml_node& unit : root().children(L"unit")) {
    const pugi::xml_node measure = unit.child(L"measure");
    const pugi::xml_attribute name = measure.attribute(L"name");
    const std::string measureName = name ? utf8(name.value()) : measureNames[utf8(measure.attribute(L"id").value())];
    expected.insert(textOf(unit, L"name") + "|" + textOf(unit, L"label") + "|" + numberOf(unit, L"scale", "1.000000") +
                    "|" + measureName);
  }
  RawFile file(path_);
  EXPECT_THAT(linesOf(file, "SELECT u.name, u.label, printf('%f', u.scale), m.name FROM tessel_Unit u "
                            "JOIN tessel_Measure m ON m.id = u.measure_id"),
              ::testing::UnorderedElementsAreArray(expected));
  EXPECT_THAT(linesOf(file, "SELECT m.name, u.name FROM tessel_DefaultUnit d JOIN tessel_Measure m ON m.id = "
                            "d.measure_id JOIN tessel_Unit u ON u.id = d.unit_id"),
              ::testing::UnorderedElementsAre("LENGTH|millimetre", "AREA|square metre"));
  EXPECT_EQ(10, file.count("tessel_ColumnUnit"));
}

TEST_F(SampleDocument, EntityTypesAreAllInTheFileInTheirOrder) {
  Lines expected;
  for (const pugi::xml_node& type : root().children(L"entitytype")) expected.push_back(utf8(type.text().get()));
  RawFile file(path_);
  EXPECT_EQ(expected, file.column("SELECT name FROM tessel_EntityType ORDER BY id"));
  EXPECT_THAT(linesOf(file, "SELECT name, label, editable, visible, revision FROM tessel_PropertyNamespace"),
              ::testing::ElementsAre("IFC4|NULL|0|1|0"));
}

std::string numberOfIfcType(const pugi::xml_node& definition) {
  if (!definition.child(L"ifc_type")) return "NULL";
  const OdString word = definition.child(L"ifc_type").text().get();
  for (const IfcTypeGroup& group : ifcTypeGroups()) {
    for (std::size_t i = 0; i < group.rows.size(); ++i) {
      if (word == OdString(group.rows[i].word)) return std::to_string(group.base + static_cast<int>(i));
    }
  }
  return "no word: " + word.toUtf8();
}

std::string typeOf(const pugi::xml_node& definition) {
  static const std::map<std::string, int> types = {{"Bool", 1},    {"Int32", 6}, {"Int8", 2},
                                                   {"Double", 10}, {"Real", 10}, {"String", 11}};
  static const std::map<std::string, int> structures = {{"", 1}, {"Single", 1}, {"Array", 2}, {"Map", 3}};
  const pugi::xml_node type = definition.child(L"type");
  const std::string word = type.child(L"value_type") ? textOf(type, L"value_type") : utf8(type.text().get());
  return std::to_string(structures.at(textOf(type, L"structure"))) + "|" + std::to_string(types.at(word)) + "|0";
}

TEST_F(SampleDocument, DefinitionsAreAllInTheFile) {
  Lines expected;
  for (const pugi::xml_node& set : root().children(L"propertyset")) {
    for (const pugi::xml_node& definition : set.children(L"property_definition")) {
      if (definition.attribute(L"name")) continue;
      const pugi::xml_attribute unit = definition.child(L"unit").attribute(L"name");
      const std::string label = definition.child(L"label") ? textOf(definition, L"label") : "NULL";
      expected.push_back(textOf(definition, L"name") + "|" + label + "|" + (unit ? utf8(unit.value()) : "NULL") + "|" +
                         textOf(definition, L"ifc_name") + "|" + numberOfIfcType(definition) + "|" +
                         typeOf(definition) + "|1|" + textOf(definition, L"type_spec2"));
    }
  }
  RawFile file(path_);
  EXPECT_EQ(223u, expected.size());
  EXPECT_EQ(expected, linesOf(file, "SELECT d.name, d.label, u.name, d.ifc_name, d.ifc_type, d.type_structure, "
                                    "d.type_value_type, d.type_key_type, d.visible, d.type_spec2 "
                                    "FROM tessel_PropertyDefinition d LEFT JOIN tessel_Unit u ON u.id = d.unit_id "
                                    "ORDER BY d.id"));
}

/// "set: first second ... / type type"
Lines setsOf(const pugi::xml_node& root) {
  Lines sets;
  for (const pugi::xml_node& set : root.children(L"propertyset")) {
    std::string line = textOf(set, L"name") + " " + (set.child(L"per_instance").text().as_bool() ? "1" : "0") + ":";
    for (const pugi::xml_node& member : set.children(L"property_definition")) {
      const pugi::xml_attribute name = member.attribute(L"name");
      line += " " + (name ? utf8(name.value()) : textOf(member, L"name"));
    }
    line += " /";
    for (const pugi::xml_node& type : set.children(L"entity_type")) {
      const pugi::xml_attribute name = type.attribute(L"name");
      line += " " + (name ? utf8(name.value()) : utf8(type.text().get()));
    }
    sets.push_back(line);
  }
  return sets;
}

Lines setsOf(RawFile& file) {
  Lines sets;
  for (const RawFile::Row& set : file.rows("SELECT id, name, per_instance FROM tessel_PropertySet ORDER BY id")) {
    std::string line = set[1] + " " + set[2] + ":";
    for (const std::string& name :
         file.column("SELECT d.name FROM tessel_PropertySet_property_definitions c JOIN tessel_PropertyDefinition d "
                     "ON d.id = c.property_definition_id WHERE c.object_id = " +
                     set[0] + " ORDER BY c.\"index\"")) {
      line += " " + name;
    }
    line += " /";
    for (const std::string& name :
         file.column("SELECT t.name FROM tessel_PropertySet_entity_types c JOIN tessel_EntityType t "
                     "ON t.id = c.entity_type_id WHERE c.object_id = " +
                     set[0] + " ORDER BY c.\"index\"")) {
      line += " " + name;
    }
    sets.push_back(line);
  }
  return sets;
}

TEST_F(SampleDocument, SetsHoldTheirMembersInOrder) {
  RawFile file(path_);
  const Lines expected = setsOf(root());
  EXPECT_EQ(62u, expected.size());
  EXPECT_EQ(expected, setsOf(file));
  EXPECT_EQ(467, file.count("tessel_PropertySet_property_definitions"));
  EXPECT_EQ(0, file.count("tessel_PropertySet_value_definitions"));
}

TEST_F(SampleDocument, TheHouseStandsInTheFile) {
  RawFile file(path_);
  EXPECT_THAT(linesOf(file, "SELECT name, ref_elevation FROM tessel_Site"), ::testing::ElementsAre("Default|0.0"));
  EXPECT_THAT(linesOf(file, "SELECT b.name, s.name, b.address_lines, b.town, b.region, b.country, number_of_storeys "
                            "FROM tessel_Building b JOIN tessel_Site s ON s.id = b.site_id"),
              ::testing::ElementsAre("Building|Default|Enter address here|Westminster|London|UK|2"));
  EXPECT_THAT(linesOf(file, "SELECT s.name, s.long_name, s.elevation, b.name FROM tessel_Story s "
                            "JOIN tessel_Building b ON b.id = s.building_id ORDER BY s.elevation"),
              ::testing::ElementsAre("Ground Floor|Ground Floor|0.0|Building", "Roof|Roof|2500.0|Building"));
}

class KeepWhatIsThere : public ProjectDb::Reactor {
public:
  SaveResolution onNameNotUnique(ObjectInfo&) override { return SaveResolution::Kept; }
};

/// All rows of all tables.
Lines contentOf(const std::string& path) {
  RawFile file(path);
  Lines content;
  for (const std::string& table : file.tables()) {
    for (const std::string& line : linesOf(file, "SELECT * FROM \"" + table + "\""))
      content.push_back(table + " " + line);
  }
  return content;
}

// Definitions and sets merge by name in every mode. Enumerations are written anew, compactly and with sorted keys, which
// is how the document has them already.
TEST_F(SampleDocument, ASecondImportOverAKeepingReactorChangesNoRow) {
  const Lines before = contentOf(path_);
  KeepWhatIsThere keep;
  const auto db = ProjectDb::open(OdString::fromUtf8(path_), false);
  db->setReactor(&keep);
  ProjectDb::ImportOptions options;
  ImportMessages messages;
  options.messageHandler = messages.handler();
  db->importFromXml(root(), options);
  EXPECT_THAT(messages.all(), ::testing::IsEmpty());
  EXPECT_EQ(before, contentOf(path_));
}

// An edited second edition: one set gains a member, one definition another unit and values, one set becomes one per
// instance.
TEST_F(SampleDocument, ASecondEditionUpdatesWhatItSaysAndNothingElse) {
  const wchar_t edition[] = LR"(
    <edition>
      <propertydefinition>
        <name>Status</name><namespace name="IFC4"/><ifc_name>Status</ifc_name>
        <ifc_type>IfcSimpleValue_Label</ifc_type><type>String</type>
        <type_spec2>{"type":"Enum","values":["MOVED","NEW"]}</type_spec2>
      </propertydefinition>
      <propertyset>
        <namespace name="IFC4"/><name>Pset_BeamCommon</name>
        <property_definition><name>Camber</name><type>Double</type><unit name="millimetre"/></property_definition>
        <per_instance>1</per_instance>
        <entity_type name="IfcMember"/>
      </propertyset>
    </edition>)";
  Lines expected = contentOf(path_);
  RawFile file(path_);
  const std::string set = file.scalarText("SELECT id FROM tessel_PropertySet WHERE name = 'Pset_BeamCommon'");
  const std::string members = file.scalarText("SELECT count(*) FROM tessel_PropertySet_property_definitions "
                                              "WHERE object_id = " +
                                              set);
  const std::string types =
    file.scalarText("SELECT count(*) FROM tessel_PropertySet_entity_types WHERE object_id = " + set);
  const auto rowOf = [&](const std::string& table, const std::string& where) {
    return table + " " + linesOf(file, "SELECT * FROM " + table + " WHERE " + where).at(0);
  };
  const std::string oldSet = rowOf("tessel_PropertySet", "id = " + set);
  const std::string oldStatus = rowOf("tessel_PropertyDefinition", "name = 'Status'");

  const auto db = ProjectDb::open(OdString::fromUtf8(path_), false);
  EXPECT_THAT(importText(db, edition).messages, ::testing::IsEmpty());

  EXPECT_EQ(R"({"type":"Enum","values":["MOVED","NEW","EXISTING","DEMOLISH","TEMPORARY","OTHER","NOTKNOWN","UNSET"]})",
            file.scalarText("SELECT type_spec2 FROM tessel_PropertyDefinition WHERE name = 'Status'"));
  EXPECT_EQ("1", file.scalarText("SELECT per_instance FROM tessel_PropertySet WHERE id = " + set));
  const std::string camber = file.scalarText("SELECT id FROM tessel_PropertyDefinition WHERE name = 'Camber'");
  const std::string member = file.scalarText("SELECT id FROM tessel_EntityType WHERE name = 'IfcMember'");
  // The rows that the edition names, and the sequence that hands out ids, are the only ones that differ.
  for (const std::string& gone : {oldSet, oldStatus}) expected.erase(std::find(expected.begin(), expected.end(), gone));
  expected.push_back(rowOf("tessel_PropertySet", "id = " + set));
  expected.push_back(rowOf("tessel_PropertyDefinition", "name = 'Status'"));
  expected.push_back(rowOf("tessel_PropertyDefinition", "id = " + camber));
  expected.push_back("tessel_PropertySet_property_definitions " + set + "|" + members + "|" + camber);
  expected.push_back("tessel_PropertySet_entity_types " + set + "|" + types + "|" + member);
  EXPECT_THAT(contentOf(path_), ::testing::UnorderedElementsAreArray(expected));
}

}  // namespace
}  // namespace tessel::test
