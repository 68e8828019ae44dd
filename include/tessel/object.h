#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <set>

#include <tessel/export.h>
#include <tessel/fwd.h>
#include <tessel/object_type.h>
#include <tessel/platform/od_rx_object.h>
#include <tessel/smart_ptr.h>

/// @file
/// The base of persistent objects, and the members that macros declare in their classes.

namespace tessel {

/// Tag of the constructor that makes a blank object which counts as changed; readers fill such objects.
struct SetDirty {};

/// Common base of the classes that are registered through `newTsRxClass`; it adds nothing of its own.
class TESSEL_API TsRxObject : public OdRxObject {};

/// Declares what every runtime class of the library has; `T` is the class.
#define TESSEL_RX_MEMBERS(T)                                                                                        \
public:                                                                                                             \
  /** The description of the class; null before registration and after the library was unloaded. */                 \
  static OdRxClass* desc();                                                                                         \
  OdRxClass* isA() const override;                                                                                  \
  OdRxObject* queryX(const OdRxClass* rxClass) const override;                                                      \
  /** The typed cast; null for null and for an object of another class. */                                          \
  static TsSmartPtr<T> queryX(const OdRxObject* object);                                                            \
  /** Register and remove the class. The library does this itself when it is loaded and unloaded. OdError 313 if */ \
  /** the class is registered already, OdError 255 if it is not registered. */                                      \
  /** @{ */                                                                                                         \
  static void rxInit();                                                                                             \
  static void rxUninit();                                                                                           \
  /** @} */                                                                                                         \
  /** Always null, for objects come from `create` or from a file; OdError 255 if the class is not registered. */    \
  static OdSmartPtr<T> createVirtualObject();                                                                       \
                                                                                                                    \
private:                                                                                                            \
  friend struct ObjectAccess;                                                                                       \
  static OdRxObjectPtr pseudoConstructor();                                                                         \
  static OdRxClass* g_pDesc;                                                                                        \
                                                                                                                    \
public:

/// Declares, on top of the runtime class, what every class of persistent objects has; `T` is the class.
#define TESSEL_OBJECT_MEMBERS(T)                                                                                    \
  TESSEL_RX_MEMBERS(T)                                                                                              \
  /** The ObjectType of the class. */                                                                               \
  static ObjectType staticTesselType();                                                                             \
  ObjectType tesselType() const override;                                                                           \
  /** A new unsaved object with the same fields, which compares equal to this one. It refers to the same objects */ \
  /** as this one, and no reactor watches it. */                                                                    \
  TsSmartPtr<T> cloneObject() const;

/// Declares the operations of Object::save with the result narrowed to `T`, and what they stand on.
#define TESSEL_SAVE_MEMBERS(T)                                                                                \
public:                                                                                                       \
  /** As Object::save, with a result of this class. */                                                        \
  /** @{ */                                                                                                   \
  bool save();                                                                                                \
  TsSmartPtr<T> save(const std::shared_ptr<ProjectDb>& db);                                                   \
  TsSmartPtr<T> save(const std::shared_ptr<ProjectDb>& db, IdMapping& mapping);                               \
  TsSmartPtr<const T> save(const std::shared_ptr<ProjectDb>& db) const;                                       \
  TsSmartPtr<const T> save(const std::shared_ptr<ProjectDb>& db, IdMapping& mapping) const;                   \
  /** @} */                                                                                                   \
                                                                                                              \
protected:                                                                                                    \
  OdRxObjectPtr clone() const override;                                                                       \
  TsSmartPtr<Object> saveImpl(const std::shared_ptr<ProjectDb>& db, IdMapping& mapping) override;             \
  TsSmartPtr<const Object> saveImpl(const std::shared_ptr<ProjectDb>& db, IdMapping& mapping) const override; \
                                                                                                              \
public:

/// Base of everything that has a row in a project file.
///
/// An object is owned by its smart pointers, never by a database. It knows its database weakly and does not keep it
/// open. Setters mark an object as changed ("dirty") only if they really change something; the flag is cleared when
/// the row has been written and when the object is loaded. The count of references is atomic, everything else belongs
/// to one thread at a time.
class TESSEL_API Object : public TsRxObject {
  TESSEL_RX_MEMBERS(Object)

  ~Object() override;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  /// Count references; `release` of the last one tells the reactors and then deletes the object.
  ///@{
  void addRef() override;
  void release() override;
  ///@}

  /// The id of the object's row, unique in its class and file and never used again; 0 when it has no row yet.
  virtual unsigned int id() const = 0;

  /// The ObjectType of the object's own class.
  virtual ObjectType tesselType() const = 0;

  /// Whether the object holds something that its row does not.
  virtual bool isDirty() const = 0;

  /// The database of the object's row. Empty for an object that was never saved or loaded, for a clone, and when the
  /// database has been closed since.
  virtual std::shared_ptr<ProjectDb> projectDb() const = 0;

  /// A new unsaved object of the same class with the same fields.
  TsSmartPtr<Object> cloneObject() const;

  /// Saves into the object's own database. False, and nothing is written, if it has none.
  bool save();

  /// Saves into `db` what is new or changed, first of all what the object refers to. An object of another database is
  /// copied. Null if `db` is empty.
  ///
  /// The result stands for the object in `db`; it may be another one than this: the copy, or the object whose name
  /// clashed. The constant forms write new objects, but no changes of objects that `db` has already. See
  /// ProjectDb::save for what is thrown.
  ///@{
  TsSmartPtr<Object> save(const std::shared_ptr<ProjectDb>& db);
  TsSmartPtr<Object> save(const std::shared_ptr<ProjectDb>& db, IdMapping& mapping);
  TsSmartPtr<const Object> save(const std::shared_ptr<ProjectDb>& db) const;
  TsSmartPtr<const Object> save(const std::shared_ptr<ProjectDb>& db, IdMapping& mapping) const;
  ///@}

  /// The reactor is told when the object is deleted, until one of the two is gone or the link is removed. The link is
  /// kept on both sides; a reactor is stored once however often it is added. The host owns the reactor.
  ///@{
  void addReactor(ObjectReactor* reactor);
  void removeReactor(ObjectReactor* reactor);
  ///@}

protected:
  Object();

  OdRxObjectPtr clone() const override = 0;
  virtual TsSmartPtr<Object> saveImpl(const std::shared_ptr<ProjectDb>& db, IdMapping& mapping) = 0;
  virtual TsSmartPtr<const Object> saveImpl(const std::shared_ptr<ProjectDb>& db, IdMapping& mapping) const = 0;

  /// Whether both are of the same class; the classes add their fields.
  bool operator==(const Object& other) const;
  bool operator!=(const Object& other) const;

private:
  friend class ObjectReactor;

  std::atomic<std::int32_t> references_{0};
  std::set<ObjectReactor*> reactors_;
};

/// Watches objects; hosts derive from it. It does not keep its objects alive, and takes itself out of their lists when
/// it is destroyed.
class TESSEL_API ObjectReactor {
public:
  ObjectReactor();

  /// Copies the list of objects only: the copy is not told of anything, because the objects do not know it, and they
  /// may go before it. Objects that were watched before an assignment still tell the reactor.
  ///@{
  ObjectReactor(const ObjectReactor& other);
  ObjectReactor& operator=(const ObjectReactor& other);
  ///@}

  virtual ~ObjectReactor();

  /// The last reference of the object has gone. The object is still whole; do not take a lasting reference to it.
  virtual void onObjectDeleted(Object* object) = 0;

  /// The same link as Object::addReactor and Object::removeReactor, made from the other side.
  ///@{
  void addObject(Object* object);
  void removeObject(Object* object);
  ///@}

private:
  friend class Object;

  std::set<Object*> objects_;  ///< Those that it believes to watch.
  std::set<Object*> knownTo_;  ///< Those that have it in their lists.
};

}  // namespace tessel
