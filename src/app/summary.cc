#include "app/summary.h"

#include <map>
#include <span>

#include "store/binary_writer.h"
#include "store/element_records.h"
#include "store/record.h"
#include "store/text_encoding.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {

// A text field as the user reads it: without the blank padding or the zero bytes that
// fill the rest of the field.
std::string FieldText(std::span<const std::uint8_t> bytes, const FieldDef& field) {
  std::string text(bytes.begin() + field.offset, bytes.begin() + field.offset + field.width);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\0')) text.pop_back();
  return FromWindows1252(text);
}

void Line(std::ostream& out, int indent, const std::string& label, const std::string& value) {
  constexpr std::size_t kColumn = 36;
  std::string text(static_cast<std::size_t>(indent), ' ');
  text += label;
  text += ':';
  if (text.size() < kColumn) text.append(kColumn - text.size(), ' ');
  else text += ' ';
  out << text << value << '\n';
}

std::string Count(std::int64_t n) { return std::to_string(n); }

}  // namespace

StructureSummary SummariseStructure(const TrelkStore& store, int record_files,
                                    std::string records_folder) {
  StructureSummary s;
  s.folder = store.StructureFolder;
  s.nodes = store.Nodes.Count();
  s.diaphragms = store.Diaphragms.Count();

  // An element's group number leads to its group; the leading element of each group has
  // none and is no element of the model.
  std::map<std::int32_t, std::int32_t> in_group;
  for (std::int32_t e = 1; e <= store.Elems.Count(); ++e) {
    const std::int32_t group = ReadI16(store.Elems.RecordBytes(e), elem_rec::GroupNumber.offset);
    if (group > 0) ++in_group[group];
  }
  for (std::int32_t g = 1; g <= store.ElemGroups.Count(); ++g) {
    s.element_groups.emplace_back(FieldText(store.ElemGroups.RecordBytes(g), elem_group_rec::Name),
                                  in_group[g]);
  }

  for (const ComponentListInfo& info : ComponentLibraryLayout()) {
    const std::int32_t count = store.Components(info.id).Count();
    if (count > 0) s.components.emplace_back(std::string(info.what), count);
  }

  s.nodal_load_patterns = store.LoadNodePatterns.Count();
  s.frame_load_patterns = store.LoadFramePatterns.Count();
  s.self_weight_patterns = store.SelfWeightPatterns.Count();
  s.nodal_mass_patterns = store.NodalMassPatterns.Count();
  s.structure_frames = store.Frames.Count();
  s.section_cuts = store.SectionCuts.Count();
  s.drifts = store.Drifts.Count();
  s.gravity_cases = store.GravityCases.Count();
  s.pushover_cases = store.PushoverCases.Count();
  s.dynamic_cases = store.DynamicCases.Count();
  s.analysis_series = store.LoadCases.Count();
  s.record_files = record_files;
  s.records_folder = std::move(records_folder);
  return s;
}

void PrintStructureSummary(std::ostream& out, const StructureSummary& s) {
  out << "Structure written to " << s.folder << '\n';
  Line(out, 2, "nodes", Count(s.nodes) + " (node 1 is the origin node of every structure)");
  Line(out, 2, "rigid diaphragms", Count(s.diaphragms));
  std::int64_t elements = 0;
  for (const auto& group : s.element_groups) elements += group.second;
  Line(out, 2, "elements",
       Count(elements) + " in " + Count(static_cast<std::int64_t>(s.element_groups.size())) +
           (s.element_groups.size() == 1 ? " element group" : " element groups"));
  for (const auto& [name, count] : s.element_groups) Line(out, 4, name, Count(count));
  std::int64_t components = 0;
  for (const auto& list : s.components) components += list.second;
  Line(out, 2, "components", Count(components));
  for (const auto& [kind, count] : s.components) Line(out, 4, kind, Count(count));
  Line(out, 2, "load patterns",
       Count(s.nodal_load_patterns) + " nodal, " + Count(s.frame_load_patterns) +
           " frame load, " + Count(s.self_weight_patterns) + " self weight, " +
           Count(s.nodal_mass_patterns) + " nodal mass");
  Line(out, 2, "structure frames (groups)", Count(s.structure_frames));
  Line(out, 2, "section cuts", Count(s.section_cuts));
  Line(out, 2, "drifts", Count(s.drifts));
  Line(out, 2, "load cases",
       Count(s.gravity_cases) + " gravity, " + Count(s.pushover_cases) + " pushover, " +
           Count(s.dynamic_cases) + " dynamic");
  Line(out, 2, "analysis series entries", Count(s.analysis_series));
  if (s.records_folder.empty()) {
    Line(out, 2, "record files", Count(s.record_files));
  } else {
    Line(out, 2, "record files", Count(s.record_files) + " in " + s.records_folder);
  }
}

}  // namespace vtt
