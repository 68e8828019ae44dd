#pragma once

// How the persistence layer handles our text, pointers and optional values. The generated code needs it first of all;
// the ODB compiler itself needs the declarations of the pointer and of the wrapper only.

#include <optional>
#include <typeinfo>

#include <odb/exceptions.hxx>
#include <odb/pointer-traits.hxx>
#include <odb/wrapper-traits.hxx>

#include <tessel/platform/od_string.h>
#include <tessel/smart_ptr.h>

namespace odb {

template <typename T>
class pointer_traits<tessel::TsSmartPtr<T>> {
public:
  static const pointer_kind kind = pk_shared;
  static const bool lazy = false;

  using element_type = T;
  using pointer_type = tessel::TsSmartPtr<T>;
  using const_pointer_type = tessel::TsSmartPtr<const T>;
  using unrestricted_element_type = std::remove_const_t<T>;
  using unrestricted_pointer_type = tessel::TsSmartPtr<unrestricted_element_type>;
  using guard = smart_ptr_guard<pointer_type>;

  static element_type* get_ptr(const pointer_type& pointer) { return pointer.get(); }
  static element_type& get_ref(const pointer_type& pointer) { return *pointer; }
  static bool null_ptr(const pointer_type& pointer) { return pointer.isNull(); }

  static unrestricted_pointer_type const_pointer_cast(const pointer_type& pointer) {
    return const_cast<unrestricted_element_type*>(pointer.get());
  }

  // The persistence layer trusts the "typeid" of a row, which may lie in a damaged file. So the static cast is checked,
  // too: a row of another class than the one asked for counts as a missing one.
  template <typename Derived>
  static tessel::TsSmartPtr<Derived> static_pointer_cast(const pointer_type& pointer) {
    element_type* const object = pointer.get();
    // The ordinary case; comparing the types is quicker than a dynamic cast.
    if (object && typeid(*object) == typeid(Derived)) return static_cast<Derived*>(object);
    auto* const derived = dynamic_cast<Derived*>(object);
    if (object && !derived) throw object_not_persistent();
    return derived;
  }

  template <typename Derived>
  static tessel::TsSmartPtr<Derived> dynamic_pointer_cast(const pointer_type& pointer) {
    return dynamic_cast<Derived*>(pointer.get());
  }

  static void* allocate(std::size_t size) { return operator new(size); }
  static void free(void* memory) { operator delete(memory); }
};

/// An optional value is a column that may be NULL.
template <typename T>
class wrapper_traits<std::optional<T>> {
public:
  using wrapped_type = T;
  using wrapper_type = std::optional<T>;
  using unrestricted_wrapped_type = std::remove_const_t<T>;

  static const bool null_handler = true;
  static const bool null_default = true;

  static bool get_null(const wrapper_type& value) { return !value.has_value(); }
  static void set_null(wrapper_type& value) { value.reset(); }
  static const wrapped_type& get_ref(const wrapper_type& value) { return *value; }
  static unrestricted_wrapped_type& set_ref(wrapper_type& value) { return value ? *value : value.emplace(); }
};

}  // namespace odb

#ifndef ODB_COMPILER

#include <odb/sqlite/traits.hxx>

#include "platform/utf.h"

namespace odb::sqlite {

/// Text is UTF-8 in the file, converted straight into and out of the buffers of the persistence layer.
template <>
struct default_value_traits<OdString, id_text> {
  using value_type = OdString;
  using query_type = OdString;
  using image_type = details::buffer;

  static void set_value(OdString& value, const details::buffer& buffer, std::size_t size, bool isNull) {
    if (isNull) {
      value.clear();
    } else {
      value.assignUtf8({buffer.data(), size});
    }
  }

  static void set_image(details::buffer& buffer, std::size_t& size, bool& isNull, const OdString& value) {
    isNull = false;
    size = tessel::utf8Length(value.view());
    if (size > buffer.capacity()) buffer.capacity(size);
    tessel::writeUtf8(value.view(), buffer.data());
  }
};

template <>
struct default_type_traits<OdString> {
  static const database_type_id db_type_id = id_text;
};

}  // namespace odb::sqlite

#endif
