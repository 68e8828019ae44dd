#include <tessel/platform/od_rx_object.h>

OdRxObject::~OdRxObject() = default;

OdRxObject* OdRxObject::queryX(const OdRxClass* rxClass) const {
  if (!rxClass) return nullptr;
  for (const OdRxClass* asked = isA(); asked; asked = asked->myParent()) {
    if (asked == rxClass) {
      auto* const self = const_cast<OdRxObject*>(this);
      self->addRef();
      return self;
    }
    if (OdRxObject* const extension = asked->getX(rxClass)) return extension;
  }
  return nullptr;
}

OdRxObject* OdRxObject::x(const OdRxClass* rxClass) const { return queryX(rxClass); }

OdRxClass* OdRxObject::isA() const { return desc(); }

void OdRxObject::addRef() {}

void OdRxObject::release() {}

long OdRxObject::numRefs() const { return 1; }

OdRxObjectPtr OdRxObject::clone() const { return nullptr; }

void OdRxObject::copyFrom(const OdRxObject*) {}

OdRxOrdering OdRxObject::comparedTo(const OdRxObject* other) {
  return other == this ? OdRxOrdering::Equal : OdRxOrdering::NotOrderable;
}

bool OdRxObject::isEqualTo(const OdRxObject* other) const { return other == this; }

OdRxClass* OdRxObject::desc() {
  static OdRxClass description(L"OdRxObject", nullptr, nullptr);
  return &description;
}
