#include "copy_files.h"

#include <tessel/tessel.h>

#include "library.h"

namespace tessel::benchmarks {

namespace {

std::shared_ptr<ProjectDb> opened(const std::string& path) { return ProjectDb::open(OdString::fromUtf8(path), false); }

/// The first default units of a file are those of its columns, too.
void setColumnUnits(ProjectDb& db, const TsSmartPtr<const Unit>& length, const OdString& areaLabel, double areaScale) {
  db.setDefaultUnit(length);
  db.setDefaultUnit(Unit::create(areaLabel, areaScale, db.get<Measure>(NameKey(u"AREA"))));
}

}  // namespace

CopyFiles::CopyFiles(const ProjectSize& size) : folder_(inMemory()) {
  LibraryFile::create(source());
  LibraryFile(source()).importDocument(projectDocument(size).document_element());
  const auto metric = opened(source());
  setColumnUnits(*metric, metric->get<Unit>(NameKey(u"metre")), u"m^2", 1);

  // A copy brings default units along, which must not be there. The units of columns can be had without them.
  const auto imperial = ProjectDb::create(OdString::fromUtf8(folder_.path("imperial.tessel")));
  setColumnUnits(*imperial, Unit::create(u"ft", 0.3048, imperial->get<Measure>(NameKey(u"LENGTH"))), u"ft^2",
                 0.09290304);
  ProjectDb::create(OdString::fromUtf8(destination()))->copyMeta(imperial);
}

}  // namespace tessel::benchmarks
