// How the nil attribute is spelled: the root's declarations decide.

#include "import/import_test.h"

namespace tessel::test {
namespace {

const std::wstring schemaInstance = L"'http://www.w3.org/2001/XMLSchema-instance'";

class NilAttribute : public ImportTest {
protected:
  /// Whether an attribute of this name makes a reference nil, under a root with these attributes.
  bool isNil(const std::wstring& attribute, const std::wstring& rootAttributes) {
    const std::wstring unit = L"<unit><name>U</name><measure name='LENGTH' " + attribute + L"='true'/></unit>";
    const ImportRun run = import(L"<p " + rootAttributes + L">" + unit + L"</p>");
    const bool refused = !run.messages.empty();
    if (refused) {
      EXPECT_THAT(run, Says({error(L"Property 'unit > measure' can not be nil", L"<measure")}));
    }
    EXPECT_EQ(units().empty(), refused);
    project.raw().exec("DELETE FROM \"tessel_Unit\"");
    return refused;
  }

  const std::wstring declared = L"xmlns:xsi=" + schemaInstance;
};

TEST_F(NilAttribute, IsBareWithoutADeclaration) {
  EXPECT_TRUE(isNil(L"nil", L""));
  EXPECT_FALSE(isNil(L"xsi:nil", L""));
  EXPECT_FALSE(isNil(L"Nil", L""));
}

TEST_F(NilAttribute, HasTheDeclaredPrefix) {
  EXPECT_TRUE(isNil(L"xsi:nil", declared));
  EXPECT_FALSE(isNil(L"nil", declared));
  EXPECT_TRUE(isNil(L"i:nil", L"xmlns:i=" + schemaInstance));
  EXPECT_FALSE(isNil(L"xsi:nil", L"xmlns:i=" + schemaInstance));
}

TEST_F(NilAttribute, IsNotAffectedByOtherNamespaces) {
  EXPECT_TRUE(isNil(L"nil", L"xmlns:xsi='http://www.w3.org/2001/XMLSchema'"));
  EXPECT_TRUE(isNil(L"nil", L"xmlns='urn:a' xmlns:b='urn:b' other='c'"));
  EXPECT_TRUE(isNil(L"xsi:nil", L"xmlns='urn:a' " + declared + L" xmlns:b='urn:b'"));
}

TEST_F(NilAttribute, HasTheLastOfSeveralPrefixes) {
  EXPECT_TRUE(isNil(L"b:nil", L"xmlns:a=" + schemaInstance + L" xmlns:b=" + schemaInstance));
  EXPECT_FALSE(isNil(L"a:nil", L"xmlns:a=" + schemaInstance + L" xmlns:b=" + schemaInstance));
  EXPECT_TRUE(isNil(L"a:nil", L"xmlns=" + schemaInstance + L" xmlns:a=" + schemaInstance));
}

// With that namespace as the default one the name would be ":nil".
TEST_F(NilAttribute, IsOutOfReachUnderADefaultNamespace) {
  EXPECT_FALSE(isNil(L"nil", L"xmlns=" + schemaInstance));
  EXPECT_FALSE(isNil(L"xsi:nil", L"xmlns=" + schemaInstance));
  EXPECT_TRUE(isNil(L":nil", L"xmlns=" + schemaInstance));
  EXPECT_FALSE(isNil(L"a:nil", L"xmlns:a=" + schemaInstance + L" xmlns=" + schemaInstance));
}

TEST_F(NilAttribute, IsNotDeclaredByNamesThatOnlyLookLikeIt) {
  EXPECT_TRUE(isNil(L"nil", L"xmlns:=" + schemaInstance));
  EXPECT_TRUE(isNil(L"nil", L"xmlnsx=" + schemaInstance));
  EXPECT_TRUE(isNil(L"nil", L"xmlnsxsi=" + schemaInstance));
  EXPECT_TRUE(isNil(L"nil", L"xmlns.xsi=" + schemaInstance));
  EXPECT_TRUE(isNil(L"nil", L"XMLNS:xsi=" + schemaInstance));
  EXPECT_TRUE(isNil(L"nil", L"xmln:xsi=" + schemaInstance));
}

TEST_F(NilAttribute, IsDeclaredByTheRootOnly) {
  EXPECT_THAT(import(L"<p><unit " + declared + L"><name>U</name><measure name='LENGTH' xsi:nil='true'/></unit></p>"),
              SaysNothing());
}

// The node that is handed in is the one that counts, not the root of its document.
TEST_F(NilAttribute, IsNotDeclaredAboveTheImportedNode) {
  const Document document(L"<all " + declared + L"><p><default_unit xsi:nil='true'/></p></all>");
  ImportMessages messages;
  options.messageHandler = messages.handler();
  db->importFromXml(document.root().first_child(), options);
  EXPECT_EQ(textsOf(messages.all()), (std::vector<OdString>{u"Property 'default_unit > unit' can not be empty"}));
}

TEST_F(NilAttribute, IsABooleanAsAnyOther) {
  for (const wchar_t* yes : {L"true", L"1", L"yes", L"T"}) {
    EXPECT_EQ(
      import(std::wstring(L"<unit><name>U</name><measure name='x' nil='") + yes + L"'/></unit>").messages[0].text,
      u"Property 'unit > measure' can not be nil");
  }
  for (const wchar_t* no : {L"false", L"0", L"", L"nil"}) {
    EXPECT_EQ(
      import(std::wstring(L"<unit><name>U</name><measure name='x' nil='") + no + L"'/></unit>").messages[0].text,
      u"Could not find referenced object 'unit > measure' with name 'x'");
  }
}

}  // namespace
}  // namespace tessel::test
