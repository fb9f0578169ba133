// The built vask2trelk program, run as a user runs it: its output streams, its exit
// statuses and its default folders. Every run gets an environment of its own (home,
// configuration, documents and Trelk 4 folders inside a temporary folder), so nothing is
// written outside it.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "app/rule_text.h"
#include "support/expected_bytes.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using testing::TempFolder;

struct ProgramResult {
  int status;
  std::string out;
  std::string err;
};

std::string ReadText(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

// Runs the program with `args` in `temp`, its streams to files (so standard error is no
// terminal), its environment reduced to the folders under `temp` plus `environment`.
ProgramResult RunProgram(const TempFolder& temp, const std::vector<std::string>& args,
                         const std::vector<std::string>& environment = {}) {
  const fs::path home = temp.Path() / "home";
  fs::create_directories(home);
  std::string command = "cd " + Quoted(temp.Path().string()) + " && env -i PATH=/usr/bin:/bin " +
                        Quoted("HOME=" + home.string()) + " " +
                        Quoted("XDG_CONFIG_HOME=" + (home / ".config").string());
  for (const std::string& variable : environment) command += " " + Quoted(variable);
  command += " " + Quoted(VTT_CLI_PATH);
  for (const std::string& arg : args) command += " " + Quoted(arg);
  const fs::path out = temp.Path() / "stdout.txt";
  const fs::path err = temp.Path() / "stderr.txt";
  command += " </dev/null >" + Quoted(out.string()) + " 2>" + Quoted(err.string());
  const int raw = std::system(command.c_str());
  const int status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  return {status, ReadText(out), ReadText(err)};
}

fs::path SourceFile(const std::string& relative) {
  return fs::path(VTT_SOURCE_DIR) / relative;
}

fs::path WriteModel(const TempFolder& temp, const std::string& json) {
  const fs::path path = temp.Path() / "model.json";
  std::ofstream(path) << json;
  return path;
}

const char* kTwoPoints = R"({"format": "vask-model", "version": 1, "units": 3,
  "points": [{"name": "A", "x": 0, "y": 0, "z": 0}, {"name": "B", "x": 0, "y": 0, "z": 120}]})";

TEST(CommandLineProgram, HelpListsTheCommands) {
  TempFolder temp("prog-help");
  const ProgramResult r = RunProgram(temp, {"--help"});
  EXPECT_EQ(r.status, 0);
  EXPECT_NE(r.out.find("transfer"), std::string::npos);
  EXPECT_NE(r.out.find("rules"), std::string::npos);
  EXPECT_EQ(r.err, "");
}

TEST(CommandLineProgram, RulesPrintsTheRuleText) {
  TempFolder temp("prog-rules");
  const ProgramResult r = RunProgram(temp, {"rules"});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, TransferRuleText());
  EXPECT_EQ(r.err, "");
}

// Standard error goes to a file: no progress, only the final message; the summary goes to
// standard output.
TEST(CommandLineProgram, TransfersTheOfficeBuildingSilentlyOffATerminal) {
  TempFolder temp("prog-office");
  const ProgramResult r =
      RunProgram(temp, {"transfer", SourceFile("examples/office-building.json").string(),
                        "--dir", temp.Path().string(), "--name", "Office", "--trelk-path",
                        (temp.Path() / "TRELK").string()});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.err, "Transfer Complete\n");
  EXPECT_EQ(r.out.rfind("Structure written to " + (temp.Path() / "Office").string() + "\n", 0),
            0u);
  EXPECT_TRUE(fs::exists(temp.Path() / "Office" / "TRKDS"));
  EXPECT_TRUE(fs::exists(temp.Path() / "TRELK" / "Records" / "EqkeGroup" / "EQ-SYNTH"));
}

// No folder, no name, no version, no Trelk data folder: version 5, the structure "Trelk"
// in TRELK/Trelk/Structures of the documents folder, records in TRELK/Records/EqkeGroup.
TEST(CommandLineProgram, TheDefaultsFollowTheDocumentsFolderForVersionFive) {
  TempFolder temp("prog-defaults");
  const fs::path documents = temp.Path() / "docs";
  const ProgramResult r =
      RunProgram(temp, {"transfer", SourceFile("examples/shear-wall-history.json").string()},
                 {"XDG_DOCUMENTS_DIR=" + documents.string()});
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.err, "Transfer Complete\n");
  const fs::path folder = documents / "TRELK" / "Trelk" / "Structures" / "Trelk";
  EXPECT_TRUE(fs::exists(folder / "TRKDS"));
  EXPECT_TRUE(fs::exists(documents / "TRELK" / "Records" / "EqkeGroup" / "PULSE"));
  EXPECT_EQ(r.out.rfind("Structure written to " + folder.string() + "\n", 0), 0u);
}

TEST(CommandLineProgram, VersionFourFollowsTheTrelkFourInstallFolder) {
  TempFolder temp("prog-v4");
  const fs::path install = temp.Path() / "Trelk4";
  fs::create_directories(install);
  const ProgramResult r =
      RunProgram(temp,
                 {"transfer", SourceFile("examples/shear-wall-history.json").string(),
                  "--version", "4", "--name", "Wall", "-q"},
                 {"TRELK4_INSTALL_PATH=" + install.string(),
                  "XDG_DOCUMENTS_DIR=" + (temp.Path() / "docs").string()});
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "");
  EXPECT_TRUE(fs::exists(install / "Trelk" / "Structures" / "Wall" / "TRKDS"));
  EXPECT_TRUE(fs::exists(install / "Records" / "EqkeGroup" / "PULSE"));
  EXPECT_FALSE(fs::exists(temp.Path() / "docs" / "TRELK"));
}

TEST(CommandLineProgram, EachFailureHasItsExitStatus) {
  TempFolder temp("prog-status");
  const std::string trelk = (temp.Path() / "TRELK").string();
  const fs::path good = WriteModel(temp, kTwoPoints);
  const fs::path empty = temp.Path() / "empty.json";
  std::ofstream(empty) << R"({"format": "vask-model", "version": 1, "units": 6})";
  const fs::path bad = temp.Path() / "bad.json";
  std::ofstream(bad) << R"({"format": "vask-model", "version": 1, "units": 0})";
  const std::string dir = temp.Path().string();

  EXPECT_EQ(RunProgram(temp, {}).status, 2);
  EXPECT_EQ(RunProgram(temp, {"transfer", good.string(), "--dir", dir, "--name",
                              "ThirteenChars", "--trelk-path", trelk}).status,
            2);
  EXPECT_EQ(RunProgram(temp, {"transfer", bad.string(), "--dir", dir, "--trelk-path", trelk})
                .status,
            3);
  const ProgramResult empty_model = RunProgram(
      temp, {"transfer", empty.string(), "--dir", dir, "--name", "E", "--trelk-path", trelk});
  EXPECT_EQ(empty_model.status, 5);
  EXPECT_EQ(empty_model.err, "Empty Model\n");
  const ProgramResult no_folder = RunProgram(
      temp, {"transfer", good.string(), "--dir", dir, "--name", "x/y", "--trelk-path", trelk});
  EXPECT_EQ(no_folder.status, 6);
  EXPECT_EQ(no_folder.err, "Error : Couldn't create directory !\n");
  std::ofstream(temp.Path() / "a-file") << "x";
  EXPECT_EQ(RunProgram(temp, {"transfer", good.string(), "--trelk-path",
                              (temp.Path() / "a-file").string()}).status,
            8);
  EXPECT_EQ(RunProgram(temp, {"transfer", good.string(), "--dir", dir, "--name", "G",
                              "--trelk-path", trelk}).status,
            0);
}

}  // namespace
}  // namespace vtt
