// AcRxClass: the runtime description of a host class (name, parent, factory).
#pragma once

#include "adesk.h"
#include "platformexport.h"

class AcRxObject;

using AcRxPseudoConstructor = AcRxObject* (*)();

class TDHOST_API AcRxClass {
 public:
  AcRxClass(const ACHAR* name, AcRxClass* parent, AcRxPseudoConstructor constructor = nullptr,
            const ACHAR* dxfName = nullptr, const ACHAR* appName = nullptr);
  AcRxClass(const AcRxClass&) = delete;
  AcRxClass& operator=(const AcRxClass&) = delete;

  const ACHAR* name() const { return mName; }
  const ACHAR* dxfName() const { return mDxfName; }
  const ACHAR* appName() const { return mAppName; }
  AcRxClass* myParent() const { return mParent; }

  // True when this class is `other` or one of its descendants.
  bool isDerivedFrom(const AcRxClass* other) const;
  // A new default-constructed instance, or null for abstract classes.
  AcRxObject* create() const { return mConstructor ? mConstructor() : nullptr; }

 private:
  const ACHAR* mName;
  AcRxClass* mParent;
  AcRxPseudoConstructor mConstructor;
  const ACHAR* mDxfName;
  const ACHAR* mAppName;
};
