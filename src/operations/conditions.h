#pragma once

#include <odb/sqlite/query.hxx>

#include <tessel/criteria.h>

#include "persistence/traits.h"

namespace tessel {

/// A condition of a query, on whatever object or view of the table it is run.
using Condition = odb::sqlite::query_base;

using TextColumn = odb::sqlite::query_column<OdString, odb::sqlite::id_text>;
using NumberColumn = odb::sqlite::query_column<double, odb::sqlite::id_real>;

/// What the criteria say of the column; the literal true if they say nothing.
Condition textCondition(const TextColumn& column, const StringCriteria& criteria);
Condition numberCondition(const NumberColumn& column, const NumberCriteria& criteria);

/// The condition on the IFC name of a definition, which is its name where it has no IFC name.
Condition ifcNameCondition(const TextColumn& ifcName, const TextColumn& name, const StringCriteria& criteria);

/// That the reference leads to the row with this id; the literal true for id 0. It compares the referring column itself,
/// for a field of the referenced object would add a join.
template <typename ReferenceColumn>
Condition ownerCondition(const ReferenceColumn& column, unsigned int id) {
  return id == 0 ? Condition(true) : Condition(column == id);
}

template <typename Column>
Condition orderedBy(const Condition& condition, const Column& column) {
  return condition + " ORDER BY " + column;
}

}  // namespace tessel
