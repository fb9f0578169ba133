// Nodes and rigid diaphragms into the structure.
//
// Record 1 of the node list is a node of the structure's own at the origin; source node i
// becomes record i + 1, the number its reader left in VaskNodeObj::id, so later steps use
// `id` as a record number without a look-up. Each diaphragm becomes a slaved group whose
// number is written into the X, Y and rotation-about-Z slots of its nodes.
#pragma once

#include <array>
#include <cstdint>

namespace vtt {

class TrelkStore;
class UserMessages;
class VaskModelObj;

void FillTrelkNodes(const VaskModelObj& model, TrelkStore& store, UserMessages& messages);

// Writes one node record: links, coordinates, restraints and the support kind.
void FillTrelkNodeRecord(TrelkStore& store, std::int32_t node_number, std::int32_t prev_node,
                         std::int32_t next_node, double x, double y, double z,
                         const std::array<bool, 6>& restrained);

// The support kind of a node from its restraints U1, U2, U3, R1, R2, R3: 1 fixed, 2 pinned,
// 3 pinned and held about Z, 9 any other support, 0 free.
std::uint8_t SupportKindOf(const std::array<bool, 6>& restrained);

void FillTrelkDiaphragmConstraints(const VaskModelObj& model, TrelkStore& store);

}  // namespace vtt
