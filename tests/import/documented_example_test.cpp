// The example of the documentation is a whole document, and imports without a word.

#include <fstream>
#include <iterator>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "import/import_test.h"
#include "support/process.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

std::string documentedExample() {
  std::ifstream file(TESSEL_EXAMPLES "/../docs/import-document.md");
  const std::string text(std::istreambuf_iterator<char>(file), {});
  const std::string fence = "\n```xml\n";
  const std::size_t begin = text.find(fence) + fence.size();
  return text.substr(begin, text.find("\n```\n", begin) - begin);
}

using DocumentedExample = ImportTest;

TEST_F(DocumentedExample, IsWhatTheGrammarTakes) {
  const TempFolder folder;
  const std::string path = folder.path("example.xml");
  std::ofstream(path) << documentedExample();
  const ProcessResult result = runProcess({"/usr/bin/env", "xmllint", "--nonet", "--noout", "--relaxng",
                                           TESSEL_EXAMPLES "/../docs/import-document.rng", path});
  EXPECT_EQ(result.status, 0) << result.err;
}

TEST_F(DocumentedExample, ImportsWithoutAMessage) {
  ASSERT_THAT(import(OdString::fromUtf8(documentedExample()).toWide()).messages, ::testing::IsEmpty());
  EXPECT_EQ(db->defaultUnit(L"LENGTH")->label(), OdString(L"mm"));
  const auto office = db->get<PropertyNamespace>(NameKey(L"Office"));
  const auto door = db->get<PropertySet>(NameObjectKey<PropertyNamespace>(L"Door", office->id()));
  EXPECT_EQ(door->property_definitions().size(), 1U);
  EXPECT_EQ(door->entity_types().size(), 1U);
  const auto site = db->get<Site>(NameKey(L"Harbour"));
  EXPECT_EQ(site->buildings().front()->stories().size(), 1U);
}

}  // namespace
}  // namespace tessel::test
