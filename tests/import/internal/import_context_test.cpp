#include <gtest/gtest.h>

#include "import/internal/import_run.h"

namespace tessel::test {
namespace {

using Prefixes = std::map<std::wstring, std::wstring>;

Prefixes prefixesOf(const std::wstring& attributes) {
  return RunOn(L"<p " + attributes + L"><q xmlns:q='urn:q'/></p>").run.namespacePrefixes;
}

std::wstring nilOf(const std::wstring& attributes) { return RunOn(L"<p " + attributes + L"/>").run.nilAttributeName; }

TEST(ImportContext, KnowsTheNamespacesOfItsNode) {
  EXPECT_EQ(prefixesOf(L""), Prefixes());
  EXPECT_EQ(prefixesOf(L"a='urn:a' xmlns='urn:0' xmlns:b='urn:b' xmlns:c='urn:c'"),
            (Prefixes{{L"urn:0", L""}, {L"urn:b", L"b"}, {L"urn:c", L"c"}}));
}

TEST(ImportContext, TakesTheLastPrefixOfANamespace) {
  EXPECT_EQ(prefixesOf(L"xmlns:a='urn:a' xmlns:b='urn:a'"), (Prefixes{{L"urn:a", L"b"}}));
  EXPECT_EQ(prefixesOf(L"xmlns:a='urn:a' xmlns='urn:a'"), (Prefixes{{L"urn:a", L""}}));
  EXPECT_EQ(prefixesOf(L"xmlns='urn:a' xmlns:a='urn:a'"), (Prefixes{{L"urn:a", L"a"}}));
}

TEST(ImportContext, PassesOverNamesOfSixCharacters) {
  EXPECT_EQ(prefixesOf(L"xmlns:='urn:a' xmlnsx='urn:b' xmlns1='urn:c'"), Prefixes());
}

TEST(ImportContext, PassesOverLongerNamesWithoutAColonInItsPlace) {
  EXPECT_EQ(prefixesOf(L"xmlnsa:b='urn:a' xmlnsab='urn:b' Xmlns:a='urn:c' axmlns:a='urn:d' xmln='urn:e'"), Prefixes());
}

TEST(ImportContext, KeepsWhatStandsBehindTheFirstColon) {
  EXPECT_EQ(prefixesOf(L"xmlns:a:b='urn:a' xmlns::='' "), (Prefixes{{L"urn:a", L"a:b"}, {L"", L":"}}));
}

TEST(ImportContext, SpellsTheNilAttribute) {
  const std::wstring schemaInstance = L"'http://www.w3.org/2001/XMLSchema-instance'";
  EXPECT_EQ(nilOf(L""), L"nil");
  EXPECT_EQ(nilOf(L"xmlns:a='http://www.w3.org/2001/XMLSchema'"), L"nil");
  EXPECT_EQ(nilOf(L"xmlns:a=" + schemaInstance), L"a:nil");
  EXPECT_EQ(nilOf(L"xmlns=" + schemaInstance), L":nil");
}

TEST(ImportContext, StartsWithoutIds) {
  const RunOn on(L"<p/>");
  EXPECT_EQ(on.run.mapping.size(), 0U);
  EXPECT_EQ(on.run.mapping.destination(), on.project.db.get());
}

}  // namespace
}  // namespace tessel::test
