#pragma once

#include <map>
#include <memory>
#include <utility>

#include <tessel/export.h>
#include <tessel/platform/od_string.h>
#include <tessel/project_db.h>
#include <tessel/project_db_reactor.h>

namespace tessel {

/// The list of the project files that are open, so that all parts of a host which ask for one path share one handle and
/// one reactor. Handles from `ProjectDb::create` and `ProjectDb::open` are not in it.
///
///     auto [db, isFirst] = ProjectDbLoader::instance().open(L"house.tessel", false);
///     if (!db) return;               // refused
///     if (isFirst) readSettings(*db);  // nobody had it open before
///
/// The list keeps no file open: a file is closed when its last owner lets go of the handle, and the next call opens it
/// anew. Its entries are not removed, one stays for each path that was ever opened.
///
/// A path is the same path only if it is spelled alike, apart from "\" for "/": "house", "./house" and "HOUSE" are
/// three, and give three handles even if they are one file.
///
/// Creating the instance is safe on several threads. Everything else is for one thread at a time.
class TESSEL_API ProjectDbLoader {
public:
  /// The handle, and whether this call has opened it. A null handle with false: the file was refused.
  using Result = std::pair<std::shared_ptr<ProjectDb>, bool>;

  /// The list of the process. A host may have more of its own.
  static ProjectDbLoader& instance();

  ProjectDbLoader();

  /// Touches no file.
  ~ProjectDbLoader();

  ProjectDbLoader(const ProjectDbLoader&) = delete;
  ProjectDbLoader& operator=(const ProjectDbLoader&) = delete;

  /// Null if the path was not opened here, or is not open any more.
  std::shared_ptr<ProjectDb> find(const OdString& path) const;

  /// The open handle if there is one, or else what `ProjectDb::create` gives. Its exceptions pass and change nothing.
  Result create(const OdString& path);

  /// The open handle if there is one, be it for reading only or not, whatever is asked for now; or else what
  /// `ProjectDb::open` gives. Its exceptions pass and change nothing.
  Result open(const OdString& path, bool readOnly);

  /// The reactor of all handles that are open here and of all that will be; null stands for the default one. The host
  /// owns it and keeps it alive as long as any of these files is open. It hears nothing of the opening itself.
  void setReactor(ProjectDb::Reactor* reactor);

private:
  Result enlist(const OdString& path, std::shared_ptr<ProjectDb> db);

  std::map<OdString, std::weak_ptr<ProjectDb>> databases_;
  ProjectDb::Reactor* reactor_ = nullptr;
};

}  // namespace tessel
