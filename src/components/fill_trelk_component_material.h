// Materials into the component library.
//
// One source material gives one record for each use that a later cross section may make
// of it: rebar an inelastic fibre; concrete an inelastic fibre, an inelastic shear and an
// elastic fibre, shear and slab; steel an elastic fibre, shear and slab. Each record's
// number goes back into the material's id members, so the cross-section step reads the
// numbers and never searches. Materials of any other type give nothing.
#pragma once

#include <cstdint>
#include <string_view>

namespace vtt {

class TrelkStore;
class VaskModelObj;

enum class MatInelKind : std::uint8_t { RebarFiber = 0, ConcreteFiber = 1, ConcreteShear = 2 };

// Six passes over the materials, in the order inelastic rebar fibres, concrete fibres,
// concrete shears, then elastic fibres, shears and slabs. The three inelastic passes share
// one list and one running number. Writes the id members of every material it uses.
void FillTrelkMaterials(const VaskModelObj& model, TrelkStore& store);

// Growth of the four lists; each returns the new count. The inelastic list carries its
// strength-loss records and the shear list its sub-records along.
std::int32_t AddTrelkMatInel(TrelkStore& store);
std::int32_t AddTrelkMatElasticFiber(TrelkStore& store);
std::int32_t AddTrelkMatElasticShear(TrelkStore& store);
std::int32_t AddTrelkMatElasticSlab(TrelkStore& store);

// Each writes record `number` of its list, with `id` as the record's own number. Values
// are in the program's units; real values are narrowed to single precision as stored.
// V1 to V4 go to side A for rebar fibres and concrete shears, to side B for concrete fibres.
void SetTrelkMatInel(TrelkStore& store, std::int32_t number, std::string_view name,
                     std::int32_t id, MatInelKind kind, double stiffness, double v1, double v2,
                     double v3, double v4);
void SetTrelkMatElasticFiber(TrelkStore& store, std::int32_t number, std::string_view name,
                             std::int32_t id, double modulus);
void SetTrelkMatElasticShear(TrelkStore& store, std::int32_t number, std::string_view name,
                             std::int32_t id, double modulus);
void SetTrelkMatElasticSlab(TrelkStore& store, std::int32_t number, std::string_view name,
                            std::int32_t id, double modulus, double poisson);

}  // namespace vtt
