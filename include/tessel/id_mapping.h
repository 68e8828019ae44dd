#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>

#include <tessel/export.h>
#include <tessel/fwd.h>
#include <tessel/object_type.h>

namespace tessel {

/// What becomes of an object on its way into a file: the answer to a clash of names, and the outcome of a save.
enum class SaveResolution : std::int32_t {
  Created = 0,      ///< Outcome: a new row. As an answer: try again unchanged.
  Kept = 1,         ///< Nothing was written. As an answer: take the existing object instead.
  Overwritten = 2,  ///< A row was updated. As an answer: copy the incoming values onto the existing object.
  Renamed = 3,      ///< As an answer only: give the incoming object the new name and try again.
};

/// Records which row each object of a run has become in the destination file, and how. A copy or an import fills it;
/// read it afterwards to translate old ids into new ones.
///
/// Databases are held by raw pointers that are only compared: a mapping keeps no file open, and entries of a source
/// that has been closed mean nothing any more. Objects that were never saved share one key per class, with id 0 and
/// no source, so only the last of them is found. A mapping is not rolled back with a transaction.
class TESSEL_API IdMapping {
public:
  /// Names an object on its way.
  struct Key {
    ObjectType type;          ///< Its class, the same on both sides.
    unsigned int id;          ///< In the source.
    const ProjectDb* source;  ///< Null for objects that belong to no database, such as those of a document.
  };

  /// What became of it.
  struct Value {
    unsigned int id;            ///< In the destination.
    SaveResolution resolution;  ///< How it came there.
  };

  /// By source, then type, then id.
  struct KeyLess {
    /// Whether `a` comes before `b`.
    bool operator()(const Key& a, const Key& b) const;
  };

  /// Goes through pairs of key and value, in the order of the keys.
  using const_iterator = std::map<Key, Value, KeyLess>::const_iterator;

  /// An empty mapping. The destination may be null, and need not live as long as the mapping.
  ///@{
  explicit IdMapping(const std::shared_ptr<const ProjectDb>& destination);
  explicit IdMapping(const ProjectDb* destination);
  ///@}

  /// The database given at construction; null in the mappings that saves without a mapping use inside.
  const ProjectDb* destination() const { return destination_; }

  /// The entries. Iterators stay good until their own entry is erased.
  ///@{
  std::size_t size() const { return entries_.size(); }
  const_iterator begin() const { return entries_.begin(); }
  const_iterator end() const { return entries_.end(); }
  ///@}

  /// Whether the key is known.
  bool has(const Key& key) const;

  /// False, with `value` left alone, if the key is unknown.
  bool get(const Key& key, Value& value) const;

  /// Adds the entry or replaces its value.
  void set(const Key& key, const Value& value);

  /// Whether there was such an entry.
  bool erase(const Key& key);

private:
  const ProjectDb* destination_;
  std::map<Key, Value, KeyLess> entries_;
};

}  // namespace tessel
