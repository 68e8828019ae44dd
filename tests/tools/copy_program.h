#pragma once

#include "tools/program.h"

namespace tessel::test {

/// Works on the sample catalogue in "a.tessel", which no copy may change.
class CopyProgram : public Program {
protected:
  void SetUp() override { tessel({"import", "a.tessel", TESSEL_EXAMPLES "/ifc-common-elements.xml"}); }

  ProcessResult copy(std::vector<std::string> words) {
    words.insert(words.begin(), "copy");
    const std::string before = read("a.tessel");
    ProcessResult result = tessel(words);
    EXPECT_TRUE(read("a.tessel") == before) << "the source has changed";
    return result;
  }

  /// A copy that must fail and leave the file as it is.
  ProcessResult refusedCopy(const std::string& destination, std::vector<std::string> words) {
    words.push_back(destination);
    const std::string before = read(destination);
    ProcessResult result = copy(words);
    EXPECT_TRUE(read(destination) == before) << "the destination has changed";
    return result;
  }

  /// A file with the same content as "a.tessel".
  void duplicate(const std::string& name) const { write(name, read("a.tessel")); }

  void change(const std::string& file, const std::string& sql) const { raw(file).exec(sql); }

  /// A site with one building and one story, lengths in metres, no unit for areas.
  void importHouseInMetres(const std::string& file) {
    write("house.xml", "<p><measure><name>LENGTH</name><length>1</length></measure>"
                       "<unit><name>metre</name><label>m</label><scale>1</scale><measure name='LENGTH'/></unit>"
                       "<default_unit name='metre'/><site id='1'><name>Hill</name></site>"
                       "<building id='2'><site id='1'/><name>House</name></building>"
                       "<story><building id='2'/><name>Loft</name><elevation>3</elevation></story></p>");
    EXPECT_EQ(tessel({"import", file, "house.xml"}).status, 0);
  }

  std::string shown(const std::string& command, const std::string& file) { return tessel({command, file}).out; }
};

}  // namespace tessel::test
