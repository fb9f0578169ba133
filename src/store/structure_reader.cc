#include "store/structure_reader.h"

#include <array>
#include <fstream>
#include <functional>
#include <iterator>
#include <istream>
#include <stdexcept>
#include <system_error>

#include <fmt/format.h>

#include "store/binary_writer.h"
#include "store/record_file_records.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {


// Thrown where the file ends before the piece that the walk needs next.
struct EndOfFile {
  Truncation where;
};

// Thrown where a sink wants no more of the file.
struct StopWalk {};

// Walks one file: each read takes the next bytes and records them in the open section.
// The bytes come from memory, or from a stream when a sink takes the records: then no
// record is kept, and blocks of flags are passed over without being read.
class Walker {
 public:
  Walker(ReadFile& file, std::span<const std::uint8_t> bytes)
      : file_(file), bytes_(bytes), size_(bytes.size()) {
    file_.size = size_;
  }
  Walker(ReadFile& file, std::istream& in, std::uint64_t size, RecordSink& sink)
      : file_(file), in_(&in), sink_(&sink), size_(size) {
    file_.size = size_;
  }

  std::uint64_t Position() const { return pos_; }

  void BeginSection(std::string name) {
    if (sink_ != nullptr && !file_.sections.empty() &&
        !sink_->GoOnAfter(file_.sections.back().name)) {
      throw StopWalk{};
    }
    EndSection();
    ReadSection section;
    section.name = std::move(name);
    section.offset = pos_;
    file_.sections.push_back(std::move(section));
  }

  void EndSection() {
    if (!file_.sections.empty()) file_.sections.back().end = pos_;
    file_.end = pos_;
  }

  // The next `count` bytes; valid until the next read.
  std::span<const std::uint8_t> Take(std::uint64_t count, const std::string& what) {
    if (count > size_ - pos_) {
      throw EndOfFile{{pos_, count, size_, what}};
    }
    if (in_ != nullptr) {
      buffer_.resize(count);
      in_->read(reinterpret_cast<char*>(buffer_.data()), static_cast<std::streamsize>(count));
      if (static_cast<std::uint64_t>(in_->gcount()) != count) {
        throw EndOfFile{{pos_, count, pos_ + static_cast<std::uint64_t>(in_->gcount()), what}};
      }
      pos_ += count;
      return buffer_;
    }
    const auto piece = bytes_.subspan(pos_, count);
    pos_ += count;
    return piece;
  }

  // Passes over `count` bytes of a stream without reading them.
  void Skip(std::uint64_t count, const std::string& what) {
    if (count > size_ - pos_) {
      throw EndOfFile{{pos_, count, size_, what}};
    }
    pos_ += count;
    in_->seekg(static_cast<std::streamoff>(pos_));
  }

  std::int64_t I16(std::string name) {
    return Add(std::move(name), FieldKind::I16, 2, [&](auto b, ReadValue& v) {
      v.integer = ReadI16(b, 0);
    });
  }
  std::int64_t I32(std::string name) {
    return Add(std::move(name), FieldKind::I32, 4, [&](auto b, ReadValue& v) {
      v.integer = ReadI32(b, 0);
    });
  }
  void F32(std::string name) {
    Add(std::move(name), FieldKind::F32, 4, [&](auto b, ReadValue& v) { v.real = ReadF32(b, 0); });
  }
  void F64(std::string name) {
    Add(std::move(name), FieldKind::F64, 8, [&](auto b, ReadValue& v) { v.real = ReadF64(b, 0); });
  }
  void Text(std::string name, std::uint32_t width) {
    Add(std::move(name), FieldKind::Text, width, [&](auto b, ReadValue& v) {
      v.text.assign(reinterpret_cast<const char*>(b.data()), b.size());
    });
  }
  // A tagged value: a type word, then an i16 (type 2), an f64 (type 5) or nothing (0).
  std::int64_t Tagged(std::string name) {
    const std::uint64_t at = pos_;
    const std::int16_t type = ReadI16(Take(2, name + " (type word)"), 0);
    ReadValue v;
    v.name = std::move(name);
    v.offset = at;
    if (type == 2) {
      v.kind = FieldKind::TaggedI16;
      v.width = 4;
      v.integer = ReadI16(Take(2, v.name), 0);
    } else if (type == 5) {
      v.kind = FieldKind::TaggedF64;
      v.width = 10;
      v.real = ReadF64(Take(8, v.name), 0);
    } else if (type == 0) {
      v.kind = FieldKind::TaggedI16;
      v.width = 2;
    } else {
      file_.unreadable.push_back(
          fmt::format("{} at offset {}: tagged value of unknown type word {}", v.name, at, type));
      throw EndOfFile{{at, 0, size_, ""}};
    }
    const std::int64_t value = v.integer;
    Current().values.push_back(std::move(v));
    return value;
  }
  // Words that the format holds as zeros; they are kept as values so a check can see them.
  void ZeroWords(const std::string& name, int count) {
    for (int k = 1; k <= count; ++k) I16(fmt::format("{}{}", name, k));
  }

  // One record of a kind with a field table, or of a known size without one. With a sink,
  // the record goes to the sink (when it wants the section) and is not kept.
  const ReadRecord& Record(std::string_view record, std::uint32_t size, std::string index) {
    if (sink_ != nullptr) {
      ReadRecord& r = scratch_;
      r.offset = pos_;
      const auto piece = Take(size, fmt::format("{} {}", record, index));
      r.bytes.assign(piece.begin(), piece.end());
      const ReadSection& section = Current();
      if (sink_->Wants(section.name)) {
        if (r.record != record) {
          r.record = std::string(record);
          r.layout = FindRecordLayout(record);
        }
        if (r.layout != nullptr && r.layout->size != size) r.layout = nullptr;
        r.index = std::move(index);
        sink_->Take(section, r);
      }
      return r;
    }
    ReadRecord r;
    r.record = std::string(record);
    r.index = std::move(index);
    r.offset = pos_;
    const auto piece = Take(size, fmt::format("{} {}", record, r.index));
    r.bytes.assign(piece.begin(), piece.end());
    r.layout = FindRecordLayout(record);
    if (r.layout != nullptr && r.layout->size != size) r.layout = nullptr;
    Current().records.push_back(std::move(r));
    return Current().records.back();
  }
  void Records(std::string_view record, std::uint32_t size, std::int64_t count) {
    for (std::int64_t i = 1; i <= count; ++i) Record(record, size, std::to_string(i));
  }
  // A block of one-byte flags, read as a whole; passed over when a sink takes the records.
  void Block(std::string_view record, std::uint64_t size) {
    if (size == 0) return;
    if (sink_ != nullptr) {
      Skip(size, std::string(record));
      return;
    }
    ReadRecord r;
    r.record = std::string(record);
    r.offset = pos_;
    const auto piece = Take(size, std::string(record));
    r.bytes.assign(piece.begin(), piece.end());
    r.block = true;
    Current().records.push_back(std::move(r));
  }

  void Unreadable(std::string what) {
    file_.unreadable.push_back(std::move(what));
    throw EndOfFile{{pos_, 0, size_, ""}};
  }

 private:
  ReadSection& Current() {
    if (file_.sections.empty()) BeginSection("header");
    return file_.sections.back();
  }

  template <typename Decode>
  std::int64_t Add(std::string name, FieldKind kind, std::uint32_t width, Decode decode) {
    ReadValue v;
    v.offset = pos_;
    v.kind = kind;
    v.width = width;
    decode(Take(width, name), v);
    v.name = std::move(name);
    const std::int64_t value = v.integer;
    Current().values.push_back(std::move(v));
    return value;
  }

  ReadFile& file_;
  std::span<const std::uint8_t> bytes_;
  std::istream* in_ = nullptr;
  RecordSink* sink_ = nullptr;
  std::uint64_t size_ = 0;
  std::uint64_t pos_ = 0;
  std::vector<std::uint8_t> buffer_;  // the last piece read from a stream
  ReadRecord scratch_;                // the last record given to a sink
};

std::string Index2(std::int64_t a, std::int64_t b) { return fmt::format("{},{}", a, b); }

void TitleBlock(Walker& w) {
  w.Text("VersionText", 8);
  w.Text("StructureName", 12);
  w.Text("StructureTitle", 60);
}

// What the sections read so far say about the sections after them.
struct WalkState {
  std::int64_t drift_count = 0;  // the S file's drifts, for the L file's drift flags
  // TRKDA
  std::int64_t cases = 0;
  std::int64_t rows = 0;
  std::int64_t columns = 0;
  std::int64_t entries = 0;
  // TRKDL
  std::array<std::int64_t, 20> case_lists{};
  // TRKDS
  std::int64_t header_word2 = 0;
  std::int64_t nodes = 0;
  std::int64_t node_capacity = 0;
  std::int64_t groups = 0;
  std::int64_t elems = 0;
  std::int64_t elem_capacity = 0;
  std::int64_t cuts = 0;
  std::int64_t drifts = 0;
  std::int64_t deflections = 0;
};

// Reads one section of a structure file; the file's section list (record_layouts.h), which
// the writer walks too, gives the order.
void ReadSectionOf(FileSection section, Walker& w, WalkState& st) {
  switch (section) {
    // ---- TRKDA ----
    case FileSection::AHeader:
      TitleBlock(w);
      st.cases = w.I16("LoadCaseCount");
      st.rows = w.I16("LoadCaseMatrixRows");
      st.columns = w.I16("LoadCaseMatrixColumns");
      break;
    case FileSection::LoadCases:
      for (std::int64_t c = 1; c <= st.cases; ++c) {
        const ReadRecord& rec =
            w.Record("TrelkLoadCaseRec", record_size::kLoadCase, std::to_string(c));
        // The last byte of an entry says whether its detail record follows.
        if (rec.bytes.back() == 1) {
          w.Block("TrelkLoadCaseDetailRec (head)", 8);
          for (int k = 1; k <= 18; ++k) w.Tagged(fmt::format("Detail{}.Value{}", c, k));
          w.Block("TrelkLoadCaseDetailRec (tail)", 10);
        }
      }
      break;
    case FileSection::LoadCaseMatrix:
      for (std::int64_t r = 1; r <= st.rows; ++r) {
        for (std::int64_t c = 1; c <= st.columns; ++c) {
          w.Record("TrelkLoadCaseMatrixRec", record_size::kLoadCaseMatrix, Index2(r, c));
        }
      }
      break;
    case FileSection::LoadCaseFactors: {
      const std::int64_t slots = w.I16("LoadCaseFactorSlots");
      for (std::int64_t c = 1; c <= st.cases; ++c) {
        for (std::int64_t s = 1; s <= slots; ++s) {
          w.Record("TrelkLoadCaseFactorRec", record_size::kLoadCaseFactor, Index2(c, s));
        }
      }
      break;
    }
    case FileSection::LoadCaseList:
      st.entries = w.I16("LoadCaseListCount");
      w.Records("TrelkLoadCaseListRec", record_size::kLoadCaseList, st.entries);
      break;
    case FileSection::LoadCaseValues:
      for (std::int64_t e = 1; e <= st.entries; ++e) {
        for (std::int64_t c = 1; c <= st.cases; ++c) {
          w.Record("TrelkLoadCaseValueRec", record_size::kLoadCaseValue, Index2(e, c));
        }
      }
      break;

    // ---- TRKDULS, TRKDPO, TRKDPOA, TRKDPOF ----
    case FileSection::UlsHeader: {
      w.Text("VersionText", 8);
      const std::int64_t count1 = w.I16("ListCount");
      const std::int64_t count2 = w.I16("MatrixCount");
      if (count1 != 0 || count2 != 0) {
        w.Unreadable("TRKDULS: lists with records, which this program never writes");
      }
      break;
    }
    case FileSection::PoHeader:
    case FileSection::PofHeader:
      w.Text("VersionText", 8);
      break;
    case FileSection::PoRecord:
      w.Record("TrelkPoRec", 282, "1");
      break;
    case FileSection::PoaHeader:
      w.Text("VersionText", 8);
      st.entries = w.Tagged("Count");
      break;
    case FileSection::PoaRecords:
      w.Records("TrelkPoaRec", 864, st.entries);
      break;
    case FileSection::PofRecord:
      w.Record("TrelkPofRec", 20, "1");
      break;

    // ---- TRKDL ----
    case FileSection::LHeader:
      TitleBlock(w);
      for (int k = 0; k < 20; ++k) st.case_lists[k] = w.I16(fmt::format("CaseListCount({})", k + 1));
      for (int k = 0; k < 20; ++k) w.I16(fmt::format("CaseListCapacity({})", k + 1));
      break;
    case FileSection::GravityCases:
      w.Records("TrelkGravityCaseRec", record_size::kGravityCase, st.case_lists[0]);
      break;
    case FileSection::PushoverCases:
      w.Records("TrelkPushoverCaseRec", record_size::kPushoverCase, st.case_lists[1]);
      break;
    case FileSection::PushoverDriftFlags:
      if (st.case_lists[1] > 0 && st.drift_count > 0) {
        w.Block("TrelkPushoverDriftFlag",
                static_cast<std::uint64_t>(st.case_lists[1] * st.drift_count));
      }
      break;
    case FileSection::DynamicCases:
      w.Records("TrelkDynamicCaseRec", record_size::kDynamicCase, st.case_lists[2]);
      break;
    case FileSection::OtherCaseLists: {
      constexpr std::array<std::uint32_t, 5> kOtherSizes = {147, 119, 133, 317, 5021};
      for (int k = 0; k < 5; ++k) {
        w.Records(fmt::format("TrelkCaseList{}Rec", k + 4), kOtherSizes[k], st.case_lists[k + 3]);
      }
      for (int k = 8; k < 20; ++k) {
        if (st.case_lists[k] != 0) {
          w.Unreadable(fmt::format("TRKDL: case list {} has {} records, a list that no "
                                   "structure file holds",
                                   k + 1, st.case_lists[k]));
        }
      }
      break;
    }

    // ---- TRKDS ----
    case FileSection::SHeader: {
      TitleBlock(w);
      w.I16("HeaderWord1");
      w.I16("UnitLength");
      w.I16("UnitForce");
      w.F32("UnitGravity");
      w.I16("BeepOnFileError");
      w.I16("SizeChoice");
      w.I16("UnitWord3");
      st.header_word2 = w.I16("HeaderWord2");
      w.I16("HeaderArgument");
      w.I16("HeaderWord3");
      w.I32("HeaderLong1");
      w.I32("HeaderLong2");
      w.I32("HeaderLong3");
      const std::int64_t lead_count = w.I16("LeadListCount");
      const std::int64_t lead_flag = w.I16("LeadListFlag");
      if (lead_flag > 0 && lead_count > 0) {
        w.Block("TrelkLeadListRec",
                static_cast<std::uint64_t>(lead_count) * record_size::kLeadList);
      }
      w.F64("SizeValue");
      w.Text("SizeText", 8);
      break;
    }
    case FileSection::Nodes:
      st.nodes = w.I32("NodeCount");
      w.I32("LastNodeAdded");
      st.node_capacity = w.I32("NodeCapacity");
      w.Records("TrelkNodeRec", record_size::kNode, st.nodes);
      break;
    case FileSection::Diaphragms: {
      const std::int64_t diaphragms = w.I16("DiaphragmCount");
      w.I16("DiaphragmCapacity");
      w.Records("TrelkDiaphragmRec", record_size::kDiaphragm, diaphragms);
      break;
    }
    case FileSection::NodalMass: {
      const std::int64_t mass_patterns = w.Tagged("MassPatternCount");
      w.Tagged("MassPatternCapacity");
      w.Records("TrelkNodalMassPatternRec", record_size::kNodalMassPattern, mass_patterns);
      for (std::int64_t p = 1; p <= mass_patterns; ++p) {
        for (std::int64_t n = 1; n <= st.nodes; ++n) {
          w.Record("TrelkNodalMassRec", record_size::kNodalMass, Index2(p, n));
        }
      }
      break;
    }
    case FileSection::ElemGroups:
      st.groups = w.I16("ElemGroupCount");
      w.I16("ElemGroupLast");
      w.I16("ElemGroupCapacity");
      w.Records("TrelkElemGroupRec", record_size::kElemGroup, st.groups);
      break;
    case FileSection::Elems:
      st.elems = w.I32("ElemCount");
      w.I32("ElemLast");
      st.elem_capacity = w.I32("ElemCapacity");
      w.Records("TrelkElemRec", record_size::kElem, st.elems);
      break;
    case FileSection::StructureFrames: {
      const std::int64_t frames = w.I16("FrameCount");
      const std::int64_t frame_capacity = w.I16("FrameCapacity");
      w.Records("TrelkFrameRec", record_size::kFrame, frames);
      if (frames > 0 && frame_capacity > 0) {
        // Both flag matrices are dumped whole, by the capacities.
        if (st.node_capacity > 0) {
          w.Block("TrelkFrameNodeFlag",
                  static_cast<std::uint64_t>(frame_capacity * st.node_capacity));
        }
        if (st.elem_capacity >= 0) {
          w.Block("TrelkFrameElemFlag",
                  static_cast<std::uint64_t>(frame_capacity * (st.elem_capacity + 1)));
        }
      }
      break;
    }
    case FileSection::NodalLoads: {
      const std::int64_t node_patterns = w.I16("LoadNodePatternCount");
      w.I16("LoadNodePatternCapacity");
      w.Records("TrelkLoadNodePatternRec", record_size::kLoadNodePattern, node_patterns);
      for (std::int64_t p = 1; p <= node_patterns; ++p) {
        for (std::int64_t n = 1; n <= st.nodes; ++n) {
          w.Record("TrelkLoadNodeValueRec", record_size::kLoadNodeValue, Index2(p, n));
        }
      }
      break;
    }
    case FileSection::FrameLoads: {
      const std::int64_t frame_patterns = w.I16("LoadFramePatternCount");
      w.I16("LoadFramePatternCapacity");
      const std::int64_t slots = w.I16("LoadFrameValueSlotCapacity");
      const std::int64_t values = w.I16("LoadFrameValueCount");
      w.I16("LoadFrameValueCapacity");
      w.Records("TrelkLoadFramePatternRec", record_size::kLoadFramePattern, frame_patterns);
      for (std::int64_t p = 1; p <= frame_patterns; ++p) {
        for (std::int64_t g = 1; g <= st.groups; ++g) {
          w.Record("TrelkLoadFrameGroupIndex", 2, Index2(p, g));
        }
      }
      for (std::int64_t s = 1; s <= slots; ++s) {
        for (std::int64_t p = 1; p <= frame_patterns; ++p) {
          for (std::int64_t g = 1; g <= st.groups; ++g) {
            w.Record("TrelkLoadFrameGroupValueRec", record_size::kLoadFrameGroupValue,
                     fmt::format("{},{},{}", s, p, g));
          }
        }
      }
      for (std::int64_t p = 1; p <= frame_patterns; ++p) {
        for (std::int64_t e = 1; e <= st.elems; ++e) {
          w.Record("TrelkLoadFrameElemIndex", 2, Index2(p, e));
        }
      }
      w.Records("TrelkLoadFrameValueRec", record_size::kLoadFrameValue, values);
      break;
    }
    case FileSection::SelfWeight: {
      const std::int64_t weight_patterns = w.I16("SelfWeightPatternCount");
      w.I16("SelfWeightPatternCapacity");
      w.Records("TrelkSelfWeightPatternRec", record_size::kSelfWeightPattern, weight_patterns);
      if (weight_patterns > 0 && st.elems > 0) {
        w.Block("TrelkSelfWeightElemFlag", static_cast<std::uint64_t>(weight_patterns * st.elems));
      }
      break;
    }
    case FileSection::ZeroWords:
      w.ZeroWords("ZeroWord", 6);
      break;
    case FileSection::SectionCuts:
      st.cuts = w.I16("SectionCutCount");
      w.I16("SectionCutLast");
      w.I16("SectionCutCapacity");
      w.Records("TrelkSectionCutRec", record_size::kSectionCut, st.cuts);
      w.Records("TrelkSectionCutRefRec", record_size::kSectionCutRef, st.cuts);
      break;
    case FileSection::CutMembers: {
      const std::int64_t members = w.I32("CutMemberCount");
      w.I32("CutMemberCapacity");
      w.Records("TrelkCutMemberRec", record_size::kCutMember, members);
      break;
    }
    case FileSection::CutGroups: {
      const std::int64_t cut_groups = w.I16("CutGroupCount");
      w.I16("CutGroupCapacity");
      w.Records("TrelkCutGroupRec", record_size::kCutGroup, cut_groups);
      if (cut_groups > 0 && st.cuts > 0) {
        w.Block("TrelkCutGroupFlag", static_cast<std::uint64_t>(cut_groups * st.cuts));
      }
      break;
    }
    case FileSection::Drifts:
      st.drifts = w.I16("DriftCount");
      w.I16("DriftCapacity");
      st.deflections = w.I16("DeflectionCount");
      w.I16("DeflectionCapacity");
      w.Records("TrelkDriftRec", record_size::kDrift, st.drifts);
      w.Records("TrelkDeflectionRec", record_size::kDeflection, st.deflections);
      break;
    case FileSection::LimitStates: {
      std::array<std::int64_t, 10> limit{};
      for (int k = 0; k < 10; ++k) limit[k] = w.I16(fmt::format("LimitStateCount({})", k + 1));
      for (int k = 0; k < 10; ++k) w.I16(fmt::format("LimitStateCapacity({})", k + 1));
      w.Records("TrelkLimitStateStrainRec", 322, limit[0]);
      w.Records("TrelkLimitStateStrengthRec", 322, limit[1]);
      w.Records("TrelkLimitStateDriftRec", 50, limit[2]);
      if (st.drifts > 0 && limit[2] > 0) {
        w.Block("TrelkLimitStateDriftFlag", static_cast<std::uint64_t>(st.drifts * limit[2]));
      }
      w.Records("TrelkLimitStateDeflectionRec", 50, limit[3]);
      if (st.deflections > 0 && limit[3] > 0) {
        w.Block("TrelkLimitStateDeflectionFlag",
                static_cast<std::uint64_t>(st.deflections * limit[3]));
      }
      w.Records("TrelkLimitStateOtherRec", 202, limit[4]);
      for (int k = 5; k < 10; ++k) {
        if (limit[k] != 0) {
          w.Unreadable(fmt::format("TRKDS: limit-state list {} has {} records, a list that no "
                                   "structure file holds",
                                   k + 1, limit[k]));
        }
      }
      break;
    }
    case FileSection::ComponentLibrary:
      w.I16("MaxComponentCount");
      // Each component list is a section of its own, named by its record kind.
      for (const ComponentListInfo& info : ComponentLibraryLayout()) {
        w.BeginSection(std::string(info.record));
        const std::int64_t count = w.I16("Count");
        if (info.id == Component::Inel09 && count > 0) {
          // Its tagged values give its records no fixed size; this program never fills it.
          w.Unreadable(fmt::format("TRKDS: {} records of {}, whose size the reader cannot know",
                                   count, info.record));
        }
        for (std::int64_t i = 1; i <= count; ++i) {
          const ReadRecord& rec = w.Record(info.record, info.record_size, std::to_string(i));
          if (info.sub_record_size > 0 &&
              rec.bytes[static_cast<std::size_t>(info.flag_offset)] == 1) {
            w.Record(ComponentSubRecordName(info.id), info.sub_record_size, std::to_string(i));
          }
        }
        if (info.zeros_after > 0) w.ZeroWords("ZeroWord", info.zeros_after);
      }
      break;
    case FileSection::Tail: {
      const std::int64_t tail = w.I16("TailCount");
      w.ZeroWords("ZeroWord", 2);
      w.Records("TrelkTailListARec", record_size::kTailListA, tail);
      const std::int64_t tail_long = w.I32("TailLongCount");
      w.I32("ZeroLong");
      w.Records("TrelkTailListBRec", record_size::kTailListB, tail_long);
      break;
    }
  }
}

// Whether a section is there at all: the tail only follows a header that announces it.
bool SectionPresent(FileSection section, const WalkState& st) {
  return section != FileSection::Tail || st.header_word2 >= 1;
}

// Walks a file section by section, in the order of its section list.
void ReadSections(const StructureFileLayout& file, Walker& w, WalkState& st) {
  for (const SectionDescriptor& section : file.sections) {
    if (!SectionPresent(section.id, st)) continue;
    w.BeginSection(std::string(section.name));
    ReadSectionOf(section.id, w, st);
  }
}

void Walk(ReadFile& file, Walker& w, const std::function<void(Walker&)>& walk) {
  try {
    walk(w);
    w.EndSection();
  } catch (const EndOfFile& end) {
    w.EndSection();
    if (!end.where.what.empty()) file.truncated = end.where;
  } catch (const StopWalk&) {
    w.EndSection();
  }
}

void Walk(ReadFile& file, std::span<const std::uint8_t> bytes,
          const std::function<void(Walker&)>& walk) {
  Walker w(file, bytes);
  Walk(file, w, walk);
}

}  // namespace

std::string_view ComponentSubRecordName(Component id) {
  switch (id) {
    case Component::Inel06: return "TrelkCompInel06SubRec";
    case Component::FemaColumn: return "TrelkIneFemaColumnSubRec";
    case Component::Elastic03: return "TrelkCompElastic03SubRec";
    case Component::MatElasticShear: return "TrelkMatElasticShearSubRec";
    case Component::XecWallInel: return "TrelkXecWallInelSubRec";
    case Component::CompElement01: return "TrelkCompElement01SubRec";
    case Component::CompElement02: return "TrelkCompElement02SubRec";
    case Component::CompElement03: return "TrelkCompElement03SubRec";
    case Component::CompElement04: return "TrelkCompElement04SubRec";
    case Component::CpdFrame: return "TrelkCpdFrameSubRec";
    default: return "TrelkStrengthLossRec";
  }
}

std::vector<ReadValue> ReadRecord::Fields() const {
  std::vector<ReadValue> out;
  if (layout == nullptr) return out;
  const std::span<std::uint8_t> span(const_cast<std::uint8_t*>(bytes.data()), bytes.size());
  const RecordRef ref(span);
  for (std::size_t i = 0; i < layout->fields.size(); ++i) {
    const FieldDef& f = layout->fields[i];
    ReadValue v;
    v.name = FieldDisplayName(layout->fields, i);
    v.offset = offset + f.offset;
    v.kind = f.kind;
    v.width = f.width;
    switch (f.kind) {
      case FieldKind::I16:
      case FieldKind::I32:
      case FieldKind::U8:
      case FieldKind::TaggedI16: v.integer = ref.GetInt(f); break;
      case FieldKind::F32:
      case FieldKind::F64:
      case FieldKind::TaggedF64: v.real = ref.GetReal(f); break;
      case FieldKind::Text: v.text = ref.GetText(f); break;
    }
    out.push_back(std::move(v));
  }
  return out;
}

std::int64_t ReadRecord::Int(const FieldDef& field) const {
  const std::span<std::uint8_t> span(const_cast<std::uint8_t*>(bytes.data()), bytes.size());
  return RecordRef(span).GetInt(field);
}

double ReadRecord::Real(const FieldDef& field) const {
  const std::span<std::uint8_t> span(const_cast<std::uint8_t*>(bytes.data()), bytes.size());
  return RecordRef(span).GetReal(field);
}

const ReadValue* ReadSection::Find(std::string_view value_name) const {
  for (const ReadValue& v : values) {
    if (v.name == value_name) return &v;
  }
  return nullptr;
}

std::int64_t ReadSection::Value(std::string_view value_name) const {
  const ReadValue* v = Find(value_name);
  return v == nullptr ? 0 : v->integer;
}

std::vector<const ReadRecord*> ReadSection::Records(std::string_view record) const {
  std::vector<const ReadRecord*> out;
  for (const ReadRecord& r : records) {
    if (r.record == record) out.push_back(&r);
  }
  return out;
}

const ReadSection* ReadFile::Section(std::string_view section_name) const {
  for (const ReadSection& s : sections) {
    if (s.name == section_name) return &s;
  }
  return nullptr;
}

const ReadFile* StructureRead::File(std::string_view suffix) const {
  const std::string name = "TRKD" + std::string(suffix);
  for (const ReadFile& f : files) {
    if (f.name == name) return &f;
  }
  return nullptr;
}

std::span<const std::string_view> StructureFileSuffixes() {
  // In the order of writing, from the file table that the writer walks.
  static const std::vector<std::string_view> suffixes = [] {
    std::vector<std::string_view> out;
    for (const StructureFileLayout& file : StructureFileLayouts()) out.push_back(file.suffix);
    return out;
  }();
  return suffixes;
}

std::vector<std::uint8_t> ReadWholeFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot open " + path.string());
  return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(in), {});
}

ReadFile ReadStructureFile(std::string_view suffix, std::span<const std::uint8_t> bytes,
                           std::int64_t drift_count) {
  ReadFile file;
  file.name = "TRKD" + std::string(suffix);
  const StructureFileLayout* layout = FindStructureFileLayout(suffix);
  if (layout == nullptr) throw std::invalid_argument("no structure file TRKD" + std::string(suffix));
  WalkState state;
  state.drift_count = drift_count;
  Walk(file, bytes, [&](Walker& w) { ReadSections(*layout, w, state); });
  return file;
}

ReadFile StreamStructureFile(std::string_view suffix, const std::filesystem::path& path,
                             RecordSink& sink, std::int64_t drift_count) {
  ReadFile file;
  file.name = "TRKD" + std::string(suffix);
  const StructureFileLayout* layout = FindStructureFileLayout(suffix);
  if (layout == nullptr) throw std::invalid_argument("no structure file TRKD" + std::string(suffix));
  std::error_code ec;
  const std::uintmax_t size = std::filesystem::file_size(path, ec);
  std::ifstream in(path, std::ios::binary);
  if (ec || !in) {
    file.missing = true;
    return file;
  }
  WalkState state;
  state.drift_count = drift_count;
  Walker w(file, in, size, sink);
  Walk(file, w, [&](Walker& walker) { ReadSections(*layout, walker, state); });
  return file;
}

ReadFile ReadRecordFile(std::string_view name, std::span<const std::uint8_t> bytes) {
  ReadFile file;
  file.name = std::string(name);
  Walk(file, bytes, [](Walker& w) {
    w.BeginSection("header");
    const ReadRecord& head =
        w.Record("RecordFileHeader", record_file_rec::kHeaderSize, "1");
    const std::int64_t points = head.Int(record_file_rec::PointCount);
    w.BeginSection("points");
    for (std::int64_t k = 1; k <= points; ++k) {
      w.F32(fmt::format("Time({})", k));
      w.F32(fmt::format("Value({})", k));
    }
  });
  return file;
}

StructureRead ReadStructureFolder(const std::filesystem::path& folder) {
  StructureRead read;
  read.folder = folder;
  // The S file first: the L file's pushover drift flags are as many as its drifts.
  std::int64_t drifts = 0;
  ReadFile s_file;
  const auto load = [&](std::string_view suffix, std::int64_t drift_count) {
    const std::filesystem::path path = folder / ("TRKD" + std::string(suffix));
    if (!std::filesystem::is_regular_file(path)) {
      ReadFile missing;
      missing.name = "TRKD" + std::string(suffix);
      missing.missing = true;
      return missing;
    }
    const std::vector<std::uint8_t> bytes = ReadWholeFile(path);
    return ReadStructureFile(suffix, bytes, drift_count);
  };
  s_file = load("S", 0);
  if (const ReadSection* d = s_file.Section("drifts")) drifts = d->Value("DriftCount");
  for (std::string_view suffix : StructureFileSuffixes()) {
    if (suffix == "S") {
      read.files.push_back(s_file);
    } else {
      read.files.push_back(load(suffix, drifts));
    }
  }
  return read;
}

}  // namespace vtt
