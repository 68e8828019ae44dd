#pragma once

#include <memory>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include <tessel/tessel.h>

#include "catalogue_texts.h"

namespace tessel::benchmarks {

/// The work through the library, in the words of the yardstick.
class LibraryFile {
public:
  using Text = OdString;
  using Site = TsSmartPtr<tessel::Site>;
  using Story = TsSmartPtr<tessel::Story>;
  using Unit = TsSmartPtr<const tessel::Unit>;
  using Set = TsSmartPtr<PropertySet>;

  class Transaction : private tessel::Transaction {
  public:
    explicit Transaction(LibraryFile& file) : tessel::Transaction(file.db_, BeginCurrent) {}
    using tessel::Transaction::commit;
  };

  static void create(const std::string& path);
  /// Migrates, too.
  static void open(const std::string& path);

  explicit LibraryFile(const std::string& path);

  void saveStories(unsigned int building, const std::vector<Text>& names);
  void saveSets(const std::vector<SetTexts<Text>>& texts);
  void changeSets(std::vector<Set>& sets, const std::vector<SetTexts<Text>>& texts);
  /// A document that gives any message is an error here.
  void importDocument(const pugi::xml_node& root);
  void copyAll(LibraryFile& source);

  std::vector<Story> stories();
  std::vector<Set> sets();
  Story story(unsigned int id);
  Story story(const Text& name, unsigned int building);
  Site site(const Text& name);
  Unit defaultLengthUnit();
  Unit elevationUnit();

  void removeStory(unsigned int id);

private:
  std::shared_ptr<ProjectDb> db_;
};

}  // namespace tessel::benchmarks
