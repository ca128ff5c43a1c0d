// The exported value records: construction, copying and comparison.
#include "TDUtilW.h"

#include <cmath>
#include <cstddef>
#include <cwchar>

// The records cross module boundaries by reference: pin their member order.
static_assert(offsetof(SurvPoint, tag) < offsetof(SurvPoint, handle) &&
              offsetof(SurvPoint, handle) < offsetof(SurvPoint, code) &&
              offsetof(SurvPoint, code) < offsetof(SurvPoint, pno) &&
              offsetof(SurvPoint, pno) < offsetof(SurvPoint, attrib) &&
              offsetof(SurvPoint, attrib) < offsetof(SurvPoint, x) &&
              offsetof(SurvPoint, x) < offsetof(SurvPoint, y) && offsetof(SurvPoint, y) < offsetof(SurvPoint, z));
static_assert(sizeof(SurvPoint::handle) == 17 * sizeof(wchar_t) && sizeof(SurvPoint::code) == 33 * sizeof(wchar_t) &&
              sizeof(SurvPoint::pno) == 16 * sizeof(wchar_t));
static_assert(offsetof(TPolyVertex, x) == 0 && offsetof(TPolyVertex, y) == 8 && offsetof(TPolyVertex, z) == 16 &&
              offsetof(TPolyVertex, bulge) == 24 && sizeof(TPolyVertex) == 32);
static_assert(offsetof(DP4, d) == 0 && offsetof(DP4, source) == 32 && offsetof(DP4, entity) == 40 &&
              sizeof(DP4) == 48);
static_assert(offsetof(DPoint, x) == 0 && offsetof(DPoint, y) == 8 && sizeof(DPoint) == 16);
static_assert(offsetof(ConnectData, name1) == 0 && offsetof(ConnectData, name2) == 17 * sizeof(wchar_t) &&
              offsetof(ConnectData, name3) == 34 * sizeof(wchar_t) &&
              offsetof(ConnectData, flag) == 51 * sizeof(wchar_t));
static_assert(offsetof(PtAnnotParm, settings) == 0 && sizeof(PtAnnotParm::settings) == 44 &&
              offsetof(PtAnnotParm, value8) == 48 && offsetof(PtAnnotParm, text1) == 56 &&
              offsetof(PtAnnotParm, text2) == 56 + 33 * sizeof(wchar_t) &&
              offsetof(PtAnnotParm, text2) < offsetof(PtAnnotParm, position) &&
              offsetof(PtAnnotParm, position) < offsetof(PtAnnotParm, point) &&
              offsetof(PtAnnotParm, point) < offsetof(PtAnnotParm, tail8));
static_assert(offsetof(CCodeTemplate, code) == 0 && offsetof(CCodeTemplate, text1) == 33 * sizeof(wchar_t) &&
              offsetof(CCodeTemplate, text2) == 66 * sizeof(wchar_t) &&
              offsetof(CCodeTemplate, int1) == 99 * sizeof(wchar_t) &&
              offsetof(CCodeTemplate, int3) < offsetof(CCodeTemplate, values) &&
              sizeof(CCodeTemplate::values) == 32 && offsetof(CCodeTemplate, values) < offsetof(CCodeTemplate, int4) &&
              offsetof(CCodeTemplate, int5) < offsetof(CCodeTemplate, value1) &&
              offsetof(CCodeTemplate, value2) < offsetof(CCodeTemplate, int6) &&
              offsetof(CCodeTemplate, int6) < offsetof(CCodeTemplate, text3));
static_assert(offsetof(BatCurvInfo, value1) == 0 && offsetof(BatCurvInfo, value2) == 8 &&
              offsetof(BatCurvInfo, flag1) == 16 && offsetof(BatCurvInfo, value3) == 24 &&
              offsetof(BatCurvInfo, flag2) == 32 && offsetof(BatCurvInfo, value4) == 40 && sizeof(BatCurvInfo) == 48);

namespace {

constexpr double kCoordTol = 1e-6;
constexpr double kBulgeTol = 1e-5;
constexpr double kStationTol = 1e-4;

void copyText(wchar_t* to, const wchar_t* from) { std::wcscpy(to, from ? from : L""); }

}  // namespace

SurvPoint::SurvPoint() : tag(0), attrib(0) {
  handle[0] = L'\0';
  code[0] = L'\0';
  pno[0] = L'\0';
}

SurvPoint::SurvPoint(const SurvPoint& other) { *this = other; }

void SurvPoint::operator=(const SurvPoint& other) {
  x = other.x;
  y = other.y;
  z = other.z;
  copyText(pno, other.pno);
  copyText(code, other.code);
  copyText(handle, other.handle);
  attrib = other.attrib;
  tag = other.tag;
}

void SurvPoint::set(const double pt[3], const wchar_t* pnoText, const wchar_t* codeText, int attribute,
                    const wchar_t* handleText) {
  x = pt[0];
  y = pt[1];
  z = pt[2];
  copyText(pno, pnoText);
  copyText(code, codeText);
  copyText(handle, handleText);
  attrib = attribute;
}

int SurvPoint::operator==(const SurvPoint& other) const {
  if (tag != other.tag) return 0;
  if (std::fabs(x - other.x) > kCoordTol) return 0;
  if (std::fabs(y - other.y) > kCoordTol) return 0;
  if (std::fabs(z - other.z) > kCoordTol) return 0;
  if (wcscasecmp(code, other.code) != 0) return 0;
  if (wcscasecmp(pno, other.pno) != 0) return 0;
  return std::wcscmp(handle, other.handle) == 0 ? 1 : 0;
}

int SurvPoint::operator<(const SurvPoint& other) const {
  if (other.x > x) return 1;
  return (x == other.x && other.y > y) ? 1 : 0;
}

TPolyVertex::TPolyVertex() : x(0.0), y(0.0), z(0.0), bulge(0.0) {}

int TPolyVertex::operator==(const TPolyVertex& other) const {
  return std::fabs(x - other.x) <= kCoordTol && std::fabs(y - other.y) <= kCoordTol &&
                 std::fabs(bulge - other.bulge) <= kBulgeTol
             ? 1
             : 0;
}

DP4::DP4() : d{0.0, 0.0, 0.0, 0.0}, source(0), entity(0) {}

int DP4::operator==(const double& s) const { return std::fabs(d[0] - s) < kStationTol ? 1 : 0; }

int DP4::operator<(const DP4& other) const {
  if (other.d[0] > d[0]) return 1;
  return (d[0] == other.d[0] && other.d[1] > d[1]) ? 1 : 0;
}

ConnectData::ConnectData() : flag(false) {
  name1[0] = L'\0';
  name2[0] = L'\0';
  name3[0] = L'\0';
}

ConnectData::ConnectData(const ConnectData& other) : flag(other.flag) {
  copyText(name1, other.name1);
  copyText(name2, other.name2);
  copyText(name3, other.name3);
}

int ConnectData::operator==(const ConnectData& other) const {
  // An empty name on either side is a wildcard.
  const auto matches = [](const wchar_t* a, const wchar_t* b) { return !*a || !*b || std::wcscmp(a, b) == 0; };
  return matches(name1, other.name1) && matches(name2, other.name2) && matches(name3, other.name3) ? 1 : 0;
}

CCodeTemplate::CCodeTemplate() : int1(0), int2(0), int3(0), int4(0), int5(0) {
  code[0] = L'\0';
  text1[0] = L'\0';
  text2[0] = L'\0';
}

BatCurvInfo::BatCurvInfo() : value1(0.0), value2(0.0) {}
