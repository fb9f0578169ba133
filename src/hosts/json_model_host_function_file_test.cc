// Where the file host looks for the text file of a function from a file: a relative path is
// taken from the model file's folder when the host reads a model file, and kept as written
// when a model text comes without a folder.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "hosts/json_model_host.h"
#include "support/expected_bytes.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;

const std::string kModel = R"({"format": "vask-model", "version": 1, "units": 6,
  "functions": [
    {"name": "REL", "kind": 0, "file": {"path": "records/eq1.txt"}},
    {"name": "UP", "kind": 0, "file": {"path": "../shared/eq2.txt"}},
    {"name": "ABS", "kind": 0, "file": {"path": "/data/eq3.txt"}}
  ]})";

std::string FileOf(HostModel& host, const std::string& name) {
  std::string path;
  int header = 0, prefix = 0, perLine = 0, valueType = 0, width = 0;
  bool free = false;
  double dt = 0;
  EXPECT_EQ(host.GetFunctionFromFile(name, path, header, prefix, perLine, valueType, free, width,
                                     dt),
            0);
  return path;
}

TEST(JsonModelHostFunctionFile, RelativePathIsTakenFromTheModelFilesFolder) {
  testing::TempFolder folder("host-function-file");
  const fs::path modelFile = folder.Path() / "project" / "model.json";
  fs::create_directories(modelFile.parent_path());
  testing::WriteFileBytes(modelFile, std::vector<std::uint8_t>(kModel.begin(), kModel.end()));
  auto host = JsonModelHost::FromFile(modelFile);
  EXPECT_EQ(FileOf(*host, "REL"), (folder.Path() / "project" / "records/eq1.txt").string());
  EXPECT_EQ(FileOf(*host, "UP"), (folder.Path() / "project" / "../shared/eq2.txt").string());
  EXPECT_EQ(FileOf(*host, "ABS"), "/data/eq3.txt");
}

TEST(JsonModelHostFunctionFile, ModelFileNamedWithoutAFolderKeepsTheRelativePath) {
  // A model file in the present folder: its folder is the present folder, so the relative
  // path stays relative to it.
  testing::TempFolder folder("host-function-file-here");
  struct BackToStart {
    fs::path start = fs::current_path();
    ~BackToStart() { fs::current_path(start); }
  } back;
  fs::current_path(folder.Path());
  testing::WriteFileBytes("model.json", std::vector<std::uint8_t>(kModel.begin(), kModel.end()));
  auto host = JsonModelHost::FromFile("model.json");
  EXPECT_EQ(FileOf(*host, "REL"), "records/eq1.txt");
}

TEST(JsonModelHostFunctionFile, ModelTextWithoutAFolderKeepsThePathAsGiven) {
  auto host = JsonModelHost::FromText(kModel, "inline.json", fs::path());
  EXPECT_EQ(FileOf(*host, "REL"), "records/eq1.txt");
  EXPECT_EQ(FileOf(*host, "UP"), "../shared/eq2.txt");
  EXPECT_EQ(FileOf(*host, "ABS"), "/data/eq3.txt");
}

}  // namespace
}  // namespace vtt
