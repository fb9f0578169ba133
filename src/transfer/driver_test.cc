#include "transfer/driver.h"

#include <gtest/gtest.h>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/trelk_store.h"
#include "support/expected_bytes.h"
#include "transfer/failure.h"
#include "transfer/messages.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using testing::ReadFileBytes;
using testing::TempFolder;

// A host whose model holds only points.
class PointsOnlyHost : public test_support::FakeHostModel {
 public:
  explicit PointsOnlyHost(int points, int units = 6) : points_(points), units_(units) {}
  int GetPresentUnits() override {
    ++units_asked;
    return units_;
  }
  int GetPointCount() override { return points_; }
  int GetPointNameList(int& count, Names& names) override {
    count = points_;
    names.clear();
    for (int i = 1; i <= points_; ++i) names.push_back(std::to_string(i));
    return 0;
  }
  int GetPointCoordinates(const std::string& name, double& x, double& y, double& z,
                          const std::string&) override {
    x = 0;
    y = 0;
    z = 3.0 * (std::stoi(name) - 1);
    return 0;
  }
  int GetPointRestraints(const std::string& name, DofFlags& restraints) override {
    restraints = {};
    if (name == "1") restraints.fill(true);
    return 0;
  }
  int units_asked = 0;

 private:
  int points_;
  int units_;
};

TEST(TransferDriver, TheTwentyTwoStagesInTheirOrder) {
  const std::vector<std::string> expected = {
      "SetTrelkUnits",          "ReadVaskData",
      "Identification",         "InitTrelkStore",
      "FillTrelkNodes",         "FillTrelkDiaphragmConstraints",
      "FillTrelkMaterials",     "FillTrelkCrossSections",
      "FillTrelkReleaseComponents", "FillTrelkFemaComponents",
      "FillTrelkCompoundComponents", "FillTrelkElements",
      "FillTrelkNodalMass",     "FillTrelkLoadNode",
      "FillTrelkLoadFrame",     "FillTrelkFrames",
      "FillTrelkSectionCuts",   "FillTrelkSelfWeight",
      "FillTrelkDrift",         "FillTrelkLoadCases",
      "WriteTrelkStructure",    "Dispose"};
  std::vector<std::string> names;
  for (const TransferStage& stage : TransferStages()) names.emplace_back(stage.name);
  EXPECT_EQ(names, expected);
}

TEST(TransferDriver, NoHostConnectionShowsNoModelAndWritesNothing) {
  TempFolder temp("nomodel");
  TrelkStore store;
  CollectedMessages messages;
  EXPECT_EQ(Transform(nullptr, store, messages, temp.Path().string(), "X"),
            TransformOutcome::NoModel);
  ASSERT_EQ(messages.messages.size(), 1u);
  EXPECT_EQ(messages.messages[0].text, "No Model");
  EXPECT_EQ(messages.messages[0].icon, MessageIcon::Critical);
  EXPECT_TRUE(fs::is_empty(temp.Path()));
}

TEST(TransferDriver, AModelWithoutPointsShowsEmptyModelAndReadsNothing) {
  TempFolder temp("empty");
  PointsOnlyHost host(0);
  TrelkStore store;
  CollectedMessages messages;
  EXPECT_EQ(Transform(&host, store, messages, temp.Path().string(), "X"),
            TransformOutcome::EmptyModel);
  ASSERT_EQ(messages.messages.size(), 1u);
  EXPECT_EQ(messages.messages[0].text, "Empty Model");
  EXPECT_EQ(messages.messages[0].icon, MessageIcon::Critical);
  EXPECT_EQ(host.units_asked, 0);
  EXPECT_TRUE(fs::is_empty(temp.Path()));
}

TEST(TransferDriver, APointsOnlyModelRunsEveryStageAndWritesAStructure) {
  TempFolder temp("points");
  fs::create_directories(temp.Path() / "Tower");
  PointsOnlyHost host(3);
  TrelkStore store;
  CollectedMessages messages;
  std::vector<std::string> stages;
  std::vector<std::string> read_stages;
  TransferProgress progress;
  progress.on_stage = [&](int, std::string_view name) { stages.emplace_back(name); };
  progress.on_read_stage = [&](int, std::string_view name) { read_stages.emplace_back(name); };
  EXPECT_EQ(Transform(&host, store, messages, temp.Path().string(), "Tower", progress),
            TransformOutcome::Complete);
  ASSERT_FALSE(messages.messages.empty());
  EXPECT_EQ(messages.messages.back().text, "Transfer Complete");
  EXPECT_EQ(messages.messages.back().icon, MessageIcon::None);
  // Every stage this build carries ran, in order, ending with the files and the release.
  ASSERT_GE(stages.size(), 6u);
  EXPECT_EQ(stages.front(), "SetTrelkUnits");
  EXPECT_EQ(stages[stages.size() - 2], "WriteTrelkStructure");
  EXPECT_EQ(stages.back(), "Dispose");
  EXPECT_FALSE(read_stages.empty());
  for (const char* file : {"TRKDA", "TRKDULS", "TRKDPO", "TRKDPOA", "TRKDPOF", "TRKDL", "TRKDS"}) {
    EXPECT_TRUE(fs::exists(temp.Path() / "Tower" / file)) << file;
  }
  EXPECT_EQ(host.units_asked, 1);
}

TEST(TransferDriver, IdentificationBlockIsConstant) {
  TempFolder temp("ident");
  fs::create_directories(temp.Path() / "Id");
  PointsOnlyHost host(1);
  TrelkStore store;
  CollectedMessages messages;
  Transform(&host, store, messages, temp.Path().string(), "Id");
  EXPECT_EQ(store.FileIdText, "TRKD");
  EXPECT_EQ(store.VersionText, "4.0");
  EXPECT_EQ(store.VersionNumber, 4);
  EXPECT_EQ(store.ToolCode, 5);
  EXPECT_EQ(store.ProductTag, "TRELK V4");
  EXPECT_EQ(store.ProductName, "TRELK");
  EXPECT_EQ(store.StructureNote, "");
  EXPECT_EQ(store.StructureTitle, "Model Transferred");
  EXPECT_EQ(store.StructuresRoot, temp.Path().string());
}

TEST(TransferDriver, ThirteenCharacterNameIsCutInTheHeaderButNotInTheFolderTheUserMade) {
  TempFolder temp("long");
  // The structure folder on disk keeps the full name; the files follow the 12-character
  // field, whose folder the user must have too.
  fs::create_directories(temp.Path() / "ThirteenChars");
  fs::create_directories(temp.Path() / "ThirteenChar");
  PointsOnlyHost host(1);
  TrelkStore store;
  CollectedMessages messages;
  Transform(&host, store, messages, temp.Path().string(), "ThirteenChars");
  EXPECT_EQ(store.StructureName, "ThirteenChar");
  const auto bytes = ReadFileBytes(temp.Path() / "ThirteenChar" / "TRKDS");
  ASSERT_GE(bytes.size(), 20u);
  EXPECT_EQ(std::string(bytes.begin() + 8, bytes.begin() + 20), "ThirteenChar");
  EXPECT_TRUE(fs::exists(temp.Path() / "ThirteenChars"));
}

TEST(TransferDriver, UnitsComeFromTheHostIntoTheHeader) {
  TempFolder temp("units");
  fs::create_directories(temp.Path() / "U");
  PointsOnlyHost host(1, 3);  // kip, inch
  TrelkStore store;
  CollectedMessages messages;
  Transform(&host, store, messages, temp.Path().string(), "U");
  const auto bytes = ReadFileBytes(temp.Path() / "U" / "TRKDS");
  EXPECT_EQ(testing::ReadI16Le(bytes, 82), 0);
  EXPECT_EQ(testing::ReadI16Le(bytes, 84), 0);
  EXPECT_EQ(std::string(bytes.begin() + 126, bytes.begin() + 134), "6 in.   ");
}

TEST(TransferDriver, FileErrorsAreReportedAndTheRunStillCompletes) {
  TempFolder temp("fail");
  // No structure folder: the files cannot be opened, which is reported, not thrown.
  PointsOnlyHost host(1);
  TrelkStore store;
  CollectedMessages messages;
  EXPECT_EQ(Transform(&host, store, messages, (temp.Path() / "missing").string(), "N"),
            TransformOutcome::Complete);
  ASSERT_EQ(messages.messages.size(), 8u);
  EXPECT_EQ(messages.messages[0].title, "Can Not Open An Essential File");
  EXPECT_EQ(messages.messages.back().text, "Transfer Complete");
}

}  // namespace
}  // namespace vtt
