#pragma once

#include <memory>
#include <vector>

#include <tessel/export.h>
#include <tessel/fwd.h>
#include <tessel/platform/od_string.h>
#include <tessel/smart_ptr.h>

namespace tessel {

/// Margins of a drawing sheet. The numbers mean what the host makes of them; the library keeps one set for metric and
/// one for imperial sheets and converts nothing.
struct SheetMargins {
  /// The save of a NaN is a DatabaseException; every other number can be saved.
  ///@{
  double page_left = 0;
  double page_right = 0;
  double page_top = 0;
  double page_bottom = 0;
  double between = 0;
  double label_space = 0;
  ///@}
};

/// All six numbers, compared exactly.
TESSEL_API bool operator==(const SheetMargins& a, const SheetMargins& b);

/// How sheets of one kind are numbered.
struct SheetCategory {
  SheetCategory() = default;
  /// The four fields in their order.
  SheetCategory(const OdString& categoryName, const OdString& categoryPrefix, int numberStart, int numberWidth)
      : name(categoryName), prefix(categoryPrefix), number_start(numberStart), number_width(numberWidth) {}

  /// It is the host that makes sheet numbers of these; the library neither counts nor checks.
  ///@{
  OdString name;
  OdString prefix;
  int number_start = 0;
  int number_width = -1;
  ///@}
};

/// Prefix and start number only: categories that number their sheets alike are equal.
TESSEL_API bool operator==(const SheetCategory& a, const SheetCategory& b);

/// The one project record of a file. `ProjectDb::project` hands it out, and nothing of it reaches the file before
/// `ProjectDb::saveProject`. For one thread at a time.
///
///     db->project().set_name(L"Harbour house");
///     db->saveProject();
class TESSEL_API Project {
public:
  /// A master drawing of the project.
  struct MasterDrawing {
    MasterDrawing() = default;
    /// The drawing in that file.
    MasterDrawing(const OdString& file) : filename(file) {}  // NOLINT(google-explicit-constructor)

    OdString filename;  ///< As the host gave it; nobody looks for the file.
  };

  /// The sheet set of the project; it has none while the name is empty.
  struct SheetSet {
    SheetSet() = default;
    /// The set in that file.
    SheetSet(const OdString& file) : filename(file) {}  // NOLINT(google-explicit-constructor)

    OdString filename;  ///< As the host gave it; nobody looks for the file.
  };

  Project();
  Project(const Project&) = delete;
  ~Project();

  /// Copies everything but the id and marks this record as changed.
  Project& operator=(const Project& other);

  /// The name of the project; empty in a new file.
  ///@{
  const OdString& name() const;
  void set_name(const OdString& name);
  ///@}

  /// Null if the project has no site.
  const TsSmartPtr<Site>& site() const;
  /// Another pointer counts as a change. A site that is new to the file is saved with the record.
  void set_site(const TsSmartPtr<Site>& site);

  /// Where the host keeps its files; empty until that is set. The library does not look for them.
  ///@{
  const OdString& models_folder() const;
  void set_models_folder(const OdString& folder);
  const OdString& sheets_folder() const;
  void set_sheets_folder(const OdString& folder);
  const SheetSet& sheet_set() const;
  void set_sheet_set(const SheetSet& sheetSet);
  ///@}

  /// To be read; the forms with `set_` are for changes. Lists keep their order in the file.
  ///@{
  const std::vector<MasterDrawing>& master_drawings() const;
  const SheetMargins& sheet_margins_metric() const;
  const SheetMargins& sheet_margins_imperial() const;
  const std::vector<SheetCategory>& sheet_categories() const;
  ///@}

  /// The field, to be edited in place. Asking alone marks the record as changed; edits through a reference that was
  /// kept over a save do not.
  ///@{
  std::vector<MasterDrawing>& set_master_drawings();
  SheetMargins& set_sheet_margins_metric();
  SheetMargins& set_sheet_margins_imperial();
  std::vector<SheetCategory>& set_sheet_categories();
  ///@}

  struct Impl;
  Impl& impl();
  const Impl& impl() const;

private:
  std::unique_ptr<Impl> impl_;
};

/// The filenames, compared exactly.
///@{
TESSEL_API bool operator==(const Project::MasterDrawing& a, const Project::MasterDrawing& b);
TESSEL_API bool operator==(const Project::SheetSet& a, const Project::SheetSet& b);
///@}

}  // namespace tessel
