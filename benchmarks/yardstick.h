#pragma once

#include <map>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "catalogue_texts.h"
#include "yardstick_tables.h"

namespace tessel::benchmarks {

/// What the library is measured against: the same work by hand, on SQLite's C interface, with the statements that the
/// rules of the format and of saving and loading call for. Objects are plain records, statements that repeat are kept
/// prepared, and nothing is checked that SQLite does not check. Nobody would write a host like this, but it is what a
/// host could reach that uses no library.
class YardstickFile {
public:
  using Text = yardstick::Text;
  using Site = yardstick::Site;
  using Building = yardstick::Building;
  using Story = yardstick::Story;
  using Measure = yardstick::Measure;
  using Unit = yardstick::Unit;
  using Set = yardstick::PropertySet;

  class Transaction : public yardstick::Transaction {
  public:
    explicit Transaction(YardstickFile& file) : yardstick::Transaction(file.tables_.session) {}
  };

  /// The statements of a new file, which are read from an existing one: a third copy of them would say nothing new.
  struct Schema {
    explicit Schema(const std::string& projectFile);

    std::vector<std::string> tables;  ///< Their names, the last one first.
    std::vector<std::string> statements;
  };

  /// The statements of each version from 1001 on.
  struct Migration {
    Migration();

    std::map<int, std::vector<std::string>> steps;
  };

  /// Makes a new project file and closes it.
  static void create(const std::string& path, const Schema& schema);

  /// Opens an existing project file, which is of the current version, and closes it.
  static void open(const std::string& path);

  /// Brings a file of version 1000 to the current version and closes it.
  static void migrate(const std::string& path, const Migration& migration);

  /// For the operations below.
  explicit YardstickFile(const std::string& path) : tables_(path) {}

  // Each of these in one transaction.
  void saveStories(unsigned int building, const std::vector<Text>& names);
  void saveSets(const std::vector<SetTexts<Text>>& texts);
  /// Gives each set another label, and a new definition in the place of its first one.
  void changeSets(std::vector<Set>& sets, const std::vector<SetTexts<Text>>& texts);
  void importDocument(const pugi::xml_node& root);
  void copyAll(YardstickFile& source);

  // Reading goes on in a transaction of the caller.
  std::vector<Story> stories() { return tables_.spatial.stories(); }
  std::vector<Set> sets() { return tables_.catalogue.sets(); }
  Story story(unsigned int id) { return tables_.spatial.story(id); }
  // The query is prepared at each call.
  Story story(const Text& name, unsigned int building) { return tables_.spatial.storyNamed(name, building); }
  Site site(const Text& name) { return tables_.spatial.siteNamed(name); }
  Unit defaultLengthUnit();
  Unit elevationUnit();

  /// With a commit of its own.
  void removeStory(unsigned int id);

private:
  yardstick::Tables tables_;
};

}  // namespace tessel::benchmarks
