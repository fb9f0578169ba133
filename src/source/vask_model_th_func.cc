// Stage 23 of ReadVaskData: the host's time-history functions.
//
// Every time-history function becomes a list of (time, value) points: read from the host
// for user functions, generated for the periodic shapes, read from its text file for a
// function from a file. Its record file is written at once, through the writer the driver
// gives, and the points are kept as a VaskTHFuncObj for the dynamic load cases.
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "source/function_file.h"
#include "source/vask_model.h"
#include "store/record_file_records.h"
#include "transfer/failure.h"

namespace vtt {
namespace {


// The time step before any function from a file has set it.
constexpr double kStartDt = 0.05;
// The full circle as the wave generator takes it.
constexpr double kFullCircle = 6.2831852;
// A wave value this small is a zero crossing.
constexpr double kWaveZero = 1e-6;
// A sawtooth ramps for at most a quarter of its period, and a little less than that when
// asked for more.
constexpr double kSawtoothRampLimit = 0.25;
constexpr double kSawtoothRampAtLimit = 0.2499;
// A ramp that ends no later than it starts holds on until this many times its ramp time.
constexpr double kRampHoldFactor = 20.0;
// Where the search for the largest time starts; a largest time below 0 gives duration 1.
constexpr double kNoTime = -100000.0;
constexpr double kNegativeDuration = 1.0;

// The points of one function as its kind gives them. Points that the host lists are kept
// in the host's arrays (`zeroBased`, point i at index i - 1); generated points and the
// points of a file are kept from index 1, with index 0 unused.
class FunctionPoints {
 public:
  FunctionPoints() = default;
  FunctionPoints(std::string_view name, int count, Reals times, Reals values)
      : times_(std::move(times)), values_(std::move(values)), count_(count), zeroBased_(true) {
    if (count_ < 0) count_ = 0;
    const auto needed = static_cast<std::size_t>(count_);
    if (times_.size() < needed || values_.size() < needed) {
      throw TransferFailure(fmt::format(
          "Time-history function \"{}\": the host counts {} points but gives {} times and {} "
          "values.",
          name, count_, times_.size(), values_.size()));
    }
  }

  void Add(double time, double value) {
    times_.push_back(time);
    values_.push_back(value);
    ++count_;
  }

  int Count() const { return count_; }
  bool ZeroBased() const { return zeroBased_; }
  double Time(int i) const { return times_[Slot(i)]; }
  double Value(int i) const { return values_[Slot(i)]; }
  const Reals& Times() const { return times_; }
  const Reals& Values() const { return values_; }

 private:
  std::size_t Slot(int i) const { return static_cast<std::size_t>(zeroBased_ ? i - 1 : i); }

  Reals times_{0.0};
  Reals values_{0.0};
  int count_ = 0;
  bool zeroBased_ = false;
};

// Generated functions have as many points as their cycles ask for; a count past this would
// only fill memory (a few hundred bytes of model can ask for billions), and no record file
// could hold even a small part of it, so the run stops here with the words the record
// file would give. Counts between what a record file holds and this stop there as before.
constexpr long long kMostGeneratedPoints = 10'000'000;

void CheckGeneratedCount(const std::string& name, long long cycles, long long perCycle) {
  if (cycles <= 0 || perCycle <= 0) return;
  const long long points = 1 + cycles * perCycle;
  if (points > kMostGeneratedPoints) {
    throw TransferFailure(fmt::format(
        "Time-history function \"{}\": its {} points do not fit a record file, which holds "
        "at most {} points.",
        name, points, record_file_rec::kMaxSourcePoints));
  }
}

// A sine starts at 0, a cosine at its amplitude; then `stepsPerCycle` points in each cycle.
void AddWave(FunctionPoints& points, bool cosine, double period, int stepsPerCycle, int cycles,
             double amplitude) {
  points.Add(0.0, cosine ? amplitude : 0.0);
  for (int c = 0; c < cycles; ++c) {
    for (int s = 1; s <= stepsPerCycle; ++s) {
      const double f = static_cast<double>(s) / static_cast<double>(stepsPerCycle);
      double w = cosine ? std::cos(kFullCircle * f) : std::sin(kFullCircle * f);
      if (std::fabs(w) < kWaveZero) w = 0.0;
      points.Add((c + f) * period, w * amplitude);
    }
  }
}

void AddRamp(FunctionPoints& points, double time, double amplitude, double maxTime) {
  if (!(maxTime > time)) maxTime = kRampHoldFactor * time;
  points.Add(0.0, 0.0);
  points.Add(time, amplitude);
  points.Add(maxTime, amplitude);
}

void AddSawtooth(FunctionPoints& points, double period, double rampTime, int cycles,
                 double amplitude) {
  double r = rampTime / period;
  if (r > kSawtoothRampLimit) r = kSawtoothRampAtLimit;
  points.Add(0.0, 0.0);
  for (int c = 0; c < cycles; ++c) {
    points.Add((c + r) * period, amplitude);
    points.Add((c + 0.5 - r) * period, amplitude);
    points.Add((c + 0.5) * period, 0.0);
    points.Add((c + 0.5 + r) * period, -amplitude);
    points.Add((c + 1 - r) * period, -amplitude);
    points.Add((c + 1) * period, 0.0);
  }
}

void AddTriangular(FunctionPoints& points, double period, int cycles, double amplitude) {
  points.Add(0.0, 0.0);
  for (int c = 0; c < cycles; ++c) {
    points.Add((c + 0.25) * period, amplitude);
    points.Add((c + 0.5) * period, 0.0);
    points.Add((c + 0.75) * period, -amplitude);
    points.Add((c + 1) * period, 0.0);
  }
}

}  // namespace

void VaskModelObj::ReadVaskTHFunc() {
  // One time step for the whole stage: a function from a file sets it through the host's
  // answer, and the functions after it keep it.
  double dt = kStartDt;
  int count = 0;
  Names names;
  host_.GetFunctionNames(count, names);
  if (count < 0) count = 0;
  if (names.size() < static_cast<std::size_t>(count)) {
    throw TransferFailure(fmt::format(
        "Time-history functions: the host counts {} functions but names {}.", count,
        names.size()));
  }
  for (int n = 0; n < count; ++n) {
    const std::string& name = names[static_cast<std::size_t>(n)];
    int family = 0;
    int kind = 0;
    // A kind without a reading of its own keeps the status of this call.
    int status = host_.GetFunctionType(name, family, kind);
    if (family != kTimeHistoryFamily) {
      NoteDrop("function", name, "not a time-history function");
      continue;
    }

    FunctionPoints points;
    switch (kind) {
      case kFromFile: {
        FunctionFileLayout layout;
        status = host_.GetFunctionFromFile(name, layout.fileName, layout.headerLines,
                                           layout.prefixChars, layout.pointsPerLine,
                                           layout.valueType, layout.freeFormat,
                                           layout.fieldWidth, dt);
        layout.dt = dt;
        const FunctionFilePoints file = ReadFunctionFile(layout);
        if (!file.accepted && status == 0)
          NoteDrop("function file", name,
                   "\"" + layout.fileName + "\" was refused (" + file.refusal +
                       "): the function went in as the two points (0, 0) and (1, 0)");
        for (std::size_t i = 0; i < file.times.size(); ++i) points.Add(file.times[i], file.values[i]);
        break;
      }
      case kUser: {
        int pointCount = 0;
        Reals times, values;
        status = host_.GetFunctionPoints(name, pointCount, times, values);
        points = FunctionPoints(name, pointCount, std::move(times), std::move(values));
        break;
      }
      case kUserPeriodic: {
        int cycles = 0;
        int pointCount = 0;
        Reals times, values;
        status = host_.GetFunctionPeriodicPoints(name, cycles, pointCount, times, values);
        points = FunctionPoints(name, pointCount, std::move(times), std::move(values));
        break;
      }
      case kSine:
      case kCosine: {
        double period = 0.0;
        double amplitude = 0.0;
        int stepsPerCycle = 0;
        int cycles = 0;
        status = kind == kSine
                     ? host_.GetFunctionSine(name, period, stepsPerCycle, cycles, amplitude)
                     : host_.GetFunctionCosine(name, period, stepsPerCycle, cycles, amplitude);
        CheckGeneratedCount(name, cycles, stepsPerCycle);
        AddWave(points, kind == kCosine, period, stepsPerCycle, cycles, amplitude);
        break;
      }
      case kRamp: {
        double time = 0.0;
        double amplitude = 0.0;
        double maxTime = 0.0;
        status = host_.GetFunctionRamp(name, time, amplitude, maxTime);
        AddRamp(points, time, amplitude, maxTime);
        break;
      }
      case kSawtooth: {
        double period = 0.0;
        double rampTime = 0.0;
        double amplitude = 0.0;
        int cycles = 0;
        status = host_.GetFunctionSawtooth(name, period, rampTime, cycles, amplitude);
        CheckGeneratedCount(name, cycles, 6);
        AddSawtooth(points, period, rampTime, cycles, amplitude);
        break;
      }
      case kTriangular: {
        double period = 0.0;
        double amplitude = 0.0;
        int cycles = 0;
        status = host_.GetFunctionTriangular(name, period, cycles, amplitude);
        CheckGeneratedCount(name, cycles, 4);
        AddTriangular(points, period, cycles, amplitude);
        break;
      }
      default:
        // Any other kind gives no points.
        if (status == 0)
          NoteDrop("function", name,
                   "its kind " + std::to_string(kind) + " is not read: it went in without points");
        break;
    }
    // A kind the host could not answer is left out altogether.
    if (status != 0) {
      NoteDrop("function", name, "the host could not give its points");
      continue;
    }

    double tmax = kNoTime;
    for (int i = 1; i <= points.Count(); ++i) {
      if (points.Time(i) > tmax) tmax = points.Time(i);
    }
    if (tmax < 0.0) tmax = kNegativeDuration;

    if (recordFileWriter_) {
      const std::string title = "EarthquakeRecord: " + name;
      RecordFileRequest request;
      request.name = name;
      request.title = title;
      request.count = points.Count();
      request.values = points.Values();
      request.times = points.Times();
      request.duration = tmax;
      request.dt = dt;
      request.zeroBased = points.ZeroBased();
      recordFileWriter_(request);
    }

    VaskTHFuncObj* function = AddTHFuncObj();
    function->Label = name;
    function->Dt = dt;
    for (int i = 1; i <= points.Count(); ++i) function->AddTHFunc(points.Value(i), points.Time(i));
  }
}

}  // namespace vtt
