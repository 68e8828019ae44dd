#pragma once

/// @file
/// Names of the classes of the interface. Whole headers are included only where an object is used, not merely named.

namespace odb {
class access;
struct callback_event;
class database;
}  // namespace odb

class OdString;
class OdRxClass;
class OdRxObject;

/// The whole interface, save for the classes of the platform, whose names begin with "Od".
namespace tessel {

template <typename T>
class TsSmartPtr;
template <typename T>
struct ObjectTraits;

class Object;
class ObjectReactor;
struct ObjectAccess;
struct SetDirty;

class Measure;
class Unit;
class ColumnUnit;
class DefaultUnit;

class EntityType;
class PropertyNamespace;
class AbstractDefinition;
class PropertyDefinition;
class ValueDefinition;
class PropertySet;

class SpatialStructure;
class Site;
class Building;
class Story;
class Project;

class ProjectDb;
class ProjectDbLoader;
class Transaction;
class IdMapping;
struct Inspection;

}  // namespace tessel
