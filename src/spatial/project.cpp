#include "spatial/project_impl.h"

#include <tuple>

#include "object/fields.h"

namespace tessel {
namespace {

auto fieldsOf(const SheetMargins& m) {
  return std::tie(m.page_left, m.page_right, m.page_top, m.page_bottom, m.between, m.label_space);
}

}  // namespace

bool operator==(const SheetMargins& a, const SheetMargins& b) { return fieldsOf(a) == fieldsOf(b); }

// What a category is called and how wide its numbers are printed does not make its numbering another one.
bool operator==(const SheetCategory& a, const SheetCategory& b) {
  return a.prefix == b.prefix && a.number_start == b.number_start;
}

bool operator==(const Project::MasterDrawing& a, const Project::MasterDrawing& b) { return a.filename == b.filename; }
bool operator==(const Project::SheetSet& a, const Project::SheetSet& b) { return a.filename == b.filename; }

Project::Project() : impl_(std::make_unique<Impl>()) {}
Project::~Project() = default;

Project& Project::operator=(const Project& other) {
  const unsigned int id = impl().id;
  if (this != &other) impl() = other.impl();
  impl().id = id;
  impl().dirty = true;
  return *this;
}

const OdString& Project::name() const { return impl().name; }
void Project::set_name(const OdString& name) { setField(impl(), impl().name, name); }

const TsSmartPtr<Site>& Project::site() const { return impl().site; }
void Project::set_site(const TsSmartPtr<Site>& site) { setField(impl(), impl().site, site); }

const OdString& Project::models_folder() const { return impl().models_folder; }
void Project::set_models_folder(const OdString& folder) { setField(impl(), impl().models_folder, folder); }
const OdString& Project::sheets_folder() const { return impl().sheets_folder; }
void Project::set_sheets_folder(const OdString& folder) { setField(impl(), impl().sheets_folder, folder); }
const Project::SheetSet& Project::sheet_set() const { return impl().sheet_set; }
void Project::set_sheet_set(const SheetSet& sheetSet) { setField(impl(), impl().sheet_set, sheetSet); }

const std::vector<Project::MasterDrawing>& Project::master_drawings() const { return impl().master_drawings; }
const SheetMargins& Project::sheet_margins_metric() const { return impl().sheet_margins_metric; }
const SheetMargins& Project::sheet_margins_imperial() const { return impl().sheet_margins_imperial; }
const std::vector<SheetCategory>& Project::sheet_categories() const { return impl().sheet_categories; }

std::vector<Project::MasterDrawing>& Project::set_master_drawings() {
  impl().dirty = true;
  return impl().master_drawings;
}

SheetMargins& Project::set_sheet_margins_metric() {
  impl().dirty = true;
  return impl().sheet_margins_metric;
}

SheetMargins& Project::set_sheet_margins_imperial() {
  impl().dirty = true;
  return impl().sheet_margins_imperial;
}

std::vector<SheetCategory>& Project::set_sheet_categories() {
  impl().dirty = true;
  return impl().sheet_categories;
}

Project::Impl& Project::impl() { return *impl_; }
const Project::Impl& Project::impl() const { return *impl_; }

}  // namespace tessel
