#pragma once

#include <map>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <tessel/exceptions.h>
#include <tessel/object_traits.h>

#include "support/recording_reactor.h"
#include "support/samples.h"
#include "support/sql_trace.h"

namespace tessel::test {

using Saved = RecordingReactor::Saved;

template <typename T>
ObjectKey keyOf(const TsSmartPtr<T>& object) {
  return {object->tesselType(), object->id()};
}

/// A project file with a trace of its statements and a reactor that writes everything down.
class ReactingProject : public ::testing::Test {
protected:
  /// What `onSaved` has told, as keys and outcomes.
  std::vector<std::pair<ObjectKey, SaveResolution>> outcomes() const {
    std::vector<std::pair<ObjectKey, SaveResolution>> result;
    for (const Saved& saved : reactor.saved) result.emplace_back(saved.key, saved.resolution);
    return result;
  }

  long long rows(const std::string& table) const { return project.count(table); }

  std::size_t writes() const {
    return sql.beginningWith("INSERT").size() + sql.beginningWith("UPDATE").size() + sql.beginningWith("DELETE").size();
  }

  /// Forgets what came before.
  void startWatching() {
    sql.clear();
    reactor.clear();
  }

  SqlTrace sql;
  SampleProject project;
  std::shared_ptr<ProjectDb>& db = project.db;
  RecordingReactor reactor{project.db};
};

/// A second project file beside the first.
class TwoProjects : public ReactingProject {
protected:
  SampleProject otherProject;
  std::shared_ptr<ProjectDb>& other = otherProject.db;
};

/// A change of some field that is neither the name nor a reference.
template <typename T>
void changeSomething(T& object) {
  const std::vector<Field<T>> fields = Sample<T>::fields();
  for (auto field = fields.rbegin(); field != fields.rend(); ++field) {
    const bool isPlain = field->change && field->fill && field->column != "label";
    if (!isPlain) continue;
    field->change(object);
    return;
  }
}

/// Other values in all fields but the name and the references. Labels are unique, too, where they are.
template <typename T>
void changeAllButTheName(T& object) {
  for (const Field<T>& field : Sample<T>::fields()) {
    if (field.change && field.fill && field.column != "name") field.change(object);
  }
}

/// What a save of a new object visits, what it refers to first.
void appendVisits(const Object& object, std::vector<ObjectType>& types);

template <typename T>
void appendVisitsOf(const Object& object, std::vector<ObjectType>& types) {
  const auto* const concrete = dynamic_cast<const T*>(&object);
  if (!concrete) return;
  for (const TsSmartPtr<const Object>& reference : Sample<T>::references(*concrete)) appendVisits(*reference, types);
  types.push_back(T::staticTesselType());
}

template <typename... Classes>
void appendVisits(const Object& object, std::vector<ObjectType>& types, ::testing::Types<Classes...>) {
  (appendVisitsOf<Classes>(object, types), ...);
}

inline void appendVisits(const Object& object, std::vector<ObjectType>& types) {
  appendVisits(object, types, SampledClasses());
}

// Measures and units settle their clashes themselves.
template <typename T>
struct AsksReactor : std::bool_constant<!std::is_same_v<T, Measure> && !std::is_same_v<T, Unit>> {};
using ReactorClasses = Filter<AsksReactor, SampledClasses>::type;
using RenamableReactorClasses = Filter<AsksReactor, RenamableClasses>::type;

}  // namespace tessel::test
