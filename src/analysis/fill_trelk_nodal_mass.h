// The one mass pattern of the structure, "Nodal Mass", from the mass the reading left on
// the source nodes.
//
// It runs after the nodes are in the structure, whose restraints it reads, and before the
// load patterns, since the acceleration patterns read the mass it leaves.
#pragma once

#include <cstdint>
#include <string_view>

#include "store/record.h"

namespace vtt {

class TrelkStore;
class VaskModelObj;

// The mass pattern record (64 bytes): its name, then zero bytes.
namespace nodal_mass_pattern_rec {
inline constexpr std::uint32_t kSize = 64;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
}  // namespace nodal_mass_pattern_rec

// One element of the mass matrix (mass pattern, node), 24 bytes: the masses of U1, U2, U3,
// R1, R2, R3.
namespace nodal_mass_rec {
inline constexpr std::uint32_t kSize = 24;
constexpr FieldDef Mass(int dof) {
  constexpr std::string_view names[] = {"MassU1", "MassU2", "MassU3",
                                         "MassR1", "MassR2", "MassR3"};
  return F32Field(names[dof - 1], static_cast<std::uint32_t>(dof - 1) * 4);
}
}  // namespace nodal_mass_rec

// Makes the pattern "Nodal Mass" the only mass pattern and fills its masses, node by node
// and freedom by freedom, in single precision. A restrained freedom takes no mass. With
// element mass in the mass source every node's PointMass goes in; with load mass, each
// of LoadMass, FrameLoadMass and AreaLoadMass goes in only where it is above 0, so that
// uplift in one of them does not eat the mass of another.
void FillTrelkNodalMass(const VaskModelObj& model, TrelkStore& store);

}  // namespace vtt
