#pragma once

#include <memory>
#include <vector>

#include "yardstick_records.h"
#include "yardstick_session.h"

namespace tessel::benchmarks::yardstick {

/// Measures, units, and what is said with them. Look-ups by id keep their statements, those by name prepare theirs at each
/// call.
class UnitTables {
public:
  struct DefaultUnit {
    std::unique_ptr<Measure> measure;
    std::unique_ptr<Unit> unit;
  };

  explicit UnitTables(Session& session);

  std::unique_ptr<Measure> measure(unsigned int id);
  std::unique_ptr<Unit> unit(unsigned int id);
  std::unique_ptr<Measure> measureNamed(const Text& name);
  std::unique_ptr<Unit> unitNamed(const Text& name);

  /// With kept statements.
  std::unique_ptr<Unit> defaultUnit(const Text& measure);
  std::unique_ptr<Unit> keptColumnUnit(const Text& table, const Text& column);

  std::unique_ptr<Unit> columnUnit(const Text& table, const Text& column);

  std::vector<Measure> measures();
  std::vector<Unit> units();
  std::vector<DefaultUnit> defaultUnits();

  /// The id is set. A measure of that name that is there already stands for the new one.
  void insert(Measure& measure);
  void insert(Unit& unit);
  void insert(const DefaultUnit& unit) { insertDefaultUnit_.run(unit.measure->id, unit.unit->id); }

private:
  Unit unitOf(const Statement& row);

  Session& session_;
  Statement insertMeasure_, insertUnit_, insertDefaultUnit_;
  Statement findMeasure_, findUnit_, findDefaultUnit_, findColumnUnit_;
};

}  // namespace tessel::benchmarks::yardstick
