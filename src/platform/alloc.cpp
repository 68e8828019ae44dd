#include <tessel/platform/alloc.h>

#include <cstdlib>

namespace {

// The C functions may answer a size of 0 with null, which would look like exhaustion.
std::size_t atLeastOne(std::size_t size) { return size == 0 ? 1 : size; }

}  // namespace

void* odrxAlloc(std::size_t size) noexcept { return std::malloc(atLeastOne(size)); }

void odrxFree(void* block) noexcept { std::free(block); }

void* odrxRealloc(void* block, std::size_t size) noexcept { return std::realloc(block, atLeastOne(size)); }
