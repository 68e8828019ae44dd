#include "operations/clash.h"

#include <vector>

#include <tessel/exceptions.h>

#include "database/project_db_impl.h"
#include "operations/all_traits.h"
#include "operations/finder.h"

namespace tessel {
namespace {

/// What a reactor sees of a clash. A new name stays within the same owner.
template <typename T>
class ObjectInfoImpl final : public ProjectDb::Reactor::ObjectInfo {
public:
  using Key = typename ClassTraits<T>::Key;

  ObjectInfoImpl(ProjectDb& db, const Key& key) : db_(db.shared_from_this()), key_(key) {}

  const std::shared_ptr<ProjectDb>& database() const override { return db_; }
  ObjectType objectType() const override { return ObjectTraits<T>::type; }
  OdString name() const override { return key_.name; }

  bool setName(const OdString& name) override {
    key_.name = name;
    return !Finder<T>(*db_).exists(key_);
  }

private:
  std::shared_ptr<ProjectDb> db_;
  Key key_;
};

template <typename T>
TsSmartPtr<T> existing(ProjectDb& db, const typename ClassTraits<T>::Key& key) {
  TsSmartPtr<T> object = Finder<T>(db).byKey(key);
  if (!object) throw ObjectNotFound();
  return object;
}

}  // namespace

template <typename T>
SaveResolution resolveNameClash(ProjectDb& db, TsSmartPtr<T>& object, const FailureMessage& failure) {
  using Traits = ClassTraits<T>;
  const auto key = Traits::keyOf(*object);
  // Another index than that of the key has failed, such as the one on labels.
  if (!Finder<T>(db).exists(key)) throwNotUnique(failure);

  ObjectInfoImpl<T> info(db, key);
  const SaveResolution answer = db.impl().reactor->onNameNotUnique(info);
  switch (answer) {
  case SaveResolution::Kept:
    object = existing<T>(db, key);
    break;
  case SaveResolution::Overwritten: {
    const TsSmartPtr<T> target = existing<T>(db, key);
    Traits::overwrite(*target, *object);
    object = target;
    break;
  }
  case SaveResolution::Renamed:
    Traits::rename(*object, info.name());
    break;
  case SaveResolution::Created:
    break;
  }
  return answer;
}

/// A measure of the same name is the same measure, so nobody is asked.
template <>
SaveResolution resolveNameClash(ProjectDb& db, TsSmartPtr<Measure>& object, const FailureMessage&) {
  object = existing<Measure>(db, ClassTraits<Measure>::keyOf(*object));
  return SaveResolution::Kept;
}

/// A unit of the same label, scale and measure is the same unit. It takes the name of the incoming one if it has none.
template <>
SaveResolution resolveNameClash(ProjectDb& db, TsSmartPtr<Unit>& object, const FailureMessage&) {
  UnitCriteria sameUnit;
  sameUnit.label.equals(object->label());
  sameUnit.scale.equals(object->scale());
  sameUnit.measure_id = object->measure() ? object->measure()->id() : 0;
  std::vector<TsSmartPtr<Unit>> twins;
  Finder<Unit>(db).list(twins, sameUnit);
  if (twins.size() != 1) throw ObjectNotUnique(L"Unit");

  const TsSmartPtr<Unit> twin = twins.front();
  const bool givesName = object->has_name() && !twin->has_name();
  if (givesName) twin->set_name(object->name());
  object = twin;
  return givesName ? SaveResolution::Overwritten : SaveResolution::Kept;
}

template SaveResolution resolveNameClash(ProjectDb&, TsSmartPtr<Site>&, const FailureMessage&);
template SaveResolution resolveNameClash(ProjectDb&, TsSmartPtr<Building>&, const FailureMessage&);
template SaveResolution resolveNameClash(ProjectDb&, TsSmartPtr<Story>&, const FailureMessage&);
template SaveResolution resolveNameClash(ProjectDb&, TsSmartPtr<EntityType>&, const FailureMessage&);
template SaveResolution resolveNameClash(ProjectDb&, TsSmartPtr<PropertyNamespace>&, const FailureMessage&);
template SaveResolution resolveNameClash(ProjectDb&, TsSmartPtr<PropertyDefinition>&, const FailureMessage&);
template SaveResolution resolveNameClash(ProjectDb&, TsSmartPtr<ValueDefinition>&, const FailureMessage&);
template SaveResolution resolveNameClash(ProjectDb&, TsSmartPtr<PropertySet>&, const FailureMessage&);

}  // namespace tessel
