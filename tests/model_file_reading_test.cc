// The model file is read the quick way (straight from the text into the model) and, at the
// first thing that way does not take, the full way (a tree of the whole document, then the
// checks). The two must give the same model, or the same message: these tests hold
// ReadModel against ReadModelFully on every bundled model, on generated buildings, and on
// texts made to reach each point where the quick way hands over.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <tuple>
#include <functional>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "generate_building.h"
#include "hosts/direct_object_reader.h"
#include "hosts/json_document.h"
#include "hosts/json_model_host.h"
#include "hosts/model_file.h"

namespace vtt::model_file {
namespace {

namespace fs = std::filesystem;

std::string FileText(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// The message of a refused text, or "" when it is read.
std::string MessageOf(const std::function<Model()>& read) {
  try {
    read();
  } catch (const ModelFileError& error) {
    return error.what();
  }
  return "";
}

// Both readings of `text` agree: the same model, or the same message.
void ExpectSameReadingOf(const std::string& text, const std::string& what) {
  SCOPED_TRACE(what);
  const std::string quickMessage = MessageOf([&] { return ReadModel(text, "m.json", "/base"); });
  const std::string fullMessage =
      MessageOf([&] { return ReadModelFully(text, "m.json", "/base"); });
  ASSERT_EQ(quickMessage, fullMessage);
  if (!quickMessage.empty()) return;
  EXPECT_TRUE(ReadModel(text, "m.json", "/base") == ReadModelFully(text, "m.json", "/base"));
}

// The same for the text as it is and with its frames read on a second thread: once by
// the size of text at which that starts, once by the text grown past it with blanks.
void ExpectSameReading(const std::string& text, const std::string& what) {
  ExpectSameReadingOf(text, what);
  const std::size_t usual = FramesThreadFromBytes();
  SetFramesThreadFromBytes(0);
  ExpectSameReadingOf(text, what + ", frames on a second thread");
  SetFramesThreadFromBytes(usual);
  if (text.size() <= usual) {
    ExpectSameReadingOf(text + std::string(usual + 1, ' '), what + ", grown");
  }
}

std::vector<fs::path> BundledModels() {
  std::vector<fs::path> files;
  const fs::path source(VTT_SOURCE_DIR);
  for (const fs::path& folder : {source / "tests" / "models", source / "examples"}) {
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
      if (entry.path().extension() == ".json") files.push_back(entry.path());
    }
  }
  return files;
}

TEST(ModelFileReading, EveryBundledModelReadsTheSameBothWays) {
  const std::vector<fs::path> files = BundledModels();
  ASSERT_GE(files.size(), 10u);
  for (const fs::path& file : files) ExpectSameReading(FileText(file), file.string());
}

TEST(ModelFileReading, GeneratedBuildingsReadTheSameBothWays) {
  for (std::uint64_t seed = 1; seed <= 12; ++seed) {
    const std::string text = generate::BuildingText(generate::RandomBuildingOptions(seed));
    ExpectSameReading(text, "random building " + std::to_string(seed));
  }
  const std::string text = generate::BuildingText(generate::OptionsForJoints(2000));
  ExpectSameReading(text, "2000 joints");
  // The same bytes without a line break: the first item's line is the whole list.
  std::string oneLine;
  for (const char c : text) {
    if (c != '\n') oneLine += c;
  }
  ExpectSameReading(oneLine, "2000 joints on one line");
}

// A small model around `objects`, the members of the top level after units.
std::string ModelWith(const std::string& objects) {
  return R"({"format": "vask-model", "version": 1, "units": 6,
"frame_sections": [{"name": "S", "type": 8, "material": "C"}],
"materials": [{"name": "C", "type": 2}],
)" + objects + "}";
}

const std::string kPoints =
    R"("points": [{"name": "A", "x": 0, "y": 0, "z": 0}, {"name": "B", "x": 1, "y": 0, "z": 0},
                  {"name": "C", "x": 1, "y": 1, "z": 0}])";

TEST(ModelFileReading, ObjectsOfEveryFormReadTheSameBothWays) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"plain", kPoints},
      {"every point key",
       R"("points": [{"name": "A", "x": 1.5, "y": -2e-3, "z": 3E2, "restraints": [true, true, true, false, false, false],
          "constraints": ["D1", "D2"], "mass": [1, 2, 3, 4, 5, 6],
          "forces": [{"pattern": "W", "csys": "Local", "step": 2, "values": [1, 0, 0, 0, 0, 0.5]}, {"pattern": "E", "values": [0, 0, 0, 0, 0, 0]}]}])"},
      {"every frame key",
       kPoints + R"(, "frames": [{"name": "F", "section": "S", "i": "A", "j": "B", "angle": 30,
          "releases": {"i": [false, false, false, false, true, true], "j": [false, false, false, false, false, true]},
          "hinges": [{"dof": 10, "relative_distance": 0.05}], "mass_per_length": 0.2,
          "distributed_loads": [{"pattern": "D", "type": 2, "csys": "Local", "dir": 10, "rd1": 0, "rd2": 1, "val1": 1, "val2": 2}],
          "point_loads": [{"pattern": "D", "type": 1, "dir": 11, "rd": 0.5, "val": 3.0}]},
          {"point_loads": [], "j": "C", "i": "B", "section": "S", "name": "G", "releases": {}}])"},
      {"every area key",
       kPoints + R"(, "areas": [{"name": "P", "section": "W", "points": ["A", "B", "C"], "mass_per_area": 0.1,
          "uniform_loads": [{"pattern": "D", "csys": "Local", "dir": 3, "value": 2}],
          "uniform_to_frame_loads": [{"pattern": "L", "dir": 11, "value": 1, "dist_type": 1}, {"pattern": "L", "dir": 11, "value": 1}]}])"},
      {"groups",
       kPoints + R"(, "groups": [{"name": "G1", "assignments": [{"type": 1, "name": "A"}, {"name": "B", "type": 1.0}]}, {"name": "G2"}])"},
      {"escapes and other characters in names",
       R"("points": [{"name": "J\u00e9\"1", "x": 0, "y": 0, "z": 0}, {"name": "Jé", "x": 0, "y": 0, "z": 0},
                     {"n\u0061me": "K", "x": 0, "y": 0, "z": 0}, {"name": "Tab\t", "x": 0, "y": 0, "z": 0}])"},
      {"numbers past the quick way", R"("points": [{"name": "A", "x": 12345678901234567890, "y": 1e-400, "z": -0}])"},
      {"whole reals where integers go",
       kPoints + R"(, "frames": [{"name": "F", "section": "S", "i": "A", "j": "B", "hinges": [{"dof": 1e1, "relative_distance": 0}]}])"},
      {"tabs and carriage returns", "\t\"points\"\r\n:\t[\r\n{\"name\":\"A\",\"x\":0,\"y\":0,\"z\":0}\r\n]"},
      {"empty lists", R"("points": [], "frames": [], "areas": [], "groups": [])"},
      // Refused texts: the message must be the full reading's, with its line and column.
      {"a key given twice", R"("points": [{"name": "A", "x": 0, "x": 1, "y": 0, "z": 0}])"},
      {"an unknown key", R"("points": [{"name": "A", "x": 0, "y": 0, "z": 0, "w": 1}])"},
      {"a missing key", R"("points": [{"name": "A", "x": 0, "y": 0}])"},
      {"a value of the wrong kind", R"("points": [{"name": "A", "x": "0", "y": 0, "z": 0}])"},
      {"null", R"("points": [{"name": "A", "x": null, "y": 0, "z": 0}])"},
      {"an integer out of range",
       kPoints + R"(, "frames": [{"name": "F", "section": "S", "i": "A", "j": "B", "point_loads": [{"pattern": "D", "type": 3, "dir": 1, "rd": 0, "val": 1}]}])"},
      {"too few area corners", kPoints + R"(, "areas": [{"name": "P", "section": "W", "points": ["A", "B"]}])"},
      {"a dist_type in a uniform load",
       kPoints + R"(, "areas": [{"name": "P", "section": "W", "points": ["A", "B", "C"], "uniform_loads": [{"pattern": "D", "dir": 3, "value": 2, "dist_type": 1}]}])"},
      {"a list given twice", kPoints + ", " + kPoints},
      {"bad syntax late in the file", kPoints + R"(, "frames": [{"name": "F",}])"},
      {"bad syntax after a refused value", R"("points": [{"name": 1, "x": 0, "y": 0, "z": 0}], "areas": [)"},
      {"a list that is no array", R"("points": {"name": "A"})"},
      {"six restraints wanted", R"("points": [{"name": "A", "x": 0, "y": 0, "z": 0, "restraints": [true]}])"},
      {"an unknown top-level key", kPoints + R"(, "pointz": [])"},
      // Where the frames' key is looked for: a point of that name, a key of that name
      // inside another value, the list given twice.
      {"a point named frames",
       R"("points": [{"name": "frames", "x": 0, "y": 0, "z": 0}, {"name": "B", "x": 1, "y": 0, "z": 0}],
          "frames": [{"name": "frames", "section": "S", "i": "frames", "j": "B"}])"},
      {"a frames key inside another value",
       kPoints + R"(, "mass_source": {"frames": [{"name": "F"}]}, "frames": [{"name": "F", "section": "S", "i": "A", "j": "B"}])"},
      {"the frames given twice",
       kPoints + R"(, "frames": [{"name": "F", "section": "S", "i": "A", "j": "B"}], "frames": [])"},
      {"frames refused",
       kPoints + R"(, "frames": [{"name": "F", "section": "S", "i": "A", "j": "B", "angle": "x"}])"},
      {"frames cut short", kPoints + R"(, "frames": [{"name": "F", "section": "S", "i": "A", "j": "B"})"},
      {"frames with an escaped quote", kPoints + R"(, "frames": [{"name": "F"]}", "section": "S", "i": "A", "j": "B"}])"},
  };
  for (const auto& [what, objects] : cases) ExpectSameReading(ModelWith(objects), what);
  // A byte-order mark, and text after the document.
  ExpectSameReading("\xEF\xBB\xBF" + ModelWith(kPoints), "byte-order mark");
  ExpectSameReading(ModelWith(kPoints) + " x", "text after the document");
  ExpectSameReading(ModelWith(kPoints) + "\n\n", "blank lines after the document");
}

TEST(ModelFileReading, RefusedTextsGiveTheFullReadingsMessage) {
  // One case pinned to its text, so that a change on both sides at once is seen too.
  const std::string text =
      ModelWith(R"("points": [{"name": "A", "x": 0, "y": 0, "z": 0},
{"name": "B", "x": 0, "y": 0, "z": 0, "z": 1}])");
  EXPECT_EQ(MessageOf([&] { return ReadModel(text, "m.json", "/base"); }),
            "m.json:5:39: points[1].z: the key \"z\" is given twice in one object (first at "
            "5:31); expected each key once");
}

// Every object of a generated building is of the plain form the direct readers take: each
// reads its object where the document's tree says it starts, to the object the full
// reading makes of it.
TEST(DirectObjectReader, TakesEveryObjectOfAGeneratedBuilding) {
  // Every part of the regular building: hinges, releases, loads of every kind, groups.
  const std::string text = generate::BuildingText(generate::OptionsForJoints(300));
  const JsonDocument document = JsonDocument::Parse(text);
  const Model model = ReadModelFully(text, "m.json", "/base");
  const JsonNode& root = document.root();
  std::size_t objects = 0;
  const auto readAll = [&](std::string_view key, const auto& items, auto readDirectly) {
    using Item = typename std::decay_t<decltype(items)>::value_type;
    for (std::size_t member = 0; member < root.count; ++member) {
      if (document.text(document.key(root, member)) != key) continue;
      const JsonNode& list = document.value(root, member);
      ASSERT_EQ(list.count, items.size());
      for (std::size_t i = 0; i < list.count; ++i) {
        SCOPED_TRACE(std::string(key) + "[" + std::to_string(i) + "]");
        std::size_t at = document.item(list, i).offset;
        Item item;
        ASSERT_TRUE(readDirectly(text, at, item));
        EXPECT_TRUE(item == items[i]);
        const std::size_t next = text.find_first_not_of(" \t\r\n", at);
        ASSERT_TRUE(text[next] == ',' || text[next] == ']');
        ++objects;
      }
    }
  };
  readAll("points", model.points, ReadPointDirectly);
  readAll("frames", model.frames, ReadFrameDirectly);
  readAll("areas", model.areas, ReadAreaDirectly);
  readAll("groups", model.groups, ReadGroupDirectly);
  EXPECT_EQ(objects,
            model.points.size() + model.frames.size() + model.areas.size() + model.groups.size());
  EXPECT_GT(model.frames.size(), 10u);
}

// The direct readers on their own: what they take and where they stop.
TEST(DirectObjectReader, ReadsAPlainFrameWithItsDefaults) {
  const std::string text =
      R"(  {"name": "F", "section": "S", "i": "A", "j": "B", "releases": {"j": [false, false, false, false, false, true]}} ,)";
  std::size_t at = 0;
  Frame frame;
  ASSERT_TRUE(ReadFrameDirectly(text, at, frame));
  EXPECT_EQ(text.substr(at), " ,");
  EXPECT_EQ(frame.name, "F");
  EXPECT_EQ(frame.pointJ, "B");
  EXPECT_EQ(frame.angle, 0.0);
  EXPECT_EQ(frame.releaseI, (DofFlags{}));
  EXPECT_EQ(frame.releaseJ, (DofFlags{false, false, false, false, false, true}));
  EXPECT_TRUE(frame.hinges.empty());
}

TEST(DirectObjectReader, LeavesEscapesNonAsciiAndUnknownKeysToTheCheckedReading) {
  for (const std::string text :
       {R"({"name": "A\n", "x": 0, "y": 0, "z": 0})", "{\"name\": \"\xC3\xA9\", \"x\": 0, \"y\": 0, \"z\": 0}",
        R"({"name": "A", "x": 0, "y": 0, "z": 0, "q": 0})", R"({"name": "A", "x": 0, "y": 0})",
        R"({"name": "A", "x": 0, "y": 0, "z": 0, "name": "B"})", R"({"name": "A", "x": 00, "y": 0, "z": 0})",
        R"({"name": "A", "x": 0, "y": 0, "z": 0)"}) {
    SCOPED_TRACE(text);
    std::size_t at = 0;
    Point point;
    EXPECT_FALSE(ReadPointDirectly(text, at, point));
    EXPECT_EQ(at, 0u);
  }
}

TEST(DirectObjectReader, TakesAWholeRealForAnIntegerAndRefusesAFraction) {
  std::size_t at = 0;
  Group group;
  ASSERT_TRUE(ReadGroupDirectly(R"({"name": "G", "assignments": [{"type": 2.0, "name": "F"}]})",
                                at, group));
  ASSERT_EQ(group.assignments.size(), 1u);
  EXPECT_EQ(group.assignments[0].type, 2);
  at = 0;
  EXPECT_FALSE(ReadGroupDirectly(R"({"name": "G", "assignments": [{"type": 2.5, "name": "F"}]})",
                                 at, group));
  at = 0;
  EXPECT_FALSE(ReadGroupDirectly(R"({"name": "G", "assignments": [{"type": 8, "name": "F"}]})",
                                 at, group));
}


// A building past the size at which the host makes its frame, area and group indexes on a
// second thread: every point's connectivity, and look-ups of every kind, are what the
// model's lists say, worked out here by brute force.
TEST(ModelFileHost, ALargeBuildingAnswersAsItsLists) {
  const std::string text = generate::BuildingText(generate::OptionsForJoints(7000));
  const Model model = ReadModelFully(text, "m.json", "/base");
  ASSERT_GE(model.frames.size() + model.areas.size(), JsonModelHost::kObjectsForThread);
  const std::unique_ptr<JsonModelHost> host = JsonModelHost::FromText(text, "m.json", "/base");

  std::map<std::string, std::vector<std::tuple<int, std::string, int>>> expected;
  for (const Frame& frame : model.frames) {
    expected[frame.pointI].emplace_back(host_code::kObjectFrame, frame.name, 1);
    expected[frame.pointJ].emplace_back(host_code::kObjectFrame, frame.name, 2);
  }
  for (const Area& area : model.areas) {
    for (std::size_t k = 0; k < area.points.size(); ++k) {
      expected[area.points[k]].emplace_back(host_code::kObjectArea, area.name,
                                            static_cast<int>(k + 1));
    }
  }
  for (const Point& point : model.points) {
    SCOPED_TRACE(point.name);
    int count = 0;
    Ints types, numbers;
    Names names;
    ASSERT_EQ(host->GetPointConnectivity(point.name, count, types, names, numbers), 0);
    std::vector<std::tuple<int, std::string, int>> found;
    for (int c = 0; c < count; ++c) found.emplace_back(types[c], names[c], numbers[c]);
    EXPECT_EQ(found, expected[point.name]);
  }
  for (const Frame& frame : model.frames) {
    std::string i, j;
    ASSERT_EQ(host->GetFramePoints(frame.name, i, j), 0);
    EXPECT_EQ(i + "/" + j, frame.pointI + "/" + frame.pointJ);
  }
  for (const Area& area : model.areas) {
    int corners = 0;
    Names points;
    ASSERT_EQ(host->GetAreaPoints(area.name, corners, points), 0);
    EXPECT_EQ(points, area.points);
  }
  for (const Group& group : model.groups) {
    int count = 0;
    Ints types;
    Names names;
    ASSERT_EQ(host->GetGroupAssignments(group.name, count, types, names), 0);
    EXPECT_EQ(static_cast<std::size_t>(count), group.assignments.size());
  }
}

// The same building, asked at once for its last frame, area and group and for a frame's
// length, while the second thread may still be making their indexes; another released
// before anything was asked, and another dropped at once: each waits for what it needs.
TEST(ModelFileHost, ALargeBuildingAnswersBeforeItsIndexesAreMade) {
  const std::string text = generate::BuildingText(generate::OptionsForJoints(7000));
  const Model model = ReadModelFully(text, "m.json", "/base");
  ASSERT_GE(model.frames.size() + model.areas.size(), JsonModelHost::kObjectsForThread);
  ASSERT_FALSE(model.groups.empty());
  {
    const std::unique_ptr<JsonModelHost> host = JsonModelHost::FromText(text, "m.json", "/base");
    const Frame& frame = model.frames.back();
    std::string i, j;
    ASSERT_EQ(host->GetFramePoints(frame.name, i, j), 0);
    EXPECT_EQ(i + "/" + j, frame.pointI + "/" + frame.pointJ);
    const Area& area = model.areas.back();
    int corners = 0;
    Names points;
    ASSERT_EQ(host->GetAreaPoints(area.name, corners, points), 0);
    EXPECT_EQ(points, area.points);
    const Group& group = model.groups.back();
    int count = 0;
    Ints types;
    Names names;
    ASSERT_EQ(host->GetGroupAssignments(group.name, count, types, names), 0);
    EXPECT_EQ(static_cast<std::size_t>(count), group.assignments.size());
  }
  {
    const std::unique_ptr<JsonModelHost> host = JsonModelHost::FromText(text, "m.json", "/base");
    host->SourceModelRead();
    std::string i, j;
    EXPECT_THROW(host->GetFramePoints(model.frames.front().name, i, j), std::logic_error);
  }
  EXPECT_NO_THROW(JsonModelHost::FromText(text, "m.json", "/base").reset());
}

}  // namespace
}  // namespace vtt::model_file
