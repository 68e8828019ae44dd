#pragma once

#include <optional>

#include <tessel/platform/od_string.h>
#include <tessel/smart_ptr.h>

namespace tessel {

/// The form of every setter: the object is marked only if the value really changes.
template <typename Impl, typename Field>
void setField(Impl& impl, Field& field, const Field& value) {
  if (field == value) return;
  impl.dirty = true;
  field = value;
}

/// A value where there was none is a change, even if it is an empty text.
template <typename Impl, typename Value>
void setField(Impl& impl, std::optional<Value>& field, const Value& value) {
  if (field && *field == value) return;
  impl.dirty = true;
  field = value;
}

/// Clearing marks the object always, also where there was no value.
template <typename Impl, typename Value>
void clearField(Impl& impl, std::optional<Value>& field) {
  impl.dirty = true;
  field.reset();
}

/// An absent text reads as an empty one.
inline const OdString& textOf(const std::optional<OdString>& text) {
  static const OdString empty;
  return text ? *text : empty;
}

/// References are equal when their targets are; two null ones are, too. Both targets are held meanwhile.
template <typename T>
bool equalTargets(TsSmartPtr<const T> a, TsSmartPtr<const T> b) {
  if (a == b) return true;
  return a && b && *a == *b;
}

}  // namespace tessel
