// The published JSON Schema and the loader must agree: what one refuses, the other refuses,
// and the documented example is a model both accept.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <string>

#include "hosts/json_model_host.h"

namespace vtt {
namespace {

const std::filesystem::path kSourceDir(VTT_SOURCE_DIR);
const std::string kHead = R"({"format": "vask-model", "version": 1, "units": 6)";

// Models that are wrong in one way each, keyed by the file they are written to.
const std::map<std::string, std::string> kBadModels = {
    {"units-out-of-range.json", R"({"format": "vask-model", "version": 1, "units": 17})"},
    {"units-not-integer.json", R"({"format": "vask-model", "version": 1, "units": 2.5})"},
    {"wrong-version.json", R"({"format": "vask-model", "version": 2, "units": 6})"},
    {"unknown-top-key.json", kHead + R"(, "colour": 1})"},
    {"unknown-material-key.json",
     kHead + R"(, "materials": [{"name": "M", "type": 2, "nu": 1}])" + "}"},
    {"material-type.json", kHead + R"(, "materials": [{"name": "M", "type": 8}]})"},
    {"isotropic-incomplete.json",
     kHead +
         R"(, "materials": [{"name": "M", "type": 2, "isotropic": {"E": 1, "U": 0, "A": 0}}]})"},
    {"default-with-name.json", kHead + R"(, "default_materials": {"concrete": {"name": "C"}}})"},
    {"point-missing-z.json", kHead + R"(, "points": [{"name": "P", "x": 0, "y": 0}]})"},
    {"mass-too-short.json",
     kHead + R"(, "points": [{"name": "P", "x": 0, "y": 0, "z": 0, "mass": [1]}]})"},
    {"releases-too-short.json",
     kHead + R"(, "frames": [{"name": "F", "section": "S", "i": "a", "j": "b",
                              "releases": {"i": [true, false, false, false, false]}}]})"},
    {"hinge-without-dof.json",
     kHead + R"(, "frames": [{"name": "F", "section": "S", "i": "a", "j": "b",
                              "hinges": [{"relative_distance": 0.5}]}]})"},
    {"area-two-points.json",
     kHead + R"(, "areas": [{"name": "A", "section": "S", "points": ["a", "b"]}]})"},
    {"case-load-type.json",
     kHead +
         R"(, "load_cases": [{"name": "C", "type": 1, "loads": [{"type": "Force", "name": "x"}]}]})"},
    {"damping-without-type.json",
     kHead + R"(, "load_cases": [{"name": "C", "type": 7, "damping": {"ratios": [0, 0]}}]})"},
    {"points-per-line-zero.json",
     kHead +
         R"(, "functions": [{"name": "F", "kind": 0, "file": {"path": "x", "points_per_line": 0}}]})"},
    {"function-kind.json", kHead + R"(, "functions": [{"name": "F", "kind": 8}]})"},
    {"assignment-type.json",
     kHead + R"(, "groups": [{"name": "G", "assignments": [{"type": 0, "name": "x"}]}]})"},
    {"shell-type.json", kHead + R"(, "area_sections": [{"name": "S", "shell_type": 7}]})"},
    {"duplicate-key.json", kHead + R"(, "units": 6})"},
};

// Runs the schema check over a folder; returns its output, or nothing when Python and
// its JSON Schema package are not there to run it.
std::optional<std::string> ValidateFolder(const std::filesystem::path& folder) {
  const std::string command =
      "/usr/bin/python3 -c 'import jsonschema' 2>/dev/null && "
      "/usr/bin/python3 " +
      (kSourceDir / "scripts/validate-models.py").string() + " " +
      (kSourceDir / "docs/vask-model.schema.json").string() + " " + folder.string() +
      " 2>&1 || true";
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), &pclose);
  if (!pipe) return std::nullopt;
  std::string output;
  char buffer[4096];
  while (const std::size_t read = std::fread(buffer, 1, sizeof buffer, pipe.get())) {
    output.append(buffer, read);
  }
  if (output.empty()) return std::nullopt;
  return output;
}

TEST(ModelSchema, RefusesWhatTheLoaderRefuses) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                       ("vtt-model-schema-agreement-" + std::to_string(::getpid()));
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  for (const auto& [file, text] : kBadModels) {
    std::ofstream(folder / file, std::ios::binary) << text;
    EXPECT_THROW(JsonModelHost::FromText(text, file, folder), ModelFileError) << file;
  }
  const std::optional<std::string> output = ValidateFolder(folder);
  std::filesystem::remove_all(folder);
  if (!output) GTEST_SKIP() << "python3 with jsonschema is not installed";
  for (const auto& [file, text] : kBadModels) {
    EXPECT_NE(output->find("FAIL " + (folder / file).string()), std::string::npos)
        << file << " passed the schema:\n"
        << *output;
  }
  EXPECT_NE(output->find("0 passed, " + std::to_string(kBadModels.size()) + " failed"),
            std::string::npos)
      << *output;
}

std::string DocumentedExample() {
  std::ifstream in(kSourceDir / "docs/model-format.md");
  std::stringstream text;
  text << in.rdbuf();
  const std::string document = text.str();
  const std::string open = "```json\n";
  const auto start = document.find(open);
  const auto end = document.find("```", start + open.size());
  if (start == std::string::npos || end == std::string::npos) return "";
  return document.substr(start + open.size(), end - start - open.size());
}

TEST(ModelSchema, DocumentedExampleLoadsAndValidates) {
  const std::string example = DocumentedExample();
  ASSERT_FALSE(example.empty()) << "docs/model-format.md has no JSON example";
  auto host = JsonModelHost::FromText(example, "model-format.md", "/projects/frame");
  EXPECT_EQ(host->GetPointCount(), 6);
  int count = 0;
  Names names;
  host->GetFrameNameList(count, names);
  EXPECT_EQ(names, (Names{"C1", "C2", "B1"}));
  std::string file;
  int header = 0, prefix = 0, perLine = 0, valueType = 0, width = 0;
  bool free = false;
  double dt = 0;
  EXPECT_EQ(
      host->GetFunctionFromFile("EQ1", file, header, prefix, perLine, valueType, free, width, dt),
      0);
  EXPECT_EQ(file, "/projects/frame/records/eq1.txt");
  // The example says the default steel has E of about 199 950 000 kN/m².
  std::string created;
  ASSERT_EQ(host->AddDefaultMaterial("Steel", 1, -1, "", "", created), 0);
  double e = 0, u = 0, a = 0, g = 0;
  host->GetIsotropicData(created, e, u, a, g);
  EXPECT_NEAR(e, 199.95e6, 0.01e6);

  const std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                       ("vtt-model-schema-example-" + std::to_string(::getpid()));
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "example.json", std::ios::binary) << example;
  const std::optional<std::string> output = ValidateFolder(folder);
  std::filesystem::remove_all(folder);
  if (!output) GTEST_SKIP() << "python3 with jsonschema is not installed";
  EXPECT_NE(output->find("1 passed, 0 failed"), std::string::npos) << *output;
}

}  // namespace
}  // namespace vtt
