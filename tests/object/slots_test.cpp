// Hosts are compiled against the tables of virtual operations: an operation that changes its place breaks them without a
// word of the compiler or the linker.

#include <type_traits>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/slots.h"

#if defined(__GXX_ABI_VERSION)

namespace tessel::test {
namespace {

/// Names the operations that only derived classes may name.
struct Insider : Object {
  using Save = TsSmartPtr<Object> (Insider::*)(const std::shared_ptr<ProjectDb>&, IdMapping&);
  using SaveConst = TsSmartPtr<const Object> (Insider::*)(const std::shared_ptr<ProjectDb>&, IdMapping&) const;

  static std::ptrdiff_t slotOfClone() { return slotOf(&Insider::clone); }
  static std::ptrdiff_t slotOfSave() { return slotOf(static_cast<Save>(&Insider::saveImpl)); }
  static std::ptrdiff_t slotOfSaveConst() { return slotOf(static_cast<SaveConst>(&Insider::saveImpl)); }
};

TEST(Slots, OfAnObjectBeginWithThoseOfThePlatform) {
  using QueryX = OdRxObject* (Object::*)(const OdRxClass*) const;
  EXPECT_EQ(slotOf(static_cast<QueryX>(&Object::queryX)), 1);
  EXPECT_EQ(slotOf(&Object::x), 2);
  EXPECT_EQ(slotOf(&Object::isA), 3);
  EXPECT_EQ(slotOf(&Object::addRef), 4);
  EXPECT_EQ(slotOf(&Object::release), 5);
  EXPECT_EQ(slotOf(&Object::numRefs), 6);
  EXPECT_EQ(Insider::slotOfClone(), 7);
  EXPECT_EQ(slotOf(&Object::copyFrom), 8);
  EXPECT_EQ(slotOf(&Object::comparedTo), 9);
  EXPECT_EQ(slotOf(&Object::isEqualTo), 10);
}

TEST(Slots, OfAnObjectAreInTheOrderOfTheInterface) {
  EXPECT_EQ(slotOf(&Object::id), 11);
  EXPECT_EQ(slotOf(&Object::tesselType), 12);
  EXPECT_EQ(slotOf(&Object::isDirty), 13);
  EXPECT_EQ(slotOf(&Object::projectDb), 14);
  EXPECT_EQ(Insider::slotOfSave(), 15);
  EXPECT_EQ(Insider::slotOfSaveConst(), 16);
}

TEST(Slots, OfASpatialObjectFollowThoseOfAnObject) {
  EXPECT_EQ(slotOf(&SpatialStructure::name), 17);
  EXPECT_EQ(slotOf(&SpatialStructure::set_name), 18);
  EXPECT_EQ(slotOf(&SpatialStructure::description), 19);
  EXPECT_EQ(slotOf(&SpatialStructure::set_description), 20);
}

TEST(Slots, OfAReactorOfObjectsAreInTheOrderOfTheInterface) { EXPECT_EQ(slotOf(&ObjectReactor::onObjectDeleted), 1); }

TEST(Slots, OfAnExceptionAreInTheOrderOfTheInterface) { EXPECT_EQ(slotOf(&Exception::what), 1); }

TEST(Slots, OfAReactorOfADatabaseAreInTheOrderOfTheInterface) {
  using Reactor = ProjectDb::Reactor;
  EXPECT_EQ(slotOf(&Reactor::onNameNotUnique), 1);
  EXPECT_EQ(slotOf(&Reactor::onSaved), 2);
  EXPECT_EQ(slotOf(&Reactor::onRemove), 3);
  EXPECT_EQ(slotOf(&Reactor::onLoadFailed), 4);
}

// The library makes these objects and ends them, so the table has no destructor.
TEST(Slots, OfAClashAreFourWithoutADestructor) {
  using ObjectInfo = ProjectDb::Reactor::ObjectInfo;
  EXPECT_FALSE(std::has_virtual_destructor_v<ObjectInfo>);
  EXPECT_EQ(placeInTable(&ObjectInfo::database), 0);
  EXPECT_EQ(placeInTable(&ObjectInfo::objectType), 1);
  EXPECT_EQ(placeInTable(&ObjectInfo::name), 2);
  EXPECT_EQ(placeInTable(&ObjectInfo::setName), 3);
}

}  // namespace
}  // namespace tessel::test

#endif
