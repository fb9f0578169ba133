// Reading a structure folder back: every file of the set is walked by the section table
// that the structure file writer lays its sections out by, each header value and each record
// taken with its offset, and the records named through the record layouts. The reader
// never stops at a value it does not like; what must hold is the business of the check.
// It stops only where the file ends before its content does.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/record.h"
#include "store/record_layouts.h"
#include "store/trelk_store.h"

namespace vtt {

// A header value of a section, or a field of a record as read.
struct ReadValue {
  std::string name;
  std::uint64_t offset = 0;  // in the file
  FieldKind kind = FieldKind::I16;
  std::uint32_t width = 0;
  std::int64_t integer = 0;  // I16, I32, U8, TaggedI16 (0 for an empty tagged value)
  double real = 0;           // F32, F64, TaggedF64
  std::string text;          // Text: the raw bytes, padding and zero bytes included
};

// One record as read, or a block of raw bytes (the flag matrices).
struct ReadRecord {
  std::string record;  // record kind, TrelkNodeRec and the like
  std::string index;   // "3", or "2,5" for an element of a matrix
  std::uint64_t offset = 0;
  std::vector<std::uint8_t> bytes;
  const RecordLayout* layout = nullptr;  // nullptr: no field table, shown as bytes
  bool block = false;                    // a block of one-byte flags, shown summed up

  // The named fields, in offset order.
  std::vector<ReadValue> Fields() const;
  // One field by its layout constant.
  std::int64_t Int(const FieldDef& field) const;
  double Real(const FieldDef& field) const;
};

struct ReadSection {
  std::string name;
  std::uint64_t offset = 0;
  std::uint64_t end = 0;
  std::vector<ReadValue> values;
  std::vector<ReadRecord> records;

  const ReadValue* Find(std::string_view value_name) const;
  // An integer header value; 0 when the section has none of that name.
  std::int64_t Value(std::string_view value_name) const;
  std::vector<const ReadRecord*> Records(std::string_view record) const;
};

// Where a file ended before its content.
struct Truncation {
  std::uint64_t offset = 0;  // where the missing piece starts
  std::uint64_t needed = 0;  // bytes the piece needs
  std::uint64_t size = 0;    // bytes the file holds
  std::string what;
};

struct ReadFile {
  std::string name;  // TRKDS and the like, or a record file's name
  bool missing = false;
  std::uint64_t size = 0;
  std::uint64_t end = 0;  // end of the content that was walked
  std::optional<Truncation> truncated;
  // Content that the reader cannot walk (a list this program never writes with a count).
  std::vector<std::string> unreadable;
  std::vector<ReadSection> sections;

  const ReadSection* Section(std::string_view section_name) const;
};

struct StructureRead {
  std::filesystem::path folder;
  std::vector<ReadFile> files;  // in the order of writing: A, ULS, PO, POA, POF, L, S

  const ReadFile* File(std::string_view suffix) const;  // "S", "L" and the like
};

// The file suffixes of the set in the order in which they are written.
std::span<const std::string_view> StructureFileSuffixes();

// Reads every file of the structure folder `folder` (files TRKD + suffix).
StructureRead ReadStructureFolder(const std::filesystem::path& folder);

// Reads one file of the set from its bytes. The L file needs the drift count of the S file
// for its pushover drift flags.
ReadFile ReadStructureFile(std::string_view suffix, std::span<const std::uint8_t> bytes,
                           std::int64_t drift_count = 0);

// Takes the records of a file one at a time as they are read, for a reader that should not
// hold the whole file (a structure of half a million nodes).
class RecordSink {
 public:
  virtual ~RecordSink() = default;
  // Whether the records of the section `section` are wanted; the others are passed over.
  virtual bool Wants(std::string_view section) const = 0;
  // One record of a wanted section, with the section as read so far (its header values
  // stand before its records). The record and its bytes hold only during the call.
  virtual void Take(const ReadSection& section, const ReadRecord& record) = 0;
  // Whether the walk goes on once the section `section` is done.
  virtual bool GoOnAfter(std::string_view /*section*/) const { return true; }
};

// Reads one file of the set from the file `path` as `ReadStructureFile` does, but gives the
// records to `sink` instead of keeping them and passes over the blocks of flags: the file
// that comes back holds its sections and their header values only. A file that cannot be
// opened comes back as missing.
ReadFile StreamStructureFile(std::string_view suffix, const std::filesystem::path& path,
                             RecordSink& sink, std::int64_t drift_count = 0);

// Reads an earthquake record file: its header and its time and value pairs.
ReadFile ReadRecordFile(std::string_view name, std::span<const std::uint8_t> bytes);

std::vector<std::uint8_t> ReadWholeFile(const std::filesystem::path& path);

// The record kind of a component list's sub-record.
std::string_view ComponentSubRecordName(Component id);

}  // namespace vtt
