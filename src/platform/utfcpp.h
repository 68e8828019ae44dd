#pragma once

// The exceptions of utfcpp leave the library, and a host's handler recognises them for sure only if their classes
// are visible. The functions stay hidden: those of another version in the host must not take their place.
#if defined(__GNUC__)
namespace utf8 {
class __attribute__((visibility("default"))) exception;
class __attribute__((visibility("default"))) invalid_code_point;
class __attribute__((visibility("default"))) invalid_utf8;
class __attribute__((visibility("default"))) invalid_utf16;
class __attribute__((visibility("default"))) not_enough_room;
}  // namespace utf8
#endif

#include <utf8.h>
