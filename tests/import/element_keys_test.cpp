// What all keys have in common: how their values are read, their defaults, and what happens when a key is missing or is
// there twice.

#include <algorithm>
#include <map>

#include "import/element_keys.h"
#include "import/import_test.h"
#include "support/recording_reactor.h"

namespace tessel::test {
namespace {

using Values = std::map<std::wstring, std::string>;

bool isRequired(const Key& key) { return key.required; }
bool isNullableText(const Key& key) { return key.kind == Kind::NullableText; }
bool isPlainText(const Key& key) { return key.kind == Kind::Text; }
bool isText(const Key& key) { return isPlainText(key) || isNullableText(key); }
bool isNumber(const Key& key) { return !isText(key) && key.kind != Kind::Reference && key.kind != Kind::Word; }

class KeysTest : public ImportTest {
protected:
  /// The element, behind what it refers to.
  static std::wstring document(const Element& element, const std::wstring& fields,
                               const std::wstring& attributes = L"") {
    const std::wstring start = placeOf(element) + L"=''" + attributes + L">";
    return L"<project>" + element.before + start + fields + L"</" + element.tag + L"></project>";
  }

  /// Where the element begins, for messages; attributes that nobody knows are ignored.
  static std::wstring placeOf(const Element& element) { return L"<" + element.tag + L" place"; }

  /// The fields of all keys with their sample values, but another text in those that are chosen.
  template <typename IsChosen>
  static std::wstring fieldsWith(const Element& element, const IsChosen& isChosen, const std::wstring& text,
                                 const std::wstring& attributes = L"") {
    std::wstring fields;
    for (const Key& key : element.keys) {
      const std::wstring other = L"<" + key.name + attributes + L">" + text + L"</" + key.name + L">";
      fields += isChosen(key) ? other : key.element;
    }
    return fields;
  }

  /// The fields of the chosen keys with their sample values.
  template <typename IsChosen>
  static std::wstring samples(const Element& element, const IsChosen& isChosen) {
    std::wstring fields;
    for (const Key& key : element.keys) {
      if (isChosen(key)) fields += key.element;
    }
    return fields;
  }
  static std::wstring samples(const Element& element) {
    return samples(element, [](const Key&) { return true; });
  }

  template <typename ValueOf>
  static Values valuesBy(const Element& element, const ValueOf& valueOf) {
    Values values;
    for (const Key& key : element.keys) values[key.name] = valueOf(key);
    return values;
  }
  static Values sampleValues(const Element& element) {
    return valuesBy(element, [](const Key& key) { return key.inFile; });
  }
  static Values defaultValues(const Element& element) {
    return valuesBy(element, [](const Key& key) { return key.required ? key.inFile : key.byDefault; });
  }

  /// The values of the latest row.
  Values valuesInFile(const Element& element) const {
    std::string columns;
    for (const Key& key : element.keys) columns += (columns.empty() ? "" : ", ") + key.column;
    const std::string query =
      "SELECT " + columns + " FROM \"" + element.table + "\" owner ORDER BY \"id\" DESC LIMIT 1";
    const RawFile::Row row = project.raw().rows(query).at(0);
    Values values;
    for (std::size_t i = 0; i < row.size(); ++i) values[element.keys[i].name] = row[i];
    return values;
  }

  /// Imports an update of the latest row.
  ImportRun updateLatest(const Element& element, const std::wstring& fields) {
    const std::string id = project.raw().scalarText("SELECT max(\"id\") FROM \"" + element.table + "\"");
    RecordingReactor reactor(db);
    reactor.otherwise(SaveResolution::Kept);  // What the element refers to is there already.
    return update(document(element, fields, L" id='" + wide(id) + L"'"));
  }

  static OdString missing(const Element& element, const Key& key) {
    return (L"Missing '" + element.tag + L" > " + key.name + L"' property").c_str();
  }

  /// What is said when only this key is absent. Where a row is sought by its name and namespace before the fields are
  /// read, a missing namespace is told then too.
  static std::vector<ExpectedMessage> faultsWithout(const Element& element, const Key& key) {
    std::vector<ExpectedMessage> faults;
    const bool mergesByName = element.tag == L"propertydefinition" || element.tag == L"propertyset";
    if (mergesByName && key.name == L"namespace") {
      faults.push_back(error((L"Missing '" + element.tag + L"' property").c_str(), placeOf(element)));
    }
    faults.push_back(error(missing(element, key), placeOf(element)));
    return faults;
  }
};

class EachElement : public KeysTest, public ::testing::WithParamInterface<Element> {
protected:
  const Element& element = GetParam();
};

TEST_P(EachElement, IsReadWithAllItsKeys) {
  EXPECT_THAT(import(document(element, samples(element))), SaysNothing());
  EXPECT_EQ(valuesInFile(element), sampleValues(element));
}

TEST_P(EachElement, MayHaveItsKeysInAnyOrder) {
  std::wstring fields;
  for (const Key& key : element.keys) fields.insert(0, key.element);
  EXPECT_THAT(import(document(element, fields)), SaysNothing());
  EXPECT_EQ(valuesInFile(element), sampleValues(element));
}

TEST_P(EachElement, TakesDefaultsForWhatIsNotRequired) {
  EXPECT_THAT(import(document(element, samples(element, isRequired))), SaysNothing());
  EXPECT_EQ(valuesInFile(element), defaultValues(element));
}

TEST_P(EachElement, IsResetToDefaultsByAnUpdate) {
  import(document(element, samples(element)));
  const long long rows = project.count(element.table);
  EXPECT_THAT(updateLatest(element, samples(element, isRequired)), SaysNothing());
  EXPECT_EQ(valuesInFile(element), defaultValues(element));
  EXPECT_EQ(project.count(element.table), rows);
}

TEST_P(EachElement, CountsOnlyTheFirstFieldOfAKey) {
  std::wstring second;
  std::vector<ExpectedMessage> warnings;
  for (const Key& key : element.keys) {
    second += L"<" + key.name + L" second=''>5</" + key.name + L">";
    const std::wstring message = L"Unknown property '" + key.name + L"' for '" + element.tag + L"'";
    warnings.push_back(warning(message.c_str(), L"<" + key.name + L" second"));
  }
  EXPECT_THAT(import(document(element, samples(element) + second)), Says(warnings));
  EXPECT_EQ(valuesInFile(element), sampleValues(element));
}

TEST_P(EachElement, MayHaveEmptyTexts) {
  EXPECT_THAT(import(document(element, fieldsWith(element, isText, L""))), SaysNothing());
  EXPECT_EQ(valuesInFile(element), valuesBy(element, [](const Key& key) { return isText(key) ? "" : key.inFile; }));
}

TEST_P(EachElement, KnowsNoNilForTextsThatAreNeverNull) {
  EXPECT_THAT(import(document(element, fieldsWith(element, isPlainText, L"A", L" nil='true'"))), SaysNothing());
  EXPECT_EQ(valuesInFile(element),
            valuesBy(element, [](const Key& key) { return isPlainText(key) ? "A" : key.inFile; }));
}

TEST_P(EachElement, MayHaveNilForTextsThatMayBeNull) {
  EXPECT_THAT(import(document(element, fieldsWith(element, isNullableText, L"A", L" nil='true'"))), SaysNothing());
  EXPECT_EQ(valuesInFile(element),
            valuesBy(element, [](const Key& key) { return isNullableText(key) ? "NULL" : key.inFile; }));
}

TEST_P(EachElement, MayDeclareTextsNotNil) {
  EXPECT_THAT(import(document(element, fieldsWith(element, isNullableText, L"A", L" nil='false'"))), SaysNothing());
  EXPECT_EQ(valuesInFile(element),
            valuesBy(element, [](const Key& key) { return isNullableText(key) ? "A" : key.inFile; }));
}

// A default is for an absent field only.
TEST_P(EachElement, HasZerosForTextsThatAreNoNumbers) {
  const Values zeros = valuesBy(element, [](const Key& key) {
    if (!isNumber(key)) return key.inFile;
    return std::string(key.kind == Kind::Double ? "0.0" : "0");
  });
  import(document(element, samples(element)));
  for (const wchar_t* text : {L"abc", L"", L"-", L"<b>1</b>"}) {
    SCOPED_TRACE(narrow(text));
    updateLatest(element, samples(element));
    ASSERT_EQ(valuesInFile(element), sampleValues(element));
    EXPECT_THAT(updateLatest(element, fieldsWith(element, isNumber, text)), SaysNothing());
    EXPECT_EQ(valuesInFile(element), zeros);
  }
}

INSTANTIATE_TEST_SUITE_P(Import, EachElement, ::testing::ValuesIn(elements()),
                         [](const auto& param) { return narrow(param.param.tag); });

class RequiredKey : public KeysTest, public ::testing::WithParamInterface<ElementKey> {
protected:
  const Element& element = *GetParam().element;
  const Key& key = *GetParam().key;
};

TEST_P(RequiredKey, MayNotBeAbsent) {
  const auto isOther = [this](const Key& other) { return other.name != key.name; };
  const long long rows = project.count(element.table);
  EXPECT_THAT(import(document(element, samples(element, isOther))), Says(faultsWithout(element, key)));
  EXPECT_EQ(project.count(element.table), rows);
}

TEST_P(RequiredKey, MayNotBeAbsentInAnUpdateAndTheRowStays) {
  import(document(element, samples(element)));
  const auto isOther = [this](const Key& other) { return other.required && other.name != key.name; };
  EXPECT_THAT(updateLatest(element, samples(element, isOther)), Says({error(missing(element, key), placeOf(element))}));
  EXPECT_EQ(valuesInFile(element), sampleValues(element));
}

std::string nameOf(const ::testing::TestParamInfo<ElementKey>& param) {
  return narrow(param.param.element->tag) + "_" + narrow(param.param.key->name);
}

INSTANTIATE_TEST_SUITE_P(Import, RequiredKey, ::testing::ValuesIn(keysOf(isRequired)), nameOf);

using FirstRequiredKey = RequiredKey;

// The rest of the element is not read after the first fault, so it gives no warnings either.
TEST_P(FirstRequiredKey, IsTheOneThatIsToldOfManyFaults) {
  const long long rows = project.count(element.table);
  EXPECT_THAT(import(document(element, L"<unknown/>")), Says({error(missing(element, key), placeOf(element))}));
  EXPECT_EQ(project.count(element.table), rows);
}

/// In the order of their element's keys.
std::vector<ElementKey> firstRequiredKeys() {
  std::vector<ElementKey> firsts;
  for (const ElementKey& key : keysOf(isRequired)) {
    if (firsts.empty() || firsts.back().element != key.element) firsts.push_back(key);
  }
  return firsts;
}

INSTANTIATE_TEST_SUITE_P(Import, FirstRequiredKey, ::testing::ValuesIn(firstRequiredKeys()), nameOf);

}  // namespace
}  // namespace tessel::test
