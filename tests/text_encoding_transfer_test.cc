// Names reach the structure files in the Windows-1252 code page, one byte a character; a
// character the code page lacks becomes "?". One whole transfer, read back byte for byte.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "store/structure_reader.h"
#include "store/text_encoding.h"
#include "support/expected_bytes.h"
#include "support/run_program.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using testing::RunVask2Trelk;
using testing::TempFolder;

// "é" is one byte, E9; "€" is 80; "Ω" and "中" are not in the code page; the emoji is four
// bytes of UTF-8 and one character, so one "?".
const std::string kSectionName = "A\xC3\xA9\xE2\x82\xAC\xCE\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80";
const std::string kSectionBytes = "A\xE9\x80???";
// A frame's own name reaches no file; it goes through the reading all the same.
const std::string kFrameName = "C\xC3\xA9\xF0\x9F\x98\x80";

TEST(TextEncoding, TheCharactersOfTheCodePageAreOneByteAndTheOthersOneQuestionMarkEach) {
  EXPECT_EQ(ToWindows1252("\xC3\xA9"), "\xE9");
  EXPECT_EQ(ToWindows1252("\xE2\x82\xAC"), "\x80");
  EXPECT_EQ(ToWindows1252("\xCE\xA9"), "?");          // Omega, two bytes of UTF-8
  EXPECT_EQ(ToWindows1252("\xE4\xB8\xAD"), "?");      // a CJK character, three bytes
  EXPECT_EQ(ToWindows1252("\xF0\x9F\x98\x80"), "?");  // an emoji, four bytes
  EXPECT_EQ(ToWindows1252(kSectionName), kSectionBytes);
}

std::string Padded(std::string text, std::size_t width) {
  text.resize(width, ' ');
  return text;
}

std::string TextField(const ReadRecord& record, std::string_view field) {
  for (const ReadValue& value : record.Fields()) {
    if (value.name == field) return value.text;
  }
  return "<no field " + std::string(field) + ">";
}

// A steel section's name reaches its beam and column sections, and a structure name the
// header of the S, L and A files; the folder on disk keeps the name as it was given.
TEST(TextEncoding, NamesReachTheFilesInTheCodePage) {
  TempFolder temp("encoding");
  const std::string model = R"({"format": "vask-model", "version": 1, "units": 6,
 "materials": [{"name": "S355", "type": 1,
   "isotropic": {"E": 210000000, "U": 0.3, "A": 1.2e-5, "G": 80769230},
   "steel": {"Fy": 355000, "Fu": 510000, "eFy": 390000, "eFu": 560000}}],
 "frame_sections": [{"name": ")" + kSectionName + R"(", "type": 1, "material": "S355",
                     "properties": {"area": 0.00781, "I22": 2.0e-5, "I33": 5.7e-5}}],
 "points": [{"name": "A", "x": 0, "y": 0, "z": 0}, {"name": "B", "x": 0, "y": 0, "z": 3}],
 "frames": [{"name": ")" + kFrameName + R"(", "section": ")" + kSectionName +
                           R"(", "i": "A", "j": "B"}]})";
  std::ofstream(temp.Path() / "model.json") << model;
  fs::create_directories(temp.Path() / "structures");
  // "Tour-" and two characters of the code page: seven, within the twelve of the field.
  const std::string name = "Tour-\xC3\xA9\xE2\x82\xAC";
  const testing::ProgramResult r =
      RunVask2Trelk(temp.Path(), temp.Path() / "home",
                    {"transfer", "model.json", "--dir", "structures", "--name", name,
                     "--trelk-path", "trelk", "-q"});
  ASSERT_EQ(r.status, 0) << r.err;

  const fs::path folder = temp.Path() / "structures" / name;
  ASSERT_TRUE(fs::is_directory(folder));
  const StructureRead structure = ReadStructureFolder(folder);
  for (const char* suffix : {"S", "L", "A"}) {
    const ReadSection* header = structure.File(suffix)->Section("header");
    ASSERT_NE(header, nullptr) << suffix;
    EXPECT_EQ(header->Find("StructureName")->text, "Tour-\xE9\x80     ") << suffix;
  }

  std::vector<std::string> names;
  for (const char* kind : {"TrelkXecBeamRec", "TrelkXecColumnRec"}) {
    const ReadSection* list = structure.File("S")->Section(kind);
    ASSERT_NE(list, nullptr) << kind;
    for (const ReadRecord* record : list->Records(kind)) {
      names.push_back(TextField(*record, "Name"));
    }
  }
  EXPECT_EQ(names, (std::vector<std::string>{Padded("XecBmS-" + kSectionBytes, 40),
                                             Padded("XecColS-" + kSectionBytes, 40)}));
}

// The files find their folder again through the name field: a structure name with a
// character the code page lacks would have "?" there, which no folder name holds. It is
// refused as a folder that cannot be made, before anything is written.
TEST(TextEncoding, AStructureNameOutsideTheCodePageIsRefused) {
  TempFolder temp("encoding-refused");
  std::ofstream(temp.Path() / "model.json")
      << R"({"format": "vask-model", "version": 1, "units": 6,
             "points": [{"name": "A", "x": 0, "y": 0, "z": 0}]})";
  fs::create_directories(temp.Path() / "structures");
  for (const std::string name : {"Tour-\xCE\xA9", "\xE4\xB8\xAD", "T\xF0\x9F\x98\x80", "bad\xFF"}) {
    const testing::ProgramResult r =
        RunVask2Trelk(temp.Path(), temp.Path() / "home",
                      {"transfer", "model.json", "--dir", "structures", "--name", name,
                       "--trelk-path", "trelk", "-q"});
    EXPECT_EQ(r.status, 6) << name;
    EXPECT_EQ(r.err, "Error : Couldn't create directory !\n") << name;
    EXPECT_TRUE(fs::is_empty(temp.Path() / "structures")) << name;
    EXPECT_FALSE(fs::exists(temp.Path() / "trelk")) << name;
  }
}

// The twelve characters of a structure name are counted after encoding: "é" and "€" are
// one each.
TEST(TextEncoding, AStructureNameIsCountedInCharactersOfTheCodePage) {
  TempFolder temp("encoding-length");
  std::ofstream(temp.Path() / "model.json")
      << R"({"format": "vask-model", "version": 1, "units": 6,
             "points": [{"name": "A", "x": 0, "y": 0, "z": 0}]})";
  fs::create_directories(temp.Path() / "structures");
  // Ten letters, "é" and "€": twelve characters, fifteen bytes of UTF-8.
  const std::string twelve = "Tencharsxx\xC3\xA9\xE2\x82\xAC";
  const testing::ProgramResult fits =
      RunVask2Trelk(temp.Path(), temp.Path() / "home",
                    {"transfer", "model.json", "--dir", "structures", "--name", twelve,
                     "--trelk-path", "trelk", "-q"});
  EXPECT_EQ(fits.status, 0) << fits.err;
  const StructureRead structure = ReadStructureFolder(temp.Path() / "structures" / twelve);
  EXPECT_EQ(structure.File("S")->Section("header")->Find("StructureName")->text,
            "Tencharsxx\xE9\x80");
  const testing::ProgramResult refused =
      RunVask2Trelk(temp.Path(), temp.Path() / "home",
                    {"transfer", "model.json", "--dir", "structures", "--name",
                     twelve + "\xC3\xA9", "--trelk-path", "trelk", "-q"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_EQ(refused.err, "Error : the structure name \"" + twelve +
                             "\xC3\xA9\" is too long: a structure name has at most 12 "
                             "characters.\n");
}

}  // namespace
}  // namespace vtt
