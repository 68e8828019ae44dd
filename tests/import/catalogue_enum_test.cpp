// The values of an enumeration: a later import adds to them and never takes any away. It is the only JSON that an import
// reads, and the only text of a document that can end the run.

#include <functional>
#include <type_traits>

#include <tessel/exceptions.h>
#include <tessel/import_errors.h>
#include <tessel/transaction.h>

#include "import/catalogue_import.h"
#include "support/recording_reactor.h"

namespace tessel::test {
namespace {

constexpr const char* definitionTable = "tessel_PropertyDefinition";

class EnumMerge : public CatalogueImport {
protected:
  void TearDown() override { EXPECT_FALSE(Transaction::hasCurrent()); }

  static std::wstring withSpec(const std::wstring& spec, const std::wstring& attributes = L"") {
    return definition(L"D", elementOf(L"type_spec2", spec), attributes);
  }
  static std::wstring enumOf(const std::wstring& values) { return LR"({"type":"Enum","values":[)" + values + L"]}"; }

  /// A definition that has this text already, in a file that has no other.
  void start(const std::wstring& old) {
    project.raw().exec("DELETE FROM tessel_PropertySet; DELETE FROM tessel_PropertyDefinition");
    ASSERT_THAT(import(withSpec(old)), SaysNothing());
    ASSERT_EQ(specInFile(), narrow(old));
  }
  std::string specInFile() const { return fieldOf(definitionTable, "D", "type_spec2"); }

  /// What the file has when one specification is imported over another.
  std::string merged(const std::wstring& current, const std::wstring& old) {
    start(old);
    EXPECT_THAT(import(withSpec(current)), SaysNothing());
    return specInFile();
  }
  std::string mergedValues(const std::wstring& current, const std::wstring& old) {
    return merged(enumOf(current), enumOf(old));
  }

  static std::string text(const std::wstring& values) { return narrow(enumOf(values)); }
};

TEST_F(EnumMerge, KeepsOldValuesBehindTheNewOnes) {
  EXPECT_EQ(mergedValues(LR"("a","b")", LR"("a","c")"), text(LR"("a","b","c")"));
  EXPECT_EQ(mergedValues(LR"("b")", LR"("c","a")"), text(LR"("b","c","a")"));
  EXPECT_EQ(mergedValues(L"", LR"("c","a")"), text(LR"("c","a")"));
  EXPECT_EQ(mergedValues(LR"("a")", L""), text(LR"("a")"));
  EXPECT_EQ(mergedValues(L"", L""), text(L""));
}

TEST_F(EnumMerge, IsDoneInAnUpdateByIdToo) {
  start(enumOf(LR"("a","c")"));
  EXPECT_THAT(update(withSpec(enumOf(LR"("a","b")"), L"id='" + rowOf(definitionTable, "D") + L"'")), SaysNothing());
  EXPECT_EQ(specInFile(), text(LR"("a","b","c")"));
}

TEST_F(EnumMerge, IsDoneWithEachElementOfARun) {
  start(enumOf(LR"("a")"));
  EXPECT_THAT(import(L"<p>" + withSpec(enumOf(LR"("b")")) + withSpec(enumOf(LR"("c")")) + L"</p>"), SaysNothing());
  EXPECT_EQ(specInFile(), text(LR"("c","b","a")"));
}

TEST_F(EnumMerge, ComparesValuesOfAllKinds) {
  EXPECT_EQ(mergedValues(LR"(1,"1",true)", LR"("1",1,true,false,null)"), text(LR"(1,"1",true,false,null)"));
  EXPECT_EQ(mergedValues(LR"([1,{"x":2}])", LR"([1,{ "x" : 2 }],[1])"), text(LR"([1,{"x":2}],[1])"));
  EXPECT_EQ(mergedValues(L"1", L"1.0"), text(L"1,1.0000000000000000"));
  EXPECT_EQ(mergedValues(LR"("a")", LR"("A","a ")"), text(LR"("a","A","a ")"));
}

// Only the values of the document are searched.
TEST_F(EnumMerge, LeavesDuplicatesInEitherList) {
  EXPECT_EQ(mergedValues(LR"("a")", LR"("c","c","a")"), text(LR"("a","c","c")"));
  EXPECT_EQ(mergedValues(LR"("a","a")", LR"("c")"), text(LR"("a","a","c")"));
}

TEST_F(EnumMerge, WritesCompactlyWithSortedKeysAndKeepsOtherMembersOfTheDocument) {
  EXPECT_EQ(merged(LR"( { "values" : [ "b" , ] , "type" : "Enum" , "new" : 1 } and more )",
                   LR"({"old":1,"type":"Enum","values":["a"]})"),
            R"({"new":1,"type":"Enum","values":["b","a"]})");
}

TEST_F(EnumMerge, WritesEvenWhenNoValueIsNew) {
  EXPECT_EQ(merged(LR"({ "values" : ["a"], "type" : "Enum" })", enumOf(LR"("a")")), text(LR"("a")"));
}

TEST_F(EnumMerge, KeepsTextsOfAllLetters) {
  EXPECT_EQ(mergedValues(L"\"\u00DF\"", L"\"\u4E2D\""), text(L"\"\u00DF\",\"\u4E2D\""));
}

// Everything else is replaced.

TEST_F(EnumMerge, IsForEnumerationsOnly) {
  const std::wstring list = LR"({ "type" : "List", "values" : ["b"] })";
  EXPECT_EQ(merged(list, enumOf(LR"("a")")), narrow(list));
  EXPECT_EQ(merged(list, list), narrow(list));
  const std::wstring spaced = LR"({ "type" : "Enum", "values" : ["b"] })";
  EXPECT_EQ(merged(spaced, list), narrow(spaced));
  const std::wstring lower = LR"({ "type" : "enum", "values" : ["b"] })";
  EXPECT_EQ(merged(lower, lower), narrow(lower));
}

TEST_F(EnumMerge, LooksAtValuesOfEnumerationsOnly) {
  EXPECT_EQ(merged(LR"({"type":"List"})", enumOf(LR"("a")")), R"({"type":"List"})");
  EXPECT_EQ(merged(LR"({"type":"List","values":1})", LR"([])"), R"({"type":"List","values":1})");
}

TEST_F(EnumMerge, NeedsAnOldText) {
  for (const wchar_t* spec : {L"{broken", L"", L"7", L"{}"}) EXPECT_EQ(merged(spec, L""), narrow(spec));
}

// Of an element that is read anew, whatever becomes of its name.
TEST_F(EnumMerge, IsNotDoneWhereANewObjectOverwritesTheRow) {
  start(enumOf(LR"("a")"));
  RecordingReactor reactor(db);
  reactor.otherwise(SaveResolution::Overwritten);
  const std::wstring spec = elementOf(L"type_spec2", enumOf(LR"("b")"));
  EXPECT_THAT(import(set(L"<property_definition><name>D</name>" + spec + L"</property_definition>")), SaysNothing());
  EXPECT_EQ(specInFile(), text(LR"("b")"));
}

TEST_F(EnumMerge, IsNotDoneInAFaultyElement) {
  start(enumOf(LR"("a")"));
  EXPECT_THAT(import(definition(L"D", L"<type>Foo</type><type_spec2>{broken</type_spec2>")),
              Says({error(L"Invalid 'propertydefinition > type > value_type' property value: Foo", L"<type>")}));
  EXPECT_EQ(specInFile(), text(LR"("a")"));
}

TEST_F(EnumMerge, IsNotDoneInAFaultyElementEvenIfTheOldTextIsNoJson) {
  start(L"a, b");
  EXPECT_THAT(import(definition(L"D", L"<type>Foo</type>" + elementOf(L"type_spec2", enumOf(L"1")))),
              Says({error(L"Invalid 'propertydefinition > type > value_type' property value: Foo", L"<type>")}));
  EXPECT_EQ(specInFile(), "a, b");
}

// What ends the run.

struct BrokenSpec {
  const char* name;
  std::wstring current;
  std::wstring old;
  std::function<void(const std::function<void()>&)> expectThrow;
};

template <typename Error>
void expectThrowOf(const std::function<void()>& body) {
  EXPECT_THROW(body(), Error);
}

const std::wstring good = LR"({"type":"Enum","values":["a"]})";
const auto readError = &expectThrowOf<ReadError>;
const auto keyError = &expectThrowOf<KeyError>;
const auto valueError = &expectThrowOf<tsutils::json::ValueError>;

const BrokenSpec brokenSpecs[] = {
  {"NoJson", L"a, b", good, readError},
  {"Unclosed", LR"({"type":"Enum","values":["a"])", good, readError},
  {"Empty", L"", good, readError},
  {"OldNoJson", good, L"a, b", readError},
  {"OldNoJsonUnderAnotherType", LR"({"type":"List"})", L"a, b", readError},
  {"NoType", LR"({"values":["a"]})", good, keyError},
  {"TypeInOtherLetters", LR"({"Type":"Enum","values":["a"]})", good, keyError},
  {"NoValues", LR"({"type":"Enum"})", good, keyError},
  {"OldNoType", good, LR"({"values":["a"]})", keyError},
  {"OldNoValues", good, LR"({"type":"Enum"})", keyError},
  {"NoObject", L"[1]", good, valueError},
  {"TypeNoText", LR"({"type":1,"values":["a"]})", good, valueError},
  {"ValuesNoList", LR"({"type":"Enum","values":"a"})", good, valueError},
  {"OldNoObject", good, L"1", valueError},
  {"OldTypeNoText", good, LR"({"type":null})", valueError},
  {"OldValuesNoList", good, LR"({"type":"Enum","values":{}})", valueError},
  {"ValuesNoListBeforeOldNoValues", LR"({"type":"Enum","values":"a"})", LR"({"type":"Enum"})", valueError},
};

void PrintTo(const BrokenSpec& spec, std::ostream* out) {
  *out << narrow(spec.current) << " over " << narrow(spec.old);
}

class BrokenEnum : public EnumMerge, public ::testing::WithParamInterface<BrokenSpec> {
protected:
  void SetUp() override {
    EnumMerge::SetUp();
    start(GetParam().old);
  }
  const std::wstring broken = withSpec(GetParam().current);
  const std::wstring document =
    L"<p><site><name>A</name></site>" + definition(L"before") + broken + definition(L"behind") + L"</p>";
};

TEST_P(BrokenEnum, EndsTheRunAndTakesItBack) {
  const auto before = dumpOf(project.raw());
  int messages = 0;
  options.messageHandler = [&](ImportSeverity, const OdString&, std::int64_t) { ++messages; };
  GetParam().expectThrow([&] { import(document); });
  EXPECT_EQ(messages, 0);
  EXPECT_EQ(dumpOf(project.raw()), before);
}

TEST_P(BrokenEnum, LeavesATransactionOfTheHostToTheHost) {
  Transaction transaction(db, Transaction::BeginCurrent);
  GetParam().expectThrow([&] { import(document); });
  EXPECT_FALSE(transaction.finalized());
  transaction.commit();
  EXPECT_EQ(definitions(), (Names{"D", "before"}));
  EXPECT_EQ(sites(), Names{"A"});
  EXPECT_EQ(specInFile(), narrow(GetParam().old));
}

INSTANTIATE_TEST_SUITE_P(Import, BrokenEnum, ::testing::ValuesIn(brokenSpecs),
                         [](const auto& param) { return param.param.name; });

// None of these is one of the library's own exceptions, which would cost no more than the element.
static_assert(!std::is_base_of_v<Exception, ReadError> && std::is_base_of_v<std::runtime_error, ReadError>);
static_assert(!std::is_base_of_v<Exception, KeyError> && std::is_base_of_v<std::runtime_error, KeyError>);

TEST_F(EnumMerge, ThatFailsLeavesItsMarks) {
  start(good);
  Document document(L"<p>" + withSpec(L"x") + L"</p>");
  EXPECT_THROW(db->importFromXml(document.root(), options), ReadError);
  const std::string mark = " _tessel_import_mark=\"1\"";
  EXPECT_EQ(document.written(), "<p><propertydefinition><name" + mark + ">D</name><namespace name=\"Common\"" + mark +
                                  "/><type_spec2" + mark + ">x</type_spec2></propertydefinition></p>");
}

// An update that leaves the key out sets it to its default, which is no JSON.
TEST_F(EnumMerge, FailsWhereTheKeyIsLeftOut) {
  start(good);
  EXPECT_THROW(import(definition(L"D")), ReadError);
  EXPECT_EQ(specInFile(), narrow(good));
}

TEST_F(EnumMerge, LeavesADatabaseThatWorks) {
  start(good);
  EXPECT_THROW(import(withSpec(L"x")), ReadError);
  EXPECT_THAT(import(withSpec(enumOf(L"1"))), SaysNothing());
  EXPECT_EQ(specInFile(), text(LR"(1,"a")"));
}

}  // namespace
}  // namespace tessel::test
