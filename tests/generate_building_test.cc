// The building generator: what a generated model holds, that it is the same for the same
// seed, and that a small one transfers completely.
#include "generate_building.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <filesystem>
#include <set>
#include <stdexcept>
#include <string>

#include "hosts/json_model_host.h"
#include "store/trelk_store.h"
#include "support/expected_bytes.h"
#include "transfer/driver.h"
#include "transfer/messages.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using generate::BuildingCounts;
using generate::BuildingOptions;
using generate::BuildingText;
using generate::CountBuilding;
using generate::OptionsForJoints;
using testing::TempFolder;

// 4 storeys, 5 by 4 bays: 150 joints.
BuildingOptions SmallBuilding(std::uint64_t seed = 7) {
  BuildingOptions options;
  options.storeys = 4;
  options.bays_x = 5;
  options.bays_y = 4;
  options.seed = seed;
  return options;
}

std::size_t CountWhere(const nlohmann::json& list, const char* key) {
  std::size_t n = 0;
  for (const nlohmann::json& item : list) n += item.contains(key) ? 1 : 0;
  return n;
}

TEST(GenerateBuilding, CountsFollowTheGrid) {
  const BuildingCounts counts = CountBuilding(SmallBuilding());
  EXPECT_EQ(counts.points, 5 * 6 * 5);
  // Columns 4 x 30, beams 4 x (5 x 5 + 4 x 6), braces in bay 1 of both Y facades (bay 4 is
  // also a third bay, bay 2 holds the wall).
  EXPECT_EQ(counts.frames, 4 * 30 + 4 * 49 + 4 * 2 * 2);
  // Four diagonal bays a floor become two triangles each; four walls a storey.
  EXPECT_EQ(counts.triangles, 4 * 2 * 4);
  EXPECT_EQ(counts.walls, 16);
  EXPECT_EQ(counts.areas, 4 * (20 - 4) + 32 + 16);
}

TEST(GenerateBuilding, TheTextListsWhatTheCountsSay) {
  const BuildingOptions options = SmallBuilding();
  const nlohmann::json model = nlohmann::json::parse(BuildingText(options));
  const BuildingCounts counts = CountBuilding(options);
  EXPECT_EQ(model["format"], "vask-model");
  EXPECT_EQ(model["version"], 1);
  ASSERT_EQ(static_cast<std::int64_t>(model["points"].size()), counts.points);
  ASSERT_EQ(static_cast<std::int64_t>(model["frames"].size()), counts.frames);
  ASSERT_EQ(static_cast<std::int64_t>(model["areas"].size()), counts.areas);
  std::int64_t triangles = 0;
  for (const nlohmann::json& area : model["areas"]) triangles += area["points"].size() == 3;
  EXPECT_EQ(triangles, counts.triangles);
  // One diaphragm and one group per storey; the base is fixed.
  EXPECT_EQ(model["constraints"].size(), 4u);
  EXPECT_EQ(model["groups"].size(), 4u);
  EXPECT_EQ(model["groups"][0]["name"], "STOREY-1");
  EXPECT_EQ(model["points"][0]["restraints"],
            nlohmann::json::parse("[true, true, true, true, true, true]"));
  EXPECT_EQ(model["points"][30]["constraints"], nlohmann::json::parse(R"(["D1"])"));
  // Every name is used once in its list.
  for (const char* list : {"points", "frames", "areas"}) {
    std::set<std::string> names;
    for (const nlohmann::json& item : model[list]) names.insert(item["name"].get<std::string>());
    EXPECT_EQ(names.size(), model[list].size()) << list;
  }
}

TEST(GenerateBuilding, CarriesEveryKindOfLoadMassAndFunction) {
  const nlohmann::json model = nlohmann::json::parse(BuildingText(SmallBuilding()));
  EXPECT_GT(CountWhere(model["points"], "forces"), 0u);
  EXPECT_GT(CountWhere(model["points"], "mass"), 0u);
  EXPECT_GT(CountWhere(model["frames"], "distributed_loads"), 0u);
  EXPECT_GT(CountWhere(model["frames"], "point_loads"), 0u);
  EXPECT_GT(CountWhere(model["frames"], "hinges"), 0u);
  EXPECT_GT(CountWhere(model["frames"], "releases"), 0u);
  EXPECT_GT(CountWhere(model["frames"], "mass_per_length"), 0u);
  EXPECT_GT(CountWhere(model["areas"], "uniform_loads"), 0u);
  EXPECT_GT(CountWhere(model["areas"], "uniform_to_frame_loads"), 0u);
  EXPECT_GT(CountWhere(model["areas"], "mass_per_area"), 0u);
  EXPECT_EQ(model["load_patterns"][0]["self_weight_multiplier"], 1);
  EXPECT_EQ(model["mass_source"]["option"], 3);
  std::set<int> kinds;
  for (const nlohmann::json& f : model["functions"]) kinds.insert(f["kind"].get<int>());
  EXPECT_EQ(kinds, (std::set<int>{1, 2, 4}));
  std::set<std::string> sections;
  for (const nlohmann::json& s : model["area_sections"]) {
    sections.insert(s["name"].get<std::string>() + ":" +
                    std::to_string(s["shell_type"].get<int>()));
  }
  EXPECT_EQ(sections, (std::set<std::string>{"SLAB200:1", "WALL200:1", "WALL300L:6"}));
}

TEST(GenerateBuilding, TheSameSeedGivesTheSameModel) {
  EXPECT_EQ(BuildingText(SmallBuilding(7)), BuildingText(SmallBuilding(7)));
}

TEST(GenerateBuilding, AnotherSeedChangesValuesButNotTheGeometry) {
  const std::string a = BuildingText(SmallBuilding(7));
  const std::string b = BuildingText(SmallBuilding(8));
  EXPECT_NE(a, b);
  const nlohmann::json ma = nlohmann::json::parse(a);
  const nlohmann::json mb = nlohmann::json::parse(b);
  ASSERT_EQ(ma["points"].size(), mb["points"].size());
  for (std::size_t p = 0; p < ma["points"].size(); ++p) {
    for (const char* key : {"name", "x", "y", "z"}) {
      ASSERT_EQ(ma["points"][p][key], mb["points"][p][key]) << p << " " << key;
    }
  }
  EXPECT_EQ(ma["frames"].size(), mb["frames"].size());
  EXPECT_EQ(ma["areas"], mb["areas"]);
}

TEST(GenerateBuilding, RefusesABuildingWithoutStoreysOrBays) {
  BuildingOptions options = SmallBuilding();
  options.storeys = 0;
  EXPECT_THROW(CountBuilding(options), std::invalid_argument);
  EXPECT_THROW(BuildingText(options), std::invalid_argument);
  options = SmallBuilding();
  options.bays_y = 0;
  EXPECT_THROW(CountBuilding(options), std::invalid_argument);
}

TEST(GenerateBuilding, ASizeInJointsPicksASquarePlanTwiceAsWideAsTall) {
  const BuildingOptions small = OptionsForJoints(10000);
  EXPECT_EQ(small.bays_x, 26);
  EXPECT_EQ(small.bays_y, 26);
  EXPECT_EQ(small.storeys, 13);
  EXPECT_EQ(CountBuilding(small).points, 14 * 27 * 27);
  const BuildingOptions large = OptionsForJoints(500000);
  EXPECT_EQ(large.bays_x, 99);
  EXPECT_EQ(large.storeys, 49);
  EXPECT_EQ(CountBuilding(large).points, 500000);
  // Over a million elements: frames and areas.
  EXPECT_GT(CountBuilding(large).frames + CountBuilding(large).areas, 1000000);
  const BuildingOptions tiny = OptionsForJoints(1);
  EXPECT_EQ(tiny.storeys, 1);
  EXPECT_EQ(tiny.bays_x, 1);
}

TEST(GenerateBuilding, ASmallBuildingTransfersCompletely) {
  TempFolder temp("generated");
  fs::create_directories(temp.Path() / "Block");
  const std::unique_ptr<JsonModelHost> host =
      JsonModelHost::FromText(BuildingText(SmallBuilding()), "building.json", temp.Path());
  TrelkStore store;
  CollectedMessages messages;
  const std::string trelk = (temp.Path() / "TRELK").string();
  ASSERT_EQ(Transform(host.get(), store, messages, temp.Path().string(), "Block", trelk),
            TransformOutcome::Complete);
  ASSERT_EQ(messages.messages.size(), 1u) << messages.messages.front().text;
  EXPECT_EQ(messages.messages.back().text, "Transfer Complete");

  // The artificial node, 150 joints, and per floor four diagonal bays of seven new nodes
  // each (two centroids and five mid-sides).
  EXPECT_EQ(store.Nodes.Count(), 1 + 150 + 4 * 4 * 7);
  EXPECT_EQ(store.Diaphragms.Count(), 4);
  EXPECT_EQ(store.Frames.Count(), 4);  // one per storey group
  EXPECT_EQ(store.Drifts.Count(), 2);
  // The ground columns and braces stand on one support each; the ground walls on two.
  EXPECT_EQ(store.SectionCuts.Count(), 2);
  EXPECT_EQ(store.CutMembers.Count(), (30 + 4) + 1 + 4 + 1);
  EXPECT_EQ(store.GravityCases.Count(), 1);
  EXPECT_EQ(store.PushoverCases.Count(), 4);
  EXPECT_EQ(store.DynamicCases.Count(), 2);
  for (const char* file : {"TRKDA", "TRKDULS", "TRKDPO", "TRKDPOA", "TRKDPOF", "TRKDL", "TRKDS"}) {
    EXPECT_TRUE(fs::exists(temp.Path() / "Block" / file)) << file;
  }
  std::size_t records = 0;
  for ([[maybe_unused]] const auto& entry :
       fs::directory_iterator(temp.Path() / "TRELK" / "Records" / "EqkeGroup")) {
    ++records;
  }
  EXPECT_EQ(records, 3u);  // QUAKE, SINE-1HZ and RAMP
}

}  // namespace
}  // namespace vtt
