#pragma once

#include <string>
#include <vector>

namespace tessel::test {

/// Describes a project file as an earlier build left it, at any version from 1000 to 1009, and writes it:
///
///   OldFile(1000).imperial().projects({7}).withContent().write(folder.path("old.tessel"));
///
/// The statements are written out here once more and on purpose share nothing with the library: they are what
/// is in the hands of users. Without further words the file is metric, has one project row with id 1 and
/// nothing else.
class OldFile {
public:
  explicit OldFile(int version);

  /// Lengths in inches and areas in square feet.
  OldFile& imperial() { return metaUnit(0); }
  /// What `tessel_Meta` says of the units: 0 is imperial, any other value metric.
  OldFile& metaUnit(int value);
  OldFile& withoutMetaRow();

  /// One row for each id, named "Project <id>".
  OldFile& projects(const std::vector<int>& ids);

  /// The projects are of a site (id 1), which has a building (2) with two stories (3, 4). From 1001 on there
  /// are two measures with their units and a catalogue with one of everything that the version knows. Next to
  /// no column is left at its default.
  OldFile& withContent();

  /// A space (id 5) in the first story and one (6) within that space; implies `withContent`. Only the
  /// versions 1006 and 1007 have spaces.
  OldFile& withSpaces();

  /// The file must not be there yet.
  void write(const std::string& path) const;

private:
  int version_;
  std::string metaValues_ = "(0, 1)";
  std::vector<int> projects_ = {1};
  bool content_ = false;
  bool spaces_ = false;
};

}  // namespace tessel::test
