#pragma once

#include <tessel/id_mapping.h>
#include <tessel/smart_ptr.h>

#include "operations/not_unique.h"

namespace tessel {

/// Settles what becomes of an object whose write was refused because a unique value is taken. Unless the object is to be
/// written once more as it is now, `object` points at another one afterwards:
///
/// - Kept: the existing object stands for it, and nothing is written.
/// - Overwritten: the existing object has taken over values and is to be written.
/// - any other result: write again.
///
/// Throws ObjectNotUnique where there is nothing to settle, and what a reactor throws.
template <typename T>
SaveResolution resolveNameClash(ProjectDb& db, TsSmartPtr<T>& object, const FailureMessage& failure);

}  // namespace tessel
