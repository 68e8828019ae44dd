#include "support/printers.h"

#include <gtest/gtest.h>

namespace {

TEST(Printers, ShowTextsReadable) {
  EXPECT_EQ(testing::PrintToString(OdString(L"Wall \u00E4")), "\"Wall \\u00E4\"");
  EXPECT_EQ(testing::PrintToString(OdString(u"\xD800")), "\"\\uD800\"");
  EXPECT_EQ(testing::PrintToString(OdString()), "\"\"");
}

}  // namespace
