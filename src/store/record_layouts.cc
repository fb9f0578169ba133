#include "store/record_layouts.h"

#include <array>
#include <string>

#include "analysis/fill_trelk_nodal_mass.h"
#include "store/compound_records.h"
#include "store/drift_records.h"
#include "store/element_records.h"
#include "store/fema_records.h"
#include "store/field_table.h"
#include "store/frame_set_records.h"
#include "store/load_case_records.h"
#include "store/load_records.h"
#include "store/material_records.h"
#include "store/node_records.h"
#include "store/record_file_records.h"
#include "store/release_records.h"
#include "store/section_cut_records.h"
#include "store/trelk_store.h"
#include "store/xsect_records.h"

namespace vtt {
namespace {

// Tables of the layouts that are declared beside their fill steps rather than in a records
// header.
namespace nodal_mass_pattern_table {
inline constexpr auto kFields = field_table::List(nodal_mass_pattern_rec::Name);
static_assert(field_table::FitsWithoutOverlap(kFields, nodal_mass_pattern_rec::kSize));
}  // namespace nodal_mass_pattern_table
namespace nodal_mass_table {
inline constexpr auto kFields = field_table::Series<6>(nodal_mass_rec::Mass);
static_assert(field_table::FitsWithoutOverlap(kFields, nodal_mass_rec::kSize));
}  // namespace nodal_mass_table
namespace end_zone_table {
using namespace end_zone;
inline constexpr auto kFields = field_table::List(Name, Kind, Mode, Length1, Length2, Offset1,
                                                  Offset2, Factor1, Factor2, Factor3, Factor4);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace end_zone_table

template <std::size_t N>
constexpr RecordLayout Layout(std::string_view record, std::uint32_t size,
                              const std::array<FieldDef, N>& fields) {
  return {record, size, std::span<const FieldDef>(fields.data(), fields.size())};
}

const std::array kLayouts = {
    Layout("TrelkNodeRec", node_rec::kSize, node_rec::kFields),
    Layout("TrelkDiaphragmRec", diaphragm_rec::kSize, diaphragm_rec::kFields),
    Layout("TrelkNodalMassPatternRec", nodal_mass_pattern_rec::kSize,
           nodal_mass_pattern_table::kFields),
    Layout("TrelkNodalMassRec", nodal_mass_rec::kSize, nodal_mass_table::kFields),
    Layout("TrelkElemGroupRec", elem_group_rec::kSize, elem_group_rec::kFields),
    Layout("TrelkElemRec", elem_rec::kSize, elem_rec::kFields),
    Layout("TrelkFrameRec", frame_rec::kSize, frame_rec::kFields),
    Layout("TrelkLoadNodePatternRec", load_pattern_rec::kSize, load_pattern_rec::kFields),
    Layout("TrelkLoadNodeValueRec", load_node_value_rec::kSize, load_node_value_rec::kFields),
    Layout("TrelkLoadFramePatternRec", load_pattern_rec::kSize, load_pattern_rec::kFields),
    Layout("TrelkLoadFrameGroupIndex", load_frame_index::kSize, load_frame_index::kFields),
    Layout("TrelkLoadFrameGroupValueRec", load_frame_group_value_rec::kSize,
           load_frame_group_value_rec::kFields),
    Layout("TrelkLoadFrameElemIndex", load_frame_index::kSize, load_frame_index::kFields),
    Layout("TrelkLoadFrameValueRec", load_frame_value_rec::kSize, load_frame_value_rec::kFields),
    Layout("TrelkSelfWeightPatternRec", load_pattern_rec::kSize, load_pattern_rec::kFields),
    Layout("TrelkSelfWeightElemFlag", self_weight_flag::kSize, self_weight_flag::kFields),
    Layout("TrelkSectionCutRec", section_cut_rec::kSize, section_cut_rec::kFields),
    Layout("TrelkCutMemberRec", cut_member_rec::kSize, cut_member_rec::kFields),
    Layout("TrelkCutGroupRec", cut_group_rec::kSize, cut_group_rec::kFields),
    Layout("TrelkDriftRec", drift_rec::kSize, drift_rec::kFields),
    Layout("TrelkIneFemaBeamRec", fema_beam_rec::kSize, fema_beam_rec::kFields),
    Layout("TrelkIneFemaColumnRec", fema_column_rec::kSize, fema_column_rec::kFields),
    Layout("TrelkIneFemaColumnSubRec", fema_column_sub_rec::kSize, fema_column_sub_rec::kFields),
    Layout("TrelkStrengthLossRec", strength_loss_rec::kSize, strength_loss_rec::kFields),
    Layout("TrelkEndZoneRec", end_zone::kSize, end_zone_table::kFields),
    Layout("TrelkReleaseRec", release_rec::kSize, release_rec::kFields),
    Layout("TrelkMatInelRec", mat_inel_rec::kSize, mat_inel_rec::kFields),
    Layout("TrelkMatElasticFiberRec", mat_elastic_fiber_rec::kSize, mat_elastic_fiber_rec::kFields),
    Layout("TrelkMatElasticShearRec", mat_elastic_shear_rec::kSize, mat_elastic_shear_rec::kFields),
    Layout("TrelkMatElasticShearSubRec", mat_elastic_shear_sub_rec::kSize,
           mat_elastic_shear_sub_rec::kFields),
    Layout("TrelkMatElasticSlabRec", mat_elastic_slab_rec::kSize, mat_elastic_slab_rec::kFields),
    Layout("TrelkXecBeamRec", xsect_beam_rec::kSize, xsect_beam_rec::kFields),
    Layout("TrelkXecColumnRec", xsect_column_rec::kSize, xsect_column_rec::kFields),
    Layout("TrelkXecSlabRec", xsect_slab_rec::kSize, xsect_slab_rec::kFields),
    Layout("TrelkXecWallInelRec", xsect_wall_inel_rec::kSize, xsect_wall_inel_rec::kFields),
    Layout("TrelkXecWallElasticRec", xsect_wall_elastic_rec::kSize,
           xsect_wall_elastic_rec::kFields),
    Layout("TrelkCpdFrameRec", cpd_frame_rec::kSize, cpd_frame_rec::kFields),
    Layout("TrelkCpdWallRec", cpd_wall_rec::kSize, cpd_wall_rec::kFields),
    Layout("TrelkCpdGWallRec", cpd_gwall_rec::kSize, cpd_gwall_rec::kFields),
    Layout("TrelkLoadCaseRec", load_case_rec::kSize, load_case_rec::kFields),
    Layout("TrelkGravityCaseRec", gravity_case_rec::kSize, gravity_case_rec::kFields),
    Layout("TrelkPushoverCaseRec", pushover_case_rec::kSize, pushover_case_rec::kFields),
    Layout("TrelkDynamicCaseRec", dynamic_case_rec::kSize, dynamic_case_rec::kFields),
    Layout("RecordFileHeader", record_file_rec::kHeaderSize, record_file_rec::kFields),
};

using enum FileSection;

constexpr std::array<SectionDescriptor, 6> kASections = {{
    {AHeader, "header"},
    {LoadCases, "load cases"},
    {LoadCaseMatrix, "load case matrix"},
    {LoadCaseFactors, "load case factors"},
    {LoadCaseList, "load case list"},
    {LoadCaseValues, "load case values"},
}};
constexpr std::array<SectionDescriptor, 1> kUlsSections = {{{UlsHeader, "header"}}};
constexpr std::array<SectionDescriptor, 2> kPoSections = {{
    {PoHeader, "header"},
    {PoRecord, "record"},
}};
constexpr std::array<SectionDescriptor, 2> kPoaSections = {{
    {PoaHeader, "header"},
    {PoaRecords, "records"},
}};
constexpr std::array<SectionDescriptor, 2> kPofSections = {{
    {PofHeader, "header"},
    {PofRecord, "record"},
}};
constexpr std::array<SectionDescriptor, 6> kLSections = {{
    {LHeader, "header"},
    {GravityCases, "gravity cases"},
    {PushoverCases, "pushover cases"},
    {PushoverDriftFlags, "pushover drift flags"},
    {DynamicCases, "dynamic cases"},
    {OtherCaseLists, "other case lists"},
}};
constexpr std::array<SectionDescriptor, 18> kSSections = {{
    {SHeader, "header"},
    {Nodes, "nodes"},
    {Diaphragms, "diaphragms"},
    {NodalMass, "nodal mass"},
    {ElemGroups, "element groups"},
    {Elems, "elements"},
    {StructureFrames, "structure frames"},
    {NodalLoads, "nodal loads"},
    {FrameLoads, "frame loads"},
    {SelfWeight, "self weight"},
    {ZeroWords, "zero words"},
    {SectionCuts, "section cuts"},
    {CutMembers, "cut members"},
    {CutGroups, "cut groups"},
    {Drifts, "drifts"},
    {LimitStates, "limit states"},
    {ComponentLibrary, "component library"},
    {Tail, "tail"},
}};

constexpr std::array<StructureFileLayout, 7> kFiles = {{
    {"A", kASections},
    {"ULS", kUlsSections},
    {"PO", kPoSections},
    {"POA", kPoaSections},
    {"POF", kPofSections},
    {"L", kLSections},
    {"S", kSSections},
}};

}  // namespace

std::span<const StructureFileLayout> StructureFileLayouts() { return kFiles; }

const StructureFileLayout* FindStructureFileLayout(std::string_view suffix) {
  for (const StructureFileLayout& file : kFiles) {
    if (file.suffix == suffix) return &file;
  }
  return nullptr;
}

std::span<const RecordLayout> RecordLayouts() { return kLayouts; }

const RecordLayout* FindRecordLayout(std::string_view record) {
  for (const RecordLayout& layout : kLayouts) {
    if (layout.record == record) return &layout;
  }
  return nullptr;
}

std::string FieldDisplayName(std::span<const FieldDef> fields, std::size_t index) {
  const std::string_view name = fields[index].name;
  int occurrences = 0;
  int entry = 0;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (fields[i].name != name) continue;
    ++occurrences;
    if (i <= index) ++entry;
  }
  if (occurrences == 1) return std::string(name);
  return std::string(name) + "(" + std::to_string(entry) + ")";
}

}  // namespace vtt
