#pragma once

#include <map>
#include <utility>

#include "yardstick_tables.h"

namespace tessel::benchmarks::yardstick {

/// Copies all objects and default units into another file, in the transaction of the caller. Each class is listed in a
/// transaction of its own on the source, in which the references of each row are loaded anew.
class Copy {
public:
  Copy(Tables& destination, Tables& source) : to_(destination), from_(source) {}

  void run();

private:
  enum class Class { building, site, entityType, definition, ns, unit, measure };

  // Each turns an object of the source into what stands for it in the destination.
  void bring(Story& story);
  void bring(Building& building);
  void bring(Site& site);
  void bring(EntityType& type);
  void bring(Definition& definition);
  void bring(PropertySet& set);
  void bring(Namespace& ns);
  void bring(Unit& unit);
  void bring(Measure& measure);

  /// What has arrived already, as the reference of another object, is loaded by its new id; all else is written.
  template <typename Record, typename Load, typename Write>
  void bringOnce(Class type, Record& record, Load&& load, Write&& write);

  template <typename List>
  void bringAll(List&& list);

  void copyDefaultUnits();

  /// Asks both files for the unit of the column anew, the source in a transaction of its own.
  void convert(double& value, const Text& table, const Text& column);

  Tables& to_;
  Tables& from_;
  std::map<std::pair<Class, unsigned int>, unsigned int> rows_;
};

}  // namespace tessel::benchmarks::yardstick
