#include "source/vask_model.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "source/process_end.h"
#include "source/second_thread.h"
#include "transfer/failure.h"

namespace vtt {

double QuadArea(const std::array<double, 4>& x, const std::array<double, 4>& y,
                const std::array<double, 4>& z, bool projected) {
  const double ax = x[2] - x[1];
  const double ay = y[2] - y[1];
  const double az = projected ? 0.0 : z[2] - z[1];
  const double bx = x[3] - x[0];
  const double by = y[3] - y[0];
  const double bz = projected ? 0.0 : z[3] - z[0];
  const double cx = ay * bz - az * by;
  const double cy = az * bx - ax * bz;
  const double cz = ax * by - ay * bx;
  return 0.5 * std::sqrt(cx * cx + cy * cy + cz * cz);
}

VaskModelObj::VaskModelObj(HostModel& host) : host_(host) {}

std::span<const VaskModelObj::ReadStage> VaskModelObj::ReadStages() {
  // The order is fixed: a stage may rely on every stage above it, and the rest of the
  // system cites stages by these numbers.
  static constexpr std::array<ReadStage, 28> kStages{{
      {"ReadPropMaterials", &VaskModelObj::ReadPropMaterials},
      {"ReadPropFrameSections", &VaskModelObj::ReadPropFrameSections},
      {"ReadPropAreaSections", &VaskModelObj::ReadPropAreaSections},
      {"ReadNodes", &VaskModelObj::ReadNodes},
      {"ReadConstraints", &VaskModelObj::ReadConstraints},
      {"ReadFrames", &VaskModelObj::ReadFrames},
      {"ReadFrameReleases", &VaskModelObj::ReadFrameReleases},
      {"ReadAreas", &VaskModelObj::ReadAreas},
      {"ReadLoadPatterns", &VaskModelObj::ReadLoadPatterns},
      {"ReadLoadNodes", &VaskModelObj::ReadLoadNodes},
      {"ReadFramesLoadDistributed", &VaskModelObj::ReadFramesLoadDistributed},
      {"ReadFramesLoadPoint", &VaskModelObj::ReadFramesLoadPoint},
      {"CheckLoadFramePoint", &VaskModelObj::CheckLoadFramePoint},
      {"ReadLoadAreas", &VaskModelObj::ReadLoadAreas},
      {"SpreadLoadAreas", &VaskModelObj::SpreadLoadAreas},
      {"LinkFrameSectionMaterials", &VaskModelObj::LinkFrameSectionMaterials},
      {"LinkAreaSectionMaterials", &VaskModelObj::LinkAreaSectionMaterials},
      {"LinkFrameSections", &VaskModelObj::LinkFrameSections},
      {"LinkAreaSections", &VaskModelObj::LinkAreaSections},
      {"ClassifyFrames", &VaskModelObj::ClassifyFrames},
      {"ClassifyAreas", &VaskModelObj::ClassifyAreas},
      {"ReadMass", &VaskModelObj::ReadMass},
      {"ReadVaskTHFunc", &VaskModelObj::ReadVaskTHFunc},
      {"MarkLoadPatternContents", &VaskModelObj::MarkLoadPatternContents},
      {"ReadReserved", &VaskModelObj::ReadReserved},
      {"FindDriftNodes", &VaskModelObj::FindDriftNodes},
      {"ReadFrameHinges", &VaskModelObj::ReadFrameHinges},
      {"DetectEmbeddedBeams", &VaskModelObj::DetectEmbeddedBeams},
  }};
  return kStages;
}

const UnitBlock& VaskModelObj::PresentUnits() const {
  if (!presentUnits_) presentUnits_ = UnitsForHostCode(host_.GetPresentUnits());
  return *presentUnits_;
}

void VaskModelObj::ReadVaskData(const ReadProgress& progress) {
  const std::span<const ReadStage> stages = ReadStages();
  for (std::size_t i = 0; i < stages.size(); ++i) {
    if (stages[i].run == nullptr) continue;
    if (stages[i].run == &VaskModelObj::ReadFramesLoadDistributed && CanUseSecondThread() &&
        ReadLoadsWithSecondThread(progress)) {
      // Stages 11 to 22 are read; go on with stage 23.
      while (i < stages.size() && stages[i].run != &VaskModelObj::ReadMass) ++i;
      continue;
    }
    if (progress) progress(static_cast<int>(i) + 1, stages[i].name);
    (this->*stages[i].run)();
  }
  // The reading ends with the work of its second thread.
  WaitForSecondThread();
}

void VaskModelObj::NoteDrop(std::string kind, std::string name, std::string reason) const {
  if (const DropObserver* observer = DropObserverIfAny()) {
    (*observer)({std::move(kind), std::move(name), std::move(reason)});
  }
}

const DropObserver* VaskModelObj::DropObserverIfAny() const {
  if (const DropObserver* held = HeldDropNotes::ObserverOfThisThread()) return held;
  return dropObserver_ ? &dropObserver_ : nullptr;
}

bool VaskModelObj::CanUseSecondThread() const {
  return SecondThreadWork() && host_.AnswersFromTwoThreads() && nodes_.SettleLookUps();
}

namespace {

// What the two threads of stages 11 to 22 share. The second thread may outlive the
// function that started it (it goes on with MarkFrameJoins), so this lives as long as
// either side holds it.
struct SecondThreadParts {
  explicit SecondThreadParts(bool listened) : listened(listened) {}

  const bool listened;  // whether anyone listens for drop notes
  std::atomic<bool> stop{false};
  // The parts of the second thread, in the order it runs them: the links and classes
  // (stages 16 to 21), the area loads (14), the first half of the mass (22), where frames
  // join the areas (stage 28's first pass).
  HeldDropNotes linkNotes;
  HeldDropNotes areaLoadNotes;
  std::atomic<bool> linkedWell{false};
  std::promise<void> linked;
  std::promise<void> areaLoadsRead;
  std::promise<void> massOfObjectsRead;
  std::promise<void> joinsMarked;
  std::shared_ptr<VaskModelObj::MassOfObjects> massOfObjects;
};

}  // namespace

// Stages 11 to 22 on two threads. The frames' loads (11, 12), the end loads moved to nodes
// (13), the spreading of the area loads (15) and the mass of the loads (the second half of
// 22) stay on this thread; the links of sections and materials and the classing of frames
// and areas (16 to 21), the area loads (14) and the mass of points, frames and areas (the
// first half of 22) go to a second one, which then marks where frames join the areas, for
// stage 28, and makes the frames' label index, for the structure frames of the fill; the
// reading waits for it at its end.
//
// Neither side reads what the other writes: each frame's loads and the nodal loads are
// this side's, each frame's and area's section, material and classes the other's, and the
// area loads; the first half of the mass writes only the nodes' mass, which nothing on this
// side reads before it has ended. Both ask the host, which answers from two threads, and
// look nodes up, whose index is settled.
//
// So that nothing tells the difference, the second thread holds the drop notes of each
// part until its stages' turn, and a part's failure surfaces at that turn: a failure of
// stage 13 comes before one of stage 14, one of stage 15 before one of stage 20, and any
// of them before one of the mass. Whatever ends the stages, the second thread is stopped
// between parts and waited for.
bool VaskModelObj::ReadLoadsWithSecondThread(const ReadProgress& progress) {
  using Stage = void (VaskModelObj::*)();
  static constexpr std::array<Stage, 12> kOrder = {
      &VaskModelObj::ReadFramesLoadDistributed, &VaskModelObj::ReadFramesLoadPoint,
      &VaskModelObj::CheckLoadFramePoint,       &VaskModelObj::ReadLoadAreas,
      &VaskModelObj::SpreadLoadAreas,           &VaskModelObj::LinkFrameSectionMaterials,
      &VaskModelObj::LinkAreaSectionMaterials,  &VaskModelObj::LinkFrameSections,
      &VaskModelObj::LinkAreaSections,          &VaskModelObj::ClassifyFrames,
      &VaskModelObj::ClassifyAreas,             &VaskModelObj::ReadMass};
  constexpr std::size_t kAreaLoads = 3;
  constexpr std::size_t kSpread = 4;
  constexpr std::size_t kFirstLink = 5;
  constexpr std::size_t kMass = 11;
  const std::span<const ReadStage> stages = ReadStages();
  std::size_t first = 0;
  while (first < stages.size() && stages[first].run != kOrder[0]) ++first;
  if (first + kOrder.size() > stages.size()) return false;
  for (std::size_t k = 0; k < kOrder.size(); ++k) {
    if (stages[first + k].run != kOrder[k]) return false;
  }
  const auto announce = [&](std::size_t k) {
    if (progress) progress(static_cast<int>(first + k) + 1, stages[first + k].name);
  };

  // The frames' loads and the mass work in the structure's units, which may be asked of
  // the host here; the second thread does not ask them.
  PresentUnits();
  const auto parts = std::make_shared<SecondThreadParts>(static_cast<bool>(dropObserver_));
  std::future<void> linked = parts->linked.get_future();
  std::future<void> areaLoadsRead = parts->areaLoadsRead.get_future();
  std::future<void> massOfObjectsRead = parts->massOfObjectsRead.get_future();
  std::future<void> joinsMarked = parts->joinsMarked.get_future();
  const bool marksJoins = AreaNum() > 0;
  std::future<void> second = std::async(std::launch::async, [this, parts, marksJoins] {
    // One part after the other, each holding its notes; a failure ends the thread, except
    // that of the links, which come after the area loads in the stage order.
    const auto part = [&](HeldDropNotes* notes, std::promise<void>& done, auto read) {
      std::optional<HeldDropNotes::Holding> holding;
      if (notes != nullptr) holding.emplace(*notes, parts->listened);
      try {
        if (!parts->stop) read();
        done.set_value();
        return true;
      } catch (...) {
        done.set_exception(std::current_exception());
        return false;
      }
    };
    parts->linkedWell = part(&parts->linkNotes, parts->linked, [&] {
      for (std::size_t k = kFirstLink; k < kMass && !parts->stop; ++k) (this->*kOrder[k])();
    });
    if (!part(&parts->areaLoadNotes, parts->areaLoadsRead, [this] { ReadLoadAreas(); }) ||
        !parts->linkedWell) {
      return;
    }
    // The mass tells nothing left out.
    if (!part(nullptr, parts->massOfObjectsRead,
              [&] { parts->massOfObjects = ReadMassOfObjects(); })) {
      return;
    }
    if (marksJoins && !part(nullptr, parts->joinsMarked, [this] { MarkFrameJoins(); })) return;
    // The frames are read and keep their labels; the structure frames look them up by
    // label. Nothing on the first thread looks frames up until the reading has ended.
    if (!parts->stop) frames_.SettleLookUps();
  });
  struct StopAndWait {
    SecondThreadParts& parts;
    std::future<void>& second;
    ~StopAndWait() {
      if (!second.valid()) return;  // handed on to the model
      parts.stop = true;
      second.wait();
    }
  } stopAndWait{*parts, second};
  // A part of the second thread, its notes told after all that came before.
  const auto join = [this](std::future<void>& done, HeldDropNotes* notes) {
    done.wait();
    if (notes != nullptr) notes->Release(*this);
    done.get();
  };

  for (std::size_t k = 0; k < kAreaLoads; ++k) {
    announce(k);
    (this->*kOrder[k])();
  }
  announce(kAreaLoads);
  join(areaLoadsRead, &parts->areaLoadNotes);
  announce(kSpread);
  SpreadLoadAreas();
  announce(kFirstLink);
  join(linked, &parts->linkNotes);
  for (std::size_t k = kFirstLink + 1; k <= kMass; ++k) announce(k);
  join(massOfObjectsRead, nullptr);
  ReadMassOfLoads(*parts->massOfObjects);
  if (marksJoins) frameJoins_ = std::move(joinsMarked);
  secondThread_ = std::move(second);
  return true;
}

void VaskModelObj::WaitForSecondThread() {
  if (secondThread_.valid()) secondThread_.wait();
}

void VaskModelObj::ReadNodes() {
  int count = 0;
  Names names;
  host_.GetPointNameList(count, names);
  // Statuses are not tested: a failed call leaves its results as the host left them.
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  DofFlags restraints{};
  const int num = std::min(count, static_cast<int>(names.size()));
  for (int i = 0; i < num; ++i) {
    const std::string& name = names[static_cast<std::size_t>(i)];
    host_.GetPointCoordinates(name, x, y, z, "Global");
    host_.GetPointRestraints(name, restraints);
    AddNode(name, x, y, z, restraints);
  }
}

void VaskModelObj::ReadReserved() {}

VaskNodeObj* VaskModelObj::AddNode(std::string label, double x, double y, double z,
                                   const DofFlags& restraints) {
  VaskNodeObj* node = nodes_.Add();
  node->Label = std::move(label);
  node->x = x;
  node->y = y;
  node->z = z;
  node->id = nodes_.Num() + 1;
  for (int dof = 1; dof <= 6; ++dof) {
    node->IsRestrained(dof) = restraints[static_cast<std::size_t>(dof - 1)];
  }
  return node;
}

VaskConstraintObj* VaskModelObj::ConstraintAdd() { return constraints_.Add(); }
void VaskModelObj::ConstraintRemove(int position) { constraints_.Remove(position); }
void VaskModelObj::ConstraintRemoveWhere(const std::function<bool(int position)>& removed) {
  constraints_.RemoveWhere(removed);
}
VaskFrameReleaseObj* VaskModelObj::FrameReleaseAdd() { return frameReleases_.Add(); }
VaskFrameObj* VaskModelObj::AddFrame() { return frames_.Add(); }
VaskAreaObj* VaskModelObj::AddArea() { return areas_.Add(); }
VaskPropMaterialObj* VaskModelObj::AddPropMaterial() { return materials_.Add(); }
VaskPropFrameSectObj* VaskModelObj::AddPropFrameSect() { return frameSections_.Add(); }
VaskPropFrameSectObj* VaskModelObj::AddPropEmbedFrameSect() { return embedFrameSections_.Add(); }
VaskPropAreaSectObj* VaskModelObj::AddPropAreaSect() { return areaSections_.Add(); }
VaskLoadPatternObj* VaskModelObj::AddLoadPattern() { return loadPatterns_.Add(); }
VaskLoadNodeObj* VaskModelObj::AddLoadNode() { return loadNodes_.Add(); }
VaskLoadAreaObj* VaskModelObj::AddLoadArea() { return loadAreas_.Add(); }
VaskTHFuncObj* VaskModelObj::AddTHFuncObj() { return thFuncs_.Add(); }

void VaskModelObj::Dispose() {
  WaitForSecondThread();
  nodeTop_ = nullptr;
  nodeBot_ = nullptr;
  // At the end of the program the objects go with the process (process_end.h); the
  // model is empty either way.
  const auto release = [](auto& list) {
    LeaveToProcessEnd(list);
    list.Clear();
  };
  release(nodes_);
  release(coincidentNodes_);
  release(frames_);
  release(areas_);
  release(materials_);
  release(frameSections_);
  release(embedFrameSections_);
  release(areaSections_);
  release(constraints_);
  release(frameReleases_);
  release(loadPatterns_);
  release(loadNodes_);
  release(loadAreas_);
  release(thFuncs_);
  MassSrcLoadPattern.Clear();
  MassSrcSF.Clear();
  MassSrcLoadNum = 0;
}

int VaskModelObj::NodeIdGet(std::string_view label) const {
  const VaskNodeObj* node = nodes_.Get(label);
  return node == nullptr ? -1 : node->id;
}

int VaskModelObj::NodeIdFrom(std::string_view label, std::initializer_list<int> hints) const {
  for (const int hint : hints) {
    if (nodes_.AnswersAt(label, PositionOfId(hint))) return nodes_(PositionOfId(hint))->id;
  }
  return NodeIdGet(label);
}

VaskNodeObj* VaskModelObj::NodeObjGet(std::string_view label) const { return nodes_.Get(label); }

VaskLoadNodeObj* VaskModelObj::LoadNodeObjGet(std::string_view label) const {
  return loadNodes_.Get(label);
}

VaskTHFuncObj* VaskModelObj::THFuncObjGet(std::string_view label) const {
  return thFuncs_.Get(label);
}

VaskFrameObj* VaskModelObj::FrameObjGet(std::string_view label) const { return frames_.Get(label); }

VaskPropFrameSectObj* VaskModelObj::PropFrameSectObjGet(std::string_view label) const {
  return frameSections_.Get(label);
}

VaskPropMaterialObj* VaskModelObj::PropMaterialObjGet(std::string_view label) const {
  return materials_.Get(label);
}

VaskLoadPatternObj* VaskModelObj::LoadPatternObjGet(std::string_view label) const {
  return loadPatterns_.Get(label);
}

VaskConstraintObj* VaskModelObj::ConstraintFind(std::string_view label) const {
  return constraints_.Get(label);
}

void VaskModelObj::LabelsChanged() {
  nodes_.LabelsChanged();
  constraints_.LabelsChanged();
  frames_.LabelsChanged();
  materials_.LabelsChanged();
  frameSections_.LabelsChanged();
  loadPatterns_.LabelsChanged();
  loadNodes_.LabelsChanged();
  thFuncs_.LabelsChanged();
}

const VaskNodeObj& VaskModelObj::RequiredNode(std::string_view label,
                                              std::string_view owner) const {
  const VaskNodeObj* node = nodes_.Get(label);
  if (node == nullptr) {
    throw TransferFailure(std::string(owner) + ": node \"" + std::string(label) +
                          "\" is not a node of the model.");
  }
  return *node;
}

std::string VaskModelObj::NodeOwner::Text() const {
  if (!named) return std::string(kind);
  if (!quoted) return std::string(kind) + " " + std::string(label);
  return std::string(kind) + " \"" + std::string(label) + "\"";
}

const VaskNodeObj& VaskModelObj::RequiredNode(std::string_view label, const NodeOwner& owner,
                                              int hint) const {
  const VaskNodeObj* node = NodeObjNear(label, hint);
  if (node == nullptr) return RequiredNode(label, owner.Text());
  return *node;
}

VaskNodeObj* VaskModelObj::NodeObjNear(std::string_view label, int hint) const {
  const int position = nodes_.FindNear(label, PositionOfId(hint));
  return position == 0 ? nullptr : nodes_(position);
}

double VaskModelObj::AreaObjAreaGet(const VaskAreaObj& area, bool projected) const {
  if (area.NumNodes != 4) return 0.0;
  std::array<double, 4> x{};
  std::array<double, 4> y{};
  std::array<double, 4> z{};
  const NodeOwner owner{"Area", area.Label};
  for (std::size_t j = 0; j < 4; ++j) {
    const int at = static_cast<int>(j) + 1;
    const VaskNodeObj& node = RequiredNode(area.LabelNodes(at), owner, area.NodeHint(at));
    x[j] = node.x;
    y[j] = node.y;
    z[j] = node.z;
  }
  return QuadArea(x, y, z, projected);
}

double VaskModelObj::FrameObjLengthGet(const VaskFrameObj& frame, bool projected) const {
  const NodeOwner owner{"Frame", frame.Label};
  const VaskNodeObj& nodeI = RequiredNode(frame.LabelNodeI, owner, frame.NodeI);
  const VaskNodeObj& nodeJ = RequiredNode(frame.LabelNodeJ, owner, frame.NodeJ);
  return FrameLengthBetween(nodeI, nodeJ, projected);
}

double FrameLengthBetween(const VaskNodeObj& nodeI, const VaskNodeObj& nodeJ, bool projected) {
  const double dx = nodeJ.x - nodeI.x;
  const double dy = nodeJ.y - nodeI.y;
  const double dz = projected ? 0.0 : nodeJ.z - nodeI.z;
  return std::sqrt(dx * dx + dy * dy + dz * dz);
}

std::vector<DriftPoint> VaskModelObj::NodePoints() const {
  std::vector<DriftPoint> points;
  points.reserve(static_cast<std::size_t>(NodeNum()));
  for (int i = 1; i <= NodeNum(); ++i) {
    const VaskNodeObj& node = *nodes_(i);
    points.push_back({node.x, node.y, node.z});
  }
  return points;
}

void VaskModelObj::FindDriftNodes() { KeepDriftPair(FindDriftPairIndexed(NodePoints())); }

void VaskModelObj::FindDriftNodesLiteral() { KeepDriftPair(FindDriftPairLiteral(NodePoints())); }

void VaskModelObj::KeepDriftPair(const DriftPair& pair) {
  nodeTop_ = nullptr;
  nodeBot_ = nullptr;
  // Positions are places in NodeObj and both bounds are strict: the last node of the model
  // can be neither end of the pair. That is the rule, not a slip to correct.
  if (!pair.Found() || !(pair.top < NodeNum()) || pair.bottom < 1 || !(pair.bottom < NodeNum())) {
    return;
  }
  nodeTop_ = nodes_(pair.top);
  nodeBot_ = nodes_(pair.bottom);
}

}  // namespace vtt
