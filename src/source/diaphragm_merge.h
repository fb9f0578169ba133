// Merging of rigid diaphragms that share nodes.
//
// The target lets a node belong to one diaphragm only. The reading gives each diaphragm a
// sort key (`idSort`): its own number, or, for a diaphragm met as a node's second or later
// one, the number of that node's first diaphragm, in one pass over the nodes. Diaphragms
// that end with equal keys are merged: going through the list in order, each diaphragm
// takes in every later one with its key, the later ones from the last to the first, and
// those are removed. A chain through three diaphragms may thus end with two keys, and such
// diaphragms are not merged with each other.
#pragma once

namespace vtt {

class VaskModelObj;

// Linear in the number of diaphragm memberships.
void MergeDiaphragmsBySortKey(VaskModelObj& model);

// The same merge as two nested loops over the list; kept as the reference that the
// linear merge must agree with.
void MergeDiaphragmsBySortKeyLiteral(VaskModelObj& model);

}  // namespace vtt
