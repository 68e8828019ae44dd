#include <tessel/import_errors.h>

#include <stdexcept>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>
#include <tessel/exceptions.h>

namespace {

template <typename Error>
class ImportErrors : public ::testing::Test {};

using Errors = ::testing::Types<tessel::ReadError, tessel::KeyError, tsutils::json::ValueError>;
TYPED_TEST_SUITE(ImportErrors, Errors);

TYPED_TEST(ImportErrors, CarryTheirText) { EXPECT_STREQ(TypeParam(std::string("no key")).what(), "no key"); }

TYPED_TEST(ImportErrors, AreOutsideTheTreeOfTheCore) {
  EXPECT_TRUE((std::is_base_of_v<std::runtime_error, TypeParam>));
  EXPECT_FALSE((std::is_base_of_v<tessel::Exception, TypeParam>));
}

TYPED_TEST(ImportErrors, AreMadeOfATextOrOfEachOther) {
  EXPECT_FALSE(std::is_default_constructible_v<TypeParam>);
  EXPECT_FALSE((std::is_convertible_v<std::string, TypeParam>));
  EXPECT_TRUE(std::is_copy_constructible_v<TypeParam>);
  EXPECT_TRUE(std::is_copy_assignable_v<TypeParam>);
}

TYPED_TEST(ImportErrors, AreCaughtByNameAndAsRuntimeErrors) {
  EXPECT_THROW(throw TypeParam("text"), TypeParam);
  EXPECT_THROW(throw TypeParam("text"), std::runtime_error);
}

TEST(ImportErrorClasses, AreThree) {
  EXPECT_FALSE((std::is_base_of_v<tessel::ReadError, tessel::KeyError>));
  EXPECT_FALSE((std::is_base_of_v<tessel::KeyError, tessel::ReadError>));
  EXPECT_FALSE((std::is_base_of_v<tsutils::json::ValueError, tessel::ReadError>));
}

}  // namespace
