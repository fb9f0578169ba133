// The field tables: every field constant that the fill steps write through stands in the
// table of its record, and each table covers its record without overlaps.
#include "store/record_layouts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

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

bool Same(const FieldDef& a, const FieldDef& b) {
  return a.name == b.name && a.offset == b.offset && a.kind == b.kind && a.width == b.width;
}

// Every constant in `constants` is an entry of the record's table.
void ExpectInTable(std::string_view record, std::vector<FieldDef> constants) {
  const RecordLayout* layout = FindRecordLayout(record);
  ASSERT_NE(layout, nullptr) << record;
  for (const FieldDef& c : constants) {
    const bool found = std::any_of(layout->fields.begin(), layout->fields.end(),
                                   [&](const FieldDef& f) { return Same(f, c); });
    EXPECT_TRUE(found) << record << " has no entry " << c.name << " at " << c.offset;
  }
}

TEST(RecordLayouts, EveryTableCoversItsRecordWithoutOverlaps) {
  for (const RecordLayout& layout : RecordLayouts()) {
    std::uint32_t end = 0;
    for (const FieldDef& f : layout.fields) {
      EXPECT_GE(f.offset, end) << layout.record << " " << f.name << " overlaps the field before";
      EXPECT_LE(f.offset + f.width, layout.size) << layout.record << " " << f.name;
      end = f.offset + f.width;
    }
    EXPECT_FALSE(layout.fields.empty()) << layout.record;
  }
}

TEST(RecordLayouts, OverlapTestFailsOnOverlapsAndOverruns) {
  EXPECT_TRUE(field_table::FitsWithoutOverlap(
      field_table::List(I16Field("A", 0), I32Field("B", 2)), 6));
  EXPECT_FALSE(field_table::FitsWithoutOverlap(
      field_table::List(I32Field("A", 0), I16Field("B", 2)), 6));
  EXPECT_FALSE(field_table::FitsWithoutOverlap(field_table::List(I32Field("A", 4)), 6));
  // Join sorts by offset.
  constexpr auto joined = field_table::Join(field_table::List(I16Field("B", 4)),
                                            field_table::List(I16Field("A", 0)));
  EXPECT_EQ(joined[0].name, "A");
  EXPECT_EQ(joined[1].name, "B");
}

TEST(RecordLayouts, RecordSizesAgreeWithTheStoreAndTheComponentLibrary) {
  EXPECT_EQ(FindRecordLayout("TrelkNodeRec")->size, record_size::kNode);
  EXPECT_EQ(FindRecordLayout("TrelkElemRec")->size, record_size::kElem);
  EXPECT_EQ(FindRecordLayout("TrelkElemGroupRec")->size, record_size::kElemGroup);
  EXPECT_EQ(FindRecordLayout("TrelkDriftRec")->size, record_size::kDrift);
  EXPECT_EQ(FindRecordLayout("TrelkSectionCutRec")->size, record_size::kSectionCut);
  EXPECT_EQ(FindRecordLayout("TrelkCutMemberRec")->size, record_size::kCutMember);
  EXPECT_EQ(FindRecordLayout("TrelkGravityCaseRec")->size, record_size::kGravityCase);
  EXPECT_EQ(FindRecordLayout("TrelkPushoverCaseRec")->size, record_size::kPushoverCase);
  EXPECT_EQ(FindRecordLayout("TrelkDynamicCaseRec")->size, record_size::kDynamicCase);
  EXPECT_EQ(FindRecordLayout("TrelkLoadCaseRec")->size, record_size::kLoadCase);
  int library = 0;
  for (const ComponentListInfo& info : ComponentLibraryLayout()) {
    if (const RecordLayout* layout = FindRecordLayout(info.record)) {
      EXPECT_EQ(layout->size, info.record_size) << info.record;
      ++library;
    }
  }
  EXPECT_EQ(library, 16);
}

TEST(RecordLayouts, NodeAndDiaphragmConstants) {
  using namespace node_rec;
  std::vector<FieldDef> c = {PrevNode, NextNode, X,        Y,        Z,        Reserved1,
                             SlavedUX, SlavedUY, SlavedUZ, SlavedRX, SlavedRY, SlavedRZ,
                             SupportKind, InUse};
  for (int j = 1; j <= 6; ++j) {
    c.push_back(Restrained(j));
    c.push_back(FirstNodeMark(j));
  }
  ExpectInTable("TrelkNodeRec", c);
  ExpectInTable("TrelkDiaphragmRec", {diaphragm_rec::Name});
  ExpectInTable("TrelkNodalMassPatternRec", {nodal_mass_pattern_rec::Name});
  ExpectInTable("TrelkNodalMassRec", {nodal_mass_rec::Mass(1), nodal_mass_rec::Mass(6)});
}

TEST(RecordLayouts, ElementConstants) {
  using namespace elem_rec;
  ExpectInTable("TrelkElemRec", {GroupNumber, PrevElem, Node1, Node2, Node3, Node4, NextElem,
                                 ElemKind, ComponentSource, ComponentKind, Option1, Option2,
                                 elem_rec::Component, Angle1, Angle2});
  using namespace elem_group_rec;
  ExpectInTable("TrelkElemGroupRec", {elem_group_rec::Name, GroupKind, GroupSubKind, FirstElem,
                                      LastElem, Factor});
  ExpectInTable("TrelkFrameRec", {frame_rec::Name});
}

TEST(RecordLayouts, LoadConstants) {
  ExpectInTable("TrelkLoadNodePatternRec", {load_pattern_rec::Name, load_pattern_rec::PatternCode});
  ExpectInTable("TrelkSelfWeightPatternRec", {load_pattern_rec::Name});
  using namespace load_node_value_rec;
  ExpectInTable("TrelkLoadNodeValueRec", {F1, F2, F3, M1, M2, M3, Used});
  using namespace load_frame_value_rec;
  ExpectInTable("TrelkLoadFrameValueRec",
                {load_frame_value_rec::Kind, NextItem, Value1, Position1, Value2, Position2});
  ExpectInTable("TrelkLoadFrameGroupValueRec",
                {load_frame_group_value_rec::ElemCount, load_frame_group_value_rec::Reserved1,
                 load_frame_group_value_rec::ItemCount, load_frame_group_value_rec::FirstItem});
  ExpectInTable("TrelkLoadFrameGroupIndex", {load_frame_index::Value});
  ExpectInTable("TrelkSelfWeightElemFlag", {self_weight_flag::Flag});
}

TEST(RecordLayouts, CutAndDriftConstants) {
  using namespace section_cut_rec;
  ExpectInTable("TrelkSectionCutRec",
                {section_cut_rec::Name, FirstMember, LastMember, Flag, Value1, Value2, Value3});
  ExpectInTable("TrelkCutMemberRec", {cut_member_rec::End, cut_member_rec::Elem,
                                      cut_member_rec::Next});
  ExpectInTable("TrelkCutGroupRec", {cut_group_rec::Name, cut_group_rec::Kind,
                                     cut_group_rec::CutCount});
  ExpectInTable("TrelkDriftRec", {drift_rec::Name, drift_rec::Flag, drift_rec::Axis,
                                  drift_rec::TopNode, drift_rec::BottomNode});
}

TEST(RecordLayouts, CompoundConstants) {
  using namespace cpd_frame_rec;
  std::vector<FieldDef> c = {cpd_frame_rec::Name, cpd_frame_rec::ComponentNumber,
                             cpd_frame_rec::ComponentKind, cpd_frame_rec::UnitForce,
                             cpd_frame_rec::UnitLength, PartCount, cpd_frame_rec::Option1,
                             HasSubRecord, cpd_frame_rec::ComponentNumberCopy, WeightPerLength};
  for (int k = 1; k <= kMaxParts; ++k) {
    for (const FieldDef& f : {PartSource(k), PartShape(k), PartFlag(k), PartMode(k), PartKind(k),
                              PartComponent(k), PartLengthI(k), PartLengthJ(k)}) {
      c.push_back(f);
    }
  }
  ExpectInTable("TrelkCpdFrameRec", c);
  ExpectInTable("TrelkCpdWallRec",
                {cpd_wall_rec::Name, cpd_wall_rec::ComponentNumber, cpd_wall_rec::ComponentKind,
                 cpd_wall_rec::UnitForce, cpd_wall_rec::UnitLength, cpd_wall_rec::WallSectionKind,
                 cpd_wall_rec::WallSection, cpd_wall_rec::ShearMaterialKind,
                 cpd_wall_rec::ShearMaterial, cpd_wall_rec::Thickness1, cpd_wall_rec::E,
                 cpd_wall_rec::Thickness2, cpd_wall_rec::ComponentNumberCopy,
                 cpd_wall_rec::Thickness3, cpd_wall_rec::UnitWeight});
  using namespace cpd_gwall_rec;
  ExpectInTable("TrelkCpdGWallRec",
                {cpd_gwall_rec::Name, cpd_gwall_rec::ComponentNumber,
                 cpd_gwall_rec::ComponentKind, cpd_gwall_rec::UnitForce,
                 cpd_gwall_rec::UnitLength, VerticalSectionKind, VerticalSection,
                 HorizontalSectionKind, HorizontalSection, cpd_gwall_rec::ShearMaterialKind,
                 cpd_gwall_rec::ShearMaterial, DiagonalKind, cpd_gwall_rec::Thickness1, Angle1,
                 Angle2, DiagonalComponent, cpd_gwall_rec::Thickness2, cpd_gwall_rec::UnitWeight});
}

TEST(RecordLayouts, ComponentConstants) {
  using release_rec::Direction;
  std::vector<FieldDef> release = {release_rec::Name, release_rec::ComponentNumber,
                                   release_rec::ComponentKind, release_rec::ComponentNumberCopy};
  for (int d = 0; d < release_rec::kDirectionCount; ++d) {
    release.push_back(release_rec::Released(static_cast<Direction>(d)));
    release.push_back(release_rec::ReleaseStiffness(static_cast<Direction>(d)));
  }
  ExpectInTable("TrelkReleaseRec", release);
  ExpectInTable("TrelkEndZoneRec", {end_zone::Name, end_zone::Kind, end_zone::Mode,
                                    end_zone::Length1, end_zone::Factor4});
  ExpectInTable("TrelkMatInelRec", {mat_inel_rec::Name, mat_inel_rec::HasStrengthLoss,
                                    mat_inel_rec::Stiffness, mat_inel_rec::SideBValue4});
  ExpectInTable("TrelkMatElasticShearRec",
                {mat_elastic_shear_rec::Tagged1, mat_elastic_shear_rec::Tagged2,
                 mat_elastic_shear_rec::Tagged3, mat_elastic_shear_rec::Word7});
  ExpectInTable("TrelkMatElasticFiberRec", {mat_elastic_fiber_rec::Modulus});
  ExpectInTable("TrelkMatElasticSlabRec", {mat_elastic_slab_rec::Poisson});
  ExpectInTable("TrelkXecBeamRec", {xsect_beam_rec::Text2, xsect_beam_rec::RecordNumberAgain});
  ExpectInTable("TrelkXecColumnRec", {xsect_column_rec::WebThickness});
  ExpectInTable("TrelkXecWallElasticRec", {xsect_wall_elastic_rec::MaterialId});
  ExpectInTable("TrelkXecSlabRec", {xsect_slab_rec::MaterialIdAgain});
  std::vector<FieldDef> wall = {xsect_wall_inel_rec::HasSubRecord, xsect_wall_inel_rec::Poisson};
  for (int k = 1; k <= xsect_wall_inel_rec::kFibreSlots; ++k) {
    for (const FieldDef& f :
         {xsect_wall_inel_rec::FibreGroup(k), xsect_wall_inel_rec::FibreFlag(k),
          xsect_wall_inel_rec::FibreIsConcrete(k), xsect_wall_inel_rec::FibreMaterial(k),
          xsect_wall_inel_rec::FibreArea(k), xsect_wall_inel_rec::FibrePosition(k)}) {
      wall.push_back(f);
    }
  }
  ExpectInTable("TrelkXecWallInelRec", wall);
  ExpectInTable("TrelkIneFemaBeamRec", {fema_beam_rec::Option3, fema_beam_rec::LimitState3,
                                        fema_beam_rec::I33});
  ExpectInTable("TrelkIneFemaColumnRec", {fema_column_rec::Param9, fema_column_rec::LimitState3});
}

TEST(RecordLayouts, CaseConstants) {
  std::vector<FieldDef> gravity = {gravity_case_rec::Name, gravity_case_rec::Kind,
                                   gravity_case_rec::Text, gravity_case_rec::LoadCount};
  std::vector<FieldDef> pushover = {pushover_case_rec::Mode, pushover_case_rec::Criterion,
                                    pushover_case_rec::Value3, pushover_case_rec::DriftName};
  for (int k = 1; k <= 20; ++k) {
    gravity.push_back(gravity_case_rec::LoadKind(k));
    gravity.push_back(gravity_case_rec::LoadName(k));
    gravity.push_back(gravity_case_rec::LoadFactor(k));
    pushover.push_back(pushover_case_rec::LoadKind(k));
    pushover.push_back(pushover_case_rec::LoadFactor(k));
  }
  for (int k = 1; k <= pushover_case_rec::kModeSlots; ++k) {
    pushover.push_back(pushover_case_rec::ModeNumber(k));
  }
  ExpectInTable("TrelkGravityCaseRec", gravity);
  ExpectInTable("TrelkPushoverCaseRec", pushover);
  std::vector<FieldDef> dynamic = {dynamic_case_rec::Duration, dynamic_case_rec::Value2};
  for (int s = 1; s <= 3; ++s) {
    dynamic.push_back(dynamic_case_rec::RecordFolder(s));
    dynamic.push_back(dynamic_case_rec::RecordPoints(s));
    dynamic.push_back(dynamic_case_rec::TimeFactor(s));
  }
  ExpectInTable("TrelkDynamicCaseRec", dynamic);
  ExpectInTable("TrelkLoadCaseRec", {load_case_rec::Title, load_case_rec::DampRatio2,
                                     load_case_rec::HasDetail});
  ExpectInTable("RecordFileHeader", {record_file_rec::Title, record_file_rec::PointCount,
                                     record_file_rec::Duration});
}

TEST(RecordLayouts, RepeatedNamesAreShownWithTheirEntryNumber) {
  const RecordLayout* layout = FindRecordLayout("TrelkCpdFrameRec");
  ASSERT_NE(layout, nullptr);
  std::vector<std::string> names;
  for (std::size_t i = 0; i < layout->fields.size(); ++i) {
    names.push_back(FieldDisplayName(layout->fields, i));
  }
  EXPECT_NE(std::find(names.begin(), names.end(), "PartComponent(13)"), names.end());
  EXPECT_NE(std::find(names.begin(), names.end(), "PartCount"), names.end());
  EXPECT_EQ(std::find(names.begin(), names.end(), "PartCount(1)"), names.end());
  EXPECT_EQ(FindRecordLayout("TrelkNoSuchRec"), nullptr);
}

}  // namespace
}  // namespace vtt
