#pragma once

#include <memory>

#include <tessel/object.h>
#include <tessel/object_traits.h>
#include <tessel/platform/od_string.h>

namespace tessel {

/// A physical quantity: its name and the exponents of the seven base quantities of the International System of
/// Quantities (ISO 80000-1), so that an area is {2, 0, 0, 0, 0, 0, 0}. Their order is that of the parameters of `create`,
/// which is neither the order of ISO nor that of IFC. For one thread at a time.
///
///     auto length = Measure::create(L"LENGTH", 1, 0, 0, 0, 0, 0, 0);
///     auto metre = Unit::create(L"metre", L"m", 1.0, length);
///     metre = metre->save(db);  // saves the measure, too
///
/// The exponents have no setters, because a measure with other exponents is another measure. A measure that is saved
/// into a file which has one of its name gives way to that one, whatever the exponents.
class TESSEL_API Measure : public Object {
  TESSEL_OBJECT_MEMBERS(Measure)
  TESSEL_SAVE_MEMBERS(Measure)

  ~Measure() override;

  /// New, without a description; nothing is checked.
  static TsSmartPtr<Measure> create(const OdString& name, short length, short mass, short time,
                                    short thermodynamic_temperature, short electric_current, short luminous_intensity,
                                    short amount_of_substance);

  /// The same name, description and exponents.
  ///@{
  bool operator==(const Measure& other) const;
  bool operator!=(const Measure& other) const;
  ///@}

  unsigned int id() const override;
  bool isDirty() const override;
  std::shared_ptr<ProjectDb> projectDb() const override;

  /// Unique in a file.
  ///@{
  const OdString& name() const;
  void set_name(const OdString& name);
  ///@}

  /// Free text; empty in a new measure.
  ///@{
  const OdString& description() const;
  void set_description(const OdString& description);
  ///@}

  /// The exponents of the base quantities; 0 where the measure does not depend on one.
  ///@{
  short length() const;
  short mass() const;
  short time() const;
  short thermodynamic_temperature() const;
  short electric_current() const;
  short luminous_intensity() const;
  short amount_of_substance() const;
  ///@}

  struct Impl;
  Impl& impl();
  const Impl& impl() const;

protected:
  Measure();
  explicit Measure(Impl* impl);
  explicit Measure(const SetDirty&);

private:
  friend class odb::access;
  void init(odb::callback_event event, odb::database& database);

  std::unique_ptr<Impl> impl_;
};

/// A way to express a measure: the short label that is shown, such as "m^2", an optional name, and the factor that
/// takes a number in this unit to the measure's base unit, which is the coherent SI unit. There is no offset, so degrees
/// Celsius cannot be converted. For one thread at a time.
///
/// Scale and measure have no setters. A unit that is saved into a file which has one of the same label, scale and
/// measure gives way to that one.
class TESSEL_API Unit : public Object {
  TESSEL_OBJECT_MEMBERS(Unit)
  TESSEL_SAVE_MEMBERS(Unit)

  ~Unit() override;

  /// Without a name.
  static TsSmartPtr<Unit> create(const OdString& label, double scale, const TsSmartPtr<const Measure>& measure);

  /// With a name, even if it is empty.
  static TsSmartPtr<Unit> create(const OdString& name, const OdString& label, double scale,
                                 const TsSmartPtr<const Measure>& measure);

  /// The same label and scale, equal measures, and both or neither with a name; what the names are does not count.
  ///@{
  bool operator==(const Unit& other) const;
  bool operator!=(const Unit& other) const;
  ///@}

  unsigned int id() const override;
  bool isDirty() const override;
  std::shared_ptr<ProjectDb> projectDb() const override;

  /// Unique in a file among the units that have one; empty if the unit has none.
  ///@{
  const OdString& name() const;
  bool has_name() const;
  void set_name(const OdString& name);
  ///@}

  /// Marks the unit as changed even if it had no name.
  void clear_name();

  /// The plain form, unique among the units of a measure; `formatUnitString` makes the form to show.
  ///@{
  const OdString& label() const;
  void set_label(const OdString& label);
  ///@}

  /// How many base units of the measure one of this unit is; any number is accepted, but
  /// conversions to a unit of scale 0 are infinite.
  double scale() const;

  /// Null if it was created without one.
  const TsSmartPtr<const Measure>& measure() const;

  /// The exponents of the measure. The unit must have one.
  ///@{
  short length() const;
  short mass() const;
  short time() const;
  short thermodynamic_temperature() const;
  short electric_current() const;
  short luminous_intensity() const;
  short amount_of_substance() const;
  ///@}

  struct Impl;
  Impl& impl();
  const Impl& impl() const;

protected:
  Unit();
  explicit Unit(Impl* impl);
  explicit Unit(const SetDirty&);

private:
  friend class odb::access;
  void init(odb::callback_event event, odb::database& database);

  std::unique_ptr<Impl> impl_;
};

/// Says in which unit the numbers of one column of a spatial class are kept. A value class: it belongs to whoever holds
/// it, and no reactor hears of it.
class TESSEL_API ColumnUnit {
public:
  /// Blank and unchanged, to be filled from a row.
  ColumnUnit();

  /// A changed one. `table` is the class name ("Site", "Building" or "Story"), `column` the name of its column.
  ColumnUnit(const OdString& table, const OdString& column, const TsSmartPtr<const Unit>& unit);

  /// What was moved from may only be destroyed or assigned to.
  ///@{
  ColumnUnit(ColumnUnit&& other) noexcept;
  ColumnUnit& operator=(ColumnUnit&& other) noexcept;
  ///@}
  ~ColumnUnit();

  /// The column, as given at construction.
  ///@{
  const OdString& table() const;
  const OdString& column() const;
  ///@}

  /// The unit of the column's numbers; null in a blank one.
  const TsSmartPtr<const Unit>& unit() const;
  /// Another pointer counts as a change, even if it points at an equal unit.
  void set_unit(const TsSmartPtr<const Unit>& unit);

  struct Impl;
  Impl& impl();
  const Impl& impl() const;

private:
  std::unique_ptr<Impl> impl_;
};

/// Says which unit is the default of a measure in one file; a value class as ColumnUnit.
class TESSEL_API DefaultUnit {
public:
  /// Blank and unchanged, to be filled from a row.
  DefaultUnit();

  /// A changed one. The unit may be null.
  DefaultUnit(const TsSmartPtr<const Measure>& measure, const TsSmartPtr<const Unit>& unit);

  /// What was moved from may only be destroyed or assigned to.
  ///@{
  DefaultUnit(DefaultUnit&& other) noexcept;
  DefaultUnit& operator=(DefaultUnit&& other) noexcept;
  ///@}
  ~DefaultUnit();

  /// Null in a blank one.
  const TsSmartPtr<const Measure>& measure() const;

  /// The default; may be null.
  const TsSmartPtr<const Unit>& unit() const;
  /// Another pointer counts as a change, even if it points at an equal unit.
  void set_unit(const TsSmartPtr<const Unit>& unit);

  struct Impl;
  Impl& impl();
  const Impl& impl() const;

private:
  std::unique_ptr<Impl> impl_;
};

}  // namespace tessel
