#include "elements/fill_trelk_node.h"

#include "source/vask_model.h"
#include "store/node_records.h"
#include "store/trelk_store.h"
#include "transfer/failure.h"
#include "transfer/messages.h"

namespace vtt {

std::uint8_t SupportKindOf(const std::array<bool, 6>& r) {
  const bool translations = r[0] && r[1] && r[2];
  if (translations && r[3] && r[4] && r[5]) return 1;
  if (translations && !r[3] && !r[4] && !r[5]) return 2;
  if (translations && r[5] && !r[3] && !r[4]) return 3;
  for (bool restrained : r) {
    if (restrained) return 9;
  }
  return 0;
}

void FillTrelkNodeRecord(TrelkStore& store, std::int32_t node_number, std::int32_t prev_node,
                         std::int32_t next_node, double x, double y, double z,
                         const std::array<bool, 6>& restrained) {
  RecordRef rec = store.Nodes.Record(node_number);
  rec.SetInt(node_rec::PrevNode, prev_node);
  rec.SetInt(node_rec::NextNode, next_node);
  rec.SetInt(node_rec::InUse, 1);
  rec.SetReal(node_rec::X, x);
  rec.SetReal(node_rec::Y, y);
  rec.SetReal(node_rec::Z, z);
  rec.SetInt(node_rec::Reserved1, 0);
  for (int j = 1; j <= 6; ++j) {
    rec.SetInt(node_rec::Restrained(j), restrained[j - 1] ? 1 : 0);
    if (node_number == 1) rec.SetInt(node_rec::FirstNodeMark(j), 1);
  }
  rec.SetInt(node_rec::SupportKind, SupportKindOf(restrained));
}

void FillTrelkNodes(const VaskModelObj& model, TrelkStore& store, UserMessages& messages) {
  const int count = model.NodeNum();
  if (count == 0) {
    messages.Show({"", "No nodes exist. No transfer performed.", MessageIcon::None});
    return;
  }
  store.Nodes.SetCount(0);
  store.AddTrelkNode();
  FillTrelkNodeRecord(store, 1, 0, 2, 0.0, 0.0, 0.0, {});
  for (int i = 1; i <= count; ++i) {
    const std::int32_t n = store.AddTrelkNode();
    const std::int32_t next = i == count ? 0 : n + 1;
    const VaskNodeObj& node = *model.NodeObj(i);
    std::array<bool, 6> restrained{};
    for (int j = 1; j <= 6; ++j) restrained[j - 1] = node.IsRestrained(j);
    FillTrelkNodeRecord(store, n, n - 1, next, node.x, node.y, node.z, restrained);
  }
}

void FillTrelkDiaphragmConstraints(const VaskModelObj& model, TrelkStore& store) {
  for (int i = 1; i <= model.ConstraintNum(); ++i) {
    const VaskConstraintObj& constraint = *model.ConstraintObj(i);
    // A constraint whose nodes were all removed makes no group and takes no number, so
    // the group number is the diaphragm count.
    if (constraint.NodeNum() <= 0) continue;
    const std::int32_t group = store.AddTrelkDiaphragm();
    store.Diaphragms.Record(group).SetText(diaphragm_rec::Name,
                                           NameWithSuffix("", constraint.Label, group));
    for (int j = 1; j <= constraint.NodeNum(); ++j) {
      const VaskNodeObj* member = constraint.NodeObj(j);
      if (member == nullptr) {
        throw TransferFailure("The diaphragm \"" + constraint.Label +
                              "\" holds a point that the model does not have.");
      }
      RecordRef node = store.Nodes.Record(member->id);
      // A node two groups name keeps the later group's number.
      node.SetInt(node_rec::SlavedUX, group);
      node.SetInt(node_rec::SlavedUY, group);
      node.SetInt(node_rec::SlavedRZ, group);
    }
  }
}

}  // namespace vtt
