#pragma once

#include <set>
#include <string>

#include <gtest/gtest.h>

#include <tessel/transaction.h>

#include "database/files.h"
#include "operations/operations.h"

namespace tessel::test {

/// While it lives, no byte of the file may change.
class Unchanged {
public:
  explicit Unchanged(const SampleProject& project) : path_(project.path()), before_(bytesOf(path_)) {}
  Unchanged(const Unchanged&) = delete;
  Unchanged& operator=(const Unchanged&) = delete;
  ~Unchanged() { EXPECT_TRUE(bytesOf(path_) == before_) << path_ << " has changed"; }

private:
  std::string path_;
  std::string before_;
};

inline TsSmartPtr<Unit> unitOf(const std::shared_ptr<ProjectDb>& db, const OdString& measure, const wchar_t* label,
                               double scale) {
  return Unit::create(label, scale, db->get<Measure>(NameKey(measure)));
}

/// The first unit of "LENGTH" and of "AREA" is that of their columns, too.
inline void useUnit(const std::shared_ptr<ProjectDb>& db, const OdString& measure, const wchar_t* label, double scale) {
  db->setDefaultUnit(unitOf(db, measure, label, scale));
}

inline OdString labelOf(const TsSmartPtr<const Unit>& unit) { return unit ? unit->label() : OdString(L"no unit"); }
inline unsigned int idOf(const TsSmartPtr<const Unit>& unit) { return unit ? unit->id() : 0; }

/// The columns that hold ids.
template <typename T>
std::set<std::string> referenceColumns() {
  std::set<std::string> columns = {"site_id", "measure_id", "unit_id", "namespace_id"};
  if (std::is_same_v<T, Story>) columns.insert("building_id");
  return columns;
}

/// `other` is the source and `db` the destination, whose reactor writes everything down.
class Copying : public TwoProjects {
protected:
  void TearDown() override { EXPECT_FALSE(Transaction::hasCurrent()); }

  /// What has become of an object of the source.
  IdMapping::Value mapped(const IdMapping& mapping, const Object& object) const {
    IdMapping::Value value{0, SaveResolution::Renamed};
    EXPECT_TRUE(mapping.get({object.tesselType(), object.id(), other.get()}, value));
    return value;
  }

  /// Objects of the source, with all that they refer to.
  TsSmartPtr<Story> foreignStory(const wchar_t* name, double elevation) {
    if (!house) house = other->save(Building::create(Site::create(L"Hill"), L"House"));
    return other->save(Story::create(house, name, elevation));
  }

  std::vector<std::string> inFile(const std::string& column, const std::string& table) const {
    return project.raw().column("SELECT \"" + column + "\" FROM \"tessel_" + table + "\" ORDER BY 1");
  }

  TsSmartPtr<Building> house;
};

}  // namespace tessel::test
