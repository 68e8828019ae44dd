#pragma once

#include <vector>

#include <tessel/export.h>
#include <tessel/fwd.h>
#include <tessel/object_type.h>
#include <tessel/platform/od_string.h>

namespace tessel {

/// Why an object did not come along in a copy.
enum class LeftBehindReason {
  NoUnitInSource,       ///< Only the destination says in which unit it keeps the numbers of a column.
  NoUnitInDestination,  ///< Only the source says so.
  DimensionsDiffer,     ///< Both do, but one unit cannot be converted to the other.
  NotCopied,            ///< The numbers are no obstacle: its class was not copied, or its row cannot be loaded.
};

/// An object that did not come along.
struct LeftBehind {
  ObjectKey key;            ///< In the source.
  OdString name;            ///< The label, for a unit without a name.
  LeftBehindReason reason;  ///< As the files are now.
  OdString column;          ///< The first column whose numbers cannot be converted; empty for `NotCopied`.
};

/// Lists the objects of all classes of the source that have no entry in the mapping of a copy, and why:
///
///     IdMapping mapping(db);
///     db->copyAll(source, mapping);
///     for (const auto& object : leftBehind(*source, *db, mapping)) show(object.name, object.column);
///
/// A copy says nothing of the sites, buildings and stories that it leaves behind for the units of their columns. The
/// reason is the same for all objects of a class. Once the columns have their missing units, as by `copyMeta`, the
/// classes can be copied again with the same mapping.
///
/// The classes come in the order in which they are copied, stories first, and the objects of a class in the order of
/// their names. Both files are only read. Failures are thrown as DatabaseException.
TESSEL_API std::vector<LeftBehind> leftBehind(const ProjectDb& source, const ProjectDb& destination,
                                              const IdMapping& mapping);

}  // namespace tessel
