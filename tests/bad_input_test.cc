// Bad input, run through the built program as a user meets it: every case of tests/bad/
// (see tests/bad/README.md) gives its exit status and its exact standard-error text, and
// leaves behind no more than its expectation says; and the run-time failures that end a
// transfer name the object and the cause.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "store/element_records.h"
#include "store/node_records.h"
#include "store/structure_reader.h"
#include "support/expected_bytes.h"
#include "support/model_text.h"
#include "support/run_program.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using testing::EntriesUnder;
using testing::ReadTextFile;
using testing::RunVask2Trelk;
using testing::TempFolder;

const fs::path kCorpus = fs::path(VTT_SOURCE_DIR) / "tests" / "bad";

const std::vector<std::string> kStructureFiles = {"Bad/",        "Bad/TRKDA",   "Bad/TRKDL",
                                                  "Bad/TRKDPO",  "Bad/TRKDPOA", "Bad/TRKDPOF",
                                                  "Bad/TRKDS",   "Bad/TRKDULS"};

struct BadCase {
  std::string name;
  std::string model;  // the file name the program is given
  bool model_exists = false;
  int status = -1;
  std::string written;  // "nothing", "folder" or "structure"
  std::string err;
};

// tests/bad/<case>.expected: the exit status, what is written, then standard error.
BadCase LoadCase(const fs::path& expected) {
  BadCase c;
  c.name = expected.stem().string();
  const std::string text = ReadTextFile(expected);
  const std::size_t first = text.find('\n');
  const std::size_t second = text.find('\n', first + 1);
  c.status = std::stoi(text.substr(0, first));
  c.written = text.substr(first + 1, second - first - 1);
  c.err = text.substr(second + 1);
  c.model = c.name + ".json";
  if (fs::exists(kCorpus / (c.name + ".txt"))) c.model = c.name + ".txt";
  c.model_exists = fs::exists(kCorpus / c.model);
  return c;
}

std::vector<BadCase> Corpus() {
  std::vector<BadCase> cases;
  for (const auto& entry : fs::directory_iterator(kCorpus)) {
    if (entry.path().extension() == ".expected") cases.push_back(LoadCase(entry.path()));
  }
  std::sort(cases.begin(), cases.end(),
            [](const BadCase& a, const BadCase& b) { return a.name < b.name; });
  return cases;
}

// Runs a case in a folder of its own: the model file under its own name (so the message
// names it as the corpus does), empty structures and Trelk data folders beside it.
struct CaseRun {
  explicit CaseRun(const std::string& tag) : temp("bad-" + tag) {
    fs::create_directories(work / "structures");
    fs::create_directories(work / "trelk");
  }
  testing::ProgramResult Transfer(const std::string& model) const {
    return RunVask2Trelk(work, temp.Path() / "home",
                         {"transfer", model, "--dir", "structures", "--name", "Bad",
                          "--trelk-path", "trelk", "-q"});
  }
  TempFolder temp;
  fs::path work = temp.Path() / "work";
};

class BadInput : public ::testing::TestWithParam<BadCase> {};

TEST_P(BadInput, GivesItsStatusAndMessageAndWritesOnlyWhatItSays) {
  const BadCase& c = GetParam();
  CaseRun run(c.name);
  if (c.model_exists) fs::copy_file(kCorpus / c.model, run.work / c.model);
  const testing::ProgramResult r = run.Transfer(c.model);
  EXPECT_EQ(r.status, c.status);
  EXPECT_EQ(r.err, c.err);
  EXPECT_EQ(r.out, "");

  // Only the model file is in the working folder besides the two folders.
  std::vector<std::string> work = {"structures/", "trelk/"};
  if (c.model_exists) work.push_back(c.model);
  std::sort(work.begin(), work.end());
  std::vector<std::string> top;
  for (const auto& entry : fs::directory_iterator(run.work)) {
    top.push_back(entry.path().filename().string() + (entry.is_directory() ? "/" : ""));
  }
  std::sort(top.begin(), top.end());
  EXPECT_EQ(top, work);
  EXPECT_EQ(EntriesUnder(run.work / "trelk"), std::vector<std::string>{});

  const std::vector<std::string> written = EntriesUnder(run.work / "structures");
  if (c.written == "nothing") {
    EXPECT_EQ(written, std::vector<std::string>{});
  } else if (c.written == "folder") {
    EXPECT_EQ(written, std::vector<std::string>{"Bad/"});
  } else {
    ASSERT_EQ(c.written, "structure");
    EXPECT_EQ(written, kStructureFiles);
  }
}

std::string CaseName(const ::testing::TestParamInfo<BadCase>& info) {
  std::string name = info.param.name;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Corpus, BadInput, ::testing::ValuesIn(Corpus()), CaseName);

// A corpus that lost its files would pass without testing anything.
TEST(BadInputCorpus, HoldsEveryKindOfCase) {
  std::vector<std::string> names;
  for (const BadCase& c : Corpus()) names.push_back(c.name);
  for (const char* needed :
       {"not-json", "truncated", "deep-nesting", "wrong-type-number-for-text",
        "wrong-type-object-for-array", "unknown-key", "huge-real", "huge-integer", "nan-bare",
        "infinity-bare", "nan-text", "duplicate-point-names", "duplicate-frame-names",
        "frame-to-missing-point", "frame-to-missing-section", "area-to-missing-point",
        "zero-length-frame", "empty-model", "no-host-data", "only-format-and-version",
        "missing-file", "empty-file", "utf8-bom", "invalid-utf8-name"}) {
    EXPECT_NE(std::find(names.begin(), names.end(), needed), names.end()) << needed;
  }
  EXPECT_FALSE(fs::exists(kCorpus / "missing-file.json"));
  EXPECT_EQ(fs::file_size(kCorpus / "empty-file.json"), 0u);
  // 100,000 arrays deep, and closed again.
  const std::string deep = ReadTextFile(kCorpus / "deep-nesting.json");
  EXPECT_EQ(std::count(deep.begin(), deep.end(), '['), 100000);
  EXPECT_EQ(std::count(deep.begin(), deep.end(), ']'), 100000);
  EXPECT_EQ(ReadTextFile(kCorpus / "utf8-bom.json").substr(0, 3), "\xEF\xBB\xBF");
}

// ---- What the accepted cases hold ----

const ReadSection& Section(const StructureRead& structure, std::string_view name) {
  const ReadSection* section = structure.File("S")->Section(name);
  if (section == nullptr) throw std::runtime_error("no section " + std::string(name));
  return *section;
}

StructureRead TransferAccepted(const CaseRun& run, const std::string& name) {
  fs::copy_file(kCorpus / (name + ".json"), run.work / (name + ".json"));
  const testing::ProgramResult r = run.Transfer(name + ".json");
  EXPECT_EQ(r.status, 0) << r.err;
  return ReadStructureFolder(run.work / "structures" / "Bad");
}

std::vector<double> NodeCoordinates(const StructureRead& structure, const FieldDef& coordinate) {
  std::vector<double> values;
  for (const ReadRecord* node : Section(structure, "nodes").Records("TrelkNodeRec")) {
    values.push_back(node->Real(coordinate));
  }
  return values;
}

// Two points of one name are two nodes, but every look-up by the name answers from the
// first: the second "A" stands where the first does.
TEST(BadInputAccepted, DuplicatePointNamesGiveTwoNodesAtTheFirstPlace) {
  CaseRun run("dup-points");
  const StructureRead s = TransferAccepted(run, "duplicate-point-names");
  EXPECT_EQ(Section(s, "nodes").Value("NodeCount"), 4);
  EXPECT_EQ(NodeCoordinates(s, node_rec::X), (std::vector<double>{0, 0, 0, 0}));
  EXPECT_EQ(NodeCoordinates(s, node_rec::Z), (std::vector<double>{0, 0, 0, 3}));
}

// Two frames of one name are two elements with the ends of the first: both are columns
// from A to B, none is the beam from B to C.
TEST(BadInputAccepted, DuplicateFrameNamesGiveTwoElementsOfTheFirstFrame) {
  CaseRun run("dup-frames");
  const StructureRead s = TransferAccepted(run, "duplicate-frame-names");
  const ReadSection& elements = Section(s, "elements");
  EXPECT_EQ(elements.Value("ElemCount"), 3);
  const std::vector<const ReadRecord*> records = elements.Records("TrelkElemRec");
  ASSERT_EQ(records.size(), 3u);
  for (int i : {1, 2}) {
    EXPECT_EQ(records[i]->Int(elem_rec::GroupNumber), 1);
    EXPECT_EQ(records[i]->Int(elem_rec::Node1), 2);
    EXPECT_EQ(records[i]->Int(elem_rec::Node2), 3);
  }
  const std::vector<const ReadRecord*> groups = Section(s, "element groups").Records("TrelkElemGroupRec");
  ASSERT_EQ(groups.size(), 1u);
  EXPECT_EQ(groups[0]->Fields().front().text,
            "ElemSteelCol                            ");
}

// A frame whose section the model lacks does not exist for the transfer: no element.
TEST(BadInputAccepted, AFrameOfAMissingSectionIsLeftOut) {
  CaseRun run("missing-section");
  const StructureRead s = TransferAccepted(run, "frame-to-missing-section");
  EXPECT_EQ(Section(s, "nodes").Value("NodeCount"), 3);
  EXPECT_EQ(Section(s, "elements").Value("ElemCount"), 0);
  EXPECT_EQ(Section(s, "element groups").Value("ElemGroupCount"), 0);
}

// The byte order mark is passed over; the point behind it is read.
TEST(BadInputAccepted, AByteOrderMarkIsPassedOver) {
  CaseRun run("bom");
  const StructureRead s = TransferAccepted(run, "utf8-bom");
  EXPECT_EQ(Section(s, "nodes").Value("NodeCount"), 2);
}

// ---- A count past what an i16 holds ----

// A model of `sections` steel frame sections, all of one material, and one point; with
// `function`, also a time-history function whose record file is written while the model is
// read.
std::string ManySteelSections(int sections, bool function) {
  std::string json =
      R"({"format": "vask-model", "version": 1, "units": 6,
 "materials": [{"name": "S355", "type": 1,
   "isotropic": {"E": 210000000, "U": 0.3, "A": 1.2e-5, "G": 80769230},
   "steel": {"Fy": 355000, "Fu": 510000, "eFy": 390000, "eFu": 560000}}],
 "points": [{"name": "A", "x": 0, "y": 0, "z": 0}],)";
  if (function) {
    json += R"(
 "functions": [{"name": "EQ", "kind": 1, "points": [[0, 0], [0.01, 0.5], [0.02, -0.25]]}],)";
  }
  json += R"(
 "frame_sections": [)" +
          testing::NumberedEntries(sections, R"({"name": "S#", "type": 1, "material": "S355"})") +
          "]}";
  return json;
}

// Steel frame sections are the cheapest list to overflow: every one becomes a beam section
// whether a frame uses it or not. The capacity grows to the count plus 10 whenever the
// count passes it (1, 12, 23, ..., 1 + 11 k) and is an i16 of the file too: the capacity
// 32,759 holds 32,759 sections, and the 32,760th would need 32,770. The record file of the
// time-history function was written while the model was read, before the stop, and it
// stays; the structure folder stays empty.
TEST(BadInputRunTime, AnI16CountPastItsLimitStopsNamingTheListAndLeavesTheRecordFile) {
  CaseRun run("i16");
  std::ofstream(run.work / "many.json") << ManySteelSections(32760, true);
  const testing::ProgramResult r = run.Transfer("many.json");
  EXPECT_EQ(r.status, 7);
  EXPECT_EQ(r.err,
            "Transfer stopped\n"
            "Overflow: the structure can hold at most 32757 beam sections; this model needs "
            "more.\n");
  EXPECT_EQ(EntriesUnder(run.work / "structures"), std::vector<std::string>{"Bad/"});
  EXPECT_EQ(EntriesUnder(run.work / "trelk"),
            (std::vector<std::string>{"Records/", "Records/EqkeGroup/", "Records/EqkeGroup/EQ"}));
}

// One section fewer: the beam and column sections fit, and the transfer stops at the
// compound frame components, which come four to a steel section.
TEST(BadInputRunTime, TheBeamSectionListHoldsUpToItsLastCapacity) {
  CaseRun run("i16-edge");
  std::ofstream(run.work / "many.json") << ManySteelSections(32759, false);
  const testing::ProgramResult r = run.Transfer("many.json");
  EXPECT_EQ(r.status, 7);
  EXPECT_EQ(r.err,
            "Transfer stopped\n"
            "Overflow: the structure can hold at most 32757 compound frame components; this "
            "model needs more.\n");
  EXPECT_EQ(EntriesUnder(run.work / "structures"), std::vector<std::string>{"Bad/"});
}

}  // namespace
}  // namespace vtt
