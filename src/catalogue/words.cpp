#include "catalogue/words.h"

#include <string_view>

#include <tessel/type_words.h>

namespace tessel {
namespace {

template <typename Value>
struct Word {
  std::u16string_view text;
  Value value;
};

using Structure = PropertyType::Structure;
using Type = PropertyType::Type;

constexpr Word<Structure> structures[] = {
  {u"Undefined", Structure::Undefined},
  {u"Single", Structure::Single},
  {u"Array", Structure::Array},
  {u"Map", Structure::Map},
};

/// The last four are aliases. "Byte" has always meant the signed kind.
constexpr Word<Type> types[] = {
  {u"Any", Type::Any},         {u"Bool", Type::Bool},         {u"Int8", Type::Int8},
  {u"UInt8", Type::UInt8},     {u"Int16", Type::Int16},       {u"UInt16", Type::UInt16},
  {u"Int32", Type::Int32},     {u"UInt32", Type::UInt32},     {u"Int64", Type::Int64},
  {u"UInt64", Type::UInt64},   {u"Double", Type::Double},     {u"String", Type::String},
  {u"Handle", Type::Handle},   {u"ObjectId", Type::ObjectId}, {u"Vector2d", Type::Vector2d},
  {u"Point2d", Type::Point2d}, {u"Vector3d", Type::Vector3d}, {u"Point3d", Type::Point3d},
  {u"Binary", Type::Binary},   {u"Boolean", Type::Bool},      {u"Byte", Type::Int8},
  {u"Integer", Type::Int32},   {u"Real", Type::Double},
};

constexpr Word<IfcType> ifcTypes[] = {
  {u"IfcTypeUndefined", IfcTypeUndefined},
  {u"IfcSimpleValue_Integer", IfcSimpleValue_Integer},
  {u"IfcSimpleValue_Real", IfcSimpleValue_Real},
  {u"IfcSimpleValue_Boolean", IfcSimpleValue_Boolean},
  {u"IfcSimpleValue_Identifier", IfcSimpleValue_Identifier},
  {u"IfcSimpleValue_Text", IfcSimpleValue_Text},
  {u"IfcSimpleValue_Label", IfcSimpleValue_Label},
  {u"IfcSimpleValue_Logical", IfcSimpleValue_Logical},
  {u"IfcSimpleValue_DateTime", IfcSimpleValue_DateTime},
  {u"IfcSimpleValue_Date", IfcSimpleValue_Date},
  {u"IfcSimpleValue_Time", IfcSimpleValue_Time},
  {u"IfcSimpleValue_Duration", IfcSimpleValue_Duration},
  {u"IfcSimpleValue_TimeStamp", IfcSimpleValue_TimeStamp},
  {u"IfcMeasureValue_VolumeMeasure", IfcMeasureValue_VolumeMeasure},
  {u"IfcMeasureValue_Time", IfcMeasureValue_Time},
  {u"IfcMeasureValue_ThermodynamicTemperature", IfcMeasureValue_ThermodynamicTemperature},
  {u"IfcMeasureValue_SolidAngle", IfcMeasureValue_SolidAngle},
  {u"IfcMeasureValue_PositiveRatio", IfcMeasureValue_PositiveRatio},
  {u"IfcMeasureValue_Ratio", IfcMeasureValue_Ratio},
  {u"IfcMeasureValue_PositivePlaneAngle", IfcMeasureValue_PositivePlaneAngle},
  {u"IfcMeasureValue_PlaneAngle", IfcMeasureValue_PlaneAngle},
  {u"IfcMeasureValue_ParameterValue", IfcMeasureValue_ParameterValue},
  {u"IfcMeasureValue_Numeric", IfcMeasureValue_Numeric},
  {u"IfcMeasureValue_Mass", IfcMeasureValue_Mass},
  {u"IfcMeasureValue_PositiveLength", IfcMeasureValue_PositiveLength},
  {u"IfcMeasureValue_Length", IfcMeasureValue_Length},
  {u"IfcMeasureValue_ElectricCurrent", IfcMeasureValue_ElectricCurrent},
  {u"IfcMeasureValue_Descriptive", IfcMeasureValue_Descriptive},
  {u"IfcMeasureValue_Count", IfcMeasureValue_Count},
  {u"IfcMeasureValue_ContextDependent", IfcMeasureValue_ContextDependent},
  {u"IfcMeasureValue_Area", IfcMeasureValue_Area},
  {u"IfcMeasureValue_AmountOfSubstance", IfcMeasureValue_AmountOfSubstance},
  {u"IfcMeasureValue_LuminousIntensity", IfcMeasureValue_LuminousIntensity},
  {u"IfcMeasureValue_NormalisedRatio", IfcMeasureValue_NormalisedRatio},
  {u"IfcMeasureValue_ComplexNumber", IfcMeasureValue_ComplexNumber},
  {u"IfcMeasureValue_NonNegativeLength", IfcMeasureValue_NonNegativeLength},
  {u"IfcDerivedMeasureValue_VolumetricFlowRateMeasure", IfcDerivedMeasureValue_VolumetricFlowRateMeasure},
  {u"IfcDerivedMeasureValue_TimeStamp", IfcDerivedMeasureValue_TimeStamp},
  {u"IfcDerivedMeasureValue_ThermalTransmittance", IfcDerivedMeasureValue_ThermalTransmittance},
  {u"IfcDerivedMeasureValue_ThermalResistance", IfcDerivedMeasureValue_ThermalResistance},
  {u"IfcDerivedMeasureValue_ThermalAdmittance", IfcDerivedMeasureValue_ThermalAdmittance},
  {u"IfcDerivedMeasureValue_Pressure", IfcDerivedMeasureValue_Pressure},
  {u"IfcDerivedMeasureValue_Power", IfcDerivedMeasureValue_Power},
  {u"IfcDerivedMeasureValue_MassFlowRate", IfcDerivedMeasureValue_MassFlowRate},
  {u"IfcDerivedMeasureValue_MassDensity", IfcDerivedMeasureValue_MassDensity},
  {u"IfcDerivedMeasureValue_LinearVelocity", IfcDerivedMeasureValue_LinearVelocity},
  {u"IfcDerivedMeasureValue_KinematicViscosity", IfcDerivedMeasureValue_KinematicViscosity},
  {u"IfcDerivedMeasureValue_IntegerCountRate", IfcDerivedMeasureValue_IntegerCountRate},
  {u"IfcDerivedMeasureValue_HeatFluxDensity", IfcDerivedMeasureValue_HeatFluxDensity},
  {u"IfcDerivedMeasureValue_Frequency", IfcDerivedMeasureValue_Frequency},
  {u"IfcDerivedMeasureValue_Energy", IfcDerivedMeasureValue_Energy},
  {u"IfcDerivedMeasureValue_ElectricVoltage", IfcDerivedMeasureValue_ElectricVoltage},
  {u"IfcDerivedMeasureValue_DynamicViscosity", IfcDerivedMeasureValue_DynamicViscosity},
  {u"IfcDerivedMeasureValue_CompoundPlaneAngle", IfcDerivedMeasureValue_CompoundPlaneAngle},
  {u"IfcDerivedMeasureValue_AngularVelocity", IfcDerivedMeasureValue_AngularVelocity},
  {u"IfcDerivedMeasureValue_ThermalConductivity", IfcDerivedMeasureValue_ThermalConductivity},
  {u"IfcDerivedMeasureValue_MolecularWeight", IfcDerivedMeasureValue_MolecularWeight},
  {u"IfcDerivedMeasureValue_VaporPermeability", IfcDerivedMeasureValue_VaporPermeability},
  {u"IfcDerivedMeasureValue_MoistureDiffusivity", IfcDerivedMeasureValue_MoistureDiffusivity},
  {u"IfcDerivedMeasureValue_IsothermalMoistureCapacity", IfcDerivedMeasureValue_IsothermalMoistureCapacity},
  {u"IfcDerivedMeasureValue_SpecificHeatCapacity", IfcDerivedMeasureValue_SpecificHeatCapacity},
  {u"IfcDerivedMeasureValue_Monetary", IfcDerivedMeasureValue_Monetary},
  {u"IfcDerivedMeasureValue_MagneticFluxDensity", IfcDerivedMeasureValue_MagneticFluxDensity},
  {u"IfcDerivedMeasureValue_MagneticFlux", IfcDerivedMeasureValue_MagneticFlux},
  {u"IfcDerivedMeasureValue_LuminousFlux", IfcDerivedMeasureValue_LuminousFlux},
  {u"IfcDerivedMeasureValue_Force", IfcDerivedMeasureValue_Force},
  {u"IfcDerivedMeasureValue_Inductance", IfcDerivedMeasureValue_Inductance},
  {u"IfcDerivedMeasureValue_Illuminance", IfcDerivedMeasureValue_Illuminance},
  {u"IfcDerivedMeasureValue_ElectricResistance", IfcDerivedMeasureValue_ElectricResistance},
  {u"IfcDerivedMeasureValue_ElectricConductance", IfcDerivedMeasureValue_ElectricConductance},
  {u"IfcDerivedMeasureValue_ElectricCharge", IfcDerivedMeasureValue_ElectricCharge},
  {u"IfcDerivedMeasureValue_DoseEquivalent", IfcDerivedMeasureValue_DoseEquivalent},
  {u"IfcDerivedMeasureValue_ElectricCapacitance", IfcDerivedMeasureValue_ElectricCapacitance},
  {u"IfcDerivedMeasureValue_AbsorbedDose", IfcDerivedMeasureValue_AbsorbedDose},
  {u"IfcDerivedMeasureValue_RadioActivity", IfcDerivedMeasureValue_RadioActivity},
  {u"IfcDerivedMeasureValue_RotationalFrequency", IfcDerivedMeasureValue_RotationalFrequency},
  {u"IfcDerivedMeasureValue_Torque", IfcDerivedMeasureValue_Torque},
  {u"IfcDerivedMeasureValue_Acceleration", IfcDerivedMeasureValue_Acceleration},
  {u"IfcDerivedMeasureValue_LinearForce", IfcDerivedMeasureValue_LinearForce},
  {u"IfcDerivedMeasureValue_LinearStiffness", IfcDerivedMeasureValue_LinearStiffness},
  {u"IfcDerivedMeasureValue_ModulusOfSubgradeReaction", IfcDerivedMeasureValue_ModulusOfSubgradeReaction},
  {u"IfcDerivedMeasureValue_ModulusOfElasticity", IfcDerivedMeasureValue_ModulusOfElasticity},
  {u"IfcDerivedMeasureValue_MomentOfInertia", IfcDerivedMeasureValue_MomentOfInertia},
  {u"IfcDerivedMeasureValue_PlanarForce", IfcDerivedMeasureValue_PlanarForce},
  {u"IfcDerivedMeasureValue_RotationalStiffness", IfcDerivedMeasureValue_RotationalStiffness},
  {u"IfcDerivedMeasureValue_ShearModulus", IfcDerivedMeasureValue_ShearModulus},
  {u"IfcDerivedMeasureValue_LinearMoment", IfcDerivedMeasureValue_LinearMoment},
  {u"IfcDerivedMeasureValue_LuminousIntensityDistribution", IfcDerivedMeasureValue_LuminousIntensityDistribution},
  {u"IfcDerivedMeasureValue_Curvature", IfcDerivedMeasureValue_Curvature},
  {u"IfcDerivedMeasureValue_MassPerLength", IfcDerivedMeasureValue_MassPerLength},
  {u"IfcDerivedMeasureValue_ModulusOfLinearSubgradeReaction", IfcDerivedMeasureValue_ModulusOfLinearSubgradeReaction},
  {u"IfcDerivedMeasureValue_ModulusOfRotationalSubgradeReaction",
   IfcDerivedMeasureValue_ModulusOfRotationalSubgradeReaction},
  {u"IfcDerivedMeasureValue_RotationalMass", IfcDerivedMeasureValue_RotationalMass},
  {u"IfcDerivedMeasureValue_SectionalAreaIntegral", IfcDerivedMeasureValue_SectionalAreaIntegral},
  {u"IfcDerivedMeasureValue_SectionModulus", IfcDerivedMeasureValue_SectionModulus},
  {u"IfcDerivedMeasureValue_TemperatureGradient", IfcDerivedMeasureValue_TemperatureGradient},
  {u"IfcDerivedMeasureValue_ThermalExpansionCoefficient", IfcDerivedMeasureValue_ThermalExpansionCoefficient},
  {u"IfcDerivedMeasureValue_WarpingConstant", IfcDerivedMeasureValue_WarpingConstant},
  {u"IfcDerivedMeasureValue_WarpingMoment", IfcDerivedMeasureValue_WarpingMoment},
  {u"IfcDerivedMeasureValue_SoundPower", IfcDerivedMeasureValue_SoundPower},
  {u"IfcDerivedMeasureValue_SoundPressure", IfcDerivedMeasureValue_SoundPressure},
  {u"IfcDerivedMeasureValue_HeatingValue", IfcDerivedMeasureValue_HeatingValue},
  {u"IfcDerivedMeasureValue_PH", IfcDerivedMeasureValue_PH},
  {u"IfcDerivedMeasureValue_IonConcentration", IfcDerivedMeasureValue_IonConcentration},
  {u"IfcDerivedMeasureValue_AreaDensity", IfcDerivedMeasureValue_AreaDensity},
};

/// The whole word, exactly.
template <typename Value, std::size_t N>
std::optional<Value> find(const Word<Value> (&words)[N], const OdString& text) {
  for (const Word<Value>& word : words) {
    if (word.text == text.view()) return word.value;
  }
  return std::nullopt;
}

template <typename Value, std::size_t N>
OdString wordFor(const Word<Value> (&words)[N], Value value) {
  for (const Word<Value>& word : words) {
    if (word.value == value) return OdString(word.text);
  }
  return {};
}

}  // namespace

OdString wordOf(PropertyType::Structure structure) { return wordFor(structures, structure); }
OdString wordOf(PropertyType::Type type) { return wordFor(types, type); }
OdString wordOf(IfcType type) { return wordFor(ifcTypes, type); }

std::optional<PropertyType::Structure> structureFromWord(const OdString& word) { return find(structures, word); }
std::optional<PropertyType::Type> typeFromWord(const OdString& word) { return find(types, word); }
std::optional<IfcType> ifcTypeFromWord(const OdString& word) { return find(ifcTypes, word); }

}  // namespace tessel
