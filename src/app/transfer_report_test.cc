// The transfer report: the objects a transfer leaves out, with their reasons, and a
// structure that is the same byte for byte with or without the report.
#include "app/transfer_report.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include <nlohmann/json.hpp>

#include "app/cli.h"
#include "store/structure_reader.h"
#include "support/cli_run.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;

fs::path Models() { return fs::path(VTT_SOURCE_DIR) / "tests" / "models"; }

using testing::Cli;
using testing::CliRun;
using testing::ReadText;

class TransferReportTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::temp_directory_path() /
           ("vtt-report-test-" +
            std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    fs::remove_all(dir_);
    fs::create_directories(dir_ / "plain");
    fs::create_directories(dir_ / "reported");
  }
  void TearDown() override { fs::remove_all(dir_); }

  // Transfers `model` once without and once with a report, as a structure of the model's
  // folder name like its expected files; both structures are compared with each other and
  // with those files.
  nlohmann::json TransferBothWays(const std::string& model, const std::string& report_name) {
    const fs::path source = Models() / model / "model.json";
    const CliRun plain = Cli({"transfer", source.string(), "--dir", (dir_ / "plain").string(),
                              "--name", model, "--trelk-path", (dir_ / "plain").string(), "-q"});
    EXPECT_EQ(plain.status, 0) << plain.err;
    const fs::path report = dir_ / report_name;
    const CliRun reported =
        Cli({"transfer", source.string(), "--dir", (dir_ / "reported").string(), "--name", model,
             "--trelk-path", (dir_ / "reported").string(), "-q", "--report", report.string()});
    EXPECT_EQ(reported.status, 0) << reported.err;
    for (std::string_view suffix : StructureFileSuffixes()) {
      const std::string file = "TRKD" + std::string(suffix);
      const auto a = ReadWholeFile(dir_ / "plain" / model / file);
      const auto b = ReadWholeFile(dir_ / "reported" / model / file);
      const auto expected = ReadWholeFile(Models() / model / "expected" / file);
      EXPECT_FALSE(a.empty()) << file;
      EXPECT_EQ(a, b) << file;
      EXPECT_EQ(b, expected) << file;
    }
    if (report_name.ends_with(".json")) return nlohmann::json::parse(ReadText(report));
    return {{"markdown", ReadText(report)}};
  }

  fs::path dir_;
};

bool HasNote(const nlohmann::json& report, const std::string& kind, const std::string& name,
             const std::string& reason) {
  for (const auto& n : report["left_out"]) {
    if (n["kind"] == kind && n["name"] == name && n["reason"] == reason) return true;
  }
  return false;
}

TEST_F(TransferReportTest, JsonNamesMaterialsSectionsFramesReleasesAndHinges) {
  const nlohmann::json r = TransferBothWays("frames", "report.json");
  ASSERT_EQ(r["left_out"].size(), 9u) << r.dump(2);
  EXPECT_TRUE(HasNote(r, "material", "AL6061", "neither concrete, steel nor rebar"));
  EXPECT_TRUE(HasNote(r, "frame section", "UNUSED0", "its section type is unknown"));
  EXPECT_TRUE(HasNote(r, "frame", "X0", "its section \"UNUSED0\" was not taken"));
  EXPECT_TRUE(HasNote(r, "frame", "AL1",
                      "the material of its section \"ALUM-TUBE\" was not taken: neither steel "
                      "nor concrete"));
  EXPECT_TRUE(HasNote(r, "release", "CB3",
                      "a moment release about the local 2 axis (M2) is not carried"));
  EXPECT_TRUE(HasNote(r, "hinge", "C4", "in the middle third of the frame"));
  EXPECT_TRUE(HasNote(r, "hinge", "C6", "in the middle third of the frame"));
  // What went in: the summary's counts.
  EXPECT_EQ(r["went_in"]["nodes"], 19);
  ASSERT_EQ(r["went_in"]["element_groups"].size(), 6u);
  EXPECT_EQ(r["went_in"]["element_groups"][0]["name"], "ElemConcCol");
  EXPECT_EQ(r["went_in"]["element_groups"][0]["elements"], 7);
}

TEST_F(TransferReportTest, MarkdownNamesLoadsInALocalSystem) {
  const nlohmann::json r = TransferBothWays("loads", "report.md");
  const std::string md = r["markdown"];
  EXPECT_EQ(md.rfind("# Transfer report\n", 0), 0u);
  EXPECT_NE(md.find("| nodal load | D1 (DEAD) | in the local system \"Local\" |\n"),
            std::string::npos)
      << md;
  EXPECT_NE(md.find("| area load | S0 | a load in a local system or an unsupported direction "
                    "costs the area every load of its kind |\n"),
            std::string::npos)
      << md;
  // G2's point load at its I end goes onto B1 as a later load of LIVE, and the nodal
  // pattern keeps only that one: B1's own LIVE load (2 in F2) does not reach the structure.
  EXPECT_NE(md.find("| nodal load | B1 (LIVE) | a later load of the node in the same pattern (a "
                    "frame's end point load moved onto it) replaces it: the structure keeps "
                    "only the last |\n"),
            std::string::npos)
      << md;
  EXPECT_NE(md.find("3 objects of the model did not go into the structure.\n"),
            std::string::npos);
}

TEST_F(TransferReportTest, JsonAndMarkdownNameCasesAndFunctions) {
  const nlohmann::json r = TransferBothWays("complete", "report.json");
  EXPECT_TRUE(HasNote(r, "load case", "DEAD-LIN",
                      "neither a nonlinear static nor a nonlinear history case"));
  EXPECT_TRUE(HasNote(r, "load case", "MODAL",
                      "neither a nonlinear static nor a nonlinear history case"));
  EXPECT_TRUE(HasNote(r, "load case", "PUSH-NONE",
                      "a pushover case without a Load, Mode or Accel load"));
  EXPECT_TRUE(HasNote(r, "load case", "TH-NOACCEL",
                      "a history case without an acceleration in U1, U2 or U3"));
  EXPECT_TRUE(HasNote(r, "function", "SPECTRUM", "not a time-history function"));
  EXPECT_TRUE(HasNote(r, "function", "BADSINE", "the host could not give its points"));

  const nlohmann::json md = TransferBothWays("complete", "report.md");
  EXPECT_NE(md["markdown"].get<std::string>().find(
                "| load case | MODAL | neither a nonlinear static nor a nonlinear history case |"),
            std::string::npos);
}

TEST_F(TransferReportTest, JsonNamesAreasOfOtherShellsAndOfFiveNodes) {
  const nlohmann::json r = TransferBothWays("walls-slabs", "report.json");
  ASSERT_EQ(r["left_out"].size(), 4u) << r.dump(2);
  EXPECT_TRUE(HasNote(r, "area section", "PLANE", "not a shell section"));
  EXPECT_TRUE(HasNote(r, "area", "PL1", "its section \"PLANE\" is not a shell section"));
  EXPECT_TRUE(HasNote(r, "area", "M1", "its shell type 5 is neither thin nor layered"));
  EXPECT_TRUE(HasNote(r, "area", "X5", "5 nodes; only areas of 3 or 4 nodes are taken"));
}

TEST_F(TransferReportTest, MarkdownNamesDiaphragmsAndConstraintsLeftOut) {
  const nlohmann::json r = TransferBothWays("floors-mats", "report.md");
  const std::string md = r["markdown"];
  EXPECT_NE(md.find("| diaphragm | DX | its normal is not along Z |\n"), std::string::npos) << md;
  EXPECT_NE(md.find("| constraint | BODY | not a diaphragm |\n"), std::string::npos) << md;
  EXPECT_NE(md.find("| diaphragm | D3 | it holds a node supported in U1, U2 or R3 |\n"),
            std::string::npos)
      << md;
}

TEST_F(TransferReportTest, OtherReportNamesAreRefusedBeforeAnythingIsWritten) {
  const CliRun run = Cli({"transfer", (Models() / "frames" / "model.json").string(), "--dir",
                          (dir_ / "plain").string(), "--name", "S", "--trelk-path",
                          (dir_ / "plain").string(), "--report", (dir_ / "r.txt").string()});
  EXPECT_EQ(run.status, exit_status::kUsage);
  EXPECT_FALSE(fs::exists(dir_ / "plain" / "S"));
  EXPECT_FALSE(fs::exists(dir_ / "r.txt"));
}

// A small frame with every kind of drop that happens inside the load objects, in the
// function files and inside the load cases.
constexpr std::string_view kGapsModel = R"({
  "format": "vask-model", "version": 1, "units": 6,
  "materials": [
    {"name": "C30", "type": 2, "weight_per_volume": 24.0, "mass_per_volume": 2.447,
     "isotropic": {"E": 30000000, "U": 0.2, "A": 1e-5, "G": 12500000},
     "concrete": {"fc": 30000}}
  ],
  "frame_sections": [
    {"name": "C400", "type": 8, "material": "C30", "rebar_design": 1,
     "properties": {"area": 0.16, "As2": 0.1333, "As3": 0.1333, "J": 0.0036,
                    "I22": 0.002133, "I33": 0.002133}}
  ],
  "area_sections": [
    {"name": "SLAB200", "shell_type": 1, "material": "C30",
     "membrane_thickness": 0.2, "bending_thickness": 0.2}
  ],
  "points": [
    {"name": "N1", "x": 0, "y": 0, "z": 0, "restraints": [true, true, true, true, true, true]},
    {"name": "N4", "x": 5, "y": 0, "z": 0, "restraints": [true, true, true, true, true, true]},
    {"name": "N2", "x": 0, "y": 0, "z": 3,
     "forces": [{"pattern": "DEAD", "values": [0, 0, -5, 0, 0, 0]}]},
    {"name": "N3", "x": 5, "y": 0, "z": 3},
    {"name": "P1", "x": 5, "y": 4, "z": 3},
    {"name": "P2", "x": 2.5, "y": 6, "z": 3},
    {"name": "P3", "x": 0, "y": 4, "z": 3}
  ],
  "frames": [
    {"name": "C1", "section": "C400", "i": "N1", "j": "N2"},
    {"name": "C2", "section": "C400", "i": "N4", "j": "N3"},
    {"name": "B1", "section": "C400", "i": "N2", "j": "N3",
     "point_loads": [
       {"pattern": "LIVE", "dir": 10, "rd": 0.3, "val": 5},
       {"pattern": "LIVE", "dir": 10, "rd": 0.3, "val": 2.5},
       {"pattern": "LIVE", "dir": 10, "rd": 0.7, "val": 1},
       {"pattern": "DEAD", "dir": 10, "rd": 0, "val": 4}]}
  ],
  "areas": [
    {"name": "X5", "section": "SLAB200", "points": ["N2", "N3", "P1", "P2", "P3"],
     "uniform_loads": [{"pattern": "LIVE", "dir": 10, "value": 2}]}
  ],
  "load_patterns": [
    {"name": "DEAD", "type": 1, "self_weight_multiplier": 1},
    {"name": "LIVE", "type": 3},
    {"name": "WIND", "type": 6}
  ],
  "functions": [
    {"name": "FDOWN", "kind": 0,
     "file": {"path": "down.txt", "value_type": 2}},
    {"name": "FMISSING", "kind": 0, "file": {"path": "missing.txt"}},
    {"name": "FNOPOINTS", "kind": 2, "period": 1, "steps_per_cycle": 4, "amplitude": 1}
  ],
  "load_cases": [
    {"name": "G1", "type": 2, "loads": [
      {"type": "Load", "name": "DEAD"}, {"type": "Load", "name": "NOPE"},
      {"type": "Mode", "name": "1"}, {"type": "Load", "name": "WIND"}]},
    {"name": "PA", "type": 2, "load_application": {"control": 2}, "loads": [
      {"type": "Accel", "name": "UX"}, {"type": "Load", "name": "DEAD"},
      {"type": "Accel", "name": "UZ"}]},
    {"name": "PM", "type": 2, "load_application": {"control": 2}, "loads": [
      {"type": "Mode", "name": "1"}, {"type": "Mode", "name": "2"}, {"type": "Mode", "name": "3"},
      {"type": "Mode", "name": "4"}, {"type": "Mode", "name": "5"}, {"type": "Mode", "name": "6"},
      {"type": "Mode", "name": "7"}]},
    {"name": "PL", "type": 2, "load_application": {"control": 2}, "loads": [
      {"type": "Load", "name": "DEAD"}, {"type": "Load", "name": "WIND"}]},
    {"name": "TH1", "type": 8, "time_step": {"steps": 100, "size": 0.01}, "loads": [
      {"type": "Accel", "name": "U1", "function": "FDOWN"},
      {"type": "Accel", "name": "U1", "function": "FMISSING"},
      {"type": "Load", "name": "DEAD"},
      {"type": "Accel", "name": "UX", "function": "FDOWN"},
      {"type": "Accel", "name": "U2", "function": "FNOPOINTS"}]}
  ]
})";

class TransferReportGapsTest : public TransferReportTest {
 protected:
  // Writes the model and its record file, and transfers it with a report `report_name`.
  CliRun TransferGaps(std::string_view model_text, const std::string& report_name) {
    {
      std::ofstream model(dir_ / "model.json", std::ios::binary);
      model << model_text;
      std::ofstream down(dir_ / "down.txt", std::ios::binary);
      down << "0 0\n0.02 1\n0.01 2\n";
    }
    return Cli({"transfer", (dir_ / "model.json").string(), "--dir", (dir_ / "reported").string(),
                "--name", "GAPS", "--trelk-path", (dir_ / "reported").string(), "-q", "--report",
                (dir_ / report_name).string()});
  }
};

// Every note that the gaps model in `dir` gives, as kind, name and reason.
std::vector<DropNote> GapsNotes(const fs::path& dir) {
  return {
      {"frame point load", "B1 (LIVE)",
       "the load of 1 at RD 0.7 falls off the list while coincident loads are folded"},
      {"area", "X5", "5 nodes; only areas of 3 or 4 nodes are taken"},
      {"nodal load", "N2 (DEAD)",
       "a later load of the node in the same pattern (a frame's end point load moved onto it) "
       "replaces it: the structure keeps only the last"},
      {"function file", "FDOWN",
       "\"" + (dir / "down.txt").string() +
           "\" was refused (its times do not rise at point 3): the function went in as the two "
           "points (0, 0) and (1, 0)"},
      {"function", "FNOPOINTS", "the host could not give its points"},
      {"case load", "G1 (Load NOPE)", "its load pattern is not in the model"},
      {"case load", "G1 (Mode 1)", "a gravity case takes only Load loads"},
      {"case load", "G1 (Load WIND)",
       "its pattern carries no nodal load, frame load or self weight"},
      {"case load", "PA (Load DEAD)", "the case's first load made it a pushover on Accel loads"},
      {"case load", "PA (Accel UZ)", "only the accelerations UX and UY are pushed"},
      {"case load", "PM (Mode 7)", "beyond the 6 modes a pushover case takes"},
      {"case load", "PL (Load DEAD)", "its self weight is not pushed, only its nodal loads"},
      {"case load", "PL (Load WIND)",
       "its pattern has no nodal load, and a pushover case pushes only nodal loads"},
      {"case load", "TH1 (Accel U1 FMISSING)", "an earlier acceleration in U1 of the case is taken"},
      {"case load", "TH1 (Accel UX)", "only the accelerations U1, U2 and U3 are taken"},
      {"case load", "TH1 (Load DEAD)", "a history case takes only Accel loads"},
      {"case load", "TH1 (Accel U2 FNOPOINTS)",
       "its function was not kept: the record goes in with no points"},
  };
}

TEST_F(TransferReportGapsTest, JsonNamesDropsInsideLoadsFunctionFilesAndCases) {
  const CliRun run = TransferGaps(kGapsModel, "report.json");
  ASSERT_EQ(run.status, 0) << run.err;
  const nlohmann::json r = nlohmann::json::parse(ReadText(dir_ / "report.json"));
  EXPECT_TRUE(r["stopped"].is_null());
  for (const DropNote& n : GapsNotes(dir_)) {
    EXPECT_TRUE(HasNote(r, n.kind, n.name, n.reason)) << n.kind << " | " << n.name << " | "
                                                      << n.reason << "\n" << r.dump(2);
  }
  // The missing record file: the host's own reading of the file gives the function, so it
  // is told as refused too.
  bool missing = false;
  for (const auto& n : r["left_out"]) {
    missing = missing || (n["kind"] == "function file" && n["name"] == "FMISSING" &&
                          n["reason"].get<std::string>().find("(it cannot be opened)") !=
                              std::string::npos);
  }
  EXPECT_TRUE(missing) << r.dump(2);
}

TEST_F(TransferReportGapsTest, MarkdownNamesTheSameDrops) {
  const CliRun run = TransferGaps(kGapsModel, "report.md");
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string md = ReadText(dir_ / "report.md");
  for (const DropNote& n : GapsNotes(dir_)) {
    const std::string row = "| " + n.kind + " | " + n.name + " | " + n.reason + " |\n";
    EXPECT_NE(md.find(row), std::string::npos) << row << md;
  }
}

TEST_F(TransferReportGapsTest, AStoppedTransferStillWritesItsReport) {
  std::string model(kGapsModel);
  const std::string mode2 = R"({"type": "Mode", "name": "2"})";
  model.replace(model.find(mode2), mode2.size(), R"({"type": "Mode", "name": "300"})");
  const CliRun run = TransferGaps(model, "report.json");
  EXPECT_EQ(run.status, exit_status::kTransferFailed);
  const nlohmann::json r = nlohmann::json::parse(ReadText(dir_ / "report.json"));
  EXPECT_EQ(r["stopped"],
            "Load case \"PM\": the mode \"300\" is not a mode number from 0 to 255.");
  EXPECT_TRUE(HasNote(r, "case load", "PM (Mode 300)",
                      "not a mode number from 0 to 255: the transfer stopped"));
  // What was left out before the stop is there too.
  EXPECT_TRUE(HasNote(r, "case load", "G1 (Load NOPE)", "its load pattern is not in the model"));

  const CliRun md_run = TransferGaps(model, "report.md");
  EXPECT_EQ(md_run.status, exit_status::kTransferFailed);
  const std::string md = ReadText(dir_ / "report.md");
  EXPECT_NE(md.find("**The transfer stopped:** Load case \"PM\": the mode \"300\" is not a mode "
                    "number from 0 to 255.\n"),
            std::string::npos)
      << md;
  EXPECT_EQ(md.find("## What went in"), std::string::npos);
  EXPECT_NE(md.find("| case load | PM (Mode 300) | not a mode number from 0 to 255: the "
                    "transfer stopped |\n"),
            std::string::npos);
}

TEST(TransferReportNotes, TheSameNoteIsListedOnce) {
  TransferReport r;
  r.Note({"area load", "T1", "why"});
  r.Note({"area load", "T1", "why"});
  r.Note({"area load", "T1", "another reason"});
  r.Note({"area load", "T2", "why"});
  ASSERT_EQ(r.left_out.size(), 3u);
  EXPECT_EQ(r.left_out[1].reason, "another reason");
  EXPECT_EQ(r.left_out[2].name, "T2");
}

TEST(TransferReportMarkdown, NothingLeftOutAndBarsEscaped) {
  TransferReport r;
  r.summary.element_groups = {{"A|B", 3}};
  std::ostringstream out;
  WriteReportMarkdown(r, out);
  EXPECT_NE(out.str().find("| elements of group A\\|B | 3 |\n"), std::string::npos);
  EXPECT_NE(out.str().find("Nothing: every object of the model was taken.\n"),
            std::string::npos);
}

TEST(TransferReportNames, OnlyMarkdownAndJson) {
  EXPECT_TRUE(IsReportFileName("r.md"));
  EXPECT_TRUE(IsReportFileName("dir/r.json"));
  EXPECT_FALSE(IsReportFileName("r.txt"));
  EXPECT_FALSE(IsReportFileName("md"));
  EXPECT_FALSE(IsReportFileName("r.JSON"));
}

}  // namespace
}  // namespace vtt
