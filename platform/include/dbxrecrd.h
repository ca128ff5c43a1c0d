// AcDbXrecord: an object holding an arbitrary result-buffer chain.
#pragma once

#include <memory>

#include "dbmain.h"

class TDHOST_API AcDbXrecord : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbXrecord);
  AcDbXrecord();
  ~AcDbXrecord() override;
  AcDbXrecord(const AcDbXrecord& other);
  AcDbXrecord& operator=(const AcDbXrecord& other);
  TDHOST_DECLARE_COPYABLE(AcDbXrecord)

  // A new chain of the record's data (the caller releases it with acutRelRb); null and eOk
  // when the record is empty. Object references (codes 330-369) come back as entity names.
  Acad::ErrorStatus rbChain(resbuf** ppRb, AcDbDatabase* auxDb = nullptr) const;
  // Replaces the data with a copy of the chain. eInvalidInput for a chain element whose
  // type does not fit its code.
  Acad::ErrorStatus setFromRbChain(const resbuf& pRb, AcDbDatabase* auxDb = nullptr);
  bool isXlateReferences() const { return mXlate; }
  void setXlateReferences(bool translate);

  void subTranslateIds(const AcDbIdMapping& idMap) override;

  // Host-internal (file reader and writer): the stored items.
  void attachLoaded(std::unique_ptr<tdhost::XDataStore> data);
  const tdhost::XDataStore* data() const { return mData.get(); }

 private:
  std::unique_ptr<tdhost::XDataStore> mData;
  bool mXlate = true;
};
