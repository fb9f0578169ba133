// End-release components: the embedded beam's release ahead of the patterns, the numbers,
// the direction mapping with M2 held at 0, the names, the bytes, and the list's growth.
#include "components/fill_trelk_component_elastic.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/release_records.h"
#include "store/trelk_store.h"
#include "support/expected_bytes.h"

namespace vtt {
namespace {

using release_rec::Direction;
using vtt::testing::ExpectedBytes;

// 1E-05 as the nearest single: 0x3727C5AC.
constexpr float kStiffness = 0x1.4f8b58p-17f;

std::vector<std::uint8_t> AsVector(std::span<const std::uint8_t> bytes) {
  return {bytes.begin(), bytes.end()};
}

std::string Name40(const std::string& name) { return name + std::string(40 - name.size(), ' '); }

// The flags of a pattern in the host's order U1, U2, U3, R1, R2, R3.
struct HostFlags {
  bool u1 = false, u2 = false, u3 = false, r1 = false, r2 = false, r3 = false;
};

// One release record by hand. `released` in the record's order A, V2, V3, M2, M3, T.
std::vector<std::uint8_t> ReleaseBytes(const std::string& name, std::int16_t number,
                                       const std::array<std::uint8_t, 6>& released) {
  ExpectedBytes b;
  b.Ascii(name, 40).Short(number).Byte(4).Zeros(2);
  for (std::uint8_t flag : released) b.Byte(flag);
  b.Zeros(2).Short(number).Zeros(2);
  for (std::uint8_t flag : released) b.Single(flag != 0 ? kStiffness : 0.0f);
  b.Zeros(8);
  EXPECT_EQ(b.Size(), 89u);
  return b.Bytes();
}

class ReleaseComponents : public ::testing::Test {
 protected:
  ReleaseComponents() : model(host) {
    store.SetTrelkUnitsFromCode(5);
    store.InitTrelkStore();
  }

  VaskFrameReleaseObj* Pattern(const HostFlags& f) {
    VaskFrameReleaseObj* r = model.FrameReleaseAdd();
    r->Release(1) = f.u1;
    r->Release(2) = f.u2;
    r->Release(3) = f.u3;
    r->Release(4) = f.r1;
    r->Release(5) = f.r2;
    r->Release(6) = f.r3;
    return r;
  }

  RecordList& List() { return store.Components(Component::Release); }
  RecordRef Rec(int n) { return List().Record(n); }
  std::string NameOf(int n) { return Rec(n).GetText(release_rec::Name); }
  std::vector<std::uint8_t> Bytes(int n) { return AsVector(List().RecordBytes(n)); }

  test_support::FakeHostModel host;
  VaskModelObj model;
  TrelkStore store;
};

TEST_F(ReleaseComponents, TheRecordLayoutIsThatOfTheList) {
  EXPECT_EQ(List().RecordSize(), release_rec::kSize);
  EXPECT_EQ(List().SubRecordSize(), 0u);
}

TEST_F(ReleaseComponents, AModelWithoutReleasesStillHasTheEmbeddedBeamReleaseAsNumberOne) {
  FillTrelkReleaseComponents(model, store);
  ASSERT_EQ(List().Count(), 1);
  EXPECT_EQ(NameOf(1), Name40("EmbedBeamRelease"));
  EXPECT_EQ(Rec(1).GetInt(release_rec::ComponentNumber), 1);
  EXPECT_EQ(Rec(1).GetInt(release_rec::ComponentNumberCopy), 1);
  EXPECT_EQ(Rec(1).GetInt(release_rec::ComponentKind), 4);
  EXPECT_EQ(Rec(1).GetInt(release_rec::Released(Direction::M3)), 1);
  EXPECT_EQ(Bytes(1), ReleaseBytes("EmbedBeamRelease", 1, {0, 0, 0, 0, 1, 0}));
}

TEST_F(ReleaseComponents, PatternsStartAtNumberTwoInTheSourceOrder) {
  VaskFrameReleaseObj* first = Pattern({.r3 = true});
  VaskFrameReleaseObj* second = Pattern({.u1 = true});
  VaskFrameReleaseObj* third = Pattern({.r1 = true});
  FillTrelkReleaseComponents(model, store);

  ASSERT_EQ(List().Count(), 4);
  EXPECT_EQ(NameOf(1), Name40("EmbedBeamRelease"));
  EXPECT_EQ(NameOf(2), Name40("Release-M3"));
  EXPECT_EQ(NameOf(3), Name40("Release-A"));
  EXPECT_EQ(NameOf(4), Name40("Release-T"));
  for (int n = 2; n <= 4; ++n) {
    EXPECT_EQ(Rec(n).GetInt(release_rec::ComponentNumber), n);
    EXPECT_EQ(Rec(n).GetInt(release_rec::ComponentNumberCopy), n);
    EXPECT_EQ(Rec(n).GetInt(release_rec::ComponentKind), 4);
  }
  EXPECT_EQ(first->idTrelkXecElaRelease, 2);
  EXPECT_EQ(second->idTrelkXecElaRelease, 3);
  EXPECT_EQ(third->idTrelkXecElaRelease, 4);
}

TEST_F(ReleaseComponents, OnlyM3IsNamedReleaseM3) {
  Pattern({.r3 = true});
  FillTrelkReleaseComponents(model, store);
  EXPECT_EQ(Bytes(2), ReleaseBytes("Release-M3", 2, {0, 0, 0, 0, 1, 0}));
}

TEST_F(ReleaseComponents, M2AndM3IsNamedReleaseM3AndHasOnlyM3Set) {
  Pattern({.r2 = true, .r3 = true});
  FillTrelkReleaseComponents(model, store);
  EXPECT_EQ(NameOf(2), Name40("Release-M3"));
  EXPECT_EQ(Rec(2).GetInt(release_rec::Released(Direction::M2)), 0);
  EXPECT_EQ(Rec(2).GetReal(release_rec::ReleaseStiffness(Direction::M2)), 0.0);
  EXPECT_EQ(Rec(2).GetInt(release_rec::Released(Direction::M3)), 1);
  EXPECT_EQ(Bytes(2), ReleaseBytes("Release-M3", 2, {0, 0, 0, 0, 1, 0}));
}

TEST_F(ReleaseComponents, OnlyM2GivesABareNameNoDirectionAndNoStiffness) {
  VaskFrameReleaseObj* m2 = Pattern({.r2 = true});
  FillTrelkReleaseComponents(model, store);
  ASSERT_EQ(List().Count(), 2);
  EXPECT_EQ(NameOf(2), Name40("Release-"));
  for (int d = 0; d < release_rec::kDirectionCount; ++d) {
    EXPECT_EQ(Rec(2).GetInt(release_rec::Released(static_cast<Direction>(d))), 0) << d;
    EXPECT_EQ(Rec(2).GetReal(release_rec::ReleaseStiffness(static_cast<Direction>(d))), 0.0)
        << d;
  }
  EXPECT_EQ(Bytes(2), ReleaseBytes("Release-", 2, {0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(m2->idTrelkXecElaRelease, 2);
}

TEST_F(ReleaseComponents, U1R1AndR3IsNamedReleaseAM3T) {
  Pattern({.u1 = true, .r1 = true, .r3 = true});
  FillTrelkReleaseComponents(model, store);
  EXPECT_EQ(NameOf(2), Name40("Release-AM3T"));
}

TEST_F(ReleaseComponents, TheHostDirectionsMapOntoTheTargetsInTheTargetOrder) {
  // U2 is V2, U3 is V3 and R1 is T; the name follows the record's order, not the host's.
  Pattern({.u3 = true, .r1 = true});
  Pattern({.u2 = true});
  Pattern({.u1 = true, .u2 = true, .u3 = true, .r1 = true, .r2 = true, .r3 = true});
  FillTrelkReleaseComponents(model, store);
  EXPECT_EQ(Bytes(2), ReleaseBytes("Release-V3T", 2, {0, 0, 1, 0, 0, 1}));
  EXPECT_EQ(Bytes(3), ReleaseBytes("Release-V2", 3, {0, 1, 0, 0, 0, 0}));
  EXPECT_EQ(Bytes(4), ReleaseBytes("Release-AV2V3M3T", 4, {1, 1, 1, 0, 1, 1}));
}

TEST_F(ReleaseComponents, PatternsThatDifferOnlyInR2GiveTwoEqualComponents) {
  VaskFrameReleaseObj* without = Pattern({.u1 = true, .r3 = true});
  VaskFrameReleaseObj* with = Pattern({.u1 = true, .r2 = true, .r3 = true});
  FillTrelkReleaseComponents(model, store);
  ASSERT_EQ(List().Count(), 3);
  EXPECT_EQ(Bytes(2), ReleaseBytes("Release-AM3", 2, {1, 0, 0, 0, 1, 0}));
  EXPECT_EQ(Bytes(3), ReleaseBytes("Release-AM3", 3, {1, 0, 0, 0, 1, 0}));
  EXPECT_EQ(without->idTrelkXecElaRelease, 2);
  EXPECT_EQ(with->idTrelkXecElaRelease, 3);
}

TEST_F(ReleaseComponents, AWholeRecordByteForByte) {
  Pattern({.u1 = true, .r1 = true, .r3 = true});
  FillTrelkReleaseComponents(model, store);

  ExpectedBytes b;
  b.Ascii("Release-AM3T", 40)
      .Short(2)          // ComponentNumber
      .Byte(4)           // ComponentKind
      .Zeros(2)          // Reserved1
      .Byte(1)           // Released: A
      .Byte(0)           // V2
      .Byte(0)           // V3
      .Byte(0)           // M2
      .Byte(1)           // M3
      .Byte(1)           // T
      .Zeros(2)          // Reserved2
      .Short(2)          // ComponentNumberCopy
      .Zeros(2)          // Reserved3
      .Single(kStiffness)  // ReleaseStiffness: A
      .Single(0.0f)        // V2
      .Single(0.0f)        // V3
      .Single(0.0f)        // M2
      .Single(kStiffness)  // M3
      .Single(kStiffness)  // T
      .Zeros(8);         // Reserved4
  ASSERT_EQ(b.Size(), 89u);
  EXPECT_EQ(Bytes(2), b.Bytes());
  // 0x3727C5AC, little-endian, at 57.
  EXPECT_EQ(Bytes(2)[57], 0xAC);
  EXPECT_EQ(Bytes(2)[58], 0xC5);
  EXPECT_EQ(Bytes(2)[59], 0x27);
  EXPECT_EQ(Bytes(2)[60], 0x37);
}

TEST_F(ReleaseComponents, TheStiffnessIsTheSameInEveryUnitSystem) {
  Pattern({.r3 = true});
  FillTrelkReleaseComponents(model, store);
  const std::vector<std::uint8_t> kilonewtonMillimetre = Bytes(2);

  test_support::FakeHostModel otherHost;
  VaskModelObj other(otherHost);
  VaskFrameReleaseObj* r = other.FrameReleaseAdd();
  r->Release(6) = true;
  TrelkStore kipInch;
  kipInch.SetTrelkUnitsFromCode(3);
  kipInch.InitTrelkStore();
  FillTrelkReleaseComponents(other, kipInch);

  EXPECT_EQ(AsVector(kipInch.Components(Component::Release).RecordBytes(2)),
            kilonewtonMillimetre);
  EXPECT_EQ(kilonewtonMillimetre, ReleaseBytes("Release-M3", 2, {0, 0, 0, 0, 1, 0}));
}

TEST_F(ReleaseComponents, WithoutPatternsTheListKeepsItsFirstCapacity) {
  FillTrelkReleaseComponents(model, store);
  EXPECT_EQ(List().Count(), 1);
  EXPECT_EQ(List().Capacity(), 1);
  EXPECT_EQ(store.MaxComponentCount, 1);
}

TEST_F(ReleaseComponents, OnePatternGrowsTheListByFiveAndMaxComponentCountFollowsTheCapacity) {
  Pattern({.r3 = true});
  FillTrelkReleaseComponents(model, store);
  EXPECT_EQ(List().Count(), 2);
  EXPECT_EQ(List().Capacity(), 6);
  EXPECT_EQ(store.MaxComponentCount, 6);
}

TEST_F(ReleaseComponents, TheSeventhRecordGrowsTheCapacityFromSixToEleven) {
  for (int k = 0; k < 5; ++k) Pattern({.r3 = true});
  FillTrelkReleaseComponents(model, store);
  EXPECT_EQ(List().Count(), 6);
  EXPECT_EQ(List().Capacity(), 6);
  EXPECT_EQ(store.MaxComponentCount, 6);

  TrelkStore again;
  again.SetTrelkUnitsFromCode(5);
  again.InitTrelkStore();
  VaskFrameReleaseObj* sixth = Pattern({.u1 = true});
  FillTrelkReleaseComponents(model, again);
  ASSERT_EQ(again.Components(Component::Release).Count(), 7);
  EXPECT_EQ(again.Components(Component::Release).Capacity(), 11);
  EXPECT_EQ(again.MaxComponentCount, 11);
  EXPECT_EQ(sixth->idTrelkXecElaRelease, 7);
  EXPECT_EQ(again.Components(Component::Release).Record(7).GetText(release_rec::Name),
            Name40("Release-A"));
}

TEST_F(ReleaseComponents, TheRecordWriterSetsOnlyWhatItIsGiven) {
  store.AddTrelkRelease();
  store.AddTrelkRelease();
  FillTrelkReleaseRecord(store, 2, "Tie", 9, kReleaseComponentKind, 11, {0, 1, 0, 0, 0, 1});
  ExpectedBytes b;
  b.Ascii("Tie", 40).Short(9).Byte(4).Zeros(2);
  b.Byte(0).Byte(1).Byte(0).Byte(0).Byte(0).Byte(1);
  b.Zeros(2).Short(11).Zeros(2);
  b.Single(0.0f).Single(kStiffness).Single(0.0f).Single(0.0f).Single(0.0f).Single(kStiffness);
  b.Zeros(8);
  EXPECT_EQ(Bytes(2), b.Bytes());
  // Record 1 was added but not written.
  EXPECT_EQ(Bytes(1), std::vector<std::uint8_t>(89, 0));
}

}  // namespace
}  // namespace vtt
