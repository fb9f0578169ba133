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

namespace vtt {
namespace {

namespace fs = std::filesystem;

fs::path Models() { return fs::path(VTT_SOURCE_DIR) / "tests" / "models"; }

struct CliRun {
  int status;
  std::string out;
  std::string err;
};

CliRun Cli(std::vector<std::string> args) {
  args.insert(args.begin(), "vask2trelk");
  std::vector<const char*> argv;
  for (const std::string& a : args) argv.push_back(a.c_str());
  std::ostringstream out, err;
  const int status = RunCli(static_cast<int>(argv.size()), argv.data(), out, err, false);
  return {status, out.str(), err.str()};
}

std::string ReadText(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

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
  EXPECT_NE(md.find("2 objects of the model did not go into the structure.\n"),
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
