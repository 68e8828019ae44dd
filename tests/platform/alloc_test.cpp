#include <tessel/platform/alloc.h>

#include <cstdint>
#include <cstring>
#include <list>
#include <string>

#include <gtest/gtest.h>

namespace {

constexpr std::size_t impossible = std::size_t{PTRDIFF_MAX} + 1;
// Small enough to be asked for, larger than any machine.
constexpr std::size_t exhausting = PTRDIFF_MAX - 64;

TEST(OdrxAlloc, GivesABlockOfItsOwnThatCanBeWritten) {
  void* const one = odrxAlloc(1000);
  void* const two = odrxAlloc(1000);
  ASSERT_NE(one, nullptr);
  ASSERT_NE(two, nullptr);
  std::memset(one, 1, 1000);
  std::memset(two, 2, 1000);
  EXPECT_EQ(static_cast<char*>(one)[999], 1);
  odrxFree(one);
  odrxFree(two);
}

TEST(OdrxAlloc, GivesABlockOfNoBytesToo) {
  void* const block = odrxAlloc(0);
  EXPECT_NE(block, nullptr);
  odrxFree(block);
}

TEST(OdrxAlloc, AlignsForEveryOrdinaryType) {
  void* const block = odrxAlloc(1);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t), 0u);
  odrxFree(block);
}

TEST(OdrxAlloc, AnswersWithNullWhenThereIsNoMemory) {
  EXPECT_EQ(odrxAlloc(impossible), nullptr);
  EXPECT_EQ(odrxAlloc(SIZE_MAX), nullptr);
  EXPECT_EQ(odrxAlloc(exhausting), nullptr);
}

TEST(OdrxFree, WelcomesNull) { odrxFree(nullptr); }

TEST(OdrxRealloc, KeepsTheContents) {
  char* block = static_cast<char*>(odrxAlloc(8));
  std::memcpy(block, "1234567", 8);
  block = static_cast<char*>(odrxRealloc(block, 100000));
  ASSERT_NE(block, nullptr);
  EXPECT_STREQ(block, "1234567");
  std::memset(block, 'x', 100000);
  block = static_cast<char*>(odrxRealloc(block, 4));
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(std::string(block, 4), "xxxx");
  odrxFree(block);
}

TEST(OdrxRealloc, MakesABlockFromNull) {
  void* const block = odrxRealloc(nullptr, 10);
  EXPECT_NE(block, nullptr);
  odrxFree(block);
}

TEST(OdrxRealloc, GivesABlockForASizeOfZero) {
  void* const block = odrxRealloc(odrxAlloc(10), 0);
  EXPECT_NE(block, nullptr);
  odrxFree(block);
}

TEST(OdrxRealloc, LeavesTheOldBlockWhenThereIsNoMemory) {
  char* const block = static_cast<char*>(odrxAlloc(8));
  std::memcpy(block, "1234567", 8);
  EXPECT_EQ(odrxRealloc(block, impossible), nullptr);
  EXPECT_EQ(odrxRealloc(block, exhausting), nullptr);
  EXPECT_STREQ(block, "1234567");
  odrxFree(block);
}

TEST(OdAllocator, ServesContainers) {
  std::list<double, OdAllocator<double>> numbers;
  for (int i = 0; i < 1000; ++i) numbers.push_back(i);
  const std::list<double, OdAllocator<double>> copy = numbers;
  EXPECT_EQ(copy.size(), 1000u);
  EXPECT_EQ(copy.back(), 999.0);
  EXPECT_EQ(copy.get_allocator(), numbers.get_allocator());
  EXPECT_FALSE(copy.get_allocator() != OdAllocator<char>());
}

TEST(OdAllocator, ThrowsResult9WhenMemoryIsExhausted) {
  for (const std::size_t count : {impossible, SIZE_MAX, exhausting / sizeof(int)}) {
    try {
      OdAllocator<int>().deallocate(OdAllocator<int>().allocate(count), count);
      ADD_FAILURE() << "memory for " << count << " numbers";
    } catch (const OdError& error) {
      EXPECT_EQ(error.code(), 9);
    }
  }
}

// The bytes of this many numbers do not fit in a size, and must not be taken for the few that remain.
TEST(OdAllocator, DoesNotLetTheSizeOverflow) {
  EXPECT_THROW((void)OdAllocator<int>().allocate(SIZE_MAX / sizeof(int) + 2), OdError);
}

}  // namespace
