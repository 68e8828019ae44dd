#include <set>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include <tessel/smart_ptr.h>

namespace tessel::test {
namespace {

/// Counts what a pointer does to it.
struct Target {
  explicit Target(std::string* log = nullptr, std::string name = {}) : log_(log), name_(std::move(name)) {}
  virtual ~Target() = default;

  void addRef() {
    ++count;
    ++added;
    if (log_) *log_ += "+" + name_;
  }
  void release() {
    --count;
    if (log_) *log_ += "-" + name_;
  }

  int count = 0;
  int added = 0;

private:
  std::string* log_;
  std::string name_;
};

struct DerivedTarget : Target {};

/// Lets go of what it holds when its last reference goes, as an object does.
struct Link {
  void addRef() { ++count; }
  void release() {
    if (--count == 0) next.reset();
  }

  int count = 0;
  TsSmartPtr<Link> next;
};

TEST(TsSmartPtr, IsNullByItself) {
  const TsSmartPtr<Target> pointer;
  EXPECT_TRUE(pointer.isNull());
  EXPECT_FALSE(pointer);
  EXPECT_EQ(pointer.get(), nullptr);
  EXPECT_TRUE(pointer == nullptr);
  EXPECT_TRUE(TsSmartPtr<Target>(nullptr).isNull());
  EXPECT_TRUE(TsSmartPtr<Target>(static_cast<Target*>(nullptr)).isNull());
}

TEST(TsSmartPtr, HoldsOneReferenceAsLongAsItLives) {
  Target target;
  {
    const TsSmartPtr<Target> pointer(&target);
    EXPECT_EQ(target.count, 1);
    EXPECT_EQ(pointer.get(), &target);
    EXPECT_EQ(&*pointer, &target);
    EXPECT_EQ(pointer->added, 1);
  }
  EXPECT_EQ(target.count, 0);
}

TEST(TsSmartPtr, CopyAddsAReference) {
  Target target;
  const TsSmartPtr<Target> pointer(&target);
  const TsSmartPtr<Target> copy(pointer);
  EXPECT_EQ(target.count, 2);
  EXPECT_TRUE(copy == pointer);
}

TEST(TsSmartPtr, MoveTransfersTheReferenceAndLeavesNull) {
  Target target;
  TsSmartPtr<Target> source(&target);
  TsSmartPtr<Target> moved(std::move(source));
  EXPECT_EQ(target.added, 1);
  EXPECT_TRUE(source.isNull());
  TsSmartPtr<Target> assigned;
  assigned = std::move(moved);
  EXPECT_EQ(target.added, 1);
  EXPECT_EQ(target.count, 1);
  EXPECT_TRUE(moved.isNull());
}

TEST(TsSmartPtr, MoveAssignmentReleasesTheOldTarget) {
  Target old;
  Target target;
  TsSmartPtr<Target> pointer(&old);
  TsSmartPtr<Target> source(&target);
  pointer = std::move(source);
  EXPECT_EQ(old.count, 0);
  EXPECT_EQ(target.count, 1);
}

TEST(TsSmartPtr, MovedToItselfKeepsItsTarget) {
  Target target;
  TsSmartPtr<Target> pointer(&target);
  TsSmartPtr<Target>& same = pointer;
  pointer = std::move(same);
  EXPECT_EQ(pointer.get(), &target);
  EXPECT_EQ(target.count, 1);
}

TEST(TsSmartPtr, AssignmentReleasesTheOldTargetBeforeItAddsToTheNewOne) {
  std::string log;
  Target old(&log, "old");
  Target next(&log, "next");
  TsSmartPtr<Target> pointer(&old);
  const TsSmartPtr<Target> source(&next);
  log.clear();
  pointer = source;
  EXPECT_EQ(log, "-old+next");
}

TEST(TsSmartPtr, AssignmentOfTheTargetThatIsThereDoesNothing) {
  Target target;
  TsSmartPtr<Target> pointer(&target);
  const TsSmartPtr<Target> other(&target);
  const int before = target.added;
  pointer = other;
  pointer = &target;
  EXPECT_EQ(target.added, before);
  EXPECT_EQ(target.count, 2);
}

TEST(TsSmartPtr, AssignmentOfNullReleases) {
  Target target;
  TsSmartPtr<Target> pointer(&target);
  pointer = nullptr;
  EXPECT_EQ(target.count, 0);
  EXPECT_TRUE(pointer.isNull());
}

TEST(TsSmartPtr, ResetReleasesOnce) {
  Target target;
  TsSmartPtr<Target> pointer(&target);
  pointer.reset();
  pointer.reset();
  EXPECT_EQ(target.count, 0);
  EXPECT_TRUE(pointer.isNull());
}

TEST(TsSmartPtr, DetachHandsTheReferenceOver) {
  Target target;
  TsSmartPtr<Target> pointer(&target);
  EXPECT_EQ(pointer.detach(), &target);
  EXPECT_TRUE(pointer.isNull());
  EXPECT_EQ(target.count, 1);
}

TEST(TsSmartPtr, MovesWhatOnlyItsOldTargetHeld) {
  Link first;
  Link second;
  first.next = &second;
  TsSmartPtr<Link> pointer(&first);
  pointer = std::move(pointer->next);
  EXPECT_EQ(pointer.get(), &second);
  EXPECT_EQ(first.count, 0);
  EXPECT_EQ(second.count, 1);
}

TEST(TsSmartPtr, TakesOverAReferenceThatWasAddedBefore) {
  Target target;
  target.addRef();
  {
    const TsSmartPtr<Target> pointer(&target, AttachReference{});
    EXPECT_EQ(target.count, 1);
  }
  EXPECT_EQ(target.count, 0);
}

TEST(TsSmartPtr, ConvertsToConstAndToTheBaseButNotBack) {
  EXPECT_TRUE((std::is_convertible_v<TsSmartPtr<Target>, TsSmartPtr<const Target>>));
  EXPECT_FALSE((std::is_convertible_v<TsSmartPtr<const Target>, TsSmartPtr<Target>>));
  EXPECT_TRUE((std::is_convertible_v<TsSmartPtr<DerivedTarget>, TsSmartPtr<Target>>));
  EXPECT_FALSE((std::is_convertible_v<TsSmartPtr<Target>, TsSmartPtr<DerivedTarget>>));
  EXPECT_FALSE((std::is_same_v<TsSmartPtr<Target>, TsSmartPtr<const Target>>));

  DerivedTarget target;
  TsSmartPtr<DerivedTarget> derived(&target);
  const TsSmartPtr<const Target> shared = derived;
  EXPECT_EQ(target.count, 2);
  const TsSmartPtr<const Target> moved = std::move(derived);
  EXPECT_EQ(target.count, 2);
  EXPECT_TRUE(derived.isNull());
  EXPECT_TRUE(shared == moved);
}

TEST(TsSmartPtr, CountsConstTargetsToo) {
  Target target;
  {
    const TsSmartPtr<const Target> pointer(&target);
    EXPECT_EQ(target.count, 1);
  }
  EXPECT_EQ(target.count, 0);
}

TEST(TsSmartPtr, ComparesTheTargets) {
  Target targets[2];
  const TsSmartPtr<Target> first(&targets[0]);
  const TsSmartPtr<const Target> again(&targets[0]);
  const TsSmartPtr<Target> second(&targets[1]);
  EXPECT_TRUE(first == again);
  EXPECT_FALSE(first != again);
  EXPECT_TRUE(first != second);
  EXPECT_TRUE(first != nullptr);
  EXPECT_TRUE(nullptr != first);
  EXPECT_FALSE(nullptr == first);
}

TEST(TsSmartPtr, IsOrderedByTheAddressOfItsTarget) {
  Target targets[2];
  std::set<TsSmartPtr<Target>> ordered = {&targets[1], &targets[0], &targets[1]};
  ASSERT_EQ(ordered.size(), 2U);
  EXPECT_EQ(ordered.begin()->get(), &targets[0]);
}

}  // namespace
}  // namespace tessel::test
