// Frame and area sections into the cross-section components of the component library.
//
// A frame section gives a beam and a column section, an embedded-beam section a beam
// section; an area section gives, by its material or its layer classification, elastic
// walls, inelastic (fibre) walls and slabs, a general wall one horizontal and possibly one
// vertical inelastic record. Each record's number goes back into the section's id members,
// where the compound components pick it up. The material ids set by the material step are
// what the records refer to, so this step runs right after it.
#pragma once

#include <cstdint>
#include <string_view>

namespace vtt {

class TrelkStore;
class VaskModelObj;
class VaskPropFrameSectObj;

// The target application's section types.
enum class XecKind : std::uint8_t {
  ConcreteBeam = 3,  // concrete and embedded beams
  SteelBeam = 4,
  ConcreteColumn = 6,
  SteelColumn = 7,
  Slab = 8,
  ShearWallInel = 10,
  ShearWallElastic = 11,
  GeneralWallInel = 12,
  GeneralWallElastic = 13,
};

// How the target application draws a frame section.
enum class XecShape : std::uint8_t { General = 0, SteelI = 1, Rectangle = 2 };

// The thirteen values of a beam or column section, in the order of the record.
struct XecFrameValues {
  double Area = 0.0;
  double TorsionConstant = 0.0;
  double Inertia22 = 0.0;
  double Inertia33 = 0.0;
  double ShearArea2 = 0.0;
  double ShearArea3 = 0.0;
  double Modulus = 0.0;
  double Poisson = 0.0;
  double ShearModulus = 0.0;
  double Depth2 = 0.0;
  double Depth3 = 0.0;
  double FlangeThickness = 0.0;
  double WebThickness = 0.0;
};

// The section's constants and the moduli of its material, which must be set.
XecFrameValues XecFrameValuesOf(const VaskPropFrameSectObj& section);

// Ten passes: steel, concrete and embedded beams; steel and concrete columns; elastic
// shear and general walls; fibre walls; inelastic general walls; slabs. Writes the id
// members of every section it uses.
void FillTrelkCrossSections(const VaskModelObj& model, TrelkStore& store);

// Growth of the five lists; each returns the new count. The inelastic wall list carries
// its sub-records along.
std::int32_t AddTrelkXecBeam(TrelkStore& store);
std::int32_t AddTrelkXecColumn(TrelkStore& store);
std::int32_t AddTrelkXecWallElastic(TrelkStore& store);
std::int32_t AddTrelkXecWallInel(TrelkStore& store);
std::int32_t AddTrelkXecSlab(TrelkStore& store);

// Each writes record `number` of its list, with `id` as the record's own number. Real
// values are narrowed to single precision as stored.
void SetTrelkXecBeam(TrelkStore& store, std::int32_t number, std::string_view name,
                     std::int32_t id, XecKind kind, XecShape shape, const XecFrameValues& values);
void SetTrelkXecColumn(TrelkStore& store, std::int32_t number, std::string_view name,
                       std::int32_t id, XecKind kind, XecShape shape,
                       const XecFrameValues& values);
void SetTrelkXecWallElastic(TrelkStore& store, std::int32_t number, std::string_view name,
                            std::int32_t id, XecKind kind, std::int32_t material_id,
                            double thickness, double bending_thickness, double modulus,
                            double poisson);
// `rebar_percent` is the rebar area as a percentage of the concrete thickness. Ends by
// laying out the fibre table.
void SetTrelkXecWallInel(TrelkStore& store, std::int32_t number, std::string_view name,
                         std::int32_t id, XecKind kind, std::int32_t option1,
                         std::int32_t concrete_fibres, std::int32_t rebar_fibres,
                         std::int32_t concrete_material, std::int32_t rebar_material,
                         double thickness, double bending_thickness, double rebar_percent,
                         double modulus, double poisson);
// `modulus` is taken and not stored: the slab refers to its elastic slab material instead.
void SetTrelkXecSlab(TrelkStore& store, std::int32_t number, std::string_view name,
                     std::int32_t id, std::int32_t material_id, double thickness,
                     double bending_thickness, double modulus, double unit_weight);

// Fills the fibre table of inelastic wall `number`: the concrete fibres first, then the
// rebar fibres, each set spread evenly over the wall length, areas negative. Together the
// fibres may take at most the table's 16 slots.
void LayOutTrelkWallFibres(TrelkStore& store, std::int32_t number, std::int32_t concrete_fibres,
                           std::int32_t rebar_fibres, std::int32_t concrete_material,
                           std::int32_t rebar_material, double thickness, double rebar_percent);

}  // namespace vtt
