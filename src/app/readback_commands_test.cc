// The dump and check commands on the command line.
#include "app/readback_commands.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "app/cli.h"
#include "support/cli_run.h"
#include "support/expected_bytes.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;

fs::path Models() { return fs::path(VTT_SOURCE_DIR) / "tests" / "models"; }

using testing::Cli;
using testing::CliRun;

TEST(DumpCommand, FolderAsTextWithFieldNames) {
  const CliRun run = Cli({"dump", (Models() / "frames" / "expected").string()});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("TRKDS: 36413 bytes\n"), std::string::npos);
  EXPECT_NE(run.out.find("    TrelkElemRec 3 at 2932\n"), std::string::npos);
  EXPECT_NE(run.out.find("      Node1 = 8\n      Node2 = 14\n"), std::string::npos);
}

TEST(DumpCommand, JsonParses) {
  const CliRun run = Cli({"dump", (Models() / "frames" / "expected").string(), "--json"});
  ASSERT_EQ(run.status, 0) << run.err;
  const nlohmann::json j = nlohmann::json::parse(run.out);
  ASSERT_EQ(j["files"].size(), 7u);
  EXPECT_EQ(j["files"][5]["file"], "TRKDL");
  EXPECT_EQ(j["files"][5]["size"], 160);
  EXPECT_EQ(j["files"][6]["sections"][1]["values"]["NodeCount"], 19);
}

TEST(DumpCommand, OneFileOfTheSet) {
  const CliRun run = Cli({"dump", (Models() / "frames" / "expected" / "TRKDPOA").string(), "--json"});
  ASSERT_EQ(run.status, 0) << run.err;
  const nlohmann::json j = nlohmann::json::parse(run.out);
  EXPECT_EQ(j["file"], "TRKDPOA");
  EXPECT_EQ(j["size"], 10);
  EXPECT_EQ(j["end"], 10);
}

TEST(DumpCommand, RecordFile) {
  const fs::path path = Models() / "complete" / "expected-records" / "RAMP";
  const CliRun run = Cli({"dump", path.string(), "--json"});
  ASSERT_EQ(run.status, 0) << run.err;
  const nlohmann::json j = nlohmann::json::parse(run.out);
  EXPECT_EQ(j["file"], "RAMP");
  const nlohmann::json& header = j["sections"][0]["records"][0]["fields"];
  EXPECT_EQ(header["Version"], 1);
  const int points = header["PointCount"];
  EXPECT_EQ(j["size"], 56 + 8 * points);
  EXPECT_EQ(j["sections"][1]["values"]["Time(1)"], 0.0);
  EXPECT_EQ(j["sections"][1]["values"]["Value(1)"], 0.0);
}

TEST(DumpCommand, MissingPathIsAUsageError) {
  const CliRun run = Cli({"dump", "/no/such/folder/anywhere"});
  EXPECT_EQ(run.status, exit_status::kUsage);
}

TEST(DumpCommand, HelpNamesBothCommands) {
  const CliRun run = Cli({"--help"});
  ASSERT_EQ(run.status, 0);
  EXPECT_NE(run.out.find("dump"), std::string::npos);
  EXPECT_NE(run.out.find("check"), std::string::npos);
  const CliRun dump = Cli({"dump", "--help"});
  EXPECT_NE(dump.out.find("--json"), std::string::npos);
}

TEST(CheckCommand, GoldenFolderHolds) {
  const CliRun run = Cli({"check", (Models() / "complete" / "expected").string()});
  EXPECT_EQ(run.status, 0) << run.out;
  EXPECT_EQ(run.out, "Every check holds.\n");
}

// A smaller structure transferred into the folder of a larger one leaves the larger one's
// tails behind: the files are not truncated on writing.
TEST(CheckCommand, TrailingBytesOfAnEarlierLargerTransfer) {
  testing::TempFolder temp("check-cli");
  const std::string dir = temp.Path().string();
  const std::string trelk = (temp.Path() / "TRELK").string();
  for (const char* model : {"frames", "one-node"}) {
    const CliRun run = Cli({"transfer", (Models() / model / "model.json").string(), "--dir", dir,
                         "--name", "Reused", "--trelk-path", trelk, "--quiet"});
    ASSERT_EQ(run.status, 0) << run.err;
  }
  const fs::path folder = temp.Path() / "Reused";
  const std::uint64_t old_size = fs::file_size(Models() / "frames" / "expected" / "TRKDS");
  const std::uint64_t new_size = fs::file_size(Models() / "one-node" / "expected" / "TRKDS");
  ASSERT_GT(old_size, new_size);
  const CliRun run = Cli({"check", folder.string()});
  EXPECT_EQ(run.status, exit_status::kCheckFailed);
  const std::string expected =
      "TRKDS at offset " + std::to_string(new_size) + ": " + std::to_string(old_size - new_size) +
      " bytes after the end of the content at offset " + std::to_string(new_size) +
      ": left by an older, longer file; expected the file to end there\n";
  EXPECT_NE(run.out.find(expected), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("\n1 check failed.\n"), std::string::npos) << run.out;
}

TEST(CheckCommand, OneFailedCheck) {
  testing::TempFolder temp("check-one");
  for (const auto& entry : fs::directory_iterator(Models() / "frames" / "expected")) {
    fs::copy_file(entry.path(), temp.Path() / entry.path().filename());
  }
  auto bytes = testing::ReadFileBytes(temp.Path() / "TRKDS");
  bytes[234] = 9;  // NextNode of node record 2
  testing::WriteFileBytes(temp.Path() / "TRKDS", bytes);
  const CliRun run = Cli({"check", temp.Path().string()});
  EXPECT_EQ(run.status, exit_status::kCheckFailed);
  EXPECT_EQ(run.out,
            "TRKDS at offset 234: TrelkNodeRec 2 NextNode is 9; expected 3\n1 check failed.\n");
}

}  // namespace
}  // namespace vtt
