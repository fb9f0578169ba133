// The check of a structure folder: every golden structure passes it, and a folder damaged
// in one place fails it with exactly that place reported.
#include "store/structure_check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "support/expected_bytes.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;

fs::path GoldenFolder(const std::string& model) {
  return fs::path(VTT_SOURCE_DIR) / "tests" / "models" / model / "expected";
}

std::vector<std::string> Texts(const std::vector<CheckProblem>& problems) {
  std::vector<std::string> out;
  for (const CheckProblem& p : problems) out.push_back(ProblemText(p));
  return out;
}

// A copy of the golden "frames" structure that a test may damage.
class DamagedStructure : public ::testing::Test {
 protected:
  DamagedStructure() : temp_("check") {
    for (const auto& entry : fs::directory_iterator(GoldenFolder("frames"))) {
      fs::copy_file(entry.path(), temp_.Path() / entry.path().filename());
    }
  }
  fs::path File(const std::string& name) const { return temp_.Path() / name; }
  void Patch(const std::string& name, std::size_t offset, std::vector<std::uint8_t> bytes) {
    auto content = testing::ReadFileBytes(File(name));
    ASSERT_LE(offset + bytes.size(), content.size());
    std::copy(bytes.begin(), bytes.end(), content.begin() + static_cast<std::ptrdiff_t>(offset));
    testing::WriteFileBytes(File(name), content);
  }
  std::vector<std::string> Check() const { return Texts(CheckStructureFolder(temp_.Path())); }

  testing::TempFolder temp_;
};

TEST(StructureCheck, EveryGoldenStructureHoldsEveryCheck) {
  int folders = 0;
  for (const auto& entry : fs::directory_iterator(fs::path(VTT_SOURCE_DIR) / "tests" / "models")) {
    if (!fs::exists(entry.path() / "expected")) continue;
    EXPECT_EQ(Texts(CheckStructureFolder(entry.path() / "expected")), std::vector<std::string>{})
        << entry.path().filename();
    ++folders;
  }
  EXPECT_GE(folders, 8);
}

TEST_F(DamagedStructure, UndamagedCopyHoldsEveryCheck) {
  EXPECT_EQ(Check(), std::vector<std::string>{});
}

TEST_F(DamagedStructure, BrokenNodeChainIsReportedAtTheNextNodeField) {
  // Node record 2 starts at 230; NextNode is its second i32.
  Patch("TRKDS", 234, {5, 0, 0, 0});
  EXPECT_EQ(Check(), std::vector<std::string>{
                         "TRKDS at offset 234: TrelkNodeRec 2 NextNode is 5; expected 3"});
}

TEST_F(DamagedStructure, DanglingComponentNumberOfAnElement) {
  // Element 3 starts at 2932; its Component is the i16 at 42.
  Patch("TRKDS", 2974, {0xE7, 0x03});
  EXPECT_EQ(Check(), std::vector<std::string>{
                         "TRKDS at offset 2974: TrelkElemRec 3 Component is 999; expected a "
                         "number of TrelkCpdFrameRec from 1 to 32"});
}

TEST_F(DamagedStructure, WrongGroupCountBehindTheElementGroups) {
  Patch("TRKDS", 2276, {4, 0});
  EXPECT_EQ(Check(), std::vector<std::string>{
                         "TRKDS at offset 2276: ElemGroupLast is 4; expected ElemGroupCount 6"});
}

TEST_F(DamagedStructure, CaseCountAboveItsCapacityAndTheRecordItPromises) {
  // CaseListCount(1) stands at 80 of the L file; its capacity is 0.
  Patch("TRKDL", 80, {1, 0});
  EXPECT_EQ(Check(),
            (std::vector<std::string>{
                "TRKDL at offset 160: the file ends at offset 160 inside TrelkGravityCaseRec 1: "
                "expected 1024 bytes from offset 160",
                "TRKDL at offset 80: CaseListCount(1) is 1; expected at most "
                "CaseListCapacity(1) (0)"}));
}

TEST_F(DamagedStructure, TruncatedFileIsReportedWithWhatIsMissing) {
  auto content = testing::ReadFileBytes(File("TRKDS"));
  content.resize(3000);
  testing::WriteFileBytes(File("TRKDS"), content);
  EXPECT_EQ(Check(), std::vector<std::string>{
                         "TRKDS at offset 3000: the file ends at offset 3000 inside TrelkElemRec "
                         "3: expected 92 bytes from offset 2932"});
}

TEST_F(DamagedStructure, TrailingBytesOfAnOlderLongerFile) {
  auto content = testing::ReadFileBytes(File("TRKDPOF"));
  content.insert(content.end(), 5, 0x41);
  testing::WriteFileBytes(File("TRKDPOF"), content);
  EXPECT_EQ(Check(), std::vector<std::string>{
                         "TRKDPOF at offset 28: 5 bytes after the end of the content at offset "
                         "28: left by an older, longer file; expected the file to end there"});
}

TEST_F(DamagedStructure, MissingFile) {
  fs::remove(File("TRKDPO"));
  EXPECT_EQ(Check(), std::vector<std::string>{"TRKDPO at offset 0: the file is missing"});
}

TEST_F(DamagedStructure, WrongVersionTextAndStructureName) {
  Patch("TRKDULS", 0, {'5'});
  Patch("TRKDA", 8, {'X'});
  EXPECT_EQ(Check(),
            (std::vector<std::string>{
                "TRKDA at offset 8: StructureName is \"Xrames      \"; expected \"frames      \" "
                "as in TRKDS",
                "TRKDULS at offset 0: VersionText is \"5.0     \"; expected \"4.0\" and five "
                "spaces"}));
}

TEST_F(DamagedStructure, DanglingCompoundPart) {
  // Frame compound 1 starts at 22837; PartComponent(1) is the i16 at 144.
  Patch("TRKDS", 22837 + 144, {0x10, 0x27});
  EXPECT_EQ(Check(), std::vector<std::string>{
                         "TRKDS at offset 22981: TrelkCpdFrameRec 1 PartComponent(1) is 10000; "
                         "expected a number of TrelkXecBeamRec from 1 to 6"});
}

TEST_F(DamagedStructure, CompoundWithAnotherNumber) {
  // ComponentNumberCopy of frame compound 1 is the i16 at 354.
  Patch("TRKDS", 22837 + 354, {2, 0});
  EXPECT_EQ(Check(), std::vector<std::string>{
                         "TRKDS at offset 23191: TrelkCpdFrameRec 1 ComponentNumberCopy is 2; "
                         "expected 1"});
}

TEST_F(DamagedStructure, DriftOnANodeThatDoesNotExist) {
  // Drift 1 starts at 7115; TopNode is the i32 at 22. The structure has 19 nodes.
  Patch("TRKDS", 7115 + 22, {20, 0, 0, 0});
  EXPECT_EQ(Check(), std::vector<std::string>{
                         "TRKDS at offset 7137: TrelkDriftRec 1 TopNode is 20; expected a node "
                         "number from 1 to 19"});
}

// A copy of another golden structure, to damage.
std::vector<std::string> CheckDamagedCopy(const std::string& model, const std::string& file,
                                          std::size_t offset, std::vector<std::uint8_t> bytes) {
  testing::TempFolder temp("check-" + model);
  for (const auto& entry : fs::directory_iterator(GoldenFolder(model))) {
    fs::copy_file(entry.path(), temp.Path() / entry.path().filename());
  }
  auto content = testing::ReadFileBytes(temp.Path() / file);
  std::copy(bytes.begin(), bytes.end(), content.begin() + static_cast<std::ptrdiff_t>(offset));
  testing::WriteFileBytes(temp.Path() / file, content);
  return Texts(CheckStructureFolder(temp.Path()));
}

TEST(StructureCheck, DiaphragmNumberPastTheDiaphragms) {
  // Node record 3 of frames-kn starts at 314; SlavedUX is the i16 at 34. One diaphragm.
  EXPECT_EQ(CheckDamagedCopy("frames-kn", "TRKDS", 314 + 34, {2, 0}),
            std::vector<std::string>{"TRKDS at offset 348: TrelkNodeRec 3 SlavedUX is 2; "
                                     "expected a diaphragm number or 0 from 0 to 1"});
}

TEST(StructureCheck, WallAndGeneralWallReferences) {
  // Wall compound 1 of walls-slabs starts at 34940; WallSection is the i16 at 50.
  const auto wall = CheckDamagedCopy("walls-slabs", "TRKDS", 34940 + 50, {77, 0});
  ASSERT_EQ(wall.size(), 1u);
  EXPECT_EQ(wall[0].rfind("TRKDS at offset 34990: TrelkCpdWallRec 1 WallSection is 77; expected "
                          "a number of TrelkXecWallElasticRec from 1 to ",
                          0),
            0u)
      << wall[0];
  // General-wall compound 1 starts at 35406; ShearMaterialKind is the i16 at 56.
  EXPECT_EQ(CheckDamagedCopy("walls-slabs", "TRKDS", 35406 + 56, {9, 0}),
            std::vector<std::string>{"TRKDS at offset 35464: TrelkCpdGWallRec 1 ShearMaterial: "
                                     "no component list for ShearMaterialKind 9"});
}

TEST(StructureCheck, BrokenChainOfCutMembers) {
  // Cut member 2 of groups-cuts starts at 8058; Next is the i32 at 6.
  EXPECT_EQ(CheckDamagedCopy("groups-cuts", "TRKDS", 8058 + 6, {5, 0, 0, 0}),
            std::vector<std::string>{
                "TRKDS at offset 8064: TrelkCutMemberRec 2 Next is 5; expected 3"});
}

TEST(StructureCheck, FrameLoadItemChainMustEndInZero) {
  // Frame load item 1 of loads starts at 11006; NextItem is the i16 at 2.
  EXPECT_EQ(CheckDamagedCopy("loads", "TRKDS", 11006 + 2, {3, 0}),
            std::vector<std::string>{
                "TRKDS at offset 11008: TrelkLoadFrameValueRec 1 NextItem is 3; expected 0 on "
                "the last item of subgroup 1,1,2"});
}

TEST_F(DamagedStructure, ComponentListLongerThanMaxComponentCount) {
  // MaxComponentCount opens the component library at 7247; the frame compounds are 32.
  Patch("TRKDS", 7247, {31, 0});
  EXPECT_EQ(Check(), std::vector<std::string>{
                         "TRKDS at offset 22835: the count of TrelkCpdFrameRec is 32; expected "
                         "at most MaxComponentCount 31"});
}

TEST(StructureCheck, SeriesEntryFollowsTheCases) {
  // The series entry of complete starts at 86 of the A file; the L file has dynamic cases.
  EXPECT_EQ(CheckDamagedCopy("complete", "TRKDA", 86, {'P', 'u', 's', 'h'}),
            std::vector<std::string>{
                "TRKDA at offset 86: TrelkLoadCaseRec 1 Name is \"PushAnalysis\"; expected "
                "\"DynaAnalysis\": TRKDL holds 4 dynamic and 4 pushover cases"});
  // Without the entry the A file holds its record as bytes behind its content.
  const auto problems = CheckDamagedCopy("complete", "TRKDA", 80, {0, 0});
  EXPECT_NE(std::find(problems.begin(), problems.end(),
                      "TRKDA at offset 80: LoadCaseCount is 0; expected 1: TRKDL holds 4 dynamic "
                      "and 4 pushover cases"),
            problems.end());
}

TEST(StructureCheck, NoCaseListBeyondTheThreeKindsOfCases) {
  // CaseListCount(4) stands at 86 of the L file.
  const auto problems = CheckDamagedCopy("one-node", "TRKDL", 86, {1, 0});
  EXPECT_NE(std::find(problems.begin(), problems.end(),
                      "TRKDL at offset 86: CaseListCount(4) is 1; expected at most 0"),
            problems.end());
}

// Whatever length a file is cut to, the check reports the cut and nothing else breaks.
TEST(StructureCheck, FileCutAtAnyLengthIsReportedAsCut) {
  for (const char* model : {"one-node", "groups-cuts"}) {
    StructureRead read = ReadStructureFolder(GoldenFolder(model));
    for (std::size_t which = 0; which < read.files.size(); ++which) {
      const std::string name = read.files[which].name;
      const auto bytes = testing::ReadFileBytes(GoldenFolder(model) / name);
      const std::size_t stride = std::string(model) == "one-node" ? 1 : 89;
      for (std::size_t size = 0; size < bytes.size(); size += stride) {
        StructureRead cut = read;
        cut.files[which] = ReadStructureFile(name.substr(4), std::span(bytes).first(size),
                                             read.File("S")->Section("drifts")->Value("DriftCount"));
        const std::vector<CheckProblem> problems = CheckStructure(cut);
        ASSERT_EQ(problems.size(), 1u) << model << " " << name << " cut to " << size << ": "
                                       << ProblemText(problems.back());
        EXPECT_EQ(problems[0].file, name);
        EXPECT_EQ(problems[0].offset, size) << model << " " << name;
        EXPECT_NE(problems[0].text.find("the file ends at offset " + std::to_string(size)),
                  std::string::npos)
            << problems[0].text;
      }
    }
  }
}

// A damaged byte anywhere never stops the reader or the check: each reports what it finds.
// Every fifth byte of a small structure is damaged in turn.
TEST(StructureCheck, AnyDamagedByteIsReadAndCheckedWithoutFailing) {
  const StructureRead read = ReadStructureFolder(GoldenFolder("one-node"));
  const auto bytes = testing::ReadFileBytes(GoldenFolder("one-node") / "TRKDS");
  std::size_t failing = 0;
  std::set<std::size_t> failing_at;
  for (std::size_t at = 0; at < bytes.size(); at += 5) {
    for (std::uint8_t value : {std::uint8_t{0xFF}, std::uint8_t{0x7F}}) {
      auto damaged = bytes;
      damaged[at] = value;
      StructureRead copy = read;
      ASSERT_NO_THROW(copy.files.back() = ReadStructureFile("S", damaged)) << at;
      bool failed = false;
      ASSERT_NO_THROW(failed = !CheckStructure(copy).empty()) << at;
      if (failed) {
        ++failing;
        failing_at.insert(at);
      }
    }
  }
  // Names, coordinates and properties are not checked; counts, chains and references are.
  // Node records 1 and 2 start at 146 and 230: a damaged NextNode byte always fails.
  EXPECT_EQ(failing_at.count(150), 1u);
  EXPECT_EQ(failing_at.count(235), 1u);
  EXPECT_GT(failing, 100u);
}

}  // namespace
}  // namespace vtt
