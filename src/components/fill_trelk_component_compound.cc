#include "components/fill_trelk_component_compound.h"

#include <vector>

#include "source/vask_model.h"
#include "store/compound_records.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {

constexpr int kSourceInelastic = 1;
constexpr int kSourceElastic = 2;
constexpr int kSourceCrossSection = 3;
constexpr int kFlagMember = 1;
constexpr int kFlagRelease = 12;
constexpr int kReleaseShape = 4;
constexpr int kReleaseKind = 4;
// Release component 1 is "EmbedBeamRelease", made in every transfer.
constexpr int kEmbedBeamRelease = 1;

struct Part {
  int source;
  int shape;
  int flag;
  int kind;
  int component;
  double length_i;
  double length_j;
};

Part MemberPart(int source, int shape, int kind, int component, double length) {
  return {source, shape, kFlagMember, kind, component, length, length};
}

// A release part has no length of its own.
Part ReleasePart(int release) {
  return {kSourceElastic, kReleaseShape, kFlagRelease, kReleaseKind, release, 0.0, 0.0};
}

RecordRef FrameCompound(TrelkStore& store, std::int32_t number) {
  return store.Components(Component::CpdFrame).Record(number);
}

void WriteFrameCompound(TrelkStore& store, std::int32_t number, const std::string& name,
                        std::int32_t numberI2, const std::vector<Part>& parts,
                        double weightPerLength) {
  using namespace cpd_frame_rec;
  RecordRef rec = FrameCompound(store, number);
  rec.SetText(Name, name);
  rec.SetInt(ComponentNumber, number);
  rec.SetInt(ComponentKind, 2);
  rec.SetInt(UnitForce, store.Units.UnitForce);
  rec.SetInt(UnitLength, store.Units.UnitLength);
  rec.SetInt(PartCount, static_cast<std::int64_t>(parts.size()));
  rec.SetInt(Option1, 1);
  rec.SetInt(HasSubRecord, 1);
  int p = 0;
  for (const Part& part : parts) {
    ++p;
    rec.SetInt(PartSource(p), part.source);
    rec.SetInt(PartShape(p), part.shape);
    rec.SetInt(PartFlag(p), part.flag);
    rec.SetInt(PartMode(p), 0);
    rec.SetInt(PartKind(p), part.kind);
    rec.SetInt(PartComponent(p), part.component);
    rec.SetReal(PartLengthI(p), part.length_i);
    rec.SetReal(PartLengthJ(p), part.length_j);
  }
  rec.SetInt(ComponentNumberCopy, numberI2);
  rec.SetReal(WeightPerLength, weightPerLength);
}

std::int32_t AddTrelkCpdFrame(TrelkStore& store) { return store.AddComponent(Component::CpdFrame); }
std::int32_t AddTrelkCpdWall(TrelkStore& store) { return store.AddComponent(Component::CpdWall); }
std::int32_t AddTrelkCpdGWall(TrelkStore& store) { return store.AddComponent(Component::CpdGWall); }

// One pass of the plain member compounds.
struct MemberPass {
  int mat_type;
  const char* prefix;
  int part_source;
  int part_kind;
  int VaskPropFrameSectObj::*component;
  int part_shape;
  bool one_part;
  int VaskPropFrameSectObj::*stored_in;
};

constexpr int kSteel = host_code::kMaterialSteel;
constexpr int kConcrete = host_code::kMaterialConcrete;
using S = VaskPropFrameSectObj;

const MemberPass kMemberPasses[] = {
    {kSteel, "CpdBmS-", kSourceCrossSection, 4, &S::idTrelkXsectSteelBeam, 2, true,
     &S::idTrelkCompoundSteelBeam},
    {kSteel, "CpdFemaBmS-", kSourceInelastic, 1, &S::idTrelkInelasFemaSteelBeam, 3, false,
     &S::idTrelkCompoundFemaSteelBeam},
    {kSteel, "CpdColS-", kSourceCrossSection, 7, &S::idTrelkXsectSteelCol, 3, true,
     &S::idTrelkCompoundSteelCol},
    {kSteel, "CpdFemaColS-", kSourceInelastic, 14, &S::idTrelkInelasFemaSteelCol, 7, false,
     &S::idTrelkCompoundFemaSteelCol},
    {kConcrete, "CpdBmC-", kSourceCrossSection, 3, &S::idTrelkXsectConcBeam, 2, true,
     &S::idTrelkCompoundConcBeam},
    {kConcrete, "CpdFemaBmC-", kSourceInelastic, 2, &S::idTrelkInelasFemaConcBeam, 3, false,
     &S::idTrelkCompoundFemaConcBeam},
    {kConcrete, "CpdColC-", kSourceCrossSection, 6, &S::idTrelkXsectConcCol, 3, true,
     &S::idTrelkCompoundConcCol},
    {kConcrete, "CpdFemaColC-", kSourceInelastic, 15, &S::idTrelkInelasFemaConcCol, 7, false,
     &S::idTrelkCompoundFemaConcCol},
};

// The release compound of a frame by its material and role: the first row that fits.
struct ReleaseRow {
  const char* prefix;
  int part_kind;
  int VaskPropFrameSectObj::*section;
  int part_shape;
};

const ReleaseRow* ReleaseRowFor(int trelk_mat_type, int trelk_frame_type) {
  static const ReleaseRow kSteelBeam{"CpdRelBmSteel-", 4, &S::idTrelkXsectSteelBeam, 2};
  static const ReleaseRow kSteelColumn{"CpdRelColS-", 7, &S::idTrelkXsectSteelCol, 3};
  static const ReleaseRow kConcBeam{"CpdRelBmC-", 3, &S::idTrelkXsectConcBeam, 2};
  static const ReleaseRow kConcColumn{"CpdRelColC-", 6, &S::idTrelkXsectConcCol, 3};
  const bool beam = trelk_frame_type == 2;
  const bool column_or_brace = trelk_frame_type == 1 || trelk_frame_type == 3;
  if (trelk_mat_type == 2 && beam) return &kSteelBeam;
  if (trelk_mat_type == 2 && column_or_brace) return &kSteelColumn;
  if (trelk_mat_type == 1 && beam) return &kConcBeam;
  if (trelk_mat_type == 1 && column_or_brace) return &kConcColumn;
  return nullptr;
}

double WeightPerLength(const VaskPropFrameSectObj& section) {
  return section.area * section.PropMatObj->UnitWeight;
}

}  // namespace

void FillTrelkCpdMemberRecord(TrelkStore& store, std::int32_t number, const std::string& name,
                              std::int32_t numberI2, int partSource, int partKind,
                              int component, int partShape, double weightPerLength,
                              bool onePart) {
  std::vector<Part> parts;
  if (onePart) {
    parts.push_back(MemberPart(partSource, partShape, partKind, component, 1.0));
  } else {
    parts.push_back(MemberPart(partSource, partShape, partKind, component, 0.5));
    parts.push_back(MemberPart(partSource, partShape, partKind, component, 0.5));
  }
  WriteFrameCompound(store, number, name, numberI2, parts, weightPerLength);
}

void FillTrelkCpdReleaseRecord(TrelkStore& store, std::int32_t number, const std::string& name,
                               std::int32_t numberI2, int partSource, int partKind,
                               int component, int releaseI, int releaseJ, int partShape,
                               double weightPerLength, bool isIReleased, bool isJReleased) {
  std::vector<Part> parts;
  if (isIReleased && releaseI != 0) parts.push_back(ReleasePart(releaseI));
  parts.push_back(MemberPart(partSource, partShape, partKind, component, 1.0));
  if (isJReleased && releaseJ != 0) parts.push_back(ReleasePart(releaseJ));
  WriteFrameCompound(store, number, name, numberI2, parts, weightPerLength);
}

void FillTrelkCpdEmbedRecord(TrelkStore& store, std::int32_t number, const std::string& name,
                             std::int32_t numberI2, int partKind, int component,
                             int releaseNumber, int partShape) {
  const std::vector<Part> parts = {
      ReleasePart(releaseNumber),
      MemberPart(kSourceCrossSection, partShape, partKind, component, 1.0)};
  // An embedded beam adds no weight.
  WriteFrameCompound(store, number, name, numberI2, parts, 0.0);
}

void FillTrelkCpdWallRecord(TrelkStore& store, std::int32_t number, const std::string& name,
                            std::int32_t numberI2, int wallSectionKind, int wallSection,
                            int shearMaterial, double thickness, double e, double unitWeight) {
  using namespace cpd_wall_rec;
  RecordRef rec = store.Components(Component::CpdWall).Record(number);
  rec.SetText(Name, name);
  rec.SetInt(ComponentNumber, number);
  rec.SetInt(ComponentKind, 3);
  rec.SetInt(UnitForce, store.Units.UnitForce);
  rec.SetInt(UnitLength, store.Units.UnitLength);
  rec.SetInt(WallSectionKind, wallSectionKind);
  rec.SetInt(WallSection, wallSection);
  rec.SetInt(ShearMaterialKind, 5);
  rec.SetInt(ShearMaterial, shearMaterial);
  rec.SetReal(Thickness1, thickness);
  rec.SetReal(E, e);
  rec.SetReal(Thickness2, thickness);
  rec.SetInt(ComponentNumberCopy, numberI2);
  rec.SetReal(Thickness3, thickness);
  rec.SetReal(UnitWeight, unitWeight);
}

void FillTrelkCpdGWallRecord(TrelkStore& store, std::int32_t number, const std::string& name,
                             std::int32_t numberI2, int verticalSectionKind, int verticalSection,
                             int horizontalSection, int shearMaterial, double thickness,
                             double unitWeight) {
  using namespace cpd_gwall_rec;
  (void)numberI2;  // the general-wall record holds its number once only
  RecordRef rec = store.Components(Component::CpdGWall).Record(number);
  rec.SetText(Name, name);
  rec.SetInt(ComponentNumber, number);
  rec.SetInt(ComponentKind, 4);
  rec.SetInt(UnitForce, store.Units.UnitForce);
  rec.SetInt(UnitLength, store.Units.UnitLength);
  rec.SetInt(VerticalSectionKind, verticalSectionKind);
  rec.SetInt(VerticalSection, verticalSection);
  rec.SetInt(HorizontalSectionKind, 12);
  rec.SetInt(HorizontalSection, horizontalSection);
  rec.SetInt(ShearMaterialKind, 2);
  rec.SetInt(ShearMaterial, shearMaterial);
  rec.SetInt(DiagonalKind, 3);
  rec.SetReal(Thickness1, thickness);
  rec.SetReal(Angle1, 45.0);
  rec.SetReal(Angle2, 45.0);
  rec.SetInt(DiagonalComponent, 0);
  rec.SetReal(Thickness2, thickness);
  rec.SetReal(UnitWeight, unitWeight);
}

void FillTrelkCompoundComponents(const VaskModelObj& model, TrelkStore& store) {
  // Frame compounds: one running number through the member, release and embed stages.
  store.Components(Component::CpdFrame).SetCount(0);
  std::int32_t number = 1;

  // Stage 1: plain member compounds, eight passes over the sections.
  for (const MemberPass& pass : kMemberPasses) {
    for (int i = 1; i <= model.PropFrameSectNum(); ++i) {
      VaskPropFrameSectObj& section = *model.PropFrameSectObj(i);
      if (section.PropMatObj == nullptr || section.PropMatObj->MatType != pass.mat_type) continue;
      AddTrelkCpdFrame(store);
      FillTrelkCpdMemberRecord(store, number, NameWithSuffix(pass.prefix, section.Label, i),
                               number, pass.part_source, pass.part_kind,
                               section.*pass.component, pass.part_shape,
                               WeightPerLength(section), pass.one_part);
      section.*pass.stored_in = number;
      ++number;
    }
  }

  // Stage 2: frames with end releases. Frames of one section whose I ends carry the same
  // release object share the compound of the first of them, whatever their J ends.
  for (int f = 1; f <= model.FrameNum(); ++f) {
    VaskFrameObj& frame = *model.FrameObj(f);
    const bool released_i = frame.isIReleased();
    const bool released_j = frame.isJReleased();
    if (!released_i && !released_j) continue;
    const int release_i = frame.ReleaseIObj == nullptr ? 0 : frame.ReleaseIObj->idTrelkXecElaRelease;
    const int release_j = frame.ReleaseJObj == nullptr ? 0 : frame.ReleaseJObj->idTrelkXecElaRelease;
    VaskPropFrameSectObj* section = frame.PropFrameSectObj;
    if (section == nullptr || section->PropMatObj == nullptr) continue;
    const ReleaseRow* row = ReleaseRowFor(frame.TrelkMatType, frame.TrelkFrameType);
    if (row == nullptr) continue;
    const int index = section->GetIdxRelease(frame.ReleaseIObj, frame.ReleaseJObj);
    if (index != -1) {
      frame.idCompdRelealse = section->idTrelkRelease(index);
      continue;
    }
    section->AddRelease(frame.ReleaseIObj, frame.ReleaseJObj, number);
    AddTrelkCpdFrame(store);
    FillTrelkCpdReleaseRecord(store, number, NameWithSuffix(row->prefix, section->Label, number),
                              number, kSourceCrossSection, row->part_kind,
                              section->*row->section, release_i, release_j, row->part_shape,
                              WeightPerLength(*section), released_i, released_j);
    frame.idCompdRelealse = number;
    ++number;
  }

  // Stage 3: embedded beams, with no test of material.
  for (int i = 1; i <= model.PropEmbedFrameSectNum(); ++i) {
    VaskPropFrameSectObj& section = *model.PropEmbedFrameSectObj(i);
    AddTrelkCpdFrame(store);
    FillTrelkCpdEmbedRecord(store, number, "CpdEmbed-" + std::to_string(i), number, 3,
                            section.idTrelkXsectEmbedBeam, kEmbedBeamRelease, 2);
    section.idTrelkCompoundEmbededBeam = number;
    ++number;
  }

  // Stage 4: wall compounds.
  store.Components(Component::CpdWall).SetCount(0);
  std::int32_t wall = 1;
  for (int i = 1; i <= model.PropAreaSectNum(); ++i) {
    VaskPropAreaSectObj& section = *model.PropAreaSectObj(i);
    if (section.PropType != 1) continue;
    const char* prefix = nullptr;
    int kind = 0;
    int wall_section = 0;
    const VaskPropMaterialObj* material = nullptr;
    double thickness = 0.0;
    if (section.ShellType == 1 && section.PropMatObj != nullptr &&
        (section.PropMatObj->MatType == kConcrete || section.PropMatObj->MatType == kSteel)) {
      prefix = section.PropMatObj->MatType == kConcrete ? "CpdWallConcEla-" : "CpdWallSteelEla-";
      kind = 11;
      wall_section = section.idTrelkXSectWallEla;
      material = section.PropMatObj;
      thickness = section.Thick;
    } else if (section.ShellType == 6 && section.LayerTrelkType == 1 &&
               section.LayerPropMatConcObj != nullptr) {
      prefix = "CpdWallConcV-";
      kind = 10;
      wall_section = section.idTrelkXSectWallIne;
      material = section.LayerPropMatConcObj;
      thickness = section.LayerTrelkThick;
    } else {
      continue;
    }
    AddTrelkCpdWall(store);
    FillTrelkCpdWallRecord(store, wall, NameWithSuffix(prefix, section.Label, i), wall, kind,
                           wall_section, material->idTrelkElasticShear, thickness, material->E(),
                           material->UnitWeight);
    section.idTrelkCompoundWall = wall;
    ++wall;
  }

  // Stage 5: general-wall compounds.
  store.Components(Component::CpdGWall).SetCount(0);
  std::int32_t general = 1;
  for (int i = 1; i <= model.PropAreaSectNum(); ++i) {
    VaskPropAreaSectObj& section = *model.PropAreaSectObj(i);
    if (section.PropType != 1 || section.ShellType != 6 || section.LayerPropMatConcObj == nullptr) {
      continue;
    }
    const char* prefix = nullptr;
    int vertical_kind = 0;
    int vertical = 0;
    if (section.LayerTrelkType == 2) {
      prefix = "CpdGWallConcH-";
      vertical_kind = 13;
      vertical = section.idTrelkXSectGWallEla;
    } else if (section.LayerTrelkType == 3) {
      prefix = "CpdGWallConcHV-";
      vertical_kind = 12;
      vertical = section.idTrelkXSectGWallIneV;
    } else {
      continue;
    }
    const VaskPropMaterialObj& concrete = *section.LayerPropMatConcObj;
    AddTrelkCpdGWall(store);
    FillTrelkCpdGWallRecord(store, general, NameWithSuffix(prefix, section.Label, i), general,
                            vertical_kind, vertical, section.idTrelkXSectGWallIneH,
                            concrete.idTrelkInelasticShear, section.LayerTrelkThick,
                            concrete.UnitWeight);
    section.idTrelkCompoundGWall = general;
    ++general;
  }
}

}  // namespace vtt
