// Load cases of the structure and the start of its analysis series.
//
// The host's nonlinear cases become Trelk cases: a force-controlled static case becomes a
// gravity case on the load patterns that the load steps made, a displacement-controlled
// static case a pushover case (on nodal patterns, on modes, or on the two acceleration
// patterns), and a nonlinear history case a dynamic earthquake case on the record files of
// its time-history functions. Each list takes a fixed number of cases; what is beyond is
// dropped without a word. Then one analysis series entry is made, for the history cases if
// there are any, else for the pushover cases, and an old result of that series is removed
// from the structure folder so that Trelk does not show it against the new structure. The
// user still has to complete the series in Trelk: the entry is only a start.
//
// This is the last fill step; it reads the load pattern names that the load steps left on
// the source patterns and the time-history functions that the reading kept.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/write_record_file.h"

namespace vtt {

class HostModel;
class TrelkStore;
class VaskModelObj;

// How many cases each list takes. The twentieth history case is still counted (and can be
// the one whose damping the series takes), but only nineteen are added.
inline constexpr int kMaxGravityCases = 20;
inline constexpr int kMaxPushoverCases = 20;
inline constexpr int kDynamicCaseCountLimit = 20;
inline constexpr int kMaxCaseLoads = 20;
inline constexpr int kMaxPushoverModes = 6;

// The stop criterion that pushover and dynamic cases carry; the 40-character field cuts it.
inline constexpr std::string_view kCaseCriterion = "Deformation beyond X point for any component";
// The constant of the coefficient form of the damping rule.
inline constexpr double kDampingPi = 3.1415926;

struct LoadCaseContext {
  // The subfolder of Trelk's records folder that holds the earthquake records.
  std::string records_subfolder = std::string(kEqkeGroupName);
  // The structure folder whose old "DynaAnalysis" or "PushAnalysis" folder is removed.
  // Empty: the store's structures folder joined with its structure name without trailing
  // spaces.
  std::filesystem::path structure_folder;
  // Deletes a folder with everything in it; whether it succeeded is not looked at. Empty:
  // std::filesystem::remove_all, its error ignored.
  std::function<void(const std::filesystem::path&)> delete_folder;
};

// One entry of a gravity or pushover case: a target load pattern and its scale factor.
struct CaseLoadEntry {
  int kind = 0;  // 1 nodal (or acceleration) pattern, 2 frame-load pattern, 3 self weight
  std::string name;
  double factor = 0.0;
};

// One entry of a pushover case on modes.
struct CaseModeEntry {
  int mode = 0;
  double factor = 0.0;
};

// What a history case applies in one of the directions U1, U2, U3.
struct HistoryDirection {
  std::string function;  // empty: nothing in this direction
  double factor = 1.0;   // already divided by gravity
  double time_factor = 1.0;
};

// The damping of a history case as the host gives it: type 1 mass and stiffness
// coefficients, 2 periods, 3 frequencies; any other type (the pushover series passes -1)
// sets no damping.
struct SeriesDamping {
  int type = -1;
  double mass_coefficient = 0.0;
  double stiffness_coefficient = 0.0;
  double value1 = 0.0;
  double value2 = 0.0;
  double ratio1 = 0.0;
  double ratio2 = 0.0;
};

// The whole step: every case of the host in host order, then the series entry.
void FillTrelkLoadCases(HostModel& host, VaskModelObj& model, TrelkStore& store,
                        const LoadCaseContext& context = {});

// Gravity case `number` (already added): its name through NameWithSuffix with the number,
// kind 0, and the entries (at most kMaxCaseLoads are written).
void FillGravityCase(TrelkStore& store, std::int32_t number, std::string_view name,
                     const std::vector<CaseLoadEntry>& entries);

// Pushover case `number` (already added), on patterns (`loads`, Mode 0) or on modes (`modes`,
// Mode 1, whose entries leave the pattern kind and name unfilled). "H2 Drift" is watched
// when the monitored degree of freedom is 2, "H1 Drift" otherwise.
void FillPushoverCase(TrelkStore& store, std::int32_t number, std::string_view name,
                      const std::vector<CaseLoadEntry>& loads,
                      const std::vector<CaseModeEntry>& modes, bool on_modes, int monitored_dof);

// Dynamic case `number` (already added) with the functions of U1, U2, U3. A direction with
// a function points at its record file; its point count is the kept function's ValueNum,
// or 0 when the reading did not keep a function of that name.
void FillDynamicCase(TrelkStore& store, const VaskModelObj& model, std::int32_t number,
                     std::string_view name, std::string_view subfolder,
                     const std::array<HistoryDirection, 3>& directions, int steps,
                     double step_size);

// Series entry `number` (already added) named "DynaAnalysis" or "PushAnalysis", with the
// damping rule applied to `damping`.
void FillAnalysisSeries(TrelkStore& store, std::int32_t number, std::string_view name,
                        const SeriesDamping& damping);

// The mode number that a "Mode" load names: leading blanks skipped, an optional sign, then
// the longest run of decimal digits; 0 without digits. A number too large for any mode
// comes back as a value above 255 (it is not exact past that).
std::int64_t ModeNumberFromLoadName(std::string_view load_name);

}  // namespace vtt
