// The default structure section at the base: one cut through the frames that stand on a
// support, one through the walls that do, and the group that holds them.
#pragma once

namespace vtt {

class TrelkStore;
class VaskModelObj;

// A frame is cut when exactly one of its end nodes is a support; an area when the first
// two of its nodes (its bottom edge, in the normal node order) both are. Supports at
// several elevations all take part: the user reviews the cut in the target.
void FillTrelkSectionCuts(const VaskModelObj& model, TrelkStore& store);

}  // namespace vtt
