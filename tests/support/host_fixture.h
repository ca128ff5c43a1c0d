// Test fixture: a fresh database made the working database; the test fails when an object
// is left open or the host reported misuse the test did not expect.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "arxHeaders.h"
#include "tdhost/diagnostics.h"

// A concrete entity for host tests (the real entity kinds live elsewhere).
class TestEntity : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(TestEntity);
  TestEntity() = default;
  TDHOST_DECLARE_COPYABLE(TestEntity)
  double value() const { return mValue; }
  Acad::ErrorStatus setValue(double v) {
    if (Acad::ErrorStatus es = checkWrite("setValue"); es != Acad::eOk) return es;
    mValue = v;
    return Acad::eOk;
  }

 protected:
  TestEntity(const TestEntity&) = default;
  TestEntity& operator=(const TestEntity&) = default;

 private:
  double mValue = 0.0;
};

inline AcRxClass* TestEntity::desc() {
  static AcRxClass* cls =
      new AcRxClass(L"TestEntity", AcDbEntity::desc(), [] { return static_cast<AcRxObject*>(new TestEntity); });
  return cls;
}
inline AcRxClass* TestEntity::isA() const { return desc(); }

class HostTest : public ::testing::Test {
 protected:
  void SetUp() override {
    tdhost::clearDiagnostics();
    db = std::make_unique<AcDbDatabase>(true, true);
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
  }

  void TearDown() override {
    AcDbObjectIdArray open = tdhost::openObjects(db.get());
    EXPECT_EQ(open.length(), 0) << "objects left open at the end of the test";
    tdhost::closeOpenObjects(db.get());
    for (const tdhost::Diagnostic& d : tdhost::diagnostics())
      ADD_FAILURE() << "unexpected host misuse [" << tdhost::misuseName(d.kind) << "]: " << d.message;
    db.reset();
    tdhost::clearDiagnostics();
  }

  // Consumes the reports of `kind` a test provoked on purpose; returns their count.
  std::size_t takeMisuse(tdhost::Misuse kind) {
    std::vector<tdhost::Diagnostic> all = tdhost::diagnostics();
    tdhost::clearDiagnostics();
    std::size_t n = 0;
    for (const tdhost::Diagnostic& d : all) {
      if (d.kind == kind) ++n;
      else tdhost::reportMisuse(d.kind, d.message);
    }
    return n;
  }

  // Appends a new test entity to model space and returns its id (closed).
  AcDbObjectId addEntity(double value = 0.0) {
    AcDbBlockTable* table = nullptr;
    EXPECT_EQ(db->getBlockTable(table, AcDb::kForRead), Acad::eOk);
    AcDbBlockTableRecord* space = nullptr;
    EXPECT_EQ(table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite), Acad::eOk);
    table->close();
    auto* ent = new TestEntity;
    ent->setValue(value);
    AcDbObjectId id;
    EXPECT_EQ(space->appendAcDbEntity(id, ent), Acad::eOk);
    ent->close();
    space->close();
    return id;
  }

  std::unique_ptr<AcDbDatabase> db;
};
