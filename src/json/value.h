#pragma once

#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

#include "json/kind.h"
#include "json/recursion.h"
#include "json/string_traits.h"

namespace tsutils::json {

/// A JSON value. `Config` says which types hold text and objects. Copies are deep, and a value that was moved from is
/// null. A value is as thread-safe as a standard container.
///
/// Values may be nested as deep as there is memory, for no operation needs a deep stack. Copying and comparing keep a list
/// of what is still to do, and so may throw std::bad_alloc; destroying needs no memory.
template <typename Configuration>
class Value_impl {
public:
  using Config = Configuration;
  using String = typename Config::String;
  using Array = std::vector<Value_impl>;
  using Object = typename Config::template Object<Value_impl>;

  Value_impl() noexcept = default;
  explicit Value_impl(Object object) { adopt(Kind::object, data_.payload.object, std::move(object)); }
  explicit Value_impl(Array array) { adopt(Kind::array, data_.payload.array, std::move(array)); }
  explicit Value_impl(String string) { adopt(Kind::string, data_.payload.string, std::move(string)); }
  explicit Value_impl(double real) noexcept : Value_impl(Kind::real) { data_.payload.real = real; }

  /// A truth value of a bool, an integer of every other integral type, unsigned if the type is. A template, so that no
  /// pointer turns into a truth value.
  template <typename T, typename = std::enable_if_t<std::is_integral_v<T>>>
  explicit Value_impl(T value) noexcept : Value_impl(std::is_same_v<T, bool> ? Kind::boolean : Kind::integer) {
    if constexpr (std::is_same_v<T, bool>) {
      data_.payload.boolean = value;
    } else {
      data_.payload.integer = static_cast<std::uint64_t>(value);
      data_.isUnsigned = std::is_unsigned_v<T>;
    }
  }

  Value_impl(const Value_impl& other);
  Value_impl(Value_impl&& other) noexcept : data_(std::exchange(other.data_, Data{})) {}
  /// The other value may be a part of this one.
  Value_impl& operator=(const Value_impl& other) { return *this = Value_impl(other); }
  Value_impl& operator=(Value_impl&& other) noexcept {
    Value_impl(std::move(other)).swap(*this);
    return *this;
  }
  ~Value_impl() {
    if (data_.kind <= Kind::string) release();
  }

  void swap(Value_impl& other) noexcept { std::swap(data_, other.data_); }
  friend void swap(Value_impl& left, Value_impl& right) noexcept { left.swap(right); }

  [[nodiscard]] Kind kind() const noexcept { return data_.kind; }
  [[nodiscard]] bool isContainer() const noexcept { return data_.kind <= Kind::array; }

  /// Whether an integer is unsigned; false for every other kind.
  [[nodiscard]] bool isUnsigned() const noexcept { return data_.isUnsigned; }

  /// Each of these throws ValueError if the value is of another kind. References live as long as the value keeps its
  /// kind.
  [[nodiscard]] const Object& asObject() const { return *as(Kind::object).object; }
  [[nodiscard]] Object& asObject() { return *as(Kind::object).object; }
  [[nodiscard]] const Array& asArray() const { return *as(Kind::array).array; }
  [[nodiscard]] Array& asArray() { return *as(Kind::array).array; }
  [[nodiscard]] const String& asString() const { return *as(Kind::string).string; }
  [[nodiscard]] String& asString() { return *as(Kind::string).string; }
  [[nodiscard]] bool asBool() const { return as(Kind::boolean).boolean; }
  /// The 64 bits of the integer; one that is unsigned and above the largest signed one comes out as negative.
  [[nodiscard]] std::int64_t asInt() const { return static_cast<std::int64_t>(as(Kind::integer).integer); }
  /// Takes an integer as well, and converts it. No other operation converts.
  [[nodiscard]] double asReal() const;

  /// Kinds and contents are equal. Integers are when their 64 bits are, signed or not; a real never equals an integer.
  /// The members of objects have to be in the same order. A value equals itself, even one that is not a number.
  friend bool operator==(const Value_impl& left, const Value_impl& right) { return equal(left, right); }
  friend bool operator!=(const Value_impl& left, const Value_impl& right) { return !(left == right); }

private:
  union Payload {
    Object* object;
    Array* array;
    String* string;
    bool boolean;
    std::uint64_t integer;
    double real;
  };

  struct Data {
    Kind kind = Kind::null;
    Payload payload = {};
    bool isUnsigned = false;
  };

  template <typename Target>
  struct Pair {
    const Value_impl* source;
    Target* target;
  };
  using Copies = std::vector<Pair<Value_impl>>;
  using Comparisons = std::vector<Pair<const Value_impl>>;

  explicit Value_impl(Kind kind) noexcept { data_.kind = kind; }

  // The kind comes last: without its content, this is a null.
  template <typename T>
  void adopt(Kind kind, T*& pointer, T&& content) {
    pointer = new T(std::move(content));
    data_.kind = kind;
  }

  const Payload& as(Kind asked) const {
    if (data_.kind != asked) detail::throwWrongKind(data_.kind, asked);
    return data_.payload;
  }

  static Value_impl& valueOf(Value_impl& element) noexcept { return element; }
  static const Value_impl& valueOf(const Value_impl& element) noexcept { return element; }
  static Value_impl& valueOf(typename Object::value_type& member) noexcept { return member.second; }
  static const Value_impl& valueOf(const typename Object::value_type& member) noexcept { return member.second; }

  void copyTree(const Value_impl& other);
  void copyLeaf(const Value_impl& other);
  void copyFlat(const Value_impl& other, Copies& open);
  static void copyMembers(const Value_impl& source, Value_impl& target, Copies& open);

  static bool equal(const Value_impl& left, const Value_impl& right);
  static bool equalFlat(const Value_impl& left, const Value_impl& right, Comparisons& open);
  static bool equalMembers(const Value_impl& left, const Value_impl& right, Comparisons& open);

  void release() noexcept;
  static void freeTree(const Data& root) noexcept;
  static Value_impl* lastNested(const Data& value) noexcept;
  static Data dropLast(const Data& container) noexcept;
  static void free(const Data& container) noexcept;

  Data data_;
};

}  // namespace tsutils::json

#include "json/value_members.h"
