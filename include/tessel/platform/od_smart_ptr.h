#pragma once

#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>

/// @file
/// Pointers that share an object which counts its references.

/// Says that a pointer already carries the reference which an OdSmartPtr takes over.
struct OdAttach {};

/// Shares the ownership of an object that counts its references by `addRef` and `release`. `T` may be const;
/// a pointer to a derived class or to the non-const class converts.
///
/// Copies of one pointer may be made on several threads if the object's own count allows it.
template <typename T>
class OdSmartPtr {
public:
  /// The class of the object.
  using element_type = T;

  /// Null.
  ///@{
  OdSmartPtr() noexcept = default;
  OdSmartPtr(std::nullptr_t) noexcept {}  // NOLINT(google-explicit-constructor)
  ///@}

  /// Adds a reference to the object, which may be null.
  OdSmartPtr(T* object) : object_(object) { addRef(); }  // NOLINT(google-explicit-constructor)

  /// Takes over a reference of the caller and adds none.
  OdSmartPtr(T* object, OdAttach) noexcept : object_(object) {}

  /// Copying adds a reference; moving transfers it without counting, and leaves the source null.
  ///@{
  OdSmartPtr(const OdSmartPtr& other) : OdSmartPtr(other.object_) {}
  OdSmartPtr(OdSmartPtr&& other) noexcept : object_(other.detach()) {}

  template <typename U, typename = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  OdSmartPtr(const OdSmartPtr<U>& other) : OdSmartPtr(other.get()) {}  // NOLINT(google-explicit-constructor)
  template <typename U, typename = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  OdSmartPtr(OdSmartPtr<U>&& other) noexcept  // NOLINT(google-explicit-constructor)
      : object_(other.detach()) {}
  ///@}

  ~OdSmartPtr() {
    if (object_) counted()->release();
  }

  /// Takes the new object before it lets go of the old one, so that assigning something that only the old one
  /// kept alive is safe.
  OdSmartPtr& operator=(OdSmartPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  /// Hands the object and the reference to the caller; the pointer is null afterwards.
  [[nodiscard]] T* detach() noexcept { return std::exchange(object_, nullptr); }

  /// The object, which still belongs to this pointer. A null pointer answers `get` only.
  ///@{
  [[nodiscard]] T* get() const noexcept { return object_; }
  T* operator->() const noexcept { return object_; }
  T& operator*() const noexcept { return *object_; }
  ///@}

  /// Whether there is no object, and whether there is one.
  ///@{
  [[nodiscard]] bool isNull() const noexcept { return object_ == nullptr; }
  explicit operator bool() const noexcept { return object_ != nullptr; }
  ///@}

private:
  // Counting is no change of an object that somebody could see, so a pointer to const counts as well.
  std::remove_const_t<T>* counted() const noexcept { return const_cast<std::remove_const_t<T>*>(object_); }

  void addRef() {
    if (object_) counted()->addRef();
  }

  T* object_ = nullptr;
};

/// Pointers are equal when they hold the same object, and are ordered by its address.
///@{
template <typename T, typename U>
bool operator==(const OdSmartPtr<T>& left, const OdSmartPtr<U>& right) noexcept {
  return left.get() == right.get();
}
template <typename T, typename U>
bool operator!=(const OdSmartPtr<T>& left, const OdSmartPtr<U>& right) noexcept {
  return left.get() != right.get();
}
template <typename T, typename U>
bool operator<(const OdSmartPtr<T>& left, const OdSmartPtr<U>& right) noexcept {
  return std::less<>()(left.get(), right.get());
}
template <typename T, typename U>
bool operator==(const OdSmartPtr<T>& left, const U* right) noexcept {
  return left.get() == right;
}
template <typename T, typename U>
bool operator!=(const OdSmartPtr<T>& left, const U* right) noexcept {
  return left.get() != right;
}
template <typename T>
bool operator==(const OdSmartPtr<T>& pointer, std::nullptr_t) noexcept {
  return pointer.isNull();
}
template <typename T>
bool operator!=(const OdSmartPtr<T>& pointer, std::nullptr_t) noexcept {
  return !pointer.isNull();
}
///@}
