#include <odb/sqlite/database.hxx>

#include <tessel/definitions.h>
#include <tessel/mapping-odb.hxx>
#include <tessel/project_db.h>

#include "database/project_db_impl.h"
#include "database/transaction_scope.h"
#include "operations/conditions.h"

namespace tessel {

// Unlike other look-ups this one lets the exceptions of ODB pass.
template <>
TESSEL_API void ProjectDb::get<IfcPropertySetDefinitionQuery>(std::vector<TsSmartPtr<PropertyDefinition>>& definitions,
                                                              const IfcPropertySetDefinitionQuery& query) const {
  using View = IfcPropertySetDefinitionView;
  using Definition = odb::query<PropertyDefinition>;
  using Set = odb::query<PropertySet>;
  const StringCriteria& name = query.property_name;
  const Condition condition = (textCondition(Definition::ifc_name, name) ||
                               (textCondition(Definition::name, name) && Definition::ifc_name.is_null())) &&
                              textCondition(Set::name, query.property_set_name);
  TransactionScope scope(const_cast<ProjectDb&>(*this));
  for (const View& row : impl_->database->query<View>(odb::query<View>(condition))) {
    definitions.push_back(row.definition);
  }
}

}  // namespace tessel
