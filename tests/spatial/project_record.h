#pragma once

#include <map>
#include <string>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/samples.h"

namespace tessel::test {

using Rows = RawFile::Rows;

class ProjectRecord : public ::testing::Test {
protected:
  Project& record() { return file.db->project(); }
  std::map<std::string, std::string> row() const { return file.row("tessel_Project", 1); }
  Rows drawings() const { return file.raw().rows("SELECT * FROM tessel_Project_master_drawings ORDER BY \"index\""); }
  Rows categories() const {
    return file.raw().rows("SELECT * FROM tessel_Project_sheet_categories ORDER BY \"index\"");
  }

  SampleProject file;
};

}  // namespace tessel::test
