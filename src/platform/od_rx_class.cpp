#include <tessel/platform/od_rx_object.h>

OdRxClass::OdRxClass(const wchar_t* name, OdRxClass* parent, OdRxFactory factory)
    : name_(name), parent_(parent), factory_(factory) {}

OdRxClass::~OdRxClass() = default;

bool OdRxClass::isDerivedFrom(const OdRxClass* other) const noexcept {
  for (const OdRxClass* base = this; base; base = base->parent_) {
    if (base == other) return true;
  }
  return false;
}

OdRxObjectPtr OdRxClass::create() const { return factory_ ? factory_() : nullptr; }

OdRxObject* OdRxClass::getX(const OdRxClass* protocol) const {
  const auto found = extensions_.find(protocol);
  return found == extensions_.end() ? nullptr : OdRxObjectPtr(found->second).detach();
}

OdRxObjectPtr OdRxClass::addX(const OdRxClass* protocol, OdRxObject* extension) {
  return std::exchange(extensions_[protocol], OdRxObjectPtr(extension));
}

OdRxObjectPtr OdRxClass::delX(const OdRxClass* protocol) {
  const auto node = extensions_.extract(protocol);
  return node ? node.mapped() : nullptr;
}

OdRxClass* newTsRxClass(const wchar_t* name, OdRxClass* parent, OdRxFactory factory) {
  return new OdRxClass(name, parent, factory);
}

void deleteOdRxClass(OdRxClass* rxClass) { delete rxClass; }
