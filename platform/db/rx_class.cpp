// AcRxObject and AcRxClass: class descriptions, derivation tests, and host start-up.
#include "rxclass.h"

#include "host_init.h"
#include "rxobject.h"

AcRxClass* AcRxObject::gpDesc = nullptr;

AcRxObject::~AcRxObject() = default;

AcRxClass* AcRxObject::desc() {
  tdhost::ensureHostInitialized();
  return gpDesc;
}

AcRxClass* AcRxObject::isA() const { return desc(); }

bool AcRxObject::isKindOf(const AcRxClass* aClass) const {
  const AcRxClass* mine = isA();
  return mine != nullptr && mine->isDerivedFrom(aClass);
}

AcRxObject* AcRxObject::clone() const { return nullptr; }

Acad::ErrorStatus AcRxObject::copyFrom(const AcRxObject*) { return Acad::eNotApplicable; }

AcRxClass::AcRxClass(const ACHAR* name, AcRxClass* parent, AcRxPseudoConstructor constructor,
                     const ACHAR* dxfName, const ACHAR* appName)
    : mName(name), mParent(parent), mConstructor(constructor), mDxfName(dxfName ? dxfName : L""),
      mAppName(appName ? appName : L"") {}

bool AcRxClass::isDerivedFrom(const AcRxClass* other) const {
  if (other == nullptr) return false;
  for (const AcRxClass* c = this; c != nullptr; c = c->mParent)
    if (c == other) return true;
  return false;
}
