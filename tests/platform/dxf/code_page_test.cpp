// Code pages and \U+XXXX escapes of old-version files.
#include "dxf/code_page.h"

#include <gtest/gtest.h>

using namespace tdhost::dxf;

TEST(CodePage, MapsDrawingCodePageNames) {
  EXPECT_EQ(iconvNameOf("ANSI_1251"), "CP1251");
  EXPECT_EQ(iconvNameOf("ansi_949"), "CP949");
  EXPECT_EQ(iconvNameOf("DOS437"), "CP437");
  EXPECT_EQ(iconvNameOf("nonsense"), "");
}

TEST(CodePage, DecodesCyrillicAndKoreanToUtf8) {
  CodePageDecoder cyrillic("CP1251");
  EXPECT_EQ(cyrillic.toUtf8("\xCF\xF0\xE8\xEC\xE5\xF0"), "Пример");
  CodePageDecoder korean("CP949");
  EXPECT_EQ(korean.toUtf8("\xC3\xF8\xB7\xAE"), "측량");
  // Escapes are decoded too; bytes a code page lacks do not stop the load.
  EXPECT_EQ(cyrillic.toUtf8("A\\U+00B0B"), "A°B");
  CodePageDecoder utf8("");
  EXPECT_TRUE(utf8.isIdentity());
  EXPECT_EQ(utf8.toUtf8("측량 \\U+D55C"), "측량 한");
}

TEST(CodePage, EncodesBackWithEscapesForMissingCharacters) {
  EXPECT_EQ(fromUtf8("Пример", "CP1251"), "\xCF\xF0\xE8\xEC\xE5\xF0");
  EXPECT_EQ(fromUtf8("Пример 측", "CP1251"), "\xCF\xF0\xE8\xEC\xE5\xF0 \\U+CE21");
  CodePageDecoder back("CP1251");
  EXPECT_EQ(back.toUtf8(fromUtf8("Пример 측", "CP1251")), "Пример 측");
}

TEST(CodePage, LeavesMalformedEscapesAlone) {
  EXPECT_EQ(decodeUnicodeEscapes("\\U+12"), "\\U+12");
  EXPECT_EQ(decodeUnicodeEscapes("\\U+GHIJ"), "\\U+GHIJ");
  EXPECT_EQ(decodeUnicodeEscapes("x\\U+0041"), "xA");
}
