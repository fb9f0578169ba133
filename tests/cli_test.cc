// The command line as a user meets it: options, messages on standard error, exit statuses.
#include "app/cli.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/expected_bytes.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using testing::ReadFileBytes;
using testing::TempFolder;

struct CliResult {
  int status;
  std::string out;
  std::string err;
};

CliResult Cli(std::vector<std::string> args) {
  args.insert(args.begin(), "vask2trelk");
  std::vector<const char*> argv;
  for (const std::string& a : args) argv.push_back(a.c_str());
  std::ostringstream out, err;
  const int status = RunCli(static_cast<int>(argv.size()), argv.data(), out, err);
  return {status, out.str(), err.str()};
}

fs::path WriteModel(const TempFolder& temp, const std::string& json) {
  const fs::path path = temp.Path() / "model.json";
  std::ofstream(path) << json;
  return path;
}

const char* kTwoPoints = R"({"format": "vask-model", "version": 1, "units": 3,
  "points": [{"name": "A", "x": 0, "y": 0, "z": 0}, {"name": "B", "x": 0, "y": 0, "z": 120}]})";

TEST(CommandLine, HelpExplainsEveryTransferOption) {
  const CliResult r = Cli({"transfer", "--help"});
  EXPECT_EQ(r.status, 0);
  for (const char* option : {"--dir", "--name", "--version", "--embed-beam", "--quiet"}) {
    EXPECT_NE(r.out.find(option), std::string::npos) << option;
  }
}

TEST(CommandLine, WithoutACommandItShowsUsage) {
  const CliResult r = Cli({});
  EXPECT_EQ(r.status, 2);
  EXPECT_NE(r.err.find("--help"), std::string::npos);
}

TEST(CommandLine, TransferWritesTheStructureFolder) {
  TempFolder temp("cli");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "Frame", "--quiet"});
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.err, "Transfer Complete\n");
  EXPECT_EQ(fs::file_size(temp.Path() / "Frame" / "TRKDPOF"), 28u);
}

TEST(CommandLine, VersionFourAndFiveGiveTheSameFiles) {
  TempFolder temp("version");
  const fs::path model = WriteModel(temp, kTwoPoints);
  fs::create_directories(temp.Path() / "v4");
  fs::create_directories(temp.Path() / "v5");
  ASSERT_EQ(Cli({"transfer", model.string(), "--dir", (temp.Path() / "v4").string(), "--name",
                 "S", "--version", "4", "-q"}).status, 0);
  ASSERT_EQ(Cli({"transfer", model.string(), "--dir", (temp.Path() / "v5").string(), "--name",
                 "S", "--version", "5", "-q"}).status, 0);
  for (const char* file : {"TRKDA", "TRKDULS", "TRKDPO", "TRKDPOA", "TRKDPOF", "TRKDL", "TRKDS"}) {
    EXPECT_EQ(ReadFileBytes(temp.Path() / "v4" / "S" / file),
              ReadFileBytes(temp.Path() / "v5" / "S" / file)) << file;
  }
  const auto s = ReadFileBytes(temp.Path() / "v4" / "S" / "TRKDS");
  EXPECT_EQ(std::string(s.begin(), s.begin() + 8), "4.0     ");
}

TEST(CommandLine, EmbedBeamFlagChangesNoByte) {
  TempFolder temp("embed");
  const fs::path model = WriteModel(temp, kTwoPoints);
  fs::create_directories(temp.Path() / "on");
  fs::create_directories(temp.Path() / "off");
  ASSERT_EQ(Cli({"transfer", model.string(), "--dir", (temp.Path() / "on").string(), "--name",
                 "E", "--embed-beam", "-q"}).status, 0);
  ASSERT_EQ(Cli({"transfer", model.string(), "--dir", (temp.Path() / "off").string(), "--name",
                 "E", "-q"}).status, 0);
  for (const char* file : {"TRKDA", "TRKDL", "TRKDS"}) {
    EXPECT_EQ(ReadFileBytes(temp.Path() / "on" / "E" / file),
              ReadFileBytes(temp.Path() / "off" / "E" / file)) << file;
  }
}

TEST(CommandLine, VersionOtherThanFourOrFiveIsRefused) {
  TempFolder temp("badversion");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--version", "6"});
  EXPECT_EQ(r.status, 2);
  EXPECT_FALSE(fs::exists(temp.Path() / "Trelk"));
}

TEST(CommandLine, ANameLongerThanTwelveCharactersIsRefusedBeforeAnythingIsWritten) {
  TempFolder temp("longname");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "ThirteenChars"});
  EXPECT_EQ(r.status, 2);
  EXPECT_NE(r.err.find("at most 12 characters"), std::string::npos);
  EXPECT_FALSE(fs::exists(temp.Path() / "ThirteenChars"));
}

TEST(CommandLine, AStructureFolderThatCannotBeMadeIsReported) {
  TempFolder temp("nofolder");
  const fs::path model = WriteModel(temp, kTwoPoints);
  // The structure folder is made one level deep: a name whose parent is missing fails.
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "no/such"});
  EXPECT_EQ(r.status, 6);
  EXPECT_EQ(r.err, "Error : Couldn't create directory !\n");
}

TEST(CommandLine, AnExistingStructureFolderIsWrittenOver) {
  TempFolder temp("existing");
  const fs::path model = WriteModel(temp, kTwoPoints);
  fs::create_directories(temp.Path() / "Old");
  testing::WriteFileBytes(temp.Path() / "Old" / "TRKDPOF", std::vector<std::uint8_t>(28, 0xAA));
  EXPECT_EQ(Cli({"transfer", model.string(), "--dir", temp.Path().string(), "--name", "Old",
                 "-q"}).status, 0);
  const auto pof = ReadFileBytes(temp.Path() / "Old" / "TRKDPOF");
  EXPECT_EQ(pof, (testing::ExpectedBytes().Ascii("4.0", 8).Zeros(20).Bytes()));
}

TEST(CommandLine, AnEmptyNameWritesIntoTheChosenFolderItself) {
  TempFolder temp("emptyname");
  const fs::path model = WriteModel(temp, kTwoPoints);
  EXPECT_EQ(Cli({"transfer", model.string(), "--dir", temp.Path().string(), "--name", "",
                 "-q"}).status, 0);
  EXPECT_TRUE(fs::exists(temp.Path() / "TRKDS"));
  const auto s = ReadFileBytes(temp.Path() / "TRKDS");
  EXPECT_EQ(std::string(s.begin() + 8, s.begin() + 20), std::string(12, ' '));
}

TEST(CommandLine, AModelWithoutPointsIsAnEmptyModel) {
  TempFolder temp("nopoints");
  const fs::path model = WriteModel(temp, R"({"format": "vask-model", "version": 1, "units": 6})");
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "E"});
  EXPECT_EQ(r.status, 5);
  EXPECT_EQ(r.err, "Empty Model\n");
  EXPECT_TRUE(fs::is_empty(temp.Path() / "E"));
}

TEST(CommandLine, ABadModelFileIsRefusedWithItsPathAndNothingIsWritten) {
  TempFolder temp("badmodel");
  const fs::path model = WriteModel(temp, R"({"format": "vask-model", "version": 1, "units": 99})");
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "B"});
  EXPECT_EQ(r.status, 3);
  EXPECT_NE(r.err.find("model.json"), std::string::npos);
  EXPECT_NE(r.err.find("units"), std::string::npos);
  EXPECT_FALSE(fs::exists(temp.Path() / "B"));
}

TEST(CommandLine, TheBuiltProgramRunsTheSameCommandLine) {
  TempFolder temp("binary");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const std::string command = std::string(VTT_CLI_PATH) + " transfer '" + model.string() +
                              "' --dir '" + temp.Path().string() + "' --name Bin -q 2>'" +
                              (temp.Path() / "err.txt").string() + "'";
  EXPECT_EQ(std::system(command.c_str()), 0);
  std::ifstream err(temp.Path() / "err.txt");
  std::string line;
  std::getline(err, line);
  EXPECT_EQ(line, "Transfer Complete");
  EXPECT_TRUE(fs::exists(temp.Path() / "Bin" / "TRKDS"));
}

}  // namespace
}  // namespace vtt
