#include "rows_check.h"

#include <iostream>

#include "catalogue_files.h"
#include "copy_files.h"
#include "library.h"
#include "project_document.h"
#include "project_files.h"
#include "support/raw_file.h"
#include "yardstick.h"

namespace tessel::benchmarks {
namespace {

using Lines = std::vector<std::string>;

constexpr int storyCount = 50;
constexpr int setCount = 20;
constexpr ProjectSize projectSize{20, 5, 50};

std::string lineOf(const test::RawFile::Row& row) {
  std::string line;
  for (const std::string& value : row) line += "|" + value;
  return line;
}

/// All tables and rows. The ids that were handed out count, too.
Lines contentOf(const std::string& path) {
  test::RawFile file(path, test::RawFile::Access::readOnly);
  Lines lines;
  for (const std::string& table : file.tables()) {
    lines.push_back(table);
    for (const std::string& part : describeTable(file, table)) lines.push_back("  " + part);
    for (const auto& row : file.rows("SELECT * FROM \"" + table + "\"")) lines.push_back("  " + lineOf(row));
  }
  for (const auto& row : file.rows("SELECT * FROM sqlite_sequence ORDER BY name")) lines.push_back(lineOf(row));
  return lines;
}

std::string printed(const OdString& text) { return text.toUtf8(); }
std::string printed(const std::string& text) { return text; }
template <typename Number>
std::string printed(Number number) {
  return std::to_string(number);
}

template <typename... Values>
std::string joined(const Values&... values) {
  std::string line;
  ((line += "|" + printed(values)), ...);
  return line;
}

std::string describe(const Site& s) {
  return joined(s.id(), s.name(), s.long_name(), s.description(), s.site_type(), s.ref_elevation(),
                s.land_title_number(), s.internal_location(), s.address_lines(), s.postal_box(), s.town(), s.region(),
                s.postal_code(), s.country(), s.buildable_area(), s.total_area(), s.building_height_limit());
}

std::string describe(const LibraryFile::Site& s) { return describe(*s); }

std::string describe(const YardstickFile::Site& s) {
  return joined(s.id, s.name, s.long_name, s.description, s.site_type, s.ref_elevation, s.land_title_number,
                s.internal_location, s.address_lines, s.postal_box, s.town, s.region, s.postal_code, s.country,
                s.buildable_area, s.total_area, s.building_height_limit);
}

std::string describe(const Building& b) {
  return joined(b.id(), b.name(), b.long_name(), b.description(), b.elevation_of_ref_height(), b.elevation_of_terrain(),
                b.internal_location(), b.address_lines(), b.postal_box(), b.town(), b.region(), b.postal_code(),
                b.country(), b.building_id(), b.is_permanent_id(), b.main_fire_use(), b.ancillary_fire_use(),
                b.sprinkler_protection(), b.sprinkler_protection_automatic(), b.occupancy_type(),
                b.gross_planned_area(), b.number_of_storeys(), b.year_of_construction(), b.is_landmarked()) +
         describe(*b.site());
}

std::string describe(const YardstickFile::Building& b) {
  return joined(b.id, b.name, b.long_name, b.description, b.elevation_of_ref_height, b.elevation_of_terrain,
                b.internal_location, b.address_lines, b.postal_box, b.town, b.region, b.postal_code, b.country,
                b.building_id, b.is_permanent_id, b.main_fire_use, b.ancillary_fire_use, b.sprinkler_protection,
                b.sprinkler_protection_automatic, b.occupancy_type, b.gross_planned_area, b.number_of_storeys,
                b.year_of_construction, b.is_landmarked) +
         describe(*b.site);
}

std::string describe(const LibraryFile::Story& s) {
  return joined(s->id(), s->name(), s->long_name(), s->description(), s->elevation(), s->entrance_level(),
                s->above_ground(), s->sprinkler_protection(), s->sprinkler_protection_automatic(),
                s->gross_area_planned(), s->net_area_planned()) +
         describe(*s->building());
}

std::string describe(const YardstickFile::Story& s) {
  return joined(s.id, s.name, s.long_name, s.description, s.elevation, s.entrance_level, s.above_ground,
                s.sprinkler_protection, s.sprinkler_protection_automatic, s.gross_area_planned, s.net_area_planned) +
         describe(*s.building);
}

std::string describe(const LibraryFile::Unit& u) {
  const Measure& m = *u->measure();
  return joined(u->id(), u->name(), u->label(), u->scale(), m.id(), m.name(), m.description(), m.length(), m.mass(),
                m.time(), m.thermodynamic_temperature(), m.electric_current(), m.luminous_intensity(),
                m.amount_of_substance());
}

std::string describe(const YardstickFile::Unit& u) {
  const YardstickFile::Measure& m = *u.measure;
  return joined(u.id, u.name.value_or(""), u.label, u.scale, m.id, m.name, m.description, m.length, m.mass, m.time,
                m.thermodynamic_temperature, m.electric_current, m.luminous_intensity, m.amount_of_substance);
}

template <typename File>
Lines read(const std::string& path) {
  File file(path);
  typename File::Transaction transaction(file);
  Lines lines;
  for (const auto& story : file.stories()) lines.push_back(describe(story));
  lines.push_back(describe(file.story(ProjectFiles::firstStory)));
  lines.push_back(describe(file.story(storyNames<typename File::Text>(7).back(), ProjectFiles::building)));
  lines.push_back(describe(file.site(textOf<typename File::Text>(ProjectFiles::siteName))));
  lines.push_back(describe(file.defaultLengthUnit()));
  lines.push_back(describe(file.elevationUnit()));
  return lines;
}

template <typename File>
Lines afterSaving(const std::string& path) {
  File(path).saveStories(ProjectFiles::building, storyNames<typename File::Text>(storyCount));
  return contentOf(path);
}

template <typename File>
Lines afterRemoving(const std::string& path) {
  {
    File file(path);
    for (unsigned int i = 0; i < storyCount; i += 2) file.removeStory(ProjectFiles::firstStory + i);
  }
  return contentOf(path);
}

template <typename File>
Lines afterSavingSets(const std::string& path) {
  File(path).saveSets(setTexts<typename File::Text>(setCount, CatalogueFiles::definitionsOfEach));
  return contentOf(path);
}

template <typename File>
Lines afterChangingSets(const std::string& path) {
  {
    File file(path);
    auto sets = file.sets();
    file.changeSets(sets, changedSetTexts<typename File::Text>(setCount));
  }
  return contentOf(path);
}

template <typename File>
Lines afterImport(const std::string& path) {
  File(path).importDocument(projectDocument(projectSize).document_element());
  return contentOf(path);
}

template <typename File>
Lines afterCopy(const std::string& from, const std::string& path) {
  {
    File source(from);
    File(path).copyAll(source);
  }
  return contentOf(path);
}

/// Both lists must say something, and the same.
bool same(const std::string& work, const Lines& library, const Lines& yardstick) {
  if (library == yardstick && !library.empty()) return true;
  std::cerr << work << ": library and yardstick differ\n";
  for (std::size_t i = 0; i < std::max(library.size(), yardstick.size()); ++i) {
    const std::string left = i < library.size() ? library[i] : "nothing";
    const std::string right = i < yardstick.size() ? yardstick[i] : "nothing";
    if (left != right) std::cerr << "  library:   " << left << "\n  yardstick: " << right << "\n";
  }
  return false;
}

/// A path for the results of each.
struct Results {
  std::string library, yardstick;
};

bool sameWholeFiles(const ProjectFiles& files, const Results& results) {
  LibraryFile::create(results.library);
  YardstickFile::create(results.yardstick, YardstickFile::Schema(files.withBuilding()));
  bool good = same("create", contentOf(results.library), contentOf(results.yardstick));

  LibraryFile::open(copied(files.old(), results.library));
  YardstickFile::migrate(copied(files.old(), results.yardstick), YardstickFile::Migration());
  good &= same("migrate", contentOf(results.library), contentOf(results.yardstick));
  return good;
}

bool sameStories(const ProjectFiles& files, const Results& results) {
  bool good = same("save", afterSaving<LibraryFile>(copied(files.withBuilding(), results.library)),
                   afterSaving<YardstickFile>(copied(files.withBuilding(), results.yardstick)));
  good &= same("remove", afterRemoving<LibraryFile>(copied(files.withStories(), results.library)),
               afterRemoving<YardstickFile>(copied(files.withStories(), results.yardstick)));
  return good & same("read", read<LibraryFile>(files.withStories()), read<YardstickFile>(files.withStories()));
}

bool sameCatalogue(const Results& results) {
  const CatalogueFiles files(setCount);
  bool good = same("save sets", afterSavingSets<LibraryFile>(copied(files.withoutSets(), results.library)),
                   afterSavingSets<YardstickFile>(copied(files.withoutSets(), results.yardstick)));
  return good & same("change sets", afterChangingSets<LibraryFile>(copied(files.withSets(), results.library)),
                     afterChangingSets<YardstickFile>(copied(files.withSets(), results.yardstick)));
}

bool sameImportAndCopy(const ProjectFiles& projects, const Results& results) {
  bool good = same("import", afterImport<LibraryFile>(copied(projects.empty(), results.library)),
                   afterImport<YardstickFile>(copied(projects.empty(), results.yardstick)));
  const CopyFiles files(projectSize);
  return good & same("copy", afterCopy<LibraryFile>(files.source(), copied(files.destination(), results.library)),
                     afterCopy<YardstickFile>(files.source(), copied(files.destination(), results.yardstick)));
}

}  // namespace

bool bothDoTheSame() {
  const Folder folder(inMemory());
  const Results results{folder.path("library.tessel"), folder.path("yardstick.tessel")};
  const ProjectFiles files(storyCount);
  bool good = sameWholeFiles(files, results);
  good &= sameStories(files, results);
  good &= sameCatalogue(results);
  return good & sameImportAndCopy(files, results);
}

}  // namespace tessel::benchmarks
