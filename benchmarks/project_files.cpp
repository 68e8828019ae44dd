#include "project_files.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <tessel/tessel.h>

#include "library.h"
#include "support/old_files.h"
#include "support/raw_file.h"

namespace tessel::benchmarks {
namespace {

void setUnit(ProjectDb& db, const OdString& measure, const OdString& label) {
  db.setDefaultUnit(Unit::create(label, 1, db.get<Measure>(NameKey(measure))));
}

void writeBuilding(const std::string& path) {
  const auto db = ProjectDb::create(OdString::fromUtf8(path));
  const auto site = Site::create(OdString::fromUtf8(ProjectFiles::siteName));
  site->set_description(u"The old harbour, north side");
  site->set_town(u"Bergen");
  site->set_country(u"Norway");
  const auto building = Building::create(db->save(site), u"Warehouse");
  building->set_address_lines(u"Quay 7");
  building->set_occupancy_type(u"storage");
  building->set_year_of_construction(u"1904");
  db->save(building);
  setUnit(*db, u"LENGTH", u"m");
  setUnit(*db, u"AREA", u"m^2");
}

void writeOldFile(const std::string& path, int storyCount) {
  test::OldFile(1000).withContent().write(path);
  test::RawFile file(path);
  const std::string numbers = "WITH RECURSIVE number(n) AS (VALUES (1) UNION ALL SELECT n + 1 FROM number LIMIT " +
                              std::to_string(storyCount) + ") ";
  file.exec("BEGIN; " + numbers +
            "INSERT INTO tessel_SpatialStructure (id, typeid) SELECT 100 + n, 'tessel::Story' FROM number; " + numbers +
            "INSERT INTO tessel_Story (id, building_id, name, elevation) "
            "SELECT 100 + n, 2, printf('Story %06d', n), 3.0 * n FROM number; COMMIT");
}

}  // namespace

Folder::Folder(const std::string& parent) : path_(parent + "/tessel-benchmark-XXXXXX") {
  if (!::mkdtemp(path_.data())) throw std::system_error(errno, std::generic_category(), path_);
}

Folder::~Folder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string inMemory() {
  const std::string shared = "/dev/shm";
  return std::filesystem::exists(shared) ? shared : std::filesystem::temp_directory_path().string();
}

std::string onDisk() { return std::filesystem::current_path().string(); }

ProjectFiles::ProjectFiles(int storyCount) : folder_(inMemory()), storyCount_(storyCount) {
  LibraryFile::create(empty());
  writeBuilding(withBuilding());
  LibraryFile(copied(withBuilding(), withStories())).saveStories(building, storyNames<OdString>(storyCount));
  writeOldFile(old(), storyCount);
}

template <>
std::string textOf(const std::string& text) {
  return text;
}

template <>
OdString textOf(const std::string& text) {
  return OdString::fromUtf8(text);
}

std::string copied(const std::string& from, const std::string& to) {
  std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing);
  return to;
}

}  // namespace tessel::benchmarks
