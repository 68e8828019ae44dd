#pragma once

#include <vector>

#include <tessel/ifc_type.h>

namespace tessel::test {

/// One member of IfcType: its number in the file and its word in the import document.
struct IfcTypeRow {
  IfcType type;
  const wchar_t* word;
};

/// Members with consecutive numbers from `base`.
struct IfcTypeGroup {
  int base;
  std::vector<IfcTypeRow> rows;
};

/// All members of IfcType, written down a second time.
inline std::vector<IfcTypeGroup> ifcTypeGroups() {
  return {
    {-1, {{IfcTypeUndefined, L"IfcTypeUndefined"}}},
    {100,
     {
       {IfcSimpleValue_Integer, L"IfcSimpleValue_Integer"},
       {IfcSimpleValue_Real, L"IfcSimpleValue_Real"},
       {IfcSimpleValue_Boolean, L"IfcSimpleValue_Boolean"},
       {IfcSimpleValue_Identifier, L"IfcSimpleValue_Identifier"},
       {IfcSimpleValue_Text, L"IfcSimpleValue_Text"},
       {IfcSimpleValue_Label, L"IfcSimpleValue_Label"},
       {IfcSimpleValue_Logical, L"IfcSimpleValue_Logical"},
       {IfcSimpleValue_DateTime, L"IfcSimpleValue_DateTime"},
       {IfcSimpleValue_Date, L"IfcSimpleValue_Date"},
       {IfcSimpleValue_Time, L"IfcSimpleValue_Time"},
       {IfcSimpleValue_Duration, L"IfcSimpleValue_Duration"},
       {IfcSimpleValue_TimeStamp, L"IfcSimpleValue_TimeStamp"},
     }},
    {200,
     {
       {IfcMeasureValue_VolumeMeasure, L"IfcMeasureValue_VolumeMeasure"},
       {IfcMeasureValue_Time, L"IfcMeasureValue_Time"},
       {IfcMeasureValue_ThermodynamicTemperature, L"IfcMeasureValue_ThermodynamicTemperature"},
       {IfcMeasureValue_SolidAngle, L"IfcMeasureValue_SolidAngle"},
       {IfcMeasureValue_PositiveRatio, L"IfcMeasureValue_PositiveRatio"},
       {IfcMeasureValue_Ratio, L"IfcMeasureValue_Ratio"},
       {IfcMeasureValue_PositivePlaneAngle, L"IfcMeasureValue_PositivePlaneAngle"},
       {IfcMeasureValue_PlaneAngle, L"IfcMeasureValue_PlaneAngle"},
       {IfcMeasureValue_ParameterValue, L"IfcMeasureValue_ParameterValue"},
       {IfcMeasureValue_Numeric, L"IfcMeasureValue_Numeric"},
       {IfcMeasureValue_Mass, L"IfcMeasureValue_Mass"},
       {IfcMeasureValue_PositiveLength, L"IfcMeasureValue_PositiveLength"},
       {IfcMeasureValue_Length, L"IfcMeasureValue_Length"},
       {IfcMeasureValue_ElectricCurrent, L"IfcMeasureValue_ElectricCurrent"},
       {IfcMeasureValue_Descriptive, L"IfcMeasureValue_Descriptive"},
       {IfcMeasureValue_Count, L"IfcMeasureValue_Count"},
       {IfcMeasureValue_ContextDependent, L"IfcMeasureValue_ContextDependent"},
       {IfcMeasureValue_Area, L"IfcMeasureValue_Area"},
       {IfcMeasureValue_AmountOfSubstance, L"IfcMeasureValue_AmountOfSubstance"},
       {IfcMeasureValue_LuminousIntensity, L"IfcMeasureValue_LuminousIntensity"},
       {IfcMeasureValue_NormalisedRatio, L"IfcMeasureValue_NormalisedRatio"},
       {IfcMeasureValue_ComplexNumber, L"IfcMeasureValue_ComplexNumber"},
       {IfcMeasureValue_NonNegativeLength, L"IfcMeasureValue_NonNegativeLength"},
     }},
    {300,
     {
       {IfcDerivedMeasureValue_VolumetricFlowRateMeasure, L"IfcDerivedMeasureValue_VolumetricFlowRateMeasure"},
       {IfcDerivedMeasureValue_TimeStamp, L"IfcDerivedMeasureValue_TimeStamp"},
       {IfcDerivedMeasureValue_ThermalTransmittance, L"IfcDerivedMeasureValue_ThermalTransmittance"},
       {IfcDerivedMeasureValue_ThermalResistance, L"IfcDerivedMeasureValue_ThermalResistance"},
       {IfcDerivedMeasureValue_ThermalAdmittance, L"IfcDerivedMeasureValue_ThermalAdmittance"},
       {IfcDerivedMeasureValue_Pressure, L"IfcDerivedMeasureValue_Pressure"},
       {IfcDerivedMeasureValue_Power, L"IfcDerivedMeasureValue_Power"},
       {IfcDerivedMeasureValue_MassFlowRate, L"IfcDerivedMeasureValue_MassFlowRate"},
       {IfcDerivedMeasureValue_MassDensity, L"IfcDerivedMeasureValue_MassDensity"},
       {IfcDerivedMeasureValue_LinearVelocity, L"IfcDerivedMeasureValue_LinearVelocity"},
       {IfcDerivedMeasureValue_KinematicViscosity, L"IfcDerivedMeasureValue_KinematicViscosity"},
       {IfcDerivedMeasureValue_IntegerCountRate, L"IfcDerivedMeasureValue_IntegerCountRate"},
       {IfcDerivedMeasureValue_HeatFluxDensity, L"IfcDerivedMeasureValue_HeatFluxDensity"},
       {IfcDerivedMeasureValue_Frequency, L"IfcDerivedMeasureValue_Frequency"},
       {IfcDerivedMeasureValue_Energy, L"IfcDerivedMeasureValue_Energy"},
       {IfcDerivedMeasureValue_ElectricVoltage, L"IfcDerivedMeasureValue_ElectricVoltage"},
       {IfcDerivedMeasureValue_DynamicViscosity, L"IfcDerivedMeasureValue_DynamicViscosity"},
       {IfcDerivedMeasureValue_CompoundPlaneAngle, L"IfcDerivedMeasureValue_CompoundPlaneAngle"},
       {IfcDerivedMeasureValue_AngularVelocity, L"IfcDerivedMeasureValue_AngularVelocity"},
       {IfcDerivedMeasureValue_ThermalConductivity, L"IfcDerivedMeasureValue_ThermalConductivity"},
       {IfcDerivedMeasureValue_MolecularWeight, L"IfcDerivedMeasureValue_MolecularWeight"},
       {IfcDerivedMeasureValue_VaporPermeability, L"IfcDerivedMeasureValue_VaporPermeability"},
       {IfcDerivedMeasureValue_MoistureDiffusivity, L"IfcDerivedMeasureValue_MoistureDiffusivity"},
       {IfcDerivedMeasureValue_IsothermalMoistureCapacity, L"IfcDerivedMeasureValue_IsothermalMoistureCapacity"},
       {IfcDerivedMeasureValue_SpecificHeatCapacity, L"IfcDerivedMeasureValue_SpecificHeatCapacity"},
       {IfcDerivedMeasureValue_Monetary, L"IfcDerivedMeasureValue_Monetary"},
       {IfcDerivedMeasureValue_MagneticFluxDensity, L"IfcDerivedMeasureValue_MagneticFluxDensity"},
       {IfcDerivedMeasureValue_MagneticFlux, L"IfcDerivedMeasureValue_MagneticFlux"},
       {IfcDerivedMeasureValue_LuminousFlux, L"IfcDerivedMeasureValue_LuminousFlux"},
       {IfcDerivedMeasureValue_Force, L"IfcDerivedMeasureValue_Force"},
       {IfcDerivedMeasureValue_Inductance, L"IfcDerivedMeasureValue_Inductance"},
       {IfcDerivedMeasureValue_Illuminance, L"IfcDerivedMeasureValue_Illuminance"},
       {IfcDerivedMeasureValue_ElectricResistance, L"IfcDerivedMeasureValue_ElectricResistance"},
       {IfcDerivedMeasureValue_ElectricConductance, L"IfcDerivedMeasureValue_ElectricConductance"},
       {IfcDerivedMeasureValue_ElectricCharge, L"IfcDerivedMeasureValue_ElectricCharge"},
       {IfcDerivedMeasureValue_DoseEquivalent, L"IfcDerivedMeasureValue_DoseEquivalent"},
       {IfcDerivedMeasureValue_ElectricCapacitance, L"IfcDerivedMeasureValue_ElectricCapacitance"},
       {IfcDerivedMeasureValue_AbsorbedDose, L"IfcDerivedMeasureValue_AbsorbedDose"},
       {IfcDerivedMeasureValue_RadioActivity, L"IfcDerivedMeasureValue_RadioActivity"},
       {IfcDerivedMeasureValue_RotationalFrequency, L"IfcDerivedMeasureValue_RotationalFrequency"},
       {IfcDerivedMeasureValue_Torque, L"IfcDerivedMeasureValue_Torque"},
       {IfcDerivedMeasureValue_Acceleration, L"IfcDerivedMeasureValue_Acceleration"},
       {IfcDerivedMeasureValue_LinearForce, L"IfcDerivedMeasureValue_LinearForce"},
       {IfcDerivedMeasureValue_LinearStiffness, L"IfcDerivedMeasureValue_LinearStiffness"},
       {IfcDerivedMeasureValue_ModulusOfSubgradeReaction, L"IfcDerivedMeasureValue_ModulusOfSubgradeReaction"},
       {IfcDerivedMeasureValue_ModulusOfElasticity, L"IfcDerivedMeasureValue_ModulusOfElasticity"},
       {IfcDerivedMeasureValue_MomentOfInertia, L"IfcDerivedMeasureValue_MomentOfInertia"},
       {IfcDerivedMeasureValue_PlanarForce, L"IfcDerivedMeasureValue_PlanarForce"},
       {IfcDerivedMeasureValue_RotationalStiffness, L"IfcDerivedMeasureValue_RotationalStiffness"},
       {IfcDerivedMeasureValue_ShearModulus, L"IfcDerivedMeasureValue_ShearModulus"},
       {IfcDerivedMeasureValue_LinearMoment, L"IfcDerivedMeasureValue_LinearMoment"},
       {IfcDerivedMeasureValue_LuminousIntensityDistribution, L"IfcDerivedMeasureValue_LuminousIntensityDistribution"},
       {IfcDerivedMeasureValue_Curvature, L"IfcDerivedMeasureValue_Curvature"},
       {IfcDerivedMeasureValue_MassPerLength, L"IfcDerivedMeasureValue_MassPerLength"},
       {IfcDerivedMeasureValue_ModulusOfLinearSubgradeReaction,
        L"IfcDerivedMeasureValue_ModulusOfLinearSubgradeReaction"},
       {IfcDerivedMeasureValue_ModulusOfRotationalSubgradeReaction,
        L"IfcDerivedMeasureValue_ModulusOfRotationalSubgradeReaction"},
       {IfcDerivedMeasureValue_RotationalMass, L"IfcDerivedMeasureValue_RotationalMass"},
       {IfcDerivedMeasureValue_SectionalAreaIntegral, L"IfcDerivedMeasureValue_SectionalAreaIntegral"},
       {IfcDerivedMeasureValue_SectionModulus, L"IfcDerivedMeasureValue_SectionModulus"},
       {IfcDerivedMeasureValue_TemperatureGradient, L"IfcDerivedMeasureValue_TemperatureGradient"},
       {IfcDerivedMeasureValue_ThermalExpansionCoefficient, L"IfcDerivedMeasureValue_ThermalExpansionCoefficient"},
       {IfcDerivedMeasureValue_WarpingConstant, L"IfcDerivedMeasureValue_WarpingConstant"},
       {IfcDerivedMeasureValue_WarpingMoment, L"IfcDerivedMeasureValue_WarpingMoment"},
       {IfcDerivedMeasureValue_SoundPower, L"IfcDerivedMeasureValue_SoundPower"},
       {IfcDerivedMeasureValue_SoundPressure, L"IfcDerivedMeasureValue_SoundPressure"},
       {IfcDerivedMeasureValue_HeatingValue, L"IfcDerivedMeasureValue_HeatingValue"},
       {IfcDerivedMeasureValue_PH, L"IfcDerivedMeasureValue_PH"},
       {IfcDerivedMeasureValue_IonConcentration, L"IfcDerivedMeasureValue_IonConcentration"},
       {IfcDerivedMeasureValue_AreaDensity, L"IfcDerivedMeasureValue_AreaDensity"},
     }},
  };
}

}  // namespace tessel::test
