// What the criteria of look-ups mean in the file.

#include <cmath>
#include <limits>

#include <gmock/gmock.h>

#include "operations/found.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using Names = std::vector<std::string>;

// Conditions on a text, shown on a column that may be NULL.

class TextCriteria : public ReactingProject {
protected:
  TextCriteria() {
    const auto length = db->get<Measure>(NameKey(L"LENGTH"));
    db->save(Unit::create(L"none", 1, length));
    int number = 0;
    for (const wchar_t* name : {L"", L"metre", L"Metre", L"millimetre", L"a_b", L"axb", L"100%", L"100",
                                L"\u00C9t\u00E9", L"\u00E9t\u00E9", L"it's", L"a\\b"}) {
      db->save(Unit::create(name, OdString::format(L"u%d", ++number), 1, length));
    }
  }

  /// The names that meet the condition; the unit without a name is called "NULL".
  Names meeting(const StringCriteria& name) {
    UnitCriteria criteria;
    criteria.name = name;
    std::vector<TsSmartPtr<Unit>> units;
    db->get(units, criteria);
    EXPECT_EQ(db->count<Unit>(criteria), units.size());
    Names names;
    for (const auto& unit : units) names.push_back(unit->has_name() ? unit->name().toUtf8() : "NULL");
    std::sort(names.begin(), names.end());
    return names;
  }

  static constexpr std::size_t all = 13;
};

TEST_F(TextCriteria, AnythingIsNoCondition) {
  EXPECT_EQ(meeting(StringCriteria()).size(), all);
  EXPECT_EQ(meeting(StringCriteria().equals(L"metre").anything()).size(), all);
}

TEST_F(TextCriteria, UnsetIsNull) { EXPECT_THAT(meeting(StringCriteria().unset()), ElementsAre("NULL")); }

TEST_F(TextCriteria, SetIsNotNull) { EXPECT_EQ(meeting(StringCriteria().set()).size(), all - 1); }

TEST_F(TextCriteria, EmptyIsTheEmptyTextAndNotNull) { EXPECT_THAT(meeting(StringCriteria().empty()), ElementsAre("")); }

TEST_F(TextCriteria, NotEmptyIsNeitherTheEmptyTextNorNull) {
  EXPECT_EQ(meeting(StringCriteria().notEmpty()).size(), all - 2);
}

TEST_F(TextCriteria, EqualsIsExact) {
  EXPECT_THAT(meeting(StringCriteria().equals(L"metre")), ElementsAre("metre"));
  EXPECT_THAT(meeting(StringCriteria().equals(L"a_b")), ElementsAre("a_b"));
  EXPECT_THAT(meeting(StringCriteria().equals(L"it's")), ElementsAre("it's"));
  EXPECT_THAT(meeting(StringCriteria().equals(L"")), ElementsAre(""));
  EXPECT_THAT(meeting(StringCriteria().equals(L"metr")), IsEmpty());
}

TEST_F(TextCriteria, NotEqualsIsNotMetByNull) {
  const Names names = meeting(StringCriteria().notEquals(L"metre"));
  EXPECT_EQ(names.size(), all - 2);
  EXPECT_THAT(names, ::testing::Not(::testing::Contains("NULL")));
  EXPECT_THAT(names, ::testing::Contains("Metre"));
}

TEST_F(TextCriteria, ContainsIgnoresTheCaseOfAsciiLetters) {
  EXPECT_THAT(meeting(StringCriteria().contains(L"METRE")), ElementsAre("Metre", "metre", "millimetre"));
}

TEST_F(TextCriteria, OtherLettersHaveTheirCase) {
  EXPECT_THAT(meeting(StringCriteria().contains(L"\u00E9T")), ElementsAre(u8"\u00E9t\u00E9"));
}

TEST_F(TextCriteria, AnUnderscoreInAnOperandIsAnyCharacter) {
  EXPECT_THAT(meeting(StringCriteria().contains(L"a_b")), ElementsAre("a\\b", "a_b", "axb"));
  EXPECT_THAT(meeting(StringCriteria().startsWith(L"a_")), ElementsAre("a\\b", "a_b", "axb"));
  EXPECT_THAT(meeting(StringCriteria().endsWith(L"_b")), ElementsAre("a\\b", "a_b", "axb"));
}

TEST_F(TextCriteria, APercentSignInAnOperandIsAnyText) {
  EXPECT_THAT(meeting(StringCriteria().contains(L"m%re")), ElementsAre("Metre", "metre", "millimetre"));
  EXPECT_THAT(meeting(StringCriteria().contains(L"100%")), ElementsAre("100", "100%"));
}

TEST_F(TextCriteria, ABackslashEscapesNothing) {
  EXPECT_THAT(meeting(StringCriteria().contains(L"a\\_b")), IsEmpty());
  EXPECT_THAT(meeting(StringCriteria().match(L"a\\b")), ElementsAre("a\\b"));
}

TEST_F(TextCriteria, StartsWithIsAPrefix) {
  EXPECT_THAT(meeting(StringCriteria().startsWith(L"met")), ElementsAre("Metre", "metre"));
}

TEST_F(TextCriteria, EndsWithIsASuffix) {
  EXPECT_THAT(meeting(StringCriteria().endsWith(L"METRE")), ElementsAre("Metre", "metre", "millimetre"));
  EXPECT_THAT(meeting(StringCriteria().endsWith(L"met")), IsEmpty());
}

TEST_F(TextCriteria, AnEmptyPartIsInEveryTextButNotInNull) {
  EXPECT_EQ(meeting(StringCriteria().contains(L"")).size(), all - 1);
  EXPECT_EQ(meeting(StringCriteria().startsWith(L"")).size(), all - 1);
  EXPECT_EQ(meeting(StringCriteria().endsWith(L"")).size(), all - 1);
}

TEST_F(TextCriteria, MatchIsThePatternAsItStands) {
  EXPECT_THAT(meeting(StringCriteria().match(L"metre")), ElementsAre("Metre", "metre"));
  EXPECT_THAT(meeting(StringCriteria().match(L"%m_tre")), ElementsAre("Metre", "metre", "millimetre"));
  EXPECT_THAT(meeting(StringCriteria().match(L"")), ElementsAre(""));
}

TEST_F(TextCriteria, OperandsAreParametersAndNoPartsOfTheStatement) {
  startWatching();
  meeting(StringCriteria().contains(L"' OR 1=1 --"));
  for (const std::string& statement : sql.beginningWith("SELECT")) {
    EXPECT_EQ(statement.find("OR 1=1"), std::string::npos);
    EXPECT_NE(statement.find("LIKE ?"), std::string::npos) << statement;
  }
}

TEST_F(TextCriteria, WithoutAConditionTheStatementHoldsTheLiteralTrue) {
  startWatching();
  db->count<Unit>();
  EXPECT_EQ(sql.beginningWith("SELECT").at(0), R"(SELECT count("tessel_Unit"."id") FROM "tessel_Unit" WHERE 1)");
}

// Conditions on a number.

class NumberCriteriaTest : public ReactingProject {
protected:
  NumberCriteriaTest() {
    const auto length = db->get<Measure>(NameKey(L"LENGTH"));
    for (const double scale : {-1.0, 0.0, 0.5, 1.0, 1000.0}) {
      const OdString name = OdString::format(L"%g", scale);
      db->save(Unit::create(name, name, scale, length));
    }
  }

  Names meeting(const NumberCriteria& scale) {
    UnitCriteria criteria;
    criteria.scale = scale;
    return found<Unit>(*db, criteria);
  }
};

TEST_F(NumberCriteriaTest, EachModeIsItsComparison) {
  EXPECT_EQ(meeting(NumberCriteria()).size(), 5U);
  EXPECT_EQ(meeting(NumberCriteria().equals(1).anything()).size(), 5U);
  EXPECT_THAT(meeting(NumberCriteria().unset()), IsEmpty());
  EXPECT_EQ(meeting(NumberCriteria().set()).size(), 5U);
  EXPECT_THAT(meeting(NumberCriteria().equals(0.5)), UnorderedElementsAre("0.5"));
  EXPECT_THAT(meeting(NumberCriteria().notEquals(0.5)), UnorderedElementsAre("-1", "0", "1", "1000"));
  EXPECT_THAT(meeting(NumberCriteria().less(0.5)), UnorderedElementsAre("-1", "0"));
  EXPECT_THAT(meeting(NumberCriteria().lessOrEqual(0.5)), UnorderedElementsAre("-1", "0", "0.5"));
  EXPECT_THAT(meeting(NumberCriteria().greater(0.5)), UnorderedElementsAre("1", "1000"));
  EXPECT_THAT(meeting(NumberCriteria().greaterOrEqual(0.5)), UnorderedElementsAre("0.5", "1", "1000"));
}

TEST_F(NumberCriteriaTest, NumbersAreComparedExactly) {
  EXPECT_THAT(meeting(NumberCriteria().equals(std::nextafter(0.5, 1.0))), IsEmpty());
  EXPECT_THAT(meeting(NumberCriteria().equals(-0.0)), UnorderedElementsAre("0"));
}

TEST_F(NumberCriteriaTest, InfinitiesAreOutsideOfAllNumbers) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(meeting(NumberCriteria().less(infinity)).size(), 5U);
  EXPECT_THAT(meeting(NumberCriteria().lessOrEqual(-infinity)), IsEmpty());
}

// SQLite has no such number and compares with NULL.
TEST_F(NumberCriteriaTest, NothingComparesWithWhatIsNoNumber) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_THAT(meeting(NumberCriteria().equals(nan)), IsEmpty());
  EXPECT_THAT(meeting(NumberCriteria().notEquals(nan)), IsEmpty());
}

// Several conditions.

class CombinedCriteria : public ReactingProject {
protected:
  TsSmartPtr<const Measure> length = db->get<Measure>(NameKey(L"LENGTH"));
  TsSmartPtr<const Measure> area = db->get<Measure>(NameKey(L"AREA"));
};

TEST_F(CombinedCriteria, AllOfAUnitMustHold) {
  db->save(Unit::create(L"a", L"x", 1, length));
  db->save(Unit::create(L"b", L"x", 1, area));
  db->save(Unit::create(L"c", L"y", 1, length));
  db->save(Unit::create(L"d", L"z", 2, length));
  UnitCriteria criteria;
  EXPECT_THAT(found<Unit>(*db, criteria), UnorderedElementsAre("a", "b", "c", "d"));
  criteria.measure_id = length->id();
  EXPECT_THAT(found<Unit>(*db, criteria), UnorderedElementsAre("a", "c", "d"));
  criteria.scale.equals(1);
  EXPECT_THAT(found<Unit>(*db, criteria), UnorderedElementsAre("a", "c"));
  criteria.label.equals(L"x");
  EXPECT_THAT(found<Unit>(*db, criteria), UnorderedElementsAre("a"));
  criteria.name.notEquals(L"a");
  EXPECT_THAT(found<Unit>(*db, criteria), IsEmpty());
}

TEST_F(CombinedCriteria, AnOwnerWithoutAMatchFindsNothing) {
  db->save(Unit::create(L"a", L"x", 1, length));
  UnitCriteria criteria;
  criteria.measure_id = 99;
  EXPECT_THAT(found<Unit>(*db, criteria), IsEmpty());
}

}  // namespace
}  // namespace tessel::test
