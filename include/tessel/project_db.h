#pragma once

#include <map>
#include <memory>
#include <set>
#include <type_traits>
#include <vector>

#include <tessel/criteria.h>
#include <tessel/export.h>
#include <tessel/fwd.h>
#include <tessel/id_mapping.h>
#include <tessel/object_traits.h>
#include <tessel/object_type.h>
#include <tessel/platform/od_string.h>
#include <tessel/removal.h>
#include <tessel/smart_ptr.h>

namespace pugi {
class xml_node;
}

namespace tessel {

/// Lets `ProjectDb::get` take a query in terms of IFC and nothing else. Compilers agree on the names of such functions,
/// unlike on those with an expression in their type.
template <typename Query>
struct IfcQueryResult {};
/// @copydoc IfcQueryResult
template <>
struct IfcQueryResult<IfcPropertySetDefinitionQuery> {
  using type = void;  ///< The definitions come in a vector.
};

/// One open project file.
///
///     auto db = ProjectDb::create(L"house.tessel");
///     if (!db) return;  // no project file, and none could be made of it
///     auto site = db->save(Site::create(L"Harbour"));
///     auto same = db->get<Site>(NameKey(L"Harbour"));
///
/// The file is closed when the last shared pointer goes; objects do not keep it open. A handle, its objects and its
/// transactions are for one thread at a time, different handles may be used on different threads.
///
/// Every operation that touches the file joins the current Transaction of the thread if that is one of this database.
/// Otherwise it works in a transaction of its own, and a current transaction of another database is set aside meanwhile.
/// What an operation wrote in a transaction of its own is durable when it returns, and gone if it throws; in a joined
/// transaction nothing is committed, and after an exception the host decides.
///
/// Unless told otherwise, failures of the file are thrown as DatabaseException, and as ForcedRollback if the whole
/// transaction is gone. `T` stands for any of the ten classes that can be saved.
class TESSEL_API ProjectDb : public std::enable_shared_from_this<ProjectDb> {
public:
  class Reactor;
  struct ImportOptions;
  struct CtorData;
  struct Impl;

  /// Opens the file, and makes it first if it is missing or a database without a project. Files of older versions are
  /// brought up to date.
  ///
  /// Null if the path cannot be opened, or the file is too old or too new for this library; nothing was written then.
  /// `inspect` tells which of these it is, and beforehand what the opening would do.
  /// The exceptions of ODB pass: a file that is no database, a locked file, a migration that fails (which leaves the
  /// file as it was), odb::object_not_persistent for a file without a project record, odb::already_in_transaction if
  /// the thread has a current transaction.
  ///
  /// A path "NAME://PATH" opens PATH through the SQLite VFS called NAME, such as "unix-none://house.tessel". An empty
  /// path and ":memory:" open a database that is gone when it is closed.
  static std::shared_ptr<ProjectDb> create(const OdString& filename);

  /// Opens an existing project file; null also if there is none. An old file is brought up to date on disk even when
  /// it is asked for reading only. Otherwise as `create`.
  static std::shared_ptr<ProjectDb> open(const OdString& filename, bool readOnly);

  /// For `create` and `open` only.
  explicit ProjectDb(const CtorData& data);
  ~ProjectDb();
  ProjectDb(const ProjectDb&) = delete;
  ProjectDb& operator=(const ProjectDb&) = delete;

  /// The path as it was given, the VFS included.
  const OdString& filename() const;

  /// The version of the file's schema.
  unsigned long long version() const;

  /// Whether SQLite refuses to write, be it on request or because of the file's permissions.
  bool isReadOnly() const;

  /// Whether this handle was the one that made the project in the file.
  bool isNew() const;

  /// Who decides about clashes and hears of what is saved; null restores the default, which lets a clash fail. The
  /// host owns the reactor and keeps it alive as long as it is set.
  void setReactor(Reactor* reactor);

  /// The project record in memory; see `saveProject`.
  ///@{
  Project& project();
  const Project& project() const;
  ///@}

  /// Writes the project record, and first its site through `save`; the record then holds the site that stands for it
  /// in this file. Throws what `save` throws.
  void saveProject();

  /// The object of a row; each call makes a new object. Null for id 0. A row that does not exist, or that is of another
  /// class than `T`, is an error: odb::object_not_persistent passes. Also for SpatialStructure.
  template <typename T>
  TsSmartPtr<T> get(unsigned int id);

  /// The object of a natural key, or null: Site, EntityType, PropertyNamespace, Measure and Unit by NameKey; Building
  /// by NameObjectKey<Site>, Story by NameObjectKey<Building>; definitions and sets by
  /// NameObjectKey<PropertyNamespace>. An object that refers to a missing row is passed over: null, and the reactor is
  /// told.
  ///@{
  template <typename T>
  TsSmartPtr<T> get(const NameKey& key);
  template <typename T, typename Owner>
  TsSmartPtr<T> get(const NameObjectKey<Owner>& key);
  ///@}

  /// Appends what meets the criteria to the vector, in the order that is told with the criteria class. An object that
  /// refers to a missing row is left out, and the reactor is told. Also for SpatialStructure.
  ///@{
  template <typename T>
  void get(std::vector<TsSmartPtr<T>>& objects, const typename ObjectTraits<T>::criteria_type& criteria) const;
  template <typename T>
  void get(std::vector<TsSmartPtr<T>>& objects) const {
    get(objects, typename ObjectTraits<T>::criteria_type());
  }
  ///@}

  /// Appends the definitions that answer a question in terms of IFC: `get<IfcPropertySetDefinitionQuery>(found, query)`.
  /// The exceptions of ODB pass.
  template <typename Query>
  typename IfcQueryResult<Query>::type get(std::vector<TsSmartPtr<PropertyDefinition>>& definitions,
                                           const Query& query) const;

  /// How many rows meet the criteria. Also for SpatialStructure.
  ///@{
  template <typename T>
  unsigned long long count(const typename ObjectTraits<T>::criteria_type& criteria) const;
  template <typename T>
  unsigned long long count() const {
    return count<T>(typename ObjectTraits<T>::criteria_type());
  }
  ///@}

  /// Saves a new or changed object, first of all what it refers to, and returns the object that stands for it in this
  /// file: the same one; the copy of an object of another database; or the existing object that a clash was resolved
  /// to. Null for null, and for an object whose numbers cannot be converted to the units of this file's columns.
  ///
  /// The reactor is asked when a unique value is taken. ObjectNotUnique if the clash stays, ObjectNotFound if the row of
  /// a changed object is gone. The forms with a mapping record what became of each object.
  ///
  /// The constant forms write new objects, and copy objects of another database, but no changes of an object that this
  /// database has already.
  ///@{
  template <typename T>
  TsSmartPtr<T> save(const TsSmartPtr<T>& object) {
    IdMapping mapping(nullptr);
    return save(object, mapping);
  }
  template <typename T>
  TsSmartPtr<T> save(const TsSmartPtr<T>& object, IdMapping& mapping);
  template <typename T>
  TsSmartPtr<const T> save(const TsSmartPtr<const T>& object) {
    IdMapping mapping(nullptr);
    return save(object, mapping);
  }
  template <typename T>
  TsSmartPtr<const T> save(const TsSmartPtr<const T>& object, IdMapping& mapping);
  ///@}

  /// Removes the row of an object, also for SpatialStructure. The object is an unsaved one afterwards. A current
  /// transaction of the host is finalized, unless the reactor refused. ObjectNotFound for null.
  ///
  /// Each row is offered to the reactor first, which may refuse. Whether a row is in use shows only when the
  /// transaction is committed, so every removed row is committed at once, together with all that the current
  /// transaction of the host held before: a batch is not one atomic step. If the row is in use, that commit fails, and
  /// what the transaction held is lost with it. Commit your own work before you remove.
  ///
  /// A row that does not exist is a DatabaseException.
  ///
  /// A property set takes its definitions with it, as a batch once its own row is gone. If one of them is in use, that
  /// is a DatabaseException although the set is gone.
  template <typename T>
  RemoveResult remove(const TsSmartPtr<T>& object);

  /// The same by id. Objects in memory that stand for the row keep their id and database.
  template <typename T>
  RemoveResult remove(unsigned int id);

  /// Removes several rows in ascending order of their ids, also for SpatialStructure, and tells the outcome of each. A row
  /// in use ends the batch with a DatabaseException; rows removed before it stay removed. A current transaction of the host
  /// stays usable: it has begun anew after each commit.
  ///@{
  template <typename T>
  void remove(const std::set<unsigned int>& ids, std::map<ObjectKey, RemoveResult>& results);
  template <typename T>
  void remove(const std::set<unsigned int>& ids) {
    std::map<ObjectKey, RemoveResult> results;
    remove<T>(ids, results);
  }
  ///@}

  /// The same for rows of several classes: those that refer to others go first, whatever the order of the keys. Keys of
  /// other types are passed over.
  ///@{
  void remove(const std::set<ObjectKey>& keys, std::map<ObjectKey, RemoveResult>& results);
  void remove(const std::set<ObjectKey>& keys);
  ///@}

  /// Removes all rows of a class, also for SpatialStructure, of several classes or of all, as a batch.
  ///@{
  template <typename T>
  void purge(std::map<ObjectKey, RemoveResult>& results);
  template <typename T>
  void purge() {
    std::map<ObjectKey, RemoveResult> results;
    purge<T>(results);
  }
  void purge(const std::set<ObjectType>& types, std::map<ObjectKey, RemoveResult>& results);
  void purge(const std::set<ObjectType>& types);
  void purge(std::map<ObjectKey, RemoveResult>& results);
  void purge();
  ///@}

  /// Copies all objects of a class, and what they refer to, from another file.
  ///
  /// Each object of the source is saved into this one by the road of `save`: its references come along, its numbers are
  /// converted to the units of this file's columns, and the reactor of this database is asked about clashes. The
  /// mapping tells afterwards which row each object has become; it may serve several copies, also of several sources.
  /// The source is only read, as it was last committed. Nothing happens if it is null or this database.
  ///
  /// **A site, building or story stays behind, and nothing is said, if one of its columns has a unit in one file only,
  /// or units of different dimensions. A new file has no column units: take over those of the source by `copyMeta`, or
  /// set default units, before anything else. `leftBehind` (copy_report.h) lists what stayed behind, and why.** A
  /// building whose site stays behind, or a story whose building does, ends the copy with a DatabaseException.
  ///
  /// If the copy throws, the mapping names rows that do not exist: throw it away. Within a transaction of the host,
  /// what was copied before stays there. reactors.h has ready answers to clashes.
  ///@{
  template <typename T>
  void copyAll(const std::shared_ptr<const ProjectDb>& source, IdMapping& mapping);
  template <typename T>
  void copyAll(const std::shared_ptr<const ProjectDb>& source) {
    IdMapping mapping(nullptr);
    copyAll<T>(source, mapping);
  }
  ///@}

  /// Copies all objects, and the default units. A measure that has a default unit here already ends the copy with an
  /// exception of ODB.
  ///@{
  void copyAll(const std::shared_ptr<const ProjectDb>& source, IdMapping& mapping);
  void copyAll(const std::shared_ptr<const ProjectDb>& source);
  ///@}

  /// Copies the column units, the project record and its site. The record in memory is replaced as well. A column that
  /// has a unit here already ends the copy with an exception of ODB, even if it is the same unit.
  ///@{
  void copyMeta(const std::shared_ptr<const ProjectDb>& source, IdMapping& mapping);
  void copyMeta(const std::shared_ptr<const ProjectDb>& source);
  ///@}

  /// The default unit of the measure of that name; null if it has none. Case counts.
  TsSmartPtr<const Unit> defaultUnit(const OdString& measureName) const;

  /// Makes a unit the default of its measure, and saves it first. The first default of "LENGTH" or "AREA" in a file also
  /// becomes the unit of the columns of that measure, for good: later ones change only what `defaultUnit` answers. No
  /// number is converted. Nothing happens for null. Throws what `save` throws.
  void setDefaultUnit(const TsSmartPtr<const Unit>& unit);

  /// The unit in which the numbers of a column are kept, told by the column's getter:
  ///
  ///     auto unit = db->columnUnit(&Story::elevation);
  ///
  /// Null if the file does not say, and for a getter of no such column. `T` is Site, Building or Story.
  template <typename T>
  TsSmartPtr<const Unit> columnUnit(double (T::*getter)() const) const;

  /// Fills the file from a document; see project_db_import.h.
  ///@{
  void importFromXml(const pugi::xml_node& node, const ImportOptions& options);
  void importFromXml(const pugi::xml_node& node, const std::set<ObjectType>& types, const ImportOptions& options);
  ///@}

  Impl& impl();
  const Impl& impl() const;

private:
  std::unique_ptr<Impl> impl_;
};

}  // namespace tessel
