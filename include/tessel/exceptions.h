#pragma once

#include <string>

#include <tessel/export.h>
#include <tessel/platform/od_string.h>

namespace tessel {

/// Root of the errors that the core throws. It does not derive from std::exception, so a host catches it by name.
/// Objects in memory are left as they were when an error crosses them: nothing rolls a field back.
struct TESSEL_API Exception {
  Exception() = default;
  Exception(const Exception&) = default;
  Exception(Exception&&) = default;
  Exception& operator=(const Exception&) = default;
  Exception& operator=(Exception&&) = default;
  virtual ~Exception();
  /// A fixed English text; its memory lives as long as the library, for ObjectNotUnique as long as the exception.
  virtual const wchar_t* what() const = 0;
};

/// A number could not be converted from one unit to another.
struct TESSEL_API UnitException : Exception {};

/// For hosts that check units themselves; the library does not throw it.
struct TESSEL_API WrongUnit : UnitException {
  const wchar_t* what() const override;
};

/// `convertUnit` was given exactly one unit: a number without a unit cannot become one with a unit.
struct TESSEL_API UnitConversionNotPossible : UnitException {
  const wchar_t* what() const override;
};

/// `convertUnit` was given units of different dimensions, such as a length and an area.
struct TESSEL_API InvalidUnitConversion : UnitException {
  const wchar_t* what() const override;
};

/// SQLite or the persistence layer failed, for instance because the file is locked by another process or the disk is
/// full. An operation that began its own transaction has left no trace in the file.
struct TESSEL_API DatabaseException : Exception {
  const wchar_t* what() const override;
};

/// A row that must exist is not there, such as the row of an object that is to be updated.
struct TESSEL_API ObjectNotFound : Exception {
  const wchar_t* what() const override;
};

/// A transaction was used in a way that its state does not allow.
struct TESSEL_API TransactionException : Exception {};

/// A transaction was to become the current one of a thread that has one already. Finish or clear that one first.
struct TESSEL_API AlreadyInTransaction : TransactionException {
  const wchar_t* what() const override;
};

/// The transaction is gone, but the same work may succeed when it is done again in a new one.
struct TESSEL_API Recoverable : Exception {
  const wchar_t* what() const override;
};

/// SQLite rolled the whole transaction back under a running operation, for instance after an I/O error. Nothing of it
/// is in the file; roll the host's `Transaction` back, begin a new one and do the work again.
struct TESSEL_API ForcedRollback : Recoverable {
  const wchar_t* what() const override;
};

/// The file's rules would be broken by what was asked.
struct TESSEL_API ConsistencyError : Exception {};

/// For hosts that turn the outcome "in use" of a removal into an exception; the library does not throw it.
struct TESSEL_API ObjectInUse : ConsistencyError {
  const wchar_t* what() const override;
};

/// A row with the same unique values exists and the clash was not resolved. Install a `ProjectDb::Reactor` to keep,
/// overwrite or rename instead.
struct TESSEL_API ObjectNotUnique : ConsistencyError {
  ObjectNotUnique() = default;
  /// The text ends in the member then.
  explicit ObjectNotUnique(const OdString& member);

  /// The field or class that clashed, such as "name" or "Unit.measure_id,Unit.label"; empty when it is not known.
  const OdString& member() const { return member_; }
  const wchar_t* what() const override;

private:
  OdString member_;
  std::wstring message_;
};

}  // namespace tessel
