// libFuzzer target for the DXF reader: any input must end in tags or a DxfError, never a crash,
// hang or sanitizer report.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "dxf/code_page.h"
#include "dxf/dxf_tags.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tdhost::dxf;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    TagReader reader(text, "fuzz.dxf");
    CodePageDecoder decoder("CP1251");
    Tag tag;
    while (reader.next(tag)) {
      switch (valueKindOf(tag.code)) {
        case ValueKind::Double:
          parseDouble(tag, reader.source());
          break;
        case ValueKind::Int16:
        case ValueKind::Int32:
        case ValueKind::Int64:
        case ValueKind::Bool:
          parseInteger(tag, reader.source());
          break;
        default:
          decoder.toUtf8(tag.value);
      }
    }
  } catch (const DxfError&) {
    // Rejected with a located message: the expected outcome for malformed input.
  }
  return 0;
}
