#include "components/fill_trelk_component_elastic.h"

#include <string>

#include "source/vask_model.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {

using release_rec::Direction;

// The stiffness that a released direction keeps. The same value in every unit system: the
// program units do not scale it.
constexpr double kReleaseStiffness = 1E-05;

// Direction tags of a release component's name, in the record's direction order.
constexpr std::array<std::string_view, release_rec::kDirectionCount> kDirectionTags = {
    "A", "V2", "V3", "M2", "M3", "T"};

constexpr std::size_t Slot(Direction d) { return static_cast<std::size_t>(d); }

// The embedded beam is pinned against bending about its strong axis only.
ReleaseFlags EmbeddedBeamFlags() {
  ReleaseFlags flags{};
  flags[Slot(Direction::M3)] = 1;
  return flags;
}

// The host's order is U1, U2, U3, R1, R2, R3. A release of moment about the local 2 axis
// (R2) is not carried into the component: M2 stays 0 whatever the pattern says.
ReleaseFlags TargetFlags(const VaskFrameReleaseObj& release) {
  ReleaseFlags flags{};
  flags[Slot(Direction::A)] = release.Release(1) ? 1 : 0;
  flags[Slot(Direction::V2)] = release.Release(2) ? 1 : 0;
  flags[Slot(Direction::V3)] = release.Release(3) ? 1 : 0;
  flags[Slot(Direction::T)] = release.Release(4) ? 1 : 0;
  flags[Slot(Direction::M2)] = 0;
  flags[Slot(Direction::M3)] = release.Release(6) ? 1 : 0;
  return flags;
}

// "Release-" and the tag of every released direction. Two patterns that differ only in
// R2 give the same name; no test of uniqueness is made.
std::string ReleaseName(const ReleaseFlags& flags) {
  std::string name = "Release-";
  for (std::size_t d = 0; d < flags.size(); ++d) {
    if (flags[d] != 0) name += kDirectionTags[d];
  }
  return name;
}

}  // namespace

void FillTrelkReleaseRecord(TrelkStore& store, std::int32_t componentNumber,
                            std::string_view name, std::int32_t number, std::int32_t kind,
                            std::int32_t numberCopy, const ReleaseFlags& released) {
  RecordRef rec = store.Components(Component::Release).Record(componentNumber);
  rec.SetText(release_rec::Name, name);
  rec.SetInt(release_rec::ComponentNumber, number);
  rec.SetInt(release_rec::ComponentKind, kind);
  for (std::size_t d = 0; d < released.size(); ++d) {
    const auto direction = static_cast<Direction>(d);
    rec.SetInt(release_rec::Released(direction), released[d]);
    if (released[d] != 0) rec.SetReal(release_rec::ReleaseStiffness(direction), kReleaseStiffness);
  }
  rec.SetInt(release_rec::ComponentNumberCopy, numberCopy);
}

void FillTrelkReleaseComponents(const VaskModelObj& model, TrelkStore& store) {
  // Every transfer has this component, whether or not any frame has a release.
  store.AddTrelkRelease();
  FillTrelkReleaseRecord(store, 1, "EmbedBeamRelease", 1, kReleaseComponentKind, 1,
                         EmbeddedBeamFlags());

  for (int i = 1; i <= model.FrameReleaseNum(); ++i) {
    VaskFrameReleaseObj& release = *model.FrameReleaseObj(i);
    const ReleaseFlags flags = TargetFlags(release);
    const std::int32_t number = i + 1;
    store.AddTrelkRelease();
    FillTrelkReleaseRecord(store, number, ReleaseName(flags), number, kReleaseComponentKind,
                           number, flags);
    release.idTrelkXecElaRelease = number;
  }
}

}  // namespace vtt
