#pragma once

#include <map>

#include <tessel/export.h>
#include <tessel/platform/od_error.h>
#include <tessel/platform/od_smart_ptr.h>
#include <tessel/platform/od_string.h>

/// @file
/// Classes that are described at run time, and protocol extensions that a host attaches to them.

class OdRxClass;
class OdRxObject;

/// Shares an object of any runtime class.
using OdRxObjectPtr = OdSmartPtr<OdRxObject>;

/// Makes a new object of a runtime class; may answer with null.
using OdRxFactory = OdRxObjectPtr (*)();

/// Where an object stands in comparison with another one.
enum class OdRxOrdering : int { Less = -1, Equal = 0, Greater = 1, NotOrderable = 2 };

/// Root of all classes that are described at run time.
///
/// The order of the virtual operations is part of the interface. The root itself keeps no count: its `addRef`
/// and `release` do nothing, and an object of a class that leaves them so belongs to whoever made it. Classes
/// whose objects are shared override both. The thread rules are those of the derived class.
class TESSEL_API OdRxObject {
public:
  virtual ~OdRxObject();

  /// This object as `rxClass`, or the protocol extension that its class has for `rxClass`: the description of
  /// the object's class and then those of its bases, up to the root, are asked in turn, first whether they
  /// are `rxClass`, then for an extension. Null when `rxClass` is null or nothing fits. The result carries
  /// one reference that the caller owns.
  virtual OdRxObject* queryX(const OdRxClass* rxClass) const;

  /// The same answer as queryX.
  virtual OdRxObject* x(const OdRxClass* rxClass) const;

  /// The description of the object's class; null while that class is not registered.
  virtual OdRxClass* isA() const;

  /// Count references, in classes that do; see above.
  ///@{
  virtual void addRef();
  virtual void release();
  ///@}

  /// The number of references, for tracing only; 1 from a class that does not say better.
  virtual long numRefs() const;

  /// A new object like this one; null from a class whose objects cannot be cloned, as the root.
  virtual OdRxObjectPtr clone() const;

  /// Takes over the state of `source`. The root has no state: it does nothing.
  virtual void copyFrom(const OdRxObject* source);

  /// The root orders nothing: `Equal` for the object itself and `NotOrderable` for any other.
  virtual OdRxOrdering comparedTo(const OdRxObject* other);

  /// In the root an object equals nothing but itself.
  virtual bool isEqualTo(const OdRxObject* other) const;

  /// The description of the root itself, without parent or factory; it lives as long as the library is
  /// loaded.
  static OdRxClass* desc();

protected:
  OdRxObject() noexcept = default;
  OdRxObject(const OdRxObject&) noexcept = default;
  OdRxObject& operator=(const OdRxObject&) noexcept = default;
};

/// Description of a runtime class. It is made by newTsRxClass and removed by deleteOdRxClass, and is told
/// apart from others by its address alone: two classes may share a name.
///
/// Not synchronised: attach and detach extensions while no other thread uses the class.
class TESSEL_API OdRxClass {
public:
  OdRxClass(const OdRxClass&) = delete;
  OdRxClass& operator=(const OdRxClass&) = delete;

  /// As given to newTsRxClass.
  [[nodiscard]] const OdString& name() const noexcept { return name_; }

  /// The description of the base class; null for a root.
  [[nodiscard]] OdRxClass* myParent() const noexcept { return parent_; }

  /// Whether this class is `other` or has it among its bases; false for null.
  [[nodiscard]] bool isDerivedFrom(const OdRxClass* other) const noexcept;

  /// What the factory makes; null without a factory.
  [[nodiscard]] OdRxObjectPtr create() const;

  /// The extension that is attached to this very class, bases not asked, for `protocol`; null if there is
  /// none. The result carries one reference that the caller owns.
  [[nodiscard]] OdRxObject* getX(const OdRxClass* protocol) const;

  /// Attaches an extension, keeps a reference to it, and returns the one that it replaces, which may be null.
  /// A null `extension` detaches. From then on queryX of each object of this class, and of classes derived
  /// from it, answers `protocol` with the extension. Detach before the extension's code is unloaded.
  OdRxObjectPtr addX(const OdRxClass* protocol, OdRxObject* extension);

  /// Detaches the extension and returns it; null if there was none.
  OdRxObjectPtr delX(const OdRxClass* protocol);

private:
  friend class OdRxObject;
  friend TESSEL_API OdRxClass* newTsRxClass(const wchar_t* name, OdRxClass* parent, OdRxFactory factory);
  friend TESSEL_API void deleteOdRxClass(OdRxClass* rxClass);

  OdRxClass(const wchar_t* name, OdRxClass* parent, OdRxFactory factory);
  ~OdRxClass();

  OdString name_;
  OdRxClass* parent_;
  OdRxFactory factory_;
  std::map<const OdRxClass*, OdRxObjectPtr> extensions_;
};

/// Describes a class. `parent` is null for a root, and must outlive the use of the new description; `factory`
/// may be null. The caller owns the result and gives it to deleteOdRxClass, once.
[[nodiscard]] TESSEL_API OdRxClass* newTsRxClass(const wchar_t* name, OdRxClass* parent, OdRxFactory factory);

/// Removes a description and lets go of its extensions; null is welcome. Nothing may ask the description or a
/// class derived from it afterwards.
TESSEL_API void deleteOdRxClass(OdRxClass* rxClass);
