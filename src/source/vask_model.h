// VaskModelObj: the root of the in-memory copy of the Vask model.
//
// It owns every container of source objects, reads the host once through `HostModel` in a
// fixed sequence of 28 stages (`ReadVaskData`), answers look-ups by label and two small
// geometric queries, and releases everything in `Dispose`. One instance serves one
// transfer; the driver creates it and passes it to the translation steps, which read it
// and write their record numbers back into the objects.
//
// Lists are one-based: NodeObj(1) is the first node, iteration runs 1 to NodeNum().
// Look-ups by label answer what a linear search from the first object answers: the first
// object with exactly that label (case-sensitive), or none. They go through the lazy hash
// index of VaskObjList, whose rule (see vask_obj_list.h) the readers follow by setting an
// object's label right after adding it; after changing a label that was already set, call
// LabelsChanged().
#pragma once

#include <array>
#include <functional>
#include <future>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "source/drop_note.h"
#include "source/host_model.h"
#include "source/vask_area.h"
#include "source/vask_coincident_points.h"
#include "source/vask_drift_nodes.h"
#include "source/vask_frame.h"
#include "source/vask_load.h"
#include "source/vask_node.h"
#include "source/vask_obj_list.h"
#include "source/vask_one_based.h"
#include "source/vask_prop_area_sect.h"
#include "source/vask_prop_frame_sect.h"
#include "source/vask_prop_material.h"
#include "source/vask_th_func.h"
#include "store/units.h"

namespace vtt {

// Half the length of the cross product of the diagonals P3 - P2 and P4 - P1 of a
// quadrilateral, corners in the order given, indexed 0 to 3. With `projected` the z
// differences count as 0, which gives the area of the plan projection.
double QuadArea(const std::array<double, 4>& x, const std::array<double, 4>& y,
                const std::array<double, 4>& z, bool projected);

// The distance from node I to node J; with `projected`, of their plan projections.
double FrameLengthBetween(const VaskNodeObj& nodeI, const VaskNodeObj& nodeJ, bool projected);

class VaskModelObj {
 public:
  // One stage of ReadVaskData: its name, and its function; ReadVaskData skips an entry
  // without one.
  struct ReadStage {
    std::string_view name;
    void (VaskModelObj::*run)();
  };
  // Told before each stage that runs: its number, 1 to 28, and its name.
  using ReadProgress = std::function<void(int stageNumber, std::string_view stageName)>;

  explicit VaskModelObj(HostModel& host);

  VaskModelObj(const VaskModelObj&) = delete;
  VaskModelObj& operator=(const VaskModelObj&) = delete;

  // ---- Containers ----
  int NodeNum() const { return nodes_.Num(); }
  VaskNodeObj* NodeObj(int i) const { return nodes_(i); }
  int ConstraintNum() const { return constraints_.Num(); }
  VaskConstraintObj* ConstraintObj(int i) const { return constraints_(i); }
  int FrameReleaseNum() const { return frameReleases_.Num(); }
  VaskFrameReleaseObj* FrameReleaseObj(int i) const { return frameReleases_(i); }
  int FrameNum() const { return frames_.Num(); }
  VaskFrameObj* FrameObj(int i) const { return frames_(i); }
  int AreaNum() const { return areas_.Num(); }
  VaskAreaObj* AreaObj(int i) const { return areas_(i); }
  int PropMatNum() const { return materials_.Num(); }
  VaskPropMaterialObj* PropMatObj(int i) const { return materials_(i); }
  int PropFrameSectNum() const { return frameSections_.Num(); }
  VaskPropFrameSectObj* PropFrameSectObj(int i) const { return frameSections_(i); }
  int PropEmbedFrameSectNum() const { return embedFrameSections_.Num(); }
  VaskPropFrameSectObj* PropEmbedFrameSectObj(int i) const { return embedFrameSections_(i); }
  int PropAreaSectNum() const { return areaSections_.Num(); }
  VaskPropAreaSectObj* PropAreaSectObj(int i) const { return areaSections_(i); }
  int LoadPatternNum() const { return loadPatterns_.Num(); }
  VaskLoadPatternObj* LoadPatternObj(int i) const { return loadPatterns_(i); }
  int LoadNodeNum() const { return loadNodes_.Num(); }
  VaskLoadNodeObj* LoadNodeObj(int i) const { return loadNodes_(i); }
  int LoadAreaNum() const { return loadAreas_.Num(); }
  VaskLoadAreaObj* LoadAreaObj(int i) const { return loadAreas_(i); }
  int THFuncNum() const { return thFuncs_.Num(); }
  VaskTHFuncObj* THFuncObj(int i) const { return thFuncs_(i); }

  // The drift pair chosen by FindDriftNodes; empty when none was kept.
  VaskNodeObj* NodeTopObj() const { return nodeTop_; }
  VaskNodeObj* NodeBotObj() const { return nodeBot_; }

  // Appends a node with `id` = its position + 1, the target's record number for it.
  // Restraints are U1, U2, U3, R1, R2, R3 from index 0, as the host gives them.
  VaskNodeObj* AddNode(std::string label, double x, double y, double z, const DofFlags& restraints);
  VaskConstraintObj* ConstraintAdd();
  // Removes the constraint at `position`; later ones move one place down. Nodes may keep
  // referring to it: it stays alive until Dispose.
  void ConstraintRemove(int position);
  // Removes every constraint whose position satisfies `removed`, in one pass.
  void ConstraintRemoveWhere(const std::function<bool(int position)>& removed);
  VaskFrameReleaseObj* FrameReleaseAdd();
  VaskFrameObj* AddFrame();
  VaskAreaObj* AddArea();
  VaskPropMaterialObj* AddPropMaterial();
  VaskPropFrameSectObj* AddPropFrameSect();
  VaskPropFrameSectObj* AddPropEmbedFrameSect();
  VaskPropAreaSectObj* AddPropAreaSect();
  VaskLoadPatternObj* AddLoadPattern();
  VaskLoadNodeObj* AddLoadNode();
  VaskLoadAreaObj* AddLoadArea();
  VaskTHFuncObj* AddTHFuncObj();

  // Mass source of the host: 1 element and additional mass, 2 loads, 3 both; and the
  // patterns with their scale factors, one-based, MassSrcLoadNum of them.
  int MassSrcOption = 0;
  int MassSrcLoadNum = 0;
  OneBasedList<std::string> MassSrcLoadPattern;
  OneBasedList<double> MassSrcSF;

  // ---- Units ----
  // The units of the structure, as the store took them from the host's present units.
  // The driver hands them over before the reading; when nobody did, the host is asked
  // once, at the first use.
  void SetPresentUnits(const UnitBlock& units) { presentUnits_ = units; }
  const UnitBlock& PresentUnits() const;

  // ---- Life cycle ----
  // Releases the containers in the order nodes, frames, areas, materials, frame sections,
  // embedded frame sections, area sections, then the others; every count becomes 0.
  void Dispose();
  void ReadVaskData(const ReadProgress& progress = {});
  // The 28 stages in the order ReadVaskData runs them.
  static std::span<const ReadStage> ReadStages();

  // ---- Look-ups by label ----
  // The node of a label that must be known; a run-time failure naming `owner` otherwise.
  const VaskNodeObj& RequiredNode(std::string_view label, std::string_view owner) const;
  // The same for the end or corner nodes of a frame or an area: the owner's name is put
  // together only when the node is missing, not on every one of millions of look-ups.
  struct NodeOwner {
    std::string_view kind;   // "Frame", "Area"
    std::string_view label;  // the object's label, quoted in the message
    bool named = true;       // false: the kind alone names the owner ("Nodal load")
    bool quoted = true;      // false: the label follows the kind bare ("Frame B12")
    std::string Text() const;
  };
  // `hint`: the id the node is expected to have (a frame's NodeI, an area's idNodes), which
  // spares the search when it holds; any other value costs only the search. A node's id
  // is its position plus 1 (AddNode), the place of its record in the structure.
  const VaskNodeObj& RequiredNode(std::string_view label, const NodeOwner& owner,
                                  int hint = 0) const;
  // NodeObjGet with the same kind of hint.
  VaskNodeObj* NodeObjNear(std::string_view label, int hint) const;
  // The id of the first node with the label, or -1.
  int NodeIdGet(std::string_view label) const;
  // The same, tried first at each id of `hints` in turn (VaskObjList::AnswersAt): a
  // reader that meets nodes in a regular order guesses which one comes next.
  int NodeIdFrom(std::string_view label, std::initializer_list<int> hints) const;
  // Where the node of an id would be: ids are positions plus 1. Only a guess for look-ups,
  // which check it.
  static int PositionOfId(int id) { return id - 1; }
  VaskNodeObj* NodeObjGet(std::string_view label) const;
  VaskLoadNodeObj* LoadNodeObjGet(std::string_view label) const;
  // The position of the first nodal load object with the label, or 0, tried first at
  // `hint` (VaskObjList::FindNear).
  int LoadNodePositionNear(std::string_view label, int hint) const {
    return loadNodes_.FindNear(label, hint);
  }
  VaskTHFuncObj* THFuncObjGet(std::string_view label) const;
  VaskFrameObj* FrameObjGet(std::string_view label) const;
  // Positions (from 1) of the first frame and the first area with the label, or 0.
  int FramePositionGet(std::string_view label) const { return frames_.Find(label); }
  int AreaPositionGet(std::string_view label) const { return areas_.Find(label); }
  // The same answers, tried first at `hint` (VaskObjList::FindNear).
  // Brings the nodes' label index up to date; true when look-ups of nodes then only read
  // it, so that two threads may make them at once while no node is added or renamed.
  bool SettleNodeLookUps() const { return nodes_.SettleLookUps(); }
  int NodePositionNear(std::string_view label, int hint) const {
    return nodes_.FindNear(label, hint);
  }
  int FramePositionNear(std::string_view label, int hint) const {
    return frames_.FindNear(label, hint);
  }
  int AreaPositionNear(std::string_view label, int hint) const {
    return areas_.FindNear(label, hint);
  }
  // The position of the first frame or area with the label of the one at `position`
  // (VaskObjList::FirstOfLabelAt).
  int FirstFrameOfLabelAt(int position) const { return frames_.FirstOfLabelAt(position); }
  int FirstAreaOfLabelAt(int position) const { return areas_.FirstOfLabelAt(position); }
  // Searches PropFrameSectObj only, never the embedded-beam sections.
  VaskPropFrameSectObj* PropFrameSectObjGet(std::string_view label) const;
  VaskPropMaterialObj* PropMaterialObjGet(std::string_view label) const;
  VaskLoadPatternObj* LoadPatternObjGet(std::string_view label) const;
  VaskConstraintObj* ConstraintFind(std::string_view label) const;
  // Declares that labels already set have been changed; the look-ups rebuild their index.
  void LabelsChanged();

  // ---- Frames (vask_model_frames.cc) ----
  // 1 column, 2 beam, 3 brace, from the direction of the frame's axis.
  int FrameOrientationGet(const VaskFrameObj& frame) const;
  // The first stored release pattern with these six flags (U1..R3 from index 0), or none.
  VaskFrameReleaseObj* FrameReleaseFind(const DofFlags& flags) const;

  // ---- Areas (vask_model_areas.cc) ----
  // The first present node within 0.000001 of (x, y, z) in each coordinate, or a new
  // unsupported node labelled "NewNode" and the first free number from `number` on.
  VaskNodeObj* AddNewNode(int number, double x, double y, double z);
  // Puts the area's four nodes in their normal order: the lower pair first, both pairs
  // running the same way in plan.
  void NormaliseAreaNodes(VaskAreaObj& area) const;
  // 1 wall, 2 floor, 3 ramp, from the area's normal.
  int AreaOrientationGet(const VaskAreaObj& area) const;
  // The first node, from node 1, whose coordinates each differ from (x, y, z) by less than
  // 0.000001, or none. Goes through a grid of every node (see vask_coincident_points.h),
  // kept up to date as nodes are added; node coordinates must not change once added.
  VaskNodeObj* FindCoincidentNode(double x, double y, double z) const;
  // The same answer by the literal search from node 1.
  VaskNodeObj* FindCoincidentNodeLinear(double x, double y, double z) const;

  // ---- Geometry ----
  // Area of a 4-noded area from its nodes in stored order (see QuadArea); 0 when NumNodes
  // is not 4. With `projected`, the area of its plan projection.
  double AreaObjAreaGet(const VaskAreaObj& area, bool projected) const;
  // Distance between the frame's end nodes; with `projected`, the plan length.
  double FrameObjLengthGet(const VaskFrameObj& frame, bool projected) const;

  // ---- Loads (vask_model_loads.cc) ----
  // Stage 13: a point load standing at a frame end (RD within 1e-6 of 0 or 1) becomes a
  // new nodal load of that end node, with the frame's positive-downward value as F3.
  void CheckLoadFramePoint();
  // Whether the readers take loads of a pattern of this host type: every type passes.
  static bool IsLoadPatternDeadOrLive(int type);

  // Stage 26: sets NodeTopObj and NodeBotObj to the drift pair (see vask_drift_nodes.h),
  // unless no pair was found or either node is the last node of the model, whose
  // position is not below NodeNum. Uses the indexed search.
  void FindDriftNodes();
  // The same through the literal double loop.
  void FindDriftNodesLiteral();

 private:
  // Stage 1 (vask_model_materials.cc): makes sure the host has a concrete, a steel and a
  // rebar material, then reads every material of those three types.
  void ReadPropMaterials();
  // Stage 2 (vask_model_sections.cc): every frame section of a type of at least 1.
  void ReadPropFrameSections();
  // Stage 3 (vask_model_sections.cc): shell sections, thin (shell type 1) and layered (6).
  void ReadPropAreaSections();
  // Stage 4: every point of the host, in host order.
  void ReadNodes();
  // Stage 5 (vask_model_constraints.cc): the host's rigid diaphragms with a normal along
  // Z, without those that hold a support, merged where they share nodes.
  void ReadConstraints();
  // Stage 6 (vask_model_frames.cc): frames whose section was read, with their end nodes
  // and local axis angle.
  void ReadFrames();
  // Stage 7 (vask_model_frames.cc): the distinct end-release patterns, shared by every
  // frame end that has one.
  void ReadFrameReleases();
  // Stage 18 (vask_model_frames.cc): each frame to its section.
  void LinkFrameSections();
  // Stage 20 (vask_model_frames.cc): column, beam or brace by geometry; section shape and
  // material kind.
  void ClassifyFrames();
  // Stage 27 (vask_model_frames.cc): hinges at the frame ends.
  void ReadFrameHinges();
  // Stage 8 (vask_model_areas.cc): 3- and 4-noded shells; a triangle becomes three
  // quadrilaterals on new nodes, and every area's nodes are put in their normal order.
  void ReadAreas();
  // Stage 19 (vask_model_areas.cc): each area to its section.
  void LinkAreaSections();
  // Stage 21 (vask_model_areas.cc): wall, floor or ramp by the area's normal.
  void ClassifyAreas();
  // Stage 28 (vask_model_areas.cc): shell nodes where frames join, and the sections of
  // the beams that tie them in.
  void DetectEmbeddedBeams();
  // Its first pass: IsEmbed of every area corner, from the host's connectivity. It reads
  // only areas, nodes and the host, and writes only IsEmbed, which no stage from the
  // spreading of the area loads to stage 28 reads or changes, and none of them adds or
  // renames a node; so with a host that answers from two threads it runs on the second
  // thread from the spreading of the area loads on, and stage 28 waits for it.
  void MarkFrameJoins();
  // Whether stages may run on a second thread: allowed, a host that answers from two
  // threads, and the nodes' look-ups settled (no node is added after stage 8).
  bool CanUseSecondThread() const;
  // Stages 11 to 22 with a second thread (see vask_model.cc); false, having run nothing,
  // when the stage table is not the one this was made for.
  bool ReadLoadsWithSecondThread(const ReadProgress& progress);
  // Waits for work on a second thread, if any, before the objects it reads go.
  void WaitForSecondThread();
  // Stage 16 (vask_model_sections.cc): frame and embedded sections to their materials.
  void LinkFrameSectionMaterials();
  // Stage 17 (vask_model_sections.cc): area sections to their materials, then the layer
  // rule of every layered shell.
  void LinkAreaSectionMaterials();
  // ---- Load stages (vask_model_loads.cc) ----
  // Stage 9: every load pattern of the host with its self-weight multiplier.
  void ReadLoadPatterns();
  // Stage 10: the nodal loads in "GLOBAL", one object per loaded node.
  void ReadLoadNodes();
  // Stage 11: distributed loads of every frame, superposed and sorted per pattern.
  void ReadFramesLoadDistributed();
  // Stage 12: point loads of every frame, sorted and folded per pattern.
  void ReadFramesLoadPoint();
  // Stage 14: uniform area loads; an area with one load the target cannot take loses all.
  void ReadLoadAreas();
  // Stage 15: each area load spread to the four corners of every 4-noded area of its label.
  void SpreadLoadAreas();
  // Stage 24: which patterns carry nodal loads, frame loads and self weight.
  void MarkLoadPatternContents();
  // ---- end of load stages ----

  // ---- Mass stage (vask_model_mass.cc) ----
  // Stage 22: the host's mass source, and the four mass accumulators of every node.
  void ReadMass();
  // Its two halves: the mass source and the mass of points, frames and areas, which
  // needs the sections linked but no load; then the mass of the loads, which needs every
  // nodal load. With a second thread the first half is read there, beside stage 15.
 public:
  class MassOfObjects;  // what the first half leaves to the second (vask_model_mass.cc)

 private:
  std::shared_ptr<MassOfObjects> ReadMassOfObjects();
  void ReadMassOfLoads(MassOfObjects& objects);
  // ---- end of mass stage ----

  // ---- Time-history stage (vask_model_th_func.cc) ----
 public:
  // One record file that the stage asks for: the function's name, the title, the count N
  // and the points, the largest time (1.0 when it is negative), the time step and whether
  // the arrays hold point i at index i - 1 (`zeroBased`) or at index i. The views are valid
  // during the call only.
  struct RecordFileRequest {
    std::string_view name;
    std::string_view title;
    int count = 0;
    std::span<const double> values;
    std::span<const double> times;
    double duration = 0.0;
    double dt = 0.0;
    bool zeroBased = false;
  };
  // Writes one record file; the driver gives one that knows the records folder.
  using RecordFileWriter = std::function<void(const RecordFileRequest&)>;
  // Without a writer, ReadVaskTHFunc writes no record file.
  void SetRecordFileWriter(RecordFileWriter writer) { recordFileWriter_ = std::move(writer); }

  // Stage 23: every time-history function of the host as (time, value) points, its record
  // file written at once, and a VaskTHFuncObj kept for the dynamic load cases. The time
  // step starts at 0.05 for the whole stage; a function read from a file sets it, and it
  // stays for the functions after it.
  void ReadVaskTHFunc();

  // ---- Objects left out ----
  // Told of every host object that a rule leaves out; none by default.
  void SetDropObserver(DropObserver observer) { dropObserver_ = std::move(observer); }
  void NoteDrop(std::string kind, std::string name, std::string reason) const;
  // The observer for the load objects' own notes; none when nobody listens. On a second
  // thread, one that holds the notes until their stage's turn (ReadVaskData).
  const DropObserver* DropObserverIfAny() const;

 private:
  RecordFileWriter recordFileWriter_;
  DropObserver dropObserver_;
  // ---- end of time-history stage ----

  // Stage 25: reads nothing. It keeps its place so that the stage numbers stay those that
  // the rest of the system cites.
  void ReadReserved();

  std::vector<DriftPoint> NodePoints() const;
  void KeepDriftPair(const DriftPair& pair);

  HostModel& host_;
  mutable std::optional<UnitBlock> presentUnits_;
  VaskObjList<VaskNodeObj> nodes_;
  VaskObjList<VaskConstraintObj> constraints_;
  VaskObjList<VaskFrameReleaseObj> frameReleases_;
  VaskObjList<VaskFrameObj> frames_;
  VaskObjList<VaskAreaObj> areas_;
  VaskObjList<VaskPropMaterialObj> materials_;
  VaskObjList<VaskPropFrameSectObj> frameSections_;
  VaskObjList<VaskPropFrameSectObj> embedFrameSections_;
  VaskObjList<VaskPropAreaSectObj> areaSections_;
  VaskObjList<VaskLoadPatternObj> loadPatterns_;
  VaskObjList<VaskLoadNodeObj> loadNodes_;
  VaskObjList<VaskLoadAreaObj> loadAreas_;
  VaskObjList<VaskTHFuncObj> thFuncs_;
  VaskNodeObj* nodeTop_ = nullptr;
  VaskNodeObj* nodeBot_ = nullptr;
  // Grid of the nodes 1 to its Num() for FindCoincidentNode (vask_model_areas.cc); it
  // catches up with nodes added since, and ReadAreas starts it afresh.
  mutable CoincidentPointIndex coincidentNodes_;
  // The end of MarkFrameJoins on the second thread, for stage 28.
  std::future<void> frameJoins_{};
  // The second thread while it works on after stage 22 has begun. Last of the members, so
  // that it is waited for before any list goes.
  std::future<void> secondThread_{};
};

}  // namespace vtt
