// Fuzz target: the model file reader. Any text either becomes a host model or is refused
// with a ModelFileError, and the quick and the full reading agree on which, to the model
// or the message; a host that is made must then answer the geometric queries the transfer
// starts with (points, their connectivity, frame ends and area corners) for every object
// it lists.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/json_model_host.h"
#include "hosts/model_file.h"

namespace {

// Asks the host for what the transfer asks first, object by object.
void WalkGeometry(vtt::HostModel& host) {
  int count = 0;
  vtt::Names names;
  host.GetPointNameList(count, names);
  for (const std::string& name : names) {
    double x = 0, y = 0, z = 0;
    host.GetPointCoordinates(name, x, y, z, "Global");
    vtt::DofFlags restraints{};
    host.GetPointRestraints(name, restraints);
    int connected = 0;
    vtt::Ints types, numbers;
    vtt::Names objects;
    host.GetPointConnectivity(name, connected, types, objects, numbers);
  }
  names.clear();
  host.GetFrameNameList(count, names);
  for (const std::string& name : names) {
    std::string i, j;
    host.GetFramePoints(name, i, j);
  }
  names.clear();
  host.GetAreaNameList(count, names);
  for (const std::string& name : names) {
    int corners = 0;
    vtt::Names points;
    host.GetAreaPoints(name, corners, points);
  }
}

// The quick reading (straight from the text) and the full one (a tree, then the checks)
// must give the same model or the same message; any difference stops the run.
// The quick reading is made twice: as it is for a text of this size, and with its frames
// read on a second thread, which otherwise only texts of a megabyte or more reach.
void CompareReadings(std::string_view text) {
  std::string fullMessage;
  std::optional<vtt::model_file::Model> full;
  try {
    full = vtt::model_file::ReadModelFully(text, "fuzz.json", "/nonexistent/vtt-fuzz");
  } catch (const vtt::ModelFileError& error) {
    fullMessage = error.what();
  }
  const std::size_t usual = vtt::model_file::FramesThreadFromBytes();
  for (const std::size_t threadFrom : {usual, std::size_t{0}}) {
    vtt::model_file::SetFramesThreadFromBytes(threadFrom);
    std::string quickMessage;
    std::optional<vtt::model_file::Model> quick;
    try {
      quick = vtt::model_file::ReadModel(text, "fuzz.json", "/nonexistent/vtt-fuzz");
    } catch (const vtt::ModelFileError& error) {
      quickMessage = error.what();
    }
    vtt::model_file::SetFramesThreadFromBytes(usual);
    if (quickMessage != fullMessage || quick.has_value() != full.has_value() ||
        (quick && !(*quick == *full))) {
      std::fprintf(stderr, "the two readings differ (frames thread from %zu bytes):\n"
                   "  quick: %s\n  full:  %s\n", threadFrom,
                   quick ? "a model" : quickMessage.c_str(), full ? "a model" : fullMessage.c_str());
      std::abort();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  CompareReadings(text);
  std::unique_ptr<vtt::JsonModelHost> host;
  try {
    // Relative record paths lead to a folder that does not exist: the reader never opens
    // them, and nothing here should.
    host = vtt::JsonModelHost::FromText(text, "fuzz.json", "/nonexistent/vtt-fuzz");
  } catch (const vtt::ModelFileError&) {
    return 0;  // a refused file: the one message the user would see
  }
  WalkGeometry(*host);
  return 0;
}
