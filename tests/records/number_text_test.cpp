// nFormat: label texts are cut (never padded) to the requested decimals after rounding.
#include "TDUtilW.h"

#include <gtest/gtest.h>

#include <iterator>

namespace {

struct FormatCase {
  double value;
  int decimals;
  const wchar_t* text;
};

const FormatCase kFormatCases[] = {
    {3.14159, 2, L"3.14"},
    {3.14159, 0, L"3"},
    {2.5, 0, L"3"},
    {-2.5, 0, L"-3"},
    {12.5, 0, L"13"},
    {12.3456, 2, L"12.35"},
    {7.0, 1, L"7.0"},
    {0.1, 5, L"0.10000"},
    {-0.004, 2, L"-0.00"},
    {0.0, 2, L"0.00"},  // zero keeps its sign: no "-0.00"
    {1234.5, -1, L"1230"},
    {1234.5, -2, L"120"},
    {-98.7654, 3, L"-98.765"},
    {1e9 + 0.25, 1, L"1000000000.3"},
};
static_assert(std::size(kFormatCases) == 14);

TEST(NumberText, BothOverloadsCutTheRoundedText) {
  for (const FormatCase& c : kFormatCases) {
    CString text;
    SiteUtil::nFormat(text, c.value, c.decimals);
    EXPECT_STREQ(text.GetString(), c.text) << c.value << " with " << c.decimals;
    wchar_t buffer[64] = L"previous label";
    SiteUtil::nFormat(buffer, c.value, c.decimals);
    EXPECT_STREQ(buffer, c.text) << c.value << " with " << c.decimals;
  }
  // Only the C-string view is cut: the stored length stays that of "3.140000".
  CString text;
  SiteUtil::nFormat(text, 3.14159, 2);
  EXPECT_EQ(text.GetLength(), 8);
}

TEST(NumberText, SixOrMoreDecimalsThrowInvalidArgument) {
  CString text;
  try {
    SiteUtil::nFormat(text, 1.5, 6);
    FAIL() << "no exception";
  } catch (const CAtlException& e) {
    EXPECT_EQ(static_cast<HRESULT>(e), E_INVALIDARG);
  }
  wchar_t buffer[64] = L"";
  EXPECT_THROW(SiteUtil::nFormat(buffer, 1.5, 7), CAtlException);
}

}  // namespace
