#include <tessel/platform/od_error.h>

#include <exception>
#include <type_traits>

#include <gtest/gtest.h>

namespace {

TEST(OdResult, HasTheNumbersThatHostsKnow) {
  EXPECT_EQ(eOk, 0);
  EXPECT_EQ(eOutOfMemory, 9);
  EXPECT_EQ(eClassNotRegistered, 255);
  EXPECT_EQ(eClassAlreadyRegistered, 313);
  EXPECT_EQ(sizeof(OdResult), sizeof(int));
}

TEST(OdError, CarriesItsCode) {
  EXPECT_EQ(OdError(eClassNotRegistered).code(), 255);
  EXPECT_EQ(OdError(static_cast<OdResult>(4711)).code(), 4711);
}

TEST(OdError, IsNoStandardException) {
  EXPECT_FALSE((std::is_base_of_v<std::exception, OdError>));
  EXPECT_FALSE((std::is_convertible_v<OdResult, OdError>));
}

}  // namespace
