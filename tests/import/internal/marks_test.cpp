#include "import/marks.h"

#include <gtest/gtest.h>

#include "import/internal/import_run.h"

namespace tessel::test {
namespace {

TEST(Marks, AreSetOnceOnAnElement) {
  Document document(L"<a b='c'/>");
  markRead(document.root());
  markRead(document.root());
  EXPECT_EQ(document.written(), "<a b=\"c\" _tessel_import_mark=\"1\"/>");
}

TEST(Marks, ReplaceWhatADocumentHas) {
  Document document(L"<a _tessel_import_mark='0'/>");
  markRead(document.root());
  EXPECT_EQ(document.written(), "<a _tessel_import_mark=\"1\"/>");
}

TEST(Marks, AreNotSetOnNothing) { markRead(pugi::xml_node()); }

TEST(Marks, AreKnownByTheirName) {
  const Document document(L"<a _tessel_import_mark='x' _tessel_import_Mark='1' mark='1'/>");
  std::vector<bool> marks;
  for (const pugi::xml_attribute& attribute : document.root().attributes()) marks.push_back(isMark(attribute));
  EXPECT_EQ(marks, (std::vector<bool>{true, false, false}));
}

TEST(Marks, AreClearedInAnElementAndAllBelow) {
  const std::wstring m = L" _tessel_import_mark='1'";
  Document document(L"<p" + m + L"><x" + m + L"/><a" + m + L" k='v'>text<b" + m + L"><c" + m + L"/><c/></b><d" + m +
                    L"/></a><y" + m + L"/></p>");
  clearMarks(document.root().child(L"a"));
  EXPECT_EQ(document.written(),
            "<p _tessel_import_mark=\"1\"><x _tessel_import_mark=\"1\"/><a k=\"v\">text<b><c/><c/></b>"
            "<d/></a><y _tessel_import_mark=\"1\"/></p>");
}

TEST(Marks, AreClearedBehindNodesOfOtherKinds) {
  const std::wstring m = L" _tessel_import_mark='1'";
  Document document(L"<p><!--c-->t<a" + m + L"/><![CDATA[d]]><?e f?><b" + m + L"/>u</p>",
                    pugi::parse_default | pugi::parse_comments | pugi::parse_pi);
  clearMarks(document.root());
  EXPECT_EQ(document.written(), "<p><!--c-->t<a/><![CDATA[d]]><?e f?><b/>u</p>");
}

TEST(Marks, AreClearedInNothing) { clearMarks(pugi::xml_node()); }

TEST(Marks, MissingOnAChildGiveAWarning) {
  RunOn on(L"<p><a/><b _tessel_import_mark='1'><c/></b>text<d _tessel_import_mark='0'/></p>");
  const ElementContext object{nullptr, ObjectType::Site, nullptr, ElementPath(L"site"), true, 0};
  reportUnknownProperties(on.run, on.root(), object);
  EXPECT_EQ(textsOf(on.messages.all()),
            (std::vector<OdString>{u"Unknown property 'a' for 'site'", u"Unknown property 'd' for 'site'"}));
}

TEST(Marks, MissingGiveAWarningEvenWhereErrorsAreSilent) {
  RunOn on(L"<p><a/></p>");
  const ElementContext object{nullptr, ObjectType::Site, nullptr, ElementPath(L"site"), false, 0};
  reportUnknownProperties(on.run, on.root(), object);
  EXPECT_EQ(on.messages.warnings(), 1U);
}

}  // namespace
}  // namespace tessel::test
