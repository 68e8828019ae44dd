#include "import/element_context.h"

#include <algorithm>
#include <cassert>

#include <tessel/property_set.h>

namespace tessel {

ElementPath ElementPath::then(const wchar_t* key) const {
  ElementPath longer = *this;
  const auto end = std::find(longer.steps_.begin(), longer.steps_.end(), nullptr);
  assert(end != longer.steps_.end());
  *end = key;
  return longer;
}

OdString ElementPath::text() const {
  OdString text = steps_.front();
  for (auto step = steps_.begin() + 1; step != steps_.end() && *step; ++step) text += OdString(u" > ") + *step;
  return text;
}

const PropertySet* ElementContext::set() const {
  return type == ObjectType::PropertySet ? static_cast<const PropertySet*>(object) : nullptr;
}

}  // namespace tessel
