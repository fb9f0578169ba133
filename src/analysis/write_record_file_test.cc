// Record files: their bytes, the peak, the folder chain, the message when the folder cannot
// be made, the old tail of a longer file, and the function names that are refused.
#include "analysis/write_record_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "store/binary_writer.h"
#include "support/expected_bytes.h"
#include "transfer/failure.h"
#include "transfer/messages.h"
#include "transfer/system_services.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using testing::ExpectedBytes;
using testing::ReadFileBytes;
using testing::TempFolder;

// A Trelk data folder inside a fresh temporary folder; nothing of it exists yet.
class RecordFiles : public ::testing::Test {
 protected:
  fs::path Base() const { return temp.Path() / "TRELK"; }
  fs::path Folder() const { return Base() / "Records" / "EqkeGroup"; }
  fs::path FileOf(const std::string& name) const { return Folder() / name; }

  // Writes a function whose points stand from index 1 (index 0 unused).
  void Write(const std::string& name, const std::vector<double>& times,
             const std::vector<double>& values, double duration, double dt = 0.02) {
    std::vector<double> t{0.0}, v{0.0};
    t.insert(t.end(), times.begin(), times.end());
    v.insert(v.end(), values.begin(), values.end());
    WriteRecordFile(Base().string(), "EqkeGroup", name, "EarthquakeRecord: " + name,
                    static_cast<int>(times.size()), v, t, duration, dt, false, messages);
  }

  std::vector<std::uint8_t> Bytes(const std::string& name) const {
    return ReadFileBytes(FileOf(name));
  }

  TempFolder temp{"record-files"};
  CollectedMessages messages;
};

TEST_F(RecordFiles, TwoPointsGiveAFileOf80BytesExactly) {
  Write("EQ1", {0.5, 1.25}, {2.0, -1.5}, 1.25);
  const std::vector<std::uint8_t> expected = ExpectedBytes()
                                                 .Ascii("EarthquakeRecord: EQ1", 40)
                                                 .Short(1)
                                                 .Short(3)
                                                 .Single(2.0f)
                                                 .Single(0.5f)
                                                 .Single(1.25f)
                                                 .Single(0.0f)
                                                 .Single(0.0f)
                                                 .Single(0.5f)
                                                 .Single(2.0f)
                                                 .Single(1.25f)
                                                 .Single(-1.5f)
                                                 .Bytes();
  EXPECT_EQ(expected.size(), 80u);
  EXPECT_EQ(Bytes("EQ1"), expected);
  EXPECT_TRUE(messages.messages.empty());
}

TEST_F(RecordFiles, PeakOfMinusThreeAgainstPlusTwoIsMinusThree) {
  Write("P", {0.1, 0.2, 0.3}, {2.0, -3.0, 1.0}, 0.3);
  const auto bytes = Bytes("P");
  EXPECT_EQ(ReadF32(bytes, 44), -3.0f);
  EXPECT_EQ(ReadF32(bytes, 48), 0.2f);
}

TEST_F(RecordFiles, FirstValueOfLargestMagnitudeWinsATie) {
  Write("T", {1.0, 2.0}, {3.0, -3.0}, 2.0);
  EXPECT_EQ(ReadF32(Bytes("T"), 44), 3.0f);
  EXPECT_EQ(ReadF32(Bytes("T"), 48), 1.0f);
}

TEST_F(RecordFiles, PeakIsComparedInSinglePrecision) {
  // 1 + 1e-12 and 1 are the same single; the later, larger double does not replace it.
  Write("S", {1.0, 2.0}, {1.0, 1.0 + 1e-12}, 2.0);
  EXPECT_EQ(ReadF32(Bytes("S"), 48), 1.0f);
}

TEST_F(RecordFiles, AllZeroValuesLeavePeakValueAndTimeZero) {
  Write("Z", {1.0, 2.0}, {0.0, -0.0}, 2.0);
  const auto bytes = Bytes("Z");
  EXPECT_EQ(ReadI32(bytes, 44), 0);
  EXPECT_EQ(ReadI32(bytes, 48), 0);
}

TEST_F(RecordFiles, TitleLongerThan40IsCut) {
  const std::string name = "A-very-long-function-name-of-many-letters";
  Write(name, {1.0}, {1.0}, 1.0);
  const auto bytes = Bytes(name);
  ASSERT_EQ(bytes.size(), 56u + 2 * 8);
  const std::string title(bytes.begin(), bytes.begin() + 40);
  EXPECT_EQ(title, ("EarthquakeRecord: " + name).substr(0, 40));
  EXPECT_EQ(title, "EarthquakeRecord: A-very-long-function-n");
  EXPECT_EQ(ReadI16(bytes, 40), 1);
}

TEST_F(RecordFiles, ShortTitleIsBlankPadded) {
  Write("X", {1.0}, {1.0}, 1.0);
  const auto bytes = Bytes("X");
  EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 40),
            "EarthquakeRecord: X" + std::string(21, ' '));
}

TEST_F(RecordFiles, TimesAndValuesAreNarrowedToSingle) {
  Write("N", {0.1}, {1.0 / 3.0}, 0.1);
  const auto bytes = Bytes("N");
  EXPECT_EQ(ReadF32(bytes, 52), 0.1f);
  EXPECT_EQ(ReadF32(bytes, 64), 0.1f);
  EXPECT_EQ(ReadF32(bytes, 68), static_cast<float>(1.0 / 3.0));
}

TEST_F(RecordFiles, DurationIsWrittenAsGivenAndDtIsNotWritten) {
  Write("D1", {1.0, 2.0}, {1.0, 2.0}, 7.5, 0.01);
  Write("D2", {1.0, 2.0}, {1.0, 2.0}, 7.5, 0.5);
  const auto one = Bytes("D1");
  const auto two = Bytes("D2");
  EXPECT_EQ(ReadF32(one, 52), 7.5f);
  EXPECT_EQ(std::vector<std::uint8_t>(one.begin() + 40, one.end()),
            std::vector<std::uint8_t>(two.begin() + 40, two.end()));
}

TEST_F(RecordFiles, NoPointsGiveTheLeadingPairAlone) {
  Write("E", {}, {}, 1.0);
  const auto bytes = Bytes("E");
  ASSERT_EQ(bytes.size(), 64u);
  EXPECT_EQ(ReadI16(bytes, 42), 1);
  EXPECT_EQ(ReadF32(bytes, 52), 1.0f);
}

TEST_F(RecordFiles, ZeroBasedArraysHoldPointIAtIndexIMinusOne) {
  const std::vector<double> times{0.5, 1.0}, values{4.0, -2.0};
  WriteRecordFile(Base().string(), "EqkeGroup", "ZB", "EarthquakeRecord: ZB", 2, values, times,
                  1.0, 0.02, true, messages);
  Write("OB", {0.5, 1.0}, {4.0, -2.0}, 1.0);
  const auto zeroBased = Bytes("ZB");
  const auto oneBased = Bytes("OB");
  ASSERT_EQ(zeroBased.size(), 80u);
  EXPECT_EQ(std::vector<std::uint8_t>(zeroBased.begin() + 40, zeroBased.end()),
            std::vector<std::uint8_t>(oneBased.begin() + 40, oneBased.end()));
  EXPECT_EQ(ReadF32(zeroBased, 64), 0.5f);
  EXPECT_EQ(ReadF32(zeroBased, 68), 4.0f);
}

TEST_F(RecordFiles, FolderChainIsMadeOneLevelAtATime) {
  ASSERT_FALSE(fs::exists(Base()));
  Write("EQ", {1.0}, {1.0}, 1.0);
  EXPECT_TRUE(fs::is_directory(Base()));
  EXPECT_TRUE(fs::is_directory(Base() / "Records"));
  EXPECT_TRUE(fs::is_regular_file(FileOf("EQ")));
  // The file has no extension.
  EXPECT_EQ(FileOf("EQ").extension(), "");
}

TEST_F(RecordFiles, BaseUnderARegularFileGivesTheCreateDirectoryMessage) {
  testing::WriteFileBytes(temp.Path() / "blocker", {'x'});
  const std::string base = (temp.Path() / "blocker" / "TRELK").string();
  WriteRecordFile(base, "EqkeGroup", "EQ", "EarthquakeRecord: EQ", 0, {}, {}, 1.0, 0.02, false,
                  messages);
  ASSERT_EQ(messages.messages.size(), 1u);
  const std::string folder = JoinFolder(JoinFolder(base, "Records"), "EqkeGroup");
  EXPECT_EQ(messages.messages[0].text, "Error : Could not create directory. " + folder);
  EXPECT_EQ(messages.messages[0].title, "");
  EXPECT_EQ(messages.messages[0].icon, MessageIcon::Critical);
  // Nothing was written: the blocker is still the one byte it was.
  EXPECT_EQ(ReadFileBytes(temp.Path() / "blocker"), std::vector<std::uint8_t>{'x'});
}

TEST_F(RecordFiles, RecordsFolderThatIsAFileGivesTheMessageAndTheTransferGoesOn) {
  fs::create_directories(Base());
  testing::WriteFileBytes(Base() / "Records", {'r'});
  Write("A", {1.0}, {1.0}, 1.0);
  Write("B", {1.0}, {1.0}, 1.0);
  ASSERT_EQ(messages.messages.size(), 2u);
  EXPECT_EQ(messages.messages[1].text,
            "Error : Could not create directory. " + Folder().string());
}

TEST_F(RecordFiles, LongerOldFileKeepsItsTail) {
  fs::create_directories(Folder());
  std::vector<std::uint8_t> old(100, 0xAB);
  testing::WriteFileBytes(FileOf("OLD"), old);
  Write("OLD", {0.5, 1.0}, {1.0, 2.0}, 1.0);
  const auto bytes = Bytes("OLD");
  ASSERT_EQ(bytes.size(), 100u);
  EXPECT_EQ(ReadI16(bytes, 42), 3);
  EXPECT_EQ(ReadF32(bytes, 76), 2.0f);
  for (std::size_t i = 80; i < 100; ++i) EXPECT_EQ(bytes[i], 0xAB) << "byte " << i;
}

TEST_F(RecordFiles, TooManyPointsForTheCountEndTheRun) {
  const std::vector<double> many(32768, 0.0);
  EXPECT_NO_THROW(WriteRecordFile(Base().string(), "EqkeGroup", "MAX", "t", 32766, many, many,
                                  1.0, 0.02, true, messages));
  EXPECT_EQ(ReadI16(Bytes("MAX"), 42), 32767);
  EXPECT_THROW(WriteRecordFile(Base().string(), "EqkeGroup", "OVER", "t", 32767, many, many,
                               1.0, 0.02, true, messages),
               TransferFailure);
  EXPECT_FALSE(fs::exists(FileOf("OVER")));
}

TEST_F(RecordFiles, MadeWriterWritesIntoTheGivenSubfolder) {
  const VaskModelObj::RecordFileWriter writer =
      MakeRecordFileWriter(Base().string(), std::string(kEqkeGroupName), messages);
  const std::vector<double> times{0.0, 2.0}, values{0.0, 1.5};
  VaskModelObj::RecordFileRequest request;
  request.name = "W";
  request.title = "EarthquakeRecord: W";
  request.count = 1;
  request.values = values;
  request.times = times;
  request.duration = 2.0;
  request.dt = 0.05;
  request.zeroBased = false;
  writer(request);
  const auto bytes = Bytes("W");
  ASSERT_EQ(bytes.size(), 72u);
  EXPECT_EQ(ReadF32(bytes, 64), 2.0f);
  EXPECT_EQ(ReadF32(bytes, 68), 1.5f);
}

// ---- Names that cannot be record files ----

// Every entry below the temporary folder, as relative paths.
std::vector<std::string> Tree(const fs::path& root) {
  std::vector<std::string> entries;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    entries.push_back(fs::relative(entry.path(), root).string());
  }
  std::sort(entries.begin(), entries.end());
  return entries;
}

TEST_F(RecordFiles, UnsafeNamesAreRefusedAndNothingIsWrittenAnywhere) {
  // The folders exist, with one good file, so that any stray write would show.
  Write("GOOD", {1.0}, {1.0}, 1.0);
  const std::vector<std::string> before = Tree(temp.Path());
  const std::vector<std::string> unsafe = {
      "",        "../evil", "..\\evil", "a/b",   "sub\\x",   "/abs",   "\\abs",
      ".",       "..",      "...",      " . ",   "C:",       "C:evil", "x:y",
      "CON",     "con",     "Con.txt",  "PRN",   "aux.dat",  "NUL",    "nul.a.b",
      "COM1",    "com9.x",  "LPT1",     "lpt9",  "CON ",     std::string("a\0b", 3)};
  for (const std::string& name : unsafe) {
    messages.messages.clear();
    Write(name, {1.0}, {5.0}, 1.0);
    ASSERT_EQ(messages.messages.size(), 1u) << "name [" << name << "]";
    const std::string& text = messages.messages[0].text;
    EXPECT_EQ(text.rfind("Time-history function \"" + name + "\": no record file is written, "
                         "because ",
                         0),
              0u)
        << text;
    EXPECT_EQ(messages.messages[0].icon, MessageIcon::Critical);
  }
  EXPECT_EQ(Tree(temp.Path()), before);
  // The parents of the records folder hold nothing new either.
  EXPECT_FALSE(fs::exists(Base() / "Records" / "evil"));
  EXPECT_FALSE(fs::exists(Base() / "evil"));
  EXPECT_FALSE(fs::exists(temp.Path() / "evil"));
}

TEST(RecordFileNames, ReasonsNameTheProblem) {
  EXPECT_EQ(RecordFileNameProblem(""), "it has no name to give the record file");
  EXPECT_EQ(RecordFileNameProblem("../x"),
            "its name holds a path separator, \"/\" or \"\\\", and would lead out of the records "
            "folder");
  EXPECT_EQ(RecordFileNameProblem("C:x"),
            "its name holds a colon, which names a drive or a file stream");
  EXPECT_EQ(RecordFileNameProblem(".."),
            "its name is made of dots alone and names a folder, not a file");
  EXPECT_EQ(RecordFileNameProblem("lpt3.txt"),
            "its name is a device name of Windows (CON, PRN, AUX, NUL, COM1 to COM9, LPT1 to "
            "LPT9)");
  EXPECT_EQ(RecordFileNameProblem("EQ\tX"), "its name holds a control character");
  for (const char* name : {"a<b", "a>b", "say \"x\"", "a|b", "why?", "*"}) {
    EXPECT_EQ(RecordFileNameProblem(name),
              "its name holds one of < > \" | ? *, which no file name may hold")
        << name;
  }
  // The case would name this record "EQ-?" (the code page has no omega).
  EXPECT_EQ(RecordFileNameProblem("EQ-\u03A9"),
            "its name holds a character outside the Windows-1252 code page, which the "
            "structure cannot name");
  EXPECT_EQ(RecordFileNameProblem("\xF0\x9F\x8C\x8D"),
            "its name holds a character outside the Windows-1252 code page, which the "
            "structure cannot name");
}

TEST(RecordFileNames, OrdinaryNamesAndNearDevicesPass) {
  for (const char* name : {"EQ1", "El Centro", "COM10", "LPT0", "CONSOLE", "NULL", "x..y",
                           ".hidden", "a.b", "Récord", "COM", "AUXI"}) {
    EXPECT_EQ(RecordFileNameProblem(name), std::nullopt) << name;
  }
}

}  // namespace
}  // namespace vtt
