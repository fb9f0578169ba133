// The command line as a user meets it: options, defaults, messages on standard error,
// exit statuses, progress and the summary. These tests run the command line in process;
// every one that could write record files or default folders names its own Trelk data
// folder with --trelk-path inside a temporary folder.
#include "app/cli.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "app/rule_text.h"
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

CliResult Cli(std::vector<std::string> args, bool err_is_terminal = false) {
  args.insert(args.begin(), "vask2trelk");
  std::vector<const char*> argv;
  for (const std::string& a : args) argv.push_back(a.c_str());
  std::ostringstream out, err;
  const int status =
      RunCli(static_cast<int>(argv.size()), argv.data(), out, err, err_is_terminal);
  return {status, out.str(), err.str()};
}

fs::path WriteModel(const TempFolder& temp, const std::string& json,
                    const std::string& file = "model.json") {
  const fs::path path = temp.Path() / file;
  std::ofstream(path) << json;
  return path;
}

std::string Trelk(const TempFolder& temp) { return (temp.Path() / "TRELK").string(); }

const char* const kStructureFiles[] = {"TRKDA",   "TRKDULS", "TRKDPO", "TRKDPOA",
                                       "TRKDPOF", "TRKDL",   "TRKDS"};

const char* kTwoPoints = R"({"format": "vask-model", "version": 1, "units": 3,
  "points": [{"name": "A", "x": 0, "y": 0, "z": 0}, {"name": "B", "x": 0, "y": 0, "z": 120}]})";

// Two time-history functions: one whose name can be a record file, one whose name is a
// device name of Windows and gets no file.
const char* kTwoFunctions = R"({"format": "vask-model", "version": 1, "units": 6,
  "points": [{"name": "A", "x": 0, "y": 0, "z": 0}],
  "functions": [{"name": "F1", "kind": 1, "points": [[0.5, 1], [1, -2]]},
                {"name": "CON", "kind": 1, "points": [[0.5, 1]]}]})";

// A frame whose two ends are one place: the transfer cannot orient it and stops.
const char* kZeroLengthFrame = R"({"format": "vask-model", "version": 1, "units": 6,
  "materials": [{"name": "C30", "type": 2, "isotropic": {"E": 3e7, "U": 0.2, "A": 1e-5,
                 "G": 1.25e7}, "concrete": {"fc": 30000}}],
  "frame_sections": [{"name": "C400", "type": 8, "material": "C30", "rebar_design": 1,
                      "properties": {"area": 0.16}}],
  "points": [{"name": "A", "x": 0, "y": 0, "z": 0}, {"name": "B", "x": 0, "y": 0, "z": 0}],
  "frames": [{"name": "K", "section": "C400", "i": "A", "j": "B"}]})";

fs::path SourceFile(const std::string& relative) {
  return fs::path(VTT_SOURCE_DIR) / relative;
}

// The line of the summary that starts with `label`, without its line break; empty when
// there is none.
std::string SummaryLine(const std::string& out, const std::string& label) {
  std::istringstream lines(out);
  std::string line;
  while (std::getline(lines, line)) {
    if (line.rfind(label, 0) == 0) return line;
  }
  return {};
}

// ---- Help and the rule text ----

TEST(CommandLine, HelpExplainsEveryTransferOption) {
  const CliResult r = Cli({"transfer", "--help"});
  EXPECT_EQ(r.status, 0);
  for (const char* option :
       {"--dir", "--name", "--version", "--trelk-path", "--embed-beam", "--quiet"}) {
    EXPECT_NE(r.out.find(option), std::string::npos) << option;
  }
}

TEST(CommandLine, HelpNamesBothCommands) {
  const CliResult r = Cli({"--help"});
  EXPECT_EQ(r.status, 0);
  EXPECT_NE(r.out.find("transfer"), std::string::npos);
  EXPECT_NE(r.out.find("rules"), std::string::npos);
}

TEST(CommandLine, WithoutACommandItShowsUsage) {
  const CliResult r = Cli({});
  EXPECT_EQ(r.status, 2);
  EXPECT_NE(r.err.find("--help"), std::string::npos);
}

TEST(CommandLine, RulesPrintsTheRuleTextAndNothingElse) {
  const CliResult r = Cli({"rules"});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, TransferRuleText());
  EXPECT_EQ(r.err, "");
  EXPECT_EQ(r.out.substr(0, 68),
            "1.  This command will export out a model in a Trelk Structure format");
  EXPECT_NE(r.out.find("transfer rules.\n\n2.  Units"), std::string::npos);
}

// ---- The transfer and its four inputs ----

TEST(CommandLine, TransferWritesTheStructureFolder) {
  TempFolder temp("cli");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "Frame", "--trelk-path", Trelk(temp), "--quiet"});
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.err, "Transfer Complete\n");
  EXPECT_EQ(r.out, "");
  for (const char* file : kStructureFiles) {
    EXPECT_TRUE(fs::exists(temp.Path() / "Frame" / file)) << file;
  }
  EXPECT_EQ(fs::file_size(temp.Path() / "Frame" / "TRKDPOF"), 28u);
}

TEST(CommandLine, TheStructureNameIsTrelkWhenNoneIsGiven) {
  TempFolder temp("defaultname");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--trelk-path", Trelk(temp), "-q"});
  EXPECT_EQ(r.status, 0) << r.err;
  const auto s = ReadFileBytes(temp.Path() / "Trelk" / "TRKDS");
  ASSERT_GE(s.size(), 20u);
  EXPECT_EQ(std::string(s.begin() + 8, s.begin() + 20), "Trelk       ");
}

TEST(CommandLine, VersionFourAndFiveGiveTheSameFiles) {
  TempFolder temp("version");
  const fs::path model = WriteModel(temp, kTwoPoints);
  fs::create_directories(temp.Path() / "v4");
  fs::create_directories(temp.Path() / "v5");
  ASSERT_EQ(Cli({"transfer", model.string(), "--dir", (temp.Path() / "v4").string(), "--name",
                 "S", "--version", "4", "--trelk-path", Trelk(temp), "-q"}).status, 0);
  ASSERT_EQ(Cli({"transfer", model.string(), "--dir", (temp.Path() / "v5").string(), "--name",
                 "S", "--version", "5", "--trelk-path", Trelk(temp), "-q"}).status, 0);
  for (const char* file : kStructureFiles) {
    EXPECT_EQ(ReadFileBytes(temp.Path() / "v4" / "S" / file),
              ReadFileBytes(temp.Path() / "v5" / "S" / file)) << file;
  }
  const auto s = ReadFileBytes(temp.Path() / "v4" / "S" / "TRKDS");
  EXPECT_EQ(std::string(s.begin(), s.begin() + 8), "4.0     ");
}

// The walls-and-slabs model has frames that join walls, so it makes embedded beams: the
// flag must not change a byte of them, nor of the record files.
TEST(CommandLine, EmbedBeamOnOrOffGivesByteIdenticalOutput) {
  TempFolder temp("embed");
  const fs::path model = SourceFile("tests/models/walls-slabs/model.json");
  for (const char* side : {"on", "off"}) fs::create_directories(temp.Path() / side);
  ASSERT_EQ(Cli({"transfer", model.string(), "--dir", (temp.Path() / "on").string(), "--name",
                 "E", "--embed-beam", "--trelk-path", (temp.Path() / "T-on").string(), "-q"})
                .status,
            0);
  ASSERT_EQ(Cli({"transfer", model.string(), "--dir", (temp.Path() / "off").string(), "--name",
                 "E", "--trelk-path", (temp.Path() / "T-off").string(), "-q"})
                .status,
            0);
  for (const char* file : kStructureFiles) {
    const auto on = ReadFileBytes(temp.Path() / "on" / "E" / file);
    EXPECT_FALSE(on.empty()) << file;
    EXPECT_EQ(on, ReadFileBytes(temp.Path() / "off" / "E" / file)) << file;
  }
  // The structure holds embedded beams indeed.
  const auto s = ReadFileBytes(temp.Path() / "on" / "E" / "TRKDS");
  EXPECT_NE(std::string(s.begin(), s.end()).find("ElemEmbedBeam"), std::string::npos);
}

TEST(CommandLine, VersionOtherThanFourOrFiveIsRefused) {
  TempFolder temp("badversion");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--version", "6", "--trelk-path", Trelk(temp)});
  EXPECT_EQ(r.status, 2);
  EXPECT_FALSE(fs::exists(temp.Path() / "Trelk"));
}

TEST(CommandLine, AMissingDirIsAUsageError) {
  TempFolder temp("missingdir");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const CliResult r = Cli({"transfer", model.string(), "--dir",
                           (temp.Path() / "nowhere").string(), "--trelk-path", Trelk(temp)});
  EXPECT_EQ(r.status, 2);
  EXPECT_FALSE(fs::exists(temp.Path() / "nowhere"));
}

TEST(CommandLine, ANameLongerThanTwelveCharactersIsRefusedBeforeAnythingIsWritten) {
  TempFolder temp("longname");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "ThirteenChars", "--trelk-path", Trelk(temp)});
  EXPECT_EQ(r.status, 2);
  EXPECT_EQ(r.err,
            "Error : the structure name \"ThirteenChars\" is too long: a structure name has at "
            "most 12 characters.\n");
  EXPECT_FALSE(fs::exists(temp.Path() / "ThirteenChars"));
  EXPECT_FALSE(fs::exists(Trelk(temp)));
}

// ---- The structure folder ----

// The structure folder is made one level deep: with a "/" in the name the folder's parent
// is missing, and the file system refuses to make it.
TEST(CommandLine, ANameTheFileSystemRefusesIsReportedAndNothingIsWritten) {
  TempFolder temp("nofolder");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "no/such", "--trelk-path", Trelk(temp)});
  EXPECT_EQ(r.status, 6);
  EXPECT_EQ(r.err, "Error : Couldn't create directory !\n");
  EXPECT_EQ(r.out, "");
  EXPECT_FALSE(fs::exists(temp.Path() / "no"));
}

TEST(CommandLine, ANameUnderAnExistingFileIsRefused) {
  TempFolder temp("underfile");
  const fs::path model = WriteModel(temp, kTwoPoints);
  std::ofstream(temp.Path() / "plain") << "a file, not a folder";
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "plain/S", "--trelk-path", Trelk(temp)});
  EXPECT_EQ(r.status, 6);
  EXPECT_EQ(r.err, "Error : Couldn't create directory !\n");
}

TEST(CommandLine, AnExistingStructureFolderIsAcceptedAndItsFilesWrittenOver) {
  TempFolder temp("existing");
  const fs::path model = WriteModel(temp, kTwoPoints);
  fs::create_directories(temp.Path() / "Old");
  testing::WriteFileBytes(temp.Path() / "Old" / "TRKDPOF", std::vector<std::uint8_t>(28, 0xAA));
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "Old", "--trelk-path", Trelk(temp), "-q"});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.err, "Transfer Complete\n");
  const auto pof = ReadFileBytes(temp.Path() / "Old" / "TRKDPOF");
  EXPECT_EQ(pof, (testing::ExpectedBytes().Ascii("4.0", 8).Zeros(20).Bytes()));
}

TEST(CommandLine, AnEmptyNameWritesIntoTheChosenFolderItself) {
  TempFolder temp("emptyname");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "", "--trelk-path", Trelk(temp)});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.err, "Transfer Complete\n");
  for (const char* file : kStructureFiles) {
    EXPECT_TRUE(fs::exists(temp.Path() / file)) << file;
  }
  // The structure name goes on empty: twelve blanks in the header.
  const auto s = ReadFileBytes(temp.Path() / "TRKDS");
  EXPECT_EQ(std::string(s.begin() + 8, s.begin() + 20), std::string(12, ' '));
  EXPECT_EQ(SummaryLine(r.out, "Structure written to "),
            "Structure written to " + (temp.Path() / "").string());
}

TEST(CommandLine, TrailingSpacesOfTheNameAreNoPartOfTheFolder) {
  TempFolder temp("trailing");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "Tower  ", "--trelk-path", Trelk(temp), "-q"});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.err, "Transfer Complete\n");
  EXPECT_TRUE(fs::exists(temp.Path() / "Tower" / "TRKDS"));
  EXPECT_FALSE(fs::exists(temp.Path() / "Tower  "));
}

// ---- The default structures folder ----

TEST(CommandLine, WithoutADirTheStructureGoesToTheStructuresFolderOfTheTrelkPath) {
  TempFolder temp("defaultdir");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const fs::path trelk = temp.Path() / "data" / "TRELK";
  fs::create_directories(temp.Path() / "data");
  const CliResult r = Cli({"transfer", model.string(), "--name", "Tower", "--trelk-path",
                           trelk.string()});
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.err, "Transfer Complete\n");
  // TrelkPath, then TrelkPath/Trelk, then TrelkPath/Trelk/Structures were made.
  const fs::path folder = trelk / "Trelk" / "Structures" / "Tower";
  for (const char* file : kStructureFiles) {
    EXPECT_TRUE(fs::exists(folder / file)) << file;
  }
  EXPECT_EQ(SummaryLine(r.out, "Structure written to "),
            "Structure written to " + folder.string());
}

TEST(CommandLine, AnExistingStructuresFolderIsUsedAsItIs) {
  TempFolder temp("existingdefault");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const fs::path structures = temp.Path() / "TRELK" / "Trelk" / "Structures";
  fs::create_directories(structures / "Tower");
  std::ofstream(structures / "keep.txt") << "kept";
  const CliResult r = Cli({"transfer", model.string(), "--name", "Tower", "--trelk-path",
                           Trelk(temp), "-q"});
  EXPECT_EQ(r.status, 0);
  EXPECT_TRUE(fs::exists(structures / "Tower" / "TRKDS"));
  EXPECT_TRUE(fs::exists(structures / "keep.txt"));
}

TEST(CommandLine, AStructuresFolderThatCannotBeMadeHasItsOwnStatus) {
  TempFolder temp("nostructures");
  const fs::path model = WriteModel(temp, kTwoPoints);
  // The Trelk data folder given is a file: nothing can be made in it.
  const fs::path file = temp.Path() / "TRELK";
  std::ofstream(file) << "not a folder";
  const CliResult r = Cli({"transfer", model.string(), "--name", "Tower", "--trelk-path",
                           file.string()});
  EXPECT_EQ(r.status, 8);
  EXPECT_EQ(r.err, "Error : the Trelk structures folder \"" +
                       (file / "Trelk" / "Structures").string() +
                       "\" is missing and cannot be made.\n"
                       "Choose the structures folder with --dir, or Trelk's data folder with "
                       "--trelk-path.\n");
  EXPECT_EQ(r.out, "");
}

TEST(CommandLine, AChosenDirMakesNoTrelkFolders) {
  TempFolder temp("nodefault");
  const fs::path model = WriteModel(temp, kTwoPoints);
  ASSERT_EQ(Cli({"transfer", model.string(), "--dir", temp.Path().string(), "--name", "S",
                 "--trelk-path", Trelk(temp), "-q"}).status,
            0);
  EXPECT_FALSE(fs::exists(Trelk(temp)));
}

// ---- Record files ----

TEST(CommandLine, RecordFilesGoToTheRecordsFolderOfTheTrelkPathAndAreCounted) {
  TempFolder temp("records");
  const fs::path model = WriteModel(temp, kTwoFunctions);
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "R", "--trelk-path", Trelk(temp)});
  EXPECT_EQ(r.status, 0);
  const fs::path records = temp.Path() / "TRELK" / "Records" / "EqkeGroup";
  EXPECT_EQ(fs::file_size(records / "F1"), 56u + 3u * 8u);
  EXPECT_FALSE(fs::exists(records / "CON"));
  EXPECT_NE(r.err.find("Time-history function \"CON\": no record file is written"),
            std::string::npos);
  EXPECT_EQ(r.err.substr(r.err.size() - 18), "Transfer Complete\n");
  EXPECT_EQ(SummaryLine(r.out, "  record files:"),
            "  record files:                     1 in " + records.string());
}

// ---- Failures and their statuses ----

TEST(CommandLine, AModelWithoutPointsIsAnEmptyModel) {
  TempFolder temp("nopoints");
  const fs::path model = WriteModel(temp, R"({"format": "vask-model", "version": 1, "units": 6})");
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "E", "--trelk-path", Trelk(temp)});
  EXPECT_EQ(r.status, 5);
  EXPECT_EQ(r.err, "Empty Model\n");
  EXPECT_EQ(r.out, "");
  // The folder is made before the guard looks at the model, as the button does it.
  EXPECT_TRUE(fs::is_empty(temp.Path() / "E"));
}

TEST(CommandLine, ABadModelFileIsRefusedWithItsPathAndNothingIsWritten) {
  TempFolder temp("badmodel");
  const fs::path model = WriteModel(temp, R"({"format": "vask-model", "version": 1, "units": 99})");
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "B", "--trelk-path", Trelk(temp)});
  EXPECT_EQ(r.status, 3);
  EXPECT_NE(r.err.find("model.json"), std::string::npos);
  EXPECT_NE(r.err.find("units"), std::string::npos);
  EXPECT_FALSE(fs::exists(temp.Path() / "B"));
}

TEST(CommandLine, ABadModelFileMakesNoDefaultFolder) {
  TempFolder temp("badmodeldefault");
  const fs::path model = WriteModel(temp, R"({"format": "vask-model", "version": 1})");
  const CliResult r = Cli({"transfer", model.string(), "--trelk-path", Trelk(temp)});
  EXPECT_EQ(r.status, 3);
  EXPECT_FALSE(fs::exists(Trelk(temp)));
}

TEST(CommandLine, ATransferThatStopsHasItsOwnStatusAndNamesTheCause) {
  TempFolder temp("stopped");
  const fs::path model = WriteModel(temp, kZeroLengthFrame);
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "Z", "--trelk-path", Trelk(temp)});
  EXPECT_EQ(r.status, 7);
  EXPECT_EQ(r.err,
            "Transfer stopped\n"
            "Frame \"K\": its end nodes \"A\" and \"B\" coincide; a frame of zero length has no "
            "orientation.\n");
  EXPECT_EQ(r.out, "");
}

// ---- Progress and summary ----

TEST(CommandLine, ProgressIsSilentWhenStandardErrorIsNoTerminal) {
  TempFolder temp("silent");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "S", "--trelk-path", Trelk(temp)},
                          false);
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.err, "Transfer Complete\n");
  EXPECT_EQ(r.out.rfind("Structure written to ", 0), 0u);
}

TEST(CommandLine, ProgressIsDrawnOnATerminalAndClearedBeforeTheMessage) {
  TempFolder temp("terminal");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "S", "--trelk-path", Trelk(temp)},
                          true);
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.err.rfind("\r[..............................]   0% stage 1/22 SetTrelkUnits", 0),
            0u);
  EXPECT_NE(r.err.find("% reading 28/28 DetectEmbeddedBeams"), std::string::npos);
  const std::string last = "\r[#############################.]  97% stage 22/22 Dispose";
  const std::size_t at = r.err.find(last);
  ASSERT_NE(at, std::string::npos);
  // The bar is blanked out, and the message starts at the beginning of the line.
  const std::string tail = r.err.substr(at + last.size());
  const std::size_t clear = tail.find('\r');
  ASSERT_NE(clear, std::string::npos);
  const std::string blank = tail.substr(clear + 1, tail.size() - clear - 1 - 19);
  EXPECT_EQ(blank, std::string(blank.size(), ' '));
  EXPECT_EQ(tail.substr(tail.size() - 19), "\rTransfer Complete\n");
}

TEST(CommandLine, QuietSilencesProgressAndSummaryOnATerminal) {
  TempFolder temp("quiet");
  const fs::path model = WriteModel(temp, kTwoPoints);
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "S", "--trelk-path", Trelk(temp), "--quiet"},
                          true);
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.err, "Transfer Complete\n");
  EXPECT_EQ(r.out, "");
}

TEST(CommandLine, TheSummaryCountsWhatWentIntoTheStructure) {
  TempFolder temp("summary");
  const fs::path model = SourceFile("examples/portal-pushover.json");
  const CliResult r = Cli({"transfer", model.string(), "--dir", temp.Path().string(),
                           "--name", "Portal", "--trelk-path", Trelk(temp)});
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(SummaryLine(r.out, "Structure written to "),
            "Structure written to " + (temp.Path() / "Portal").string());
  // Four points and the origin node; two columns and a beam in their groups.
  EXPECT_EQ(SummaryLine(r.out, "  nodes:"),
            "  nodes:                            5 (node 1 is the origin node of every "
            "structure)");
  EXPECT_EQ(SummaryLine(r.out, "  rigid diaphragms:"), "  rigid diaphragms:                 0");
  EXPECT_EQ(SummaryLine(r.out, "  elements:"),
            "  elements:                         3 in 2 element groups");
  EXPECT_EQ(SummaryLine(r.out, "    ElemSteelCol:"), "    ElemSteelCol:                   2");
  EXPECT_EQ(SummaryLine(r.out, "    ElemSteelBeam:"), "    ElemSteelBeam:                  1");
  EXPECT_EQ(SummaryLine(r.out, "    end zones:"), "    end zones:                      1");
  EXPECT_EQ(SummaryLine(r.out, "  structure frames (groups):"),
            "  structure frames (groups):        2");
  EXPECT_EQ(SummaryLine(r.out, "  load cases:"),
            "  load cases:                       1 gravity, 1 pushover, 0 dynamic");
  EXPECT_EQ(SummaryLine(r.out, "  analysis series entries:"),
            "  analysis series entries:          1");
  EXPECT_EQ(SummaryLine(r.out, "  record files:"),
            "  record files:                     0 in " +
                (temp.Path() / "TRELK" / "Records" / "EqkeGroup").string());
}

// ---- The bundled examples ----

TEST(CommandLine, EveryExampleTransfersToTransferComplete) {
  int examples = 0;
  for (const fs::directory_entry& entry : fs::directory_iterator(SourceFile("examples"))) {
    if (entry.path().extension() != ".json") continue;
    ++examples;
    TempFolder temp("example");
    const CliResult r = Cli({"transfer", entry.path().string(), "--dir", temp.Path().string(),
                             "--name", "Example", "--trelk-path", Trelk(temp), "-q"});
    EXPECT_EQ(r.status, 0) << entry.path();
    EXPECT_EQ(r.err, "Transfer Complete\n") << entry.path();
    for (const char* file : kStructureFiles) {
      EXPECT_TRUE(fs::exists(temp.Path() / "Example" / file)) << entry.path() << " " << file;
    }
  }
  EXPECT_GE(examples, 4);
}

TEST(CommandLine, TheOfficeBuildingWritesARecordFileForEveryTimeHistoryFunction) {
  TempFolder temp("office");
  const CliResult r = Cli({"transfer", SourceFile("examples/office-building.json").string(),
                           "--dir", temp.Path().string(), "--name", "Office", "--trelk-path",
                           Trelk(temp)});
  ASSERT_EQ(r.status, 0) << r.err;
  const fs::path records = temp.Path() / "TRELK" / "Records" / "EqkeGroup";
  // The spectrum is no time history and gets no file.
  for (const char* name : {"EQ-SYNTH", "PULSE", "SINE-1HZ", "COS-2HZ", "RAMP-UP", "SAWTOOTH",
                           "TRIANGLE", "PERIODIC"}) {
    EXPECT_TRUE(fs::exists(records / name)) << name;
  }
  EXPECT_FALSE(fs::exists(records / "RS-DESIGN"));
  // The record read from the text file beside the model: 2000 values and the leading pair.
  EXPECT_EQ(fs::file_size(records / "EQ-SYNTH"), 56u + 2001u * 8u);
  EXPECT_EQ(SummaryLine(r.out, "  record files:"),
            "  record files:                     8 in " + records.string());
  EXPECT_EQ(SummaryLine(r.out, "  rigid diaphragms:"), "  rigid diaphragms:                 6");
  EXPECT_EQ(SummaryLine(r.out, "  load cases:"),
            "  load cases:                       2 gravity, 4 pushover, 2 dynamic");
}

}  // namespace
}  // namespace vtt
