// A bad model file is refused at load with one message naming the file, the line and
// column, the JSON path of the offending value and what was expected there.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "hosts/json_model_host.h"

namespace vtt {
namespace {

// The start of every valid model, so that a test can add the one bad value it is about.
const std::string kHead = R"({"format": "vask-model", "version": 1, "units": 6)";

std::string LoadError(const std::string& json) {
  try {
    JsonModelHost::FromText(json, "model.json", "/models");
  } catch (const ModelFileError& error) {
    return error.what();
  }
  return "(loaded without error)";
}

TEST(JsonModelHostLoading, SmallestValidModelLoads) {
  auto host = JsonModelHost::FromText(kHead + "}", "model.json", "/models");
  EXPECT_EQ(host->GetPresentUnits(), 6);
  EXPECT_EQ(host->GetPointCount(), 0);
}

TEST(JsonModelHostLoading, TextThatIsNotJsonGivesTheParsersReasonAndPosition) {
  const std::string message =
      LoadError("{\"format\": \"vask-model\", \"version\": 1,\n \"units\": tru }");
  EXPECT_EQ(message,
            "model.json:2:14: units: not valid JSON: syntax error while parsing value - invalid "
            "literal; last read: '\"units\": tru '");
}

TEST(JsonModelHostLoading, TextCutShortIsNotJson) {
  EXPECT_EQ(LoadError(kHead + ", \"points\": [1, 2"),
            "model.json:1:67: points[1]: not valid JSON: syntax error while parsing array - "
            "unexpected end of input; expected ']'");
}

TEST(JsonModelHostLoading, TextAfterTheModelIsNotJson) {
  const std::string message = LoadError(kHead + "} trailing");
  EXPECT_NE(message.find("model.json:1:54: not valid JSON"), std::string::npos) << message;
  EXPECT_NE(message.find("expected end of input"), std::string::npos) << message;
}

TEST(JsonModelHostLoading, WrongTypeNamesPathExpectationAndWhatWasFound) {
  EXPECT_EQ(LoadError(R"({"format": "vask-model", "version": 1, "units": "6"})"),
            "model.json:1:49: units: expected an integer from 1 to 16, found \"6\"");
  EXPECT_EQ(LoadError(kHead + R"(, "points": {}})"),
            "model.json:1:62: points: expected an array of points, found an object");
  EXPECT_EQ(LoadError(kHead + R"(, "points": [7]})"),
            "model.json:1:63: points[0]: expected an object (a point), found 7");
  EXPECT_EQ(LoadError(kHead + R"(, "points": [{"name": 1, "x": 0, "y": 0, "z": 0}]})"),
            "model.json:1:72: points[0].name: expected a string, found 1");
}

TEST(JsonModelHostLoading, ColumnsCountCharactersNotBytes) {
  EXPECT_EQ(
      LoadError(
          kHead +
          R"(, "points": [{"name": "é", "x": 0, "y": 0, "z": 0, "mass": [1, 2, 3, 4, 5, "é"]}]})"),
      "model.json:1:125: points[0].mass[5]: expected a number in an array of 6 numbers, found "
      "\"é\"");
}

TEST(JsonModelHostLoading, MissingRequiredKeyPointsAtItsObject) {
  EXPECT_EQ(LoadError(kHead + ",\n \"points\": [\n  {\"name\": \"1\", \"x\": 0, \"y\": 0}]}"),
            "model.json:3:3: points[0]: the required key \"z\" is missing; expected a number for "
            "it");
  EXPECT_EQ(LoadError(R"({"format": "vask-model", "version": 1})"),
            "model.json:1:1: top level: the required key \"units\" is missing; expected an "
            "integer from 1 to 16 for it");
}

TEST(JsonModelHostLoading, UnknownKeyIsNamedWithTheClosestAndTheAcceptedKeys) {
  EXPECT_EQ(LoadError(kHead + R"(, "points": [{"nmae": "1", "x": 0, "y": 0, "z": 0}]})"),
            "model.json:1:64: points[0].nmae: unknown key \"nmae\" (did you mean \"name\"?); "
            "expected one of: name, x, y, z, restraints, constraints, mass, forces");
  const std::string message = LoadError(kHead + R"(, "colour": 1})");
  EXPECT_NE(message.find("model.json:1:52: colour: unknown key \"colour\"; expected one of: "
                         "format, version, units, materials,"),
            std::string::npos)
      << message;
}

TEST(JsonModelHostLoading, KeyGivenTwiceInOneObject) {
  EXPECT_EQ(LoadError(kHead + R"(, "points": [{"name": "1", "x": 0, "x": 0}]})"),
            "model.json:1:85: points[0].x: the key \"x\" is given twice in one object (first at "
            "1:77); expected each key once");
}

TEST(JsonModelHostLoading, ArrayOfTheWrongLength) {
  EXPECT_EQ(
      LoadError(kHead + R"(, "frames": [{"name": "F", "section": "S", "i": "a", "j": "b",
      "releases": {"i": [true, false, false, false, false]}}]})"),
      "model.json:2:25: frames[0].releases.i: expected an array of 6 booleans, found an array "
      "of 5 values");
  EXPECT_EQ(
      LoadError(kHead + R"(, "areas": [{"name": "A", "section": "S", "points": ["a", "b"]}]})"),
      "model.json:1:102: areas[0].points: expected an array of 3 or more point names, "
      "found an array of 2 values");
  const std::string anisotropic = LoadError(kHead + R"(, "materials": [{"name": "M", "type": 2,
      "anisotropic": {"E": [1, 2, 3], "U": [1], "A": [1, 2, 3, 4, 5, 6], "G": [1, 2, 3]}}]})");
  EXPECT_EQ(anisotropic,
            "model.json:2:44: materials[0].anisotropic.U: expected an array of 15 numbers, found "
            "an array of 1 value");
}

TEST(JsonModelHostLoading, CodeOutOfRange) {
  EXPECT_EQ(LoadError(R"({"format": "vask-model", "version": 1, "units": 17})"),
            "model.json:1:49: units: expected an integer from 1 to 16, found 17");
  EXPECT_EQ(LoadError(kHead + R"(, "materials": [{"name": "M", "type": 8}]})"),
            "model.json:1:88: materials[0].type: expected an integer from 1 to 7, found 8");
  EXPECT_EQ(
      LoadError(
          kHead +
          R"(, "functions": [{"name": "F", "kind": 0, "file": {"path": "x", "points_per_line": 0}}]})"),
      "model.json:1:132: functions[0].file.points_per_line: expected an integer of 1 or "
      "more, found 0");
  EXPECT_EQ(
      LoadError(
          kHead +
          R"(, "load_cases": [{"name": "C", "type": 1, "loads": [{"type": "Force", "name": "x"}]}]})"),
      "model.json:1:111: load_cases[0].loads[0].type: expected \"Load\", \"Mode\" or "
      "\"Accel\", found \"Force\"");
}

TEST(JsonModelHostLoading, IntegersMayBeWrittenForRealsButNotRealsForIntegers) {
  EXPECT_EQ(LoadError(R"({"format": "vask-model", "version": 1, "units": 2.5})"),
            "model.json:1:49: units: expected an integer from 1 to 16, found 2.5");
  auto host = JsonModelHost::FromText(
      R"({"format": "vask-model", "version": 1, "units": 6.0,
          "points": [{"name": "P", "x": 1, "y": 2, "z": 3}]})",
      "model.json", "/models");
  EXPECT_EQ(host->GetPresentUnits(), 6);
  double x = 0, y = 0, z = 0;
  EXPECT_EQ(host->GetPointCoordinates("P", x, y, z, "Global"), 0);
  EXPECT_EQ(z, 3.0);
}

TEST(JsonModelHostLoading, NumbersThatOverflowAreRefused) {
  EXPECT_EQ(LoadError(kHead + R"(, "points": [{"name": "1", "x": 1e999, "y": 0, "z": 0}]})"),
            "model.json:1:82: points[0].x: expected a finite number, found 1e999, which is out of "
            "range");
  EXPECT_EQ(LoadError(kHead + R"(, "points": [{"name": "1", "x": 0, "y": -2e400, "z": 0}]})"),
            "model.json:1:90: points[0].y: expected a finite number, found -2e400, which is out "
            "of range");
  EXPECT_EQ(
      LoadError(R"({"format": "vask-model", "version": 1, "units": 99999999999999999999999})"),
      "model.json:1:49: units: expected an integer from 1 to 16, found 1e+23");
}

TEST(JsonModelHostLoading, NonFiniteLiteralsAreNotJson) {
  const std::string message = LoadError(kHead + R"(, "points": [{"name": "1", "x": NaN}]})");
  EXPECT_NE(message.find("model.json:1:82: points[0].x: not valid JSON"), std::string::npos)
      << message;
}

TEST(JsonModelHostLoading, WrongFormatOrVersionIsToldFirst) {
  EXPECT_EQ(LoadError(R"({"colour": 1, "format": "vask", "version": 1, "units": 6})"),
            "model.json:1:25: format: expected \"vask-model\", found \"vask\"");
  EXPECT_EQ(LoadError(R"({"format": "vask-model", "version": 2, "units": 6})"),
            "model.json:1:37: version: expected 1, found 2");
  EXPECT_EQ(LoadError(R"({"name": "package", "version": "1.0"})"),
            "model.json:1:1: top level: the required key \"format\" is missing; expected "
            "\"format\": \"vask-model\"");
  EXPECT_EQ(LoadError(R"({"format": "vask-model", "units": 6})"),
            "model.json:1:1: top level: the required key \"version\" is missing; expected "
            "\"version\": 1");
  EXPECT_EQ(LoadError("[1, 2]"),
            "model.json:1:1: top level: expected a JSON object with \"format\": \"vask-model\", "
            "found an array of 2 values");
}

TEST(JsonModelHostLoading, DeepNestingIsRefusedWithoutCrashing) {
  const std::string message = LoadError(std::string(100000, '['));
  EXPECT_EQ(message,
            "model.json:1:65: [0][0][0][0]...[0][0][0][0]: expected arrays and objects nested at "
            "most 64 deep; the model file never nests more than a few levels");
  const std::string inModel = LoadError(kHead + ", \"materials\": " + std::string(100, '['));
  EXPECT_NE(inModel.find("model.json:1:128: materials[0][0][0]...[0][0][0][0]: expected arrays "
                         "and objects nested at most 64 deep"),
            std::string::npos)
      << inModel;
}

TEST(JsonModelHostLoading, EmptyFileIsRefused) {
  const std::string expected =
      "model.json: the file is empty; expected a JSON object with \"format\": \"vask-model\" and "
      "\"version\": 1";
  EXPECT_EQ(LoadError(""), expected);
  EXPECT_EQ(LoadError(" \n\t\r\n"), expected);
}

TEST(JsonModelHostLoading, UnreadableFileNamesThePathAndTheReason) {
  const std::filesystem::path missing =
      std::filesystem::temp_directory_path() / "vtt-no-such-folder" / "model.json";
  try {
    JsonModelHost::FromFile(missing);
    FAIL() << "a missing file loaded";
  } catch (const ModelFileError& error) {
    EXPECT_EQ(std::string(error.what()),
              missing.string() + ": cannot read the model file: No such file or directory");
  }
  try {
    JsonModelHost::FromFile(std::filesystem::temp_directory_path());
    FAIL() << "a folder loaded";
  } catch (const ModelFileError& error) {
    EXPECT_EQ(std::string(error.what()), std::filesystem::temp_directory_path().string() +
                                             ": cannot read the model file: Is a directory");
  }
}

TEST(JsonModelHostLoading, FileMessagesNameTheFileAsGiven) {
  const std::filesystem::path file =
      std::filesystem::temp_directory_path() /
      ("vtt-json-model-host-bad-units-" + std::to_string(::getpid()) + ".json");
  {
    std::ofstream out(file, std::ios::binary);
    out << "{\"format\": \"vask-model\",\n \"version\": 1,\n \"units\": 0}\n";
  }
  try {
    JsonModelHost::FromFile(file);
    FAIL() << "a bad file loaded";
  } catch (const ModelFileError& error) {
    EXPECT_EQ(std::string(error.what()),
              file.string() + ":3:11: units: expected an integer from 1 to 16, found 0");
  }
  std::filesystem::remove(file);
}

TEST(JsonModelHostLoading, ByteOrderMarkIsSkipped) {
  auto host = JsonModelHost::FromText("\xEF\xBB\xBF" + kHead + "}", "model.json", "/models");
  EXPECT_EQ(host->GetPresentUnits(), 6);
  EXPECT_EQ(LoadError("\xEF\xBB\xBF{\"format\": \"vask-model\", \"version\": 1, \"units\": 0}"),
            "model.json:1:50: units: expected an integer from 1 to 16, found 0");
}

TEST(JsonModelHostLoading, EveryNestedObjectRefusesUnknownKeys) {
  // One typo in each kind of nested object; each must be caught.
  const std::string cases[] = {
      R"("materials": [{"name": "M", "type": 1, "isotropic": {"E": 1, "U": 0, "A": 0, "G": 1, "nu": 0}}])",
      R"("frame_sections": [{"name": "S", "type": 1, "properties": {"area": 1, "Area": 1}}])",
      R"("area_sections": [{"name": "S", "layers": [{"name": "L", "distance": 0, "thickness": 1, "type": 1, "material": "M", "s11": 1}]}])",
      R"("points": [{"name": "P", "x": 0, "y": 0, "z": 0, "forces": [{"pattern": "D", "values": [0, 0, 0, 0, 0, 0], "cys": "G"}]}])",
      R"("frames": [{"name": "F", "section": "S", "i": "a", "j": "b", "releases": {"k": []}}])",
      R"("areas": [{"name": "A", "section": "S", "points": ["a", "b", "c"], "uniform_loads": [{"pattern": "D", "dir": 1, "value": 1, "dist_type": 1}]}])",
      R"("mass_source": {"option": 1, "load": []})",
      R"("functions": [{"name": "F", "kind": 0, "file": {"path": "x", "headers": 1}}])",
      R"("load_cases": [{"name": "C", "type": 7, "damping": {"type": 1, "ratio": [0, 0]}}])",
      R"("default_materials": {"concrete": {"name": "C"}})",
  };
  for (const std::string& body : cases) {
    const std::string message = LoadError(kHead + ", " + body + "}");
    EXPECT_NE(message.find(": unknown key \""), std::string::npos) << body << "\n" << message;
  }
}

}  // namespace
}  // namespace vtt
