#include "analysis/fill_trelk_load_case.h"

#include <gtest/gtest.h>

#include <optional>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/load_case_records.h"
#include "store/structure_files.h"
#include "store/trelk_store.h"
#include "support/expected_bytes.h"
#include "transfer/failure.h"
#include "transfer/messages.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using testing::ExpectedBytes;
using testing::ReadFileBytes;
using testing::ReadI16Le;
using testing::TempFolder;

// ---- A host that holds only load cases ----

struct HostLoad {
  HostLoad(std::string type_, std::string name_, double factor_ = 1.0,
           std::string function_ = "", double time_factor_ = 1.0)
      : type(std::move(type_)),
        name(std::move(name_)),
        factor(factor_),
        function(std::move(function_)),
        time_factor(time_factor_) {}
  std::string type;
  std::string name;
  double factor;
  std::string function;
  double time_factor;
};

struct HostDamping {
  int type = 0;
  double mass = 0.0;
  double stiffness = 0.0;
  double value1 = 0.0;
  double value2 = 0.0;
  double ratio1 = 0.0;
  double ratio2 = 0.0;
};

struct HostCase {
  std::string name;
  int type = 0;
  int control = 1;
  int monitored_dof = 1;
  std::vector<HostLoad> loads;
  int steps = 0;
  double step_size = 0.0;
  std::optional<HostDamping> damping;
};

class CaseHost : public test_support::FakeHostModel {
 public:
  std::vector<HostCase> cases;

  const HostCase* Find(const std::string& name) const {
    for (const HostCase& c : cases) {
      if (c.name == name) return &c;
    }
    return nullptr;
  }

  int GetCaseNames(int& count, Names& names) override {
    names.clear();
    for (const HostCase& c : cases) names.push_back(c.name);
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetCaseType(const std::string& name, int& type, int& subType, int& designType,
                  int& designOption, int& autoCreated) override {
    subType = designType = designOption = autoCreated = 0;
    const HostCase* c = Find(name);
    type = c != nullptr ? c->type : 0;
    return c != nullptr ? 0 : kFailed;
  }
  int GetStaticLoadApplication(const std::string& name, int& loadControl, int& displacementType,
                               double& displacement, int& monitoredDof,
                               std::string& monitoredPoint) override {
    const HostCase* c = Find(name);
    loadControl = c->control;
    displacementType = 1;
    displacement = 0.1;
    monitoredDof = c->monitored_dof;
    monitoredPoint = "Roof";
    return 0;
  }
  int GetStaticLoads(const std::string& name, int& count, Names& loadTypes, Names& loadNames,
                     Reals& scaleFactors) override {
    const HostCase* c = Find(name);
    loadTypes.clear();
    loadNames.clear();
    scaleFactors.clear();
    for (const HostLoad& l : c->loads) {
      loadTypes.push_back(l.type);
      loadNames.push_back(l.name);
      scaleFactors.push_back(l.factor);
    }
    count = static_cast<int>(loadTypes.size());
    return 0;
  }
  int GetHistoryLoads(const std::string& name, int& count, Names& loadTypes, Names& loadNames,
                      Names& functions, Reals& scaleFactors, Reals& timeFactors) override {
    const HostCase* c = Find(name);
    loadTypes.clear();
    loadNames.clear();
    functions.clear();
    scaleFactors.clear();
    timeFactors.clear();
    for (const HostLoad& l : c->loads) {
      loadTypes.push_back(l.type);
      loadNames.push_back(l.name);
      functions.push_back(l.function);
      scaleFactors.push_back(l.factor);
      timeFactors.push_back(l.time_factor);
    }
    count = static_cast<int>(loadTypes.size());
    return 0;
  }
  int GetHistoryTimeStep(const std::string& name, int& steps, double& stepSize) override {
    const HostCase* c = Find(name);
    steps = c->steps;
    stepSize = c->step_size;
    return 0;
  }
  int GetHistoryDamping(const std::string& name, int& type, double& massCoefficient,
                        double& stiffnessCoefficient, double& value1, double& value2,
                        double& ratio1, double& ratio2) override {
    ++damping_calls;
    damping_case = name;
    const HostCase* c = Find(name);
    const HostDamping d = c != nullptr && c->damping ? *c->damping : HostDamping{};
    type = d.type;
    massCoefficient = d.mass;
    stiffnessCoefficient = d.stiffness;
    value1 = d.value1;
    value2 = d.value2;
    ratio1 = d.ratio1;
    ratio2 = d.ratio2;
    return c != nullptr && c->damping ? 0 : kFailed;
  }

  int damping_calls = 0;
  std::string damping_case;
};

HostCase Gravity(const std::string& name, std::vector<HostLoad> loads) {
  return HostCase{name, 2, 1, 1, std::move(loads), 0, 0.0, std::nullopt};
}
HostCase Pushover(const std::string& name, std::vector<HostLoad> loads, int monitored_dof = 1) {
  return HostCase{name, 2, 2, monitored_dof, std::move(loads), 0, 0.0, std::nullopt};
}
HostCase History(const std::string& name, std::vector<HostLoad> loads, int steps = 100,
                 double step_size = 0.01, std::optional<HostDamping> damping = std::nullopt) {
  return HostCase{name, 8, 1, 1, std::move(loads), steps, step_size, damping};
}
HostLoad Accel(const std::string& dir, const std::string& function, double sf, double tf = 1.0) {
  return HostLoad{"Accel", dir, sf, function, tf};
}

// ---- Expected records, built from the layouts by hand ----

constexpr const char* kCriterion40 = "Deformation beyond X point for any compo";

std::vector<std::uint8_t> Bytes(std::span<const std::uint8_t> bytes) {
  return std::vector<std::uint8_t>(bytes.begin(), bytes.end());
}

struct GravityEntry {
  std::int16_t kind;
  std::string name;
  float factor;
};

ExpectedBytes GravityRecord(const std::string& name, const std::vector<GravityEntry>& entries) {
  ExpectedBytes e;
  e.Ascii(name, 40).Byte(0).Zeros(3).Zeros(40).Zeros(4);
  e.Short(static_cast<std::int16_t>(entries.size()));
  for (std::size_t i = 0; i < 20; ++i) e.Short(i < entries.size() ? entries[i].kind : 0);
  for (std::size_t i = 0; i < 20; ++i) {
    if (i < entries.size()) {
      e.Ascii(entries[i].name, 40);
    } else {
      e.Zeros(40);
    }
  }
  for (std::size_t i = 0; i < 20; ++i) {
    if (i < entries.size()) {
      e.Single(entries[i].factor);
    } else {
      e.Zeros(4);
    }
  }
  e.Zeros(14);
  EXPECT_EQ(e.Size(), 1024u);
  return e;
}

// A pushover record on patterns (mode 0) or on modes (mode 1: `names` empty, `modes` set).
ExpectedBytes PushoverRecord(const std::string& name, int mode,
                             const std::vector<std::string>& names,
                             const std::vector<float>& factors,
                             const std::vector<std::uint8_t>& modes, const std::string& drift) {
  ExpectedBytes e;
  e.Ascii(name, 40).Byte(1).Byte(static_cast<std::uint8_t>(mode)).Zeros(2);
  e.Ascii(kCriterion40, 40).Short(50).Short(200).Single(0.02f);
  e.Short(static_cast<std::int16_t>(factors.size()));
  for (std::size_t i = 0; i < 20; ++i) e.Byte(i < names.size() ? 1 : 0);
  for (std::size_t i = 0; i < 20; ++i) {
    if (i < names.size()) {
      e.Ascii(names[i], 40);
    } else {
      e.Zeros(40);
    }
  }
  for (std::size_t i = 0; i < 20; ++i) {
    if (i < factors.size()) {
      e.Single(factors[i]);
    } else {
      e.Zeros(4);
    }
  }
  e.Zeros(1);
  for (std::size_t i = 0; i < 12; ++i) e.Byte(i < modes.size() ? modes[i] : 0);
  e.Zeros(1).Ascii(drift, 20).Zeros(14);
  EXPECT_EQ(e.Size(), 1042u);
  return e;
}

struct DynamicSlot {
  std::string function;  // empty: no function
  std::int16_t points = 0;
  float factor = 0.0f;
  float time_factor = 1.0f;
};

ExpectedBytes DynamicRecord(const std::string& name, float duration, float step,
                            const std::array<DynamicSlot, 3>& slots, const std::string& drift) {
  ExpectedBytes e;
  e.Ascii(name, 40).Byte(1).Byte(0).Ascii(kCriterion40, 40);
  e.Single(duration).Single(step).Short(200);
  for (const DynamicSlot& s : slots) e.Ascii(s.function.empty() ? "" : "EqkeGroup", 12);
  for (const DynamicSlot& s : slots) e.Ascii(s.function, 12);
  for (const DynamicSlot& s : slots) {
    e.Ascii(s.function.empty() ? "" : "EarthquakeRecord: " + s.function, 40);
  }
  for (const DynamicSlot& s : slots) e.Short(s.points);
  for (const DynamicSlot& s : slots) e.Single(s.factor);
  for (const DynamicSlot& s : slots) e.Single(s.time_factor);
  e.Ascii(drift, 20).Zeros(2).Short(1).Zeros(2).Zeros(8);
  EXPECT_EQ(e.Size(), 348u);
  return e;
}

ExpectedBytes SeriesRecord(const std::string& name, float period1, float period2, float ratio1,
                           float ratio2) {
  ExpectedBytes e;
  e.Ascii(name, 12).Ascii("Trelk: " + name, 60).Ascii("", 40);
  e.Byte(0).Byte(0).Short(0).Short(10).Zeros(4).Single(1.0f).Zeros(20);
  e.Single(period1).Single(period2).Single(ratio1).Single(ratio2);
  e.Zeros(28).Byte(0).Zeros(3);
  EXPECT_EQ(e.Size(), 194u);
  return e;
}

class LoadCases : public ::testing::Test {
 protected:
  LoadCases() {
    store.SetTrelkUnitsFromCode(6);  // kN and metre: gravity 9.81 as an f32
    store.InitTrelkStore();
    context.structure_folder = temp.Path() / "Frame1";
    context.delete_folder = [this](const fs::path& path) { deleted.push_back(path); };
  }

  // A source pattern with the target names that the load steps would have given it.
  VaskLoadPatternObj& Pattern(const std::string& label, bool nodal, bool frame, bool self) {
    VaskLoadPatternObj* p = model.AddLoadPattern();
    p->Label = label;
    p->LoadNodeNotEmpty = nodal;
    p->LoadElementNotEmpty = frame;
    p->SelfWeightNotEmpty = self;
    if (nodal) p->TrelkLoadPatternNodeName = "LoadNode-" + label;
    if (frame) p->TrelkLoadPatternElementName = "LoadFrame-" + label;
    if (self) p->TrelkLoadPatternSelfWeightName = "SelfWeight-" + label;
    return *p;
  }
  void Function(const std::string& label, int points) {
    VaskTHFuncObj* f = model.AddTHFuncObj();
    f->Label = label;
    for (int i = 1; i <= points; ++i) f->AddTHFunc(0.1 * i, 0.01 * i);
  }
  void Fill() { FillTrelkLoadCases(host, model, store, context); }

  TempFolder temp{"load-cases"};
  CaseHost host;
  VaskModelObj model{host};
  TrelkStore store;
  LoadCaseContext context;
  std::vector<fs::path> deleted;
};

// ---- Gravity cases ----

TEST_F(LoadCases, APatternWithOnlySelfWeightGivesOneEntryOfKindThree) {
  Pattern("DEAD", false, false, true);
  host.cases = {Gravity("Grav", {{"Load", "DEAD", 1.5}})};
  Fill();
  ASSERT_EQ(store.GravityCases.Count(), 1);
  EXPECT_EQ(Bytes(store.GravityCases.RecordBytes(1)),
            GravityRecord("Grav", {{3, "SelfWeight-DEAD", 1.5f}}).Bytes());
  // The Text field is never assigned: zero bytes, not spaces.
  EXPECT_EQ(store.GravityCases.Record(1).GetText(gravity_case_rec::Text), std::string(40, '\0'));
}

TEST_F(LoadCases, APatternWithNodalAndFrameLoadsGivesTwoEntriesWithTheSameFactor) {
  Pattern("LIVE", true, true, false);
  host.cases = {Gravity("Grav", {{"Load", "LIVE", 0.75}})};
  Fill();
  ASSERT_EQ(store.GravityCases.Count(), 1);
  EXPECT_EQ(Bytes(store.GravityCases.RecordBytes(1)),
            GravityRecord("Grav", {{1, "LoadNode-LIVE", 0.75f}, {2, "LoadFrame-LIVE", 0.75f}})
                .Bytes());
}

TEST_F(LoadCases, GravityEntriesFollowTheLoadsAndSkipUnknownPatternsAndOtherLoadTypes) {
  Pattern("DEAD", true, true, true);
  Pattern("LIVE", true, false, false);
  host.cases = {Gravity("Grav", {{"Load", "LIVE", 0.5},
                                 {"Load", "WIND", 2.0},  // not a pattern of the model
                                 {"Accel", "UX", 3.0},
                                 {"Load", "DEAD", 1.2}})};
  Fill();
  ASSERT_EQ(store.GravityCases.Count(), 1);
  EXPECT_EQ(Bytes(store.GravityCases.RecordBytes(1)),
            GravityRecord("Grav", {{1, "LoadNode-LIVE", 0.5f},
                                   {1, "LoadNode-DEAD", 1.2f},
                                   {2, "LoadFrame-DEAD", 1.2f},
                                   {3, "SelfWeight-DEAD", 1.2f}})
                .Bytes());
}

TEST_F(LoadCases, AGravityCaseTakesTwentyEntriesAtMost) {
  std::vector<HostLoad> loads;
  for (int i = 1; i <= 8; ++i) {
    Pattern("P" + std::to_string(i), true, true, true);
    loads.push_back({"Load", "P" + std::to_string(i), static_cast<double>(i)});
  }
  host.cases = {Gravity("Grav", loads)};
  Fill();
  RecordRef rec = store.GravityCases.Record(1);
  EXPECT_EQ(rec.GetInt(gravity_case_rec::LoadCount), 20);
  // The seventh pattern fills entries 19 and 20; its self weight and the eighth pattern
  // are dropped.
  EXPECT_EQ(rec.GetText(gravity_case_rec::LoadName(19)), "LoadNode-P7" + std::string(29, ' '));
  EXPECT_EQ(rec.GetText(gravity_case_rec::LoadName(20)), "LoadFrame-P7" + std::string(28, ' '));
  EXPECT_EQ(rec.GetInt(gravity_case_rec::LoadKind(20)), 2);
  EXPECT_EQ(rec.GetReal(gravity_case_rec::LoadFactor(20)), 7.0);
}

TEST_F(LoadCases, AGravityCaseWithoutAQualifyingLoadIsStillAddedWithNoEntries) {
  host.cases = {Gravity("Empty", {{"Load", "NONE", 1.0}})};
  Fill();
  ASSERT_EQ(store.GravityCases.Count(), 1);
  EXPECT_EQ(Bytes(store.GravityCases.RecordBytes(1)), GravityRecord("Empty", {}).Bytes());
}

TEST_F(LoadCases, TheGravityNameGoesThroughNameWithSuffixWithTheCaseNumber) {
  const std::string long_name(41, 'G');
  host.cases = {Gravity("  Dead  ", {}), Gravity(long_name, {})};
  Fill();
  ASSERT_EQ(store.GravityCases.Count(), 2);
  EXPECT_EQ(store.GravityCases.Record(1).GetText(gravity_case_rec::Name),
            "Dead" + std::string(36, ' '));
  // Case 2 past 40 characters: the number plus 1.
  EXPECT_EQ(store.GravityCases.Record(2).GetText(gravity_case_rec::Name),
            "3" + std::string(39, ' '));
}

TEST_F(LoadCases, TwentyGravityCasesAreKeptAndTheTwentyFirstIsDropped) {
  for (int i = 1; i <= 21; ++i) host.cases.push_back(Gravity("G" + std::to_string(i), {}));
  Fill();
  EXPECT_EQ(store.GravityCases.Count(), 20);
  EXPECT_EQ(store.GravityCases.Capacity(), 22);
  EXPECT_EQ(store.GravityCases.Record(20).GetText(gravity_case_rec::Name),
            "G20" + std::string(37, ' '));
}

TEST_F(LoadCases, GravityCasesAloneMakeNoSeriesEntry) {
  fs::create_directories(temp.Path() / "Frame1" / "PushAnalysis");
  fs::create_directories(temp.Path() / "Frame1" / "DynaAnalysis");
  Pattern("DEAD", false, false, true);
  host.cases = {Gravity("Grav", {{"Load", "DEAD", 1.0}})};
  Fill();
  EXPECT_EQ(store.GravityCases.Count(), 1);
  EXPECT_EQ(store.LoadCases.Count(), 0);
  EXPECT_EQ(store.LoadCases.Capacity(), 0);
  EXPECT_TRUE(deleted.empty());
  EXPECT_EQ(host.damping_calls, 0);
}

TEST_F(LoadCases, CasesOfOtherTypesAndStaticCasesOfOtherControlsAreLeftOut) {
  Pattern("DEAD", false, false, true);
  HostCase other_control = Gravity("Ctl3", {{"Load", "DEAD", 1.0}});
  other_control.control = 3;
  host.cases = {HostCase{"Linear", 1, 1, 1, {{"Load", "DEAD", 1.0}}, 0, 0.0, std::nullopt},
                HostCase{"Modal", 3, 1, 1, {}, 0, 0.0, std::nullopt},
                HostCase{"LinHist", 7, 1, 1, {Accel("U1", "EQ", 1.0)}, 10, 0.1, std::nullopt},
                other_control};
  Fill();
  EXPECT_EQ(store.GravityCases.Count(), 0);
  EXPECT_EQ(store.PushoverCases.Count(), 0);
  EXPECT_EQ(store.DynamicCases.Count(), 0);
  EXPECT_EQ(store.LoadCases.Count(), 0);
}

// ---- Pushover cases ----

TEST_F(LoadCases, APushoverCaseWhoseFirstRelevantLoadIsAccelIgnoresALaterLoad) {
  Pattern("DEAD", true, true, true);
  host.cases = {Pushover("Push", {{"Accel", "UX", 2.0},
                                  {"Load", "DEAD", 3.0},
                                  {"Accel", "UY", 4.0},
                                  {"Accel", "U3", 5.0}})};
  Fill();
  ASSERT_EQ(store.PushoverCases.Count(), 1);
  EXPECT_EQ(Bytes(store.PushoverCases.RecordBytes(1)),
            PushoverRecord("Push", 0, {"AccelUX", "AccelUY"}, {2.0f, 4.0f}, {}, "H1 Drift")
                .Bytes());
}

TEST_F(LoadCases, APushoverOnLoadsTakesOnlyNodalPatternsAndKeepsItsNameAsItIs) {
  Pattern("DEAD", false, true, true);  // frame loads and self weight are not pushed
  Pattern("LAT", true, true, false);
  host.cases = {Pushover("  Push ", {{"Mode", "1", 9.0},  // after the first "Load": other kind
                                     {"Load", "DEAD", 1.0},
                                     {"Load", "LAT", 1.25},
                                     {"Load", "MISSING", 2.0},
                                     {"Accel", "UX", 3.0}},
                         2)};
  // The first relevant load is the "Mode" one here, so build a second case on loads.
  host.cases.push_back(Pushover("Lateral", {{"Load", "DEAD", 1.0},
                                            {"Mode", "1", 9.0},
                                            {"Load", "LAT", 1.25},
                                            {"Accel", "UX", 3.0}},
                                2));
  Fill();
  ASSERT_EQ(store.PushoverCases.Count(), 2);
  EXPECT_EQ(store.PushoverCases.Record(1).GetText(pushover_case_rec::Name),
            "  Push " + std::string(33, ' '));
  EXPECT_EQ(store.PushoverCases.Record(1).GetInt(pushover_case_rec::Mode), 1);
  EXPECT_EQ(Bytes(store.PushoverCases.RecordBytes(2)),
            PushoverRecord("Lateral", 0, {"LoadNode-LAT"}, {1.25f}, {}, "H2 Drift").Bytes());
}

TEST_F(LoadCases, AcceleratedPushoverTakesUXAndUYAndDropsOtherDirections) {
  host.cases = {Pushover("PushXY", {{"Accel", "UY", -1.5},
                                    {"Accel", "U1", 7.0},
                                    {"Accel", "ux", 7.0},
                                    {"Accel", "UX", 0.3}})};
  Fill();
  // The factors are the host's as they are: not divided by gravity.
  EXPECT_EQ(Bytes(store.PushoverCases.RecordBytes(1)),
            PushoverRecord("PushXY", 0, {"AccelUY", "AccelUX"}, {-1.5f, 0.3f}, {}, "H1 Drift")
                .Bytes());
}

TEST_F(LoadCases, APushoverOnModesTakesSixModesAndLeavesKindsAndNamesUnfilled) {
  host.cases = {Pushover("Modes", {{"Mode", "1", 1.0},
                                   {"Mode", " 12abc", 0.5},
                                   {"Load", "DEAD", 2.0},
                                   {"Mode", "+3", 0.25},
                                   {"Mode", "x", 0.125},
                                   {"Mode", "255", 2.0},
                                   {"Mode", "4.7", 3.0},
                                   {"Mode", "300", 4.0}},  // the seventh: not read at all
                         3)};
  Fill();
  ASSERT_EQ(store.PushoverCases.Count(), 1);
  EXPECT_EQ(Bytes(store.PushoverCases.RecordBytes(1)),
            PushoverRecord("Modes", 1, {}, {1.0f, 0.5f, 0.25f, 0.125f, 2.0f, 3.0f},
                           {1, 12, 3, 0, 255, 4}, "H1 Drift")
                .Bytes());
}

TEST_F(LoadCases, ModeNumbersAreReadFromTheDecimalTextOfTheLoadName) {
  EXPECT_EQ(ModeNumberFromLoadName(" 12abc"), 12);
  EXPECT_EQ(ModeNumberFromLoadName("\t 7"), 7);
  EXPECT_EQ(ModeNumberFromLoadName("+3"), 3);
  EXPECT_EQ(ModeNumberFromLoadName("-2"), -2);
  EXPECT_EQ(ModeNumberFromLoadName("Mode 2"), 0);
  EXPECT_EQ(ModeNumberFromLoadName(""), 0);
  EXPECT_EQ(ModeNumberFromLoadName("- 5"), 0);
  EXPECT_EQ(ModeNumberFromLoadName("0255"), 255);
  EXPECT_EQ(ModeNumberFromLoadName("256"), 256);
  EXPECT_GT(ModeNumberFromLoadName("99999999999999999999999"), 255);
}

TEST_F(LoadCases, AModeNumberOutsideAByteStopsTheTransferNamingTheCase) {
  host.cases = {Pushover("Push300", {{"Mode", "300", 1.0}}), Gravity("After", {})};
  try {
    Fill();
    FAIL() << "a mode number of 300 was taken";
  } catch (const TransferFailure& failure) {
    const std::string message = failure.what();
    EXPECT_NE(message.find("\"Push300\""), std::string::npos) << message;
    EXPECT_NE(message.find("300"), std::string::npos) << message;
  }
  EXPECT_EQ(store.PushoverCases.Count(), 0);
  EXPECT_EQ(store.GravityCases.Count(), 0);

  host.cases = {Pushover("Negative", {{"Mode", "-1", 1.0}})};
  EXPECT_THROW(Fill(), TransferFailure);
}

TEST_F(LoadCases, APushoverWithoutLoadModeOrAccelIsLeftOutAndNotCounted) {
  Pattern("LAT", true, false, false);
  host.cases = {Pushover("Nothing", {}), Pushover("Lateral", {{"Load", "LAT", 1.0}})};
  Fill();
  ASSERT_EQ(store.PushoverCases.Count(), 1);
  EXPECT_EQ(store.PushoverCases.Record(1).GetText(pushover_case_rec::Name),
            "Lateral" + std::string(33, ' '));
}

TEST_F(LoadCases, APushoverOnLoadsWithoutANodalPatternIsStillAddedWithNoEntries) {
  Pattern("DEAD", false, true, true);
  host.cases = {Pushover("Push", {{"Load", "DEAD", 1.0}})};
  Fill();
  ASSERT_EQ(store.PushoverCases.Count(), 1);
  EXPECT_EQ(Bytes(store.PushoverCases.RecordBytes(1)),
            PushoverRecord("Push", 0, {}, {}, {}, "H1 Drift").Bytes());
}

TEST_F(LoadCases, TheCriterionIsCutToFortyCharacters) {
  host.cases = {Pushover("Push", {{"Accel", "UX", 1.0}}),
                History("Quake", {Accel("U1", "EQ", 1.0)})};
  Fill();
  EXPECT_EQ(store.PushoverCases.Record(1).GetText(pushover_case_rec::Criterion),
            "Deformation beyond X point for any compo");
  EXPECT_EQ(store.DynamicCases.Record(1).GetText(dynamic_case_rec::Criterion),
            "Deformation beyond X point for any compo");
}

TEST_F(LoadCases, PushoverCasesGrowFromCapacityZeroAndStopAtTwenty) {
  for (int i = 1; i <= 22; ++i) {
    host.cases.push_back(Pushover("P" + std::to_string(i), {{"Accel", "UX", 1.0}}));
  }
  EXPECT_EQ(store.PushoverCases.Capacity(), 0);
  Fill();
  EXPECT_EQ(store.PushoverCases.Count(), 20);
  EXPECT_EQ(store.PushoverCases.Capacity(), 22);
  const auto counts = store.CaseListCount();
  const auto capacities = store.CaseListCapacity();
  EXPECT_EQ(counts[1], 20);
  EXPECT_EQ(capacities[1], 22);
  EXPECT_EQ(counts[0], 0);
  EXPECT_EQ(capacities[0], 0);
  EXPECT_EQ(capacities[2], 0);
}

TEST_F(LoadCases, TheFirstCaseOfAListGivesCapacityEleven) {
  Pattern("DEAD", false, false, true);
  host.cases = {Gravity("Grav", {{"Load", "DEAD", 1.0}}), Pushover("Push", {{"Accel", "UX", 1.0}}),
                History("Quake", {Accel("U1", "EQ", 1.0)})};
  Fill();
  const auto counts = store.CaseListCount();
  const auto capacities = store.CaseListCapacity();
  EXPECT_EQ(counts[0], 1);
  EXPECT_EQ(counts[1], 1);
  EXPECT_EQ(counts[2], 1);
  EXPECT_EQ(capacities[0], 11);
  EXPECT_EQ(capacities[1], 11);
  EXPECT_EQ(capacities[2], 11);
  for (int slot = 3; slot < 20; ++slot) {
    EXPECT_EQ(counts[static_cast<std::size_t>(slot)], 0);
    EXPECT_EQ(capacities[static_cast<std::size_t>(slot)], 0);
  }
  EXPECT_EQ(store.LoadCases.Count(), 1);
  EXPECT_EQ(store.LoadCases.Capacity(), 11);
}

// ---- Dynamic cases ----

TEST_F(LoadCases, AHistoryCaseWithOnlyU3IsKeptWithBlankU1AndU2) {
  Function("EQ-Z", 250);
  host.cases = {History("Vertical", {Accel("U3", "EQ-Z", 9.81, 2.0)}, 500, 0.02)};
  Fill();
  ASSERT_EQ(store.DynamicCases.Count(), 1);
  // 9.81 over the f32 gravity 9.81 is just below 1 in f64 and narrows to 1 - 2^-24.
  const float factor = static_cast<float>(9.81 / static_cast<double>(9.81f));
  EXPECT_EQ(factor, 0.99999994f);
  EXPECT_EQ(Bytes(store.DynamicCases.RecordBytes(1)),
            DynamicRecord("Vertical", 10.0f, 0.02f,
                          {DynamicSlot{}, DynamicSlot{}, DynamicSlot{"EQ-Z", 250, factor, 2.0f}},
                          "H1 Drift")
                .Bytes());
  // The blank slots are spaces, not zero bytes.
  EXPECT_EQ(store.DynamicCases.Record(1).GetText(dynamic_case_rec::RecordName(1)),
            std::string(12, ' '));
}

TEST_F(LoadCases, FactorsAreDividedByTheUnitGravityAndNarrowed) {
  store.SetTrelkUnitsFromCode(7);  // kgf and millimetre: gravity 9814.56
  Function("EQ-X", 3);
  Function("EQ-Y", 4);
  host.cases = {History("Quake", {Accel("U1", "EQ-X", 4907.28, 0.5), Accel("U2", "EQ-Y", 1000.0)},
                        1000, 0.005)};
  Fill();
  const double g = static_cast<double>(9814.56f);
  EXPECT_EQ(Bytes(store.DynamicCases.RecordBytes(1)),
            DynamicRecord("Quake", static_cast<float>(1000 * 0.005), 0.005f,
                          {DynamicSlot{"EQ-X", 3, static_cast<float>(4907.28 / g), 0.5f},
                           DynamicSlot{"EQ-Y", 4, static_cast<float>(1000.0 / g), 1.0f},
                           DynamicSlot{}},
                          "H1 Drift")
                .Bytes());
}

TEST_F(LoadCases, TheFirstLoadOfADirectionInHostOrderWinsAndOtherLoadsAreDropped) {
  Function("EQ-A", 5);
  Function("EQ-B", 6);
  host.cases = {History("Quake", {{"Load", "DEAD", 1.0, "EQ-B", 1.0},
                                  Accel("U2", "EQ-A", 9.81, 1.5),
                                  Accel("UX", "EQ-B", 9.81),
                                  Accel("U2", "EQ-B", 19.62, 3.0)},
                        40, 0.25)};
  Fill();
  ASSERT_EQ(store.DynamicCases.Count(), 1);
  // No U1 but a U2: the second drift is watched.
  EXPECT_EQ(Bytes(store.DynamicCases.RecordBytes(1)),
            DynamicRecord("Quake", 10.0f, 0.25f,
                          {DynamicSlot{},
                           DynamicSlot{"EQ-A", 5, static_cast<float>(9.81 / 9.81f), 1.5f},
                           DynamicSlot{}},
                          "H2 Drift")
                .Bytes());
}

TEST_F(LoadCases, AFunctionThatWasNotKeptGivesNoPoints) {
  Function("EQ-X", 8);
  host.cases = {History("Quake", {Accel("U1", "LOST", 9.81), Accel("U2", "EQ-X", 9.81)}, 10, 0.1)};
  Fill();
  RecordRef rec = store.DynamicCases.Record(1);
  EXPECT_EQ(rec.GetText(dynamic_case_rec::RecordName(1)), "LOST" + std::string(8, ' '));
  EXPECT_EQ(rec.GetText(dynamic_case_rec::RecordFolder(1)), "EqkeGroup   ");
  EXPECT_EQ(rec.GetInt(dynamic_case_rec::RecordPoints(1)), 0);
  EXPECT_EQ(rec.GetInt(dynamic_case_rec::RecordPoints(2)), 8);
  EXPECT_EQ(rec.GetText(dynamic_case_rec::DriftName), "H1 Drift" + std::string(12, ' '));
}

TEST_F(LoadCases, AHistoryCaseWithoutAnAccelerationInU1U2OrU3IsLeftOut) {
  host.cases = {History("NoAccel", {{"Load", "DEAD", 1.0, "EQ", 1.0}, Accel("UX", "EQ", 1.0)},
                        10, 0.1, HostDamping{2, 0, 0, 0.1, 1.0, 0.05, 0.05}),
                Pushover("Push", {{"Accel", "UX", 1.0}})};
  Fill();
  EXPECT_EQ(store.DynamicCases.Count(), 0);
  // No history case was counted, so the series is the pushover one.
  ASSERT_EQ(store.LoadCases.Count(), 1);
  EXPECT_EQ(Bytes(store.LoadCases.RecordBytes(1)),
            SeriesRecord("PushAnalysis", 0, 0, 0, 0).Bytes());
  EXPECT_EQ(host.damping_calls, 0);
}

TEST_F(LoadCases, TheTwentiethHistoryCaseIsCountedNotAddedAndGivesTheSeriesItsDamping) {
  for (int i = 1; i <= 19; ++i) {
    host.cases.push_back(History("H" + std::to_string(i), {Accel("U1", "EQ", 1.0)}, 10, 0.1,
                                 HostDamping{1, 0.5, 0.001, 0, 0, 0, 0}));
  }
  host.cases.push_back(History("H20", {Accel("U1", "EQ", 1.0)}, 10, 0.1,
                               HostDamping{2, 0.0, 0.0, 2.0, 0.5, 0.05, 0.02}));
  host.cases.push_back(Pushover("Push", {{"Accel", "UX", 1.0}}));
  Fill();
  EXPECT_EQ(store.DynamicCases.Count(), 19);
  EXPECT_EQ(store.DynamicCases.Capacity(), 22);
  EXPECT_EQ(store.DynamicCases.Record(19).GetText(dynamic_case_rec::Name),
            "H19" + std::string(37, ' '));
  // The history series wins over the pushover case, with the damping of H20, its periods
  // put in rising order.
  EXPECT_EQ(host.damping_calls, 1);
  EXPECT_EQ(host.damping_case, "H20");
  ASSERT_EQ(store.LoadCases.Count(), 1);
  EXPECT_EQ(Bytes(store.LoadCases.RecordBytes(1)),
            SeriesRecord("DynaAnalysis", 0.5f, 2.0f, 0.02f, 0.05f).Bytes());
}

// ---- The series entry and its damping ----

TEST_F(LoadCases, DampingByCoefficientsUsesTheFixedPeriods) {
  host.cases = {History("Quake", {Accel("U1", "EQ", 1.0)}, 10, 0.1,
                        HostDamping{1, 0.3, 0.002, 7.0, 8.0, 0.9, 0.9})};
  Fill();
  EXPECT_EQ(Bytes(store.LoadCases.RecordBytes(1)),
            SeriesRecord("DynaAnalysis", 0.1f, 0.9f,
                         static_cast<float>(0.3 * 0.1 / 4 / 3.1415926),
                         static_cast<float>(0.002 * 3.1415926 / 0.9))
                .Bytes());
}

TEST_F(LoadCases, DampingByPeriodsKeepsRisingPeriodsAsTheyAre) {
  host.cases = {History("Quake", {Accel("U1", "EQ", 1.0)}, 10, 0.1,
                        HostDamping{2, 0.3, 0.002, 0.2, 1.5, 0.04, 0.06})};
  Fill();
  EXPECT_EQ(Bytes(store.LoadCases.RecordBytes(1)),
            SeriesRecord("DynaAnalysis", 0.2f, 1.5f, 0.04f, 0.06f).Bytes());
}

TEST_F(LoadCases, DampingByFrequenciesSwapsAndInverts) {
  // 10 Hz and 2 Hz, ratios 0.05 and 0.03: in rising order 2 (0.03) and 10 (0.05); the
  // first period is that of the higher frequency and takes its ratio.
  host.cases = {History("Quake", {Accel("U1", "EQ", 1.0)}, 10, 0.1,
                        HostDamping{3, 0.0, 0.0, 10.0, 2.0, 0.05, 0.03})};
  Fill();
  EXPECT_EQ(Bytes(store.LoadCases.RecordBytes(1)),
            SeriesRecord("DynaAnalysis", static_cast<float>(1 / 10.0),
                         static_cast<float>(1 / 2.0), 0.05f, 0.03f)
                .Bytes());
}

TEST_F(LoadCases, DampingByFrequenciesInRisingOrderIsOnlyInverted) {
  host.cases = {History("Quake", {Accel("U1", "EQ", 1.0)}, 10, 0.1,
                        HostDamping{3, 0.0, 0.0, 4.0, 8.0, 0.02, 0.07})};
  Fill();
  EXPECT_EQ(Bytes(store.LoadCases.RecordBytes(1)),
            SeriesRecord("DynaAnalysis", 0.125f, 0.25f, 0.07f, 0.02f).Bytes());
}

TEST_F(LoadCases, AFrequencyOfZeroStopsTheTransfer) {
  host.cases = {History("Quake", {Accel("U1", "EQ", 1.0)}, 10, 0.1,
                        HostDamping{3, 0.0, 0.0, 0.0, 2.0, 0.05, 0.05})};
  EXPECT_THROW(Fill(), TransferFailure);
}

TEST_F(LoadCases, AHistoryCaseWithoutDampingLeavesTheSeriesDampingZero) {
  host.cases = {History("Quake", {Accel("U1", "EQ", 1.0)})};
  Fill();
  EXPECT_EQ(Bytes(store.LoadCases.RecordBytes(1)),
            SeriesRecord("DynaAnalysis", 0, 0, 0, 0).Bytes());
}

TEST_F(LoadCases, ThePushoverSeriesHasNoDamping) {
  store.AddTrelkLoadCase();  // the step does not clear the list: a second entry follows
  FillAnalysisSeries(store, 1, "PushAnalysis", SeriesDamping{-1, 1, 1, 1, 2, 0.1, 0.2});
  EXPECT_EQ(Bytes(store.LoadCases.RecordBytes(1)),
            SeriesRecord("PushAnalysis", 0, 0, 0, 0).Bytes());
  FillAnalysisSeries(store, 1, "PushAnalysis", SeriesDamping{4, 1, 1, 1, 2, 0.1, 0.2});
  EXPECT_EQ(Bytes(store.LoadCases.RecordBytes(1)),
            SeriesRecord("PushAnalysis", 0, 0, 0, 0).Bytes());
}

// ---- Removal of an earlier result ----

TEST_F(LoadCases, AnOldHistoryResultFolderIsRemoved) {
  const fs::path old = temp.Path() / "Frame1" / "DynaAnalysis";
  fs::create_directories(old / "Step1");
  testing::WriteFileBytes(old / "Step1" / "result", {1, 2, 3});
  context.delete_folder = nullptr;  // the default removal
  host.cases = {History("Quake", {Accel("U1", "EQ", 1.0)}), Pushover("Push", {{"Accel", "UX", 1}})};
  Fill();
  EXPECT_FALSE(fs::exists(old));
  EXPECT_TRUE(fs::exists(temp.Path() / "Frame1"));
}

TEST_F(LoadCases, AnOldPushoverResultFolderIsRemovedThroughTheGivenFunction) {
  fs::create_directories(temp.Path() / "Frame1" / "PushAnalysis");
  fs::create_directories(temp.Path() / "Frame1" / "DynaAnalysis");
  host.cases = {Pushover("Push", {{"Accel", "UX", 1}})};
  Fill();
  ASSERT_EQ(deleted.size(), 1u);
  EXPECT_EQ(deleted[0], temp.Path() / "Frame1" / "PushAnalysis");
  ASSERT_EQ(store.LoadCases.Count(), 1);
}

TEST_F(LoadCases, WithoutAnOldResultNothingIsDeleted) {
  host.cases = {History("Quake", {Accel("U1", "EQ", 1.0)})};
  Fill();
  EXPECT_TRUE(deleted.empty());
  EXPECT_EQ(store.LoadCases.Count(), 1);
}

TEST_F(LoadCases, TheStructureFolderComesFromTheStoreWhenNotGiven) {
  store.StructuresRoot = temp.Path().string();
  store.SetStructureName("Tower");
  fs::create_directories(temp.Path() / "Tower" / "DynaAnalysis");
  context.structure_folder.clear();
  host.cases = {History("Quake", {Accel("U1", "EQ", 1.0)})};
  Fill();
  ASSERT_EQ(deleted.size(), 1u);
  EXPECT_EQ(deleted[0], temp.Path() / "Tower" / "DynaAnalysis");
}

// ---- The L and A files ----

TEST_F(LoadCases, TheCasesReachTheLFileAndTheSeriesTheAFile) {
  store.FileIdText = "TRKD";
  store.VersionText = "4.0";
  store.SetStructureName("Frame1");
  store.StructureTitle = "Model Transferred";
  store.StructuresRoot = temp.Path().string();
  store.AddTrelkDrift();
  store.AddTrelkDrift();
  Pattern("DEAD", false, false, true);
  Function("EQ", 20);
  host.cases = {Gravity("Grav", {{"Load", "DEAD", 1.0}}), Pushover("Push", {{"Accel", "UX", 1.0}}),
                History("Quake", {Accel("U1", "EQ", 9.81)}, 200, 0.01,
                        HostDamping{2, 0, 0, 0.1, 1.0, 0.05, 0.05})};
  Fill();
  CollectedMessages messages;
  fs::create_directories(temp.Path() / "Frame1");
  WriteTrelkStructure(store, "TRKD", true, 0, messages);
  EXPECT_TRUE(messages.messages.empty());

  const auto l_file = ReadFileBytes(temp.Path() / "Frame1" / "TRKDL");
  // Head, one case of each list, and one drift flag byte for each drift of the pushover.
  ASSERT_EQ(l_file.size(), 160u + 1024u + 1042u + 2u + 348u);
  for (int slot = 0; slot < 3; ++slot) {
    EXPECT_EQ(ReadI16Le(l_file, 80 + 2 * static_cast<std::size_t>(slot)), 1);
    EXPECT_EQ(ReadI16Le(l_file, 120 + 2 * static_cast<std::size_t>(slot)), 11);
  }
  EXPECT_EQ(std::vector<std::uint8_t>(l_file.begin() + 160, l_file.begin() + 1184),
            Bytes(store.GravityCases.RecordBytes(1)));
  EXPECT_EQ(std::vector<std::uint8_t>(l_file.begin() + 1184, l_file.begin() + 2226),
            Bytes(store.PushoverCases.RecordBytes(1)));
  EXPECT_EQ(l_file[2226], 0);
  EXPECT_EQ(l_file[2227], 0);
  EXPECT_EQ(std::vector<std::uint8_t>(l_file.begin() + 2228, l_file.end()),
            Bytes(store.DynamicCases.RecordBytes(1)));

  const auto a_file = ReadFileBytes(temp.Path() / "Frame1" / "TRKDA");
  // Head, the series entry, the factor slot count and the entry count.
  ASSERT_EQ(a_file.size(), 86u + 194u + 2u + 2u);
  EXPECT_EQ(ReadI16Le(a_file, 80), 1);
  EXPECT_EQ(std::vector<std::uint8_t>(a_file.begin() + 86, a_file.begin() + 280),
            SeriesRecord("DynaAnalysis", 0.1f, 1.0f, 0.05f, 0.05f).Bytes());
}

}  // namespace
}  // namespace vtt
