// The transfer driver: one straight run from the host model to the structure files.
//
// `Transform` guards the run (no host, empty model); `RunTransfer` carries it through its
// fixed stages: units, reading the source model, the identification block, the store's
// initial state, the fill steps in their fixed order, the files, and the release of the
// source model. There is no branch and no retry: a failure (TransferFailure, or a failed
// host call that a stage cannot pass) ends the run and leaves what is on disk.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "source/drop_note.h"

namespace vtt {

class HostModel;
class TrelkStore;
class UserMessages;
class VaskModelObj;
class SecondThreadFill;

// Called as each stage begins: the stage's name, and for reading stages of the source
// model, the reading stage's number (1 to 28) and name.
struct TransferProgress {
  std::function<void(int stage, std::string_view name)> on_stage;
  std::function<void(int read_stage, std::string_view name)> on_read_stage;
  // Called after the record file of a time-history function has been written, with the
  // function's name; not for a function whose file could not be written (a message has
  // said so).
  std::function<void(std::string_view function_name)> on_record_file;
  // Told of every host object that the transfer leaves out, with the reason; the run and
  // its files are the same with or without it.
  std::function<void(const DropNote&)> on_drop;
};

// Everything one run works on.
struct TransferRun {
  HostModel& host;
  TrelkStore& store;
  UserMessages& messages;
  std::string folder;          // the structures folder chosen by the user
  std::string structure_name;  // as typed
  // Trelk's data folder, whose Records folder receives a record file for every
  // time-history function; none: the functions are read but no record file is written.
  std::optional<std::string> trelk_path;
  TransferProgress progress;
  VaskModelObj* model = nullptr;  // the source model, alive from stage 2 to stage 22
  // The fill steps made on a second thread beside the others, when they are (see the fill
  // steps in driver.cc). Letting it go stops that thread between steps and waits for it.
  struct SecondThreadFillEnd {
    void operator()(SecondThreadFill* fill) const;
  };
  std::unique_ptr<SecondThreadFill, SecondThreadFillEnd> second_fill{};
};

struct TransferStage {
  std::string_view name;
  // Null for a fill step that this build does not carry yet: it is simply not called.
  void (*run)(TransferRun& run);
};

// The 22 stages of a transfer, in their fixed order.
std::span<const TransferStage> TransferStages();

// Runs every stage in order.
void RunTransfer(TransferRun& run);

enum class TransformOutcome { Complete, NoModel, EmptyModel };

// The guard in front of RunTransfer: "No Model" when there is no host connection, "Empty
// Model" when the host has no points; otherwise the transfer and "Transfer Complete".
TransformOutcome Transform(HostModel* host, TrelkStore& store, UserMessages& messages,
                           const std::string& structure_dir, const std::string& structure_name,
                           const TransferProgress& progress = {});
// The same, writing the record files of the time-history functions under `trelk_path`
// (see TransferRun).
TransformOutcome Transform(HostModel* host, TrelkStore& store, UserMessages& messages,
                           const std::string& structure_dir, const std::string& structure_name,
                           const std::optional<std::string>& trelk_path,
                           const TransferProgress& progress = {});

}  // namespace vtt
