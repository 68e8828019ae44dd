// References to definitions from where no document has them.

#include <gtest/gtest.h>

#include <tessel/definitions.h>
#include <tessel/property_set.h>

#include "import/internal/import_run.h"
#include "import/reference_reader.h"

namespace tessel::test {
namespace {

template <typename T>
class DefinitionReference : public ::testing::Test {
protected:
  /// Reads a reference by the name of a definition that is in the file, in an object of this type.
  std::vector<OdString> messagesIn(ObjectType type, Object* object) {
    const ElementContext context{nullptr, type, object, ElementPath(L"owner").then(L"field"), true, 5};
    TsSmartPtr<T> found;
    EXPECT_FALSE(readReference(on_.run, on_.root(), found, context));
    EXPECT_FALSE(found);
    return textsOf(on_.messages.all());
  }

  RunOn on_{L"<field name='D' namespace='N'/>"};
  const TsSmartPtr<PropertyNamespace> ns_ = on_.project.db->save(PropertyNamespace::create(L"N"));
  const TsSmartPtr<T> definition_ = on_.project.db->save(T::create(ns_, L"D"));
  const std::vector<OdString> unresolved_ = {
    u"Could not find referenced object 'owner > field' with name 'D' and namespace 'N'"};
};

using Definitions = ::testing::Types<PropertyDefinition, ValueDefinition>;
TYPED_TEST_SUITE(DefinitionReference, Definitions, ClassNames);

TYPED_TEST(DefinitionReference, ByNameIsNotSoughtOutsideASet) {
  const TsSmartPtr<PropertySet> set = PropertySet::create(this->ns_, L"S");
  EXPECT_EQ(this->messagesIn(ObjectType::PropertyDefinition, set.get()), this->unresolved_);
}

TYPED_TEST(DefinitionReference, ByNameIsNotSoughtInASetWithoutANamespace) {
  const TsSmartPtr<PropertySet> set = PropertySet::create({}, L"S");
  EXPECT_EQ(this->messagesIn(ObjectType::PropertySet, set.get()), this->unresolved_);
}

TYPED_TEST(DefinitionReference, ByNameIsNotSoughtWithoutAnObject) {
  EXPECT_EQ(this->messagesIn(ObjectType::PropertySet, nullptr), this->unresolved_);
}

TYPED_TEST(DefinitionReference, ByNameIsSoughtInTheNamespaceOfTheSetThatIsRead) {
  const TsSmartPtr<PropertySet> set = PropertySet::create(this->ns_, L"S");
  const ElementContext context{
    nullptr, ObjectType::PropertySet, set.get(), ElementPath(L"propertyset").then(L"field"), true, 5};
  TsSmartPtr<TypeParam> found;
  EXPECT_TRUE(readReference(this->on_.run, this->on_.root(), found, context));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->id(), this->definition_->id());
}

}  // namespace
}  // namespace tessel::test
