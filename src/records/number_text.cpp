// nFormat: fixed-decimal number texts for labels, cut (never padded) to the requested decimals.
#include "TDUtilW.h"

#include <cwchar>

void SiteUtil::nFormat(CString& text, double value, int decimals) {
  text.Format(L"%f", SiteUtil::round(value, decimals));
  const int point = text.Find(L'.');
  if (point < 0) return;  // not finite
  // Only the C-string view is shortened; SetAt rejects a cut at or behind the end (decimals > 5).
  text.SetAt(decimals == 0 ? point : point + decimals + 1, L'\0');
}

void SiteUtil::nFormat(wchar_t* text, double value, int decimals) {
  CString formatted(text);
  nFormat(formatted, value, decimals);
  std::wcscpy(text, formatted.GetString());
}
