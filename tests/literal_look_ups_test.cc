// The indexes behind the look-ups by label give the structure that the literal searches
// give, byte for byte: random buildings of every mix of parts, the golden models, and the
// accepted model files with names given twice, each transferred once through the indexes
// and once with literal look-ups. Likewise the structure frames and base cuts made on a
// second thread beside the nodal masses and loads, and made in turn.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <string>

#include "generate_building.h"
#include "hosts/json_model_host.h"
#include "source/literal_look_ups.h"
#include "store/trelk_store.h"
#include "support/expected_bytes.h"
#include "transfer/driver.h"
#include "transfer/messages.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using testing::TempFolder;

const fs::path kSource = VTT_SOURCE_DIR;

// Every file under `folder`, by its path relative to it, with its bytes.
std::map<std::string, std::string> FilesUnder(const fs::path& folder) {
  std::map<std::string, std::string> files;
  if (!fs::exists(folder)) return files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    std::ifstream in(entry.path(), std::ios::binary);
    files[fs::relative(entry.path(), folder).generic_string()] =
        std::string(std::istreambuf_iterator<char>(in), {});
  }
  return files;
}

// Restores the indexed look-ups whatever happens in the test.
class LiteralLookUpsOn {
 public:
  LiteralLookUpsOn() { SetLiteralLookUps(true); }
  LiteralLookUpsOn(const LiteralLookUpsOn&) = delete;
  LiteralLookUpsOn& operator=(const LiteralLookUpsOn&) = delete;
  ~LiteralLookUpsOn() { SetLiteralLookUps(false); }
};

// Every fill step in turn, whatever happens in the test.
class FillInTurn {
 public:
  FillInTurn() { SetFillOnSecondThread(false); }
  FillInTurn(const FillInTurn&) = delete;
  FillInTurn& operator=(const FillInTurn&) = delete;
  ~FillInTurn() { SetFillOnSecondThread(true); }
};

// Transfers the model text into `folder` (structure "S", Trelk data folder "TRELK") and
// returns the messages and every file written.
std::map<std::string, std::string> Transfer(const std::string& text, const fs::path& base,
                                            const fs::path& folder, std::string& outcome) {
  fs::create_directories(folder / "S");
  const std::unique_ptr<JsonModelHost> host = JsonModelHost::FromText(text, "model.json", base);
  TrelkStore store;
  CollectedMessages messages;
  try {
    Transform(host.get(), store, messages, folder.string(), "S", (folder / "TRELK").string());
  } catch (const std::exception& failure) {
    outcome = std::string("stopped: ") + failure.what();
  }
  for (const UserMessage& message : messages.messages) outcome += message.text + "\n";
  return FilesUnder(folder);
}

// Transfers the text as the program does, and again while an `OtherWay` lives.
template <class OtherWay>
void ExpectTheSameBothWays(const std::string& text, const fs::path& base) {
  TempFolder temp("literal");
  std::string indexedOutcome;
  const auto indexed = Transfer(text, base, temp.Path() / "indexed", indexedOutcome);
  std::string literalOutcome;
  std::map<std::string, std::string> literal;
  {
    const OtherWay on;
    literal = Transfer(text, base, temp.Path() / "literal", literalOutcome);
  }
  EXPECT_EQ(indexedOutcome, literalOutcome);
  ASSERT_FALSE(indexed.empty());
  ASSERT_EQ(indexed.size(), literal.size());
  for (const auto& [name, bytes] : indexed) {
    const auto other = literal.find(name);
    ASSERT_NE(other, literal.end()) << name;
    EXPECT_TRUE(bytes == other->second) << name << " differs";
  }
}

std::string TextOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

TEST(FillOnSecondThread, IsOnUnlessATestTurnsItOff) {
  EXPECT_TRUE(FillOnSecondThread());
  {
    const FillInTurn inTurn;
    EXPECT_FALSE(FillOnSecondThread());
  }
  EXPECT_TRUE(FillOnSecondThread());
}

TEST(LiteralLookUps, AreOffUnlessATestTurnsThemOn) {
  EXPECT_FALSE(LiteralLookUps());
  {
    const LiteralLookUpsOn on;
    EXPECT_TRUE(LiteralLookUps());
  }
  EXPECT_FALSE(LiteralLookUps());
}

class LiteralLookUpsOnRandomBuildings : public ::testing::TestWithParam<std::uint64_t> {};

TEST_P(LiteralLookUpsOnRandomBuildings, GiveTheSameStructure) {
  const std::string text = generate::BuildingText(generate::RandomBuildingOptions(GetParam()));
  ExpectTheSameBothWays<LiteralLookUpsOn>(text, kSource);
}

TEST_P(LiteralLookUpsOnRandomBuildings, FillInTurnGivesTheSameStructure) {
  const std::string text = generate::BuildingText(generate::RandomBuildingOptions(GetParam()));
  ExpectTheSameBothWays<FillInTurn>(text, kSource);
}

INSTANTIATE_TEST_SUITE_P(Seeds, LiteralLookUpsOnRandomBuildings,
                         ::testing::Range<std::uint64_t>(1, 13));

class LiteralLookUpsOnModels : public ::testing::TestWithParam<std::string> {};

TEST_P(LiteralLookUpsOnModels, GiveTheSameStructure) {
  const fs::path file = kSource / GetParam();
  ExpectTheSameBothWays<LiteralLookUpsOn>(TextOf(file), file.parent_path());
}

TEST_P(LiteralLookUpsOnModels, FillInTurnGivesTheSameStructure) {
  const fs::path file = kSource / GetParam();
  ExpectTheSameBothWays<FillInTurn>(TextOf(file), file.parent_path());
}

INSTANTIATE_TEST_SUITE_P(
    Files, LiteralLookUpsOnModels,
    ::testing::Values("tests/models/complete/model.json", "tests/models/loads/model.json",
                      "tests/models/groups-cuts/model.json",
                      "tests/models/walls-slabs/model.json", "tests/models/frames/model.json",
                      "tests/bad/duplicate-point-names.json",
                      "tests/bad/duplicate-frame-names.json",
                      "examples/shear-wall-history.json"),
    [](const ::testing::TestParamInfo<std::string>& info) {
      std::string name;
      for (const char c : info.param) {
        name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
      }
      return name;
    });

}  // namespace
}  // namespace vtt
