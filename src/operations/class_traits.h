#pragma once

#include <tessel/mapping-odb.hxx>

#include <tessel/criteria.h>
#include <tessel/units.h>

#include "operations/conditions.h"

namespace tessel {

/// What the operations must know of a class, and all that is special to it. One record per class, in the file of its
/// family; the operations themselves are written once, over these records:
///
/// - `Key`: what finds one object, with `keyOf(object)`, `matches(key)` and the prepared queries of that key. Not for
///   SpatialStructure, which has no key.
/// - `IdView`, `CountView`: the views on its table; `NameView`, or else `className`, is for reports of
///   rows that could not be loaded.
/// - `condition(criteria)` and `order(condition, criteria)`: how look-ups read its criteria.
/// - `references(impl, save)`: hands each reference to `save`, together with what its replacement does to the dirty flag.
/// - `rename(object, name)` and `overwrite(existing, incoming)`: what the answers of a reactor do. Not for Measure and
///   Unit, which settle their clashes themselves.
template <typename T>
struct ClassTraits;

/// What a replaced reference does to the dirty flag of the object that holds it.
enum class Replaced { MarksDirty, KeepsFlag };

/// Classes whose name is unique in the file; most of them refer to nothing and are looked up by their name alone.
template <typename T>
struct NamedInFile {
  using Key = NameKey;
  using Query = odb::query<T>;

  static Key keyOf(const T& object) { return Key(object.name()); }

  /// By reference: the query is prepared once and reads the key at each run.
  static Condition matches(const Key& key) { return Query::name == Query::_ref(key.name); }

  static Condition condition(const NameCriteria& criteria) { return textCondition(Query::name, criteria.name); }
  static Condition order(const Condition& condition, const NameCriteria&) { return orderedBy(condition, Query::name); }

  template <typename Save>
  static void references(typename T::Impl&, Save&&) {}
};

/// Classes whose name is unique within their owner; the derived record says which that is.
template <typename T, typename Owner>
struct NamedInOwner {
  using Key = NameObjectKey<Owner>;
  using Query = odb::query<T>;

  static Key keyOf(const T& object) {
    const TsSmartPtr<const Owner>& owner = ClassTraits<T>::ownerOf(object);
    return Key(object.name(), owner ? owner->id() : 0);
  }

  static Condition matches(const Key& key) {
    return Query::name == Query::_ref(key.name) && ClassTraits<T>::ownerColumn() == Query::_ref(key.object_id);
  }
};

/// A reactor's answers, where the class has a name to set and values to assign.
template <typename T>
struct Overwritable {
  static void rename(T& object, const OdString& name) { object.set_name(name); }
  static void overwrite(T& existing, const T& incoming) { existing = incoming; }
};

}  // namespace tessel
