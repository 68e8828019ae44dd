#include "yardstick_units.h"

namespace tessel::benchmarks::yardstick {
namespace {

const Table measureTable{"tessel_Measure",
                         {"id", "name", "description", "length", "mass", "time", "thermodynamic_temperature",
                          "electric_current", "luminous_intensity", "amount_of_substance"}};
const Table unitTable{"tessel_Unit", {"id", "name", "label", "scale", "measure_id"}};

const std::string columnUnitQuery = R"(SELECT "unit_id" FROM "tessel_ColumnUnit" WHERE "table"=? AND "column"=?)";

template <typename Record, typename Use>
void fieldsOf(Record& m, Use&& use) {
  use(m.name, m.description, m.length, m.mass, m.time, m.thermodynamic_temperature, m.electric_current,
      m.luminous_intensity, m.amount_of_substance);
}

void read(const Statement& row, Measure& measure) {
  fieldsOf(measure, [&](auto&... fields) { row.read(measure.id, fields...); });
}

/// The unit of the one row that a query on columns gives; 0 if there is none.
unsigned int unitOfColumn(Statement& query, const Text& table, const Text& column) {
  unsigned int unit = 0;
  query.bind(table, column);
  if (query.step()) query.read(unit);
  query.reset();
  return unit;
}

}  // namespace

UnitTables::UnitTables(Session& session)
    : session_(session), insertMeasure_(session.connection(), insertInto(measureTable)),
      insertUnit_(session.connection(), insertInto(unitTable)),
      insertDefaultUnit_(session.connection(),
                         R"(INSERT INTO "tessel_DefaultUnit" ("measure_id", "unit_id") VALUES (?, ?))"),
      findMeasure_(session.connection(), selectById(measureTable)),
      findUnit_(session.connection(), selectById(unitTable)),
      findDefaultUnit_(session.connection(), R"(SELECT "tessel_DefaultUnit"."unit_id" FROM "tessel_DefaultUnit"
  LEFT JOIN "tessel_Measure" AS "measure_id" ON "measure_id"."id"="tessel_DefaultUnit"."measure_id"
  WHERE "measure_id"."name"=?)"),
      findColumnUnit_(session.connection(), columnUnitQuery) {}

std::unique_ptr<Measure> UnitTables::measure(unsigned int id) {
  auto measure = std::make_unique<Measure>();
  findMeasure_.bind(id);
  if (findMeasure_.step()) read(findMeasure_, *measure);
  findMeasure_.reset();
  return measure;
}

std::unique_ptr<Measure> UnitTables::measureNamed(const Text& name) {
  static const std::string text = selectFrom(measureTable, R"(WHERE "tessel_Measure"."name"=?)");
  Statement query(session_.connection(), text);
  query.bind(name);
  if (!query.step()) return nullptr;
  auto measure = std::make_unique<Measure>();
  read(query, *measure);
  return measure;
}

std::unique_ptr<Unit> UnitTables::unit(unsigned int id) {
  findUnit_.bind(id);
  auto unit = findUnit_.step() ? std::make_unique<Unit>(unitOf(findUnit_)) : nullptr;
  findUnit_.reset();
  return unit;
}

std::unique_ptr<Unit> UnitTables::unitNamed(const Text& name) {
  static const std::string text = selectFrom(unitTable, R"(WHERE "tessel_Unit"."name"=?)");
  Statement query(session_.connection(), text);
  query.bind(name);
  return query.step() ? std::make_unique<Unit>(unitOf(query)) : nullptr;
}

Unit UnitTables::unitOf(const Statement& row) {
  Unit unit;
  unsigned int owner = 0;
  row.read(unit.id, unit.name, unit.label, unit.scale, owner);
  unit.measure = measure(owner);
  return unit;
}

std::unique_ptr<Unit> UnitTables::defaultUnit(const Text& measure) {
  unsigned int id = 0;
  findDefaultUnit_.find(measure, id);
  return unit(id);
}

std::unique_ptr<Unit> UnitTables::keptColumnUnit(const Text& table, const Text& column) {
  return unit(unitOfColumn(findColumnUnit_, table, column));
}

std::unique_ptr<Unit> UnitTables::columnUnit(const Text& table, const Text& column) {
  Statement query(session_.connection(), columnUnitQuery);
  const unsigned int id = unitOfColumn(query, table, column);
  return id == 0 ? nullptr : unit(id);
}

std::vector<Measure> UnitTables::measures() {
  Statement query(session_.connection(), selectFrom(measureTable, R"(ORDER BY "tessel_Measure"."name")"));
  std::vector<Measure> result;
  while (query.step()) read(query, result.emplace_back());
  return result;
}

std::vector<Unit> UnitTables::units() {
  Statement query(session_.connection(), selectFrom(unitTable));
  std::vector<Unit> result;
  while (query.step()) result.push_back(unitOf(query));
  return result;
}

std::vector<UnitTables::DefaultUnit> UnitTables::defaultUnits() {
  Statement query(session_.connection(), R"(SELECT "measure_id", "unit_id" FROM "tessel_DefaultUnit")");
  std::vector<DefaultUnit> result;
  while (query.step()) {
    unsigned int owner = 0, id = 0;
    query.read(owner, id);
    result.push_back({measure(owner), unit(id)});
  }
  return result;
}

void UnitTables::insert(Measure& measure) {
  Savepoint savepoint(session_);
  bool good = false;
  fieldsOf(measure, [&](auto&... fields) { good = insertMeasure_.tryRun(nullptr, fields...); });
  if (!good) savepoint.rollback();
  measure.id = good ? session_.lastId() : measureNamed(measure.name)->id;
  savepoint.release();
}

void UnitTables::insert(Unit& unit) {
  Savepoint savepoint(session_);
  insertUnit_.run(nullptr, unit.name, unit.label, unit.scale, unit.measure->id);
  unit.id = session_.lastId();
  savepoint.release();
}

}  // namespace tessel::benchmarks::yardstick
