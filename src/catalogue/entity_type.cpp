#include "catalogue/property_set_impl.h"

#include "object/current_database.h"
#include "object/fields.h"
#include "object/object_members.h"

namespace tessel {

TESSEL_DEFINE_OBJECT_MEMBERS(EntityType, Object)
TESSEL_DEFINE_SAVE_MEMBERS(EntityType)

EntityType::EntityType() : EntityType(new Impl) {}
EntityType::EntityType(Impl* impl) : impl_(impl) {}
EntityType::EntityType(const SetDirty&) : EntityType() { impl_->dirty = true; }
EntityType::~EntityType() = default;

TsSmartPtr<EntityType> EntityType::create(const OdString& name) {
  TsSmartPtr<EntityType> type = new EntityType(SetDirty{});
  type->impl().name = name;
  return type;
}

EntityType& EntityType::operator=(const EntityType& other) {
  impl().dirty = true;
  impl().name = other.impl().name;
  return *this;
}

bool EntityType::operator==(const EntityType& other) const {
  return Object::operator==(other) && name() == other.name();
}
bool EntityType::operator!=(const EntityType& other) const { return !(*this == other); }

unsigned int EntityType::id() const { return impl().id; }
bool EntityType::isDirty() const { return impl().dirty; }
std::shared_ptr<ProjectDb> EntityType::projectDb() const { return impl().projectDb.lock(); }

const OdString& EntityType::name() const { return impl().name; }
void EntityType::set_name(const OdString& name) { setField(impl(), impl().name, name); }

EntityType::Impl& EntityType::impl() { return *impl_; }
const EntityType::Impl& EntityType::impl() const { return *impl_; }

void EntityType::init(odb::callback_event event, odb::database&) { linkWhenLoaded(event, impl()); }

}  // namespace tessel
