#pragma once

#include <string>
#include <vector>

#include <tessel/definitions.h>
#include <tessel/property_set.h>

#include "import/element_keys.h"
#include "import/import_test.h"

namespace tessel::test {

inline std::wstring objectOf(const std::wstring& tag, const std::wstring& attributes, const std::wstring& fields) {
  return L"<" + tag + L" " + attributes + L">" + fields + L"</" + tag + L">";
}

/// A project in which the namespaces "Common" and "Other" are, and nothing else of the catalogue.
class CatalogueImport : public ImportTest {
protected:
  using Names = std::vector<std::string>;

  void SetUp() override {
    db->save(PropertyNamespace::create(L"Common"));
    db->save(PropertyNamespace::create(L"Other"));
  }

  /// An object of the namespace "Common".
  static std::wstring object(const std::wstring& tag, const std::wstring& name, const std::wstring& fields = L"",
                             const std::wstring& attributes = L"") {
    return objectOf(tag, attributes, elementOf(L"name", name) + L"<namespace name='Common'/>" + fields);
  }
  static std::wstring definition(const std::wstring& name, const std::wstring& fields = L"",
                                 const std::wstring& attributes = L"") {
    return object(L"propertydefinition", name, fields, attributes);
  }
  static std::wstring value(const std::wstring& name, const std::wstring& fields = L"",
                            const std::wstring& attributes = L"") {
    return object(L"valuedefinition", name, fields, attributes);
  }
  static std::wstring set(const std::wstring& fields, const std::wstring& attributes = L"") {
    return object(L"propertyset", L"Walls", fields, attributes);
  }

  Names namespaces() const { return column("tessel_PropertyNamespace", "name"); }
  Names definitions() const { return column("tessel_PropertyDefinition", "name"); }
  Names values() const { return column("tessel_ValueDefinition", "name"); }
  Names types() const { return column("tessel_EntityType", "name"); }
  Names sets() const { return column("tessel_PropertySet", "name"); }

  /// The names of what the sets hold, in the order of the sets and then of their lists.
  Names definitionsOfSets() const { return members("property_definition", "tessel_PropertyDefinition"); }
  Names valuesOfSets() const { return members("value_definition", "tessel_ValueDefinition"); }
  Names typesOfSets() const { return members("entity_type", "tessel_EntityType"); }

  /// The row of that name, as the document writes it.
  std::wstring rowOf(const std::string& table, const std::string& name) const {
    return std::to_wstring(idOf(table, name));
  }

  /// One column of the row of that name.
  std::string fieldOf(const std::string& table, const std::string& name, const std::string& key) const {
    return project.raw().scalarText("SELECT " + key + " FROM \"" + table + "\" WHERE \"name\" = '" + name + "'");
  }

private:
  Names members(const std::string& key, const std::string& table) const {
    return project.raw().column("SELECT member.name FROM \"tessel_PropertySet_" + key + "s\" list JOIN \"" + table +
                                "\" member ON member.id = list." + key + "_id ORDER BY list.object_id, list.\"index\"");
  }
};

}  // namespace tessel::test
