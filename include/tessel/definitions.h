#pragma once

#include <memory>

#include <tessel/ifc_type.h>
#include <tessel/object.h>
#include <tessel/object_traits.h>
#include <tessel/platform/od_string.h>
#include <tessel/property_type.h>

namespace tessel {

/// What property and value definitions have in common: a typed slot of property sets. For one thread at a time.
class TESSEL_API AbstractDefinition : public Object {
  TESSEL_OBJECT_MEMBERS(AbstractDefinition)

  ~AbstractDefinition() override;

  unsigned int id() const override;

  /// Unique among the definitions of the same class in a namespace.
  ///@{
  const OdString& name() const;
  void set_name(const OdString& name);
  ///@}

  /// Empty if there is none. Clearing marks the definition as changed even if there was none; so it is for all clear_
  /// operations.
  ///@{
  const OdString& label() const;
  bool has_label() const;
  void set_label(const OdString& label);
  void clear_label();
  ///@}

  /// Free text.
  ///@{
  const OdString& description() const;
  void set_description(const OdString& description);
  ///@}

  /// Null if the values have no unit.
  const TsSmartPtr<const Unit>& unit() const;
  /// Another pointer counts as a change, even if it points at an equal unit.
  void set_unit(const TsSmartPtr<const Unit>& unit);

  /// The name in IFC, where it is another one than `name`; empty if there is none.
  ///@{
  const OdString& ifc_name() const;
  bool has_ifc_name() const;
  void set_ifc_name(const OdString& ifc_name);
  void clear_ifc_name();
  ///@}

  /// 0, which is no IfcType, if none was given; that is not the same as IfcTypeUndefined.
  ///@{
  IfcType ifc_type() const;
  bool has_ifc_type() const;
  void set_ifc_type(IfcType ifc_type);
  void clear_ifc_type();
  ///@}

  /// Shape and kind of the values; all three parts 0 if none was given.
  ///@{
  const PropertyType& type() const;
  void set_type(const PropertyType& type);
  ///@}

  /// Whether hosts show the definition; true in a new one.
  ///@{
  bool visible() const;
  void set_visible(bool visible);
  ///@}

  struct Impl;
  Impl& impl();
  const Impl& impl() const;

protected:
  explicit AbstractDefinition(Impl* impl);

  OdRxObjectPtr clone() const override = 0;

  /// Copies all fields of this class and marks the definition as changed.
  AbstractDefinition& operator=(const AbstractDefinition& other);

  /// All fields of this class; of label, IFC name and IFC type it counts only whether there is one.
  bool operator==(const AbstractDefinition& other) const;

private:
  std::unique_ptr<Impl> impl_;
};

/// A property that hosts may attach to entities.
///
///     auto ns = PropertyNamespace::create(L"Common");
///     auto width = PropertyDefinition::create(ns, L"Width", PropertyType::Single(PropertyType::Type::Double));
///     width->set_default_value(1.2);
///     width = width->save(db);
///
/// The namespace has no setter. The default value is kept as text, and it is the caller who knows as what to read it.
class TESSEL_API PropertyDefinition : public AbstractDefinition {
  TESSEL_OBJECT_MEMBERS(PropertyDefinition)
  TESSEL_SAVE_MEMBERS(PropertyDefinition)

  /// New; without a name or a type unless they are given. A null namespace is accepted, but a save of it is a
  /// DatabaseException.
  ///@{
  static TsSmartPtr<PropertyDefinition> create(const TsSmartPtr<const PropertyNamespace>& ns);
  static TsSmartPtr<PropertyDefinition> create(const TsSmartPtr<const PropertyNamespace>& ns, const OdString& name);
  static TsSmartPtr<PropertyDefinition> create(const TsSmartPtr<const PropertyNamespace>& ns, const OdString& name,
                                               const PropertyType& type);
  ///@}

  /// Copies all fields, the namespace too, and marks this definition as changed. Id, database and reactors stay.
  PropertyDefinition& operator=(const PropertyDefinition& other);

  /// All fields, and equal namespaces and units; of optional texts and the IFC type only whether there is one.
  ///@{
  bool operator==(const PropertyDefinition& other) const;
  bool operator!=(const PropertyDefinition& other) const;
  ///@}

  bool isDirty() const override;
  std::shared_ptr<ProjectDb> projectDb() const override;

  /// The namespace, as given to `create`.
  const TsSmartPtr<const PropertyNamespace>& ns() const;

  /// More about the type, in a form of the host's; the library does not read it.
  ///@{
  const OdString& type_spec() const;
  void set_type_spec(const OdString& type_spec);
  ///@}

  /// May be JSON; {"type": "Enum", "values": [...]} lists the values of an enumeration.
  ///@{
  const OdString& type_spec2() const;
  void set_type_spec2(const OdString& type_spec2);
  ///@}

  /// The text as it is kept.
  const OdString& default_value() const;

  /// The default value as `T`, which is OdString, bool, int or double. False, with `out` left alone, if the text is not
  /// the JSON form of such a value; for OdString always the text itself. An integer text may be read as a double, and an
  /// int is cut to 32 bits. Throws nothing.
  template <typename T>
  bool default_value(T& out) const;

  /// Keeps the JSON form of the value, for OdString the text itself; `T` as above. A double keeps 16 decimals, so 1e-30
  /// becomes 0; NaN and infinity give a text that is no JSON.
  template <typename T>
  void set_default_value(const T& value);

  struct Impl;
  Impl& impl();
  const Impl& impl() const;

protected:
  PropertyDefinition();
  explicit PropertyDefinition(Impl* impl);
  explicit PropertyDefinition(const SetDirty&);

private:
  friend class odb::access;
  void init(odb::callback_event event, odb::database& database);
};

/// A value that hosts may attach to entities; as PropertyDefinition, without a default.
class TESSEL_API ValueDefinition : public AbstractDefinition {
  TESSEL_OBJECT_MEMBERS(ValueDefinition)
  TESSEL_SAVE_MEMBERS(ValueDefinition)

  /// New; without a name or a type unless they are given. A null namespace is accepted, but a save of it is a
  /// DatabaseException.
  ///@{
  static TsSmartPtr<ValueDefinition> create(const TsSmartPtr<const PropertyNamespace>& ns);
  static TsSmartPtr<ValueDefinition> create(const TsSmartPtr<const PropertyNamespace>& ns, const OdString& name);
  static TsSmartPtr<ValueDefinition> create(const TsSmartPtr<const PropertyNamespace>& ns, const OdString& name,
                                            const PropertyType& type);
  ///@}

  /// Copies all fields, the namespace too, and marks this definition as changed. Id, database and reactors stay.
  ValueDefinition& operator=(const ValueDefinition& other);

  /// As for PropertyDefinition.
  ///@{
  bool operator==(const ValueDefinition& other) const;
  bool operator!=(const ValueDefinition& other) const;
  ///@}

  bool isDirty() const override;
  std::shared_ptr<ProjectDb> projectDb() const override;

  /// The namespace, as given to `create`.
  const TsSmartPtr<const PropertyNamespace>& ns() const;

  /// More about the value, in a form of the host's; the library does not read it.
  ///@{
  const OdString& value_spec() const;
  void set_value_spec(const OdString& value_spec);
  ///@}

  struct Impl;
  Impl& impl();
  const Impl& impl() const;

protected:
  ValueDefinition();
  explicit ValueDefinition(Impl* impl);
  explicit ValueDefinition(const SetDirty&);

private:
  friend class odb::access;
  void init(odb::callback_event event, odb::database& database);
};

}  // namespace tessel
