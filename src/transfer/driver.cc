#include "transfer/driver.h"

#include <array>
#include <future>
#include <memory>

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

void FillDiaphragms(TransferRun& run) { FillTrelkDiaphragmConstraints(*run.model, run.store); }

void FillMaterials(TransferRun& run) { FillTrelkMaterials(*run.model, run.store); }

void FillCrossSections(TransferRun& run) { FillTrelkCrossSections(*run.model, run.store); }

void FillReleases(TransferRun& run) { FillTrelkReleaseComponents(*run.model, run.store); }

void FillFemaComponents(TransferRun& run) { FillTrelkFemaComponents(*run.model, run.store); }

void FillCompounds(TransferRun& run) { FillTrelkCompoundComponents(*run.model, run.store); }

void FillElements(TransferRun& run) { FillTrelkElements(*run.model, run.store); }

// The structure frames and the base cuts read the source model (labels, element numbers,
// support nodes) and the host's groups, and write only their own parts of the store: the
// frames with their node and element flags, the cuts with their members and group flags.
// The nodal masses and loads read and write none of these, nor ask the host anything, so
// on a second processor the two run side by side when the host takes questions from a
// second thread. The nodes' label index is settled first, since both sides look nodes up;
// the frames' and areas' indexes are the frames' side's alone. Stage FillTrelkFrames
// waits for them, so a failure on either side surfaces where it would in a run of one
// stage after the other; a failure of the nodal masses or loads comes first, as it would.
void StartFramesAndCuts(TransferRun& run) {
  if (!SecondThreadWork() || !run.host.AnswersFromTwoThreads()) return;
  if (!run.model->SettleNodeLookUps()) return;  // made in turn, at their own stages
  run.frames_and_cuts = std::async(std::launch::async, [&run] {
    FillTrelkFrames(run.host, *run.model, run.store);
    FillTrelkSectionCuts(*run.model, run.store);
  });
  run.cuts_made = true;
}

void FillNodalMass(TransferRun& run) {
  StartFramesAndCuts(run);
  FillTrelkNodalMass(*run.model, run.store);
}

void FillLoadNodes(TransferRun& run) { FillTrelkLoadNode(*run.model, run.store); }

void FillLoadFrames(TransferRun& run) { FillTrelkLoadFrame(*run.model, run.store); }

void FillSelfWeight(TransferRun& run) { FillTrelkSelfWeight(*run.model, run.store); }

void FillStructureFrames(TransferRun& run) {
  if (run.frames_and_cuts.valid()) {
    run.frames_and_cuts.get();
    return;
  }
  FillTrelkFrames(run.host, *run.model, run.store);
}

void FillSectionCuts(TransferRun& run) {
  if (run.cuts_made) return;
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
    ~WaitForSecondThread() {
      if (run.frames_and_cuts.valid()) run.frames_and_cuts.wait();
    }
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
