#include "analysis/fill_trelk_section_cut.h"

#include <cstdint>
#include <string>
#include <vector>

#include "source/vask_model.h"
#include "store/section_cut_records.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {

using NodeOwner = VaskModelObj::NodeOwner;

bool IsSupportNode(const VaskModelObj& model, const std::string& label, const NodeOwner& owner,
                   int hint) {
  return model.RequiredNode(label, owner, hint).IsSupport();
}

bool SupportAtI(const VaskModelObj& model, const VaskFrameObj& frame) {
  return IsSupportNode(model, frame.LabelNodeI, NodeOwner{"Frame", frame.Label, true, false},
                       frame.NodeI);
}

bool SupportAtJ(const VaskModelObj& model, const VaskFrameObj& frame) {
  return IsSupportNode(model, frame.LabelNodeJ, NodeOwner{"Frame", frame.Label, true, false},
                       frame.NodeJ);
}

bool AreaIsCut(const VaskModelObj& model, const VaskAreaObj& area) {
  if (area.NumNodes < 2) return false;
  const NodeOwner owner{"Area", area.Label, true, false};
  return IsSupportNode(model, area.LabelNodes(1), owner, area.NodeHint(1)) &&
         IsSupportNode(model, area.LabelNodes(2), owner, area.NodeHint(2));
}

void FillCut(TrelkStore& store, std::int32_t cut, const char* name, std::int32_t first,
             std::int32_t last) {
  RecordRef rec = store.SectionCuts.Record(cut);
  rec.SetText(section_cut_rec::Name, name);
  rec.SetInt(section_cut_rec::FirstMember, first);
  rec.SetInt(section_cut_rec::LastMember, last);
  rec.SetInt(section_cut_rec::Flag, 0);
  rec.SetReal(section_cut_rec::Value1, 1.0);
  rec.SetReal(section_cut_rec::Value2, 2.0);
  rec.SetReal(section_cut_rec::Value3, 3.0);
}

void FillMember(TrelkStore& store, std::int32_t entry, int end, std::int32_t elem,
                std::int32_t next) {
  RecordRef rec = store.CutMembers.Record(entry);
  rec.SetInt(cut_member_rec::End, end);
  rec.SetInt(cut_member_rec::Elem, elem);
  rec.SetInt(cut_member_rec::Next, next);
}

}  // namespace

void FillTrelkSectionCuts(const VaskModelObj& model, TrelkStore& store) {
  // Each frame and area is looked at once; the members are then taken from what was seen
  // (for a frame: not cut, or cut with its support at end I (0) or at end J (1)).
  constexpr std::int8_t kNotCut = -1;
  std::vector<std::int8_t> frame_cut(static_cast<std::size_t>(model.FrameNum()) + 1, kNotCut);
  std::int32_t nf = 0;
  for (int f = 1; f <= model.FrameNum(); ++f) {
    const VaskFrameObj& frame = *model.FrameObj(f);
    const bool atI = SupportAtI(model, frame);
    if (atI == SupportAtJ(model, frame)) continue;
    frame_cut[static_cast<std::size_t>(f)] = atI ? 0 : 1;
    ++nf;
  }
  std::vector<bool> area_cut(static_cast<std::size_t>(model.AreaNum()) + 1, false);
  std::int32_t na = 0;
  for (int a = 1; a <= model.AreaNum(); ++a) {
    if (!AreaIsCut(model, *model.AreaObj(a))) continue;
    area_cut[static_cast<std::size_t>(a)] = true;
    ++na;
  }
  const std::int32_t cuts = (nf > 0 ? 1 : 0) + (na > 0 ? 1 : 0);
  if (cuts == 0) return;
  store.AllocateSectionCuts(cuts);
  // Each cut has a head entry, counted even for a kind with no member.
  store.CutMembers.SetCountAndAllocate(nf + 1 + na + 1);

  std::int32_t cut = 0;
  if (nf > 0) {
    FillCut(store, ++cut, "Frame Base Cut", 1, nf + 1);
    FillMember(store, 1, 0, 0, 2);
    std::int32_t j = 0;
    for (int f = 1; f <= model.FrameNum(); ++f) {
      const std::int8_t end = frame_cut[static_cast<std::size_t>(f)];
      if (end == kNotCut) continue;
      ++j;
      FillMember(store, j + 1, end, model.FrameObj(f)->idTrelkElem, j == nf ? 0 : j + 2);
    }
  }
  if (na > 0) {
    const std::int32_t first = nf == 0 ? 1 : nf + 2;
    FillCut(store, ++cut, "Area Base Cut", first, first + na);
    FillMember(store, first, 0, 0, first + 1);
    std::int32_t k = 0;
    for (int a = 1; a <= model.AreaNum(); ++a) {
      if (!area_cut[static_cast<std::size_t>(a)]) continue;
      ++k;
      FillMember(store, first + k, 0, model.AreaObj(a)->idTrelkElem,
                 k == na ? 0 : first + k + 1);
    }
  }

  const std::int32_t group = store.AddTrelkCutGroup();
  RecordRef rec = store.CutGroups.Record(group);
  rec.SetText(cut_group_rec::Name, "Support Sect Group");
  rec.SetInt(cut_group_rec::Kind, 1);
  rec.SetInt(cut_group_rec::CutCount, cuts);
  for (std::int32_t c = 1; c <= cuts; ++c) {
    store.CutGroupFlag.At({group, c})[0] = 1;
  }
}

}  // namespace vtt
