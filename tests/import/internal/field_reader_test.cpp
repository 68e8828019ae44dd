#include "import/field_reader.h"

#include <gtest/gtest.h>

#include "import/internal/import_run.h"

namespace tessel::test {
namespace {

bool isNullIn(const std::wstring& text, unsigned int parsing = pugi::parse_default) {
  RunOn on(L"<p xmlns:i='http://www.w3.org/2001/XMLSchema-instance'>" + text + L"</p>", parsing);
  return isNullElement(on.run, on.root().first_child());
}

TEST(NullElement, IsOneThatIsAbsent) { EXPECT_TRUE(isNullIn(L"")); }

TEST(NullElement, IsOneThatIsNil) {
  EXPECT_TRUE(isNullIn(L"<a i:nil='true'/>"));
  EXPECT_TRUE(isNullIn(L"<a i:nil='1' id='5'>text<b/></a>"));
}

TEST(NullElement, IsOneWithoutContentAndAttributes) {
  EXPECT_TRUE(isNullIn(L"<a/>"));
  EXPECT_TRUE(isNullIn(L"<a></a>"));
  EXPECT_TRUE(isNullIn(L"<a>  </a>"));
}

TEST(NullElement, MayBeMarked) {
  EXPECT_TRUE(isNullIn(L"<a _tessel_import_mark='1'/>"));
  EXPECT_FALSE(isNullIn(L"<a _tessel_import_mark='1' id='5'/>"));
  EXPECT_FALSE(isNullIn(L"<a id='5' _tessel_import_mark='1'/>"));
}

TEST(NullElement, HasNoContentOfAnyKind) {
  EXPECT_FALSE(isNullIn(L"<a><b/></a>"));
  EXPECT_FALSE(isNullIn(L"<a>text</a>"));
  EXPECT_FALSE(isNullIn(L"<a><![CDATA[]]></a>"));
  EXPECT_FALSE(isNullIn(L"<a><!--c--></a>", pugi::parse_default | pugi::parse_comments));
  EXPECT_FALSE(isNullIn(L"<a>  </a>", pugi::parse_default | pugi::parse_ws_pcdata));
}

TEST(NullElement, HasNoAttributeOfAnyName) {
  EXPECT_FALSE(isNullIn(L"<a name='x'/>"));
  EXPECT_FALSE(isNullIn(L"<a other=''/>"));
  EXPECT_FALSE(isNullIn(L"<a nil='true'/>"));
  EXPECT_FALSE(isNullIn(L"<a i:nil='false'/>"));
}

}  // namespace
}  // namespace tessel::test
