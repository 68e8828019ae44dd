#include <tessel/object.h>

#include <tessel/id_mapping.h>

#include "object/object_members.h"

namespace tessel {

TESSEL_DEFINE_RX_MEMBERS(Object, OdRxObject)

Object::Object() = default;

// The reactors have been told by release(); an object that goes some other way leaves them with a stale pointer.
Object::~Object() = default;

void Object::addRef() { references_.fetch_add(1, std::memory_order_relaxed); }

void Object::release() {
  if (references_.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
  // A reactor may take a reference while it is told; that one must not be the last one a second time.
  references_.store(1, std::memory_order_relaxed);
  while (!reactors_.empty()) {
    ObjectReactor* const reactor = *reactors_.begin();
    removeReactor(reactor);
    reactor->onObjectDeleted(this);
  }
  delete this;
}

TsSmartPtr<Object> Object::cloneObject() const { return static_cast<Object*>(clone().get()); }

bool Object::save() { return !save(projectDb()).isNull(); }

TsSmartPtr<Object> Object::save(const std::shared_ptr<ProjectDb>& db) {
  IdMapping mapping(nullptr);
  return save(db, mapping);
}

TsSmartPtr<Object> Object::save(const std::shared_ptr<ProjectDb>& db, IdMapping& mapping) {
  return saveImpl(db, mapping);
}

TsSmartPtr<const Object> Object::save(const std::shared_ptr<ProjectDb>& db) const {
  IdMapping mapping(nullptr);
  return save(db, mapping);
}

TsSmartPtr<const Object> Object::save(const std::shared_ptr<ProjectDb>& db, IdMapping& mapping) const {
  return saveImpl(db, mapping);
}

bool Object::operator==(const Object& other) const { return isA() == other.isA(); }
bool Object::operator!=(const Object& other) const { return !(*this == other); }

}  // namespace tessel
