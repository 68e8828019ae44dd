#include <exception>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/samples.h"

namespace tessel::test {
namespace {

template <typename E>
std::wstring textOf(const E& exception) {
  const Exception& root = exception;
  return root.what();
}

/// Whether a handler for `Caught` catches a `Thrown`.
template <typename Caught, typename Thrown>
bool catches() {
  try {
    throw Thrown();
  } catch (const Caught&) {
    return true;
  } catch (...) {
    return false;
  }
}

TEST(Exceptions, HaveFixedTexts) {
  EXPECT_EQ(textOf(WrongUnit()), L"Wrong unit");
  EXPECT_EQ(textOf(UnitConversionNotPossible()), L"Unit conversion not possible");
  EXPECT_EQ(textOf(InvalidUnitConversion()), L"Invalid unit conversion");
  EXPECT_EQ(textOf(DatabaseException()), L"Project database exception");
  EXPECT_EQ(textOf(ObjectNotFound()), L"Object not found");
  EXPECT_EQ(textOf(AlreadyInTransaction()), L"Transaction already in progress in this thread");
  EXPECT_EQ(textOf(Recoverable()), L"Recoverable exception");
  EXPECT_EQ(textOf(ForcedRollback()), L"Forced rollback");
  EXPECT_EQ(textOf(ObjectInUse()), L"Object is still referenced by other object");
}

TEST(Exceptions, KeepTheirTextsBeyondTheirOwnLives) {
  const wchar_t* const text = std::make_unique<DatabaseException>()->what();
  EXPECT_EQ(std::wstring(text), L"Project database exception");
}

TEST(Exceptions, FormATree) {
  EXPECT_TRUE((catches<UnitException, WrongUnit>()));
  EXPECT_TRUE((catches<UnitException, UnitConversionNotPossible>()));
  EXPECT_TRUE((catches<UnitException, InvalidUnitConversion>()));
  EXPECT_TRUE((catches<TransactionException, AlreadyInTransaction>()));
  EXPECT_TRUE((catches<Recoverable, ForcedRollback>()));
  EXPECT_TRUE((catches<ConsistencyError, ObjectInUse>()));
  EXPECT_TRUE((catches<ConsistencyError, ObjectNotUnique>()));
}

TEST(Exceptions, AreAllCaughtAtTheRoot) {
  EXPECT_TRUE((catches<Exception, WrongUnit>()));
  EXPECT_TRUE((catches<Exception, UnitConversionNotPossible>()));
  EXPECT_TRUE((catches<Exception, InvalidUnitConversion>()));
  EXPECT_TRUE((catches<Exception, DatabaseException>()));
  EXPECT_TRUE((catches<Exception, ObjectNotFound>()));
  EXPECT_TRUE((catches<Exception, AlreadyInTransaction>()));
  EXPECT_TRUE((catches<Exception, Recoverable>()));
  EXPECT_TRUE((catches<Exception, ForcedRollback>()));
  EXPECT_TRUE((catches<Exception, ObjectInUse>()));
  EXPECT_TRUE((catches<Exception, ObjectNotUnique>()));
}

TEST(Exceptions, OfOneBranchAreNotCaughtInAnother) {
  EXPECT_FALSE((catches<ConsistencyError, DatabaseException>()));
  EXPECT_FALSE((catches<Recoverable, DatabaseException>()));
  EXPECT_FALSE((catches<ForcedRollback, Recoverable>()));
  EXPECT_FALSE((catches<DatabaseException, ForcedRollback>()));
  EXPECT_FALSE((catches<DatabaseException, ObjectNotFound>()));
  EXPECT_FALSE((catches<ConsistencyError, ObjectNotFound>()));
}

TEST(Exceptions, AreNoStandardExceptions) {
  EXPECT_FALSE((catches<std::exception, DatabaseException>()));
  EXPECT_FALSE((catches<std::exception, ObjectNotUnique>()));
  EXPECT_FALSE((std::is_base_of_v<std::exception, Exception>));
}

TEST(Exceptions, ThatAreThereToBeCaughtCannotBeThrown) {
  EXPECT_TRUE(std::is_abstract_v<Exception>);
  EXPECT_TRUE(std::is_abstract_v<UnitException>);
  EXPECT_TRUE(std::is_abstract_v<TransactionException>);
  EXPECT_TRUE(std::is_abstract_v<ConsistencyError>);
  EXPECT_FALSE(std::is_abstract_v<Recoverable>);
}

template <typename E>
constexpr bool isValue = std::is_default_constructible_v<E>&& std::is_copy_constructible_v<E>&&
  std::is_move_constructible_v<E>&& std::is_copy_assignable_v<E>&& std::is_move_assignable_v<E>;

TEST(Exceptions, CanBeCopiedMovedAndAssigned) {
  EXPECT_TRUE((isValue<WrongUnit>));
  EXPECT_TRUE((isValue<UnitConversionNotPossible>));
  EXPECT_TRUE((isValue<InvalidUnitConversion>));
  EXPECT_TRUE((isValue<DatabaseException>));
  EXPECT_TRUE((isValue<ObjectNotFound>));
  EXPECT_TRUE((isValue<AlreadyInTransaction>));
  EXPECT_TRUE((isValue<Recoverable>));
  EXPECT_TRUE((isValue<ForcedRollback>));
  EXPECT_TRUE((isValue<ObjectInUse>));
  EXPECT_TRUE((isValue<ObjectNotUnique>));
}

TEST(ObjectNotUnique, SaysWhichMemberClashed) {
  const ObjectNotUnique exception(L"name");
  EXPECT_EQ(textOf(exception), L"An other object with the same values exists: name");
  EXPECT_EQ(exception.member(), L"name");
}

TEST(ObjectNotUnique, WithoutAMemberSaysTheBareText) {
  const ObjectNotUnique exception;
  EXPECT_EQ(textOf(exception), L"An other object with the same values exists");
  EXPECT_TRUE(exception.member().isEmpty());
}

TEST(ObjectNotUnique, WithAnEmptyMemberKeepsTheColon) {
  const ObjectNotUnique exception(L"");
  EXPECT_EQ(textOf(exception), L"An other object with the same values exists: ");
  EXPECT_TRUE(exception.member().isEmpty());
}

TEST(ObjectNotUnique, SpellsMembersBeyondTheBasicPlane) {
  EXPECT_EQ(textOf(ObjectNotUnique(u"\U0001F3E0")), L"An other object with the same values exists: \U0001F3E0");
}

TEST(ObjectNotUnique, CopiesHaveATextOfTheirOwn) {
  auto original = std::make_unique<ObjectNotUnique>(L"name");
  const ObjectNotUnique copy(*original);
  ObjectNotUnique assigned;
  assigned = *original;
  const ObjectNotUnique moved(std::move(*original));
  original.reset();
  for (const ObjectNotUnique* const exception : {&copy, static_cast<const ObjectNotUnique*>(&assigned), &moved}) {
    EXPECT_EQ(textOf(*exception), L"An other object with the same values exists: name");
    EXPECT_EQ(exception->member(), L"name");
  }
}

template <typename E, typename Body>
std::wstring textThrownBy(Body&& body) {
  try {
    body();
  } catch (const E& exception) {
    return exception.what();
  }
  return L"nothing of that class";
}

TEST(FailedStatement, IsTheSameTextWhateverSqliteSays) {
  SampleProject project;
  project.raw().exec("DROP TABLE tessel_Story");
  EXPECT_EQ(textThrownBy<DatabaseException>([&] { project.db->count<Story>(); }), L"Project database exception");
  EXPECT_EQ(textThrownBy<DatabaseException>([&] { project.db->save(makeSample<Story>()); }),
            L"Project database exception");
}

TEST(FailedStatement, InAnOperationOfItsOwnLeavesNoTrace) {
  SampleProject project;
  project.raw().exec("DROP TABLE tessel_Story");
  EXPECT_THROW(project.db->save(makeSample<Story>()), DatabaseException);
  EXPECT_EQ(project.count("tessel_SpatialStructure"), 0);
  EXPECT_EQ(project.count("tessel_Building"), 0);
}

TEST(FailedStatement, LeavesTheObjectsThatItCrossedAsTheyWere) {
  SampleProject project;
  project.raw().exec("DROP TABLE tessel_Story");
  const auto story = makeSample<Story>();
  const auto before = valuesOf(*story->building()->site());
  EXPECT_THROW(project.db->save(story), DatabaseException);
  EXPECT_EQ(valuesOf(*story->building()->site()), before);
  EXPECT_TRUE(story->isDirty());
  // What was inserted and rolled back is not restored in memory: the host drops it.
  EXPECT_NE(story->building()->id(), 0U);
}

TEST(FailedStatement, InALookupIsADatabaseException) {
  SampleProject project;
  project.raw().exec("DROP TABLE tessel_Unit; DROP TABLE tessel_DefaultUnit; DROP TABLE tessel_ColumnUnit");
  std::vector<TsSmartPtr<Unit>> units;
  EXPECT_THROW(project.db->get(units), DatabaseException);
  EXPECT_THROW(project.db->get<Unit>(NameKey(L"metre")), DatabaseException);
  EXPECT_THROW(project.db->get<Unit>(1U), DatabaseException);
  EXPECT_THROW(project.db->defaultUnit(L"LENGTH"), DatabaseException);
  EXPECT_THROW(project.db->columnUnit(&Story::elevation), DatabaseException);
  EXPECT_THROW(project.db->setDefaultUnit(makeSample<Unit>()), DatabaseException);
}

TEST(MissingRow, OfAChangedObjectIsObjectNotFound) {
  SampleProject project;
  const auto site = project.db->save(makeSample<Site>());
  project.raw().exec("DELETE FROM tessel_Site; DELETE FROM tessel_SpatialStructure");
  site->set_town(L"Bergen");
  EXPECT_EQ(textThrownBy<ObjectNotFound>([&] { site->save(); }), L"Object not found");
}

TEST(TakenName, IsObjectNotUniqueWithItsMember) {
  SampleProject project;
  project.db->save(Site::create(L"Harbour"));
  try {
    project.db->save(Site::create(L"Harbour"));
    FAIL() << "the name was taken";
  } catch (const ConsistencyError& error) {
    EXPECT_EQ(dynamic_cast<const ObjectNotUnique&>(error).member(), L"name");
    EXPECT_EQ(std::wstring(error.what()), L"An other object with the same values exists: name");
  }
}

TEST(SecondCurrentTransaction, IsAlreadyInTransaction) {
  SampleProject project;
  const Transaction first(project.db, Transaction::BeginCurrent);
  EXPECT_EQ(textThrownBy<TransactionException>([&] { Transaction(project.db, Transaction::BeginCurrent); }),
            L"Transaction already in progress in this thread");
}

}  // namespace
}  // namespace tessel::test
