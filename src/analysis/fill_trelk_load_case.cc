#include "analysis/fill_trelk_load_case.h"

#include <algorithm>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "source/host_model.h"
#include "source/vask_model.h"
#include "store/load_case_records.h"
#include "store/structure_files.h"
#include "store/trelk_store.h"
#include "transfer/failure.h"

namespace vtt {
namespace {

// Host case types that the step takes.
constexpr int kCaseNonlinearStatic = 2;
constexpr int kCaseNonlinearHistory = 8;
// Load control of a static case.
constexpr int kControlForce = 1;
constexpr int kControlDisplacement = 2;

constexpr std::string_view kDriftH1 = "H1 Drift";
constexpr std::string_view kDriftH2 = "H2 Drift";
constexpr std::string_view kDynamicSeries = "DynaAnalysis";
constexpr std::string_view kPushoverSeries = "PushAnalysis";

// The host's count, but never past the arrays it returned.
int Bounded(int count, std::size_t size) {
  return std::clamp(count, 0, static_cast<int>(size));
}

// The name a load of a case goes by when it is left out: the case, the load's type and name.
std::string CaseLoadName(std::string_view case_name, const std::string& type,
                         const std::string& load) {
  return std::string(case_name) + " (" + type + " " + load + ")";
}

void NoteCaseLoad(const VaskModelObj& model, std::string_view case_name, const std::string& type,
                  const std::string& load, std::string reason) {
  model.NoteDrop("case load", CaseLoadName(case_name, type, load), std::move(reason));
}

constexpr std::string_view kBeyondCaseLoads = "beyond the 20 loads a case takes";

// ---- Gravity cases ----

// The entries of a force-controlled case: for each "Load" of a known pattern, its nodal,
// frame-load and self-weight patterns in that order, all with the load's factor.
std::vector<CaseLoadEntry> GravityEntries(const VaskModelObj& model, std::string_view case_name,
                                          int count, const Names& types, const Names& names,
                                          const Reals& factors) {
  std::vector<CaseLoadEntry> entries;
  for (int i = 0; i < count; ++i) {
    if (types[i] != "Load")
      NoteCaseLoad(model, case_name, types[i], names[i], "a gravity case takes only Load loads");
    if (types[i] != "Load") continue;
    const VaskLoadPatternObj* pattern = model.LoadPatternObjGet(names[i]);
    if (pattern == nullptr)
      NoteCaseLoad(model, case_name, types[i], names[i], "its load pattern is not in the model");
    if (pattern == nullptr) continue;
    if (!pattern->LoadNodeNotEmpty && !pattern->LoadElementNotEmpty &&
        !pattern->SelfWeightNotEmpty)
      NoteCaseLoad(model, case_name, types[i], names[i],
                   "its pattern carries no nodal load, frame load or self weight");
    const double sf = factors[i];
    bool beyond = false;
    const auto add = [&](bool holds, int kind, const std::string& name) {
      if (holds && static_cast<int>(entries.size()) < kMaxCaseLoads) {
        entries.push_back({kind, name, sf});
      } else if (holds) {
        beyond = true;
      }
    };
    add(pattern->LoadNodeNotEmpty, 1, pattern->TrelkLoadPatternNodeName);
    add(pattern->LoadElementNotEmpty, 2, pattern->TrelkLoadPatternElementName);
    add(pattern->SelfWeightNotEmpty, 3, pattern->TrelkLoadPatternSelfWeightName);
    if (beyond) NoteCaseLoad(model, case_name, types[i], names[i], std::string(kBeyondCaseLoads));
  }
  return entries;
}

// ---- Pushover cases ----

struct PushoverLoads {
  bool on_modes = false;
  std::vector<CaseLoadEntry> loads;
  std::vector<CaseModeEntry> modes;
};

// The entries of a displacement-controlled case, of the kind that its first "Load", "Mode"
// or "Accel" sets; nothing when it has none of these.
std::optional<PushoverLoads> PushoverEntries(const VaskModelObj& model,
                                             const std::string& case_name, int count,
                                             const Names& types, const Names& names,
                                             const Reals& factors) {
  const auto first = std::find_if(types.begin(), types.begin() + count, [](const std::string& t) {
    return t == "Load" || t == "Mode" || t == "Accel";
  });
  if (first == types.begin() + count) return std::nullopt;
  const std::string kind = *first;

  PushoverLoads result;
  const auto note = [&](int i, std::string reason) {
    NoteCaseLoad(model, case_name, types[i], names[i], std::move(reason));
  };
  for (int i = 0; i < count; ++i) {
    if (types[i] != kind)
      note(i, "the case's first load made it a pushover on " + kind + " loads");
    if (types[i] != kind) continue;
    const double sf = factors[i];
    if (kind == "Load") {
      // Only the nodal pattern is pushed; frame loads and self weight stay behind.
      const VaskLoadPatternObj* pattern = model.LoadPatternObjGet(names[i]);
      if (pattern == nullptr) note(i, "its load pattern is not in the model");
      if (pattern != nullptr && !pattern->LoadNodeNotEmpty)
        note(i, "its pattern has no nodal load, and a pushover case pushes only nodal loads");
      if (pattern == nullptr || !pattern->LoadNodeNotEmpty) continue;
      if (static_cast<int>(result.loads.size()) >= kMaxCaseLoads)
        note(i, std::string(kBeyondCaseLoads));
      if (static_cast<int>(result.loads.size()) >= kMaxCaseLoads) continue;
      if (pattern->LoadElementNotEmpty || pattern->SelfWeightNotEmpty) {
        const std::string behind = pattern->LoadElementNotEmpty && pattern->SelfWeightNotEmpty
                                       ? "frame loads and self weight are"
                                   : pattern->LoadElementNotEmpty ? "frame loads are"
                                                                  : "self weight is";
        note(i, "its " + behind + " not pushed, only its nodal loads");
      }
      result.loads.push_back({1, pattern->TrelkLoadPatternNodeName, sf});
    } else if (kind == "Mode") {
      if (static_cast<int>(result.modes.size()) >= kMaxPushoverModes)
        note(i, "beyond the 6 modes a pushover case takes");
      if (static_cast<int>(result.modes.size()) >= kMaxPushoverModes) continue;
      const std::int64_t mode = ModeNumberFromLoadName(names[i]);
      if (mode < 0 || mode > 255) {
        note(i, "not a mode number from 0 to 255: the transfer stopped");
        throw TransferFailure("Load case \"" + case_name + "\": the mode \"" + names[i] +
                              "\" is not a mode number from 0 to 255.");
      }
      result.modes.push_back({static_cast<int>(mode), sf});
    } else {
      std::string pattern;
      if (names[i] == "UX") {
        pattern = "AccelUX";
      } else if (names[i] == "UY") {
        pattern = "AccelUY";
      } else {
        note(i, "only the accelerations UX and UY are pushed");
        continue;
      }
      if (static_cast<int>(result.loads.size()) >= kMaxCaseLoads)
        note(i, std::string(kBeyondCaseLoads));
      if (static_cast<int>(result.loads.size()) >= kMaxCaseLoads) continue;
      result.loads.push_back({1, pattern, sf});
    }
  }
  result.on_modes = kind == "Mode";
  return result;
}

// ---- History cases ----

// The acceleration of each direction U1, U2, U3 that the case applies; the first load of a
// direction in host order wins. Nothing when the case has none.
// The loads the case does not apply go to `left_out`, each as its name and reason.
std::optional<std::array<HistoryDirection, 3>> HistoryDirections(
    HostModel& host, const std::string& case_name, double gravity,
    std::vector<std::pair<std::string, std::string>>& left_out) {
  int count = 0;
  Names types, names, functions;
  Reals factors, time_factors;
  host.GetHistoryLoads(case_name, count, types, names, functions, factors, time_factors);
  count = Bounded(count, std::min({types.size(), names.size(), functions.size(), factors.size(),
                                   time_factors.size()}));
  std::array<HistoryDirection, 3> directions{};
  bool found = false;
  // From the last load to the first, so that the first of a direction is the one left.
  for (int i = count - 1; i >= 0; --i) {
    const std::string load = CaseLoadName(case_name, types[i], names[i]);
    if (types[i] != "Accel") left_out.emplace_back(load, "a history case takes only Accel loads");
    if (types[i] != "Accel") continue;
    int d = -1;
    if (names[i] == "U1") d = 0;
    if (names[i] == "U2") d = 1;
    if (names[i] == "U3") d = 2;
    if (d < 0) left_out.emplace_back(load, "only the accelerations U1, U2 and U3 are taken");
    if (d < 0) continue;
    // Met from the last, so the load already there comes later in host order.
    if (!directions[d].function.empty()) {
      const std::string later = names[i] + " " + directions[d].function;
      left_out.emplace_back(CaseLoadName(case_name, types[i], later),
                            "an earlier acceleration in " + names[i] + " of the case is taken");
    }
    directions[d].function = functions[i];
    directions[d].factor = factors[i];
    directions[d].time_factor = time_factors[i];
    found = true;
  }
  if (!found) return std::nullopt;
  // The host's acceleration is in length units per second squared; Trelk's in g.
  for (HistoryDirection& direction : directions) direction.factor /= gravity;
  return directions;
}

// ---- The series ----

void RemoveOldSeries(const LoadCaseContext& context, const TrelkStore& store,
                     std::string_view series) {
  const std::filesystem::path folder =
      context.structure_folder.empty()
          ? StructureFolderPath(store.StructuresRoot, store.StructureName)
          : context.structure_folder;
  const std::filesystem::path path = folder / std::string(series);
  std::error_code ec;
  if (!std::filesystem::is_directory(path, ec)) return;
  if (context.delete_folder) {
    context.delete_folder(path);
  } else {
    std::filesystem::remove_all(path, ec);
  }
}

}  // namespace

std::int64_t ModeNumberFromLoadName(std::string_view load_name) {
  std::size_t i = 0;
  while (i < load_name.size() && (load_name[i] == ' ' || load_name[i] == '\t')) ++i;
  bool negative = false;
  if (i < load_name.size() && (load_name[i] == '+' || load_name[i] == '-')) {
    negative = load_name[i] == '-';
    ++i;
  }
  // Past 255 the number is out of range whatever follows; stop growing it well before any
  // overflow.
  constexpr std::int64_t kCeiling = 1'000'000;
  std::int64_t value = 0;
  for (; i < load_name.size() && load_name[i] >= '0' && load_name[i] <= '9'; ++i) {
    value = std::min(kCeiling, value * 10 + (load_name[i] - '0'));
  }
  return negative ? -value : value;
}

void FillGravityCase(TrelkStore& store, std::int32_t number, std::string_view name,
                     const std::vector<CaseLoadEntry>& entries) {
  namespace r = gravity_case_rec;
  RecordRef rec = store.GravityCases.Record(number);
  rec.SetText(r::Name, NameWithSuffix("", name, number));
  rec.SetInt(r::Kind, 0);
  const int count = std::min(static_cast<int>(entries.size()), r::kMaxLoads);
  rec.SetInt(r::LoadCount, count);
  for (int e = 1; e <= count; ++e) {
    const CaseLoadEntry& entry = entries[static_cast<std::size_t>(e - 1)];
    rec.SetInt(r::LoadKind(e), entry.kind);
    rec.SetText(r::LoadName(e), entry.name);
    rec.SetReal(r::LoadFactor(e), entry.factor);
  }
}

void FillPushoverCase(TrelkStore& store, std::int32_t number, std::string_view name,
                      const std::vector<CaseLoadEntry>& loads,
                      const std::vector<CaseModeEntry>& modes, bool on_modes, int monitored_dof) {
  namespace r = pushover_case_rec;
  RecordRef rec = store.PushoverCases.Record(number);
  rec.SetText(r::Name, name);
  rec.SetInt(r::Kind, 1);
  rec.SetInt(r::Mode, on_modes ? 1 : 0);
  rec.SetText(r::Criterion, kCaseCriterion);
  rec.SetInt(r::Value1, 50);
  rec.SetInt(r::Value2, 200);
  rec.SetReal(r::Value3, 0.02);
  if (on_modes) {
    const int count = std::min(static_cast<int>(modes.size()), kMaxPushoverModes);
    rec.SetInt(r::LoadCount, count);
    for (int e = 1; e <= count; ++e) {
      const CaseModeEntry& entry = modes[static_cast<std::size_t>(e - 1)];
      rec.SetInt(r::ModeNumber(e), entry.mode);
      rec.SetReal(r::LoadFactor(e), entry.factor);
    }
  } else {
    const int count = std::min(static_cast<int>(loads.size()), r::kMaxLoads);
    rec.SetInt(r::LoadCount, count);
    for (int e = 1; e <= count; ++e) {
      const CaseLoadEntry& entry = loads[static_cast<std::size_t>(e - 1)];
      rec.SetInt(r::LoadKind(e), entry.kind);
      rec.SetText(r::LoadName(e), entry.name);
      rec.SetReal(r::LoadFactor(e), entry.factor);
    }
  }
  rec.SetText(r::DriftName, monitored_dof == 2 ? kDriftH2 : kDriftH1);
}

void FillDynamicCase(TrelkStore& store, const VaskModelObj& model, std::int32_t number,
                     std::string_view name, std::string_view subfolder,
                     const std::array<HistoryDirection, 3>& directions, int steps,
                     double step_size) {
  namespace r = dynamic_case_rec;
  RecordRef rec = store.DynamicCases.Record(number);
  rec.SetText(r::Name, name);
  rec.SetInt(r::Kind, 1);
  rec.SetText(r::Criterion, kCaseCriterion);
  rec.SetReal(r::Duration, static_cast<double>(steps) * step_size);
  rec.SetReal(r::TimeStep, step_size);
  rec.SetInt(r::Value1, 200);
  for (int slot = 1; slot <= 3; ++slot) {
    const HistoryDirection& direction = directions[static_cast<std::size_t>(slot - 1)];
    if (direction.function.empty()) {
      rec.SetText(r::RecordFolder(slot), "");
      rec.SetText(r::RecordName(slot), "");
      rec.SetText(r::RecordTitle(slot), "");
      rec.SetInt(r::RecordPoints(slot), 0);
      rec.SetReal(r::Factor(slot), 0.0);
      rec.SetReal(r::TimeFactor(slot), 1.0);
      continue;
    }
    // A function whose kind the reading could not take has no record file and no points.
    const VaskTHFuncObj* function = model.THFuncObjGet(direction.function);
    if (function == nullptr) {
      const std::string load = "U" + std::to_string(slot) + " " + direction.function;
      model.NoteDrop("case load", CaseLoadName(name, "Accel", load),
                     "its function was not kept: the record goes in with no points");
    }
    rec.SetText(r::RecordFolder(slot), subfolder);
    rec.SetText(r::RecordName(slot), direction.function);
    rec.SetText(r::RecordTitle(slot), "EarthquakeRecord: " + direction.function);
    rec.SetInt(r::RecordPoints(slot), function != nullptr ? function->ValueNum : 0);
    rec.SetReal(r::Factor(slot), direction.factor);
    rec.SetReal(r::TimeFactor(slot), direction.time_factor);
  }
  const bool u2_only = directions[0].function.empty() && !directions[1].function.empty();
  rec.SetText(r::DriftName, u2_only ? kDriftH2 : kDriftH1);
  rec.SetInt(r::Value2, 1);
}

void FillAnalysisSeries(TrelkStore& store, std::int32_t number, std::string_view name,
                        const SeriesDamping& damping) {
  namespace r = load_case_rec;
  RecordRef rec = store.LoadCases.Record(number);
  rec.SetText(r::Name, name);
  rec.SetText(r::Title, "Trelk: " + std::string(name));
  rec.SetText(r::Text, "");
  rec.SetInt(r::Flag1, 0);
  rec.SetInt(r::Flag2, 0);
  rec.SetInt(r::Value1, 0);
  rec.SetInt(r::Value2, 10);
  rec.SetReal(r::Value3, 1.0);
  rec.SetInt(r::HasDetail, 0);

  double f1 = damping.value1;
  double f2 = damping.value2;
  double r1 = damping.ratio1;
  double r2 = damping.ratio2;
  // Periods and frequencies are put in rising order, each ratio staying with its value.
  const auto order = [&] {
    if (f1 > f2) {
      std::swap(f1, f2);
      std::swap(r1, r2);
    }
  };
  switch (damping.type) {
    case 1:
      rec.SetReal(r::DampPeriod1, 0.1);
      rec.SetReal(r::DampPeriod2, 0.9);
      rec.SetReal(r::DampRatio1, damping.mass_coefficient * 0.1 / 4 / kDampingPi);
      rec.SetReal(r::DampRatio2, damping.stiffness_coefficient * kDampingPi / 0.9);
      break;
    case 2:
      order();
      rec.SetReal(r::DampPeriod1, f1);
      rec.SetReal(r::DampPeriod2, f2);
      rec.SetReal(r::DampRatio1, r1);
      rec.SetReal(r::DampRatio2, r2);
      break;
    case 3:
      order();
      if (f1 == 0.0 || f2 == 0.0) {
        throw TransferFailure("Division by zero: the damping of the analysis series \"" +
                              std::string(name) + "\" is given at a frequency of 0.");
      }
      // The higher frequency is the shorter period.
      rec.SetReal(r::DampPeriod1, 1 / f2);
      rec.SetReal(r::DampPeriod2, 1 / f1);
      rec.SetReal(r::DampRatio1, r2);
      rec.SetReal(r::DampRatio2, r1);
      break;
    default:
      break;
  }
}

void FillTrelkLoadCases(HostModel& host, VaskModelObj& model, TrelkStore& store,
                        const LoadCaseContext& context) {
  int case_count = 0;
  Names case_names;
  host.GetCaseNames(case_count, case_names);
  case_count = Bounded(case_count, case_names.size());

  const double gravity = store.Units.UnitGravity;
  int dynamic_count = 0;
  std::optional<std::string> last_history;

  for (int c = 0; c < case_count; ++c) {
    const std::string& name = case_names[static_cast<std::size_t>(c)];
    int type = 0, sub_type = 0, design_type = 0, design_option = 0, auto_created = 0;
    host.GetCaseType(name, type, sub_type, design_type, design_option, auto_created);

    if (type == kCaseNonlinearHistory) {
      std::vector<std::pair<std::string, std::string>> loads_left_out;
      const auto directions = HistoryDirections(host, name, gravity, loads_left_out);
      int steps = 0;
      double step_size = 0.0;
      host.GetHistoryTimeStep(name, steps, step_size);
      if (!directions)
        model.NoteDrop("load case", name, "a history case without an acceleration in U1, U2 or U3");
      if (!directions) continue;
      ++dynamic_count;
      if (dynamic_count < kDynamicCaseCountLimit) {
        for (const auto& [load, reason] : loads_left_out) model.NoteDrop("case load", load, reason);
        const std::int32_t number = store.AddDynamicCase();
        FillDynamicCase(store, model, number, name, context.records_subfolder, *directions,
                        steps, step_size);
      } else {
        model.NoteDrop("load case", name, "beyond the 19 dynamic cases a structure takes");
      }
      last_history = name;
      continue;
    }
    if (type != kCaseNonlinearStatic)
      model.NoteDrop("load case", name, "neither a nonlinear static nor a nonlinear history case");
    if (type != kCaseNonlinearStatic) continue;

    int control = 0, displacement_type = 0, monitored_dof = 0;
    double displacement = 0.0;
    std::string monitored_point;
    host.GetStaticLoadApplication(name, control, displacement_type, displacement, monitored_dof,
                                  monitored_point);
    int count = 0;
    Names types, names;
    Reals factors;
    host.GetStaticLoads(name, count, types, names, factors);
    count = Bounded(count, std::min({types.size(), names.size(), factors.size()}));

    if (control == kControlForce) {
      if (store.GravityCases.Count() >= kMaxGravityCases)
        model.NoteDrop("load case", name, "beyond the 20 gravity cases a structure takes");
      if (store.GravityCases.Count() >= kMaxGravityCases) continue;
      const auto entries = GravityEntries(model, name, count, types, names, factors);
      FillGravityCase(store, store.AddGravityCase(), name, entries);
    } else if (control == kControlDisplacement) {
      if (store.PushoverCases.Count() >= kMaxPushoverCases)
        model.NoteDrop("load case", name, "beyond the 20 pushover cases a structure takes");
      if (store.PushoverCases.Count() >= kMaxPushoverCases) continue;
      const auto loads = PushoverEntries(model, name, count, types, names, factors);
      if (!loads)
        model.NoteDrop("load case", name, "a pushover case without a Load, Mode or Accel load");
      if (!loads) continue;
      FillPushoverCase(store, store.AddPushoverCase(), name, loads->loads, loads->modes,
                       loads->on_modes, monitored_dof);
    } else {
      model.NoteDrop("load case", name, "a static case neither force- nor displacement-controlled");
    }
  }

  if (last_history && dynamic_count > 0) {
    RemoveOldSeries(context, store, kDynamicSeries);
    const std::int32_t number = store.AddTrelkLoadCase();
    SeriesDamping damping;
    host.GetHistoryDamping(*last_history, damping.type, damping.mass_coefficient,
                           damping.stiffness_coefficient, damping.value1, damping.value2,
                           damping.ratio1, damping.ratio2);
    FillAnalysisSeries(store, number, kDynamicSeries, damping);
  } else if (store.PushoverCases.Count() > 0) {
    RemoveOldSeries(context, store, kPushoverSeries);
    FillAnalysisSeries(store, store.AddTrelkLoadCase(), kPushoverSeries, SeriesDamping{});
  }
}

}  // namespace vtt
