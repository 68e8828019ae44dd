#pragma once

#include <memory>
#include <string>
#include <vector>

#include <tessel/tessel.h>

namespace tessel::benchmarks {

/// The work through the library, in the words of the yardstick.
class LibraryFile {
public:
  using Text = OdString;
  using Story = TsSmartPtr<tessel::Story>;
  using Unit = TsSmartPtr<const tessel::Unit>;

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

  std::vector<Story> stories();
  Story story(unsigned int id);
  Story story(const Text& name, unsigned int building);
  Unit defaultLengthUnit();
  Unit elevationUnit();

  void removeStory(unsigned int id);

private:
  std::shared_ptr<ProjectDb> db_;
};

}  // namespace tessel::benchmarks
