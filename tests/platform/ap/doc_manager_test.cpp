// The document manager: current and active documents, the working database, locks,
// application context, opening, closing, iterating and command lines.
#include "documents_fixture.h"

#include <filesystem>
#include <string>
#include <vector>

#include "temp_dir.h"

using DocManager = DocumentsTest;

TEST_F(DocManager, NewDocumentBecomesActiveCurrentAndWorking) {
  ASSERT_NE(acDocManager, nullptr);
  EXPECT_EQ(acDocManager->curDocument(), nullptr);
  EXPECT_TRUE(acDocManager->isApplicationContext()) << "no document, so no document context";
  AcApDocument* d1 = addDocument();
  AcApDocument* doc = addDocument();
  ASSERT_NE(doc, nullptr);
  EXPECT_EQ(acDocManager->documentCount(), 2);
  EXPECT_TRUE(documentsAre(doc, doc));
  EXPECT_EQ(acDocManager->document(doc->database()), doc);
  EXPECT_EQ(acDocManager->document(d1->database()), d1);
  AcDbDatabase loose(true, true);
  EXPECT_EQ(acDocManager->document(&loose), nullptr);
  EXPECT_EQ(acDocManager->document(nullptr), nullptr);
  EXPECT_EQ(modelSpaceCount(doc->database()), 0);
}

TEST_F(DocManager, SetCurDocumentMovesTheWorkingDatabaseButNotTheActiveDocument) {
  AcApDocument* d1 = addDocument();
  AcApDocument* d2 = addDocument();
  AcApDocument* d3 = addDocument();
  ASSERT_EQ(acDocManager->curDocument(), d3);

  EXPECT_EQ(acDocManager->setCurDocument(d1), Acad::eOk);
  EXPECT_TRUE(documentsAre(d1, d3));
  EXPECT_EQ(d1->myLockMode(), AcAp::kNotLocked) << "kNone locks nothing";

  EXPECT_EQ(acDocManager->activateDocument(d2), Acad::eOk);
  EXPECT_TRUE(documentsAre(d2, d2));

  EXPECT_EQ(acDocManager->setCurDocument(d3, AcAp::kWrite, true), Acad::eOk);
  EXPECT_EQ(acDocManager->mdiActiveDocument(), d3);
  EXPECT_EQ(d3->myLockMode(), AcAp::kWrite);
  EXPECT_EQ(acDocManager->unlockDocument(d3), Acad::eOk);
}

TEST_F(DocManager, NullAndClosedDocumentsAreRefused) {
  AcApDocument* d1 = addDocument();
  addDocument();
  ASSERT_EQ(acDocManager->closeDocument(d1), Acad::eOk);
  // d1 now dangles: the manager compares it, never follows it.
  EXPECT_EQ(acDocManager->setCurDocument(nullptr), Acad::eInvalidInput);
  EXPECT_EQ(acDocManager->setCurDocument(d1), Acad::eNoDocument);
  EXPECT_EQ(acDocManager->activateDocument(d1), Acad::eNoDocument);
  EXPECT_EQ(acDocManager->lockDocument(d1), Acad::eNoDocument);
  EXPECT_EQ(acDocManager->unlockDocument(nullptr), Acad::eInvalidInput);
  EXPECT_EQ(acDocManager->closeDocument(d1), Acad::eNoDocument);
  EXPECT_EQ(acDocManager->sendStringToExecute(d1, L"_LINE "), Acad::eNoDocument);
  EXPECT_EQ(acDocManager->inputPending(d1), 0);
  EXPECT_EQ(acDocManager->documentCount(), 1);
}

TEST_F(DocManager, LocksAreCountedAndReleasedOneAtATime) {
  AcApDocument* doc = addDocument();
  AcApDocument* other = addDocument();
  EXPECT_EQ(doc->myLockMode(), AcAp::kNotLocked);
  ASSERT_EQ(acDocManager->lockDocument(doc), Acad::eOk);
  EXPECT_EQ(doc->myLockMode(), AcAp::kWrite) << "kWrite is the default";
  EXPECT_EQ(doc->lockMode(), AcAp::kNotLocked) << "no other execution context holds a lock";
  EXPECT_EQ(doc->lockMode(true), AcAp::kWrite);
  EXPECT_EQ(other->myLockMode(), AcAp::kNotLocked) << "locks belong to one document";

  ASSERT_EQ(acDocManager->lockDocument(doc, AcAp::kXWrite), Acad::eOk);
  EXPECT_EQ(doc->myLockMode(), AcAp::kXWrite);
  ASSERT_EQ(acDocManager->lockDocument(doc, AcAp::kWrite), Acad::eOk) << "nested shared write";
  EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eOk);
  EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eOk);
  EXPECT_EQ(doc->myLockMode(), AcAp::kWrite);
  EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eOk);
  EXPECT_EQ(doc->myLockMode(), AcAp::kNotLocked);
  EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eNotApplicable);
}

TEST_F(DocManager, BadModesAreRefusedAndReadLockRefusesWriteLocks) {
  AcApDocument* doc = addDocument();
  const AcAp::DocLockMode bad[] = {AcAp::kNone, AcAp::kNotLocked, static_cast<AcAp::DocLockMode>(0x08),
                                   static_cast<AcAp::DocLockMode>(AcAp::kWrite | AcAp::kRead)};
  for (AcAp::DocLockMode mode : bad) EXPECT_EQ(acDocManager->lockDocument(doc, mode), Acad::eInvalidInput) << mode;
  EXPECT_EQ(acDocManager->setCurDocument(doc, AcAp::kNotLocked), Acad::eInvalidInput);
  EXPECT_EQ(doc->myLockMode(), AcAp::kNotLocked);
  ASSERT_EQ(acDocManager->lockDocument(doc, AcAp::kRead), Acad::eOk);
  EXPECT_EQ(doc->myLockMode(), AcAp::kRead);
  for (AcAp::DocLockMode mode : {AcAp::kWrite, AcAp::kXWrite, AcAp::kProtectedAutoWrite})
    EXPECT_EQ(acDocManager->lockDocument(doc, mode), Acad::eLockConflict) << mode;
  EXPECT_EQ(acDocManager->lockDocument(doc, AcAp::kRead), Acad::eOk) << "readers nest";
  EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eOk);
  EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eOk);
  EXPECT_EQ(acDocManager->lockDocument(doc, AcAp::kWrite), Acad::eOk) << "free again after the read lock ends";
  EXPECT_EQ(acDocManager->lockDocument(doc, AcAp::kRead), Acad::eOk) << "a writer may also read";
  EXPECT_EQ(doc->myLockMode(), AcAp::kWrite);
  EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eOk);
  EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eOk);
}

TEST_F(DocManager, AutoWriteLockGivesWayToTheNextLock) {
  AcApDocument* doc = addDocument();
  ASSERT_EQ(acDocManager->lockDocument(doc, AcAp::kAutoWrite), Acad::eOk);
  EXPECT_EQ(doc->myLockMode(), AcAp::kAutoWrite);
  ASSERT_EQ(acDocManager->lockDocument(doc, AcAp::kWrite), Acad::eOk);
  EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eOk);
  EXPECT_EQ(doc->myLockMode(), AcAp::kNotLocked) << "the automatic lock was removed by the write lock";

  ASSERT_EQ(acDocManager->lockDocument(doc, AcAp::kProtectedAutoWrite), Acad::eOk);
  EXPECT_EQ(acDocManager->lockDocument(doc, AcAp::kAutoWrite), Acad::eOk) << "no-op on a locked document";
  EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eOk);
  EXPECT_EQ(doc->myLockMode(), AcAp::kAutoWrite) << "unlocking the protected lock leaves the automatic one";
}

TEST_F(DocManager, ApplicationContextOnlyInsideExecuteInApplicationContext) {
  AcApDocument* doc = addDocument();
  EXPECT_FALSE(acDocManager->isApplicationContext());
  EXPECT_EQ(acDocManager->appContextNewDocument(nullptr), Acad::eInvalidContext);
  EXPECT_EQ(acDocManager->appContextOpenDocument(L"x.dxf"), Acad::eInvalidContext);
  EXPECT_EQ(acDocManager->documentCount(), 1);
  EXPECT_EQ(newInAppContext(nullptr), Acad::eOk);
  EXPECT_FALSE(acDocManager->isApplicationContext());
  EXPECT_EQ(acDocManager->documentCount(), 2);
  EXPECT_NE(acDocManager->curDocument(), doc);
  acDocManager->executeInApplicationContext(nullptr, nullptr);
}

TEST_F(DocManager, OpensARealDrawingFromTheSamples) {
  addDocument();
  const std::wstring file = widen(TDUTILW_SAMPLES_DIR "/leica_disto_s910_R12.dxf");
  AcDbDatabase direct(false, true);
  ASSERT_EQ(direct.dxfIn(file.c_str()), Acad::eOk);

  ASSERT_EQ(openInAppContext(file.c_str()), Acad::eOk);
  AcApDocument* doc = acDocManager->curDocument();
  ASSERT_NE(doc, nullptr);
  EXPECT_EQ(acDocManager->documentCount(), 2);
  EXPECT_TRUE(documentsAre(doc, doc));
  EXPECT_EQ(std::wstring(doc->fileName()), widen(std::filesystem::absolute(TDUTILW_SAMPLES_DIR "/leica_disto_s910_R12.dxf").lexically_normal().string()));
  EXPECT_STREQ(doc->docTitle(), L"leica_disto_s910_R12.dxf");
  const int count = modelSpaceCount(doc->database());
  EXPECT_GT(count, 0);
  EXPECT_EQ(count, modelSpaceCount(&direct));
}

TEST_F(DocManager, MissingOrBrokenDrawingReturnsTheStatusAndOpensNothing) {
  TempDir dir;
  AcApDocument* doc = addDocument();
  AcDbDatabase* working = acdbHostApplicationServices()->workingDatabase();
  const std::wstring missing = widen((dir.path() / "missing.dxf").string());
  const std::wstring broken = widen(dir.write("broken.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nnot-a-number\n"));
  const std::wstring notDxf = widen(dir.write("notes.dxf", "just some text\n"));

  for (const std::wstring& file : {missing, broken, notDxf}) {
    AcDbDatabase scratch(false, true);
    const Acad::ErrorStatus expected = scratch.dxfIn(file.c_str());
    ASSERT_NE(expected, Acad::eOk);
    EXPECT_EQ(openInAppContext(file.c_str()), expected);
    EXPECT_EQ(newInAppContext(file.c_str()), expected) << "as a template";
    EXPECT_EQ(acDocManager->documentCount(), 1);
    EXPECT_EQ(acDocManager->curDocument(), doc);
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), working);
  }
  EXPECT_EQ(openInAppContext(L""), Acad::eInvalidInput);
  EXPECT_EQ(openInAppContext(nullptr), Acad::eInvalidInput);
  EXPECT_EQ(acDocManager->openDocument(), Acad::eUserBreak) << "no file dialog to answer";
  EXPECT_EQ(acDocManager->documentCount(), 1);
}

TEST_F(DocManager, NewDocumentFromATemplateHoldsTheTemplateDrawingUnderADefaultName) {
  TempDir dir;
  const std::wstring templ = widen((dir.path() / "site.dxf").string());
  {
    AcDbDatabase source(true, true);
    ASSERT_TRUE(addLines(&source, 3));
    ASSERT_EQ(source.dxfOut(templ.c_str()), Acad::eOk);
  }
  const std::string before = TempDir::read(std::string(templ.begin(), templ.end()));

  ASSERT_EQ(newInAppContext(templ.c_str()), Acad::eOk);
  AcApDocument* doc = acDocManager->curDocument();
  ASSERT_NE(doc, nullptr);
  EXPECT_STREQ(doc->fileName(), L"Drawing1.dwg") << "a template gives an unnamed drawing";
  EXPECT_EQ(modelSpaceCount(doc->database()), 3);
  EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), doc->database());
  EXPECT_FALSE(doc->isReadOnly());

  ASSERT_EQ(newInAppContext(L""), Acad::eOk);
  EXPECT_STREQ(acDocManager->curDocument()->fileName(), L"Drawing2.dwg");
  EXPECT_EQ(modelSpaceCount(acDocManager->curDocument()->database()), 0);
  EXPECT_EQ(TempDir::read(std::string(templ.begin(), templ.end())), before) << "the template is only read";
}

TEST_F(DocManager, IteratorListsEveryOpenDocumentOldestFirst) {
  std::vector<AcApDocument*> made;
  for (int i = 0; i < 4; ++i) made.push_back(addDocument());
  std::vector<AcApDocument*> seen;
  AcApDocumentIterator* it = acDocManager->newAcApDocumentIterator();
  for (; !it->done(); it->step()) seen.push_back(it->document());
  EXPECT_EQ(it->document(), nullptr);
  delete it;
  EXPECT_EQ(seen, made);

  it = acDocManager->newAcApDocumentIterator();
  ASSERT_EQ(acDocManager->closeDocument(made[0]), Acad::eOk);
  EXPECT_EQ(it->document(), nullptr) << "a document closed meanwhile is not handed out";
  it->step();
  EXPECT_EQ(it->document(), made[1]);
  delete it;
}

TEST_F(DocManager, ClosingTheCurrentDocumentMakesAnotherOneCurrent) {
  AcApDocument* d1 = addDocument();
  AcApDocument* d2 = addDocument();
  AcApDocument* d3 = addDocument();
  AcApDocument* d4 = addDocument();
  ASSERT_EQ(acDocManager->closeDocument(d4), Acad::eOk);
  EXPECT_EQ(acDocManager->curDocument(), d3) << "closing another document keeps the current one";
  ASSERT_EQ(acDocManager->activateDocument(d2), Acad::eOk);
  ASSERT_EQ(acDocManager->setCurDocument(d1), Acad::eOk);

  ASSERT_EQ(acDocManager->closeDocument(d1), Acad::eOk);
  EXPECT_TRUE(documentsAre(d2, d2)) << "the active document takes over";

  ASSERT_EQ(acDocManager->closeDocument(d2), Acad::eOk);
  EXPECT_TRUE(documentsAre(d3, d3));

  ASSERT_EQ(acDocManager->lockDocument(d3), Acad::eOk);
  ASSERT_EQ(acDocManager->closeDocument(d3), Acad::eOk) << "locks end with the document";
  EXPECT_EQ(acDocManager->documentCount(), 0);
  EXPECT_TRUE(documentsAre(nullptr, nullptr));
}

TEST_F(DocManager, SendStringToExecuteQueuesPerDocument) {
  AcApDocument* d1 = addDocument();
  AcApDocument* d2 = addDocument();
  ASSERT_EQ(acDocManager->sendStringToExecute(d1, L"_LINE 0,0 10,10 "), Acad::eOk);
  EXPECT_TRUE(documentsAre(d1, d1)) << "activated by default";
  ASSERT_EQ(acDocManager->sendStringToExecute(d2, L"_ZOOM _E ", false, true, false), Acad::eOk);
  EXPECT_EQ(acDocManager->mdiActiveDocument(), d1) << "bActivate false leaves the active document";
  ASSERT_EQ(acDocManager->sendStringToExecute(d1, L"_REGEN "), Acad::eOk);

  const auto& q1 = tdhost::commandLine(*d1);
  ASSERT_EQ(q1.size(), 2u);
  EXPECT_EQ(q1[0].text, L"_LINE 0,0 10,10 ");
  EXPECT_TRUE(q1[0].echo);
  EXPECT_FALSE(q1[0].wrapUpInactiveDoc);
  EXPECT_EQ(q1[1].text, L"_REGEN ");
  const auto& q2 = tdhost::commandLine(*d2);
  ASSERT_EQ(q2.size(), 1u);
  EXPECT_EQ(q2[0].text, L"_ZOOM _E ");
  EXPECT_FALSE(q2[0].echo);
  EXPECT_TRUE(q2[0].wrapUpInactiveDoc);

  EXPECT_EQ(acDocManager->inputPending(d1), 23);
  EXPECT_FALSE(d1->isQuiescent());
  tdhost::commandLine(*d2).pop_front();
  EXPECT_TRUE(d2->isQuiescent());
  EXPECT_EQ(acDocManager->inputPending(d2), 0);
  EXPECT_EQ(acDocManager->sendStringToExecute(d1, nullptr), Acad::eInvalidInput);
}

TEST_F(DocManager, DisabledActivationRefusesSwitchingTheActiveDocument) {
  AcApDocument* d1 = addDocument();
  AcApDocument* d2 = addDocument();
  ASSERT_EQ(acDocManager->disableDocumentActivation(), Acad::eOk);
  EXPECT_FALSE(acDocManager->isDocumentActivationEnabled());
  EXPECT_EQ(acDocManager->activateDocument(d1), Acad::eDocumentSwitchDisabled);
  EXPECT_EQ(acDocManager->sendStringToExecute(d1, L"_LINE "), Acad::eDocumentSwitchDisabled);
  EXPECT_TRUE(tdhost::commandLine(*d1).empty());
  EXPECT_EQ(acDocManager->activateDocument(d2), Acad::eOk) << "already active";
  EXPECT_EQ(acDocManager->setCurDocument(d1), Acad::eOk) << "switching the current document stays possible";
  ASSERT_EQ(acDocManager->enableDocumentActivation(), Acad::eOk);
  EXPECT_EQ(acDocManager->activateDocument(d1), Acad::eOk);
}

TEST_F(DocManager, LockedOtherDocumentCanBeModifiedAndSwitchedBack) {
  AcApDocument* target = addDocument();
  AcApDocument* home = addDocument();
  ASSERT_EQ(acDocManager->setCurDocument(target, AcAp::kWrite), Acad::eOk);
  ASSERT_TRUE(addLines(acdbHostApplicationServices()->workingDatabase()));
  EXPECT_EQ(acDocManager->unlockDocument(target), Acad::eOk);
  EXPECT_EQ(acDocManager->setCurDocument(home), Acad::eOk);
  EXPECT_EQ(modelSpaceCount(target->database()), 1);
  EXPECT_EQ(modelSpaceCount(home->database()), 0);
  EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), home->database());
}
