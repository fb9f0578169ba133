// Reading a model file on its own, in MB/s of the file: the whole JsonModelHost::FromFile,
// and its parts (the bytes, copied and mapped; the model, read the quick way and by the full
// reading alone; the JSON tree that the full reading starts with). The model is the file named
// by VTT_MODEL_FILE, or a generated building of 10,000 joints written to a temporary file.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <cstdint>
#include <fstream>
#include <memory>
#include <string>

#include "generate_building.h"
#include "hosts/file_view.h"
#include "hosts/json_document.h"
#include "hosts/json_model_host.h"
#include "hosts/model_file.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;

const fs::path& ModelFile() {
  static const fs::path file = [] {
    const char* given = std::getenv("VTT_MODEL_FILE");
    if (given != nullptr && *given != '\0') return fs::path(given);
    const fs::path written = fs::temp_directory_path() / "vtt_model_file_bench_10000.json";
    std::ofstream out(written, std::ios::binary);
    out << generate::BuildingText(generate::OptionsForJoints(10000));
    return written;
  }();
  return file;
}

void SetBytes(benchmark::State& state) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(fs::file_size(ModelFile())));
}

void BM_ModelFile_FromFile(benchmark::State& state) {
  for (auto _ : state) {
    std::unique_ptr<JsonModelHost> host = JsonModelHost::FromFile(ModelFile());
    benchmark::DoNotOptimize(host->GetPointCount());
  }
  SetBytes(state);
}
BENCHMARK(BM_ModelFile_FromFile)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ModelFile_Bytes(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(model_file::ReadFileText(ModelFile()).size());
  SetBytes(state);
}
BENCHMARK(BM_ModelFile_Bytes)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ModelFile_MappedBytes(benchmark::State& state) {
  for (auto _ : state) {
    const std::unique_ptr<FileView> view = FileView::Open(ModelFile());
    benchmark::DoNotOptimize(view ? view->text().size() : 0);
  }
  SetBytes(state);
}
BENCHMARK(BM_ModelFile_MappedBytes)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ModelFile_Json(benchmark::State& state) {
  const std::string text = model_file::ReadFileText(ModelFile());
  for (auto _ : state) benchmark::DoNotOptimize(JsonDocument::Parse(text).root().count);
  SetBytes(state);
}
BENCHMARK(BM_ModelFile_Json)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ModelFile_Model(benchmark::State& state) {
  const std::string text = model_file::ReadFileText(ModelFile());
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        model_file::ReadModel(text, ModelFile().string(), ModelFile().parent_path()).points.size());
  }
  SetBytes(state);
}
BENCHMARK(BM_ModelFile_Model)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ModelFile_ModelFully(benchmark::State& state) {
  const std::string text = model_file::ReadFileText(ModelFile());
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        model_file::ReadModelFully(text, ModelFile().string(), ModelFile().parent_path())
            .points.size());
  }
  SetBytes(state);
}
BENCHMARK(BM_ModelFile_ModelFully)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace vtt
