// End-release components into the component library.
//
// The only elastic component a transfer makes is the release component that a compound
// frame component puts at a member's end. Record 1 is always the embedded beam's moment
// release; behind it comes one record for each distinct release pattern of the source
// model, in the source order, and each pattern keeps its record's number in
// idTrelkXecElaRelease for the compound step.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "store/release_records.h"

namespace vtt {

class TrelkStore;
class VaskModelObj;

// The target application's kind of a release component.
inline constexpr std::int32_t kReleaseComponentKind = 4;

// One flag for each target direction, in the record's order A, V2, V3, M2, M3, T.
using ReleaseFlags = std::array<std::int32_t, release_rec::kDirectionCount>;

// "EmbedBeamRelease" as record 1, then one record for each FrameReleaseObj(i) as record
// i + 1. Writes idTrelkXecElaRelease of every release pattern.
void FillTrelkReleaseComponents(const VaskModelObj& model, TrelkStore& store);

// Writes release record `componentNumber`: its name, numbers and kind, the six flags, and
// the release stiffness of every direction whose flag is not 0.
void FillTrelkReleaseRecord(TrelkStore& store, std::int32_t componentNumber,
                            std::string_view name, std::int32_t number, std::int32_t kind,
                            std::int32_t numberCopy, const ReleaseFlags& released);

}  // namespace vtt
