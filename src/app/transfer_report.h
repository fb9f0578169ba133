// The transfer report: what went into the structure (the counts of the summary) and every
// host object that the transfer left out, each with its reason and the object's name.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "app/summary.h"
#include "source/drop_note.h"

namespace vtt {

struct TransferReport {
  std::string model;  // the model file
  StructureSummary summary;
  // In the order the transfer met them; an object noted twice in the same words (the
  // three parts of a divided triangle share their loads) is listed once.
  std::vector<DropNote> left_out;
  // Empty when the transfer ran to its end; else the message it stopped with. A stopped
  // transfer's report still names what was left out until then.
  std::string stopped;

  // Adds a note unless the same note is already there.
  void Note(const DropNote& note);
};

void WriteReportMarkdown(const TransferReport& report, std::ostream& out);
nlohmann::json ReportJson(const TransferReport& report);

// Whether `file` names a report format: ".md" (Markdown) or ".json".
bool IsReportFileName(const std::string& file);

// Writes the report in the format of the file's extension; false when the file cannot be
// written.
bool WriteTransferReport(const std::string& file, const TransferReport& report);

}  // namespace vtt
