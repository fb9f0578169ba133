#include "analysis/fill_trelk_nodal_mass.h"

#include "source/vask_model.h"
#include "store/node_records.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {

// Mass source options of the host.
constexpr int kMassFromElements = 1;
constexpr int kMassFromLoads = 2;
constexpr int kMassFromBoth = 3;

// Adds to a single-precision mass: the sum is rounded to the field after each addition.
void AddMass(RecordRef& mass, int dof, double value) {
  const FieldDef field = nodal_mass_rec::Mass(dof);
  mass.SetReal(field, mass.GetReal(field) + value);
}

}  // namespace

void FillTrelkNodalMass(const VaskModelObj& model, TrelkStore& store) {
  store.NodalMassPatterns.SetCount(0);
  const std::int32_t pattern = store.AddTrelkNodalMassPattern();
  // Every mass starts at 0, whatever the matrix held before.
  store.NodalMass.Reshape({{1, store.NodalMassPatterns.Capacity()}, {1, store.Nodes.Capacity()}});
  store.NodalMassPatterns.Record(pattern).SetText(nodal_mass_pattern_rec::Name, "Nodal Mass");

  const int option = model.MassSrcOption;
  const bool elementMass = option == kMassFromElements || option == kMassFromBoth;
  const bool loadMass = option == kMassFromLoads || option == kMassFromBoth;

  if (elementMass) {
    for (int i = 1; i <= model.NodeNum(); ++i) {
      const VaskNodeObj& node = *model.NodeObj(i);
      const RecordRef record = store.Nodes.Record(node.id);
      RecordRef mass = store.NodalMass.Element({pattern, node.id});
      for (int c = 1; c <= 6; ++c) {
        if (record.GetInt(node_rec::Restrained(c)) != 0) continue;
        AddMass(mass, c, node.PointMass(c));
      }
    }
  }
  if (loadMass) {
    for (int i = 1; i <= model.NodeNum(); ++i) {
      const VaskNodeObj& node = *model.NodeObj(i);
      const RecordRef record = store.Nodes.Record(node.id);
      RecordRef mass = store.NodalMass.Element({pattern, node.id});
      for (int c = 1; c <= 6; ++c) {
        if (record.GetInt(node_rec::Restrained(c)) != 0) continue;
        // Each accumulator by itself: uplift in one does not cancel mass in another.
        if (node.LoadMass(c) > 0.0) AddMass(mass, c, node.LoadMass(c));
        if (node.FrameLoadMass(c) > 0.0) AddMass(mass, c, node.FrameLoadMass(c));
        if (node.AreaLoadMass(c) > 0.0) AddMass(mass, c, node.AreaLoadMass(c));
      }
    }
  }
}

}  // namespace vtt
