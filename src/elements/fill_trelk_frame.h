// Structure frames: the host's groups carried over as named sets of nodes and elements,
// by which the user selects parts of the structure in the target. They are read from the
// host directly, as the source model keeps no groups.
#pragma once

namespace vtt {

class HostModel;
class TrelkStore;
class VaskModelObj;

// One frame for every group but the host's built-in "ALL" (compared case-sensitively),
// in the host's order. Points, frames and areas of a group are flagged; other objects
// are left out. Runs when the element numbers are final.
void FillTrelkFrames(HostModel& host, const VaskModelObj& model, TrelkStore& store);

}  // namespace vtt
