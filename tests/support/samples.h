#pragma once

#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <tessel/project_db.h>

#include "support/printers.h"
#include "support/raw_file.h"
#include "support/samples_catalogue.h"
#include "support/samples_field.h"
#include "support/samples_spatial.h"
#include "support/samples_units.h"
#include "support/temp_folder.h"

namespace tessel::test {

// What all classes of persistent objects have in common is tested once, over this list. A class takes part by a
// specialisation of `Sample` and its entry here. The specialisation has:
//
//   Parent, className, table    the class that it derives from, its bare name, and where its rows are
//   create(number)              a new object whose references belong to it alone; other numbers never clash
//   fields()                    every column of the table but the id, in the order of the class's fields
//   references(object)          what it refers to, in the order in which a save visits them
//   key(object), criteria(object)   what finds this one object of a file

using SampledClasses = ::testing::Types<Site, Building, Story, Measure, Unit, EntityType, PropertyNamespace,
                                        PropertyDefinition, ValueDefinition, PropertySet>;

/// Gives every field of an object a value of its own. Objects of different numbers differ in all texts and numbers.
template <typename T>
TsSmartPtr<T> filled(const TsSmartPtr<T>& object, int number) {
  int own = 100 * number;
  for (const Field<T>& field : Sample<T>::fields()) {
    ++own;
    if (field.fill) field.fill(*object, own);
  }
  return object;
}

/// A new object with a value of its own in every field.
template <typename T>
TsSmartPtr<T> makeSample(int number) {
  return filled(Sample<T>::create(number), number);
}

template <typename T>
Field<T> fieldOf(const std::string& column) {
  for (const Field<T>& field : Sample<T>::fields()) {
    if (field.column == column) return field;
  }
  throw std::invalid_argument("no field " + column);
}

/// The values of all fields, by column.
template <typename T>
std::map<std::string, std::string> valuesOf(const T& object) {
  std::map<std::string, std::string> values;
  for (const Field<T>& field : Sample<T>::fields()) values[field.column] = field.inFile(object);
  return values;
}

/// A project file in a folder of its own.
class SampleProject {
public:
  SampleProject() : db(ProjectDb::create(OdString::fromUtf8(path()))) {}

  std::string path() const { return folder_.path("sample.tessel"); }
  RawFile raw() const { return RawFile(path()); }

  /// Closes the handle and opens the file anew: what is read now comes from the file.
  void reopen() {
    db.reset();
    db = ProjectDb::open(OdString::fromUtf8(path()), false);
  }

  /// The values of a row but the id, by column.
  std::map<std::string, std::string> row(const std::string& table, unsigned int id) const {
    RawFile file = raw();
    const std::vector<std::string> columns = file.columns(table);
    const RawFile::Row values = file.rows("SELECT * FROM \"" + table + "\" WHERE \"id\" = " + std::to_string(id)).at(0);
    std::map<std::string, std::string> row;
    for (std::size_t i = 0; i < columns.size(); ++i) row[columns[i]] = values.at(i);
    row.erase("id");
    return row;
  }

  long long count(const std::string& table) const { return raw().count(table); }

private:
  TempFolder folder_;

public:
  std::shared_ptr<ProjectDb> db;
};

// A list of types, reduced to those that have a property.
template <template <typename> class Has, typename List, typename Kept = ::testing::Types<>>
struct Filter;
template <template <typename> class Has, typename... Kept>
struct Filter<Has, ::testing::Types<>, ::testing::Types<Kept...>> {
  using type = ::testing::Types<Kept...>;
};
template <template <typename> class Has, typename T, typename... Rest, typename... Kept>
struct Filter<Has, ::testing::Types<T, Rest...>, ::testing::Types<Kept...>> {
  using type =
    typename Filter<Has, ::testing::Types<Rest...>,
                    std::conditional_t<Has<T>::value, ::testing::Types<Kept..., T>, ::testing::Types<Kept...>>>::type;
};

/// Those that can be assigned to.
using AssignableClasses = Filter<std::is_copy_assignable, SampledClasses>::type;

/// Those whose name can be set.
template <typename T, typename = void>
struct HasNameSetter : std::false_type {};
template <typename T>
struct HasNameSetter<T, std::void_t<decltype(&T::set_name)>> : std::true_type {};
template <typename T>
struct CanBeRenamed : HasNameSetter<T> {};
using RenamableClasses = Filter<CanBeRenamed, SampledClasses>::type;

/// Shows the classes by their names in the names of the tests.
struct ClassNames {
  template <typename T>
  static std::string GetName(int) {
    return OdString(Sample<T>::className).toUtf8();
  }
};

}  // namespace tessel::test
