#include <string>

#include <odb/sqlite/database.hxx>

#include <tessel/mapping-odb.hxx>

#include "database/connection_lock.h"
#include "database/operation.h"
#include "database/project_db_impl.h"
#include "database/seed.h"
#include "operations/conditions.h"
#include "operations/prepared_query.h"
#include "operations/saver.h"
#include "units/dimensioned_columns.h"

namespace tessel {
namespace {

using UnitQuery = odb::query<Unit>;

struct ColumnKey {
  using Row = ColumnUnit;
  OdString table;
  OdString column;
};
struct MeasureName {
  using Row = DefaultUnit;
  OdString name;
};

Condition isRowOf(const ColumnKey& key) {
  return "\"table\" =" + UnitQuery::_ref(key.table) + "AND \"column\" =" + UnitQuery::_ref(key.column);
}

Condition isRowOf(const MeasureName& measure) {
  return "\"measure_id\" = (SELECT \"id\" FROM \"tessel_Measure\" WHERE \"name\" =" + UnitQuery::_ref(measure.name) +
         ")";
}

/// Asked for directly, because loading the row would load its measure a second time.
template <typename Key>
TsSmartPtr<const Unit> unitNamedBy(const Key& key) {
  odb::prepared_query<Unit> query = preparedQuery<Unit>(key, [](const Key& parameter) {
    const std::string table = odb::object_traits_impl<typename Key::Row, odb::id_sqlite>::table_name;
    return UnitQuery::id + ("= (SELECT \"unit_id\" FROM " + table + " WHERE") + isRowOf(parameter) + ")";
  });
  odb::result<Unit> units = query.execute();
  auto unit = units.begin();
  return unit == units.end() ? nullptr : unit.load();
}

/// Throws if the row names a unit that the file lacks.
template <typename Key>
TsSmartPtr<const Unit> unitOfLoadedRow(const Key& key) {
  using Row = typename Key::Row;
  odb::prepared_query<Row> query = preparedQuery<Row>(key, [](const Key& parameter) { return isRowOf(parameter); });
  odb::result<Row> rows = query.execute();
  const auto row = rows.begin();
  return row == rows.end() ? nullptr : row->unit();
}

/// The unit of the row of a key; null if there is no such row, or none in it.
template <typename Key>
TsSmartPtr<const Unit> findUnit(const Key& key) {
  const ConnectionLock lock;
  const auto unit = unitNamedBy(key);
  return unit ? unit : unitOfLoadedRow(key);
}

/// Writes the rows of the columns of one class whose measure the unit has. A column that has its unit already keeps it,
/// and whatever else is in the way of one row does not keep the others from being written, as long as the transaction
/// stands.
template <typename T>
void addColumnUnits(odb::sqlite::database& database, const TsSmartPtr<const Unit>& unit) {
  using Columns = DimensionedColumns<T>;
  for (const DimensionedColumn<T>& column : Columns::columns) {
    if (unit->measure()->name() != column.measure) continue;
    ColumnUnit row(Columns::table, column.name, unit);
    try {
      database.persist(row);
      advanceUnitClock();
    } catch (const odb::exception&) {
      // The existing row stands.
      requireTransaction();
    }
  }
}

void addDefaultColumnUnits(odb::sqlite::database& database, const TsSmartPtr<const Unit>& unit) {
  addColumnUnits<Site>(database, unit);
  addColumnUnits<Building>(database, unit);
  addColumnUnits<Story>(database, unit);
}

/// False if the measure has no row yet. The row has no id that ODB could update it by.
bool updateDefaultUnit(odb::sqlite::database& database, const Measure& measure, const Unit& unit) {
  return database.execute("UPDATE \"tessel_DefaultUnit\" SET \"unit_id\" = " + std::to_string(unit.id()) +
                          " WHERE \"measure_id\" = " + std::to_string(measure.id())) > 0;
}

template <typename T>
const char16_t* columnNameOf(double (T::*getter)() const) {
  for (const DimensionedColumn<T>& column : DimensionedColumns<T>::columns) {
    if (column.getter == getter) return column.name;
  }
  return nullptr;
}

TsSmartPtr<const Unit> createMeasureWithDefaultUnit(odb::sqlite::database& database, const char16_t* name,
                                                    short lengthExponent, const char16_t* label, double scale) {
  const auto measure = Measure::create(name, lengthExponent, 0, 0, 0, 0, 0, 0);
  database.persist(measure);
  const auto unit = Unit::create(label, scale, measure);
  database.persist(unit);
  DefaultUnit defaultUnit(measure, unit);
  database.persist(defaultUnit);
  return unit;
}

}  // namespace

void persistBaseMeasures(odb::database& database) {
  const TsSmartPtr<Measure> measures[] = {
    Measure::create(lengthMeasure, 1, 0, 0, 0, 0, 0, 0),
    Measure::create(areaMeasure, 2, 0, 0, 0, 0, 0, 0),
    Measure::create(u"VOLUME", 3, 0, 0, 0, 0, 0, 0),
    Measure::create(u"MASS", 0, 1, 0, 0, 0, 0, 0),
  };
  for (const TsSmartPtr<Measure>& measure : measures) static_cast<odb::sqlite::database&>(database).persist(measure);
}

// Inch and foot are the international ones: 0.0254 m, and 0.3048 m squared (NIST Special Publication 811, appendix B).
void persistMigratedUnits(odb::database& anyDatabase, MeasureSystem system) {
  auto& database = static_cast<odb::sqlite::database&>(anyDatabase);
  const bool metric = system == MeasureSystem::metric;
  const auto length =
    createMeasureWithDefaultUnit(database, lengthMeasure, 1, metric ? u"mm" : u"in", metric ? 0.001 : 0.0254);
  const auto area =
    createMeasureWithDefaultUnit(database, areaMeasure, 2, metric ? u"m^2" : u"ft^2", metric ? 1.0 : 0.09290304);
  addDefaultColumnUnits(database, length);
  addDefaultColumnUnits(database, area);
}

TsSmartPtr<const Unit> ProjectDb::defaultUnit(const OdString& measureName) const {
  return readOperation(*this, [&] { return findUnit(MeasureName{measureName}); });
}

void ProjectDb::setDefaultUnit(const TsSmartPtr<const Unit>& unit) {
  if (!unit) return;
  writeOperation(*this, [&] {
    odb::sqlite::database& database = *impl_->database;
    IdMapping mapping(this);
    ColumnUnits columnUnits;
    const TsSmartPtr<const Unit> saved = Saver<Unit>(*this, mapping, columnUnits).saveConst(unit);
    const TsSmartPtr<const Measure>& measure = saved->measure();
    requireTransaction();
    if (updateDefaultUnit(database, *measure, *saved)) return;
    DefaultUnit row(measure, saved);
    database.persist(row);
    addDefaultColumnUnits(database, saved);
  });
}

template <typename T>
TsSmartPtr<const Unit> ProjectDb::columnUnit(double (T::*getter)() const) const {
  const char16_t* const column = columnNameOf(getter);
  if (!column) return {};
  return readOperation(*this, [&] { return findUnit(ColumnKey{DimensionedColumns<T>::table, column}); });
}

template TsSmartPtr<const Unit> ProjectDb::columnUnit(double (Site::*)() const) const;
template TsSmartPtr<const Unit> ProjectDb::columnUnit(double (Building::*)() const) const;
template TsSmartPtr<const Unit> ProjectDb::columnUnit(double (Story::*)() const) const;

}  // namespace tessel
