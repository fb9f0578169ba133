// Golden structures: each folder of tests/models holds a model file and the structure
// folder expected from it, built by hand from the record layouts (make_expected.py).
// The transfer must reproduce every expected file byte for byte.
#include <gtest/gtest.h>

#include <sstream>

#include "app/cli.h"
#include "store/structure_check.h"
#include "support/expected_bytes.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> GoldenModels() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(fs::path(VTT_SOURCE_DIR) / "tests" / "models")) {
    if (fs::exists(entry.path() / "model.json") && fs::exists(entry.path() / "expected")) {
      names.push_back(entry.path().filename().string());
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

class GoldenStructure : public ::testing::TestWithParam<std::string> {};

TEST_P(GoldenStructure, MatchesTheExpectedFilesByteForByte) {
  const std::string name = GetParam();
  const fs::path model_folder = fs::path(VTT_SOURCE_DIR) / "tests" / "models" / name;
  testing::TempFolder temp("golden-" + name);
  const std::string model = (model_folder / "model.json").string();
  const std::string dir = temp.Path().string();
  const std::string trelk = (temp.Path() / "TRELK").string();
  const char* argv[] = {"vask2trelk", "transfer",    model.c_str(), "--dir", dir.c_str(),
                        "--name",     name.c_str(), "--trelk-path", trelk.c_str(), "--quiet"};
  std::ostringstream out, err;
  ASSERT_EQ(RunCli(10, argv, out, err), 0) << err.str();
  EXPECT_NE(err.str().find("Transfer Complete"), std::string::npos);

  std::size_t compared = 0;
  for (const auto& entry : fs::directory_iterator(model_folder / "expected")) {
    const std::string file = entry.path().filename().string();
    const auto expected = testing::ReadFileBytes(entry.path());
    const auto actual = testing::ReadFileBytes(temp.Path() / name / file);
    ASSERT_EQ(actual.size(), expected.size()) << name << "/" << file;
    for (std::size_t i = 0; i < expected.size(); ++i) {
      ASSERT_EQ(int(actual[i]), int(expected[i])) << name << "/" << file << " at offset " << i;
    }
    ++compared;
  }
  EXPECT_EQ(compared, 7u) << "every structure has seven files";

  // Both the expected folder and the written one hold every check of a written structure.
  for (const fs::path& folder : {model_folder / "expected", temp.Path() / name}) {
    std::string problems;
    for (const CheckProblem& p : CheckStructureFolder(folder)) problems += ProblemText(p) + "\n";
    EXPECT_EQ(problems, "") << folder;
  }
  std::size_t written = 0;
  for ([[maybe_unused]] const auto& entry : fs::directory_iterator(temp.Path() / name)) ++written;
  EXPECT_EQ(written, compared) << "no file beyond the expected ones";

  // The record files of the time-history functions, when the model has any.
  const fs::path records = temp.Path() / "TRELK" / "Records" / "EqkeGroup";
  const fs::path expected_records = model_folder / "expected-records";
  std::size_t record_files = 0;
  if (fs::exists(expected_records)) {
    for (const auto& entry : fs::directory_iterator(expected_records)) {
      const std::string file = entry.path().filename().string();
      const auto expected = testing::ReadFileBytes(entry.path());
      const auto actual = testing::ReadFileBytes(records / file);
      ASSERT_EQ(actual.size(), expected.size()) << name << " record " << file;
      for (std::size_t i = 0; i < expected.size(); ++i) {
        ASSERT_EQ(int(actual[i]), int(expected[i])) << name << " record " << file << " at " << i;
      }
      ++record_files;
    }
  }
  std::size_t records_written = 0;
  if (fs::exists(records)) {
    for ([[maybe_unused]] const auto& entry : fs::directory_iterator(records)) ++records_written;
  }
  EXPECT_EQ(records_written, record_files) << "no record file beyond the expected ones";
}

INSTANTIATE_TEST_SUITE_P(Models, GoldenStructure, ::testing::ValuesIn(GoldenModels()),
                         [](const auto& info) {
                           std::string n = info.param;
                           for (char& c : n) {
                             if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
                           }
                           return n;
                         });

}  // namespace
}  // namespace vtt
