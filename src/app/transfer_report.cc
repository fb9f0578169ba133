#include "app/transfer_report.h"

#include <algorithm>
#include <fstream>
#include <map>

namespace vtt {
namespace {

bool EndsWith(const std::string& text, std::string_view end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// A Markdown table cell: a bar would end the cell early.
std::string Cell(const std::string& text) {
  std::string out;
  for (char c : text) {
    if (c == '|') out += "\\|";
    else if (c == '\n') out += ' ';
    else out += c;
  }
  return out;
}

}  // namespace

void TransferReport::Note(const DropNote& note) {
  const bool seen = std::any_of(left_out.begin(), left_out.end(), [&](const DropNote& n) {
    return n.kind == note.kind && n.name == note.name && n.reason == note.reason;
  });
  if (!seen) left_out.push_back(note);
}

bool IsReportFileName(const std::string& file) {
  return EndsWith(file, ".md") || EndsWith(file, ".json");
}

namespace {

void WriteWentIn(const StructureSummary& s, std::ostream& out) {
  out << "## What went in\n\n";
  out << "| Item | Count |\n|---|---:|\n";
  out << "| nodes (with the origin node) | " << s.nodes << " |\n";
  out << "| rigid diaphragms | " << s.diaphragms << " |\n";
  for (const auto& [name, count] : s.element_groups) {
    out << "| elements of group " << Cell(name) << " | " << count << " |\n";
  }
  for (const auto& [kind, count] : s.components) {
    out << "| components: " << Cell(kind) << " | " << count << " |\n";
  }
  out << "| nodal load patterns | " << s.nodal_load_patterns << " |\n";
  out << "| frame load patterns | " << s.frame_load_patterns << " |\n";
  out << "| self weight patterns | " << s.self_weight_patterns << " |\n";
  out << "| nodal mass patterns | " << s.nodal_mass_patterns << " |\n";
  out << "| structure frames | " << s.structure_frames << " |\n";
  out << "| section cuts | " << s.section_cuts << " |\n";
  out << "| drifts | " << s.drifts << " |\n";
  out << "| gravity cases | " << s.gravity_cases << " |\n";
  out << "| pushover cases | " << s.pushover_cases << " |\n";
  out << "| dynamic cases | " << s.dynamic_cases << " |\n";
  out << "| analysis series entries | " << s.analysis_series << " |\n";
  out << "| record files | " << s.record_files << " |\n\n";
}

void WriteLeftOut(const TransferReport& r, std::ostream& out) {
  out << "## Left out\n\n";
  if (r.left_out.empty()) {
    out << "Nothing: every object of the model was taken.\n";
    return;
  }
  out << r.left_out.size() << (r.left_out.size() == 1 ? " object" : " objects")
      << " of the model did not go into the structure.\n\n";
  out << "| Kind | Name | Reason |\n|---|---|---|\n";
  for (const DropNote& n : r.left_out) {
    out << "| " << Cell(n.kind) << " | " << Cell(n.name) << " | " << Cell(n.reason) << " |\n";
  }
}

}  // namespace

void WriteReportMarkdown(const TransferReport& r, std::ostream& out) {
  const StructureSummary& s = r.summary;
  out << "# Transfer report\n\n";
  if (!r.model.empty()) out << "Model: `" << r.model << "`  \n";
  out << "Structure: `" << s.folder << "`\n\n";
  if (!r.stopped.empty()) {
    // Nothing is counted of a structure that was never finished.
    out << "**The transfer stopped:** " << Cell(r.stopped) << "\n\n";
  } else {
    WriteWentIn(s, out);
  }
  WriteLeftOut(r, out);
}

nlohmann::json ReportJson(const TransferReport& r) {
  const StructureSummary& s = r.summary;
  nlohmann::json groups = nlohmann::json::array();
  for (const auto& [name, count] : s.element_groups) {
    groups.push_back({{"name", name}, {"elements", count}});
  }
  nlohmann::json components = nlohmann::json::array();
  for (const auto& [kind, count] : s.components) {
    components.push_back({{"kind", kind}, {"count", count}});
  }
  nlohmann::json left_out = nlohmann::json::array();
  for (const DropNote& n : r.left_out) {
    left_out.push_back({{"kind", n.kind}, {"name", n.name}, {"reason", n.reason}});
  }
  return {{"model", r.model},
          {"structure", s.folder},
          {"stopped", r.stopped.empty() ? nlohmann::json(nullptr) : nlohmann::json(r.stopped)},
          {"went_in",
           {{"nodes", s.nodes},
            {"diaphragms", s.diaphragms},
            {"element_groups", groups},
            {"components", components},
            {"nodal_load_patterns", s.nodal_load_patterns},
            {"frame_load_patterns", s.frame_load_patterns},
            {"self_weight_patterns", s.self_weight_patterns},
            {"nodal_mass_patterns", s.nodal_mass_patterns},
            {"structure_frames", s.structure_frames},
            {"section_cuts", s.section_cuts},
            {"drifts", s.drifts},
            {"gravity_cases", s.gravity_cases},
            {"pushover_cases", s.pushover_cases},
            {"dynamic_cases", s.dynamic_cases},
            {"analysis_series", s.analysis_series},
            {"record_files", s.record_files}}},
          {"left_out", left_out}};
}

bool WriteTransferReport(const std::string& file, const TransferReport& report) {
  std::ofstream out(file, std::ios::binary);
  if (!out) return false;
  if (EndsWith(file, ".json")) {
    out << ReportJson(report).dump(2) << '\n';
  } else {
    WriteReportMarkdown(report, out);
  }
  out.flush();
  return static_cast<bool>(out);
}

}  // namespace vtt
