#pragma once

#include <memory>
#include <vector>

#include "yardstick_units.h"

namespace tessel::benchmarks::yardstick {

/// Namespaces, entity types, definitions of properties and sets. References are loaded anew for each row. Look-ups by id
/// keep their statements, those by name prepare theirs at each call.
class CatalogueTables {
public:
  CatalogueTables(Session& session, UnitTables& units);

  std::unique_ptr<Namespace> ns(unsigned int id);
  std::unique_ptr<EntityType> entityType(unsigned int id);
  std::unique_ptr<Definition> definition(unsigned int id);
  std::unique_ptr<Namespace> namespaceNamed(const Text& name);
  std::unique_ptr<EntityType> entityTypeNamed(const Text& name);
  bool hasSet(const Text& name, unsigned int ns);

  /// In the order of their names.
  std::vector<Namespace> namespaces();
  std::vector<EntityType> entityTypes();
  std::vector<Definition> definitions();
  std::vector<PropertySet> sets();

  /// No work here has any.
  bool hasValueDefinitions();

  /// The id is set; of what is referred to only the id counts.
  void insert(Namespace& ns);
  void insert(EntityType& type);
  void insert(Definition& definition);

  /// Definitions that have no id yet are written before.
  void insert(PropertySet& set);
  void update(PropertySet& set);

private:
  Definition definitionOf(const Statement& row);
  PropertySet setOf(const Statement& row);
  std::vector<unsigned int> members(Statement& list, unsigned int set);
  void insertNewDefinitions(PropertySet& set);
  void insertMembers(const PropertySet& set);

  Session& session_;
  UnitTables& units_;
  Statement findNamespace_, findEntityType_, findDefinition_;
  Statement listProperties_, listValues_, listEntityTypes_;
  Statement insertNamespace_, insertEntityType_, insertDefinition_, insertSet_, insertProperty_, insertEntityTypeOfSet_;
  Statement updateSet_, deleteProperties_, deleteValues_, deleteEntityTypes_;
};

}  // namespace tessel::benchmarks::yardstick
