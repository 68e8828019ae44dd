// The grammar of the documents holds for the examples and for all that the tests know of the format, and refuses what is
// misspelt.

#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/element_keys.h"
#include "support/process.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

class Grammar : public ::testing::Test {
protected:
  /// The names of those documents that the grammar refuses.
  static std::vector<std::string> refused(const std::vector<std::filesystem::path>& documents) {
    std::vector<std::string> command = {"/usr/bin/env", "xmllint",   "--nonet",
                                        "--noout",      "--relaxng", TESSEL_EXAMPLES "/../docs/import-document.rng"};
    for (const auto& document : documents) command.push_back(document.string());
    const ProcessResult result = runProcess(command);

    // It judges each document in a line of its own.
    std::vector<std::string> names;
    for (const auto& document : documents) {
      const bool isValid = result.err.find(document.string() + " validates\n") != std::string::npos;
      const bool isFaulty = result.err.find(document.string() + " fails to validate\n") != std::string::npos;
      if (isValid == isFaulty) throw std::runtime_error("no judgement: " + result.err);
      if (isFaulty) names.push_back(document.stem().string());
    }
    EXPECT_EQ(result.status, names.empty() ? 0 : 3);
    return names;
  }

  std::filesystem::path write(const std::string& name, const std::wstring& text) const {
    const std::string path = folder_.path(name + ".xml");
    std::ofstream(path, std::ios::binary) << narrow(text);
    return path;
  }
  bool accepts(const std::wstring& text) const { return refused({write("document", text)}).empty(); }

  static std::wstring documentOf(const Element& element, const std::wstring& fields) {
    return L"<p>" + element.before + L"<" + element.tag + L" id='7'>" + fields + L"</" + element.tag + L"></p>";
  }
  static std::wstring samples(const Element& element) {
    std::wstring fields;
    for (const Key& key : element.keys) fields += key.element;
    return fields;
  }

private:
  TempFolder folder_;
};

TEST_F(Grammar, HoldsForTheExamples) {
  std::vector<std::filesystem::path> documents;
  for (const auto& entry : std::filesystem::directory_iterator(TESSEL_EXAMPLES)) {
    if (entry.path().extension() == ".xml") documents.push_back(entry.path());
  }
  EXPECT_GE(documents.size(), 2U);
  EXPECT_THAT(refused(documents), ::testing::IsEmpty());
}

TEST_F(Grammar, HoldsForEachElementWithAllItsKeys) {
  std::vector<std::filesystem::path> documents;
  for (const Element& element : elements()) {
    documents.push_back(write(narrow(element.tag), documentOf(element, samples(element))));
  }
  EXPECT_THAT(refused(documents), ::testing::IsEmpty());
}

TEST_F(Grammar, RefusesAMisspeltKey) {
  std::vector<std::filesystem::path> documents;
  for (const Element& element : elements()) {
    for (const Key& key : element.keys) {
      const std::wstring fields = samples(element) + L"<" + key.name + L"s/>";
      documents.push_back(write(narrow(element.tag + L"-" + key.name), documentOf(element, fields)));
    }
  }
  EXPECT_EQ(refused(documents).size(), documents.size());
}

TEST_F(Grammar, RefusesAnElementThatLacksARequiredKey) {
  std::vector<std::filesystem::path> documents;
  for (const ElementKey& required : keysOf([](const Key& key) { return key.required; })) {
    std::wstring fields;
    for (const Key& key : required.element->keys) {
      if (key.name != required.key->name) fields += key.element;
    }
    documents.push_back(
      write(narrow(required.element->tag + L"-" + required.key->name), documentOf(*required.element, fields)));
  }
  EXPECT_EQ(refused(documents).size(), documents.size());
}

TEST_F(Grammar, RefusesNumbersThatAreNone) {
  const auto height = [](const std::wstring& number) {
    return L"<p><site><name>A</name><ref_elevation>" + number + L"</ref_elevation></site></p>";
  };
  EXPECT_TRUE(accepts(height(L"-1.5e3")));
  for (const wchar_t* const number : {L"NaN", L"INF", L"-INF", L"12,5", L"12.5 m", L"abc", L""}) {
    EXPECT_FALSE(accepts(height(number))) << narrow(number);
  }
}

TEST_F(Grammar, RefusesMisspeltObjectsAndWords) {
  EXPECT_TRUE(accepts(L"<p><site><name>A</name></site></p>"));
  EXPECT_FALSE(accepts(L"<p><sites><name>A</name></sites></p>"));
  EXPECT_FALSE(accepts(L"<p><Site><name>A</name></Site></p>"));
  const auto definition = [](const std::wstring& type) {
    return L"<p><propertydefinition><name>D</name><namespace name='N'/>" + type + L"</propertydefinition></p>";
  };
  EXPECT_TRUE(accepts(definition(L"<type>Double</type><ifc_type>IfcSimpleValue_Label</ifc_type>")));
  EXPECT_FALSE(accepts(definition(L"<type>double</type>")));
  EXPECT_FALSE(accepts(definition(L"<ifc_type>Label</ifc_type>")));
}

TEST_F(Grammar, HoldsForReferencesOfEachForm) {
  EXPECT_TRUE(accepts(L"<p xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'><meta><any a='b'>thing</any></meta>"
                      L"<default_unit default='LENGTH' name='metre'/><default_unit/><default_unit xsi:nil='true'/>"
                      L"<propertyset><namespace>N</namespace><name>S</name><label xsi:nil='true'/>"
                      L"<property_definition id='5'/><property_definition name='D' namespace='N'/>"
                      L"<entity_type>Wall</entity_type><entity_type name='Door'/>"
                      L"<property_definition><name>E</name><unit><name>u</name><measure><name>M</name></measure></unit>"
                      L"<type><structure>Map</structure><value_type>Double</value_type></type></property_definition>"
                      L"<value_definition><name>V</name><unit xsi:nil='true'/><ifc_type xsi:nil='1'/>"
                      L"</value_definition></propertyset></p>"));
  EXPECT_FALSE(accepts(L"<p><building><site nil='true'/><name>B</name></building></p>"));
  EXPECT_FALSE(accepts(L"<p><building><site/><name>B</name></building></p>"));
  EXPECT_FALSE(accepts(L"<p><story><building name='B'/><name>G</name></story></p>"));
}

}  // namespace
}  // namespace tessel::test
