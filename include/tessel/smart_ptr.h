#pragma once

#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>

namespace tessel {

/// Says that a pointer already carries the reference that the smart pointer takes over.
struct AttachReference {};

/// Intrusive smart pointer in which every object crosses the interface. It counts through `addRef` and `release` of
/// its target, so that a raw pointer of a living object may be put into a smart pointer at any time.
///
/// `T` may be const: a `TsSmartPtr<Measure>` converts to a `TsSmartPtr<const Measure>`, not the other way round.
/// The count is atomic: copies of one pointer may be made and dropped on several threads, while the object itself is
/// to be used by one thread at a time.
template <typename T>
class TsSmartPtr {
public:
  /// The class of the target.
  using element_type = T;

  /// Points at nothing.
  ///@{
  TsSmartPtr() noexcept = default;
  TsSmartPtr(std::nullptr_t) noexcept {}  // NOLINT(google-explicit-constructor)
  ///@}

  /// Shares the object; a null pointer is welcome.
  TsSmartPtr(T* object) : object_(object) { addRef(); }  // NOLINT(google-explicit-constructor)

  /// Takes over a reference that somebody else has already added.
  TsSmartPtr(T* object, AttachReference) noexcept : object_(object) {}

  /// Copying shares the object; moving leaves the source null.
  ///@{
  TsSmartPtr(const TsSmartPtr& other) : object_(other.object_) { addRef(); }
  TsSmartPtr(TsSmartPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}

  template <typename U, typename = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  TsSmartPtr(const TsSmartPtr<U>& other) : object_(other.get()) {  // NOLINT(google-explicit-constructor)
    addRef();
  }
  template <typename U, typename = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  TsSmartPtr(TsSmartPtr<U>&& other) noexcept : object_(other.detach()) {}  // NOLINT(google-explicit-constructor)
  ///@}

  ~TsSmartPtr() { reset(); }

  /// Releases the old target before it shares the new one; nothing happens if both are the same. So the new one must not
  /// live by the old one alone: take a TsSmartPtr of it first.
  ///@{
  TsSmartPtr& operator=(const TsSmartPtr& other) {
    assign(other.object_);
    return *this;
  }
  TsSmartPtr& operator=(TsSmartPtr&& other) noexcept {
    if (this != &other) {
      // Taken out first, because the other pointer may go with the old target.
      T* const object = std::exchange(other.object_, nullptr);
      reset();
      object_ = object;
    }
    return *this;
  }
  TsSmartPtr& operator=(T* object) {
    assign(object);
    return *this;
  }
  ///@}

  /// Releases the target; the pointer is null afterwards.
  void reset() {
    if (T* const old = std::exchange(object_, nullptr)) mutableTarget(old)->release();
  }

  /// Hands the target to the caller together with the reference that this pointer held.
  [[nodiscard]] T* detach() noexcept { return std::exchange(object_, nullptr); }

  /// The target, which still belongs to this pointer. A null pointer answers `get` only.
  ///@{
  [[nodiscard]] T* get() const noexcept { return object_; }
  T* operator->() const noexcept { return object_; }
  T& operator*() const noexcept { return *object_; }
  ///@}

  /// Whether there is no target, and whether there is one.
  ///@{
  [[nodiscard]] bool isNull() const noexcept { return object_ == nullptr; }
  explicit operator bool() const noexcept { return object_ != nullptr; }
  ///@}

private:
  using Mutable = std::remove_const_t<T>;

  // Counting is no change of the object that its users could see.
  static Mutable* mutableTarget(T* object) { return const_cast<Mutable*>(object); }

  void addRef() {
    if (object_) mutableTarget(object_)->addRef();
  }

  void assign(T* object) {
    if (object_ == object) return;
    reset();
    object_ = object;
    addRef();
  }

  T* object_ = nullptr;
};

/// Pointers are equal when they hold the same object.
///@{
template <typename T, typename U>
bool operator==(const TsSmartPtr<T>& a, const TsSmartPtr<U>& b) noexcept {
  return a.get() == b.get();
}
template <typename T, typename U>
bool operator!=(const TsSmartPtr<T>& a, const TsSmartPtr<U>& b) noexcept {
  return a.get() != b.get();
}
template <typename T>
bool operator==(const TsSmartPtr<T>& a, std::nullptr_t) noexcept {
  return a.isNull();
}
template <typename T>
bool operator==(std::nullptr_t, const TsSmartPtr<T>& a) noexcept {
  return a.isNull();
}
template <typename T>
bool operator!=(const TsSmartPtr<T>& a, std::nullptr_t) noexcept {
  return !a.isNull();
}
template <typename T>
bool operator!=(std::nullptr_t, const TsSmartPtr<T>& a) noexcept {
  return !a.isNull();
}
///@}

/// Orders by address, so that smart pointers can be kept in ordered containers.
template <typename T>
bool operator<(const TsSmartPtr<T>& a, const TsSmartPtr<T>& b) noexcept {
  return std::less<const T*>()(a.get(), b.get());
}

}  // namespace tessel
