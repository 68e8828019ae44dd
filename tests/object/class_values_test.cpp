#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <utf8.h>

#include <tessel/tessel.h>

#include "support/samples.h"

// Values that are easily lost or refused on the way into the file and back: each in each field that can hold it.

namespace tessel::test {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const std::vector<OdString> remarkableTexts = {
  L"",
  L" ",
  L"it's \"quoted\" `twice` [and] ';--",
  L"100%_of?it*",
  L"back\\slash \t tab \r\n line",
  OdString(u"\u00E9 \u4E2D \uFFFD \uFFFF"),
  OdString(u"\U00010000 \U0001F3E0 \U0010FFFF"),
  OdString(u"\U0001F468\u200D\U0001F469 e\u0301"),
  OdString(u"with\0zero", 9),
  OdString(u"\0", 1),
  OdString(std::u16string(5000, u'x') + u"\U0001F3E0"),
  L"NULL",
  L"1.0",
};

const std::vector<OdString> brokenTexts = {
  OdString(u"\xD83C", 1),           // first half alone
  OdString(u"\xDFE0", 1),           // second half alone
  OdString(u"a\xDFE0\xD83C z", 5),  // the wrong way round
  OdString(u"long enough to leave the short road \xD83C", 37),
};

std::string hexOf(const OdString& text) {
  std::string hex;
  for (const char byte : text.toUtf8()) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned char>(byte));
    hex += digits;
  }
  return hex;
}

template <typename T>
class ClassValues : public ::testing::Test {
protected:
  SampleProject project;

  std::string hexInFile(const T& object, const std::string& column) const {
    return project.raw().scalarText("SELECT hex(\"" + column + "\") FROM " + Sample<T>::table +
                                    " WHERE \"id\" = " + std::to_string(object.id()));
  }
  std::string typeInFile(const T& object, const std::string& column) const {
    return project.raw().scalarText("SELECT typeof(\"" + column + "\") FROM " + Sample<T>::table +
                                    " WHERE \"id\" = " + std::to_string(object.id()));
  }
};

TYPED_TEST_SUITE(ClassValues, SampledClasses, ClassNames);

TYPED_TEST(ClassValues, EveryTextComesBackAndIsUtf8InTheFile) {
  const auto object = this->project.db->save(makeSample<TypeParam>());
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.setText) continue;
    SCOPED_TRACE(field.column);
    for (const OdString& text : remarkableTexts) {
      field.setText(*object, text);
      ASSERT_TRUE(object->save());
      EXPECT_EQ(field.getText(*this->project.db->template get<TypeParam>(object->id())), text);
      EXPECT_EQ(this->hexInFile(*object, field.column), hexOf(text));
      EXPECT_EQ(this->typeInFile(*object, field.column), "text");
    }
  }
}

template <typename T>
class ClassNameValues : public ClassValues<T> {};

TYPED_TEST_SUITE(ClassNameValues, RenamableClasses, ClassNames);

TYPED_TEST(ClassNameValues, EveryTextCanBeAskedForAsAKey) {
  const Field<TypeParam> name = fieldOf<TypeParam>("name");
  const auto object = this->project.db->save(makeSample<TypeParam>());
  for (const OdString& text : remarkableTexts) {
    name.setText(*object, text);
    ASSERT_TRUE(object->save());
    const auto found = this->project.db->template get<TypeParam>(Sample<TypeParam>::key(*object));
    ASSERT_TRUE(found) << hexOf(text);
    EXPECT_EQ(found->id(), object->id());
    EXPECT_EQ(this->project.db->template count<TypeParam>(Sample<TypeParam>::criteria(*object)), 1U) << hexOf(text);
  }
}

TYPED_TEST(ClassValues, TextThatIsNoUtf16IsRefusedByAnExceptionOfItsOwn) {
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.setText) continue;
    SCOPED_TRACE(field.column);
    for (const OdString& text : brokenTexts) {
      const auto object = makeSample<TypeParam>();
      field.setText(*object, text);
      EXPECT_THROW(this->project.db->save(object), utf8::invalid_utf16);
      EXPECT_EQ(object->id(), 0U);
      EXPECT_TRUE(object->isDirty());
      EXPECT_EQ(object->projectDb(), nullptr);
    }
  }
  const auto references = Sample<TypeParam>::references(*makeSample<TypeParam>());
  EXPECT_EQ(this->project.db->template count<TypeParam>(), SampleProject().db->template count<TypeParam>())
    << "a refused save has left a row, or those of its " << references.size() << " references";
}

TYPED_TEST(ClassValues, TextThatIsNoUtf16LeavesTheRowOfAChangedObjectAlone) {
  const auto saved = this->project.db->save(makeSample<TypeParam>());
  const auto before = this->project.row(Sample<TypeParam>::table, saved->id());
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.setText) continue;
    SCOPED_TRACE(field.column);
    const auto object = this->project.db->template get<TypeParam>(saved->id());
    field.setText(*object, brokenTexts[0]);
    EXPECT_THROW(object->save(), utf8::invalid_utf16);
    EXPECT_TRUE(object->isDirty());
    EXPECT_EQ(object->id(), saved->id());
    EXPECT_EQ(this->project.row(Sample<TypeParam>::table, saved->id()), before);
  }
}

TYPED_TEST(ClassValues, TextThatIsNoUtf16LeavesEarlierWorkOfTheHostIntact) {
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.setText) continue;
    SCOPED_TRACE(field.column);
    SampleProject fresh;
    Transaction transaction(fresh.db, Transaction::BeginCurrent);
    const auto earlier = fresh.db->save(makeSample<TypeParam>(1));
    const auto object = makeSample<TypeParam>(2);
    for (const auto& reference : Sample<TypeParam>::references(*object)) reference->save(fresh.db);
    field.setText(*object, brokenTexts[0]);
    EXPECT_THROW(fresh.db->save(object), utf8::invalid_utf16);
    ASSERT_FALSE(transaction.finalized());

    field.setText(*object, L"mended");
    EXPECT_EQ(fresh.db->save(object), object);
    transaction.commit();
    EXPECT_EQ(fresh.row(Sample<TypeParam>::table, earlier->id()), valuesOf(*earlier));
    EXPECT_EQ(fresh.row(Sample<TypeParam>::table, object->id()), valuesOf(*object));
    EXPECT_EQ(fresh.count(Sample<TypeParam>::table), SampleProject().count(Sample<TypeParam>::table) + 2);
  }
}

TYPED_TEST(ClassValues, AKeyThatIsNoUtf16IsRefusedAndTheNextOneIsFound) {
  const auto object = this->project.db->save(makeSample<TypeParam>());
  const auto good = Sample<TypeParam>::key(*object);
  auto bad = good;
  bad.name = brokenTexts[0];
  for (int round = 0; round < 2; ++round) {
    EXPECT_THROW(this->project.db->template get<TypeParam>(bad), utf8::invalid_utf16);
    EXPECT_TRUE(this->project.db->template get<TypeParam>(good));
  }
}

TYPED_TEST(ClassValues, CriteriaThatAreNoUtf16AreRefused) {
  const auto object = this->project.db->save(makeSample<TypeParam>());
  auto criteria = Sample<TypeParam>::criteria(*object);
  criteria.name.contains(brokenTexts[0]);
  std::vector<TsSmartPtr<TypeParam>> found;
  EXPECT_THROW(this->project.db->get(found, criteria), utf8::invalid_utf16);
  EXPECT_THROW(this->project.db->template count<TypeParam>(criteria), utf8::invalid_utf16);
  EXPECT_TRUE(found.empty());
  this->project.db->get(found);
  EXPECT_FALSE(found.empty());
}

TYPED_TEST(ClassValues, BytesThatAreNoUtf8InTheFileAreRefusedByAnExceptionOfTheirOwn) {
  const auto object = this->project.db->save(makeSample<TypeParam>());
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.setText) continue;
    SCOPED_TRACE(field.column);
    const std::string table = Sample<TypeParam>::table;
    const std::string where = " WHERE \"id\" = " + std::to_string(object->id());
    this->project.raw().exec("UPDATE " + table + " SET \"" + field.column + "\" = CAST(x'41FF' AS TEXT)" + where);
    EXPECT_THROW(this->project.db->template get<TypeParam>(object->id()), utf8::invalid_utf8);
    this->project.raw().exec("UPDATE " + table + " SET \"" + field.column + "\" = 'A'" + where);
    EXPECT_EQ(field.getText(*this->project.db->template get<TypeParam>(object->id())), L"A");
  }
}

TYPED_TEST(ClassValues, EveryNumberComesBackToTheBit) {
  using Limits = std::numeric_limits<double>;
  const auto object = this->project.db->save(makeSample<TypeParam>());
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.setNumber) continue;
    SCOPED_TRACE(field.column);
    for (const double number :
         {1.5, 0.1, 1.0 / 3, 3.0, -2.75, 1e300, Limits::max(), Limits::lowest(), Limits::min(), Limits::denorm_min(),
          Limits::epsilon(), 9007199254740993.0, infinity, -infinity, 0.0}) {
      field.setNumber(*object, number);
      ASSERT_TRUE(object->save());
      EXPECT_EQ(field.getNumber(*this->project.db->template get<TypeParam>(object->id())), number);
      EXPECT_EQ(this->typeInFile(*object, field.column), "real");
    }
  }
}

// The row of a spatial object takes its id from another table, and the persistence layer reports every refusal of such
// an insert as a value that is taken, though it cannot say which.
TYPED_TEST(ClassValues, NotANumberInANewObjectIsARefusedWrite) {
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.setNumber) continue;
    SCOPED_TRACE(field.column);
    const auto object = makeSample<TypeParam>();
    field.setNumber(*object, notANumber);
    try {
      this->project.db->save(object);
      ADD_FAILURE() << "not refused";
    } catch (const ObjectNotUnique& refusal) {
      EXPECT_TRUE(refusal.member().isEmpty());
    }
    EXPECT_EQ(object->id(), 0U);
    EXPECT_EQ(object->projectDb(), nullptr);
    EXPECT_TRUE(object->isDirty());
    EXPECT_EQ(this->project.count(Sample<TypeParam>::table), SampleProject().count(Sample<TypeParam>::table));
    EXPECT_EQ(this->project.count("tessel_SpatialStructure"), 0);
  }
}

TYPED_TEST(ClassValues, NotANumberInAChangedObjectIsADatabaseExceptionThatLeavesEarlierWorkIntact) {
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.setNumber) continue;
    SCOPED_TRACE(field.column);
    SampleProject fresh;
    Transaction transaction(fresh.db, Transaction::BeginCurrent);
    const auto earlier = fresh.db->save(makeSample<TypeParam>(1));
    const auto changed = fresh.db->save(makeSample<TypeParam>(2));
    const auto before = valuesOf(*changed);
    field.setNumber(*changed, notANumber);
    EXPECT_THROW(changed->save(), DatabaseException);
    EXPECT_TRUE(changed->isDirty());
    ASSERT_FALSE(transaction.finalized());
    transaction.commit();
    EXPECT_EQ(fresh.row(Sample<TypeParam>::table, earlier->id()), valuesOf(*earlier));
    EXPECT_EQ(fresh.row(Sample<TypeParam>::table, changed->id()), before);
  }
}

}  // namespace
}  // namespace tessel::test
