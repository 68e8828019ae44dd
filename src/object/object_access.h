#pragma once

#include <tessel/object.h>
#include <tessel/platform/od_error.h>

namespace tessel {

/// The one door to what classes of persistent objects keep from hosts: their registration, their blank and cloned
/// objects, and the assignment of their bases.
struct ObjectAccess {
  /// A blank clean object, to be filled.
  template <typename T>
  static TsSmartPtr<T> blank() {
    return new T();
  }

  /// A blank object that counts as changed.
  template <typename T>
  static TsSmartPtr<T> blankDirty() {
    return new T(SetDirty{});
  }

  template <typename T, typename Impl>
  static TsSmartPtr<T> make(Impl* impl) {
    return new T(impl);
  }

  template <typename T>
  static TsSmartPtr<T> clone(const T& object) {
    auto* const impl = new typename T::Impl(object.impl());
    impl->id = 0;
    impl->projectDb.reset();
    impl->dirty = true;
    return new T(impl);
  }

  template <typename T>
  static OdRxObjectPtr cloneOf(const T& object) {
    return object.clone();
  }

  /// Assigns what the objects have as a `T`; a base class keeps its assignment from hosts.
  template <typename T>
  static void assign(T& target, const T& source) {
    target = source;
  }

  template <typename T, typename Parent>
  static void registerClass(const wchar_t* name) {
    OdRxClass* const parent = registeredParent<Parent>();
    if (T::g_pDesc) throw OdError(OdResult::eClassAlreadyRegistered);
    T::g_pDesc = newTsRxClass(name, parent, &T::pseudoConstructor);
  }

  template <typename T>
  static void unregisterClass() {
    if (!T::g_pDesc) throw OdError(OdResult::eClassNotRegistered);
    dropClass<T>();
  }

  template <typename T>
  static void dropClass() {
    if (!T::g_pDesc) return;
    deleteOdRxClass(T::g_pDesc);
    T::g_pDesc = nullptr;
  }

  /// The dynamic cast of one class of the chain; its parent goes on. The result carries a reference of the caller's.
  template <typename T, typename Parent>
  static OdRxObject* queryX(const T& object, const OdRxClass* rxClass) {
    if (!rxClass) return nullptr;
    if (OdRxClass* const own = T::g_pDesc) {
      if (rxClass == own) {
        auto* const self = const_cast<T*>(&object);
        self->addRef();
        return self;
      }
      if (OdRxObject* const extension = own->getX(rxClass)) return extension;
    }
    return object.Parent::queryX(rxClass);
  }

  template <typename T>
  static TsSmartPtr<T> cast(const OdRxObject* object) {
    if (!object || !T::g_pDesc) return {};
    return checked<T, TsSmartPtr<T>>(OdRxObjectPtr(object->queryX(T::g_pDesc), OdAttach{}));
  }

  template <typename T>
  static OdSmartPtr<T> createVirtualObject() {
    if (!T::g_pDesc) throw OdError(OdResult::eClassNotRegistered);
    return checked<T, OdSmartPtr<T>>(T::g_pDesc->create());
  }

private:
  template <typename Parent>
  static OdRxClass* registeredParent() {
    if constexpr (!std::is_same_v<Parent, OdRxObject>) {
      if (!Parent::desc()) Parent::rxInit();
    }
    return Parent::desc();
  }

  // A protocol extension may be an object of any class: only one that derives from T may become a pointer to T.
  template <typename T, typename Pointer>
  static Pointer checked(const OdRxObjectPtr& object) {
    if (!object.get()) return {};
    const OdRxClass* const actual = object->isA();
    if (!actual || !actual->isDerivedFrom(T::g_pDesc)) return {};
    return Pointer(static_cast<T*>(object.get()));
  }
};

}  // namespace tessel
