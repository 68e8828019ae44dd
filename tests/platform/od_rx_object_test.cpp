#include <tessel/platform/od_rx_object.h>

#include <type_traits>

#include <gtest/gtest.h>

#include "support/printers.h"
#include "support/slots.h"

namespace {

/// A class as a host would write it, with a count but without a queryX of its own.
class Part : public OdRxObject {
public:
  OdRxClass* isA() const override { return description; }
  void addRef() override { ++references; }
  void release() override { --references; }

  OdRxClass* description = nullptr;
  int references = 0;
};

class Plain : public OdRxObject {};

int produced = 0;

OdRxObjectPtr produce() {
  static Part part;
  ++produced;
  return &part;
}

OdRxObjectPtr produceNothing() { return nullptr; }

/// Beam is a Part, and a Part is an OdRxObject.
class OdRx : public testing::Test {
protected:
  OdRx() { beam.description = beamClass; }
  ~OdRx() override {
    deleteOdRxClass(beamClass);
    deleteOdRxClass(partClass);
    deleteOdRxClass(otherClass);
  }

  OdRxClass* const partClass = newTsRxClass(L"Part", OdRxObject::desc(), nullptr);
  OdRxClass* const beamClass = newTsRxClass(L"Beam", partClass, nullptr);
  OdRxClass* const otherClass = newTsRxClass(L"Other", OdRxObject::desc(), nullptr);
  Part beam;
  Part extension;
};

using OdRxClassTest = OdRx;
using OdRxObjectTest = OdRx;

TEST_F(OdRxClassTest, KnowsItsNameAndParent) {
  EXPECT_EQ(beamClass->name(), u"Beam");
  EXPECT_EQ(beamClass->myParent(), partClass);
  EXPECT_EQ(partClass->myParent(), OdRxObject::desc());
}

TEST_F(OdRxClassTest, TheRootHasNeitherParentNorFactory) {
  EXPECT_EQ(OdRxObject::desc()->name(), u"OdRxObject");
  EXPECT_EQ(OdRxObject::desc()->myParent(), nullptr);
  EXPECT_TRUE(OdRxObject::desc()->create().isNull());
  EXPECT_EQ(OdRxObject::desc(), OdRxObject::desc());
}

TEST_F(OdRxClassTest, IsDerivedFromItselfAndItsBasesOnly) {
  EXPECT_TRUE(beamClass->isDerivedFrom(beamClass));
  EXPECT_TRUE(beamClass->isDerivedFrom(partClass));
  EXPECT_TRUE(beamClass->isDerivedFrom(OdRxObject::desc()));
  EXPECT_FALSE(beamClass->isDerivedFrom(otherClass));
  EXPECT_FALSE(partClass->isDerivedFrom(beamClass));
  EXPECT_FALSE(beamClass->isDerivedFrom(nullptr));
}

TEST_F(OdRxClassTest, IsToldApartByAddressNotByName) {
  OdRxClass* const twin = newTsRxClass(L"Beam", partClass, nullptr);
  EXPECT_FALSE(beamClass->isDerivedFrom(twin));
  EXPECT_EQ(beam.queryX(twin), nullptr);
  deleteOdRxClass(twin);
}

TEST_F(OdRxClassTest, CreateRunsTheFactory) {
  OdRxClass* const productive = newTsRxClass(L"Productive", nullptr, produce);
  OdRxClass* const barren = newTsRxClass(L"Barren", nullptr, produceNothing);
  produced = 0;
  EXPECT_FALSE(productive->create().isNull());
  EXPECT_EQ(produced, 1);
  EXPECT_TRUE(barren->create().isNull());
  EXPECT_TRUE(beamClass->create().isNull());
  deleteOdRxClass(productive);
  deleteOdRxClass(barren);
}

TEST_F(OdRxClassTest, DeletingNullDoesNothing) { deleteOdRxClass(nullptr); }

TEST_F(OdRxClassTest, HasNoExtensionsAtFirst) {
  EXPECT_EQ(beamClass->getX(otherClass), nullptr);
  EXPECT_EQ(beamClass->getX(nullptr), nullptr);
  EXPECT_TRUE(beamClass->delX(otherClass).isNull());
}

TEST_F(OdRxClassTest, GivesItsExtensionWithAReference) {
  EXPECT_TRUE(partClass->addX(otherClass, &extension).isNull());
  EXPECT_EQ(extension.references, 1);
  const OdRxObjectPtr found(partClass->getX(otherClass), OdAttach{});
  EXPECT_EQ(found, &extension);
  EXPECT_EQ(extension.references, 2);
  EXPECT_EQ(partClass->getX(beamClass), nullptr);
}

TEST_F(OdRxClassTest, DoesNotAskItsBasesForExtensions) {
  partClass->addX(otherClass, &extension);
  EXPECT_EQ(beamClass->getX(otherClass), nullptr);
}

TEST_F(OdRxClassTest, AddXReturnsWhatItReplaces) {
  Part second;
  partClass->addX(otherClass, &extension);
  EXPECT_EQ(partClass->addX(otherClass, &second), &extension);
  EXPECT_EQ(extension.references, 0);
  EXPECT_EQ(OdRxObjectPtr(partClass->getX(otherClass), OdAttach{}), &second);
  EXPECT_EQ(partClass->addX(otherClass, nullptr), &second);
  EXPECT_EQ(partClass->getX(otherClass), nullptr);
  EXPECT_EQ(second.references, 0);
}

TEST_F(OdRxClassTest, DelXReturnsWhatItDetaches) {
  partClass->addX(otherClass, &extension);
  EXPECT_EQ(partClass->delX(otherClass), &extension);
  EXPECT_EQ(extension.references, 0);
  EXPECT_EQ(partClass->getX(otherClass), nullptr);
}

TEST_F(OdRxClassTest, LetsItsExtensionsGoWhenItIsDeleted) {
  OdRxClass* const shortLived = newTsRxClass(L"ShortLived", nullptr, nullptr);
  shortLived->addX(otherClass, &extension);
  deleteOdRxClass(shortLived);
  EXPECT_EQ(extension.references, 0);
}

TEST_F(OdRxObjectTest, QueryXFindsTheClassAndItsBases) {
  for (OdRxClass* const rxClass : {beamClass, partClass, OdRxObject::desc()}) {
    beam.references = 0;
    EXPECT_EQ(beam.queryX(rxClass), &beam);
    EXPECT_EQ(beam.references, 1);
    EXPECT_EQ(beam.x(rxClass), &beam);
    EXPECT_EQ(beam.references, 2);
  }
}

TEST_F(OdRxObjectTest, QueryXIsNullForOtherClassesAndNull) {
  EXPECT_EQ(beam.queryX(otherClass), nullptr);
  EXPECT_EQ(beam.x(otherClass), nullptr);
  EXPECT_EQ(beam.queryX(nullptr), nullptr);
  beam.description = partClass;
  EXPECT_EQ(beam.queryX(beamClass), nullptr);
  EXPECT_EQ(beam.references, 0);
}

TEST_F(OdRxObjectTest, QueryXIsNullWhileTheClassIsNotRegistered) {
  beam.description = nullptr;
  EXPECT_EQ(beam.queryX(OdRxObject::desc()), nullptr);
}

TEST_F(OdRxObjectTest, QueryXFindsExtensionsOfTheClassAndItsBases) {
  partClass->addX(otherClass, &extension);
  const OdRxObjectPtr inherited(beam.queryX(otherClass), OdAttach{});
  EXPECT_EQ(inherited, &extension);
  EXPECT_EQ(extension.references, 2);
  Part own;
  beamClass->addX(otherClass, &own);
  EXPECT_EQ(OdRxObjectPtr(beam.queryX(otherClass), OdAttach{}), &own);
  EXPECT_EQ(beam.references, 0);
  beamClass->delX(otherClass);
}

TEST_F(OdRxObjectTest, TheRootsDefaultsDoNothing) {
  Plain plain;
  plain.addRef();
  plain.release();
  EXPECT_EQ(plain.numRefs(), 1);
  EXPECT_EQ(plain.isA(), OdRxObject::desc());
  EXPECT_EQ(plain.queryX(OdRxObject::desc()), &plain);
  EXPECT_EQ(plain.queryX(partClass), nullptr);
  EXPECT_TRUE(plain.clone().isNull());
  plain.copyFrom(&beam);
}

TEST_F(OdRxObjectTest, TheRootEqualsOnlyItself) {
  Plain plain;
  Plain other;
  EXPECT_TRUE(plain.isEqualTo(&plain));
  EXPECT_FALSE(plain.isEqualTo(&other));
  EXPECT_FALSE(plain.isEqualTo(nullptr));
  EXPECT_EQ(plain.comparedTo(&plain), OdRxOrdering::Equal);
  EXPECT_EQ(plain.comparedTo(&other), OdRxOrdering::NotOrderable);
}

TEST_F(OdRxObjectTest, DescriptionsAreNotCopied) {
  EXPECT_FALSE(std::is_copy_constructible_v<OdRxClass>);
  EXPECT_FALSE(std::is_default_constructible_v<OdRxObject>);
}

#if defined(__GXX_ABI_VERSION)
TEST(OdRxObjectSlots, AreInTheOrderOfTheInterface) {
  using tessel::test::slotOf;
  EXPECT_EQ(slotOf(&OdRxObject::queryX), 1);
  EXPECT_EQ(slotOf(&OdRxObject::x), 2);
  EXPECT_EQ(slotOf(&OdRxObject::isA), 3);
  EXPECT_EQ(slotOf(&OdRxObject::addRef), 4);
  EXPECT_EQ(slotOf(&OdRxObject::release), 5);
  EXPECT_EQ(slotOf(&OdRxObject::numRefs), 6);
  EXPECT_EQ(slotOf(&OdRxObject::clone), 7);
  EXPECT_EQ(slotOf(&OdRxObject::copyFrom), 8);
  EXPECT_EQ(slotOf(&OdRxObject::comparedTo), 9);
  EXPECT_EQ(slotOf(&OdRxObject::isEqualTo), 10);
}
#endif

}  // namespace
