#include "spatial/spatial_impl.h"

#include "object/current_database.h"
#include "object/object_members.h"

namespace tessel {

TESSEL_DEFINE_OBJECT_MEMBERS(SpatialStructure, Object)

SpatialStructure::SpatialStructure(Impl* impl) : impl_(impl) {}
SpatialStructure::~SpatialStructure() = default;

SpatialStructure& SpatialStructure::operator=(const SpatialStructure&) {
  impl_->dirty = true;
  return *this;
}

unsigned int SpatialStructure::id() const { return impl().id; }
bool SpatialStructure::isDirty() const { return impl().dirty; }
std::shared_ptr<ProjectDb> SpatialStructure::projectDb() const { return impl().projectDb.lock(); }

SpatialStructure::Impl& SpatialStructure::impl() { return *impl_; }
const SpatialStructure::Impl& SpatialStructure::impl() const { return *impl_; }

void SpatialStructure::init(odb::callback_event event, odb::database&) { linkWhenLoaded(event, impl()); }

}  // namespace tessel
