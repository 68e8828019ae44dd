#pragma once

#include <string>
#include <vector>

#include "catalogue_texts.h"

namespace tessel::benchmarks {

/// A fresh empty folder, removed with all its content at the end.
class Folder {
public:
  explicit Folder(const std::string& parent);
  ~Folder();
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string path(const std::string& name) const { return path_ + "/" + name; }

private:
  std::string path_;
};

/// Where files cost no more than memory, if the machine has such a place: the processor's share of the work shows there.
std::string inMemory();

/// Where the program was started, which is hoped to be on a disk.
std::string onDisk();

/// The files that the work starts from.
class ProjectFiles {
public:
  explicit ProjectFiles(int storyCount);

  static constexpr char siteName[] = "Harbour";
  static constexpr unsigned int building = 2;
  static constexpr unsigned int firstStory = 3;

  int storyCount() const { return storyCount_; }

  /// As the library makes it.
  std::string empty() const { return folder_.path("empty.tessel"); }
  /// A site, a building and the units of lengths and areas.
  std::string withBuilding() const { return folder_.path("building.tessel"); }
  /// The same with all the stories.
  std::string withStories() const { return folder_.path("stories.tessel"); }
  /// Of version 1000, with as many stories.
  std::string old() const { return folder_.path("old.tessel"); }

private:
  Folder folder_;
  int storyCount_;
};

/// "Story 000001" and so on.
template <typename Text>
std::vector<Text> storyNames(int count) {
  std::vector<Text> names;
  for (int i = 1; i <= count; ++i) names.push_back(textOf<Text>(numbered("Story", i)));
  return names;
}

/// A copy, which replaces what stands there.
std::string copied(const std::string& from, const std::string& to);

}  // namespace tessel::benchmarks
