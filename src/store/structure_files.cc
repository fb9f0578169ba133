#include "store/structure_files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <functional>
#include <future>
#include <span>
#include <utility>
#include <stdexcept>
#include <vector>

#include "store/binary_writer.h"
#include "store/record_layouts.h"
#include "store/trelk_store.h"
#include "transfer/messages.h"

namespace vtt {
namespace {

constexpr std::size_t kFlushThreshold = 4 << 20;

// The one file channel of the writer. As with a numbered file handle, a file whose write
// failed is left open, so every later open on the channel fails and reports its own
// message.
class FileChannel {
 public:
  ~FileChannel() {
    if (file_ != nullptr) std::fclose(file_);
  }

  bool Open(const std::filesystem::path& path) {
    if (file_ != nullptr) return false;
    // Open for writing without truncating; make the file when it is not there.
    file_ = std::fopen(path.string().c_str(), "r+b");
    if (file_ == nullptr && errno == ENOENT) file_ = std::fopen(path.string().c_str(), "w+b");
    return file_ != nullptr;
  }

  bool Write(const std::vector<std::uint8_t>& bytes) {
    return bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), file_) == bytes.size();
  }

  bool Close() {
    const bool flushed = std::fflush(file_) == 0;
    if (!flushed) return false;
    const bool closed = std::fclose(file_) == 0;
    file_ = nullptr;
    return closed;
  }

 private:
  std::FILE* file_ = nullptr;
};

// A file being written: fields go to a buffer that is handed to the channel as it fills.
// A full buffer is written on a second thread while the next one fills, so that the
// copying of half a gigabyte into the system runs beside the making of the records; the
// channel takes one buffer at a time, in order, and none after a failed one. A failure is
// found when the next buffer is handed over, and nothing more of the file is written.
class FileOut {
 public:
  explicit FileOut(FileChannel& channel) : channel_(channel), writer_(buffer_) {}
  FileOut(const FileOut&) = delete;
  FileOut& operator=(const FileOut&) = delete;
  ~FileOut() {
    if (writing_.valid()) writing_.wait();
  }

  BinaryWriter& W() { return writer_; }

  void Flush(bool force = false) {
    if (!force && buffer_.size() < kFlushThreshold) return;
    WaitForWriting();
    if (force) {
      if (!channel_.Write(buffer_)) throw WriteFailed();
      buffer_.clear();
      return;
    }
    std::swap(buffer_, writing_bytes_);  // the writer keeps filling buffer_
    writing_ = std::async(std::launch::async, [this] { return channel_.Write(writing_bytes_); });
  }

  struct WriteFailed {};

 private:
  void WaitForWriting() {
    if (!writing_.valid()) return;
    if (!writing_.get()) throw WriteFailed();
    writing_bytes_.clear();
  }

  FileChannel& channel_;
  std::vector<std::uint8_t> buffer_;
  std::vector<std::uint8_t> writing_bytes_;  // the buffer being written, if any
  std::future<bool> writing_;
  BinaryWriter writer_;
};

void WriteOneFile(TrelkStore& store, FileChannel& channel, std::string_view file_id,
                  std::string_view suffix, UserMessages& messages,
                  const std::function<void(FileOut&)>& content) {
  const std::string file_name = std::string(file_id) + std::string(suffix);
  const std::filesystem::path path = std::filesystem::path(store.StructureFolder) / file_name;
  if (!channel.Open(path)) {
    ReportFileError(store, 0, file_name, messages);
    return;
  }
  try {
    FileOut out(channel);
    content(out);
    out.Flush(true);
    if (!channel.Close()) throw FileOut::WriteFailed();
  } catch (const FileOut::WriteFailed&) {
    ReportFileError(store, 1, file_name, messages);
  }
}

void WriteTitleBlock(const TrelkStore& store, BinaryWriter& w) {
  w.Text(8, store.VersionText).Text(12, store.StructureName).Text(60, store.StructureTitle);
}

void WriteRecords(FileOut& out, const RecordList& list, std::int32_t count) {
  for (std::int32_t i = 1; i <= count; ++i) {
    out.W().Bytes(list.RecordBytes(i));
    out.Flush();
  }
}

// A matrix element as written; slots beyond the bounds the matrix holds are zero.
void WriteElement(FileOut& out, const ByteMatrix& matrix,
                  std::initializer_list<std::int32_t> index) {
  std::size_t d = 0;
  for (std::int32_t i : index) {
    const ByteMatrix::Bound& b = matrix.Bounds()[d++];
    if (i < b.low || i > b.high) {
      out.W().ZeroFill(matrix.ElementSize());
      return;
    }
  }
  out.W().Bytes(matrix.Get(index));
}

// Row `row` of a matrix of two indexes, columns `from` to `to`: the same bytes as
// WriteElement of each element in turn, but the part inside the bounds goes out as one
// block (the last index runs fastest in a matrix). The flag and value matrices of a large
// structure hold hundreds of millions of elements.
void WriteMatrixRow(FileOut& out, const ByteMatrix& matrix, std::int32_t row, std::int32_t from,
                    std::int32_t to) {
  if (to < from) return;
  const std::size_t size = matrix.ElementSize();
  const auto width = [](std::int32_t first, std::int32_t last) {
    return last < first ? std::size_t{0} : static_cast<std::size_t>(last - first + 1);
  };
  const ByteMatrix::Bound& rows = matrix.Bounds()[0];
  const ByteMatrix::Bound& columns = matrix.Bounds()[1];
  const std::int32_t inside_from = std::max(from, columns.low);
  const std::int32_t inside_to = std::min(to, columns.high);
  if (row < rows.low || row > rows.high || inside_from > inside_to) {
    out.W().ZeroFill(size * width(from, to));
    return;
  }
  out.W().ZeroFill(size * width(from, inside_from - 1));
  const std::span<const std::uint8_t> first = matrix.Get({row, inside_from});
  out.W().Bytes(std::span<const std::uint8_t>(first.data(), size * width(inside_from, inside_to)));
  out.W().ZeroFill(size * width(inside_to + 1, to));
}

// Writes one section of a structure file. Which sections a file has, and in what order,
// is the file's section list (record_layouts.h), which the reader walks too.
void WriteSection(FileSection section, TrelkStore& store, std::int16_t header_argument,
                  FileOut& out) {
  BinaryWriter& w = out.W();
  const UnitBlock& u = store.Units;
  const std::int32_t cases = store.LoadCases.Count();
  const std::int32_t nodes = store.Nodes.Count();
  const std::int32_t groups = store.ElemGroups.Count();
  const std::int32_t elems = store.Elems.Count();
  const std::int32_t cuts = store.SectionCuts.Count();
  switch (section) {
    // ---- TRKDA ----
    case FileSection::AHeader:
      WriteTitleBlock(store, w);
      w.I16(static_cast<std::int16_t>(cases));
      w.I16(store.LoadCaseMatrixRows).I16(store.LoadCaseMatrixColumns);
      break;
    case FileSection::LoadCases:
      for (std::int32_t c = 1; c <= cases; ++c) {
        const auto bytes = store.LoadCases.RecordBytes(c);
        w.Bytes(bytes);
        // The last byte says whether a detail record follows; this program never makes one.
        if (bytes.back() == 1) {
          throw std::logic_error("load case detail records are not produced by this program");
        }
      }
      break;
    case FileSection::LoadCaseMatrix:
      for (std::int32_t r = 1; r <= store.LoadCaseMatrixRows; ++r) {
        for (std::int32_t c = 1; c <= store.LoadCaseMatrixColumns; ++c) {
          WriteElement(out, store.LoadCaseMatrix, {r, c});
        }
      }
      break;
    case FileSection::LoadCaseFactors:
      w.I16(store.LoadCaseFactorSlots);
      for (std::int32_t c = 1; c <= cases; ++c) {
        for (std::int32_t s = 1; s <= store.LoadCaseFactorSlots; ++s) {
          WriteElement(out, store.LoadCaseFactors, {c, s});
        }
      }
      break;
    case FileSection::LoadCaseList:
      w.I16(static_cast<std::int16_t>(store.LoadCaseList.Count()));
      WriteRecords(out, store.LoadCaseList, store.LoadCaseList.Count());
      break;
    case FileSection::LoadCaseValues:
      for (std::int32_t e = 1; e <= store.LoadCaseList.Count(); ++e) {
        for (std::int32_t c = 1; c <= cases; ++c) WriteElement(out, store.LoadCaseValues, {e, c});
      }
      break;

    // ---- TRKDULS, TRKDPO, TRKDPOA, TRKDPOF ----
    case FileSection::UlsHeader:
      w.Text(8, store.VersionText).I16(0).I16(0);
      break;
    case FileSection::PoHeader:
    case FileSection::PoaHeader:
    case FileSection::PofHeader:
      w.Text(8, store.VersionText);
      break;
    case FileSection::PoRecord:
      w.ZeroFill(282);
      break;
    case FileSection::PoaRecords:
      w.TaggedEmpty();
      break;
    case FileSection::PofRecord:
      w.ZeroFill(20);
      break;

    // ---- TRKDL ----
    case FileSection::LHeader:
      WriteTitleBlock(store, w);
      for (std::int16_t count : store.CaseListCount()) w.I16(count);
      for (std::int16_t capacity : store.CaseListCapacity()) w.I16(capacity);
      break;
    case FileSection::GravityCases:
      WriteRecords(out, store.GravityCases, store.GravityCases.Count());
      break;
    case FileSection::PushoverCases:
      WriteRecords(out, store.PushoverCases, store.PushoverCases.Count());
      break;
    case FileSection::PushoverDriftFlags:
      for (std::int32_t p = 1; p <= store.PushoverCases.Count(); ++p) {
        for (std::int32_t d = 1; d <= store.Drifts.Count(); ++d) {
          WriteElement(out, store.PushoverDriftFlag, {p, d});
        }
      }
      break;
    case FileSection::DynamicCases:
      WriteRecords(out, store.DynamicCases, store.DynamicCases.Count());
      break;
    case FileSection::OtherCaseLists:
      // Slots 4 to 8 are lists this program never fills: no records follow.
      break;

    // ---- TRKDS ----
    case FileSection::SHeader:
      WriteTitleBlock(store, w);
      w.I16(store.HeaderWord1).I16(u.UnitLength).I16(u.UnitForce).F32(u.UnitGravity);
      w.I16(u.BeepOnFileError).I16(u.SizeChoice).I16(u.UnitWord3);
      store.HeaderWord2 = 1;
      w.I16(store.HeaderWord2).I16(header_argument).I16(store.HeaderWord3);
      w.I32(store.HeaderLong1).I32(store.HeaderLong2).I32(store.HeaderLong3);
      w.I16(store.LeadListCount).I16(store.LeadListFlag);
      // The head list is always empty; its records would be blank.
      if (store.LeadListFlag > 0) w.ZeroFill(record_size::kLeadList * store.LeadListCount);
      w.F64(u.SizeValue).Text(8, u.SizeText);
      break;
    case FileSection::Nodes:
      w.I32(nodes).I32(store.LastNodeAdded).I32(store.Nodes.Capacity());
      WriteRecords(out, store.Nodes, nodes);
      break;
    case FileSection::Diaphragms:
      w.I16(static_cast<std::int16_t>(store.Diaphragms.Count()));
      w.I16(static_cast<std::int16_t>(store.Diaphragms.Capacity()));
      WriteRecords(out, store.Diaphragms, store.Diaphragms.Count());
      break;
    case FileSection::NodalMass: {
      // The only count and capacity written as tagged values.
      const std::int32_t mass_patterns = store.NodalMassPatterns.Count();
      w.TaggedI16(static_cast<std::int16_t>(mass_patterns));
      w.TaggedI16(static_cast<std::int16_t>(store.NodalMassPatterns.Capacity()));
      WriteRecords(out, store.NodalMassPatterns, mass_patterns);
      for (std::int32_t p = 1; p <= mass_patterns; ++p) {
        WriteMatrixRow(out, store.NodalMass, p, 1, nodes);
        out.Flush();
      }
      break;
    }
    case FileSection::ElemGroups:
      w.I16(static_cast<std::int16_t>(groups)).I16(store.ElemGroupLast);
      w.I16(static_cast<std::int16_t>(store.ElemGroups.Capacity()));
      WriteRecords(out, store.ElemGroups, groups);
      break;
    case FileSection::Elems:
      w.I32(elems).I32(store.ElemLast).I32(store.Elems.Capacity());
      WriteRecords(out, store.Elems, elems);
      break;
    case FileSection::StructureFrames: {
      // The frames, and their flag matrices dumped by capacity.
      const std::int32_t frames = store.Frames.Count();
      w.I16(static_cast<std::int16_t>(frames));
      w.I16(static_cast<std::int16_t>(store.Frames.Capacity()));
      WriteRecords(out, store.Frames, frames);
      if (frames > 0) {
        for (std::int32_t f = 1; f <= store.Frames.Capacity(); ++f) {
          WriteMatrixRow(out, store.FrameNodeFlag, f, 1, store.Nodes.Capacity());
          out.Flush();
        }
        for (std::int32_t f = 1; f <= store.Frames.Capacity(); ++f) {
          WriteMatrixRow(out, store.FrameElemFlag, f, 0, store.Elems.Capacity());
          out.Flush();
        }
      }
      break;
    }
    case FileSection::NodalLoads: {
      const std::int32_t node_patterns = store.LoadNodePatterns.Count();
      w.I16(static_cast<std::int16_t>(node_patterns));
      w.I16(static_cast<std::int16_t>(store.LoadNodePatterns.Capacity()));
      WriteRecords(out, store.LoadNodePatterns, node_patterns);
      for (std::int32_t p = 1; p <= node_patterns; ++p) {
        WriteMatrixRow(out, store.LoadNodeValue, p, 1, nodes);
        out.Flush();
      }
      break;
    }
    case FileSection::FrameLoads: {
      // Patterns, group indexes, group values by slot capacity, element indexes and the
      // value records.
      const std::int32_t frame_patterns = store.LoadFramePatterns.Count();
      w.I16(static_cast<std::int16_t>(frame_patterns));
      w.I16(static_cast<std::int16_t>(store.LoadFramePatterns.Capacity()));
      w.I16(store.LoadFrameValueSlotCapacity);
      w.I16(static_cast<std::int16_t>(store.LoadFrameValues.Count()));
      w.I16(static_cast<std::int16_t>(store.LoadFrameValues.Capacity()));
      WriteRecords(out, store.LoadFramePatterns, frame_patterns);
      for (std::int32_t p = 1; p <= frame_patterns; ++p) {
        for (std::int32_t g = 1; g <= groups; ++g) {
          WriteElement(out, store.LoadFrameGroupIndex, {p, g});
        }
      }
      for (std::int32_t s = 1; s <= store.LoadFrameValueSlotCapacity; ++s) {
        for (std::int32_t p = 1; p <= frame_patterns; ++p) {
          for (std::int32_t g = 1; g <= groups; ++g) {
            WriteElement(out, store.LoadFrameGroupValue, {s, p, g});
          }
        }
      }
      for (std::int32_t p = 1; p <= frame_patterns; ++p) {
        WriteMatrixRow(out, store.LoadFrameElemIndex, p, 1, elems);
        out.Flush();
      }
      WriteRecords(out, store.LoadFrameValues, store.LoadFrameValues.Count());
      break;
    }
    case FileSection::SelfWeight: {
      const std::int32_t weight_patterns = store.SelfWeightPatterns.Count();
      w.I16(static_cast<std::int16_t>(weight_patterns));
      w.I16(static_cast<std::int16_t>(store.SelfWeightPatterns.Capacity()));
      WriteRecords(out, store.SelfWeightPatterns, weight_patterns);
      for (std::int32_t p = 1; p <= weight_patterns; ++p) {
        WriteMatrixRow(out, store.SelfWeightElemFlag, p, 1, elems);
        out.Flush();
      }
      break;
    }
    case FileSection::ZeroWords:
      w.ZeroFill(6 * 2);
      break;
    case FileSection::SectionCuts:
      // All cut records, then all their reference records.
      w.I16(static_cast<std::int16_t>(cuts)).I16(store.SectionCutLast);
      w.I16(static_cast<std::int16_t>(store.SectionCuts.Capacity()));
      WriteRecords(out, store.SectionCuts, cuts);
      for (std::int32_t c = 1; c <= cuts; ++c) w.Bytes(store.SectionCuts.SubRecordBytes(c));
      break;
    case FileSection::CutMembers:
      w.I32(store.CutMembers.Count()).I32(store.CutMembers.Capacity());
      WriteRecords(out, store.CutMembers, store.CutMembers.Count());
      break;
    case FileSection::CutGroups: {
      const std::int32_t cut_groups = store.CutGroups.Count();
      w.I16(static_cast<std::int16_t>(cut_groups));
      w.I16(static_cast<std::int16_t>(store.CutGroups.Capacity()));
      WriteRecords(out, store.CutGroups, cut_groups);
      for (std::int32_t g = 1; g <= cut_groups; ++g) {
        for (std::int32_t c = 1; c <= cuts; ++c) WriteElement(out, store.CutGroupFlag, {g, c});
      }
      break;
    }
    case FileSection::Drifts:
      w.I16(static_cast<std::int16_t>(store.Drifts.Count()));
      w.I16(static_cast<std::int16_t>(store.Drifts.Capacity()));
      w.I16(static_cast<std::int16_t>(store.Deflections.Count()));
      w.I16(static_cast<std::int16_t>(store.Deflections.Capacity()));
      WriteRecords(out, store.Drifts, store.Drifts.Count());
      WriteRecords(out, store.Deflections, store.Deflections.Count());
      break;
    case FileSection::LimitStates:
      // The count and capacity tables; the lists themselves stay empty.
      for (std::int16_t count : store.LimitStateCount) {
        if (count != 0) {
          throw std::logic_error("limit-state records are not produced by this program");
        }
        w.I16(count);
      }
      for (std::int16_t capacity : store.LimitStateCapacity) w.I16(capacity);
      break;
    case FileSection::ComponentLibrary:
      // A sub-record follows its owner only when the owner's flag byte equals exactly 1.
      w.I16(store.MaxComponentCount);
      for (const ComponentListInfo& info : ComponentLibraryLayout()) {
        const RecordList& list = store.Components(info.id);
        w.I16(static_cast<std::int16_t>(list.Count()));
        for (std::int32_t i = 1; i <= list.Count(); ++i) {
          const auto record = list.RecordBytes(i);
          w.Bytes(record);
          if (info.sub_record_size > 0 &&
              record[static_cast<std::size_t>(info.flag_offset)] == 1) {
            w.Bytes(list.SubRecordBytes(i));
          }
          out.Flush();
        }
        w.ZeroFill(2 * static_cast<std::size_t>(info.zeros_after));
      }
      break;
    case FileSection::Tail:
      // Two empty lists.
      if (store.HeaderWord2 >= 1) {
        w.I16(0).I16(0).I16(0);
        w.I32(0).I32(0);
      }
      break;
  }
}

// Writes a file section by section, in the order of its section list.
void WriteFileSections(TrelkStore& store, std::string_view suffix, std::int16_t header_argument,
                       FileOut& out) {
  const StructureFileLayout* file = FindStructureFileLayout(suffix);
  if (file == nullptr) throw std::logic_error("no structure file TRKD" + std::string(suffix));
  for (const SectionDescriptor& section : file->sections) {
    WriteSection(section.id, store, header_argument, out);
  }
}

}  // namespace

std::filesystem::path StructureFolderPath(std::string_view structures_root,
                                          std::string_view structure_name) {
  std::string_view name = structure_name;
  while (!name.empty() && name.back() == ' ') name.remove_suffix(1);
  return std::filesystem::path(std::string(structures_root)) / std::string(name);
}

void ReportFileError(TrelkStore& store, int stage, std::string_view file_name,
                     UserMessages& messages) {
  if (store.Units.BeepOnFileError != 0) messages.Beep();
  UserMessage message;
  message.icon = MessageIcon::Critical;
  const std::string name_lines = "Structure name = " + store.StructureName + "\nFile name = " +
                                 std::string(file_name) + "\n\n";
  if (stage == 0) {
    message.title = "Can Not Open An Essential File";
    message.text =
        "Failure to open the following essential data file :\n\n" + name_lines +
        "There should be a file of this name in the folder for this structure.\n\n"
        "The file may have been erased. If so you will have to export this structure again.\n"
        "Alternatively, check that the file is not read-only\n\n"
        "If you can not find the problem, please report this error to Ostrand.";
  } else {
    store.WriteOkFlag = 0;
    message.title = "Can Not Write To An Essential File";
    message.text = "Failure to write to the following essential data file :\n\n" + name_lines +
                   "Please try again.\n\n"
                   "If you can not find the problem, please report this error to Ostrand.";
  }
  messages.Show(message);
}

void WriteTrelkStructure(TrelkStore& store, std::string_view file_id, bool write_all,
                         std::int16_t header_argument, UserMessages& messages) {
  store.StructureFolder =
      StructureFolderPath(store.StructuresRoot, store.StructureName).string();
  FileChannel channel;
  const bool main_set = file_id == "TRKD";
  // The files in the order of the layout table. Without `write_all` only L and S are
  // written; A, PO, POA and POF belong to the main set alone.
  for (const StructureFileLayout& file : StructureFileLayouts()) {
    const std::string_view suffix = file.suffix;
    const bool always = suffix == "L" || suffix == "S";
    const bool main_only = suffix != "ULS" && !always;
    if (!always && !write_all) continue;
    if (main_only && !main_set) continue;
    WriteOneFile(store, channel, file_id, suffix, messages, [&](FileOut& out) {
      WriteFileSections(store, suffix, header_argument, out);
    });
  }
  // A second identification, "TRCP", only stops the bookkeeping below; no caller uses it.
  if (store.FileIdText == "TRKD" && file_id == "TRCP") return;
  store.StoreFlag1 = 0;
  store.StoreFlag2 = 0;
  store.Units.UnitWord5 = 0;
  store.UpdateRecentStructures();
}

}  // namespace vtt
