// FEMA beam and FEMA column components into the component library.
//
// Every frame section of steel or concrete gives one FEMA beam and one FEMA column
// component, whether or not any frame of it has a hinge. The host holds none of the
// capacity data these components need, so the records carry the section's elastic
// properties, a fixed set of deformation parameters and placeholder capacities from
// simple formulas, which the user is told to replace. Each record's number goes back into
// the section's idTrelkInelasFema... members for the compound step.
#pragma once

#include <cstdint>
#include <string_view>

namespace vtt {

class TrelkStore;
class VaskModelObj;
class VaskPropFrameSectObj;

enum class FemaBeamKind : std::uint8_t { Steel = 1, Concrete = 2 };
enum class FemaColumnKind : std::uint8_t { Steel = 14, Concrete = 15 };

// The section's elastic properties that both records carry, in the order of the record.
struct FemaElasticValues {
  double E = 0.0;
  double Nu = 0.0;
  double G = 0.0;
  double Area = 0.0;
  double As2 = 0.0;
  double As3 = 0.0;
  double TorsionConst = 0.0;
  double I22 = 0.0;
  double I33 = 0.0;
};

// The section's constants and the moduli of its material, which must be set.
FemaElasticValues FemaElasticValuesOf(const VaskPropFrameSectObj& section);

// Four passes over the frame sections: steel beams, concrete beams, steel columns,
// concrete columns. Steel comes first in each of the two lists. Writes the four
// idTrelkInelasFema... members of every steel and concrete section.
void FillTrelkFemaComponents(const VaskModelObj& model, TrelkStore& store);

// Growth of the two lists, each with its sub-record array; each returns the new count.
std::int32_t AddTrelkFemaBeam(TrelkStore& store);
std::int32_t AddTrelkFemaColumn(TrelkStore& store);

// Each writes record `componentNumber` of its list with `number` as the record's own
// number. `sectionSubKind` is the target's type of the cross section
// `crossSectionNumber`. Values are in the program's units; the capacities are worked out
// in double precision and every real value is narrowed to single precision as stored.
// The column's `strength` is the material's Fu for steel and its ConcFc for concrete.
void FillTrelkFemaBeamRecord(TrelkStore& store, std::int32_t componentNumber,
                             std::string_view name, std::int32_t number, FemaBeamKind kind,
                             std::int32_t sectionSubKind, std::int32_t crossSectionNumber,
                             const FemaElasticValues& values);
void FillTrelkFemaColumnRecord(TrelkStore& store, std::int32_t componentNumber,
                               std::string_view name, std::int32_t number, FemaColumnKind kind,
                               std::int32_t sectionSubKind, std::int32_t crossSectionNumber,
                               const FemaElasticValues& values, double strength);

}  // namespace vtt
