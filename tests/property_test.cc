// Random valid models through the whole transfer: buildings of a random mix of parts (the
// building generator's RandomBuildingOptions), each read as a model file, transferred into
// a temporary folder and its structure checked. Whatever the mix, the transfer completes,
// the check finds nothing, and what can be counted from the model alone is what the
// structure holds.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "generate_building.h"
#include "hosts/json_model_host.h"
#include "store/structure_check.h"
#include "store/structure_reader.h"
#include "store/trelk_store.h"
#include "support/expected_bytes.h"
#include "transfer/driver.h"
#include "transfer/messages.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using generate::BuildingCounts;
using generate::BuildingFeatures;
using generate::BuildingOptions;
using generate::BuildingText;
using generate::CountBuilding;
using generate::RandomBuildingOptions;
using testing::TempFolder;

constexpr std::uint64_t kSeeds = 40;

std::string Describe(const BuildingOptions& o) {
  const BuildingFeatures& f = o.features;
  std::string text = std::to_string(o.storeys) + " storeys, " + std::to_string(o.bays_x) + " x " +
                     std::to_string(o.bays_y) + " bays;";
  const auto part = [&text](bool on, const char* name) {
    if (on) text += std::string(" ") + name;
  };
  part(f.walls, "walls");
  part(f.slabs, "slabs");
  part(f.triangles, "triangles");
  part(f.braces, "braces");
  part(f.hinges, "hinges");
  part(f.releases, "releases");
  part(f.diaphragms, "diaphragms");
  part(f.point_forces, "point-forces");
  part(f.frame_distributed_loads, "distributed-loads");
  part(f.frame_point_loads, "frame-point-loads");
  part(f.area_uniform_loads, "area-loads");
  part(f.area_to_frame_loads, "area-to-frame-loads");
  part(f.masses, "masses");
  part(f.mass_source, "mass-source");
  part(f.functions, "functions");
  part(f.cases, "cases");
  part(f.groups, "groups");
  return text;
}

std::size_t FilesIn(const fs::path& folder) {
  if (!fs::exists(folder)) return 0;
  std::size_t files = 0;
  for ([[maybe_unused]] const auto& entry : fs::directory_iterator(folder)) ++files;
  return files;
}

class RandomBuilding : public ::testing::TestWithParam<std::uint64_t> {};

TEST_P(RandomBuilding, TransfersCompletelyAndChecksClean) {
  const BuildingOptions options = RandomBuildingOptions(GetParam());
  const BuildingFeatures& f = options.features;
  SCOPED_TRACE(Describe(options));
  const std::string text = BuildingText(options);

  // The text lists what the counts say, whatever was left out.
  const nlohmann::json model = nlohmann::json::parse(text);
  const BuildingCounts counts = CountBuilding(options);
  ASSERT_EQ(static_cast<std::int64_t>(model["points"].size()), counts.points);
  ASSERT_EQ(static_cast<std::int64_t>(model["frames"].size()), counts.frames);
  ASSERT_EQ(static_cast<std::int64_t>(model["areas"].size()), counts.areas);
  std::int64_t triangles = 0;
  for (const nlohmann::json& area : model["areas"]) triangles += area["points"].size() == 3;
  ASSERT_EQ(triangles, counts.triangles);

  TempFolder temp("property");
  fs::create_directories(temp.Path() / "Random");
  const std::unique_ptr<JsonModelHost> host =
      JsonModelHost::FromText(text, "random.json", temp.Path());
  TrelkStore store;
  CollectedMessages messages;
  const fs::path trelk = temp.Path() / "TRELK";
  ASSERT_EQ(Transform(host.get(), store, messages, temp.Path().string(), "Random",
                      trelk.string()),
            TransformOutcome::Complete);
  ASSERT_EQ(messages.messages.size(), 1u) << messages.messages.front().text;
  EXPECT_EQ(messages.messages.back().text, "Transfer Complete");

  const fs::path folder = temp.Path() / "Random";
  for (const CheckProblem& problem : CheckStructureFolder(folder)) {
    ADD_FAILURE() << ProblemText(problem);
  }

  // The artificial node and every joint; each triangle adds its centroid and the middles
  // of its sides, the two triangles of a bay sharing the middle of their diagonal.
  const std::int64_t nodes = 1 + counts.points + counts.triangles / 2 * 7;
  EXPECT_EQ(store.Nodes.Count(), nodes);
  const StructureRead read = ReadStructureFolder(folder);
  const ReadFile* s = read.File("S");
  ASSERT_NE(s, nullptr);
  const ReadSection* nodeSection = s->Section("nodes");
  ASSERT_NE(nodeSection, nullptr);
  EXPECT_EQ(static_cast<std::int64_t>(nodeSection->Records("TrelkNodeRec").size()), nodes);

  // One rigid diaphragm a floor, when the floors have them.
  EXPECT_EQ(store.Diaphragms.Count(), f.diaphragms ? options.storeys : 0);
  // A record file for each of the three functions.
  EXPECT_EQ(FilesIn(trelk / "Records" / "EqkeGroup"), f.functions ? 3u : 0u);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomBuilding, ::testing::Range<std::uint64_t>(1, kSeeds + 1));

// The seeds above cover the mix: every part is in some models and out of others, and the
// sizes reach their bounds.
TEST(RandomBuildingOptions, TheSeedsCoverEveryPartInAndOut) {
  std::vector<int> on(17, 0);
  int fewest = 99, most = 0;
  for (std::uint64_t seed = 1; seed <= kSeeds; ++seed) {
    const BuildingOptions o = RandomBuildingOptions(seed);
    const BuildingFeatures& f = o.features;
    int p = 0;
    for (bool part : {f.walls, f.slabs, f.triangles, f.braces, f.hinges, f.releases,
                      f.diaphragms, f.point_forces, f.frame_distributed_loads,
                      f.frame_point_loads, f.area_uniform_loads, f.area_to_frame_loads,
                      f.masses, f.mass_source, f.functions, f.cases, f.groups}) {
      on[static_cast<std::size_t>(p++)] += part ? 1 : 0;
    }
    EXPECT_GE(o.storeys, 1);
    EXPECT_LE(o.storeys, 4);
    EXPECT_GE(o.bays_x, 1);
    EXPECT_LE(o.bays_x, 3);
    EXPECT_GE(o.bays_y, 1);
    EXPECT_LE(o.bays_y, 3);
    fewest = std::min({fewest, o.storeys, o.bays_x, o.bays_y});
    most = std::max(most, o.storeys);
  }
  for (std::size_t p = 0; p < on.size(); ++p) {
    EXPECT_GT(on[p], 0) << "part " << p;
    EXPECT_LT(on[p], static_cast<int>(kSeeds)) << "part " << p;
  }
  EXPECT_EQ(fewest, 1);
  EXPECT_EQ(most, 4);
}

TEST(RandomBuildingOptions, TheSameSeedGivesTheSameModel) {
  EXPECT_EQ(BuildingText(RandomBuildingOptions(11)), BuildingText(RandomBuildingOptions(11)));
}

// Everything in, the default: the text of the building that the measurements use does not
// change with the parts (its 64-bit FNV-1a hash, taken when the parts were added).
TEST(RandomBuildingOptions, TheDefaultBuildingIsUnchanged) {
  std::uint64_t hash = 0xcbf29ce484222325ULL;
  for (const char c : BuildingText(BuildingOptions{})) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3ULL;
  }
  EXPECT_EQ(hash, 0x497255f612d7c215ULL);
}

}  // namespace
}  // namespace vtt
