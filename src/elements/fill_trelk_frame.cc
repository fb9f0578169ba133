#include "elements/fill_trelk_frame.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "source/host_model.h"
#include "source/vask_model.h"
#include "store/frame_set_records.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {

constexpr int kPointObject = 1;
constexpr int kFrameObject = 2;
constexpr int kAreaObject = 5;

// Element numbers of every object with a label, in model order. A group names an
// object by label, and every object of that label belongs to it (the parts of a divided
// triangle all carry the triangle's label).
class ElementsByLabel {
 public:
  void Add(const std::string& label, int elem) { elems_[label].push_back(elem); }
  const std::vector<int>* Find(const std::string& label) const {
    const auto it = elems_.find(label);
    return it == elems_.end() ? nullptr : &it->second;
  }

 private:
  std::unordered_map<std::string, std::vector<int>> elems_;
};

}  // namespace

void FillTrelkFrames(HostModel& host, const VaskModelObj& model, TrelkStore& store) {
  Names groups;
  int group_count = 0;
  host.GetGroupNames(group_count, groups);

  ElementsByLabel frames;
  for (int f = 1; f <= model.FrameNum(); ++f) {
    frames.Add(model.FrameObj(f)->Label, model.FrameObj(f)->idTrelkElem);
  }
  ElementsByLabel areas;
  for (int a = 1; a <= model.AreaNum(); ++a) {
    areas.Add(model.AreaObj(a)->Label, model.AreaObj(a)->idTrelkElem);
  }

  std::int32_t t = 1;
  for (int g = 0; g < group_count && g < static_cast<int>(groups.size()); ++g) {
    const std::string& name = groups[static_cast<std::size_t>(g)];
    if (name == "ALL") continue;
    int count = 0;
    Ints types;
    Names objects;
    host.GetGroupAssignments(name, count, types, objects);

    store.AddTrelkFrame();
    store.Frames.Record(t).SetText(frame_rec::Name, NameWithSuffix("", name, t));
    for (int i = 0; i < count && i < static_cast<int>(types.size()) &&
                    i < static_cast<int>(objects.size());
         ++i) {
      const std::string& object = objects[static_cast<std::size_t>(i)];
      const std::vector<int>* elems = nullptr;
      switch (types[static_cast<std::size_t>(i)]) {
        case kPointObject:
          if (const VaskNodeObj* node = model.NodeObjGet(object)) {
            store.FrameNodeFlag.At({t, node->id})[0] = 1;
          }
          break;
        case kFrameObject:
          elems = frames.Find(object);
          break;
        case kAreaObject:
          elems = areas.Find(object);
          break;
        default:
          break;  // links, tendons and the like have no place in a structure frame
      }
      if (elems != nullptr) {
        // A frame that got no element has number 0, a slot the matrix keeps for it.
        for (int elem : *elems) store.FrameElemFlag.At({t, elem})[0] = 1;
      }
    }
    ++t;
  }
}

}  // namespace vtt
