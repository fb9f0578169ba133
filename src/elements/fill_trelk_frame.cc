#include "elements/fill_trelk_frame.h"

#include <functional>
#include <string>
#include <string_view>
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
// triangle all carry the triangle's label). The first object of a label comes from the
// model's label index; the others are chained behind it, so that a model of millions of
// objects needs no table of its own.
class ElementsByLabel {
 public:
  // `count` objects; `elem(p)` the element of position p from 1; `firstAt(p)` the position
  // of the first object with the label of the one at p; `first(text, hint)` the position of
  // the first object labelled `text`, or 0, tried first at `hint` (0 for none).
  template <class Elem, class FirstAt, class First>
  ElementsByLabel(int count, Elem elem, FirstAt firstAt, First first)
      : elem_(static_cast<std::size_t>(count) + 1, 0),
        next_(static_cast<std::size_t>(count) + 1, 0),
        find_([first](std::string_view text, int hint) { return first(text, hint); }) {
    std::vector<int> last(static_cast<std::size_t>(count) + 1, 0);
    for (int p = 1; p <= count; ++p) {
      elem_[At(p)] = elem(p);
      const int head = firstAt(p);
      if (head == 0 || head == p) {
        last[At(p)] = p;
      } else {
        next_[At(last[At(head)])] = p;
        last[At(head)] = p;
      }
    }
  }

  // Calls `visit(elem)` for every object labelled `text`, in model order. A group lists
  // its objects mostly in model order, so the object after the last one found is tried
  // first; the answer is the index's either way.
  template <class Visit>
  void ForEach(std::string_view text, Visit visit) const {
    const int head = find_(text, last_ + 1);
    if (head != 0) last_ = head;
    for (int p = head; p != 0; p = next_[At(p)]) visit(elem_[At(p)]);
  }

 private:
  static std::size_t At(int p) { return static_cast<std::size_t>(p); }

  std::vector<int> elem_;
  std::vector<int> next_;  // the next position with the same label, 0 after the last
  std::function<int(std::string_view, int)> find_;
  mutable int last_ = 0;  // the position of the last object found
};

}  // namespace

void FillTrelkFrames(HostModel& host, const VaskModelObj& model, TrelkStore& store) {
  Names groups;
  int group_count = 0;
  host.GetGroupNames(group_count, groups);

  const ElementsByLabel frames(
      model.FrameNum(), [&](int p) { return model.FrameObj(p)->idTrelkElem; },
      [&](int p) { return model.FirstFrameOfLabelAt(p); },
      [&](std::string_view text, int hint) { return model.FramePositionNear(text, hint); });
  const ElementsByLabel areas(
      model.AreaNum(), [&](int p) { return model.AreaObj(p)->idTrelkElem; },
      [&](int p) { return model.FirstAreaOfLabelAt(p); },
      [&](std::string_view text, int hint) { return model.AreaPositionNear(text, hint); });

  int lastNode = 0;  // the position of the last point found, tried again like the objects
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
      const ElementsByLabel* elems = nullptr;
      switch (types[static_cast<std::size_t>(i)]) {
        case kPointObject:
          if (const int position = model.NodePositionNear(object, lastNode + 1); position != 0) {
            lastNode = position;
            store.FrameNodeFlag.At({t, model.NodeObj(position)->id})[0] = 1;
          }
          break;
        case kFrameObject:
          elems = &frames;
          break;
        case kAreaObject:
          elems = &areas;
          break;
        default:
          break;  // links, tendons and the like have no place in a structure frame
      }
      if (elems != nullptr) {
        // A frame that got no element has number 0, a slot the matrix keeps for it.
        elems->ForEach(object, [&](int elem) { store.FrameElemFlag.At({t, elem})[0] = 1; });
      }
    }
    ++t;
  }
}

}  // namespace vtt
