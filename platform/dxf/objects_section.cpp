// The OBJECTS section: dictionaries, xrecords and groups become host objects; every other
// object is kept as its tags.
#include "dbdict.h"
#include "dbgroup.h"
#include "dbxrecrd.h"
#include "dxf/dxf_model.h"

namespace tdhost::dxf {

void readObjects(LoadContext& ctx, const std::vector<Record>& records) {
  for (const Record& rec : records) {
    Split split = splitRecord(ctx, rec);
    AcDbObjectId id;
    if (rec.type == "DICTIONARY") {
      id = place(ctx, split.handle, std::make_unique<AcDbDictionary>());
      LoadContext::DictEntries entries{id, {}};
      for (size_t k = 0; k + 1 < split.tags.size(); ++k)
        if (split.tags[k].code == 3 && (split.tags[k + 1].code == 350 || split.tags[k + 1].code == 360))
          entries.entries.emplace_back(split.tags[k].value, parseHandle(split.tags[k + 1].value));
      ctx.dictionaries.push_back(std::move(entries));
      if (ctx.impl.namedObjects.isNull()) ctx.impl.namedObjects = id;
    } else if (rec.type == "XRECORD") {
      auto xrecord = std::make_unique<AcDbXrecord>();
      size_t from = 0;
      for (size_t k = 0; k < split.tags.size(); ++k)
        if (split.tags[k].code == 100 && split.tags[k].value == "AcDbXrecord") {
          from = k + 1;
          if (from < split.tags.size() && split.tags[from].code == 280) ++from;
          break;
        }
      xrecord->attachLoaded(itemsOf(ctx, split.tags.data() + from, split.tags.data() + split.tags.size()));
      split.tags.resize(from);
      id = place(ctx, split.handle, std::move(xrecord));
    } else if (rec.type == "GROUP") {
      auto group = std::make_unique<AcDbGroup>();
      LoadContext::GroupMembers members{AcDbObjectId(), {}};
      for (const RawTag& t : split.tags) {
        if (t.code == 300) group->setDescription(widen(t.value).c_str());
        else if (t.code == 71) group->setSelectable(toInteger(t.value) != 0);
        else if (t.code == 340) members.members.push_back(parseHandle(t.value));
      }
      id = place(ctx, split.handle, std::move(group));
      members.group = id;
      ctx.groups.push_back(std::move(members));
    } else {
      id = place(ctx, split.handle,
                 std::make_unique<AcDbUnmodelledObject>(RawContent{rec.type, std::move(split.tags), {}, ctx.state.text}));
      finishObject(ctx, id, split);
      ctx.state.objectOrder.push_back(id);
      continue;
    }
    ctx.state.kept[id] = RawContent{rec.type, std::move(split.tags), {}, ctx.state.text};
    finishObject(ctx, id, split);
    ctx.state.objectOrder.push_back(id);
  }
}

}  // namespace tdhost::dxf
