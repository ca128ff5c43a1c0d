// Objects and entities the host has no class for, kept as their DXF tags so that a drawing
// read from a file loses nothing when it is written back. Not part of the SDK surface.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "../dbmain.h"

namespace tdhost {

// One group code and its text as it stands in the file (UTF-8); the text lives in the
// RawText the owner holds.
struct RawTag {
  int code = 0;
  std::string_view value;
};

// Text the tags of a loaded drawing point into; shared by every object that keeps tags.
struct RawText {
  // The file as read. Not a std::string: the buffer is filled by one read, so zero-filling it
  // first (as resize would) only costs time.
  std::unique_ptr<char[]> bytes;
  std::size_t size = 0;
  std::vector<std::unique_ptr<std::string>> converted;  // values re-encoded at load

  std::string_view file() const { return {bytes.get(), size}; }
};

// A record that follows its main entity in the file (VERTEX, ATTRIB, SEQEND): its own
// type, handle and tags after the common ones.
struct RawRecord {
  std::string_view type;
  AcDbHandle handle;
  std::vector<RawTag> tags;
};

// What a kept object carries: its DXF type, its class-specific tags and its followers.
struct RawContent {
  std::string_view type;
  std::vector<RawTag> tags;
  std::vector<RawRecord> followers;
  std::shared_ptr<const RawText> text;
};

// An entity of a kind the host does not model (yet): layer, colour and visibility are the
// AcDbEntity's; everything else is its tags, written back unchanged.
class TDHOST_API AcDbUnmodelledEntity : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbUnmodelledEntity);
  AcDbUnmodelledEntity() = default;
  explicit AcDbUnmodelledEntity(RawContent content) : mContent(std::move(content)) {}
  ~AcDbUnmodelledEntity() override;
  TDHOST_DECLARE_COPYABLE(AcDbUnmodelledEntity)

  // The DXF name ("LINE", "LWPOLYLINE", ...).
  std::string_view dxfName() const { return mContent.type; }
  const RawContent& content() const { return mContent; }

 protected:
  AcDbUnmodelledEntity(const AcDbUnmodelledEntity&) = default;
  AcDbUnmodelledEntity& operator=(const AcDbUnmodelledEntity&) = default;

 private:
  RawContent mContent;
};

// A non-graphical object of a kind the host does not model (LAYOUT, MLINESTYLE, ...).
class TDHOST_API AcDbUnmodelledObject : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbUnmodelledObject);
  AcDbUnmodelledObject() = default;
  explicit AcDbUnmodelledObject(RawContent content) : mContent(std::move(content)) {}
  ~AcDbUnmodelledObject() override;
  TDHOST_DECLARE_COPYABLE(AcDbUnmodelledObject)

  std::string_view dxfName() const { return mContent.type; }
  const RawContent& content() const { return mContent; }

 protected:
  AcDbUnmodelledObject(const AcDbUnmodelledObject&) = default;
  AcDbUnmodelledObject& operator=(const AcDbUnmodelledObject&) = default;

 private:
  RawContent mContent;
};

}  // namespace tdhost
