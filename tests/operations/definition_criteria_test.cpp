// What the criteria of definitions mean in the file, beyond what they share with all others.

#include <gmock/gmock.h>

#include "operations/found.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Names = std::vector<std::string>;

template <typename T>
class DefinitionCriteria : public ReactingProject {
protected:
  using Criteria = typename ObjectTraits<T>::criteria_type;

  void add(const wchar_t* name, const wchar_t* ifcName, const PropertyType& type = PropertyType()) {
    const auto definition = T::create(ns, name, type);
    if (ifcName) definition->set_ifc_name(ifcName);
    db->save(definition);
  }

  Names meeting(const StringCriteria& ifcName) {
    Criteria criteria;
    criteria.ifc_name = ifcName;
    return found<T>(*db, criteria);
  }

  Names of(const PropertyType& type) {
    Criteria criteria;
    criteria.type = type;
    return found<T>(*db, criteria);
  }

  TsSmartPtr<PropertyNamespace> ns = db->save(PropertyNamespace::create(L"Common"));
};
using Definitions = ::testing::Types<PropertyDefinition, ValueDefinition>;
TYPED_TEST_SUITE(DefinitionCriteria, Definitions, ClassNames);

TYPED_TEST(DefinitionCriteria, TheIfcNameIsTheNameWhereThereIsNoOther) {
  this->add(L"Width", nullptr);
  this->add(L"Height", L"Width");
  this->add(L"Depth", L"Deep");
  EXPECT_THAT(this->meeting(StringCriteria().equals(L"Width")), ElementsAre("Height", "Width"));
  EXPECT_THAT(this->meeting(StringCriteria().equals(L"Height")), IsEmpty()) << "it has an IFC name of its own";
  EXPECT_THAT(this->meeting(StringCriteria().equals(L"Depth")), IsEmpty());
  EXPECT_THAT(this->meeting(StringCriteria().startsWith(L"D")), ElementsAre("Depth"));
}

TYPED_TEST(DefinitionCriteria, NotEqualsFallsBackToTheNameToo) {
  this->add(L"Width", nullptr);
  this->add(L"Height", L"Width");
  this->add(L"Depth", nullptr);
  EXPECT_THAT(this->meeting(StringCriteria().notEquals(L"Width")), ElementsAre("Depth"));
}

TYPED_TEST(DefinitionCriteria, AllThreePartsOfATypeAreCompared) {
  using Type = PropertyType::Type;
  this->add(L"any", nullptr, PropertyType::Single(Type::Any));
  this->add(L"double", nullptr, PropertyType::Single(Type::Double));
  this->add(L"doubles", nullptr, PropertyType::Array(Type::Double));
  this->add(L"map", nullptr, PropertyType::Map(Type::String, Type::Double));
  this->add(L"undefined", nullptr);
  EXPECT_THAT(this->of(PropertyType::Single(Type::Double)), ElementsAre("double"));
  EXPECT_THAT(this->of(PropertyType::Single(Type::Any)), ElementsAre("any")) << "a value type of 0 is compared";
  EXPECT_THAT(this->of(PropertyType::Map(Type::String, Type::Double)), ElementsAre("map"));
  EXPECT_THAT(this->of(PropertyType::Map(Type::Any, Type::Double)), IsEmpty()) << "a key type of 0 is compared";
  PropertyType withoutStructure;
  withoutStructure.value_type = Type::Double;
  EXPECT_THAT(this->of(withoutStructure), IsEmpty()) << "a structure of 0 is compared";
}

TYPED_TEST(DefinitionCriteria, ATypeOfThreeZerosIsNoCondition) {
  this->add(L"double", nullptr, PropertyType::Single(PropertyType::Type::Double));
  this->add(L"undefined", nullptr);
  EXPECT_THAT(this->of(PropertyType()), ElementsAre("double", "undefined"));
}

TYPED_TEST(DefinitionCriteria, AllConditionsMustHold) {
  const auto other = this->db->save(PropertyNamespace::create(L"Other"));
  this->db->save(TypeParam::create(other, L"Width"));
  this->add(L"Width", nullptr);
  this->add(L"Height", L"Width");
  typename TestFixture::Criteria criteria;
  criteria.ifc_name.equals(L"Width");
  EXPECT_THAT(found<TypeParam>(*this->db, criteria), ElementsAre("Height", "Width", "Width"));
  criteria.namespace_id = this->ns->id();
  EXPECT_THAT(found<TypeParam>(*this->db, criteria), ElementsAre("Height", "Width"));
  criteria.name.notEquals(L"Width");
  EXPECT_THAT(found<TypeParam>(*this->db, criteria), ElementsAre("Height"));
  criteria.type.setSingle(PropertyType::Type::Double);
  EXPECT_THAT(found<TypeParam>(*this->db, criteria), IsEmpty());
}

// The first condition is an alternative; it must not reach beyond its brackets.
TYPED_TEST(DefinitionCriteria, TheIfcNameConditionBindsTogether) {
  const auto other = this->db->save(PropertyNamespace::create(L"Other"));
  this->add(L"Width", L"Width");
  typename TestFixture::Criteria criteria;
  criteria.ifc_name.equals(L"Width");
  criteria.namespace_id = other->id();
  EXPECT_THAT(found<TypeParam>(*this->db, criteria), IsEmpty());
}

}  // namespace
}  // namespace tessel::test
