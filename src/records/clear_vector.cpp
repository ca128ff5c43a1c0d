// SiteUtil::clearVector: empty a caller's vector but keep its capacity for reuse.
#include "TDUtilW.h"

namespace {

template <typename T>
void clearKeepingCapacity(std::vector<T>& v) {
  if (!v.empty()) v.clear();
}

}  // namespace

void SiteUtil::clearVector(std::vector<SurvPoint>& v) { clearKeepingCapacity(v); }
void SiteUtil::clearVector(std::vector<DP4>& v) { clearKeepingCapacity(v); }
void SiteUtil::clearVector(std::vector<TPolyVertex>& v) { clearKeepingCapacity(v); }
void SiteUtil::clearVector(std::vector<AcDbObjectId>& v) { clearKeepingCapacity(v); }
