#pragma once

#include <algorithm>
#include <iterator>

#include "json/value.h"

// What value.h declares and does not define: all that goes through whole trees.

namespace tsutils::json {

template <typename Configuration>
double Value_impl<Configuration>::asReal() const {
  if (data_.kind != Kind::integer) return as(Kind::real).real;
  const std::uint64_t bits = data_.payload.integer;
  return data_.isUnsigned ? static_cast<double>(bits) : static_cast<double>(static_cast<std::int64_t>(bits));
}

template <typename Configuration>
Value_impl<Configuration>::Value_impl(const Value_impl& other) : Value_impl() {
  const detail::Recursion recursion;
  if (recursion.isDeep()) {
    copyTree(other);
  } else if (other.data_.kind == Kind::object) {
    adopt(Kind::object, data_.payload.object, Object(*other.data_.payload.object));
  } else if (other.data_.kind == Kind::array) {
    adopt(Kind::array, data_.payload.array, Array(*other.data_.payload.array));
  } else {
    copyLeaf(other);
  }
}

template <typename Configuration>
void Value_impl<Configuration>::copyTree(const Value_impl& other) {
  Copies open;
  copyFlat(other, open);
  while (!open.empty()) {
    const auto [source, target] = open.back();
    open.pop_back();
    copyMembers(*source, *target, open);
  }
}

/// Makes a null a copy of a value that is no container.
template <typename Configuration>
void Value_impl<Configuration>::copyLeaf(const Value_impl& other) {
  if (other.data_.kind == Kind::string) {
    adopt(Kind::string, data_.payload.string, String(*other.data_.payload.string));
  } else {
    data_ = other.data_;
  }
}

/// Makes a null a copy whose members, if there are any, are null and left for later.
template <typename Configuration>
void Value_impl<Configuration>::copyFlat(const Value_impl& other, Copies& open) {
  if (!other.isContainer()) return copyLeaf(other);
  open.push_back({&other, this});
  if (other.data_.kind == Kind::array) {
    adopt(Kind::array, data_.payload.array, Array(other.data_.payload.array->size()));
    return;
  }
  Object object;
  for (const auto& member : *other.data_.payload.object) Config::place(object, member.first);
  adopt(Kind::object, data_.payload.object, std::move(object));
}

template <typename Configuration>
void Value_impl<Configuration>::copyMembers(const Value_impl& source, Value_impl& target, Copies& open) {
  const auto copyAll = [&open](const auto& from, auto& to) {
    auto place = to.begin();
    for (const auto& member : from) valueOf(*place++).copyFlat(valueOf(member), open);
  };
  const Payload& payload = source.data_.payload;
  if (source.data_.kind == Kind::object) {
    copyAll(*payload.object, *target.data_.payload.object);
  } else {
    copyAll(*payload.array, *target.data_.payload.array);
  }
}

template <typename Configuration>
bool Value_impl<Configuration>::equal(const Value_impl& left, const Value_impl& right) {
  if (&left == &right) return true;
  Comparisons open;
  if (!equalFlat(left, right, open)) return false;
  while (!open.empty()) {
    const auto [a, b] = open.back();
    open.pop_back();
    if (!equalMembers(*a, *b, open)) return false;
  }
  return true;
}

/// Leaves the members of containers for later, too.
template <typename Configuration>
bool Value_impl<Configuration>::equalFlat(const Value_impl& left, const Value_impl& right, Comparisons& open) {
  if (left.data_.kind != right.data_.kind) return false;
  const Payload& a = left.data_.payload;
  const Payload& b = right.data_.payload;
  switch (left.data_.kind) {
  case Kind::object:
    open.push_back({&left, &right});
    return a.object->size() == b.object->size();
  case Kind::array:
    open.push_back({&left, &right});
    return a.array->size() == b.array->size();
  case Kind::string:
    return StringTraits<String>::view(*a.string) == StringTraits<String>::view(*b.string);
  case Kind::boolean:
    return a.boolean == b.boolean;
  case Kind::integer:
    return a.integer == b.integer;
  case Kind::real:
    return a.real == b.real;
  case Kind::null:
    break;
  }
  return true;
}

template <typename Configuration>
bool Value_impl<Configuration>::equalMembers(const Value_impl& left, const Value_impl& right, Comparisons& open) {
  const Payload& a = left.data_.payload;
  const Payload& b = right.data_.payload;
  if (left.data_.kind == Kind::array) {
    return std::equal(a.array->begin(), a.array->end(), b.array->begin(),
                      [&open](const auto& one, const auto& other) { return equalFlat(one, other, open); });
  }
  return std::equal(a.object->begin(), a.object->end(), b.object->begin(), [&open](const auto& one, const auto& other) {
    return StringTraits<String>::view(one.first) == StringTraits<String>::view(other.first) &&
           equalFlat(one.second, other.second, open);
  });
}

template <typename Configuration>
void Value_impl<Configuration>::release() noexcept {
  const detail::Recursion recursion;
  recursion.isDeep() ? freeTree(data_) : free(data_);
}

/// Walks down to the last container of each branch and frees the tree from there. The way back needs no memory of its
/// own: the place of the container that is being freed holds the parent of its parent meanwhile.
template <typename Configuration>
void Value_impl<Configuration>::freeTree(const Data& root) noexcept {
  Data parent;
  Data current = root;
  for (;;) {
    if (Value_impl* const place = lastNested(current)) {
      const Data nested = std::exchange(place->data_, std::exchange(parent, current));
      current = nested;
      continue;
    }
    free(current);
    if (parent.kind == Kind::null) return;
    current = parent;
    parent = dropLast(current);
  }
}

/// The last container in this value, null if there is none. Drops what stands behind it, so that it is the last member
/// and none is looked at twice.
template <typename Configuration>
Value_impl<Configuration>* Value_impl<Configuration>::lastNested(const Data& value) noexcept {
  const auto find = [](auto& members) -> Value_impl* {
    const auto nested =
      std::find_if(members.rbegin(), members.rend(), [](const auto& member) { return valueOf(member).isContainer(); });
    if (nested == members.rend()) return nullptr;
    members.erase(nested.base(), members.end());
    return &valueOf(*members.rbegin());
  };
  if (value.kind == Kind::object) return find(*value.payload.object);
  return value.kind == Kind::array ? find(*value.payload.array) : nullptr;
}

/// Gives out what the place of the last member holds, and drops the member.
template <typename Configuration>
typename Value_impl<Configuration>::Data Value_impl<Configuration>::dropLast(const Data& container) noexcept {
  const auto drop = [](auto& members) {
    const auto last = std::prev(members.end());
    const Data content = std::exchange(valueOf(*last).data_, Data{});
    members.erase(last);
    return content;
  };
  return container.kind == Kind::object ? drop(*container.payload.object) : drop(*container.payload.array);
}

template <typename Configuration>
void Value_impl<Configuration>::free(const Data& value) noexcept {
  switch (value.kind) {
  case Kind::object:
    delete value.payload.object;
    break;
  case Kind::array:
    delete value.payload.array;
    break;
  default:
    delete value.payload.string;
  }
}

}  // namespace tsutils::json
