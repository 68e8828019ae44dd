#include <memory>
#include <type_traits>

#include <gtest/gtest.h>

#include <odb/exceptions.hxx>
#include <odb/session.hxx>

#include "catalogue/catalogue.h"

// While a host has an ODB session, an id stands for one object: what that means for references, members and removal.

namespace tessel::test {
namespace {

template <typename T>
class SessionOf : public ::testing::Test {
protected:
  TsSmartPtr<T> load(unsigned int id) { return project.db->get<T>(id); }

  /// A row that the session does not know yet.
  unsigned int idOfARow() { return project.db->save(makeSample<T>())->id(); }

  SampleProject project;
};

template <typename T>
struct TakesPart : std::bool_constant<!std::is_same_v<T, Measure> && !std::is_same_v<T, Unit>> {};
using SessionClasses = Filter<TakesPart, SampledClasses>::type;
TYPED_TEST_SUITE(SessionOf, SessionClasses, ClassNames);

TYPED_TEST(SessionOf, KnowsAnObjectThatWasSavedAsAConstantOne) {
  odb::session session;
  const TsSmartPtr<const TypeParam> object = makeSample<TypeParam>();
  this->project.db->save(object);
  EXPECT_EQ(this->load(object->id()), object);
}

TYPED_TEST(SessionOf, KnowsReferencesFromTheirInsertOn) {
  odb::session session;
  const auto object = this->project.db->save(makeSample<TypeParam>());
  for (const auto& reference : Sample<TypeParam>::references(*object)) {
    if (const auto ns = PropertyNamespace::queryX(reference.get())) {
      EXPECT_EQ(this->project.db->template get<PropertyNamespace>(ns->id()), ns);
    }
    if (const auto site = Site::queryX(reference.get())) {
      EXPECT_EQ(this->project.db->template get<Site>(site->id()), site);
    }
  }
}

TYPED_TEST(SessionOf, KnowsAnObjectNoMoreWhenItEnds) {
  const unsigned int id = this->idOfARow();
  auto session = std::make_unique<odb::session>();
  const auto object = this->load(id);
  session.reset();
  EXPECT_NE(this->load(id), object);
}

TYPED_TEST(SessionOf, ForgetsAnObjectThatIsRemoved) {
  for (const bool byPointer : {true, false}) {
    odb::session session;
    const auto object = this->project.db->save(makeSample<TypeParam>(byPointer ? 1 : 2));
    const unsigned int id = object->id();
    if (byPointer) {
      this->project.db->remove(object);
    } else {
      this->project.db->template remove<TypeParam>(id);
    }
    EXPECT_THROW(this->load(id), odb::object_not_persistent) << byPointer;
  }
}

class CatalogueSession : public ::testing::Test {
protected:
  void SetUp() override {
    set->append_property_definition(L"Width", PropertyType());
    set->append_value_definition(L"Area", PropertyType());
    set->insert_entity_type(L"door");
    project.db->save(set);
  }

  SampleProject project;
  TsSmartPtr<PropertySet> set = PropertySet::create(makeSample<PropertyNamespace>(), L"Door");
};

TEST_F(CatalogueSession, SharesTheMembersOfASet) {
  odb::session session;
  const auto loaded = project.db->get<PropertySet>(set->id());
  const auto& width = loaded->property_definitions().at(0);
  EXPECT_EQ(project.db->get<PropertyDefinition>(width->id()), width);
  EXPECT_EQ(project.db->get<ValueDefinition>(loaded->value_definitions().at(0)->id()), loaded->value_definitions()[0]);
  EXPECT_EQ(project.db->get<EntityType>(loaded->entity_types().at(0)->id()), loaded->entity_types()[0]);
  EXPECT_EQ(width->ns(), loaded->ns());
  EXPECT_EQ(loaded->value_definitions()[0]->ns(), loaded->ns());
}

TEST_F(CatalogueSession, MakesTheResultsOfTwoLoadsEqual) {
  EXPECT_FALSE(*project.db->get<PropertySet>(set->id()) == *project.db->get<PropertySet>(set->id()))
    << "they list other objects";
  odb::session session;
  EXPECT_TRUE(*project.db->get<PropertySet>(set->id()) == *project.db->get<PropertySet>(set->id()));
}

TEST_F(CatalogueSession, SharesTheDefinitionsThatAQueryFinds) {
  const auto other = PropertySet::create(set->ns(), L"Window");
  other->append_property_definition(set->property_definitions()[0]);
  project.db->save(other);
  odb::session session;
  std::vector<TsSmartPtr<PropertyDefinition>> found;
  project.db->get<IfcPropertySetDefinitionQuery>(found, {});
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0], found[1]);
  EXPECT_EQ(project.db->get<PropertyDefinition>(found[0]->id()), found[0]);
}

}  // namespace
}  // namespace tessel::test
