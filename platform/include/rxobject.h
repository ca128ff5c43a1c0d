// AcRxObject: the root of the host's runtime class system.
#pragma once

#include "acadstrc.h"
#include "adesk.h"
#include "platformexport.h"

class AcRxClass;

class TDHOST_API AcRxObject {
 public:
  virtual ~AcRxObject();

  static AcRxClass* desc();
  static AcRxObject* cast(const AcRxObject* inPtr) { return const_cast<AcRxObject*>(inPtr); }
  virtual AcRxClass* isA() const;

  // True when this object's class is `aClass` or derives from it.
  bool isKindOf(const AcRxClass* aClass) const;

  // A new object of the same class holding a copy of this one's data; the caller owns it.
  // Null for classes that cannot be copied.
  virtual AcRxObject* clone() const;
  // Takes over `other`'s data; eWrongObjectType when the classes differ.
  virtual Acad::ErrorStatus copyFrom(const AcRxObject* other);

  static AcRxClass* gpDesc;

 protected:
  AcRxObject() = default;
  AcRxObject(const AcRxObject&) = default;
  AcRxObject& operator=(const AcRxObject&) = default;
};
