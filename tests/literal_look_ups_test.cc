// The indexes behind the look-ups by label give the structure that the literal searches
// give, byte for byte: random buildings of every mix of parts, the golden models, and the
// accepted model files with names given twice, each transferred once through the indexes
// and once with literal look-ups. Likewise the work done on a second thread beside other
// steps, and done in turn.
#include <gtest/gtest.h>

#include <cctype>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <mutex>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "generate_building.h"
#include "hosts/json_model_host.h"
#include "source/literal_look_ups.h"
#include "source/second_thread.h"
#include "store/trelk_store.h"
#include "support/expected_bytes.h"
#include "support/model_text.h"
#include "transfer/driver.h"
#include "transfer/messages.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using testing::TempFolder;

const fs::path kSource = VTT_SOURCE_DIR;

// Every file under `folder`, by its path relative to it, with its bytes.
std::map<std::string, std::string> FilesUnder(const fs::path& folder) {
  std::map<std::string, std::string> files;
  if (!fs::exists(folder)) return files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    std::ifstream in(entry.path(), std::ios::binary);
    files[fs::relative(entry.path(), folder).generic_string()] =
        std::string(std::istreambuf_iterator<char>(in), {});
  }
  return files;
}

// Restores the indexed look-ups whatever happens in the test.
class LiteralLookUpsOn {
 public:
  LiteralLookUpsOn() { SetLiteralLookUps(true); }
  LiteralLookUpsOn(const LiteralLookUpsOn&) = delete;
  LiteralLookUpsOn& operator=(const LiteralLookUpsOn&) = delete;
  ~LiteralLookUpsOn() { SetLiteralLookUps(false); }
};

// Every step in turn, whatever happens in the test.
class InTurn {
 public:
  InTurn() { SetSecondThreadWork(false); }
  InTurn(const InTurn&) = delete;
  InTurn& operator=(const InTurn&) = delete;
  ~InTurn() { SetSecondThreadWork(true); }
};

// Transfers the model text into `folder` (structure "S", Trelk data folder "TRELK") and
// returns every file written; `outcome` receives the objects left out, in the order they
// were told, and the messages.
std::map<std::string, std::string> Transfer(const std::string& text, const fs::path& base,
                                            const fs::path& folder, std::string& outcome,
                                            TransferProgress progress = {}) {
  fs::create_directories(folder / "S");
  const std::unique_ptr<JsonModelHost> host = JsonModelHost::FromText(text, "model.json", base);
  TrelkStore store;
  CollectedMessages messages;
  std::mutex told;  // notes of a second thread that failed to hold them would race
  progress.on_drop = [&outcome, &told](const DropNote& note) {
    const std::lock_guard<std::mutex> lock(told);
    outcome += "left out: " + note.kind + " " + note.name + ": " + note.reason + "\n";
  };
  try {
    Transform(host.get(), store, messages, folder.string(), "S", (folder / "TRELK").string(),
              progress);
  } catch (const std::exception& failure) {
    outcome += std::string("stopped: ") + failure.what() + "\n";
  }
  for (const UserMessage& message : messages.messages) outcome += message.text + "\n";
  return FilesUnder(folder);
}

// Transfers the text as the program does, and again while an `OtherWay` lives.
template <class OtherWay>
void ExpectTheSameBothWays(const std::string& text, const fs::path& base) {
  TempFolder temp("literal");
  std::string indexedOutcome;
  const auto indexed = Transfer(text, base, temp.Path() / "indexed", indexedOutcome);
  std::string literalOutcome;
  std::map<std::string, std::string> literal;
  {
    const OtherWay on;
    literal = Transfer(text, base, temp.Path() / "literal", literalOutcome);
  }
  EXPECT_EQ(indexedOutcome, literalOutcome);
  ASSERT_FALSE(indexed.empty());
  ASSERT_EQ(indexed.size(), literal.size());
  for (const auto& [name, bytes] : indexed) {
    const auto other = literal.find(name);
    ASSERT_NE(other, literal.end()) << name;
    EXPECT_TRUE(bytes == other->second) << name << " differs";
  }
}

std::string TextOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

TEST(SecondThreadWork, IsOnUnlessATestTurnsItOff) {
  EXPECT_TRUE(SecondThreadWork());
  {
    const InTurn inTurn;
    EXPECT_FALSE(SecondThreadWork());
  }
  EXPECT_TRUE(SecondThreadWork());
}

TEST(LiteralLookUps, AreOffUnlessATestTurnsThemOn) {
  EXPECT_FALSE(LiteralLookUps());
  {
    const LiteralLookUpsOn on;
    EXPECT_TRUE(LiteralLookUps());
  }
  EXPECT_FALSE(LiteralLookUps());
}

// Objects left out by stages on both sides of the second thread: frame loads in a local
// system (stages 11 and 12, this thread), an area load in a local system (stage 14, the
// second thread), a frame of aluminium (stage 20, the second thread, which classes the
// frames before it reads the area loads), a hinge in the middle of a frame (stage 27, this
// thread). They are told in the order of the stages, and of the frames within a stage.
const char* const kModelWithDropsOnBothSides = R"({"format": "vask-model", "version": 1, "units": 6,
  "materials": [{"name": "C", "type": 2, "weight_per_volume": 24},
                {"name": "AL", "type": 3, "weight_per_volume": 27}],
  "frame_sections": [{"name": "FS", "type": 8, "material": "C"},
                     {"name": "AT", "type": 7, "material": "AL"}],
  "area_sections": [{"name": "SH", "shell_type": 1, "material": "C",
                     "membrane_thickness": 0.2, "bending_thickness": 0.2}],
  "points": [{"name": "P1", "x": 0, "y": 0, "z": 0, "restraints": [true, true, true, true, true, true]},
             {"name": "P2", "x": 4, "y": 0, "z": 0, "restraints": [true, true, true, true, true, true]},
             {"name": "P3", "x": 4, "y": 0, "z": 3}, {"name": "P4", "x": 0, "y": 0, "z": 3},
             {"name": "P5", "x": 0, "y": 4, "z": 3}, {"name": "P6", "x": 4, "y": 4, "z": 3}],
  "frames": [{"name": "C1", "section": "FS", "i": "P1", "j": "P4",
              "hinges": [{"dof": 6, "relative_distance": 0.5}]},
             {"name": "B1", "section": "FS", "i": "P4", "j": "P3",
              "distributed_loads": [{"pattern": "DEAD", "csys": "Local", "dir": 2, "rd1": 0, "rd2": 1, "val1": 1, "val2": 1}],
              "point_loads": [{"pattern": "DEAD", "csys": "Local", "dir": 2, "rd": 0.5, "val": 1}]},
             {"name": "AL1", "section": "AT", "i": "P2", "j": "P3",
              "distributed_loads": [{"pattern": "DEAD", "csys": "Local", "dir": 2, "rd1": 0, "rd2": 1, "val1": 1, "val2": 1}],
              "point_loads": [{"pattern": "DEAD", "csys": "Local", "dir": 2, "rd": 0.5, "val": 1}]}],
  "areas": [{"name": "S1", "section": "SH", "points": ["P4", "P3", "P6", "P5"],
             "uniform_loads": [{"pattern": "DEAD", "csys": "Local", "dir": 3, "value": 2}]}],
  "load_patterns": [{"name": "DEAD", "self_weight_multiplier": 1}]})";

// The outcomes of transferring `text` with the second thread, while the first lingers at
// the start of stage 11 so that the second runs all its parts ahead of their turn, and with
// every step in turn.
struct LingeringAndInTurn {
  std::string onTwoThreads;
  std::string inTurn;
};

LingeringAndInTurn TransferLingeringAndInTurn(const std::string& text, const char* folder) {
  TempFolder temp(folder);
  LingeringAndInTurn outcomes;
  TransferProgress lingering;
  lingering.on_read_stage = [](int stage, std::string_view) {
    if (stage == 11) std::this_thread::sleep_for(std::chrono::milliseconds(100));
  };
  Transfer(text, kSource, temp.Path() / "two", outcomes.onTwoThreads, lingering);
  const InTurn on;
  Transfer(text, kSource, temp.Path() / "one", outcomes.inTurn);
  return outcomes;
}

TEST(SecondThreadWork, ObjectsLeftOutAreToldInTheOrderOfTheStages) {
  // The second thread reads the area loads (stage 14) and classes the frames (stage 20)
  // before the frames' loads are read: their notes must wait their turn.
  const auto [onTwoThreads, inTurn] =
      TransferLingeringAndInTurn(kModelWithDropsOnBothSides, "notes");
  EXPECT_EQ(onTwoThreads, inTurn);
  const std::vector<std::string> inOrder = {"left out: frame distributed load B1 (DEAD)",
                                            "left out: frame distributed load AL1 (DEAD)",
                                            "left out: frame point load B1 (DEAD)",
                                            "left out: frame point load AL1 (DEAD)",
                                            "left out: area load S1",
                                            "left out: frame AL1",
                                            "left out: hinge C1"};
  std::size_t at = 0;
  for (const std::string& note : inOrder) {
    const std::size_t found = onTwoThreads.find(note, at);
    ASSERT_NE(found, std::string::npos) << note << " not found after " << at << " in\n"
                                        << onTwoThreads;
    at = found + note.size();
  }
}

// A frame of zero length stops the transfer where its frames are classed (stage 20, on the
// second thread, which does that first); the frame load and the area load left out before
// it (stages 11 and 14) are told first, and the failure is that of stage 20.
const char* const kModelStoppedOnTheSecondThread = R"({"format": "vask-model", "version": 1,
  "units": 6,
  "materials": [{"name": "C", "type": 2, "weight_per_volume": 24}],
  "frame_sections": [{"name": "FS", "type": 8, "material": "C"}],
  "area_sections": [{"name": "SH", "shell_type": 1, "material": "C",
                     "membrane_thickness": 0.2, "bending_thickness": 0.2}],
  "points": [{"name": "P1", "x": 0, "y": 0, "z": 0, "restraints": [true, true, true, true, true, true]},
             {"name": "P3", "x": 4, "y": 0, "z": 3}, {"name": "P4", "x": 0, "y": 0, "z": 3},
             {"name": "P5", "x": 0, "y": 4, "z": 3}, {"name": "P6", "x": 4, "y": 4, "z": 3},
             {"name": "P7", "x": 0, "y": 0, "z": 3}],
  "frames": [{"name": "B1", "section": "FS", "i": "P4", "j": "P3",
              "distributed_loads": [{"pattern": "DEAD", "csys": "Local", "dir": 2, "rd1": 0, "rd2": 1, "val1": 1, "val2": 1}]},
             {"name": "Z1", "section": "FS", "i": "P4", "j": "P7"}],
  "areas": [{"name": "S1", "section": "SH", "points": ["P4", "P3", "P6", "P5"],
             "uniform_loads": [{"pattern": "DEAD", "csys": "Local", "dir": 3, "value": 2}]}],
  "load_patterns": [{"name": "DEAD", "self_weight_multiplier": 1}],
  "mass_source": {"option": 1}})";

TEST(SecondThreadWork, AFailureOfTheSecondThreadComesAtItsStage) {
  const auto [onTwoThreads, inTurn] =
      TransferLingeringAndInTurn(kModelStoppedOnTheSecondThread, "stopped");
  EXPECT_EQ(onTwoThreads, inTurn);
  EXPECT_EQ(onTwoThreads,
            "left out: frame distributed load B1 (DEAD): in the local system \"Local\"\n"
            "left out: area load S1: a load in a local system or an unsupported direction "
            "costs the area every load of its kind\n"
            "stopped: Frame \"Z1\": its end nodes \"P4\" and \"P7\" coincide; a frame of "
            "zero length has no orientation.\n");
}

// A model of one point with a nodal load in each of `patterns` load patterns, and
// `steel_sections` steel frame sections besides, which become beam sections whether a
// frame uses them or not.
std::string ManyNodalLoadPatterns(int patterns, int steel_sections) {
  const char* const force = R"({"pattern": "P#", "values": [1, 0, 0, 0, 0, 0]})";
  const char* const pattern = R"({"name": "P#", "type": 1})";
  const char* const section = R"({"name": "S#", "type": 1, "material": "S355"})";
  return R"({"format": "vask-model", "version": 1, "units": 6,
 "materials": [{"name": "S355", "type": 1}],
 "points": [{"name": "A", "x": 0, "y": 0, "z": 0, "forces": [)" +
         testing::NumberedEntries(patterns, force) + R"(]}],
 "load_patterns": [)" + testing::NumberedEntries(patterns, pattern) + R"(],
 "frame_sections": [)" + testing::NumberedEntries(steel_sections, section) + "]}";
}

// The outcomes of transferring `text` with the second thread, while the first lingers at
// the start of transfer stage `lingerAt` so that the second fills its parts ahead of their
// turn, and with every step in turn; each ends with the last stage begun.
LingeringAndInTurn TransferLingeringInTheFillAndInTurn(const std::string& text,
                                                       const char* folder, int lingerAt) {
  TempFolder temp(folder);
  LingeringAndInTurn outcomes;
  std::string lastStage;
  TransferProgress progress;
  progress.on_stage = [&lastStage, lingerAt](int stage, std::string_view name) {
    lastStage = name;
    if (stage == lingerAt) std::this_thread::sleep_for(std::chrono::milliseconds(300));
  };
  Transfer(text, kSource, temp.Path() / "two", outcomes.onTwoThreads, progress);
  outcomes.onTwoThreads += "last stage: " + lastStage + "\n";
  const InTurn on;
  Transfer(text, kSource, temp.Path() / "one", outcomes.inTurn, progress);
  outcomes.inTurn += "last stage: " + lastStage + "\n";
  return outcomes;
}

// The nodal loads are filled on the second thread while the first makes the components
// and elements. Load patterns with nodal loads take one record each and two more for the
// accelerations, in a list made at once with room for ten more, and that room is an i16
// of the file: 32,755 patterns fit, 32,756 (count 32,758, room 32,768) do not. The
// failure comes at stage 14, however early the second thread met it.
TEST(SecondThreadWork, AFailureOfTheNodalLoadsComesAtTheirStage) {
  const auto [onTwoThreads, inTurn] = TransferLingeringInTheFillAndInTurn(
      ManyNodalLoadPatterns(32756, 0), "nodal-loads-stopped", 12);
  EXPECT_EQ(onTwoThreads, inTurn);
  EXPECT_EQ(onTwoThreads,
            "stopped: Overflow: the structure can hold at most 32757 nodal load patterns; "
            "this model needs more.\n"
            "last stage: FillTrelkLoadNode\n");
}

// With both failures, the beam sections' (stage 8, this thread) comes first, although the
// second thread met the nodal loads' while this one lingered.
TEST(SecondThreadWork, AFailureOfAnEarlierStageComesBeforeOneOfTheSecondThread) {
  const auto [onTwoThreads, inTurn] = TransferLingeringInTheFillAndInTurn(
      ManyNodalLoadPatterns(32756, 32760), "sections-stopped", 8);
  EXPECT_EQ(onTwoThreads, inTurn);
  EXPECT_EQ(onTwoThreads,
            "stopped: Overflow: the structure can hold at most 32757 beam sections; this "
            "model needs more.\n"
            "last stage: FillTrelkCrossSections\n");
}

class LiteralLookUpsOnRandomBuildings : public ::testing::TestWithParam<std::uint64_t> {};

TEST_P(LiteralLookUpsOnRandomBuildings, GiveTheSameStructure) {
  const std::string text = generate::BuildingText(generate::RandomBuildingOptions(GetParam()));
  ExpectTheSameBothWays<LiteralLookUpsOn>(text, kSource);
}

TEST_P(LiteralLookUpsOnRandomBuildings, InTurnGivesTheSameStructure) {
  const std::string text = generate::BuildingText(generate::RandomBuildingOptions(GetParam()));
  ExpectTheSameBothWays<InTurn>(text, kSource);
}

INSTANTIATE_TEST_SUITE_P(Seeds, LiteralLookUpsOnRandomBuildings,
                         ::testing::Range<std::uint64_t>(1, 13));

class LiteralLookUpsOnModels : public ::testing::TestWithParam<std::string> {};

TEST_P(LiteralLookUpsOnModels, GiveTheSameStructure) {
  const fs::path file = kSource / GetParam();
  ExpectTheSameBothWays<LiteralLookUpsOn>(TextOf(file), file.parent_path());
}

TEST_P(LiteralLookUpsOnModels, InTurnGivesTheSameStructure) {
  const fs::path file = kSource / GetParam();
  ExpectTheSameBothWays<InTurn>(TextOf(file), file.parent_path());
}

INSTANTIATE_TEST_SUITE_P(
    Files, LiteralLookUpsOnModels,
    ::testing::Values("tests/models/complete/model.json", "tests/models/loads/model.json",
                      "tests/models/groups-cuts/model.json",
                      "tests/models/walls-slabs/model.json", "tests/models/frames/model.json",
                      "tests/bad/duplicate-point-names.json",
                      "tests/bad/duplicate-frame-names.json",
                      "examples/shear-wall-history.json"),
    [](const ::testing::TestParamInfo<std::string>& info) {
      std::string name;
      for (const char c : info.param) {
        name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
      }
      return name;
    });

}  // namespace
}  // namespace vtt
