#pragma once

#include <cstddef>
#include <cstdint>

#include <tessel/export.h>
#include <tessel/platform/od_error.h>

/// @file
/// The memory behind OdString and arrays of the platform. A block from here is given back here, by whichever
/// module, and by no other function. All three may be called from several threads at once.

/// A block of `size` bytes, aligned for every ordinary type. Null when there is no such block; never null for
/// a size of 0, whose block must be freed like any other.
[[nodiscard]] TESSEL_API void* odrxAlloc(std::size_t size) noexcept;

/// Gives a block back. Null is welcome and does nothing.
TESSEL_API void odrxFree(void* block) noexcept;

/// The block with its contents in a new size; it may have moved. Null when there is no such block: the old
/// one then stands as it was, and still has to be freed. A null `block` makes a new block; a `size` of 0 gives
/// one of no bytes, as odrxAlloc does.
[[nodiscard]] TESSEL_API void* odrxRealloc(void* block, std::size_t size) noexcept;

/// Lets the containers of the standard library take their memory from odrxAlloc. All allocators are equal.
template <typename T>
struct OdAllocator {
  static_assert(alignof(T) <= alignof(std::max_align_t), "odrxAlloc aligns for ordinary types only");

  /// The class of the elements.
  using value_type = T;

  /// An allocator has no state.
  ///@{
  OdAllocator() noexcept = default;
  template <typename U>
  OdAllocator(const OdAllocator<U>&) noexcept {}  // NOLINT(google-explicit-constructor)
  ///@}

  /// Throws OdError with `eOutOfMemory` when there is no room for `count` elements.
  [[nodiscard]] T* allocate(std::size_t count) {
    if (count <= PTRDIFF_MAX / sizeof(T)) {
      if (void* const block = odrxAlloc(count * sizeof(T))) return static_cast<T*>(block);
    }
    throw OdError(eOutOfMemory);
  }

  /// Gives a block of `allocate` back; the count is not needed.
  void deallocate(T* block, std::size_t) noexcept { odrxFree(block); }
};

/// Always equal: what one has taken any other may give back.
///@{
template <typename T, typename U>
bool operator==(const OdAllocator<T>&, const OdAllocator<U>&) noexcept {
  return true;
}

template <typename T, typename U>
bool operator!=(const OdAllocator<T>&, const OdAllocator<U>&) noexcept {
  return false;
}
///@}
