#pragma once

#include <tessel/project.h>
#include <tessel/spatial.h>

namespace tessel {

struct Project::Impl {
  unsigned int id = 1;  ///< Of the one row that a file has.
  OdString name;
  TsSmartPtr<Site> site;
  OdString models_folder;
  OdString sheets_folder;
  std::vector<MasterDrawing> master_drawings;
  SheetSet sheet_set;
  SheetMargins sheet_margins_metric;
  SheetMargins sheet_margins_imperial;
  std::vector<SheetCategory> sheet_categories;
  bool dirty = false;
};

}  // namespace tessel
