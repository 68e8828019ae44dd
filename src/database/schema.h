#pragma once

#include <cstdint>
#include <string>

namespace tessel {

/// The format's own name and numbers. Whoever writes, reads or migrates project files takes them from here.
///
/// A change of the format raises `currentVersion` by one and adds a row to the steps in
/// database/migrations.cpp. `writtenCompatibility` is raised only if builds from before the change would
/// damage the new files.

/// The key of our row in `schema_version`, and our name in ODB's schema catalogue.
inline const std::string schemaName = "tessel";

/// The version of the files that this build creates, and to which it brings older ones.
inline constexpr unsigned long long currentVersion = 1010;

/// The oldest version that can still be migrated.
inline constexpr unsigned long long baseVersion = 1000;

/// The oldest build, told by its `currentVersion`, that may use a file written by this one.
inline constexpr std::int64_t writtenCompatibility = 1000;

}  // namespace tessel
