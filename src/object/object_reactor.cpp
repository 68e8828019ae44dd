#include <tessel/object.h>

namespace tessel {

// Object and reactor know each other. Each side tells the other one only when its own set has changed, so the mutual
// calls end by themselves.

void Object::addReactor(ObjectReactor* reactor) {
  if (reactors_.insert(reactor).second) reactor->addObject(this);
}

void Object::removeReactor(ObjectReactor* reactor) {
  if (reactors_.erase(reactor) > 0) reactor->removeObject(this);
}

ObjectReactor::ObjectReactor() = default;

ObjectReactor::ObjectReactor(const ObjectReactor& other) = default;

ObjectReactor& ObjectReactor::operator=(const ObjectReactor& other) = default;

ObjectReactor::~ObjectReactor() {
  while (!objects_.empty()) removeObject(*objects_.begin());
}

void ObjectReactor::addObject(Object* object) {
  if (objects_.insert(object).second) object->addReactor(this);
}

void ObjectReactor::removeObject(Object* object) {
  if (objects_.erase(object) > 0) object->removeReactor(this);
}

}  // namespace tessel
