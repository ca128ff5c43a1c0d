// Undo records per group: creations, erasures and pre-modification snapshots, with marks.
#include <vector>

#include "database_impl.h"
#include "object_access.h"

namespace tdhost {
namespace {

struct Record {
  enum Kind { kCreated, kModified, kErased } kind;
  AcDbStub* stub;
  bool erasing = false;
  std::unique_ptr<AcDbObject> snapshot;  // kModified: the data before the group's first write
};

struct Group {
  Adesk::UInt32 serial = 0;
  bool isMark = false;
  std::vector<Record> records;
};

class Recorder final : public UndoRecorder {
 public:
  void beginGroup() override {
    if (mDepth++ == 0) openGroup();
  }
  void endGroup() override {
    if (mDepth > 0 && --mDepth == 0) mCurrent = nullptr;
  }
  bool inGroup() const override { return mDepth > 0; }

  void mark() override {
    mCurrent = nullptr;
    Group g;
    g.isMark = true;
    g.serial = ++mSerial;
    mGroups.push_back(std::move(g));
  }

  Acad::ErrorStatus undoToMark() override {
    mCurrent = nullptr;
    size_t from = mGroups.size();
    while (from > 0 && !mGroups[from - 1].isMark) --from;
    size_t markAt = from > 0 ? from - 1 : 0;
    if (Acad::ErrorStatus es = checkClosed(from); es != Acad::eOk) return es;
    rollBack(from);
    mGroups.resize(markAt);
    return Acad::eOk;
  }

  Acad::ErrorStatus undoGroups(int count) override {
    mCurrent = nullptr;
    size_t from = mGroups.size();
    for (int n = 0; n < count && from > 0;) {
      --from;
      if (!mGroups[from].isMark) ++n;
    }
    if (Acad::ErrorStatus es = checkClosed(from); es != Acad::eOk) return es;
    rollBack(from);
    mGroups.resize(from);
    return Acad::eOk;
  }

  size_t groupCount() const override {
    size_t n = 0;
    for (const Group& g : mGroups) n += g.isMark ? 0 : 1;
    return n;
  }
  size_t markCount() const override { return mGroups.size() - groupCount(); }

  void setRecording(bool on) override {
    mRecording = on;
    if (!on) {
      mGroups.clear();
      mCurrent = nullptr;
    }
  }
  bool isRecording() const override { return mRecording; }

  void recordCreated(AcDbStub* stub) override {
    if (!mRecording) return;
    Group& g = current();
    stub->undoSerial = g.serial;
    g.records.push_back({Record::kCreated, stub, false, nullptr});
  }

  void recordModified(AcDbStub* stub) override {
    if (!mRecording || stub->object == nullptr) return;
    Group& g = current();
    if (stub->undoSerial == g.serial) return;  // state already held (or created) in this group
    stub->undoSerial = g.serial;
    std::unique_ptr<AcDbObject> copy(static_cast<AcDbObject*>(stub->object->clone()));
    if (copy) g.records.push_back({Record::kModified, stub, false, std::move(copy)});
  }

  void recordErased(AcDbStub* stub, bool erasing) override {
    if (!mRecording) return;
    current().records.push_back({Record::kErased, stub, erasing, nullptr});
  }

 private:
  void openGroup() {
    Group g;
    g.serial = ++mSerial;
    mGroups.push_back(std::move(g));
    mCurrent = &mGroups.back();
  }

  Group& current() {
    if (mCurrent == nullptr) openGroup();  // implicit group for changes outside any group
    return *mCurrent;
  }

  Acad::ErrorStatus checkClosed(size_t from) const {
    for (size_t i = from; i < mGroups.size(); ++i)
      for (const Record& r : mGroups[i].records) {
        AcDbObject* o = r.stub->object.get();
        if (o == nullptr) continue;
        if (ObjectAccess::isWriteOpen(*o)) return Acad::eWasOpenForWrite;
        if (ObjectAccess::readers(*o) > 0) return Acad::eWasOpenForRead;
      }
    return Acad::eOk;
  }

  void rollBack(size_t from) {
    for (size_t i = mGroups.size(); i-- > from;) {
      auto& records = mGroups[i].records;
      for (size_t k = records.size(); k-- > 0;) {
        Record& r = records[k];
        AcDbObject* o = r.stub->object.get();
        if (o == nullptr) continue;
        switch (r.kind) {
          case Record::kCreated: ObjectAccess::setErased(*o, true); break;
          case Record::kErased: ObjectAccess::setErased(*o, !r.erasing); break;
          case Record::kModified: o->copyFrom(r.snapshot.get()); break;
        }
        r.stub->undoSerial = 0;
      }
    }
  }

  std::vector<Group> mGroups;
  Group* mCurrent = nullptr;
  int mDepth = 0;
  Adesk::UInt32 mSerial = 0;
  bool mRecording = true;
};

}  // namespace

std::unique_ptr<UndoRecorder> makeUndoRecorder(DatabaseImpl&) { return std::make_unique<Recorder>(); }

UndoController& undoController(AcDbDatabase& db) { return *db.impl().undo; }

}  // namespace tdhost
