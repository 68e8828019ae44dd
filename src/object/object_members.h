#pragma once

#include <tessel/project_db.h>

#include "object/object_access.h"

/// Definitions of what TESSEL_RX_MEMBERS, TESSEL_OBJECT_MEMBERS and TESSEL_SAVE_MEMBERS declare. A class has one such
/// line in its source file.

#define TESSEL_DEFINE_RX_MEMBERS(T, Parent)                                                                         \
  OdRxClass* T::g_pDesc = nullptr;                                                                                  \
  OdRxClass* T::desc() { return g_pDesc; }                                                                          \
  OdRxClass* T::isA() const { return g_pDesc; }                                                                     \
  OdRxObject* T::queryX(const OdRxClass* rxClass) const { return ObjectAccess::queryX<T, Parent>(*this, rxClass); } \
  TsSmartPtr<T> T::queryX(const OdRxObject* object) { return ObjectAccess::cast<T>(object); }                       \
  void T::rxInit() { ObjectAccess::registerClass<T, Parent>(L## #T); }                                              \
  void T::rxUninit() { ObjectAccess::unregisterClass<T>(); }                                                        \
  OdSmartPtr<T> T::createVirtualObject() { return ObjectAccess::createVirtualObject<T>(); }                         \
  OdRxObjectPtr T::pseudoConstructor() { return {}; }

#define TESSEL_DEFINE_OBJECT_MEMBERS(T, Parent)              \
  TESSEL_DEFINE_RX_MEMBERS(T, Parent)                        \
  ObjectType T::staticTesselType() { return ObjectType::T; } \
  ObjectType T::tesselType() const { return ObjectType::T; } \
  TsSmartPtr<T> T::cloneObject() const { return static_cast<T*>(ObjectAccess::cloneOf(*this).get()); }

#define TESSEL_DEFINE_SAVE_MEMBERS(T)                                                                             \
  bool T::save() { return Object::save(); }                                                                       \
  TsSmartPtr<T> T::save(const std::shared_ptr<ProjectDb>& db) { return static_cast<T*>(Object::save(db).get()); } \
  TsSmartPtr<T> T::save(const std::shared_ptr<ProjectDb>& db, IdMapping& mapping) {                               \
    return static_cast<T*>(Object::save(db, mapping).get());                                                      \
  }                                                                                                               \
  TsSmartPtr<const T> T::save(const std::shared_ptr<ProjectDb>& db) const {                                       \
    return static_cast<const T*>(Object::save(db).get());                                                         \
  }                                                                                                               \
  TsSmartPtr<const T> T::save(const std::shared_ptr<ProjectDb>& db, IdMapping& mapping) const {                   \
    return static_cast<const T*>(Object::save(db, mapping).get());                                                \
  }                                                                                                               \
  OdRxObjectPtr T::clone() const { return OdRxObjectPtr(ObjectAccess::clone(*this).get()); }                      \
  TsSmartPtr<Object> T::saveImpl(const std::shared_ptr<ProjectDb>& db, IdMapping& mapping) {                      \
    if (!db) return {};                                                                                           \
    return db->save<T>(TsSmartPtr<T>(this), mapping);                                                             \
  }                                                                                                               \
  TsSmartPtr<const Object> T::saveImpl(const std::shared_ptr<ProjectDb>& db, IdMapping& mapping) const {          \
    if (!db) return {};                                                                                           \
    return db->save<T>(TsSmartPtr<const T>(this), mapping);                                                       \
  }
