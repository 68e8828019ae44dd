// Documents and trees that are odd or hostile: nothing they hold may end the process.

#include <functional>

#include <pthread.h>
#include <utf8.h>

#include <tessel/transaction.h>

#include "import/import_test.h"

namespace tessel::test {
namespace {

using Names = std::vector<std::string>;

/// Runs the body on a stack of 8 MiB.
void runOnOrdinaryStack(std::function<void()> body) {
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, std::size_t{8} << 20), 0);
  const auto start = [](void* argument) -> void* {
    (*static_cast<std::function<void()>*>(argument))();
    return nullptr;
  };
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, &attributes, start, &body), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

std::wstring repeated(const std::wstring& part, std::size_t times) {
  std::wstring text;
  text.reserve(part.size() * times);
  for (std::size_t i = 0; i < times; ++i) text += part;
  return text;
}

/// Elements in elements.
std::wstring nest(const std::wstring& start, const std::wstring& end) {
  constexpr std::size_t levels = 1'000'000;
  return repeated(start, levels) + repeated(end, levels);
}

class DeepTree : public ImportTest {
protected:
  ImportRun importDeep(const std::wstring& text) {
    ImportRun run;
    runOnOrdinaryStack([&] { run = import(text); });
    return run;
  }
  const std::wstring deep = nest(L"<a>", L"</a>");
};

TEST_F(DeepTree, MayStandInAnObject) {
  EXPECT_THAT(importDeep(L"<site><name>A</name><unknown>" + deep + L"</unknown></site>"),
              Says({warning(L"Unknown property 'unknown' for 'site'", L"<unknown")}));
  EXPECT_EQ(sites(), Names{"A"});
}

TEST_F(DeepTree, MayStandInAFieldThatIsRead) {
  EXPECT_THAT(importDeep(L"<p><site><name>A" + deep + L"</name></site></p>"), SaysNothing());
  EXPECT_EQ(sites(), Names{"A"});
}

TEST_F(DeepTree, MayStandInAnInlineObject) {
  EXPECT_THAT(
    importDeep(L"<building><site><name>A</name><unknown>" + deep + L"</unknown></site><name>B</name></building>"),
    Says({warning(L"Unknown property 'unknown' for 'site'", L"<unknown")}));
  EXPECT_EQ(sites(), Names{"A"});
}

TEST_F(DeepTree, MayStandInAFaultyObject) {
  EXPECT_THAT(importDeep(L"<p><site><town>T</town>" + deep + L"</site></p>"),
              Says({error(L"Missing 'site > name' property", L"<site")}));
}

TEST_F(DeepTree, MayStandInWhatIsSkipped) {
  EXPECT_THAT(importDeep(L"<p><meta>" + deep + L"</meta><bridge>" + deep + L"</bridge></p>"),
              Says({warning(L"Unknown object type 'bridge'", L"<bridge")}));
}

TEST_F(DeepTree, MayBeOfElementsThatWouldBeObjects) {
  const std::wstring text = L"<p>" + nest(L"<site>", L"</site>") + L"</p>";
  EXPECT_EQ(importDeep(text).messages,
            (std::vector<ImportMessage>{{ImportSeverity::Error, u"Missing 'site > name' property", 4}}));
}

TEST_F(DeepTree, MayBeOfReferences) {
  const std::wstring text = L"<p>" + nest(L"<building><site>", L"</site></building>") + L"</p>";
  EXPECT_EQ(importDeep(text).messages,
            (std::vector<ImportMessage>{{ImportSeverity::Error, u"Missing 'site > name' property", -1}}));
}

TEST_F(DeepTree, MayBeInTheJsonOfAnEnumeration) {
  const std::wstring deepList = repeated(L"[", 200'000) + repeated(L"]", 200'000);
  const std::wstring definition = L"<propertydefinition><name>D</name><namespace>N</namespace><type_spec2>"
                                  LR"({"type":"Enum","values":[)" +
                                  deepList + L"]}</type_spec2></propertydefinition>";
  EXPECT_THAT(importDeep(definition), SaysNothing());
  const std::wstring again = L"<propertydefinition><name>D</name><namespace name='N'/><type_spec2>"
                             LR"({"values":["a",)" +
                             deepList + LR"(],"type":"Enum"}</type_spec2></propertydefinition>)";
  EXPECT_THAT(importDeep(again), SaysNothing());
  EXPECT_EQ(column("tessel_PropertyDefinition", "type_spec2"),
            Names{OdString((LR"({"type":"Enum","values":["a",)" + deepList + L"]}").c_str()).toUtf8()});
}

// Text that is none.

class OddText : public ImportTest {
protected:
  /// Imports behind an object that is right, and expects that the exception of this type takes all back.
  template <typename Error>
  void expectThrow(const std::wstring& element) {
    EXPECT_THROW(import(L"<p><site><name>A</name></site>" + element + L"</p>"), Error);
    EXPECT_FALSE(Transaction::hasCurrent());
    EXPECT_TRUE(sites().empty());
    EXPECT_THAT(import(L"<site><name>A</name></site>"), SaysNothing());
    EXPECT_EQ(sites(), Names{"A"});
  }
};

// A text may hold half a pair, but the file may not.
TEST_F(OddText, HalfAPairInAFieldIsAnException) {
  expectThrow<utf8::invalid_utf16>(L"<site><name>&#xD800;</name></site>");
}

TEST_F(OddText, HalfAPairInASearchIsAnException) {
  expectThrow<utf8::invalid_utf16>(L"<building><site name='&#xDC00;'/><name>B</name></building>");
}

TEST_F(OddText, HalfAPairInASearchForADefaultUnitIsAnException) {
  expectThrow<utf8::invalid_utf16>(L"<default_unit default='&#xDC00;'/>");
}

TEST_F(OddText, HalvesOfAPairMakeAWhole) {
  EXPECT_THAT(import(L"<site><name>&#xD83C;&#xDFE0;</name></site>"), SaysNothing());
  EXPECT_EQ(sites(), Names{"\U0001F3E0"});
}

TEST_F(OddText, HalfAPairIsTold) {
  EXPECT_THAT(import(L"<p><bridge\xD800/></p>"), Says({warning(u"Unknown object type 'bridge\xD800'", L"<bridge")}));
}

TEST_F(OddText, ANumberThatIsNoCharacterInAFieldIsAnException) {
  expectThrow<utf8::invalid_code_point>(L"<site><name>&#x110000;</name></site>");
}

TEST_F(OddText, ANumberThatIsNoCharacterInASearchIsAnException) {
  expectThrow<utf8::invalid_code_point>(L"<building><site name='&#x7FFFFFFF;'/><name>B</name></building>");
}

// The name is made a text before the warning is begun: a destructor cannot throw.
TEST_F(OddText, ANumberThatIsNoCharacterInAnUnknownTagIsAnException) {
  expectThrow<utf8::invalid_code_point>(L"<bridge" + std::wstring(1, wchar_t{0x110000}) + L"/>");
  project.raw().exec("DELETE FROM \"tessel_Site\"");
  expectThrow<utf8::invalid_code_point>(L"<site><name>B</name><x" + std::wstring(1, wchar_t{0x110000}) + L"/></site>");
}

TEST_F(OddText, AZeroEndsAText) {
  EXPECT_THAT(import(L"<site><name>A&#0;B</name></site>"), SaysNothing());
  EXPECT_EQ(sites(), Names{"A"});
}

TEST_F(OddText, SqlStaysText) {
  EXPECT_THAT(import(L"<p><site id='1'><name>'; DROP TABLE tessel_Site; --</name></site>"
                     L"<building><site name=\"'; DROP TABLE tessel_Site; --\"/><name>%_</name></building></p>"),
              SaysNothing());
  EXPECT_EQ(sites(), Names{"'; DROP TABLE tessel_Site; --"});
  EXPECT_EQ(buildings(), Names{"%_"});
}

TEST_F(OddText, MessagesMayBeLong) {
  const std::wstring name(100'000, L'x');
  EXPECT_THAT(
    import(L"<p><building><site name='" + name + L"'/></building></p>"),
    Says({error((L"Could not find referenced object 'building > site' with name '" + name + L"'").c_str(), L"<site")}));
}

// Trees that nobody parsed.

class BuiltTree : public ImportTest {
protected:
  static pugi::xml_node add(pugi::xml_node parent, const wchar_t* tag, const wchar_t* text = L"") {
    pugi::xml_node child = parent.append_child(tag);
    if (*text) child.text().set(text);
    return child;
  }

  std::vector<ImportMessage> import(const pugi::xml_node& node) {
    ImportMessages messages;
    db->importFromXml(node, {false, messages.handler(), {}});
    return messages.all();
  }

  pugi::xml_document document;
  pugi::xml_node root = document.append_child(L"p");
};

TEST_F(BuiltTree, IsImportedAsAnyOther) {
  pugi::xml_node site = add(root, L"site");
  site.append_attribute(L"id").set_value(3);
  add(site, L"name", L"A");
  add(site, L"total_area").text().set(2.5);
  pugi::xml_node building = add(root, L"building");
  add(building, L"site").append_attribute(L"id").set_value(3);
  add(building, L"name", L"B");
  EXPECT_TRUE(import(root).empty());
  EXPECT_EQ(buildings(), Names{"B"});
}

TEST_F(BuiltTree, HasNoPlaces) {
  add(root, L"bridge");
  add(root, L"site");
  pugi::xml_node site = add(root, L"site");
  add(site, L"name", L"A");
  add(site, L"unknown");
  add(root, L"site").append_copy(site.child(L"name"));
  add(add(root, L"building"), L"site").append_attribute(L"id").set_value(9);
  EXPECT_EQ(import(root),
            (std::vector<ImportMessage>{
              {ImportSeverity::Warning, u"Unknown object type 'bridge'", -1},
              {ImportSeverity::Error, u"Missing 'site > name' property", -1},
              {ImportSeverity::Warning, u"Unknown property 'unknown' for 'site'", -1},
              {ImportSeverity::Error, u"An other object with the same values exists: name", -1},
              {ImportSeverity::Error, u"Could not find referenced object 'building > site' with id 9", -1},
            }));
}

// An element that was added to a parsed tree has no place there, the others keep theirs.
TEST_F(BuiltTree, MayBePartOfAParsedOne) {
  Document parsed(L"<p><bridge/></p>");
  parsed.root().append_child(L"tunnel");
  EXPECT_EQ(import(parsed.root()),
            (std::vector<ImportMessage>{{ImportSeverity::Warning, u"Unknown object type 'bridge'", 4},
                                        {ImportSeverity::Warning, u"Unknown object type 'tunnel'", -1}}));
}

TEST_F(BuiltTree, MayHoldManyObjects) {
  for (int i = 0; i < 2000; ++i) add(add(root, L"site"), L"name").text().set(i);
  EXPECT_TRUE(import(root).empty());
  EXPECT_EQ(db->count<Site>(), 2000U);
}

}  // namespace
}  // namespace tessel::test
