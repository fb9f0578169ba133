// Reading structures back: the reader walks every golden structure file exactly to its end,
// so a writer that moves, adds or drops a section makes these tests fail.
#include "store/structure_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "store/element_records.h"
#include "store/node_records.h"
#include "store/structure_dump.h"
#include "support/expected_bytes.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;

fs::path Models() { return fs::path(VTT_SOURCE_DIR) / "tests" / "models"; }

std::vector<std::string> SectionNames(const ReadFile& file) {
  std::vector<std::string> names;
  for (const ReadSection& s : file.sections) names.push_back(s.name);
  return names;
}

TEST(StructureReader, WalksEveryGoldenFileExactlyToItsEnd) {
  int folders = 0;
  for (const auto& entry : fs::directory_iterator(Models())) {
    if (!fs::exists(entry.path() / "expected")) continue;
    const StructureRead read = ReadStructureFolder(entry.path() / "expected");
    ASSERT_EQ(read.files.size(), 7u);
    for (const ReadFile& f : read.files) {
      const std::string where = entry.path().filename().string() + "/" + f.name;
      EXPECT_FALSE(f.missing) << where;
      EXPECT_FALSE(f.truncated.has_value()) << where << " " << f.truncated->what;
      EXPECT_TRUE(f.unreadable.empty()) << where;
      EXPECT_EQ(f.end, f.size) << where;
      EXPECT_EQ(f.size, fs::file_size(entry.path() / "expected" / f.name)) << where;
    }
    ++folders;
  }
  EXPECT_GE(folders, 8);
}

TEST(StructureReader, FilesInTheOrderOfWritingAndSectionsInFileOrder) {
  const StructureRead read = ReadStructureFolder(Models() / "frames" / "expected");
  std::vector<std::string> files;
  for (const ReadFile& f : read.files) files.push_back(f.name);
  EXPECT_EQ(files, (std::vector<std::string>{"TRKDA", "TRKDULS", "TRKDPO", "TRKDPOA", "TRKDPOF",
                                             "TRKDL", "TRKDS"}));
  const std::vector<std::string> s = SectionNames(*read.File("S"));
  const std::vector<std::string> head(s.begin(), s.begin() + 18);
  EXPECT_EQ(head, (std::vector<std::string>{
                      "header", "nodes", "diaphragms", "nodal mass", "element groups",
                      "elements", "structure frames", "nodal loads", "frame loads",
                      "self weight", "zero words", "section cuts", "cut members", "cut groups",
                      "drifts", "limit states", "component library", "TrelkCompInel01Rec"}));
  EXPECT_EQ(s.back(), "tail");
  EXPECT_EQ(s.size(), 17u + 46u + 1u);
  // Sections follow one another without gaps.
  for (const ReadFile& f : read.files) {
    std::uint64_t at = 0;
    for (const ReadSection& sec : f.sections) {
      EXPECT_EQ(sec.offset, at) << f.name << " " << sec.name;
      at = sec.end;
    }
    EXPECT_EQ(at, f.size) << f.name;
  }
}

TEST(StructureSectionTable, EveryGoldenFileHasTheSectionsOfItsTableInTableOrder) {
  int folders = 0;
  for (const auto& entry : fs::directory_iterator(Models())) {
    if (!fs::exists(entry.path() / "expected")) continue;
    const StructureRead read = ReadStructureFolder(entry.path() / "expected");
    for (const StructureFileLayout& layout : StructureFileLayouts()) {
      const ReadFile* file = read.File(layout.suffix);
      ASSERT_NE(file, nullptr) << layout.suffix;
      std::vector<std::string> table;
      for (const SectionDescriptor& d : layout.sections) table.emplace_back(d.name);
      // The component lists are sections of their own inside the component library.
      std::vector<std::string> read_names;
      for (const std::string& name : SectionNames(*file)) {
        if (std::find(table.begin(), table.end(), name) != table.end()) read_names.push_back(name);
      }
      EXPECT_EQ(read_names, table) << entry.path().filename().string() << "/" << file->name;
    }
    ++folders;
  }
  EXPECT_GE(folders, 8);
}

TEST(StructureSectionTable, FilesAndSuffixesInTheOrderOfWriting) {
  std::vector<std::string> suffixes;
  for (const StructureFileLayout& layout : StructureFileLayouts()) {
    suffixes.emplace_back(layout.suffix);
  }
  EXPECT_EQ(suffixes, (std::vector<std::string>{"A", "ULS", "PO", "POA", "POF", "L", "S"}));
  const auto listed = StructureFileSuffixes();
  EXPECT_EQ(std::vector<std::string>(listed.begin(), listed.end()), suffixes);
  EXPECT_EQ(FindStructureFileLayout("X"), nullptr);
  ASSERT_NE(FindStructureFileLayout("S"), nullptr);
  EXPECT_EQ(FindStructureFileLayout("S")->sections.size(), 18u);
  EXPECT_EQ(FindStructureFileLayout("S")->sections[5].name, "elements");
  EXPECT_EQ(FindStructureFileLayout("L")->sections[3].name, "pushover drift flags");
}

// Keeps what a streamed walk gives, by section.
class KeepingSink : public RecordSink {
 public:
  explicit KeepingSink(std::vector<std::string> wanted, std::string last = "")
      : wanted_(std::move(wanted)), last_(std::move(last)) {}
  bool Wants(std::string_view section) const override {
    return std::find(wanted_.begin(), wanted_.end(), section) != wanted_.end();
  }
  void Take(const ReadSection& section, const ReadRecord& r) override {
    taken.push_back({section.name, r.record, r.index, r.offset, r.bytes});
  }
  bool GoOnAfter(std::string_view section) const override { return section != last_; }

  struct Taken {
    std::string section, record, index;
    std::uint64_t offset;
    std::vector<std::uint8_t> bytes;
  };
  std::vector<Taken> taken;

 private:
  std::vector<std::string> wanted_;
  std::string last_;
};

TEST(StructureStream, GivesTheRecordsOfWantedSectionsAndKeepsTheHeaderValues) {
  const fs::path file = Models() / "frames" / "expected" / "TRKDS";
  const auto bytes = testing::ReadFileBytes(file);
  const ReadFile whole = ReadStructureFile("S", bytes);
  KeepingSink sink({"nodes", "elements", "drifts"});
  const ReadFile streamed = StreamStructureFile("S", file, sink);
  EXPECT_FALSE(streamed.truncated.has_value());
  EXPECT_EQ(streamed.end, streamed.size);
  ASSERT_EQ(streamed.sections.size(), whole.sections.size());
  for (std::size_t i = 0; i < whole.sections.size(); ++i) {
    const ReadSection& a = whole.sections[i];
    const ReadSection& b = streamed.sections[i];
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.offset, b.offset) << a.name;
    EXPECT_EQ(a.end, b.end) << a.name;
    ASSERT_EQ(a.values.size(), b.values.size()) << a.name;
    for (std::size_t v = 0; v < a.values.size(); ++v) {
      EXPECT_EQ(a.values[v].name, b.values[v].name);
      EXPECT_EQ(a.values[v].integer, b.values[v].integer) << a.values[v].name;
    }
    // No record is kept by a streamed walk.
    EXPECT_TRUE(b.records.empty()) << b.name;
  }
  std::vector<const ReadRecord*> expected;
  for (const char* name : {"nodes", "elements", "drifts"}) {
    for (const ReadRecord& r : whole.Section(name)->records) expected.push_back(&r);
  }
  ASSERT_EQ(sink.taken.size(), expected.size());
  EXPECT_EQ(static_cast<std::int64_t>(sink.taken.size()),
            whole.Section("nodes")->Value("NodeCount") +
                whole.Section("elements")->Value("ElemCount") +
                whole.Section("drifts")->Value("DriftCount"));
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(sink.taken[i].record, expected[i]->record);
    EXPECT_EQ(sink.taken[i].index, expected[i]->index);
    EXPECT_EQ(sink.taken[i].offset, expected[i]->offset);
    EXPECT_EQ(sink.taken[i].bytes, expected[i]->bytes);
  }
}

TEST(StructureStream, StopsAfterTheSectionTheSinkNames) {
  KeepingSink sink({"element groups"}, "element groups");
  const ReadFile f = StreamStructureFile("S", Models() / "frames" / "expected" / "TRKDS", sink);
  ASSERT_FALSE(f.sections.empty());
  EXPECT_EQ(f.sections.back().name, "element groups");
  EXPECT_EQ(f.end, f.sections.back().end);
  EXPECT_LT(f.end, f.size);
  EXPECT_FALSE(f.truncated.has_value());
  EXPECT_EQ(sink.taken.size(), 6u);
  EXPECT_EQ(sink.taken[0].record, "TrelkElemGroupRec");
}

TEST(StructureStream, ACutFileSaysWhereAndAMissingOneIsMissing) {
  const auto bytes = testing::ReadFileBytes(Models() / "frames" / "expected" / "TRKDS");
  const fs::path cut = fs::temp_directory_path() / "vtt-stream-cut-TRKDS";
  {
    std::ofstream out(cut, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), 200);
  }
  KeepingSink sink({"nodes"});
  const ReadFile f = StreamStructureFile("S", cut, sink);
  fs::remove(cut);
  ASSERT_TRUE(f.truncated.has_value());
  EXPECT_EQ(f.truncated->offset, 146u);
  EXPECT_EQ(f.truncated->needed, 84u);
  EXPECT_EQ(f.truncated->size, 200u);
  EXPECT_EQ(f.truncated->what, "TrelkNodeRec 1");
  EXPECT_TRUE(sink.taken.empty());

  const ReadFile missing =
      StreamStructureFile("S", fs::temp_directory_path() / "vtt-no-such-folder" / "TRKDS", sink);
  EXPECT_TRUE(missing.missing);
}

TEST(StructureReader, KnownValuesOfTheFramesStructure) {
  const StructureRead read = ReadStructureFolder(Models() / "frames" / "expected");
  const ReadFile& s = *read.File("S");
  const ReadSection& nodes = *s.Section("nodes");
  EXPECT_EQ(nodes.offset, 134u);
  EXPECT_EQ(nodes.Value("NodeCount"), 19);
  EXPECT_EQ(nodes.Value("NodeCapacity"), 200);
  const auto records = nodes.Records("TrelkNodeRec");
  ASSERT_EQ(records.size(), 19u);
  EXPECT_EQ(records[1]->offset, 230u);
  EXPECT_EQ(records[1]->Int(node_rec::PrevNode), 1);
  EXPECT_EQ(records[18]->Int(node_rec::NextNode), 0);
  const ReadSection& elems = *s.Section("elements");
  EXPECT_EQ(elems.Records("TrelkElemRec")[2]->Int(elem_rec::Component), 22);
  EXPECT_EQ(s.Section("TrelkCpdFrameRec")->Value("Count"), 32);
  EXPECT_EQ(s.Section("TrelkEndZoneRec")->Value("Count"), 1);
  EXPECT_EQ(read.File("L")->size, 160u);
}

TEST(StructureReader, TruncatedFileSaysWhereAndWhat) {
  const auto bytes = testing::ReadFileBytes(Models() / "frames" / "expected" / "TRKDS");
  const ReadFile f = ReadStructureFile("S", std::span(bytes).first(200));
  ASSERT_TRUE(f.truncated.has_value());
  EXPECT_EQ(f.truncated->offset, 146u);
  EXPECT_EQ(f.truncated->needed, 84u);
  EXPECT_EQ(f.truncated->size, 200u);
  EXPECT_EQ(f.truncated->what, "TrelkNodeRec 1");
  EXPECT_EQ(f.end, 146u);
}

TEST(StructureDump, TextShowsHeadersCountsAndFieldsByName) {
  const StructureRead read = ReadStructureFolder(Models() / "frames" / "expected");
  std::ostringstream out;
  DumpText(read, out);
  const std::string text = out.str();
  for (const char* expected :
       {"TRKDS: 36413 bytes\n", "    StructureName = \"frames      \"\n",
        "    UnitGravity = 386.4\n", "    SizeText = \"6 in.   \"\n", "  nodes at 134\n",
        "    NodeCount = 19\n", "    TrelkNodeRec 2 at 230\n", "      PrevNode = 1\n",
        "    TrelkElemRec 3 at 2932\n", "      Component = 22\n", "    ElemGroupLast = 6\n",
        "TRKDPOF: 28 bytes\n", "    TrelkPofRec 1 at 8: 20 bytes, 0 not zero\n"}) {
    EXPECT_NE(text.find(expected), std::string::npos) << expected;
  }
  EXPECT_EQ(text.find("after the content"), std::string::npos);
}

TEST(StructureDump, JsonHoldsTheSameValues) {
  const StructureRead read = ReadStructureFolder(Models() / "frames" / "expected");
  const nlohmann::json j = nlohmann::json::parse(DumpJson(read).dump());
  ASSERT_EQ(j["files"].size(), 7u);
  const nlohmann::json& s = j["files"][6];
  EXPECT_EQ(s["file"], "TRKDS");
  EXPECT_EQ(s["size"], 36413);
  EXPECT_EQ(s["sections"][0]["values"]["StructureName"], "frames      ");
  EXPECT_EQ(s["sections"][1]["name"], "nodes");
  EXPECT_EQ(s["sections"][1]["values"]["NodeCount"], 19);
  EXPECT_EQ(s["sections"][1]["records"][1]["offset"], 230);
  EXPECT_EQ(s["sections"][1]["records"][1]["fields"]["PrevNode"], 1);
  EXPECT_EQ(s["sections"][0]["values"]["UnitGravity"], static_cast<double>(386.4f));
}

TEST(StructureDump, RecordFileHeaderAndPoints) {
  const fs::path path = Models() / "complete" / "expected-records" / "SINE";
  const auto bytes = testing::ReadFileBytes(path);
  const ReadFile f = ReadRecordFile("SINE", bytes);
  EXPECT_FALSE(f.truncated.has_value());
  EXPECT_EQ(f.end, f.size);
  const ReadRecord& head = f.Section("header")->records.at(0);
  const std::int64_t points = head.Int(FindRecordLayout("RecordFileHeader")->fields[2]);
  EXPECT_EQ(f.size, 56u + 8u * static_cast<std::uint64_t>(points));
  std::ostringstream out;
  DumpText(f, out);
  EXPECT_NE(out.str().find("      Version = 1\n"), std::string::npos);
  EXPECT_NE(out.str().find("    Time(1) = 0\n"), std::string::npos);
}

}  // namespace
}  // namespace vtt
