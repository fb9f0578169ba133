#include "store/structure_files.h"

#include <gtest/gtest.h>

#include <cstring>

#include "store/node_records.h"
#include "store/structure_reader.h"
#include "store/trelk_store.h"
#include "support/expected_bytes.h"
#include "transfer/messages.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using testing::ExpectedBytes;
using testing::ReadI16Le;
using testing::ReadFileBytes;
using testing::TempFolder;

// A store as the driver leaves it before the fill steps: identification, units for kN and
// metre (host code 6), initial state.
void PrepareStore(TrelkStore& store, const fs::path& root, const std::string& name) {
  store.FileIdText = "TRKD";
  store.VersionText = "4.0";
  store.VersionNumber = 4;
  store.SetStructureName(name);
  store.StructureTitle = "Model Transferred";
  store.StructuresRoot = root.string();
  store.SetTrelkUnitsFromCode(6);
  store.InitTrelkStore();
}

fs::path WriteStructure(TrelkStore& store, const TempFolder& temp, const std::string& name,
                        CollectedMessages& messages) {
  fs::create_directories(temp.Path() / name);
  WriteTrelkStructure(store, "TRKD", true, 0, messages);
  return temp.Path() / name;
}

// The title block of the S, L and A files.
void TitleBlock(ExpectedBytes& e, const std::string& name) {
  e.Ascii("4.0", 8).Ascii(name, 12).Ascii("Model Transferred", 60);
}

// The S file of a store with nothing filled, built from the layout tables.
ExpectedBytes EmptySFile(const std::string& name) {
  ExpectedBytes e;
  TitleBlock(e, name);
  e.Short(0).Short(4).Short(3).Single(9.81f);        // HeaderWord1, metre, kilonewton, g
  e.Short(0).Short(1).Short(4).Short(1).Short(0).Short(0);
  e.Long(0).Long(0).Long(0).Short(0).Short(0);       // header longs, head list
  e.Double(static_cast<double>(0.15f)).Ascii("0.15 m.", 8);
  e.Long(1).Long(0).Long(200);                       // nodes: count 1, last 0, capacity 200
  EXPECT_EQ(e.Size(), 146u);
  e.Zeros(84);                                       // node record 1, never filled
  e.Short(0).Short(1);                               // diaphragms
  e.Short(2).Short(0).Short(2).Short(1);             // tagged mass pattern count, capacity
  e.Short(0).Short(0).Short(1);                      // element groups
  e.Long(0).Long(0).Long(1);                         // elements
  e.Short(0).Short(0);                               // frames
  e.Short(0).Short(1);                               // nodal load patterns
  e.Short(0).Short(1).Short(1).Short(0).Short(1);    // frame load patterns, slots, values
  e.Short(0).Short(1);                               // self weight patterns
  e.Zeros(12);                                       // six zero words
  e.Short(0).Short(0).Short(1);                      // section cuts
  e.Long(0).Long(1);                                 // cut members
  e.Short(0).Short(1);                               // cut groups
  e.Short(0).Short(1).Short(0).Short(1);             // drifts, deflections
  for (int i = 0; i < 10; ++i) e.Short(0);
  for (int i = 0; i < 10; ++i) e.Short(1);
  EXPECT_EQ(e.Size(), 360u);
  // The component library: lists 1 to 15, 18 zero words, lists 16 and 17, the end zone
  // list with its one record, lists 19 to 22, 9 zeros, 23 to 28, 8 zeros, 29 to 37,
  // 13 zeros, 38 to 41, 10 zeros, 42 to 46, 9 zeros.
  e.Short(1);
  for (int i = 0; i < 15; ++i) e.Short(0);
  e.Zeros(36).Short(0).Short(0);
  e.Short(1).Ascii("Default End Zone", 40).Short(1).Byte(3).Zeros(18);
  e.Single(10).Single(10).Single(0).Single(0).Single(0.5f).Single(0.5f).Single(0.5f);
  e.Single(0.5f).Zeros(16);
  for (int i = 0; i < 4; ++i) e.Short(0);
  e.Zeros(18);
  for (int i = 0; i < 6; ++i) e.Short(0);
  e.Zeros(16);
  for (int i = 0; i < 9; ++i) e.Short(0);
  e.Zeros(26);
  for (int i = 0; i < 4; ++i) e.Short(0);
  e.Zeros(20);
  for (int i = 0; i < 5; ++i) e.Short(0);
  e.Zeros(18);
  EXPECT_EQ(e.Size(), 360u + 337u);
  e.Short(0).Short(0).Short(0).Long(0).Long(0);      // the tail
  return e;
}

TEST(StructureFiles, EmptyStoreWritesAllSevenFilesByteForByte) {
  TempFolder temp("files");
  TrelkStore store;
  PrepareStore(store, temp.Path(), "Demo");
  CollectedMessages messages;
  const fs::path folder = WriteStructure(store, temp, "Demo", messages);
  EXPECT_TRUE(messages.messages.empty());

  ExpectedBytes a;
  TitleBlock(a, "Demo");
  a.Short(0).Short(0).Short(0).Short(0).Short(0);  // cases, matrix, factor slots, entries
  EXPECT_EQ(ReadFileBytes(folder / "TRKDA"), a.Bytes());

  ExpectedBytes uls;
  uls.Ascii("4.0", 8).Short(0).Short(0);
  EXPECT_EQ(ReadFileBytes(folder / "TRKDULS"), uls.Bytes());

  ExpectedBytes po;
  po.Ascii("4.0", 8).Zeros(282);
  EXPECT_EQ(ReadFileBytes(folder / "TRKDPO"), po.Bytes());

  ExpectedBytes poa;
  poa.Ascii("4.0", 8).Short(0);
  EXPECT_EQ(ReadFileBytes(folder / "TRKDPOA"), poa.Bytes());

  ExpectedBytes pof;
  pof.Ascii("4.0", 8).Zeros(20);
  EXPECT_EQ(ReadFileBytes(folder / "TRKDPOF"), pof.Bytes());

  ExpectedBytes l;
  TitleBlock(l, "Demo");
  for (int i = 0; i < 40; ++i) l.Short(0);
  EXPECT_EQ(ReadFileBytes(folder / "TRKDL"), l.Bytes());

  EXPECT_EQ(ReadFileBytes(folder / "TRKDS"), EmptySFile("Demo").Bytes());
}

TEST(StructureFiles, SmallFilesHaveTheirFixedSizes) {
  TempFolder temp("sizes");
  TrelkStore store;
  PrepareStore(store, temp.Path(), "S1");
  CollectedMessages messages;
  const fs::path folder = WriteStructure(store, temp, "S1", messages);
  EXPECT_EQ(fs::file_size(folder / "TRKDPOF"), 28u);
  EXPECT_EQ(fs::file_size(folder / "TRKDPO"), 290u);
  EXPECT_EQ(fs::file_size(folder / "TRKDPOA"), 10u);
  EXPECT_EQ(fs::file_size(folder / "TRKDULS"), 12u);
  EXPECT_EQ(fs::file_size(folder / "TRKDL"), 160u);
}

TEST(StructureFiles, EveryFileStartsWithTheVersionText) {
  TempFolder temp("version");
  TrelkStore store;
  PrepareStore(store, temp.Path(), "V");
  CollectedMessages messages;
  const fs::path folder = WriteStructure(store, temp, "V", messages);
  const std::vector<std::uint8_t> head = {0x34, 0x2E, 0x30, 0x20, 0x20, 0x20, 0x20, 0x20};
  for (const char* file : {"TRKDA", "TRKDULS", "TRKDPO", "TRKDPOA", "TRKDPOF", "TRKDL", "TRKDS"}) {
    const auto bytes = ReadFileBytes(folder / file);
    ASSERT_GE(bytes.size(), 8u) << file;
    EXPECT_EQ(std::vector<std::uint8_t>(bytes.begin(), bytes.begin() + 8), head) << file;
  }
}

TEST(StructureFiles, ACaseMakesTheLFileLonger) {
  TempFolder temp("cases");
  TrelkStore store;
  PrepareStore(store, temp.Path(), "C");
  store.AddGravityCase();
  CollectedMessages messages;
  const fs::path folder = WriteStructure(store, temp, "C", messages);
  const auto bytes = ReadFileBytes(folder / "TRKDL");
  EXPECT_EQ(bytes.size(), 160u + 1024u);
  // Slot 1 of the counts, then slot 1 of the capacities: the first case gives 11.
  EXPECT_EQ(bytes[80], 1);
  EXPECT_EQ(bytes[120], 11);
}

TEST(StructureFiles, GrownCapacityIsWrittenAsItStands) {
  TempFolder temp("capacity");
  TrelkStore store;
  PrepareStore(store, temp.Path(), "Cap");
  store.AddTrelkDiaphragm();
  store.AddTrelkDiaphragm();
  CollectedMessages messages;
  const fs::path folder = WriteStructure(store, temp, "Cap", messages);
  const auto bytes = ReadFileBytes(folder / "TRKDS");
  // After the header (146) and the one node record (84): count 2, capacity 12.
  EXPECT_EQ(ReadI16Le(bytes, 230), 2);
  EXPECT_EQ(ReadI16Le(bytes, 232), 12);
  EXPECT_EQ(bytes.size(), 711u + 2u * 80u);
}

TEST(StructureFiles, MassPatternCountsAreTaggedShorts) {
  TempFolder temp("mass");
  TrelkStore store;
  PrepareStore(store, temp.Path(), "M");
  CollectedMessages messages;
  const fs::path folder = WriteStructure(store, temp, "M", messages);
  const auto bytes = ReadFileBytes(folder / "TRKDS");
  // Mass pattern count and capacity: 02 00 00 00 and 02 00 01 00; the diaphragm count and
  // capacity just before are plain shorts.
  const std::vector<std::uint8_t> tagged = {2, 0, 0, 0, 2, 0, 1, 0};
  EXPECT_EQ(std::vector<std::uint8_t>(bytes.begin() + 234, bytes.begin() + 242), tagged);
}

TEST(StructureFiles, SubRecordFollowsOnlyWhenItsFlagIsExactlyOne) {
  for (std::uint8_t flag : {0, 1, 2}) {
    TempFolder temp("flag");
    TrelkStore store;
    PrepareStore(store, temp.Path(), "F");
    const std::int32_t n = store.AddComponent(Component::CpdFrame);
    store.Components(Component::CpdFrame).Record(n).SetInt(U8Field("Flag", 48), flag);
    CollectedMessages messages;
    const fs::path folder = WriteStructure(store, temp, "F", messages);
    const std::uintmax_t expected = 711u + 378u + (flag == 1 ? 45u : 0u);
    EXPECT_EQ(fs::file_size(folder / "TRKDS"), expected) << int(flag);
  }
}

TEST(StructureFiles, FrameFlagMatricesAreDumpedByCapacity) {
  TempFolder temp("frames");
  TrelkStore store;
  PrepareStore(store, temp.Path(), "G");
  for (int i = 0; i < 3; ++i) store.AddTrelkElem();  // capacity 12
  const std::int32_t f = store.AddTrelkFrame();      // capacity 11
  store.Frames.Record(f).SetText(TextField("Name", 0, 20), "Core");
  store.FrameElemFlag.At({1, 0})[0] = 1;
  CollectedMessages messages;
  const fs::path folder = WriteStructure(store, temp, "G", messages);
  // One more element slot a frame than ElemCapacity, because its index starts at 0.
  const std::uintmax_t node_flags = 11u * 200u;
  const std::uintmax_t elem_flags = 11u * (12u + 1u);
  EXPECT_EQ(fs::file_size(folder / "TRKDS"), 711u + 3u * 92u + 28u + node_flags + elem_flags);
  const auto bytes = ReadFileBytes(folder / "TRKDS");
  // Frames section: after the elements' counts (260) and three element records.
  const std::size_t frames_at = 248 + 12 + 3 * 92;
  EXPECT_EQ(ReadI16Le(bytes, frames_at), 1);
  EXPECT_EQ(ReadI16Le(bytes, frames_at + 2), 11);
  EXPECT_EQ(bytes[frames_at + 4], 'C');
  const std::size_t elem_flags_at = frames_at + 4 + 28 + node_flags;
  EXPECT_EQ(bytes[elem_flags_at], 1);
  EXPECT_EQ(bytes[elem_flags_at + 1], 0);
}

TEST(StructureFiles, ReexportOverALongerFileKeepsItsOldTail) {
  TempFolder temp("stale");
  TrelkStore store;
  PrepareStore(store, temp.Path(), "Old");
  fs::create_directories(temp.Path() / "Old");
  testing::WriteFileBytes(temp.Path() / "Old" / "TRKDS", std::vector<std::uint8_t>(1000, 0xEE));
  CollectedMessages messages;
  WriteTrelkStructure(store, "TRKD", true, 0, messages);
  const auto bytes = ReadFileBytes(temp.Path() / "Old" / "TRKDS");
  ASSERT_EQ(bytes.size(), 1000u);
  const auto fresh = EmptySFile("Old").Bytes();
  EXPECT_EQ(std::vector<std::uint8_t>(bytes.begin(), bytes.begin() + 711), fresh);
  EXPECT_EQ(bytes[711], 0xEE);
  EXPECT_EQ(bytes[999], 0xEE);
}

TEST(StructureFiles, StructureFolderIsTheRootAndTheNameWithoutTrailingSpaces) {
  TempFolder temp("folder");
  TrelkStore store;
  PrepareStore(store, temp.Path(), "Tower");
  CollectedMessages messages;
  WriteStructure(store, temp, "Tower", messages);
  EXPECT_EQ(fs::path(store.StructureFolder), temp.Path() / "Tower");
  EXPECT_EQ(store.StoreFlag1, 0);
  EXPECT_EQ(store.StoreFlag2, 0);
  EXPECT_EQ(store.Recent.count, 1);
}

TEST(StructureFiles, AFileThatCannotBeOpenedIsReportedAndTheOthersAreWritten) {
  TempFolder temp("open");
  TrelkStore store;
  PrepareStore(store, temp.Path(), "Busy");
  fs::create_directories(temp.Path() / "Busy" / "TRKDA");  // a folder where a file must go
  CollectedMessages messages;
  WriteTrelkStructure(store, "TRKD", true, 0, messages);
  ASSERT_EQ(messages.messages.size(), 1u);
  const UserMessage& m = messages.messages[0];
  EXPECT_EQ(m.icon, MessageIcon::Critical);
  EXPECT_EQ(m.title, "Can Not Open An Essential File");
  EXPECT_EQ(m.text,
            "Failure to open the following essential data file :\n\n"
            "Structure name = Busy        \n"
            "File name = TRKDA\n\n"
            "There should be a file of this name in the folder for this structure.\n\n"
            "The file may have been erased. If so you will have to export this structure "
            "again.\n"
            "Alternatively, check that the file is not read-only\n\n"
            "If you can not find the problem, please report this error to Ostrand.");
  EXPECT_EQ(fs::file_size(temp.Path() / "Busy" / "TRKDS"), 711u);
  EXPECT_EQ(fs::file_size(temp.Path() / "Busy" / "TRKDL"), 160u);
}

TEST(StructureFiles, AWriteFailureLeavesTheChannelBusySoEveryLaterFileFailsToOpen) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "needs a device that refuses writes";
  TempFolder temp("full");
  TrelkStore store;
  PrepareStore(store, temp.Path(), "Full");
  store.Units.BeepOnFileError = 1;
  fs::create_directories(temp.Path() / "Full");
  fs::create_symlink("/dev/full", temp.Path() / "Full" / "TRKDA");
  CollectedMessages messages;
  WriteTrelkStructure(store, "TRKD", true, 0, messages);
  ASSERT_EQ(messages.messages.size(), 7u);
  EXPECT_EQ(messages.beeps, 7);
  EXPECT_EQ(messages.messages[0].title, "Can Not Write To An Essential File");
  EXPECT_EQ(messages.messages[0].text,
            "Failure to write to the following essential data file :\n\n"
            "Structure name = Full        \n"
            "File name = TRKDA\n\n"
            "Please try again.\n\n"
            "If you can not find the problem, please report this error to Ostrand.");
  EXPECT_EQ(store.WriteOkFlag, 0);
  const char* later[] = {"TRKDULS", "TRKDPO", "TRKDPOA", "TRKDPOF", "TRKDL", "TRKDS"};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(messages.messages[i + 1].title, "Can Not Open An Essential File");
    EXPECT_NE(messages.messages[i + 1].text.find(std::string("File name = ") + later[i] + "\n"),
              std::string::npos);
  }
  EXPECT_FALSE(fs::exists(temp.Path() / "Full" / "TRKDS"));
}

// A store whose S file takes more than two of the writer's buffers (4 MiB each): 110,000
// nodes of 84 bytes, node k at X = k.
void PrepareLargeStore(TrelkStore& store, const fs::path& root, const std::string& name) {
  PrepareStore(store, root, name);
  while (store.Nodes.Count() < 110000) store.AddTrelkNode();
  for (std::int32_t k = 1; k <= store.Nodes.Count(); ++k) {
    store.Nodes.Record(k).SetReal(node_rec::X, static_cast<double>(k));
  }
}

TEST(StructureFiles, AFileOfManyBuffersIsWrittenWholeAndInOrder) {
  TempFolder temp("large");
  TrelkStore store;
  PrepareLargeStore(store, temp.Path(), "Large");
  CollectedMessages messages;
  const fs::path folder = WriteStructure(store, temp, "Large", messages);
  EXPECT_TRUE(messages.messages.empty());
  const auto bytes = ReadFileBytes(folder / "TRKDS");
  ASSERT_GT(bytes.size(), 8u << 20);
  // The node records follow the header of 146 bytes, each at its place.
  for (std::int32_t k = 1; k <= store.Nodes.Count(); ++k) {
    const std::size_t at = 146 + 84 * static_cast<std::size_t>(k - 1) + 8;
    double x = 0.0;
    std::memcpy(&x, bytes.data() + at, sizeof x);
    ASSERT_EQ(x, static_cast<double>(k)) << "node " << k;
  }
  // The reader walks the file to its end.
  struct NoRecords : RecordSink {
    bool Wants(std::string_view) const override { return false; }
    void Take(const ReadSection&, const ReadRecord&) override {}
  } none;
  const ReadFile read = StreamStructureFile("S", folder / "TRKDS", none);
  EXPECT_FALSE(read.truncated.has_value());
  EXPECT_TRUE(read.unreadable.empty());
  EXPECT_EQ(read.end, bytes.size());
}

TEST(StructureFiles, AWriteFailureInsideALargeFileIsReportedOnce) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "needs a device that refuses writes";
  TempFolder temp("fulllarge");
  TrelkStore store;
  PrepareLargeStore(store, temp.Path(), "Full");
  fs::create_directories(temp.Path() / "Full");
  fs::create_symlink("/dev/full", temp.Path() / "Full" / "TRKDS");
  CollectedMessages messages;
  WriteTrelkStructure(store, "TRKD", true, 0, messages);
  ASSERT_EQ(messages.messages.size(), 1u);
  EXPECT_EQ(messages.messages[0].title, "Can Not Write To An Essential File");
  EXPECT_NE(messages.messages[0].text.find("File name = TRKDS\n"), std::string::npos);
  EXPECT_EQ(store.WriteOkFlag, 0);
  for (const char* file : {"TRKDA", "TRKDULS", "TRKDPO", "TRKDPOA", "TRKDPOF", "TRKDL"}) {
    EXPECT_GT(fs::file_size(temp.Path() / "Full" / file), 0u) << file;
  }
}

TEST(StructureFiles, HeaderArgumentIsWrittenAtOffset98) {
  TempFolder temp("arg");
  TrelkStore store;
  PrepareStore(store, temp.Path(), "Arg");
  store.HeaderWord2 = 0;  // forced to 1 when written
  fs::create_directories(temp.Path() / "Arg");
  CollectedMessages messages;
  WriteTrelkStructure(store, "TRKD", true, 7, messages);
  const auto bytes = ReadFileBytes(temp.Path() / "Arg" / "TRKDS");
  EXPECT_EQ(ReadI16Le(bytes, 96), 1);
  EXPECT_EQ(ReadI16Le(bytes, 98), 7);
}

}  // namespace
}  // namespace vtt
