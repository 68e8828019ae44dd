#include <tessel/object.h>

namespace tessel {

// Object and reactor know each other. What a reactor believes to watch may differ from that once it was copied or
// assigned to, so it keeps both, and speaks only to objects that know it: the others may be gone.

void Object::addReactor(ObjectReactor* reactor) {
  if (!reactors_.insert(reactor).second) return;
  reactor->knownTo_.insert(this);
  reactor->objects_.insert(this);
}

void Object::removeReactor(ObjectReactor* reactor) {
  if (reactors_.erase(reactor) == 0) return;
  reactor->knownTo_.erase(this);
  reactor->objects_.erase(this);
}

ObjectReactor::ObjectReactor() = default;

ObjectReactor::ObjectReactor(const ObjectReactor& other) : objects_(other.objects_) {}

ObjectReactor& ObjectReactor::operator=(const ObjectReactor& other) {
  objects_ = other.objects_;
  return *this;
}

ObjectReactor::~ObjectReactor() {
  while (!knownTo_.empty()) (*knownTo_.begin())->removeReactor(this);
}

void ObjectReactor::addObject(Object* object) {
  if (objects_.insert(object).second) object->addReactor(this);
}

void ObjectReactor::removeObject(Object* object) {
  if (objects_.erase(object) > 0 && knownTo_.count(object) > 0) object->removeReactor(this);
}

}  // namespace tessel
