// The picture of a structure: what is read from a structure folder, and the SVG drawn.
#include "app/structure_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "app/cli.h"
#include "support/cli_run.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;

fs::path Models() { return fs::path(VTT_SOURCE_DIR) / "tests" / "models"; }

std::size_t Occurrences(const std::string& text, std::string_view what) {
  std::size_t n = 0;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
  return n;
}

// A small well-formedness check: every tag closes in the order it opened, attribute values
// are quoted, and the document has one root, svg.
bool WellFormedSvg(const std::string& doc, std::string* why) {
  std::vector<std::string> open;
  std::size_t roots = 0;
  std::size_t i = doc.find('<');
  while (i != std::string::npos) {
    const std::size_t end = doc.find('>', i);
    if (end == std::string::npos) return *why = "a tag without its end", false;
    const std::string tag = doc.substr(i + 1, end - i - 1);
    if (tag.empty()) return *why = "an empty tag", false;
    if (tag[0] == '?') {
      // the XML declaration
    } else if (tag[0] == '/') {
      if (open.empty() || open.back() != tag.substr(1)) return *why = "</" + tag + "> unmatched", false;
      open.pop_back();
    } else {
      const std::string name = tag.substr(0, tag.find_first_of(" \n/"));
      if (Occurrences(tag, "\"") % 2 != 0) return *why = "unbalanced quotes in <" + name, false;
      if (open.empty()) ++roots;
      if (open.empty() && name != "svg") return *why = "root element " + name, false;
      if (tag.back() != '/') open.push_back(name);
    }
    // Text between tags must not hold a bare '<' or '&' that is no entity.
    const std::size_t next = doc.find('<', end);
    const std::string text = doc.substr(end + 1, (next == std::string::npos ? doc.size() : next) - end - 1);
    for (std::size_t a = text.find('&'); a != std::string::npos; a = text.find('&', a + 1)) {
      if (text.find(';', a) == std::string::npos) return *why = "a bare &", false;
    }
    i = next;
  }
  if (!open.empty()) return *why = "<" + open.back() + "> never closed", false;
  if (roots != 1) return *why = "not one root", false;
  return true;
}

using testing::Cli;
using testing::CliRun;
using testing::ReadText;

class StructureViewTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // A parameterised test's name holds a slash; the folder is one level all the same.
    std::string name = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    std::replace(name.begin(), name.end(), '/', '-');
    dir_ = fs::temp_directory_path() / ("vtt-view-test-" + name);
    fs::remove_all(dir_);
    fs::create_directories(dir_);
  }
  void TearDown() override { fs::remove_all(dir_); }
  fs::path dir_;
};

const std::vector<std::pair<std::string, std::size_t>> kFramesGroups = {
    {"ElemConcCol", 7}, {"ElemConcBeam", 4},  {"ElemConcBrace", 2},
    {"ElemSteelCol", 2}, {"ElemSteelBeam", 6}, {"ElemSteelBrace", 2}};

TEST(StructureViewGeometry, FramesFolderNodesGroupsSupportsDrifts) {
  const StructureGeometry g =
      GeometryFromStructure(ReadStructureFolder(Models() / "frames" / "expected"));
  ASSERT_EQ(g.nodes.size(), 19u);
  ASSERT_EQ(g.groups.size(), kFramesGroups.size());
  for (std::size_t i = 0; i < g.groups.size(); ++i) {
    EXPECT_EQ(g.groups[i].name, kFramesGroups[i].first);
    // The leading element of each group is no element of the model.
    EXPECT_EQ(g.groups[i].elements.size(), kFramesGroups[i].second) << g.groups[i].name;
  }
  std::size_t fixed = 0, other = 0, slaved = 0;
  for (const auto& n : g.nodes) {
    if (n.support == 1) ++fixed;
    if (n.support != 0 && n.support != 1) ++other;
    if (n.diaphragm != 0) ++slaved;
  }
  EXPECT_EQ(fixed, 6u);
  EXPECT_EQ(other, 0u);
  EXPECT_EQ(slaved, 0u);
  ASSERT_EQ(g.drifts.size(), 2u);
  EXPECT_EQ(g.drifts[0].name, "H1 Drift");
  EXPECT_EQ(g.drifts[1].name, "H2 Drift");
  EXPECT_GT(g.drifts[0].top, 0);
  EXPECT_GT(g.drifts[0].bottom, 0);
  EXPECT_EQ(g.drifts[1].top, g.drifts[0].top);
  EXPECT_EQ(g.drifts[1].bottom, g.drifts[0].bottom);
}

TEST(StructureViewGeometry, StreamedFolderGivesTheSameGeometryAndPicture) {
  const fs::path folder = Models() / "frames" / "expected";
  const StructureGeometry held = GeometryFromStructure(ReadStructureFolder(folder));
  const StructureGeometry streamed = StreamGeometryFromFolder(folder);
  ASSERT_TRUE(streamed.element_records.has_value());
  EXPECT_FALSE(held.element_records.has_value());
  ASSERT_EQ(streamed.nodes.size(), held.nodes.size());
  for (std::size_t i = 0; i < held.nodes.size(); ++i) {
    EXPECT_EQ(streamed.nodes[i].x, held.nodes[i].x);
    EXPECT_EQ(streamed.nodes[i].y, held.nodes[i].y);
    EXPECT_EQ(streamed.nodes[i].z, held.nodes[i].z);
    EXPECT_EQ(streamed.nodes[i].support, held.nodes[i].support);
    EXPECT_EQ(streamed.nodes[i].diaphragm, held.nodes[i].diaphragm);
  }
  ASSERT_EQ(streamed.groups.size(), kFramesGroups.size());
  for (std::size_t i = 0; i < streamed.groups.size(); ++i) {
    EXPECT_EQ(streamed.groups[i].name, kFramesGroups[i].first);
    // Not held, only counted.
    EXPECT_TRUE(streamed.groups[i].elements.empty());
    EXPECT_EQ(streamed.ElementCount(i), kFramesGroups[i].second);
    EXPECT_EQ(held.ElementCount(i), kFramesGroups[i].second);
  }
  ASSERT_EQ(streamed.drifts.size(), 2u);
  EXPECT_EQ(streamed.drifts[1].name, "H2 Drift");
  EXPECT_EQ(streamed.drifts[0].top, held.drifts[0].top);
  // The first element record stands right after the element counts.
  const StructureRead read = ReadStructureFolder(folder);
  const ReadSection& elems = *read.File("S")->Section("elements");
  EXPECT_EQ(streamed.element_records->offset, elems.offset + 12);
  EXPECT_EQ(streamed.element_records->count, elems.Value("ElemCount"));

  const std::vector<ViewKind> all = {ViewKind::Iso, ViewKind::Plan, ViewKind::XZ, ViewKind::YZ};
  std::ostringstream a, b;
  WriteStructureSvg(held, all, a);
  WriteStructureSvg(streamed, all, b);
  EXPECT_EQ(a.str(), b.str());
  EXPECT_EQ(Occurrences(b.str(), "<path class=\"g1\""), 4u);
}

TEST(StructureViewGeometry, StreamedMissingFolderGivesNothing) {
  const StructureGeometry g = StreamGeometryFromFolder(fs::temp_directory_path() / "vtt-none");
  EXPECT_TRUE(g.nodes.empty());
  EXPECT_TRUE(g.groups.empty());
  std::ostringstream out;
  WriteStructureSvg(g, {ViewKind::Iso}, out);
  std::string why;
  EXPECT_TRUE(WellFormedSvg(out.str(), &why)) << why;
}

TEST(StructureViewGeometry, MissingFolderGivesNothing) {
  StructureRead read;
  const StructureGeometry g = GeometryFromStructure(read);
  EXPECT_TRUE(g.nodes.empty());
  EXPECT_TRUE(g.groups.empty());
}

TEST(StructureViewKinds, NamesParseBack) {
  for (ViewKind k : {ViewKind::Iso, ViewKind::Plan, ViewKind::XZ, ViewKind::YZ}) {
    EXPECT_EQ(ParseViewKind(ViewKindName(k)), k);
  }
  EXPECT_FALSE(ParseViewKind("side").has_value());
  EXPECT_FALSE(ParseViewKind("ISO").has_value());
}

class StructureViewEachView : public StructureViewTest,
                              public ::testing::WithParamInterface<std::string> {};

TEST_P(StructureViewEachView, FramesFolderGivesWellFormedSvgWithLegend) {
  const fs::path svg = dir_ / "frames.svg";
  const CliRun run = Cli({"view", (Models() / "frames" / "expected").string(), "--out",
                          svg.string(), "--view", GetParam()});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "Picture of 19 nodes and 23 elements written to " + svg.string() + "\n");
  const std::string doc = ReadText(svg);
  std::string why;
  EXPECT_TRUE(WellFormedSvg(doc, &why)) << why;
  EXPECT_NE(doc.find("<svg xmlns=\"http://www.w3.org/2000/svg\""), std::string::npos);
  EXPECT_EQ(Occurrences(doc, "<g class=\"view-" + GetParam() + "\">"), 1u);
  EXPECT_EQ(Occurrences(doc, "<g class=\"view-"), 1u);
  // One path for each element group, the legend naming each group with its elements.
  for (std::size_t i = 0; i < kFramesGroups.size(); ++i) {
    EXPECT_EQ(Occurrences(doc, "<path class=\"g" + std::to_string(i + 1) + "\" d=\"M"), 1u);
    EXPECT_EQ(Occurrences(doc, ">" + kFramesGroups[i].first + " (" +
                                   std::to_string(kFramesGroups[i].second) + ")</text>"),
              1u);
  }
  EXPECT_EQ(Occurrences(doc, "<path class=\"g7\""), 0u);
  // Six fixed supports in one path (the legend draws one more square), and both drifts.
  const std::size_t at = doc.find("<path class=\"fixed\" d=\"");
  ASSERT_NE(at, std::string::npos);
  const std::string d = doc.substr(at, doc.find('"', at + 23) - at);
  EXPECT_EQ(Occurrences(d, "M"), 6u);
  // Both drifts go over the same two nodes: one line (and the legend's), one label naming
  // both.
  EXPECT_EQ(Occurrences(doc, "<path class=\"drift\" d=\"M"), 2u);
  EXPECT_EQ(Occurrences(doc, ">H1 Drift, H2 Drift</text>"), 1u);
}

INSTANTIATE_TEST_SUITE_P(Views, StructureViewEachView,
                         ::testing::Values("iso", "plan", "xz", "yz"));

TEST_F(StructureViewTest, SeveralViewsSideBySide) {
  const fs::path svg = dir_ / "all.svg";
  const CliRun run = Cli({"view", (Models() / "frames" / "expected").string(), "--out",
                          svg.string(), "--view", "iso", "--view", "plan", "--view", "xz",
                          "--view", "yz"});
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string doc = ReadText(svg);
  std::string why;
  EXPECT_TRUE(WellFormedSvg(doc, &why)) << why;
  EXPECT_NE(doc.find("width=\"3860\""), std::string::npos);
  EXPECT_EQ(Occurrences(doc, "<g class=\"view-"), 4u);
  EXPECT_EQ(Occurrences(doc, "<path class=\"g1\""), 4u);
  EXPECT_EQ(Occurrences(doc, ">ElemConcCol (7)</text>"), 1u);
}

TEST_F(StructureViewTest, DefaultIsTheIsometricView) {
  const fs::path svg = dir_ / "iso.svg";
  const CliRun run =
      Cli({"view", (Models() / "frames" / "expected").string(), "--out", svg.string()});
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string doc = ReadText(svg);
  EXPECT_EQ(Occurrences(doc, "<g class=\"view-iso\">"), 1u);
  EXPECT_EQ(Occurrences(doc, "<g class=\"view-"), 1u);
}

TEST_F(StructureViewTest, ModelFileIsTransferredAndDrawn) {
  const fs::path svg = dir_ / "walls.svg";
  const CliRun run = Cli({"view", (Models() / "walls-slabs" / "model.json").string(), "--out",
                          svg.string(), "--view", "iso", "--view", "plan"});
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string doc = ReadText(svg);
  std::string why;
  EXPECT_TRUE(WellFormedSvg(doc, &why)) << why;
  // The same picture as from the structure folder that the transfer writes.
  const StructureGeometry g =
      GeometryFromStructure(ReadStructureFolder(Models() / "walls-slabs" / "expected"));
  ASSERT_FALSE(g.groups.empty());
  std::ostringstream expected;
  WriteStructureSvg(g, {ViewKind::Iso, ViewKind::Plan}, expected);
  EXPECT_EQ(doc, expected.str());
}

TEST_F(StructureViewTest, UnknownViewIsRefused) {
  const CliRun run = Cli({"view", (Models() / "frames" / "expected").string(), "--out",
                          (dir_ / "x.svg").string(), "--view", "side"});
  EXPECT_EQ(run.status, exit_status::kUsage);
  EXPECT_FALSE(fs::exists(dir_ / "x.svg"));
}

TEST(StructureViewSvg, MarkersOutlinesAndEscapedNames) {
  StructureGeometry g;
  g.nodes = {{0, 0, 0, 1, 0}, {10, 0, 0, 2, 0}, {10, 10, 0, 0, 1}, {0, 10, 0, 0, 1},
             {0, 0, 5, 0, 0}};
  g.groups = {{"Walls & <slabs>", {{1, 2, 3, 4}}}, {"Posts", {{1, 5, 0, 0}}}};
  g.drifts = {{"H1 Drift", 5, 1}, {"H2 Drift", 5, 2}};
  std::ostringstream out;
  WriteStructureSvg(g, {ViewKind::Plan}, out);
  const std::string doc = out.str();
  std::string why;
  EXPECT_TRUE(WellFormedSvg(doc, &why)) << why;
  EXPECT_NE(doc.find(">Walls &amp; &lt;slabs&gt; (1)</text>"), std::string::npos);
  // A four-node element is closed; a two-node element is one stroke.
  const std::size_t g1 = doc.find("<path class=\"g1\" d=\"");
  ASSERT_NE(g1, std::string::npos);
  const std::string d1 = doc.substr(g1, doc.find("\"/>", g1) - g1);
  EXPECT_EQ(Occurrences(d1, "L"), 3u);
  EXPECT_EQ(Occurrences(d1, "Z"), 1u);
  const std::size_t g2 = doc.find("<path class=\"g2\" d=\"");
  const std::string d2 = doc.substr(g2, doc.find("\"/>", g2) - g2);
  EXPECT_EQ(Occurrences(d2, "L"), 1u);
  EXPECT_EQ(Occurrences(d2, "Z"), 0u);
  // Each kind of marker once in the view and once in the legend: two diaphragm nodes in
  // one path, the fixed node and the pinned node each in their own.
  EXPECT_EQ(Occurrences(doc, "<path class=\"diaphragm\""), 2u);
  EXPECT_EQ(Occurrences(doc, "<path class=\"fixed\""), 2u);
  EXPECT_EQ(Occurrences(doc, "<path class=\"support\""), 2u);
  const std::size_t dia = doc.find("<path class=\"diaphragm\" d=\"");
  EXPECT_EQ(Occurrences(doc.substr(dia, doc.find("\"/>", dia) - dia), "M"), 2u);
  // Two drifts over different pairs: two lines, each with its label.
  EXPECT_EQ(Occurrences(doc, "<circle class=\"driftnode\""), 4u);
  EXPECT_EQ(Occurrences(doc, ">H1 Drift</text>"), 1u);
  EXPECT_EQ(Occurrences(doc, ">H2 Drift</text>"), 1u);
}

// An element record as the S file holds it: group number, then the four nodes.
std::vector<std::uint8_t> ElementRecord(std::int16_t group, std::array<std::int32_t, 4> nodes) {
  std::vector<std::uint8_t> r(92, 0);
  const auto put = [&r](std::size_t at, std::uint32_t v, int bytes) {
    for (int b = 0; b < bytes; ++b) r[at + static_cast<std::size_t>(b)] = (v >> (8 * b)) & 0xff;
  };
  put(0, static_cast<std::uint16_t>(group), 2);
  for (std::size_t k = 0; k < 4; ++k) put(6 + 4 * k, static_cast<std::uint32_t>(nodes[k]), 4);
  return r;
}

TEST_F(StructureViewTest, StreamedElementsOfInterleavedGroupsAreDrawnLikeHeldOnes) {
  StructureGeometry held;
  held.nodes = {{0, 0, 0, 0, 0}, {1, 0, 0, 0, 0}, {1, 1, 0, 0, 0}, {0, 1, 0, 0, 0}};
  held.groups = {{"A", {{1, 2, 0, 0}, {3, 4, 0, 0}}}, {"B", {{2, 3, 0, 0}}}};

  // Ten bytes before the records, then A, B, a leading element, A.
  const fs::path file = dir_ / "TRKDS";
  {
    std::ofstream out(file, std::ios::binary);
    out << "0123456789";
    for (const auto& r : {ElementRecord(1, {1, 2, 0, 0}), ElementRecord(2, {2, 3, 0, 0}),
                          ElementRecord(0, {0, 0, 0, 0}), ElementRecord(1, {3, 4, 0, 0})}) {
      out.write(reinterpret_cast<const char*>(r.data()), static_cast<std::streamsize>(r.size()));
    }
  }
  StructureGeometry streamed;
  streamed.nodes = held.nodes;
  streamed.groups = {{"A", {}}, {"B", {}}};
  streamed.element_records = StructureGeometry::ElementRecords{file, 10, 4, {2, 1}, {1, 2}, {4, 2}};
  EXPECT_EQ(streamed.ElementCount(0), 2u);

  std::ostringstream a, b;
  WriteStructureSvg(held, {ViewKind::Plan}, a);
  WriteStructureSvg(streamed, {ViewKind::Plan}, b);
  EXPECT_EQ(a.str(), b.str());
  EXPECT_NE(b.str().find(">A (2)</text>"), std::string::npos);
  const std::size_t g1 = b.str().find("<path class=\"g1\" d=\"");
  ASSERT_NE(g1, std::string::npos);
  EXPECT_EQ(Occurrences(b.str().substr(g1, b.str().find("\"/>", g1) - g1), "M"), 2u);
}

TEST(StructureViewSvg, LargeGroupIsSplitIntoPathsOfTwentyThousandElements) {
  StructureGeometry g;
  g.nodes = {{0, 0, 0, 0, 0}, {1, 0, 0, 0, 0}};
  g.groups = {{"Beams", std::vector<std::array<std::int32_t, 4>>(40001, {1, 2, 0, 0})}};
  std::ostringstream out;
  WriteStructureSvg(g, {ViewKind::XZ}, out);
  EXPECT_EQ(Occurrences(out.str(), "<path class=\"g1\""), 3u);
  EXPECT_EQ(Occurrences(out.str(), "M"), 40001u + 4u);  // the elements and the legend keys
}

}  // namespace
}  // namespace vtt
