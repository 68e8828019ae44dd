#pragma once

#include <memory>
#include <vector>

#include <tessel/object.h>
#include <tessel/object_traits.h>
#include <tessel/platform/od_string.h>
#include <tessel/property_type.h>

namespace tessel {

/// A named kind of entity that property sets apply to. For one thread at a time.
class TESSEL_API EntityType : public Object {
  TESSEL_OBJECT_MEMBERS(EntityType)
  TESSEL_SAVE_MEMBERS(EntityType)

  ~EntityType() override;

  /// New, of that name.
  static TsSmartPtr<EntityType> create(const OdString& name);

  /// Copies the name and marks this type as changed.
  EntityType& operator=(const EntityType& other);

  /// The same class and name.
  ///@{
  bool operator==(const EntityType& other) const;
  bool operator!=(const EntityType& other) const;
  ///@}

  unsigned int id() const override;
  bool isDirty() const override;
  std::shared_ptr<ProjectDb> projectDb() const override;

  /// Unique in a file.
  ///@{
  const OdString& name() const;
  void set_name(const OdString& name);
  ///@}

  struct Impl;
  Impl& impl();
  const Impl& impl() const;

protected:
  EntityType();
  explicit EntityType(Impl* impl);
  explicit EntityType(const SetDirty&);

private:
  friend class odb::access;
  void init(odb::callback_event event, odb::database& database);

  std::unique_ptr<Impl> impl_;
};

/// The home of definitions and sets. Its name has no setter, so a reactor cannot rename it either. For one thread at a
/// time.
class TESSEL_API PropertyNamespace : public Object {
  TESSEL_OBJECT_MEMBERS(PropertyNamespace)
  TESSEL_SAVE_MEMBERS(PropertyNamespace)

  ~PropertyNamespace() override;

  /// Without a label.
  static TsSmartPtr<PropertyNamespace> create(const OdString& name);

  /// With a label, even if it is empty.
  static TsSmartPtr<PropertyNamespace> create(const OdString& name, const OdString& label);

  /// Copies everything but the name and marks this namespace as changed.
  PropertyNamespace& operator=(const PropertyNamespace& other);

  /// Name, flags and revision, and both or neither with a label; what the labels are does not count.
  ///@{
  bool operator==(const PropertyNamespace& other) const;
  bool operator!=(const PropertyNamespace& other) const;
  ///@}

  unsigned int id() const override;
  bool isDirty() const override;
  std::shared_ptr<ProjectDb> projectDb() const override;

  /// Unique in a file.
  const OdString& name() const;

  /// Unique in a file among those that have one; empty if there is none.
  ///@{
  const OdString& label() const;
  bool has_label() const;
  void set_label(const OdString& label);
  void clear_label();
  ///@}

  /// What hosts let people do; both true in a new namespace.
  ///@{
  bool editable() const;
  void set_editable(bool editable);
  bool visible() const;
  void set_visible(bool visible);
  ///@}

  /// Counted by the host, from 0 on; OverwriteIfNewer compares it.
  ///@{
  unsigned int revision() const;
  void set_revision(unsigned int revision);
  ///@}

  struct Impl;
  Impl& impl();
  const Impl& impl() const;

protected:
  PropertyNamespace();
  explicit PropertyNamespace(Impl* impl);
  explicit PropertyNamespace(const SetDirty&);

private:
  friend class odb::access;
  void init(odb::callback_event event, odb::database& database);

  std::unique_ptr<Impl> impl_;
};

/// Groups definitions of its namespace in an order of the host's, and names the entity types that it applies to. For one
/// thread at a time.
///
///     auto set = PropertySet::create(ns, L"Pset_DoorCommon");
///     set->append_property_definition(L"FireRating", PropertyType::Single(PropertyType::Type::String));
///     set->insert_entity_type(L"Door");
///     set = set->save(db);  // saves namespace, definitions and entity types, too
///
/// A name occurs once among the property definitions of a set and once among its value definitions. Members are shared:
/// a clone of a set lists the same objects. Refusals are told by the result and change nothing.
class TESSEL_API PropertySet : public Object {
  TESSEL_OBJECT_MEMBERS(PropertySet)
  TESSEL_SAVE_MEMBERS(PropertySet)

  /// The members in the order of the set; none is null.
  ///@{
  using PropertyDefinitions = std::vector<TsSmartPtr<const PropertyDefinition>>;
  using ValueDefinitions = std::vector<TsSmartPtr<const ValueDefinition>>;
  using EntityTypes = std::vector<TsSmartPtr<const EntityType>>;
  ///@}

  ~PropertySet() override;

  /// New and empty. A null namespace is accepted, but a save of it is a DatabaseException.
  ///@{
  static TsSmartPtr<PropertySet> create(const TsSmartPtr<const PropertyNamespace>& ns);
  static TsSmartPtr<PropertySet> create(const TsSmartPtr<const PropertyNamespace>& ns, const OdString& name);
  ///@}

  /// Copies everything but the namespace and marks this set as changed.
  PropertySet& operator=(const PropertySet& other);

  /// Equal namespaces and fields, and the very same members in the same order, so that the results of two loads are not
  /// equal. Of label and IFC name it counts only whether there is one.
  ///@{
  bool operator==(const PropertySet& other) const;
  bool operator!=(const PropertySet& other) const;
  ///@}

  unsigned int id() const override;
  bool isDirty() const override;
  std::shared_ptr<ProjectDb> projectDb() const override;

  /// The namespace, as given to `create`.
  const TsSmartPtr<const PropertyNamespace>& ns() const;

  /// Unique in the namespace.
  ///@{
  const OdString& name() const;
  void set_name(const OdString& name);
  ///@}

  /// Unique in a file among the sets that have one; empty if there is none.
  ///@{
  const OdString& label() const;
  bool has_label() const;
  void set_label(const OdString& label);
  void clear_label();
  ///@}

  /// The name in IFC; empty if there is none.
  ///@{
  const OdString& ifc_name() const;
  bool has_ifc_name() const;
  void set_ifc_name(const OdString& ifc_name);
  void clear_ifc_name();
  ///@}

  /// For hosts, to the library it makes no difference; false in a new set.
  ///@{
  bool per_instance() const;
  void set_per_instance(bool per_instance);
  ///@}

  /// Whether hosts show the set; true in a new one.
  ///@{
  bool visible() const;
  void set_visible(bool visible);
  ///@}

  /// The members. Iterators are good until the set is changed.
  ///@{
  const PropertyDefinitions& property_definitions() const;
  const ValueDefinitions& value_definitions() const;
  const EntityTypes& entity_types() const;
  ///@}

  /// Make a definition in the set's namespace and put it at the end, or before `pos`. It is saved with the set. Null if
  /// the set has one of that name.
  ///@{
  TsSmartPtr<PropertyDefinition> append_property_definition(const OdString& name, const PropertyType& type);
  TsSmartPtr<PropertyDefinition> insert_property_definition(PropertyDefinitions::const_iterator pos,
                                                            const OdString& name, const PropertyType& type);
  TsSmartPtr<ValueDefinition> append_value_definition(const OdString& name, const PropertyType& type);
  TsSmartPtr<ValueDefinition> insert_value_definition(ValueDefinitions::const_iterator pos, const OdString& name,
                                                      const PropertyType& type);
  ///@}

  /// Put an existing definition at the end, or before `pos`. False for null, for a definition whose namespace has another
  /// name than the set's, and if the set has one of that name.
  ///@{
  bool append_property_definition(const TsSmartPtr<const PropertyDefinition>& definition);
  bool insert_property_definition(PropertyDefinitions::const_iterator pos,
                                  const TsSmartPtr<const PropertyDefinition>& definition);
  bool append_value_definition(const TsSmartPtr<const ValueDefinition>& definition);
  bool insert_value_definition(ValueDefinitions::const_iterator pos,
                               const TsSmartPtr<const ValueDefinition>& definition);
  ///@}

  /// Take a definition out of the set; what is not in it changes nothing. A saved definition is found by its name, an
  /// unsaved one only as the very object that was put in.
  ///@{
  void remove_property_definition(const OdString& name);
  void remove_property_definition(const TsSmartPtr<const PropertyDefinition>& definition);
  PropertyDefinitions::const_iterator remove_property_definition(PropertyDefinitions::const_iterator pos);
  void remove_value_definition(const OdString& name);
  void remove_value_definition(const TsSmartPtr<const ValueDefinition>& definition);
  ValueDefinitions::const_iterator remove_value_definition(ValueDefinitions::const_iterator pos);
  ///@}

  /// Mark the set as changed even if there was nothing to clear.
  ///@{
  void clear_property_definitions();
  void clear_value_definitions();
  ///@}

  /// Put an entity type at the end. False for null and if the set has one of that name.
  ///@{
  bool insert_entity_type(const OdString& name);
  bool insert_entity_type(const TsSmartPtr<const EntityType>& type);
  ///@}

  /// Take an entity type out of the set, by its name or the place; what is not in it changes nothing.
  ///@{
  void remove_entity_type(const OdString& name);
  void remove_entity_type(const TsSmartPtr<const EntityType>& type);
  EntityTypes::const_iterator remove_entity_type(EntityTypes::const_iterator pos);
  ///@}

  struct Impl;
  Impl& impl();
  const Impl& impl() const;

protected:
  PropertySet();
  explicit PropertySet(Impl* impl);
  explicit PropertySet(const SetDirty&);

private:
  friend class odb::access;
  void init(odb::callback_event event, odb::database& database);

  std::unique_ptr<Impl> impl_;
};

}  // namespace tessel
