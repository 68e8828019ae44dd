#pragma once

namespace odb {
class database;
}

namespace tessel {

/// Rows that the lifecycle of a file needs, written through the class mappings. The bodies stand beside the classes;
/// this layer knows only when they are called. All work in the thread's current transaction and let ODB exceptions
/// pass.

/// The system in which a file kept its lengths and areas before it had a catalogue of units.
enum class MeasureSystem { metric, imperial };

/// Writes the row of a project without name, site, folders and margins. Its id is 1.
void persistDefaultProject(odb::database& database);

/// Writes the measures LENGTH, AREA, VOLUME and MASS of a new file, which get the ids 1 to 4.
void persistBaseMeasures(odb::database& database);

/// Writes the measures LENGTH and AREA, for each its one unit (mm and m^2, or in and ft^2) and that unit as the
/// default, then the units of the ten numeric columns. Stored numbers are left alone: the units say what they are.
void persistMigratedUnits(odb::database& database, MeasureSystem system);

}  // namespace tessel
