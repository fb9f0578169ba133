#include "analysis/fill_drift_and_deflection.h"

#include "source/vask_model.h"
#include "store/drift_records.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {

void AddDrift(TrelkStore& store, const char* name, int axis, int top, int bottom) {
  RecordRef rec = store.Drifts.Record(store.AddTrelkDrift());
  rec.SetText(drift_rec::Name, name);
  rec.SetInt(drift_rec::Flag, 1);
  rec.SetInt(drift_rec::Axis, axis);
  rec.SetInt(drift_rec::TopNode, top);
  rec.SetInt(drift_rec::BottomNode, bottom);
}

}  // namespace

void FillTrelkDrift(const VaskModelObj& model, TrelkStore& store) {
  store.Drifts.SetCount(0);
  const VaskNodeObj* top = model.NodeTopObj();
  const VaskNodeObj* bottom = model.NodeBotObj();
  if (top == nullptr || bottom == nullptr) return;
  AddDrift(store, "H1 Drift", 0, top->id, bottom->id);
  AddDrift(store, "H2 Drift", 1, top->id, bottom->id);
}

}  // namespace vtt
