// The structure name and every time-history function name become names of files and
// folders: none may lead out of the structures folder or the records folder, or name a
// device. Run through the built program, with every folder it may write to inside a
// temporary folder that is looked at whole afterwards.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "support/expected_bytes.h"
#include "support/run_program.h"
#include "transfer/system_services.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using testing::EntriesUnder;
using testing::RunVask2Trelk;
using testing::TempFolder;

const char* kTwoPoints = R"({"format": "vask-model", "version": 1, "units": 3,
  "points": [{"name": "A", "x": 0, "y": 0, "z": 0}, {"name": "B", "x": 0, "y": 0, "z": 120}]})";

// The program works in root/work with the structures folder root/work/structures and the
// Trelk data folder root/work/trelk; the model file lies beside root, in the temporary
// folder, so that root holds only what the program writes.
struct PathRun {
  explicit PathRun(const std::string& tag) : temp("paths-" + tag) {
    fs::create_directories(work / "structures");
    fs::create_directories(work / "trelk");
    std::ofstream(temp.Path() / "model.json") << kTwoPoints;
  }
  testing::ProgramResult Transfer(const std::string& name) const {
    return RunVask2Trelk(work, temp.Path() / "home",
                         {"transfer", (temp.Path() / "model.json").string(), "--dir",
                          "structures", "--name", name, "--trelk-path", "trelk", "-q"});
  }
  TempFolder temp;
  fs::path root = temp.Path() / "root";
  fs::path work = root / "work";
};

class RefusedStructureName : public ::testing::TestWithParam<std::string> {};

// Refused before anything is read or made, with the transfer form's message for a folder
// it cannot make; the whole root stays as it was.
TEST_P(RefusedStructureName, IsRefusedAndNothingIsWritten) {
  PathRun run("refused");
  const testing::ProgramResult r = run.Transfer(GetParam());
  EXPECT_EQ(r.status, 6);
  EXPECT_EQ(r.err, "Error : Couldn't create directory !\n");
  EXPECT_EQ(r.out, "");
  EXPECT_EQ(EntriesUnder(run.root),
            (std::vector<std::string>{"work/", "work/structures/", "work/trelk/"}));
  EXPECT_FALSE(IsStructureFolderName(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(
    Names, RefusedStructureName,
    ::testing::Values("..", ".", "...", ". .", "../x", "../../x", "x/..", "a/b", "/abs",
                      "..\\x", "a\\b", "\\\\server", "C:", "C:x", "c:\\x", "x:y", "CON", "con",
                      "Con ", "PRN", "AUX", "NUL", "nul.txt", "NUL.tar.gz", "COM1", "com9.log",
                      "LPT1", "lpt9.dat", "a*b", "a?b", "a<b", "a>b", "a|b", "a\"b", "tab\there",
                      "line\nbreak"));

// An absolute name is tried apart, since it names a place outside the root; it is short
// enough to pass the twelve-character rule.
TEST(SafeStructureName, AnAbsoluteNameIsRefusedWhereverItPoints) {
  PathRun run("absolute");
  const fs::path outside = "/tmp/vttabs";
  ASSERT_FALSE(fs::exists(outside));
  const testing::ProgramResult r = run.Transfer(outside.string());
  EXPECT_EQ(r.status, 6);
  EXPECT_EQ(r.err, "Error : Couldn't create directory !\n");
  EXPECT_FALSE(fs::exists(outside));
  EXPECT_EQ(EntriesUnder(run.root),
            (std::vector<std::string>{"work/", "work/structures/", "work/trelk/"}));
}

const std::vector<std::string> kSevenFiles = {"TRKDA",   "TRKDL",   "TRKDPO", "TRKDPOA",
                                              "TRKDPOF", "TRKDS",   "TRKDULS"};

std::vector<std::string> InFolder(const std::string& folder) {
  std::vector<std::string> entries = {folder + "/"};
  for (const std::string& file : kSevenFiles) entries.push_back(folder + "/" + file);
  return entries;
}

// Names near the refused ones that are ordinary folder names.
TEST(SafeStructureName, NamesNearTheDeviceNamesAndDotsAreAccepted) {
  for (const std::string name : {"COM10", "CONSOLE", "con-1", "LPT0", "A.B", "..A", " lead",
                                 "Tour \xC3\xA9t\xC3\xA9"}) {
    PathRun run("accepted");
    const testing::ProgramResult r = run.Transfer(name);
    EXPECT_EQ(r.status, 0) << name << ": " << r.err;
    EXPECT_EQ(r.err, "Transfer Complete\n") << name;
    EXPECT_EQ(EntriesUnder(run.work / "structures"), InFolder(name)) << name;
    EXPECT_TRUE(IsStructureFolderName(name)) << name;
  }
}

// An empty name, and one of spaces alone (trailing spaces are no part of the folder), write
// into the structures folder itself.
TEST(SafeStructureName, AnEmptyNameWritesIntoTheStructuresFolderItself) {
  for (const std::string name : {"", "   "}) {
    PathRun run("empty");
    const testing::ProgramResult r = run.Transfer(name);
    EXPECT_EQ(r.status, 0) << r.err;
    std::vector<std::string> files;
    for (const std::string& file : kSevenFiles) files.push_back(file);
    EXPECT_EQ(EntriesUnder(run.work / "structures"), files);
  }
}

// Trailing spaces are dropped before the check, as they are from the folder: "Con " is
// the console on Windows, "A " the folder "A".
TEST(SafeStructureName, TrailingSpacesAreDroppedBeforeTheCheck) {
  EXPECT_FALSE(IsStructureFolderName("Con   "));
  EXPECT_FALSE(IsStructureFolderName(".. "));
  EXPECT_TRUE(IsStructureFolderName("A "));
  EXPECT_TRUE(IsStructureFolderName(""));
  EXPECT_TRUE(IsStructureFolderName("  "));
}

// ---- Function names: the record file is not written, the transfer goes on ----

TEST(SafeFunctionName, ANameLeadingOutOfTheRecordsFolderWritesNothingThereAndTheTransferGoesOn) {
  TempFolder temp("paths-functions");
  const fs::path root = temp.Path() / "root";
  const fs::path work = root / "work";
  fs::create_directories(work / "structures");
  fs::create_directories(work / "trelk");
  std::ofstream(temp.Path() / "model.json") << R"({"format": "vask-model", "version": 1,
    "units": 6, "points": [{"name": "A", "x": 0, "y": 0, "z": 0}],
    "functions": [
      {"name": "../../../escape", "kind": 1, "points": [[0, 0], [0.01, 1]]},
      {"name": "..", "kind": 1, "points": [[0, 0], [0.01, 1]]},
      {"name": "C:EQ", "kind": 1, "points": [[0, 0], [0.01, 1]]},
      {"name": "NUL.rec", "kind": 1, "points": [[0, 0], [0.01, 1]]},
      {"name": "a\\b", "kind": 1, "points": [[0, 0], [0.01, 1]]},
      {"name": "GOOD", "kind": 1, "points": [[0, 0], [0.01, 1]]}]})";
  const testing::ProgramResult r =
      RunVask2Trelk(work, temp.Path() / "home",
                    {"transfer", (temp.Path() / "model.json").string(), "--dir", "structures",
                     "--name", "F", "--trelk-path", "trelk", "-q"});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.err,
            "Time-history function \"../../../escape\": no record file is written, because its "
            "name holds a path separator, \"/\" or \"\\\", and would lead out of the records "
            "folder.\n"
            "Time-history function \"..\": no record file is written, because its name is made "
            "of dots alone and names a folder, not a file.\n"
            "Time-history function \"C:EQ\": no record file is written, because its name holds "
            "a colon, which names a drive or a file stream.\n"
            "Time-history function \"NUL.rec\": no record file is written, because its name is "
            "a device name of Windows (CON, PRN, AUX, NUL, COM1 to COM9, LPT1 to LPT9).\n"
            "Time-history function \"a\\b\": no record file is written, because its name holds "
            "a path separator, \"/\" or \"\\\", and would lead out of the records folder.\n"
            "Transfer Complete\n");
  EXPECT_EQ(EntriesUnder(work / "trelk"),
            (std::vector<std::string>{"Records/", "Records/EqkeGroup/", "Records/EqkeGroup/GOOD"}));
  std::vector<std::string> everything = {"work/", "work/structures/"};
  for (const std::string& entry : InFolder("F")) everything.push_back("work/structures/" + entry);
  for (const std::string& entry : EntriesUnder(work / "trelk")) {
    everything.push_back("work/trelk/" + entry);
  }
  everything.push_back("work/trelk/");
  std::sort(everything.begin(), everything.end());
  EXPECT_EQ(EntriesUnder(root), everything);
}

}  // namespace
}  // namespace vtt
