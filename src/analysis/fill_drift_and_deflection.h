// Drift definitions: the storey drift of the building measured between the highest and the
// lowest node of one nearly vertical line, in each horizontal direction. Pushover and
// dynamic cases name them. No deflection definition is made.
#pragma once

namespace vtt {

class TrelkStore;
class VaskModelObj;

// "H1 Drift" and "H2 Drift" on the pair that the reading chose, or nothing when it chose
// none.
void FillTrelkDrift(const VaskModelObj& model, TrelkStore& store);

}  // namespace vtt
