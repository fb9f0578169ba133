// A whole transfer from a model file, phase by phase: reading the file, reading the source
// model (each of its 28 stages), each step that fills the store, writing the files, the
// release; with the peak memory of the process and the size of what was written. Apart
// from the timed run, the reading of the file is split into its bytes, its JSON and the
// checked model.
//
// The models come from VTT_TRANSFER_MODELS, a comma-separated list whose entries are model
// files or numbers of joints (a generated building of that size, written to a temporary
// file first); without it, a generated building of 10,000 joints. Each model is one
// benchmark, BM_Transfer/<entry>, of one iteration: a large transfer takes seconds, and
// the point is the share of each phase and how it grows with the model. Phase times are
// counters in seconds; run one model a process when the peak memory matters.
//
// With VTT_IN_TURN=1 the source model and the fill run on one thread, every stage in
// turn: the times are then each stage's own cost, not its wait for the second thread.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <malloc.h>
#include <unistd.h>

#include "generate_building.h"
#include "hosts/file_view.h"
#include "hosts/json_model_host.h"
#include "hosts/model_file.h"
#include "source/second_thread.h"
#include "source/vask_model.h"
#include "store/trelk_store.h"
#include "transfer/driver.h"
#include "transfer/messages.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point from, Clock::time_point to) {
  return std::chrono::duration<double>(to - from).count();
}

// A value in kB from /proc/self/status ("VmRSS", "VmHWM"), in MB; 0 where there is none.
double ProcessMemoryMb(std::string_view key) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.compare(0, key.size(), key) == 0 && line.size() > key.size() &&
        line[key.size()] == ':') {
      return std::strtod(line.c_str() + key.size() + 1, nullptr) / 1024.0;
    }
  }
  return 0.0;
}

// Starts the peak (VmHWM) over from the present size, so that it is this model's peak;
// what was freed before is given back to the system first.
void ResetPeakMemory() {
  ::malloc_trim(0);
  std::ofstream("/proc/self/clear_refs") << "5";
}

std::uintmax_t FolderBytes(const fs::path& folder) {
  std::uintmax_t bytes = 0;
  std::error_code ec;
  for (const auto& entry : fs::recursive_directory_iterator(folder, ec)) {
    if (entry.is_regular_file()) bytes += entry.file_size();
  }
  return bytes;
}

// A folder of its own under the system's temporary folder, removed at the end.
class ScratchFolder {
 public:
  explicit ScratchFolder(const std::string& tag)
      : path_(fs::temp_directory_path() /
              ("vtt-transfer-bench-" + tag + "-" + std::to_string(::getpid()))) {
    fs::remove_all(path_);
    fs::create_directories(path_);
  }
  ~ScratchFolder() {
    std::error_code ec;
    fs::remove_all(path_, ec);
  }
  const fs::path& Path() const { return path_; }

 private:
  fs::path path_;
};

// An entry of the model list that is all digits asks for a generated building.
std::optional<std::int64_t> JointsOf(const std::string& entry) {
  if (entry.empty() || entry.find_first_not_of("0123456789") != std::string::npos) {
    return std::nullopt;
  }
  return std::stoll(entry);
}

void WriteGeneratedModel(std::int64_t joints, const fs::path& file) {
  std::ofstream out(file, std::ios::binary);
  generate::WriteBuilding(generate::OptionsForJoints(joints), [&out](std::string_view piece) {
    out.write(piece.data(), static_cast<std::streamsize>(piece.size()));
  });
}

void BM_Transfer(benchmark::State& state, const std::string& entry) {
  ScratchFolder scratch("run");
  fs::path model_file = entry;
  if (const std::optional<std::int64_t> joints = JointsOf(entry)) {
    model_file = scratch.Path() / "building.json";
    WriteGeneratedModel(*joints, model_file);
  }
  const double file_mb = static_cast<double>(fs::file_size(model_file)) / 1e6;
  const std::string folder = (scratch.Path() / "structures").string();
  const std::string trelk = (scratch.Path() / "trelk").string();
  fs::create_directories(fs::path(folder) / "Bench");

  // Phase name to seconds, in the order they ran.
  std::vector<std::pair<std::string, double>> stages;
  double read_file = 0, read_model = 0, fill = 0, write = 0, release = 0, total = 0;
  double rss_host = 0, rss_model = 0, rss_store = 0;
  int nodes = 0, elements = 0;
  for (auto _ : state) {
    stages.clear();
    ResetPeakMemory();
    const Clock::time_point start = Clock::now();
    std::unique_ptr<JsonModelHost> host = JsonModelHost::FromFile(model_file);
    Clock::time_point mark = Clock::now();
    read_file = Seconds(start, mark);
    rss_host = ProcessMemoryMb("VmRSS");

    auto store = std::make_unique<TrelkStore>();
    CollectedMessages messages;
    TransferProgress progress;
    // Each reading stage ends where the next begins; the last ends with the reading.
    Clock::time_point read_stage_start{};
    std::string read_stage_name;
    progress.on_read_stage = [&](int number, std::string_view name) {
      const Clock::time_point now = Clock::now();
      if (!read_stage_name.empty()) {
        stages.emplace_back(read_stage_name, Seconds(read_stage_start, now));
      }
      read_stage_name = fmt::format("r{:02}_{}", number, name);
      read_stage_start = now;
    };
    auto model = std::make_unique<VaskModelObj>(*host);
    TransferRun run{*host, *store, messages, folder, "Bench", trelk, progress};
    run.model = model.get();
    int number = 0;
    for (const TransferStage& stage : TransferStages()) {
      ++number;
      if (stage.run == nullptr) continue;
      const Clock::time_point before = Clock::now();
      stage.run(run);
      const Clock::time_point after = Clock::now();
      const double seconds = Seconds(before, after);
      if (stage.name == "ReadVaskData") {
        stages.emplace_back(read_stage_name, Seconds(read_stage_start, after));
        read_model += seconds;
        rss_model = ProcessMemoryMb("VmRSS");
        nodes = model->NodeNum();
      } else if (stage.name == "WriteTrelkStructure") {
        write += seconds;
        rss_store = ProcessMemoryMb("VmRSS");
        elements = store->Elems.Count();
      } else if (stage.name == "Dispose") {
        release += seconds;
      } else {
        fill += seconds;
      }
      stages.emplace_back(fmt::format("t{:02}_{}", number, stage.name), seconds);
    }
    // The process gives everything back at its end as well.
    const Clock::time_point before_release = Clock::now();
    model.reset();
    store.reset();
    host.reset();
    const Clock::time_point end = Clock::now();
    release += Seconds(before_release, end);
    total = Seconds(start, end);
    state.SetIterationTime(total);
    if (!messages.messages.empty()) {
      state.SkipWithError(("the transfer said: " + messages.messages.front().text).c_str());
    }
  }
  const double peak = ProcessMemoryMb("VmHWM");

  // Where the reading of the file goes: the bytes (mapped, as JsonModelHost::FromFile does),
  // the model read from them, and for comparison the same model by the full reading alone
  // (a tree of the whole document, then the checks; the quick reading hands over to it at
  // the first thing it does not take). The rest of FromFile is the host's indexes. This
  // runs after the timed transfer, on its own, so as not to leave its heap to the transfer.
  double file_text = 0, model_read = 0, full_read = 0;
  {
    Clock::time_point mark = Clock::now();
    const std::unique_ptr<FileView> view = FileView::Open(model_file);
    const std::string copy = view ? std::string() : model_file::ReadFileText(model_file);
    const std::string_view text = view ? view->text() : std::string_view(copy);
    Clock::time_point next = Clock::now();
    file_text = Seconds(mark, next);
    mark = next;
    benchmark::DoNotOptimize(
        model_file::ReadModel(text, model_file.string(), model_file.parent_path()).points.size());
    next = Clock::now();
    model_read = Seconds(mark, next);
    mark = next;
    benchmark::DoNotOptimize(
        model_file::ReadModelFully(text, model_file.string(), model_file.parent_path())
            .points.size());
    full_read = Seconds(mark, Clock::now());
  }

  state.counters["file_MB"] = file_mb;
  state.counters["joints"] = nodes;
  state.counters["elements"] = elements;
  state.counters["read_file_s"] = read_file;
  state.counters["read_MB_per_s"] = read_file > 0 ? file_mb / read_file : 0;
  state.counters["read_file_bytes_s"] = file_text;
  state.counters["read_file_full_s"] = full_read;
  state.counters["read_file_model_s"] = model_read;
  state.counters["read_model_s"] = read_model;
  state.counters["fill_s"] = fill;
  state.counters["write_s"] = write;
  state.counters["release_s"] = release;
  state.counters["total_s"] = total;
  state.counters["rss_host_MB"] = rss_host;
  state.counters["rss_model_MB"] = rss_model;
  state.counters["rss_store_MB"] = rss_store;
  state.counters["peak_MB"] = peak;
  state.counters["out_MB"] = static_cast<double>(FolderBytes(folder) + FolderBytes(trelk)) / 1e6;
  for (const auto& [name, seconds] : stages) state.counters[name] = seconds;
}

std::vector<std::string> TransferModels() {
  const char* list = std::getenv("VTT_TRANSFER_MODELS");
  std::vector<std::string> entries;
  std::stringstream text(list != nullptr && *list != '\0' ? list : "10000");
  std::string entry;
  while (std::getline(text, entry, ',')) {
    if (!entry.empty()) entries.push_back(entry);
  }
  return entries;
}

[[maybe_unused]] const bool kRegistered = [] {
  if (const char* in_turn = std::getenv("VTT_IN_TURN"); in_turn != nullptr && *in_turn == '1') {
    SetSecondThreadWork(false);
  }
  for (const std::string& entry : TransferModels()) {
    benchmark::RegisterBenchmark(("BM_Transfer/" + entry).c_str(), BM_Transfer, entry)
        ->Iterations(1)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace
}  // namespace vtt
