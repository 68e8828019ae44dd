#pragma once

#include <map>
#include <string>

#include <gtest/gtest.h>

#include "operations/operations.h"

namespace tessel::test {

/// An object of the file, and a new one of the same name whose other values differ.
template <typename T>
class Clash : public TwoProjects {
protected:
  static constexpr ObjectType type = ObjectTraits<T>::type;

  Clash() {
    existing = db->save(makeSample<T>(1));
    incoming = existing->cloneObject();
    changeAllButTheName(*incoming);
    startWatching();
  }

  std::map<std::string, std::string> row(unsigned int id) const { return project.row(Sample<T>::table, id); }
  long long ownRows() const { return rows(Sample<T>::table); }

  void expectUnsaved(const T& object) const {
    EXPECT_EQ(object.id(), 0U);
    EXPECT_FALSE(object.projectDb());
    EXPECT_TRUE(object.isDirty());
  }

  /// How often a write of `incoming` was tried. The row of a spatial object is in two tables.
  std::size_t attempts() const { return sql.beginningWith("INSERT INTO \"" + std::string(Sample<T>::table)).size(); }

  /// The values of the existing row when the incoming object has overwritten it.
  std::map<std::string, std::string> overwritten() const {
    std::map<std::string, std::string> values = valuesOf(*incoming);
    // Of a value definition only what it shares with property definitions is taken over.
    if (type == ObjectType::ValueDefinition) values["value_spec"] = valuesOf(*existing)["value_spec"];
    return values;
  }

  IdMapping::Value recorded(const IdMapping& mapping) const {
    IdMapping::Value value{4711, SaveResolution::Renamed};
    EXPECT_TRUE(mapping.get({type, 0, nullptr}, value));
    return value;
  }

  TsSmartPtr<T> existing;
  TsSmartPtr<T> incoming;
};

}  // namespace tessel::test
