// Fills the property catalogue of a new project by hand: a namespace, an enumeration, a length with its unit, and the set
// of properties of a door.

#include <iostream>

#include <tessel/tessel.h>

using namespace tessel;

namespace {

TsSmartPtr<const Unit> millimetre(ProjectDb& db) {
  // A new file has the measures LENGTH, AREA, VOLUME and MASS, but no unit of them.
  return Unit::create(L"millimetre", L"mm", 0.001, db.get<Measure>(NameKey(L"LENGTH")));
}

TsSmartPtr<PropertyDefinition> fireRating(const TsSmartPtr<const PropertyNamespace>& ns) {
  auto definition = PropertyDefinition::create(ns, L"FireRating", PropertyType::Single(PropertyType::Type::String));
  definition->set_label(L"Fire rating");
  definition->set_ifc_type(IfcSimpleValue_Label);
  // The values of an enumeration stand in a JSON object.
  definition->set_type_spec2(L"{\"type\":\"Enum\",\"values\":[\"EI30\",\"EI60\",\"EI90\"]}");
  definition->set_default_value(OdString(L"EI30"));
  return definition;
}

TsSmartPtr<PropertyDefinition> clearWidth(const TsSmartPtr<const PropertyNamespace>& ns,
                                          const TsSmartPtr<const Unit>& unit) {
  auto definition = PropertyDefinition::create(ns, L"ClearWidth", PropertyType::Single(PropertyType::Type::Double));
  definition->set_unit(unit);
  definition->set_ifc_type(IfcMeasureValue_PositiveLength);
  definition->set_default_value(900.0);
  return definition;
}

}  // namespace

int main() {
  const auto db = ProjectDb::create(L"catalogue.tessel");
  if (!db) return 1;

  const auto ns = PropertyNamespace::create(L"Office", L"Our office standard");
  const auto set = PropertySet::create(ns, L"Door");
  set->append_property_definition(fireRating(ns));
  set->append_property_definition(clearWidth(ns, millimetre(*db)));
  set->insert_entity_type(L"IfcDoor");

  // One save brings in all that the set refers to: namespace, unit, definitions and entity type.
  const auto saved = set->save(db);

  for (const auto& definition : saved->property_definitions()) {
    std::cout << saved->name().toUtf8() << "." << definition->name().toUtf8();
    if (definition->unit()) std::cout << " [" << definition->unit()->label().toUtf8() << "]";
    std::cout << " = " << definition->default_value().toUtf8() << "\n";
  }

  double width = 0;
  if (saved->property_definitions()[1]->default_value(width)) std::cout << "A door is " << width << " mm wide.\n";
}
