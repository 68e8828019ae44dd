#include <type_traits>

#include <gtest/gtest.h>

#include "import/messages.h"
#include "support/message_log.h"
#include "support/printers.h"

namespace tessel::test {
namespace {

static_assert(std::is_base_of_v<std::basic_stringstream<wchar_t>, MessageHandlerStream>);

TEST(MessageHandlerStream, DeliversItsTextWhenItIsDestroyed) {
  ImportMessages messages;
  {
    MessageHandlerStream stream(messages.handler(), 17);
    stream << L"Unknown " << 5 << L' ' << L"\U0001F3E0";
    EXPECT_TRUE(messages.all().empty());
    EXPECT_EQ(stream.severity, ImportSeverity::Warning);
    EXPECT_EQ(stream.offset, 17);
  }
  EXPECT_EQ(messages.all(), (std::vector<ImportMessage>{{ImportSeverity::Warning, u"Unknown 5 \U0001F3E0", 17}}));
}

TEST(MessageHandlerStream, TakesNarrowPiecesToo) {
  ImportMessages messages;
  MessageHandlerStream(messages.handler(), -1) << "narrow " << L"wide" << 'c';
  EXPECT_EQ(messages.all(), (std::vector<ImportMessage>{{ImportSeverity::Warning, u"narrow widec", -1}}));
}

TEST(MessageHandlerStream, DeliversAnEmptyText) {
  ImportMessages messages;
  { const MessageHandlerStream stream(messages.handler(), 0); }
  EXPECT_EQ(messages.all(), (std::vector<ImportMessage>{{ImportSeverity::Warning, u"", 0}}));
}

TEST(MessageHandlerStream, DeliversWhenAnExceptionPasses) {
  ImportMessages messages;
  try {
    MessageHandlerStream stream(messages.handler(), 0);
    stream << L"half";
    throw 1;
  } catch (int) {
  }
  EXPECT_EQ(textsOf(messages.all()), std::vector<OdString>{u"half"});
}

TEST(MessageHandlerStream, HasAHandlerOfItsOwn) {
  ImportMessages messages;
  auto handler = messages.handler();
  {
    MessageHandlerStream stream(handler, 0);
    handler = nullptr;
    stream << L"text";
  }
  EXPECT_EQ(messages.warnings(), 1U);
}

TEST(MessageHandlerStreamDeathTest, WithoutAHandlerEndsTheProcess) {
  EXPECT_DEATH(MessageHandlerStream({}, 0) << L"text", "bad_function_call");
}

}  // namespace
}  // namespace tessel::test
