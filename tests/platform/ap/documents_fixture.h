// Fixture for document tests: no documents before and after each test, no unexpected misuse;
// helpers that run document requests in application context.
#pragma once

#include <gtest/gtest.h>

#include "arxHeaders.h"
#include "tdhost/diagnostics.h"
#include "tdhost/session.h"

class DocumentsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    tdhost::clearDiagnostics();
    tdhost::resetDocuments();
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  }

  void TearDown() override {
    tdhost::resetDocuments();
    for (const tdhost::Diagnostic& d : tdhost::diagnostics())
      ADD_FAILURE() << "unexpected host misuse [" << tdhost::misuseName(d.kind) << "]: " << d.message;
    tdhost::clearDiagnostics();
  }

  struct Request {
    const ACHAR* name;
    bool open;
    Acad::ErrorStatus status = Acad::eNotImplementedYet;
    bool inApplicationContext = false;
  };

  static void run(void* data) {
    auto* request = static_cast<Request*>(data);
    request->inApplicationContext = acDocManager->isApplicationContext();
    request->status = request->open ? acDocManager->appContextOpenDocument(request->name)
                                    : acDocManager->appContextNewDocument(request->name);
  }

  static Acad::ErrorStatus newInAppContext(const ACHAR* templateName) {
    Request request{templateName, false};
    acDocManager->executeInApplicationContext(&DocumentsTest::run, &request);
    EXPECT_TRUE(request.inApplicationContext);
    return request.status;
  }

  static Acad::ErrorStatus openInAppContext(const ACHAR* fileName) {
    Request request{fileName, true};
    acDocManager->executeInApplicationContext(&DocumentsTest::run, &request);
    EXPECT_TRUE(request.inApplicationContext);
    return request.status;
  }

  // A new default document, made current; fails the test when it cannot be made.
  static AcApDocument* addDocument() {
    EXPECT_EQ(acDocManager->newDocument(), Acad::eOk);
    return acDocManager->curDocument();
  }

  // The current and active documents, with the working database following the current one.
  static ::testing::AssertionResult documentsAre(AcApDocument* current, AcApDocument* active) {
    AcDbDatabase* working = acdbHostApplicationServices()->workingDatabase();
    if (acDocManager->curDocument() == current && acDocManager->mdiActiveDocument() == active &&
        working == (current ? current->database() : nullptr))
      return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "current " << acDocManager->curDocument() << ", active "
                                         << acDocManager->mdiActiveDocument() << ", working database " << working;
  }

  // Appends `count` lines to model space; false when model space cannot be opened for write.
  static bool addLines(AcDbDatabase* db, int count = 1) {
    AcDbBlockTable* table = nullptr;
    if (db->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return false;
    AcDbBlockTableRecord* space = nullptr;
    const Acad::ErrorStatus es = table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite);
    table->close();
    if (es != Acad::eOk) return false;
    bool ok = true;
    for (int i = 0; i < count; ++i) {
      auto* line = new AcDbLine(AcGePoint3d(i, 0, 0), AcGePoint3d(i, 10, 0));
      ok = ok && space->appendAcDbEntity(line) == Acad::eOk;
      line->close();
    }
    space->close();
    return ok;
  }

  static int modelSpaceCount(AcDbDatabase* db) {
    AcDbBlockTable* table = nullptr;
    if (db->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return -1;
    AcDbBlockTableRecord* space = nullptr;
    const Acad::ErrorStatus es = table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForRead);
    table->close();
    if (es != Acad::eOk) return -1;
    AcDbBlockTableRecordIterator* it = nullptr;
    space->newIterator(it);
    int n = 0;
    for (; !it->done(); it->step()) ++n;
    delete it;
    space->close();
    return n;
  }

  static std::wstring widen(const std::string& s) { return {s.begin(), s.end()}; }
};
