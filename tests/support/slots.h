#pragma once

#if defined(__GXX_ABI_VERSION)

#include <cstddef>
#include <cstring>

namespace tessel::test {

/// The place of a virtual operation in the table of its class, counted from 0. A virtual destructor takes two places in
/// this ABI, so what comes behind one is found one place after its slot in the interface. Some machines mark a virtual
/// operation by the lowest bit of the offset, which the division drops.
template <typename Operation>
std::ptrdiff_t placeInTable(Operation operation) {
  struct {
    std::ptrdiff_t pointer;
    std::ptrdiff_t adjustment;
  } parts;
  static_assert(sizeof parts == sizeof operation);
  std::memcpy(&parts, &operation, sizeof parts);
  return parts.pointer / static_cast<std::ptrdiff_t>(sizeof(void*));
}

/// The slot of an operation of a class whose destructor is virtual and in slot 0.
template <typename Operation>
std::ptrdiff_t slotOf(Operation operation) {
  return placeInTable(operation) - 1;
}

}  // namespace tessel::test

#endif
