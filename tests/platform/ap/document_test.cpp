// Documents: default names, titles and saving through the host's save call.
#include "documents_fixture.h"

#include <string>

#include "temp_dir.h"

using Document = DocumentsTest;

TEST_F(Document, UnnamedDrawingsCountUpAcrossTheSession) {
  AcApDocument* d1 = addDocument();
  AcApDocument* d2 = addDocument();
  EXPECT_STREQ(d1->fileName(), L"Drawing1.dwg");
  EXPECT_STREQ(d1->docTitle(), L"Drawing1.dwg");
  EXPECT_STREQ(d2->fileName(), L"Drawing2.dwg");
  ASSERT_EQ(acDocManager->closeDocument(d2), Acad::eOk);
  EXPECT_STREQ(addDocument()->fileName(), L"Drawing3.dwg") << "numbers are never reused";
  EXPECT_FALSE(d1->isReadOnly());
  EXPECT_TRUE(d1->isQuiescent());

  tdhost::resetDocuments();
  EXPECT_EQ(acDocManager->documentCount(), 0);
  EXPECT_STREQ(addDocument()->fileName(), L"Drawing1.dwg") << "a reset starts a new session";
}

TEST_F(Document, SaveAsNamesTheDocumentAndWritesARereadableDrawing) {
  TempDir dir;
  AcApDocument* doc = addDocument();
  EXPECT_EQ(tdhost::saveDocument(*doc), Acad::eInvalidInput) << "an unnamed drawing needs a file name";

  ASSERT_TRUE(addLines(doc->database()));

  const std::string file = (dir.path() / "plan.dxf").string();
  const std::wstring wide = widen(file);
  ASSERT_EQ(tdhost::saveDocument(*doc, wide.c_str()), Acad::eOk);
  EXPECT_EQ(std::wstring(doc->fileName()), wide);
  EXPECT_STREQ(doc->docTitle(), L"plan.dxf");
  EXPECT_EQ(tdhost::saveDocument(*doc), Acad::eOk) << "now saved to its own file";

  AcDbDatabase reread(false, true);
  ASSERT_EQ(reread.dxfIn(wide.c_str()), Acad::eOk);
  EXPECT_EQ(modelSpaceCount(&reread), 1);
}

TEST_F(Document, ReadOnlyDocumentIsNotSavedOverItsFile) {
  TempDir dir;
  AcDbDatabase source(true, true);
  const std::string file = (dir.path() / "shared.dxf").string();
  const std::wstring wide = widen(file);
  ASSERT_EQ(source.dxfOut(wide.c_str()), Acad::eOk);
  ASSERT_EQ(openInAppContext(wide.c_str()), Acad::eOk);
  AcApDocument* first = acDocManager->curDocument();
  EXPECT_FALSE(first->isReadOnly());
  ASSERT_EQ(openInAppContext(wide.c_str()), Acad::eOk);
  AcApDocument* second = acDocManager->curDocument();
  ASSERT_TRUE(second->isReadOnly());
  const std::string before = TempDir::read(file);
  EXPECT_EQ(tdhost::saveDocument(*second), Acad::eFileAccessErr);
  EXPECT_EQ(TempDir::read(file), before);
  const std::wstring copy = widen((dir.path() / "copy.dxf").string());
  EXPECT_EQ(tdhost::saveDocument(*second, copy.c_str()), Acad::eOk) << "save as another file is allowed";
  EXPECT_FALSE(second->isReadOnly());
}

TEST_F(Document, FailedSaveKeepsTheNameAndReportsTheStatus) {
  TempDir dir;
  AcApDocument* doc = addDocument();
  const std::wstring target = widen((dir.path() / "no-such-folder" / "x.dxf").string());
  EXPECT_NE(tdhost::saveDocument(*doc, target.c_str()), Acad::eOk);
  EXPECT_STREQ(doc->fileName(), L"Drawing1.dwg");
}
