#include "transfer/driver.h"

#include <array>
#include <atomic>
#include <exception>
#include <future>
#include <memory>
#include <optional>
#include <system_error>

#include "analysis/fill_drift_and_deflection.h"
#include "analysis/fill_trelk_nodal_mass.h"
#include "analysis/fill_trelk_load.h"
#include "analysis/fill_trelk_load_case.h"
#include "analysis/fill_trelk_section_cut.h"
#include "analysis/write_record_file.h"
#include "components/fill_trelk_component_compound.h"
#include "components/fill_trelk_component_elastic.h"
#include "components/fill_trelk_component_inelastic.h"
#include "components/fill_trelk_component_material.h"
#include "components/fill_trelk_component_xsect.h"
#include "elements/fill_trelk_element.h"
#include "elements/fill_trelk_frame.h"
#include "elements/fill_trelk_node.h"
#include "source/host_model.h"
#include "source/second_thread.h"
#include "source/vask_model.h"
#include "store/structure_files.h"
#include "store/trelk_store.h"
#include "transfer/messages.h"
#include "transfer/system_services.h"

namespace vtt {
namespace {

void SetUnits(TransferRun& run) { run.store.SetTrelkUnits(run.host); }

void ReadSourceModel(TransferRun& run) {
  if (run.trelk_path) {
    run.model->SetRecordFileWriter(MakeRecordFileWriter(
        *run.trelk_path, std::string(kEqkeGroupName), run.messages,
        [&run](std::string_view name) {
          if (run.progress.on_record_file) run.progress.on_record_file(name);
        }));
  }
  run.model->SetPresentUnits(run.store.Units);
  run.model->SetDropObserver(run.progress.on_drop);
  run.model->ReadVaskData(run.progress.on_read_stage);
  run.host.SourceModelRead();
  // Every record file is written during the reading; the writer must not outlive `run`.
  run.model->SetRecordFileWriter(nullptr);
}

// The identification block is the same whatever target version the user chose.
void SetIdentification(TransferRun& run) {
  TrelkStore& store = run.store;
  store.FileIdText = "TRKD";
  store.VersionText = "4.0";
  store.VersionNumber = 4;
  store.ToolCode = 5;
  store.ProductTag = "TRELK V4";
  store.ProductName = "TRELK";
  store.StructureNote.clear();
  store.SetStructureName(run.structure_name);
  store.StructureTitle = "Model Transferred";
  store.StructuresRoot = run.folder;
}

void InitStore(TransferRun& run) { run.store.InitTrelkStore(); }

void FillNodes(TransferRun& run) { FillTrelkNodes(*run.model, run.store, run.messages); }

void FillMaterials(TransferRun& run) { FillTrelkMaterials(*run.model, run.store); }

void FillCrossSections(TransferRun& run) { FillTrelkCrossSections(*run.model, run.store); }

void FillReleases(TransferRun& run) { FillTrelkReleaseComponents(*run.model, run.store); }

void FillFemaComponents(TransferRun& run) { FillTrelkFemaComponents(*run.model, run.store); }

void FillCompounds(TransferRun& run) { FillTrelkCompoundComponents(*run.model, run.store); }

}  // namespace

// The nodal masses and loads and the structure frames on a second thread.
//
// The nodal masses read the nodes' records and masses, the nodal loads those masses and
// the nodal load objects; together they write only the mass and nodal-load parts of the
// store and each load pattern's nodal-load name. The components and elements (stages 7 to
// 12) read and write none of these, nor look anything up but the nodes, whose label index
// is settled first. So the masses and loads go to a second thread when the diaphragms are
// made, and the structure frames follow there once the elements are made: they read the
// source model (labels, element numbers, nodes) and the host's groups, and write only the
// structure frames and their flags, while this thread makes the frame loads and then the
// base cuts, which write only the cuts. Nothing on this thread asks the host meanwhile, or
// looks up a frame or an area by label.
//
// So that nothing tells the difference, each part's drop notes are held until its stage's
// turn, and its failure surfaces there: this thread waits for the masses at stage 13, the
// nodal loads at 14 and the frames at 16, so that a failure of an earlier stage on either
// side comes first; a failure of the cuts, made before that wait, waits for it.
class SecondThreadFill {
 public:
  explicit SecondThreadFill(TransferRun& run)
      : listened_(run.model->DropObserverIfAny() != nullptr),
        massFilled_(massFilledPromise_.get_future()),
        loadNodesFilled_(loadNodesFilledPromise_.get_future()),
        framesFilled_(framesFilledPromise_.get_future()) {
    thread_ = std::async(std::launch::async, [this, &run] {
      VaskModelObj& model = *run.model;
      if (!Part(nullptr, massFilledPromise_, [&] { FillTrelkNodalMass(model, run.store); }) ||
          !Part(&loadNotes_, loadNodesFilledPromise_,
                [&] { FillTrelkLoadNode(model, run.store); })) {
        return;
      }
      elements_.wait(kElementsAwaited);
      if (elements_.load() != kElementsFilled) return;
      Part(nullptr, framesFilledPromise_, [&] { FillTrelkFrames(run.host, model, run.store); });
    });
  }
  SecondThreadFill(const SecondThreadFill&) = delete;
  SecondThreadFill& operator=(const SecondThreadFill&) = delete;

  // Stops the second thread between parts, and waits for it.
  ~SecondThreadFill() {
    stop_ = true;
    elements_ = kStopped;
    elements_.notify_one();
    if (thread_.valid()) thread_.wait();
  }

  // The elements are made: the structure frames may follow.
  void ElementsFilled() {
    elements_ = kElementsFilled;
    elements_.notify_one();
  }

  void JoinNodalMass(const VaskModelObj& model) { Join(massFilled_, nullptr, model); }
  void JoinLoadNodes(const VaskModelObj& model) { Join(loadNodesFilled_, &loadNotes_, model); }
  void JoinFrames(const VaskModelObj& model) { Join(framesFilled_, nullptr, model); }

  // The failure of the base cuts, made on the first thread beside the structure frames.
  std::exception_ptr cutsFailed;

 private:
  static constexpr int kElementsAwaited = 0;
  static constexpr int kElementsFilled = 1;
  static constexpr int kStopped = 2;

  // Runs one part, holding its notes; false when it failed.
  template <class Fill>
  bool Part(HeldDropNotes* notes, std::promise<void>& done, Fill fill) {
    std::optional<HeldDropNotes::Holding> holding;
    if (notes != nullptr) holding.emplace(*notes, listened_);
    try {
      if (!stop_) fill();
      done.set_value();
      return true;
    } catch (...) {
      done.set_exception(std::current_exception());
      return false;
    }
  }

  // A part, its notes told after all that came before; its failure, if it failed.
  static void Join(std::future<void>& done, HeldDropNotes* notes, const VaskModelObj& model) {
    done.wait();
    if (notes != nullptr) notes->Release(model);
    done.get();
  }

  const bool listened_;  // whether anyone listens for drop notes
  std::atomic<bool> stop_{false};
  std::atomic<int> elements_{kElementsAwaited};
  HeldDropNotes loadNotes_;
  std::promise<void> massFilledPromise_;
  std::promise<void> loadNodesFilledPromise_;
  std::promise<void> framesFilledPromise_;
  std::future<void> massFilled_;
  std::future<void> loadNodesFilled_;
  std::future<void> framesFilled_;
  std::future<void> thread_;  // last: made when everything it uses is
};

void TransferRun::SecondThreadFillEnd::operator()(SecondThreadFill* fill) const { delete fill; }

namespace {

void FillDiaphragms(TransferRun& run) {
  FillTrelkDiaphragmConstraints(*run.model, run.store);
  if (SecondThreadWork() && run.host.AnswersFromTwoThreads() && run.model->SettleNodeLookUps()) {
    try {
      run.second_fill.reset(new SecondThreadFill(run));
    } catch (const std::system_error&) {
      // No thread to be had: every step in turn.
    }
  }
}

void FillElements(TransferRun& run) {
  FillTrelkElements(*run.model, run.store);
  if (run.second_fill) run.second_fill->ElementsFilled();
}

void FillNodalMass(TransferRun& run) {
  if (run.second_fill) {
    run.second_fill->JoinNodalMass(*run.model);
    return;
  }
  FillTrelkNodalMass(*run.model, run.store);
}

void FillLoadNodes(TransferRun& run) {
  if (run.second_fill) {
    run.second_fill->JoinLoadNodes(*run.model);
    return;
  }
  FillTrelkLoadNode(*run.model, run.store);
}

void FillLoadFrames(TransferRun& run) { FillTrelkLoadFrame(*run.model, run.store); }

void FillSelfWeight(TransferRun& run) { FillTrelkSelfWeight(*run.model, run.store); }

// With the frames on the second thread, the cuts are made here while they are; a failure
// of the cuts waits for its own stage.
void FillStructureFrames(TransferRun& run) {
  if (run.second_fill) {
    try {
      FillTrelkSectionCuts(*run.model, run.store);
    } catch (...) {
      run.second_fill->cutsFailed = std::current_exception();
    }
    run.second_fill->JoinFrames(*run.model);
    return;
  }
  FillTrelkFrames(run.host, *run.model, run.store);
}

void FillSectionCuts(TransferRun& run) {
  if (run.second_fill) {
    // Made beside the structure frames.
    if (run.second_fill->cutsFailed) std::rethrow_exception(run.second_fill->cutsFailed);
    return;
  }
  FillTrelkSectionCuts(*run.model, run.store);
}

void FillDrifts(TransferRun& run) { FillTrelkDrift(*run.model, run.store); }

void FillLoadCases(TransferRun& run) {
  LoadCaseContext context;
  context.delete_folder = [](const std::filesystem::path& folder) {
    DeleteFolderTree(folder.string());
  };
  FillTrelkLoadCases(run.host, *run.model, run.store, context);
}

void WriteFiles(TransferRun& run) { WriteTrelkStructure(run.store, "TRKD", true, 0, run.messages); }

void DisposeModel(TransferRun& run) { run.model->Dispose(); }

constexpr std::array<TransferStage, 22> kStages = {{
    {"SetTrelkUnits", &SetUnits},
    {"ReadVaskData", &ReadSourceModel},
    {"Identification", &SetIdentification},
    {"InitTrelkStore", &InitStore},
    {"FillTrelkNodes", &FillNodes},
    {"FillTrelkDiaphragmConstraints", &FillDiaphragms},
    {"FillTrelkMaterials", &FillMaterials},
    {"FillTrelkCrossSections", &FillCrossSections},
    {"FillTrelkReleaseComponents", &FillReleases},
    {"FillTrelkFemaComponents", &FillFemaComponents},
    {"FillTrelkCompoundComponents", &FillCompounds},
    {"FillTrelkElements", &FillElements},
    {"FillTrelkNodalMass", &FillNodalMass},
    {"FillTrelkLoadNode", &FillLoadNodes},
    {"FillTrelkLoadFrame", &FillLoadFrames},
    {"FillTrelkFrames", &FillStructureFrames},
    {"FillTrelkSectionCuts", &FillSectionCuts},
    {"FillTrelkSelfWeight", &FillSelfWeight},
    {"FillTrelkDrift", &FillDrifts},
    {"FillTrelkLoadCases", &FillLoadCases},
    {"WriteTrelkStructure", &WriteFiles},
    {"Dispose", &DisposeModel},
}};

}  // namespace

std::span<const TransferStage> TransferStages() { return kStages; }

void RunTransfer(TransferRun& run) {
  // The source model lives from its reading to its release, and no longer.
  VaskModelObj model(run.host);
  run.model = &model;
  // Whatever ends the run, work on a second thread ends before the source model goes.
  struct WaitForSecondThread {
    TransferRun& run;
    ~WaitForSecondThread() { run.second_fill.reset(); }
  } wait_for_second_thread{run};
  int number = 0;
  for (const TransferStage& stage : kStages) {
    ++number;
    if (stage.run == nullptr) continue;
    if (run.progress.on_stage) run.progress.on_stage(number, stage.name);
    stage.run(run);
  }
  run.model = nullptr;
}

TransformOutcome Transform(HostModel* host, TrelkStore& store, UserMessages& messages,
                           const std::string& structure_dir, const std::string& structure_name,
                           const TransferProgress& progress) {
  return Transform(host, store, messages, structure_dir, structure_name, std::nullopt, progress);
}

TransformOutcome Transform(HostModel* host, TrelkStore& store, UserMessages& messages,
                           const std::string& structure_dir, const std::string& structure_name,
                           const std::optional<std::string>& trelk_path,
                           const TransferProgress& progress) {
  if (host == nullptr) {
    messages.Show({"", "No Model", MessageIcon::Critical});
    return TransformOutcome::NoModel;
  }
  if (host->GetPointCount() < 1) {
    messages.Show({"", "Empty Model", MessageIcon::Critical});
    return TransformOutcome::EmptyModel;
  }
  TransferRun run{*host, store, messages, structure_dir, structure_name, trelk_path, progress};
  RunTransfer(run);
  messages.Show({"", "Transfer Complete", MessageIcon::None});
  return TransformOutcome::Complete;
}

}  // namespace vtt
