#include <tessel/platform/od_smart_ptr.h>

#include <set>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

namespace {

struct Counted {
  int references = 0;
  int added = 0;

  void addRef() {
    ++references;
    ++added;
  }
  virtual void release() { --references; }
  virtual ~Counted() = default;
};

struct Derived : Counted {};

using Ptr = OdSmartPtr<Counted>;
using ConstPtr = OdSmartPtr<const Counted>;

TEST(OdSmartPtr, IsNullAtFirst) {
  const Ptr pointer;
  EXPECT_TRUE(pointer.isNull());
  EXPECT_FALSE(pointer);
  EXPECT_EQ(pointer.get(), nullptr);
  EXPECT_TRUE(Ptr(nullptr).isNull());
  EXPECT_TRUE(Ptr(static_cast<Counted*>(nullptr)).isNull());
}

TEST(OdSmartPtr, HoldsOneReferenceForItsLife) {
  Counted object;
  {
    const Ptr pointer = &object;
    EXPECT_EQ(object.references, 1);
    EXPECT_EQ(pointer.get(), &object);
    EXPECT_EQ(&*pointer, &object);
    EXPECT_EQ(pointer->references, 1);
    EXPECT_FALSE(pointer.isNull());
    EXPECT_TRUE(pointer);
  }
  EXPECT_EQ(object.references, 0);
}

TEST(OdSmartPtr, AttachTakesAReferenceOver) {
  Counted object;
  object.addRef();
  { const Ptr pointer(&object, OdAttach{}); }
  EXPECT_EQ(object.references, 0);
  EXPECT_EQ(object.added, 1);
}

TEST(OdSmartPtr, DetachHandsItsReferenceOut) {
  Counted object;
  Ptr pointer = &object;
  EXPECT_EQ(pointer.detach(), &object);
  EXPECT_TRUE(pointer.isNull());
  EXPECT_EQ(object.references, 1);
}

TEST(OdSmartPtr, CopiesCount) {
  Counted object;
  const Ptr one = &object;
  Ptr two = one;
  EXPECT_EQ(object.references, 2);
  Ptr three;
  three = two;
  EXPECT_EQ(object.references, 3);
  three = nullptr;
  two = {};
  EXPECT_EQ(object.references, 1);
}

TEST(OdSmartPtr, MovesDoNotCount) {
  EXPECT_TRUE(std::is_nothrow_move_constructible_v<Ptr>);
  EXPECT_TRUE(std::is_nothrow_move_assignable_v<Ptr>);
  Counted object;
  Ptr one = &object;
  Ptr two = std::move(one);
  EXPECT_TRUE(one.isNull());  // NOLINT(bugprone-use-after-move)
  one = std::move(two);
  EXPECT_TRUE(two.isNull());  // NOLINT(bugprone-use-after-move)
  const ConstPtr three = std::move(one);
  EXPECT_TRUE(one.isNull());  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(object.added, 1);
  EXPECT_EQ(object.references, 1);
}

TEST(OdSmartPtr, AssignmentLetsTheOldObjectGo) {
  Counted old;
  Counted next;
  Ptr pointer = &old;
  pointer = &next;
  EXPECT_EQ(old.references, 0);
  EXPECT_EQ(next.references, 1);
}

TEST(OdSmartPtr, AssignmentToItselfKeepsTheObject) {
  Counted object;
  Ptr pointer = &object;
  const Ptr& same = pointer;
  pointer = same;
  EXPECT_EQ(object.references, 1);
  EXPECT_EQ(pointer.get(), &object);
}

struct Node : Counted {
  Ptr next;

  void release() override {
    Counted::release();
    if (references == 0) next = nullptr;
  }
};

TEST(OdSmartPtr, AssignmentTakesTheNewObjectBeforeItLetsTheOldOneGo) {
  Counted tail;
  Node head;
  head.next = &tail;
  OdSmartPtr<Counted> pointer = &head;
  pointer = static_cast<Node*>(pointer.get())->next;
  EXPECT_EQ(pointer.get(), &tail);
  EXPECT_EQ(tail.references, 1);
}

TEST(OdSmartPtr, ConvertsToBasesAndToConstOnly) {
  EXPECT_TRUE((std::is_convertible_v<OdSmartPtr<Derived>, Ptr>));
  EXPECT_TRUE((std::is_convertible_v<Ptr, ConstPtr>));
  EXPECT_TRUE((std::is_convertible_v<OdSmartPtr<Derived>, ConstPtr>));
  EXPECT_FALSE((std::is_convertible_v<Ptr, OdSmartPtr<Derived>>));
  EXPECT_FALSE((std::is_convertible_v<ConstPtr, Ptr>));
  EXPECT_FALSE((std::is_convertible_v<Ptr, bool>));
  Derived object;
  const OdSmartPtr<Derived> derived = &object;
  const ConstPtr base = derived;
  EXPECT_EQ(object.references, 2);
}

TEST(OdSmartPtr, ComparesByTheObject) {
  Counted object;
  Counted other;
  const Ptr pointer = &object;
  const ConstPtr same = pointer;
  EXPECT_TRUE(pointer == same);
  EXPECT_FALSE(pointer != same);
  EXPECT_TRUE(pointer == &object);
  EXPECT_TRUE(same == &object);
  EXPECT_TRUE(pointer != &other);
  EXPECT_TRUE(pointer != nullptr);
  EXPECT_TRUE(Ptr() == nullptr);
  EXPECT_TRUE(pointer != Ptr(&other));
  const std::set<Ptr> both = {&object, &other, pointer};
  EXPECT_EQ(both.size(), 2u);
}

}  // namespace
