#pragma once

#include <cstdio>
#include <functional>
#include <string>
#include <type_traits>
#include <vector>

#include <tessel/object.h>
#include <tessel/platform/od_string.h>

namespace tessel::test {

/// What the tests know of one class `T` of persistent objects; see samples.h.
template <typename T>
struct Sample;

template <typename T>
TsSmartPtr<T> makeSample(int number = 1);
template <typename T>
TsSmartPtr<T> filled(const TsSmartPtr<T>& object, int number);

/// One field of a class, which has a column of the same name in the class's table. A field without a setter has no
/// `change` and `setSame`.
template <typename T>
struct Field {
  std::string column;
  std::function<std::string(const T&)> inFile;  ///< The value as SQLite shows that of the column.
  std::function<void(T&, int)> fill;            ///< A value of its own, far from the default; empty for references.
  std::function<void(T&)> change;               ///< Sets another value.
  std::function<void(T&)> setSame;              ///< Sets the value that is there.
  std::function<TsSmartPtr<T>()> otherwise;     ///< An object that differs from `makeSample<T>()` in this field alone.
  bool compared = true;                         ///< Whether equality looks at it.
  bool assigned = true;                         ///< Whether assigning copies it.

  // Empty unless the field is of this kind and has a setter.
  std::function<OdString(const T&)> getText;
  std::function<void(T&, const OdString&)> setText;
  std::function<double(const T&)> getNumber;
  std::function<void(T&, double)> setNumber;
};

// How SQLite shows a value of each type.
inline std::string inFile(const OdString& text) { return text.toUtf8(); }
inline std::string inFile(bool value) { return value ? "1" : "0"; }
inline std::string inFile(unsigned int value) { return std::to_string(value); }
inline std::string inFile(short value) { return std::to_string(value); }
inline std::string inFile(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.15g", value);
  const bool looksLikeAnInteger = std::string(text).find_first_not_of("-0123456789") == std::string::npos;
  return looksLikeAnInteger ? std::string(text) + ".0" : text;
}
template <typename T>
std::string inFile(const TsSmartPtr<T>& reference) {
  return reference ? std::to_string(reference->id()) : "NULL";
}

// A value of its own for each field; numbers have a fraction, so they show that they are not kept as integers. Texts
// have quotes, wildcards and characters of all lengths.
inline void makeOwn(OdString& value, const std::string& column, int number) {
  value =
    OdString::fromUtf8(column + " " + std::to_string(number)) + OdString(L" \u00DF\u4E2D\U0001F3E0 \"it's\" %_;--");
}
inline void makeOwn(bool& value, const std::string&, int) { value = !value; }
inline void makeOwn(unsigned int& value, const std::string&, int number) { value = static_cast<unsigned int>(number); }
inline void makeOwn(double& value, const std::string&, int number) { value = number + 0.125; }

inline void makeOther(OdString& value) { value += OdString(L"*"); }
inline void makeOther(bool& value) { value = !value; }
inline void makeOther(unsigned int& value) { ++value; }
inline void makeOther(double& value) { value += 1; }
template <typename T>
void makeOther(TsSmartPtr<const T>& reference) {
  reference = makeSample<T>(7);
}

/// A field with a getter and a setter: `settable<Site>("town", &Site::town, &Site::set_town)`.
template <typename T, typename Get, typename Set>
Field<T> settable(const std::string& column, Get get, Set set) {
  using Value = std::decay_t<std::invoke_result_t<Get, const T&>>;
  const auto value = [get](const T& object) { return Value(std::invoke(get, object)); };

  Field<T> field;
  field.column = column;
  field.inFile = [value](const T& object) { return inFile(value(object)); };
  field.change = [value, set](T& object) {
    Value other = value(object);
    makeOther(other);
    std::invoke(set, object, other);
  };
  field.setSame = [value, set](T& object) { std::invoke(set, object, value(object)); };
  field.otherwise = [change = field.change] {
    const TsSmartPtr<T> object = makeSample<T>();
    change(*object);
    return object;
  };
  if constexpr (std::is_same_v<Value, OdString> || std::is_arithmetic_v<Value>) {
    field.fill = [value, set, column](T& object, int number) {
      Value own = value(object);
      makeOwn(own, column, number);
      std::invoke(set, object, own);
    };
  }
  if constexpr (std::is_same_v<Value, OdString>) {
    field.getText = value;
    field.setText = [set](T& object, const OdString& text) { std::invoke(set, object, text); };
  }
  if constexpr (std::is_same_v<Value, double>) {
    field.getNumber = value;
    field.setNumber = [set](T& object, double number) { std::invoke(set, object, number); };
  }
  return field;
}

/// A field that is fixed when an object is made; `otherwise` makes one with another value.
template <typename T, typename Get>
Field<T> fixed(const std::string& column, Get get, std::function<TsSmartPtr<T>()> otherwise) {
  Field<T> field;
  field.column = column;
  field.inFile = [get](const T& object) { return inFile(std::invoke(get, object)); };
  field.otherwise = std::move(otherwise);
  return field;
}

}  // namespace tessel::test
