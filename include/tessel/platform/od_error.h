#pragma once

#include <tessel/export.h>

/// @file
/// Errors of the platform.

/// Numeric result of an operation. Other values than the named ones may occur.
enum OdResult : int {
  eOk = 0,
  /// A block of memory could not be had.
  eOutOfMemory = 9,
  /// A runtime class is used or removed that is not registered.
  eClassNotRegistered = 255,
  /// A runtime class is registered a second time.
  eClassAlreadyRegistered = 313,
};

/// Failure of the platform, told by its number alone.
///
/// Derives from nothing, so that `catch (const std::exception&)` does not catch it.
class TESSEL_API OdError {
public:
  /// `code` need not be one of the named ones.
  explicit OdError(OdResult code) noexcept : code_(code) {}

  /// The number given at construction.
  [[nodiscard]] OdResult code() const noexcept { return code_; }

private:
  OdResult code_;
};
