// Class boilerplate of the runtime class system (desc, isA, cast).
#pragma once

#include "rxclass.h"
#include "rxobject.h"

#define ACRX_DECLARE_MEMBERS(CLASS_NAME)                                              \
  static AcRxClass* desc();                                                           \
  AcRxClass* isA() const override;                                                    \
  static CLASS_NAME* cast(const AcRxObject* inPtr) {                                  \
    return (inPtr == nullptr || !inPtr->isKindOf(CLASS_NAME::desc()))                 \
               ? nullptr                                                              \
               : const_cast<CLASS_NAME*>(static_cast<const CLASS_NAME*>(inPtr));      \
  }                                                                                   \
  static AcRxClass* gpDesc

// Host classes whose data can be copied (undo snapshots, deep clone): clone() and copyFrom()
// through the class's copy constructor and assignment, which copy data but never identity.
#define TDHOST_DECLARE_COPYABLE(CLASS_NAME)                                           \
  AcRxObject* clone() const override { return new CLASS_NAME(*this); }                \
  Acad::ErrorStatus copyFrom(const AcRxObject* other) override {                      \
    if (other == nullptr || other->isA() != isA()) return Acad::eWrongObjectType;     \
    *this = *static_cast<const CLASS_NAME*>(other);                                   \
    return Acad::eOk;                                                                 \
  }
