// Reading the text file of a function from a file: header and comment lines, prefix
// characters, free and fixed format, line endings, the number grammar, and rejection.
#include "source/function_file.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "support/expected_bytes.h"

namespace vtt {
namespace {

using Reals = std::vector<double>;

FunctionFileLayout Values(double dt, int perLine = 1) {
  FunctionFileLayout layout;
  layout.valueType = 1;
  layout.dt = dt;
  layout.pointsPerLine = perLine;
  return layout;
}

FunctionFileLayout Pairs(int perLine = 1) {
  FunctionFileLayout layout;
  layout.valueType = 2;
  layout.pointsPerLine = perLine;
  return layout;
}

void ExpectTwoPointFunction(const FunctionFilePoints& points) {
  EXPECT_FALSE(points.accepted);
  EXPECT_EQ(points.times, (Reals{0.0, 1.0}));
  EXPECT_EQ(points.values, (Reals{0.0, 0.0}));
}

TEST(FunctionFile, ValueTypeOneWithDt002GivesTimesFromZeroInSteps) {
  const auto points = ReadFunctionText("0.1\n-0.2\n0.3\n", Values(0.02));
  EXPECT_TRUE(points.accepted);
  EXPECT_EQ(points.times, (Reals{0.0, 0.02, 0.04}));
  EXPECT_EQ(points.values, (Reals{0.1, -0.2, 0.3}));
}

TEST(FunctionFile, TimesGoingDownAtOnePlaceGiveTheTwoPointFunction) {
  ExpectTwoPointFunction(ReadFunctionText("0 0\n1 5\n0.5 2\n2 1\n", Pairs()));
}

TEST(FunctionFile, EqualTimesAreRejectedToo) {
  ExpectTwoPointFunction(ReadFunctionText("0 0\n1 5\n1 6\n", Pairs()));
}

TEST(FunctionFile, NegativeFirstTimeIsRejected) {
  ExpectTwoPointFunction(ReadFunctionText("-0.1 0\n1 5\n", Pairs()));
}

TEST(FunctionFile, NoPointsIsRejected) {
  ExpectTwoPointFunction(ReadFunctionText("", Values(0.02)));
  FunctionFileLayout headerOnly = Values(0.02);
  headerOnly.headerLines = 2;
  ExpectTwoPointFunction(ReadFunctionText("title\n1 2 3\n", headerOnly));
  ExpectTwoPointFunction(ReadFunctionText("\n1\n2\n", Values(0.02)));
}

TEST(FunctionFile, ZeroDtMakesEqualTimesAndIsRejected) {
  ExpectTwoPointFunction(ReadFunctionText("1\n2\n", Values(0.0)));
}

TEST(FunctionFile, FileThatCannotBeOpenedGivesTheTwoPointFunction) {
  FunctionFileLayout layout = Values(0.02);
  layout.fileName = (std::filesystem::temp_directory_path() / "vtt-no-such-record.txt").string();
  ExpectTwoPointFunction(ReadFunctionFile(layout));
  layout.fileName = "";
  ExpectTwoPointFunction(ReadFunctionFile(layout));
}

TEST(FunctionFile, ARejectedFileSaysWhy) {
  EXPECT_EQ(ReadFunctionText("0 0\n1 5\n0.5 2\n2 1\n", Pairs()).refusal,
            "its times do not rise at point 3");
  EXPECT_EQ(ReadFunctionText("0 0\n1 5\n1 6\n", Pairs()).refusal,
            "its times do not rise at point 3");
  EXPECT_EQ(ReadFunctionText("-0.1 0\n1 5\n", Pairs()).refusal, "its first time is negative");
  EXPECT_EQ(ReadFunctionText("", Values(0.02)).refusal, "it gives no point");
  FunctionFileLayout layout = Values(0.02);
  layout.fileName = (std::filesystem::temp_directory_path() / "vtt-no-such-record.txt").string();
  EXPECT_EQ(ReadFunctionFile(layout).refusal, "it cannot be opened");
  const auto accepted = ReadFunctionText("0.1\n-0.2\n", Values(0.02));
  EXPECT_TRUE(accepted.accepted);
  EXPECT_EQ(accepted.refusal, "");
}

TEST(FunctionFile, ReadsAFileFromDisk) {
  testing::TempFolder folder("function-file");
  const auto path = folder.Path() / "eq.txt";
  const std::string text = "Record\r\n0.5\r\n1.5\r\n";
  testing::WriteFileBytes(path, std::vector<std::uint8_t>(text.begin(), text.end()));
  FunctionFileLayout layout = Values(0.01);
  layout.fileName = path.string();
  layout.headerLines = 1;
  const auto points = ReadFunctionFile(layout);
  EXPECT_TRUE(points.accepted);
  EXPECT_EQ(points.times, (Reals{0.0, 0.01}));
  EXPECT_EQ(points.values, (Reals{0.5, 1.5}));
}

TEST(FunctionFile, HeaderLinesAreSkippedWhateverTheyHold) {
  FunctionFileLayout layout = Values(0.5);
  layout.headerLines = 3;
  // An empty header line and a "$" header line are header lines, nothing more.
  const auto points = ReadFunctionText("\n$ comment\n9 9 9\n1\n2\n", layout);
  EXPECT_TRUE(points.accepted);
  EXPECT_EQ(points.times, (Reals{0.0, 0.5}));
  EXPECT_EQ(points.values, (Reals{1.0, 2.0}));
}

TEST(FunctionFile, DollarLinesAfterTheHeaderAreComments) {
  FunctionFileLayout layout = Values(0.5);
  layout.headerLines = 1;
  const auto points = ReadFunctionText("head\n$ first comment\n1\n$another\n2\n", layout);
  EXPECT_EQ(points.values, (Reals{1.0, 2.0}));
  EXPECT_EQ(points.times, (Reals{0.0, 0.5}));
}

TEST(FunctionFile, DollarAfterLeadingSpacesIsNoCommentLineButEndsTheFields) {
  // The line's first character is a space: it is read, and in free format its fields end at
  // "$", so it gives one point of value 0.
  const auto points = ReadFunctionText("1\n  $ note\n2\n", Values(1.0));
  EXPECT_EQ(points.values, (Reals{1.0, 0.0, 2.0}));
  EXPECT_EQ(points.times, (Reals{0.0, 1.0, 2.0}));
}

TEST(FunctionFile, PrefixCharactersAreDroppedThenSpacesTrimmed) {
  FunctionFileLayout layout = Pairs();
  layout.prefixChars = 4;
  const auto points = ReadFunctionText("ab1  0.0 1.0\nxyz  0.5 -2\n", layout);
  EXPECT_TRUE(points.accepted);
  EXPECT_EQ(points.times, (Reals{0.0, 0.5}));
  EXPECT_EQ(points.values, (Reals{1.0, -2.0}));
}

TEST(FunctionFile, LineShorterThanThePrefixIsEmptyAndEndsTheReading) {
  FunctionFileLayout layout = Values(1.0);
  layout.prefixChars = 3;
  const auto points = ReadFunctionText("## 1\n## 2\n##\n## 3\n", layout);
  EXPECT_EQ(points.values, (Reals{1.0, 2.0}));
}

TEST(FunctionFile, EmptyLineEndsTheReading) {
  const auto points = ReadFunctionText("1\n2\n   \n3\n4\n", Values(0.1));
  EXPECT_EQ(points.values, (Reals{1.0, 2.0}));
}

TEST(FunctionFile, FreeFormatSplitsAtRunsOfBlanksAndStopsAtDollar) {
  const auto points =
      ReadFunctionText("1 \t  2\t\t3 $ 4 5\n6   7 8\n", Values(0.1, 3));
  EXPECT_EQ(points.values, (Reals{1, 2, 3, 6, 7, 8}));
  EXPECT_EQ(points.times.size(), 6u);
  EXPECT_DOUBLE_EQ(points.times[5], 5 * 0.1);
}

TEST(FunctionFile, EachLineGivesThePointsPerLineMissingFieldsAsZero) {
  const auto points = ReadFunctionText("1 2 3\n4\n5 6 7 8\n", Values(1.0, 3));
  EXPECT_EQ(points.values, (Reals{1, 2, 3, 4, 0, 0, 5, 6, 7}));
  EXPECT_EQ(points.times, (Reals{0, 1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(FunctionFile, PairsSeveralToALine) {
  const auto points = ReadFunctionText("0 0 0.1 1 0.2 -1\n0.3 0.5 0.4 0 0.5 2\n", Pairs(3));
  EXPECT_TRUE(points.accepted);
  EXPECT_EQ(points.times, (Reals{0, 0.1, 0.2, 0.3, 0.4, 0.5}));
  EXPECT_EQ(points.values, (Reals{0, 1, -1, 0.5, 0, 2}));
}

TEST(FunctionFile, FixedFormatCutsTheTrimmedLineIntoFields) {
  FunctionFileLayout layout = Values(0.25, 3);
  layout.freeFormat = false;
  layout.fieldWidth = 6;
  // Trimmed: "1.5   -2.25 3e1" → "1.5   ", "-2.25 ", "3e1".
  const auto points = ReadFunctionText("   1.5   -2.25 3e1\n  12345612\n", layout);
  EXPECT_EQ(points.values, (Reals{1.5, -2.25, 30.0, 123456.0, 12.0, 0.0}));
  EXPECT_EQ(points.times, (Reals{0, 0.25, 0.5, 0.75, 1.0, 1.25}));
}

TEST(FunctionFile, FixedFormatKeepsDollarAndBlanksInsideFields) {
  FunctionFileLayout layout = Values(1.0, 2);
  layout.freeFormat = false;
  layout.fieldWidth = 4;
  // "1 2 " is not a number; "$3" is not either.
  const auto points = ReadFunctionText("1 2 $3\n", layout);
  EXPECT_EQ(points.values, (Reals{0.0, 0.0}));
}

TEST(FunctionFile, FixedFormatPairs) {
  FunctionFileLayout layout = Pairs(2);
  layout.freeFormat = false;
  layout.fieldWidth = 5;
  const auto points = ReadFunctionText("0.0  1.0  0.1  -1.0\n0.2  0.5\n", layout);
  // The second line gives its second pair as (0, 0): time 0 after 0.2 rejects the file.
  ExpectTwoPointFunction(points);
  const auto whole = ReadFunctionText("0.0  1.0  0.1  -1.0\n0.2  0.5  0.3  0.25\n", layout);
  EXPECT_EQ(whole.times, (Reals{0.0, 0.1, 0.2, 0.3}));
  EXPECT_EQ(whole.values, (Reals{1.0, -1.0, 0.5, 0.25}));
}

TEST(FunctionFile, LineEndingsCRLFCRAndLFReadAlike) {
  const Reals expected{1.0, 2.0, 3.0};
  for (const std::string text : {"1\r\n2\r\n3\r\n", "1\r2\r3\r", "1\n2\n3\n", "1\n2\r\n3",
                                 "1\r2\n3\r\n"}) {
    const auto points = ReadFunctionText(text, Values(0.1));
    EXPECT_EQ(points.values, expected) << text;
  }
  // Two endings in a row make an empty line, which ends the reading.
  EXPECT_EQ(ReadFunctionText("1\r\r2\n", Values(0.1)).values, (Reals{1.0}));
  EXPECT_EQ(ReadFunctionText("1\n\r2\n", Values(0.1)).values, (Reals{1.0}));
  EXPECT_EQ(ReadFunctionText("1\r\n\r\n2\n", Values(0.1)).values, (Reals{1.0}));
}

TEST(FunctionFile, NumberGrammar) {
  EXPECT_EQ(FunctionFieldValue("1.5D2"), 150.0);
  EXPECT_EQ(FunctionFieldValue("1.5d+2"), 150.0);
  EXPECT_EQ(FunctionFieldValue("2.5E-1"), 0.25);
  EXPECT_EQ(FunctionFieldValue("-4e0"), -4.0);
  EXPECT_EQ(FunctionFieldValue(".5"), 0.5);
  EXPECT_EQ(FunctionFieldValue("-.5"), -0.5);
  EXPECT_EQ(FunctionFieldValue("+3"), 3.0);
  EXPECT_EQ(FunctionFieldValue("007"), 7.0);
  EXPECT_EQ(FunctionFieldValue("  12.25  "), 12.25);
  // Not numbers: the slot stays 0.
  for (const char* text : {"abc", "1.", ".", "", "+", "-", "1e", "1e+", "e5", "1.5.2", "1,5",
                           "--1", "+-1", "0x10", "inf", "nan", "1.5f", "1 2", "1D", "\t1"}) {
    EXPECT_EQ(FunctionFieldValue(text), 0.0) << "[" << text << "]";
  }
  // Too large for a double is still a number of the grammar.
  EXPECT_EQ(FunctionFieldValue("1e999"), HUGE_VAL);
}

TEST(FunctionFile, NonNumericFieldsLeaveZeroInTheirSlot) {
  const auto points = ReadFunctionText("0 abc\n0.5 1.5D1\n1 .25\n", Pairs());
  EXPECT_TRUE(points.accepted);
  EXPECT_EQ(points.values, (Reals{0.0, 15.0, 0.25}));
}

TEST(FunctionFile, TrimRemovesSpacesOnlyNotTabs) {
  // A tab left after trimming is not empty: the line is read and gives a 0 from no field.
  const auto points = ReadFunctionText("1\n\t\n2\n", Values(1.0));
  EXPECT_EQ(points.values, (Reals{1.0, 0.0, 2.0}));
}

}  // namespace
}  // namespace vtt
