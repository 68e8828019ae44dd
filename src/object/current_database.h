#pragma once

#include <memory>

#include <odb/callback.hxx>

#include <tessel/fwd.h>

namespace tessel {

/// The database of the thread's current transaction, which is the one that an object under load belongs to. The
/// database layer defines it, because transactions live there.
std::weak_ptr<ProjectDb> currentProjectDb();

/// What every class does when the persistence layer reports an event: a loaded object is linked and clean.
template <typename Impl>
void linkWhenLoaded(odb::callback_event event, Impl& impl) {
  if (event != odb::callback_event::post_load) return;
  impl.projectDb = currentProjectDb();
  impl.dirty = false;
}

}  // namespace tessel
