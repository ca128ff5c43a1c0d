// The generic entity and object that keep what the host does not model.
#include "tdhost/unmodelled.h"

#include "host_init.h"

namespace tdhost {

TDHOST_DEFINE_MEMBERS(AcDbUnmodelledEntity)
TDHOST_DEFINE_MEMBERS(AcDbUnmodelledObject)

AcDbUnmodelledEntity::~AcDbUnmodelledEntity() = default;
AcDbUnmodelledObject::~AcDbUnmodelledObject() = default;

}  // namespace tdhost
