#include "copy_failure.h"

#include <string_view>
#include <vector>

#include <tessel/copy_report.h>
#include <tessel/exceptions.h>
#include <tessel/property_set.h>
#include <tessel/units.h>

#include "failures.h"
#include "object_names.h"
#include "object_types.h"
#include "text.h"

namespace tessel::tool {
namespace {

std::string quoted(const OdString& text) { return "'" + text.toUtf8() + "'"; }

std::string named(ObjectType type, const OdString& name) { return namedObject(type, name.toUtf8()); }

/// Objects of the source that have not arrived, against all of the destination.
template <typename T, typename IsInTheWay>
std::string findInTheWay(const ProjectDb& source, const ProjectDb& destination, const IdMapping& mapping,
                         const IsInTheWay& isInTheWay) {
  std::vector<TsSmartPtr<T>> incoming;
  source.get(incoming);
  std::vector<TsSmartPtr<T>> existing;
  destination.get(existing);
  for (const auto& object : incoming) {
    if (mapping.has({ObjectTraits<T>::type, object->id(), &source})) continue;
    for (const auto& other : existing) {
      const std::string what = isInTheWay(*object, *other);
      if (!what.empty()) return named(ObjectTraits<T>::type, nameOf(*object)) + what;
    }
  }
  return {};
}

std::string unitInTheWay(const Unit& incoming, const Unit& existing) {
  if (incoming.measure()->name() == existing.measure()->name() && incoming.label() == existing.label() &&
      incoming.scale() != existing.scale()) {
    return ": " + quoted(existing.label()) + " of " + existing.measure()->name().toUtf8() + " is " +
           numberText(existing.scale()) + " there, and not " + numberText(incoming.scale());
  }
  if (incoming.has_name() && existing.has_name() && incoming.name() == existing.name()) {
    return ": the name belongs to another unit there, " + quoted(existing.label()) + " of " +
           existing.measure()->name().toUtf8();
  }
  return {};
}

/// One of the same name would have been kept or overwritten, label and all.
template <typename T>
std::string labelInTheWay(const T& incoming, const T& existing) {
  if (!incoming.has_label() || !existing.has_label() || incoming.label() != existing.label()) return {};
  if (incoming.name() == existing.name()) return {};
  return ": its label " + quoted(incoming.label()) + " is taken there by " + quoted(existing.name());
}

/// No reactor hears of what clashes by something else than its name, so that has to be searched for.
std::string otherClash(const std::string& member, const ProjectDb& source, const ProjectDb& destination,
                       const IdMapping& mapping) {
  const auto isOf = [&](std::string_view className) { return member.compare(0, className.size(), className) == 0; };
  if (isOf("Unit")) return findInTheWay<Unit>(source, destination, mapping, unitInTheWay);
  if (isOf("PropertyNamespace")) {
    return findInTheWay<PropertyNamespace>(source, destination, mapping, labelInTheWay<PropertyNamespace>);
  }
  if (isOf("PropertySet")) {
    return findInTheWay<PropertySet>(source, destination, mapping, labelInTheWay<PropertySet>);
  }
  return {};
}

std::string clashText(const ObjectNotUnique& error, const ProjectDb& source, const ProjectDb& destination,
                      const IdMapping& mapping, const ReactorLog& log) {
  const auto& questions = log.questions();
  if (!questions.empty() && !questions.back().answer) {
    return named(questions.back().type, questions.back().name) + " is there already; choose an answer with --on-clash";
  }
  const std::string member = error.member().toUtf8();
  const std::string found = otherClash(member, source, destination, mapping);
  if (!found.empty()) return found;
  if (questions.empty()) return currentErrorText();
  // The question was answered, but something else than the name is in the way of what was to be written then.
  return named(questions.back().type, questions.back().name) + ": its " + member.substr(member.rfind('.') + 1) +
         " is taken there";
}

/// A building cannot be without its site, nor a story without its building. Empty if that is not what ended the copy.
std::string missingOwner(const ProjectDb& source, const ProjectDb& destination, const IdMapping& mapping) {
  try {
    for (const LeftBehind& object : leftBehind(source, destination, mapping)) {
      const bool isOwner = object.key.type == ObjectType::Site || object.key.type == ObjectType::Building;
      if (!isOwner || object.reason == LeftBehindReason::NotCopied) continue;
      return named(object.key.type, object.name) + " cannot come along (" + whyLeftBehind(object, source, destination) +
             "), and what is in it not without it";
    }
  } catch (const DatabaseException&) {
    // Then it is the file itself.
  }
  return {};
}

}  // namespace

std::string whyLeftBehind(const LeftBehind& object, const ProjectDb& source, const ProjectDb& destination) {
  const std::string column = std::string(objectTypeName(object.key.type)) + "." + object.column.toUtf8();
  switch (object.reason) {
  case LeftBehindReason::NoUnitInSource:
    return column + " has no unit in " + source.filename().toUtf8();
  case LeftBehindReason::NoUnitInDestination:
    return column + " has no unit in " + destination.filename().toUtf8();
  case LeftBehindReason::DimensionsDiffer:
    return "the units of " + column + " in the two files are of different dimensions";
  case LeftBehindReason::NotCopied:
    break;
  }
  return "it refers to something that is missing";
}

std::string whyCopyFailed(const ProjectDb& source, const ProjectDb& destination, const IdMapping& mapping,
                          const ReactorLog& log) {
  try {
    throw;
  } catch (const ObjectNotUnique& error) {
    return clashText(error, source, destination, mapping, log);
  } catch (const DatabaseException&) {
    const std::string owner = missingOwner(source, destination, mapping);
    // The exception does not tell which file it was, nor why.
    if (!owner.empty()) return owner;
    return "one of the files could not be read or written; another program may be using it, or it is damaged";
  } catch (...) {
    return currentErrorText();
  }
}

}  // namespace tessel::tool
