// The words of the model file's refusals where the JSON reader's own reason would hide the
// cause: NaN and Infinity where a number goes, comments, bytes that are not UTF-8, integers
// past what an int holds.
#include <gtest/gtest.h>

#include <string>

#include "hosts/json_model_host.h"
#include "hosts/model_file.h"

namespace vtt {
namespace {

std::string Refusal(const std::string& json) {
  try {
    JsonModelHost::FromText(json, "model.json", ".");
  } catch (const ModelFileError& error) {
    return error.what();
  }
  return "accepted";
}

const std::string kHead = R"({"format": "vask-model", "version": 1, "units": 6, "points": [)";

TEST(ModelFileMessages, NonFiniteWordsAreNamedWhereTheyStart) {
  EXPECT_EQ(Refusal(kHead + R"({"name": "A", "x": NaN, "y": 0, "z": 0}]})"),
            "model.json:1:82: points[0].x: not valid JSON: found NaN, which is not a JSON "
            "number; expected a finite number");
  EXPECT_EQ(Refusal(kHead + R"({"name": "A", "x": Infinity, "y": 0, "z": 0}]})"),
            "model.json:1:82: points[0].x: not valid JSON: found Infinity, which is not a JSON "
            "number; expected a finite number");
  EXPECT_EQ(Refusal(kHead + R"({"name": "A", "x": -Infinity, "y": 0, "z": 0}]})"),
            "model.json:1:82: points[0].x: not valid JSON: found -Infinity, which is not a "
            "JSON number; expected a finite number");
  EXPECT_EQ(Refusal(kHead + R"({"name": "A", "x": -inf, "y": 0, "z": 0}]})"),
            "model.json:1:82: points[0].x: not valid JSON: found -inf, which is not a JSON "
            "number; expected a finite number");
  EXPECT_EQ(Refusal(kHead + R"({"name": "A", "x": nan, "y": 0, "z": 0}]})"),
            "model.json:1:82: points[0].x: not valid JSON: found nan, which is not a JSON "
            "number; expected a finite number");
}

// Other misspelt words keep the reader's reason and place.
TEST(ModelFileMessages, OtherWordsKeepTheReadersReason) {
  EXPECT_EQ(Refusal(kHead + R"({"name": "A", "x": nun, "y": 0, "z": 0}]})"),
            "model.json:1:84: points[0].x: not valid JSON: syntax error while parsing value - "
            "invalid literal; last read: '\"x\": nun'");
}

TEST(ModelFileMessages, CommentsAreNamed) {
  EXPECT_EQ(Refusal(kHead + "/* none */]}"),
            "model.json:1:63: points: not valid JSON: found a comment, and JSON has none; "
            "expected a value or a key");
}

TEST(ModelFileMessages, ABytePastUtf8IsNamedByItsValue) {
  EXPECT_EQ(Refusal(kHead + "{\"name\": \"\xC0\xAF\", \"x\": 0, \"y\": 0, \"z\": 0}]})"),
            "model.json:1:73: points[0].name: not valid JSON: the byte 0xC0 is not UTF-8; "
            "expected the model file in UTF-8");
}

// A byte that is not part of UTF-8 is written as its value in the reader's reason, so that
// the message itself is text.
TEST(ModelFileMessages, UnprintableBytesInTheReasonAreEscaped) {
  EXPECT_EQ(Refusal(R"({"format": "vask-model", "version": 1, "units": )" "\xE9}"),
            "model.json:1:49: units: not valid JSON: syntax error while parsing value - "
            "invalid literal; last read: '\"units\": \\xE9'");
}

TEST(ModelFileMessages, AnIntegerPastAnIntIsToldTheBounds) {
  EXPECT_EQ(Refusal(kHead + R"({"name": "A", "x": 0, "y": 0, "z": 0}],
    "functions": [{"name": "F", "kind": 2, "steps_per_cycle": 3000000000}]})"),
            "model.json:2:63: functions[0].steps_per_cycle: expected an integer from "
            "-2147483648 to 2147483647, found 3e+09");
  EXPECT_EQ(Refusal(kHead + R"({"name": "A", "x": 0, "y": 0, "z": 0}],
    "functions": [{"name": "F", "kind": 2, "steps_per_cycle": 3.5}]})"),
            "model.json:2:63: functions[0].steps_per_cycle: expected an integer, found 3.5");
  EXPECT_EQ(Refusal(R"({"format": "vask-model", "version": 1, "units": 16.0000001})"),
            "model.json:1:49: units: expected an integer from 1 to 16, found 16.0000001");
}

// A long text is cut for the message between characters, never inside one.
TEST(ModelFileMessages, ALongTextIsCutBetweenCharacters) {
  const std::string name = std::string(39, 'a') + "\xC3\xA9" + "bbbb";
  EXPECT_EQ(Refusal(kHead + R"({"name": "A", "x": ")" + name + R"(", "y": 0, "z": 0}]})"),
            "model.json:1:82: points[0].x: expected a number, found \"" + std::string(39, 'a') +
                "...\"");
}

}  // namespace
}  // namespace vtt
