// Stage 23: the time-history functions of the host as points, record-file requests and
// VaskTHFuncObj objects, for every kind; the one time step of the stage; and a whole run
// from a model file to the record file on disk.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "analysis/write_record_file.h"
#include "hosts/json_model_host.h"
#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/binary_writer.h"
#include "support/expected_bytes.h"
#include "transfer/failure.h"
#include "transfer/messages.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using test_support::FakeHostModel;

struct Point {
  double time;
  double value;
  friend bool operator==(const Point&, const Point&) = default;
};
using Points = std::vector<Point>;

std::ostream& operator<<(std::ostream& out, const Point& p) {
  return out << "(" << p.time << ", " << p.value << ")";
}

// One function as the host holds it.
struct HostFunction {
  int family = 2;
  int kind = 0;
  int status = 0;
  // From file.
  std::string fileName;
  int headerLines = 0, prefixChars = 0, pointsPerLine = 1, valueType = 1, fieldWidth = 10;
  bool freeFormat = true;
  double dt = 0.02;
  // User and periodic points; the periodic cycles.
  Reals times, values;
  int cycles = 0;
  // Generated shapes.
  double period = 0, amplitude = 0, time = 0, maxTime = 0, rampTime = 0;
  int stepsPerCycle = 0;
};

class FunctionHost final : public FakeHostModel {
 public:
  void Add(const std::string& name, HostFunction function) {
    names.push_back(name);
    functions[name] = std::move(function);
  }

  int GetFunctionNames(int& count, Names& out) override {
    out = names;
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetFunctionType(const std::string& name, int& family, int& kind) override {
    const HostFunction* f = Find(name);
    if (f == nullptr) return FakeHostModel::GetFunctionType(name, family, kind);
    family = f->family;
    kind = f->kind;
    return 0;
  }
  int GetFunctionFromFile(const std::string& name, std::string& fileName, int& headerLines,
                          int& prefixChars, int& pointsPerLine, int& valueType, bool& freeFormat,
                          int& fieldWidth, double& dt) override {
    const HostFunction* f = Find(name);
    if (f == nullptr || f->status != 0) {
      return FakeHostModel::GetFunctionFromFile(name, fileName, headerLines, prefixChars,
                                                pointsPerLine, valueType, freeFormat, fieldWidth,
                                                dt);
    }
    fileName = f->fileName;
    headerLines = f->headerLines;
    prefixChars = f->prefixChars;
    pointsPerLine = f->pointsPerLine;
    valueType = f->valueType;
    freeFormat = f->freeFormat;
    fieldWidth = f->fieldWidth;
    dt = f->dt;
    return 0;
  }
  int GetFunctionPoints(const std::string& name, int& count, Reals& times,
                        Reals& values) override {
    const HostFunction* f = Find(name);
    if (f == nullptr || f->status != 0) {
      return FakeHostModel::GetFunctionPoints(name, count, times, values);
    }
    times = f->times;
    values = f->values;
    count = static_cast<int>(times.size());
    return 0;
  }
  int GetFunctionPeriodicPoints(const std::string& name, int& cycles, int& count, Reals& times,
                                Reals& values) override {
    const HostFunction* f = Find(name);
    if (f == nullptr || f->status != 0) {
      return FakeHostModel::GetFunctionPeriodicPoints(name, cycles, count, times, values);
    }
    cycles = f->cycles;
    times = f->times;
    values = f->values;
    count = static_cast<int>(times.size());
    return 0;
  }
  int GetFunctionSine(const std::string& name, double& period, int& stepsPerCycle, int& cycles,
                      double& amplitude) override {
    const HostFunction* f = Find(name);
    if (f == nullptr || f->status != 0) {
      return FakeHostModel::GetFunctionSine(name, period, stepsPerCycle, cycles, amplitude);
    }
    return Wave(*f, period, stepsPerCycle, cycles, amplitude);
  }
  int GetFunctionCosine(const std::string& name, double& period, int& stepsPerCycle, int& cycles,
                        double& amplitude) override {
    const HostFunction* f = Find(name);
    if (f == nullptr || f->status != 0) {
      return FakeHostModel::GetFunctionCosine(name, period, stepsPerCycle, cycles, amplitude);
    }
    return Wave(*f, period, stepsPerCycle, cycles, amplitude);
  }
  int GetFunctionRamp(const std::string& name, double& time, double& amplitude,
                      double& maxTime) override {
    const HostFunction* f = Find(name);
    if (f == nullptr || f->status != 0) {
      return FakeHostModel::GetFunctionRamp(name, time, amplitude, maxTime);
    }
    time = f->time;
    amplitude = f->amplitude;
    maxTime = f->maxTime;
    return 0;
  }
  int GetFunctionSawtooth(const std::string& name, double& period, double& rampTime, int& cycles,
                          double& amplitude) override {
    const HostFunction* f = Find(name);
    if (f == nullptr || f->status != 0) {
      return FakeHostModel::GetFunctionSawtooth(name, period, rampTime, cycles, amplitude);
    }
    period = f->period;
    rampTime = f->rampTime;
    cycles = f->cycles;
    amplitude = f->amplitude;
    return 0;
  }
  int GetFunctionTriangular(const std::string& name, double& period, int& cycles,
                            double& amplitude) override {
    const HostFunction* f = Find(name);
    if (f == nullptr || f->status != 0) {
      return FakeHostModel::GetFunctionTriangular(name, period, cycles, amplitude);
    }
    period = f->period;
    cycles = f->cycles;
    amplitude = f->amplitude;
    return 0;
  }

  Names names;
  std::map<std::string, HostFunction> functions;

 private:
  const HostFunction* Find(const std::string& name) const {
    const auto found = functions.find(name);
    return found == functions.end() ? nullptr : &found->second;
  }
  static int Wave(const HostFunction& f, double& period, int& stepsPerCycle, int& cycles,
                  double& amplitude) {
    period = f.period;
    stepsPerCycle = f.stepsPerCycle;
    cycles = f.cycles;
    amplitude = f.amplitude;
    return 0;
  }
};

// A record-file request as the writer saw it, with its points copied out.
struct SeenRequest {
  std::string name, title;
  int count = 0;
  Points points;
  double duration = 0, dt = 0;
  bool zeroBased = false;
};

// Runs the stage on `host` with a writer that keeps every request.
struct Stage {
  explicit Stage(FunctionHost& host) : model(host) {
    model.SetDropObserver([this](const DropNote& note) { notes.push_back(note); });
    model.SetRecordFileWriter([this](const VaskModelObj::RecordFileRequest& r) {
      SeenRequest seen{std::string(r.name), std::string(r.title), r.count, {}, r.duration, r.dt,
                       r.zeroBased};
      const int base = r.zeroBased ? 1 : 0;
      for (int i = 1; i <= r.count; ++i) {
        const auto slot = static_cast<std::size_t>(i - base);
        seen.points.push_back({r.times[slot], r.values[slot]});
      }
      requests.push_back(seen);
    });
    model.ReadVaskTHFunc();
  }
  Points Kept(int i) const {
    Points points;
    const VaskTHFuncObj& f = *model.THFuncObj(i);
    for (int p = 1; p <= f.ValueNum; ++p) points.push_back({f.Time(p), f.Value(p)});
    return points;
  }
  VaskModelObj model;
  std::vector<SeenRequest> requests;
  std::vector<DropNote> notes;
};

constexpr double kCircle = 6.2831852;

HostFunction Sine(int kind, double period, int steps, int cycles, double amplitude) {
  HostFunction f;
  f.kind = kind;
  f.period = period;
  f.stepsPerCycle = steps;
  f.cycles = cycles;
  f.amplitude = amplitude;
  return f;
}

TEST(ReadVaskTHFunc, SineStartsAtZeroAndStepsThroughEachCycle) {
  FunctionHost host;
  host.Add("SIN", Sine(2, 2.0, 4, 2, 3.0));
  Stage stage(host);
  ASSERT_EQ(stage.model.THFuncNum(), 1);
  const double top = 3.0 * std::sin(kCircle * 0.25);
  const double bottom = 3.0 * std::sin(kCircle * 0.75);
  // sin of the full circle as taken here is about -7e-8 and of half of it about 5e-8: both
  // count as zero crossings.
  const Points expected = {{0.0, 0.0}, {0.5, top}, {1.0, 0.0}, {1.5, bottom}, {2.0, 0.0},
                           {2.5, top}, {3.0, 0.0}, {3.5, bottom}, {4.0, 0.0}};
  EXPECT_EQ(stage.Kept(1), expected);
  EXPECT_NE(top, 3.0);  // the generator's circle is not quite 2 pi
  EXPECT_NEAR(top, 3.0, 1e-12);
  ASSERT_EQ(stage.requests.size(), 1u);
  EXPECT_EQ(stage.requests[0].points, expected);
  EXPECT_FALSE(stage.requests[0].zeroBased);
  EXPECT_EQ(stage.requests[0].count, 9);
  EXPECT_EQ(stage.requests[0].duration, 4.0);
}

TEST(ReadVaskTHFunc, CosineStartsAtItsAmplitude) {
  FunctionHost host;
  host.Add("COS", Sine(3, 1.0, 2, 1, 2.0));
  Stage stage(host);
  const Points expected = {{0.0, 2.0}, {0.5, 2.0 * std::cos(kCircle * 0.5)},
                           {1.0, 2.0 * std::cos(kCircle)}};
  EXPECT_EQ(stage.Kept(1), expected);
  EXPECT_NEAR(stage.Kept(1)[1].value, -2.0, 1e-12);
}

TEST(ReadVaskTHFunc, CosineQuarterStepIsAZeroCrossing) {
  FunctionHost host;
  host.Add("COS", Sine(3, 4.0, 4, 1, 1.0));
  Stage stage(host);
  const Points kept = stage.Kept(1);
  ASSERT_EQ(kept.size(), 5u);
  EXPECT_EQ(kept[1], (Point{1.0, 0.0}));
  EXPECT_EQ(kept[3], (Point{3.0, 0.0}));
}

TEST(ReadVaskTHFunc, RampHasThreePoints) {
  FunctionHost host;
  HostFunction ramp;
  ramp.kind = 4;
  ramp.time = 2.0;
  ramp.amplitude = 5.0;
  ramp.maxTime = 10.0;
  host.Add("RAMP", ramp);
  ramp.maxTime = 2.0;  // not above the ramp's time: held until 20 times that time
  host.Add("SHORT", ramp);
  Stage stage(host);
  EXPECT_EQ(stage.Kept(1), (Points{{0, 0}, {2, 5}, {10, 5}}));
  EXPECT_EQ(stage.Kept(2), (Points{{0, 0}, {2, 5}, {40, 5}}));
  EXPECT_EQ(stage.requests[1].duration, 40.0);
}

TEST(ReadVaskTHFunc, SawtoothWithItsRampTime) {
  FunctionHost host;
  HostFunction saw;
  saw.kind = 5;
  saw.period = 4.0;
  saw.rampTime = 0.5;  // r = 0.125
  saw.cycles = 1;
  saw.amplitude = 2.0;
  host.Add("SAW", saw);
  Stage stage(host);
  EXPECT_EQ(stage.Kept(1),
            (Points{{0, 0}, {0.5, 2}, {1.5, 2}, {2, 0}, {2.5, -2}, {3.5, -2}, {4, 0}}));
}

TEST(ReadVaskTHFunc, SawtoothRampAboveAQuarterBecomes02499) {
  FunctionHost host;
  HostFunction saw;
  saw.kind = 5;
  saw.period = 2.0;
  saw.rampTime = 1.0;  // r = 0.5
  saw.cycles = 2;
  saw.amplitude = 1.0;
  host.Add("SAW", saw);
  Stage stage(host);
  const double r = 0.2499;
  const Points expected = {{0, 0},
                           {(0 + r) * 2, 1},
                           {(0 + 0.5 - r) * 2, 1},
                           {(0 + 0.5) * 2, 0},
                           {(0 + 0.5 + r) * 2, -1},
                           {(0 + 1 - r) * 2, -1},
                           {(0 + 1) * 2, 0},
                           {(1 + r) * 2, 1},
                           {(1 + 0.5 - r) * 2, 1},
                           {(1 + 0.5) * 2, 0},
                           {(1 + 0.5 + r) * 2, -1},
                           {(1 + 1 - r) * 2, -1},
                           {(1 + 1) * 2, 0}};
  EXPECT_EQ(stage.Kept(1), expected);
  EXPECT_EQ(stage.Kept(1)[1].time, 0.4998);
}

TEST(ReadVaskTHFunc, SawtoothRampOfExactlyAQuarterStays) {
  FunctionHost host;
  HostFunction saw;
  saw.kind = 5;
  saw.period = 4.0;
  saw.rampTime = 1.0;  // r = 0.25, not above
  saw.cycles = 1;
  saw.amplitude = 1.0;
  host.Add("SAW", saw);
  Stage stage(host);
  EXPECT_EQ(stage.Kept(1), (Points{{0, 0}, {1, 1}, {1, 1}, {2, 0}, {3, -1}, {3, -1}, {4, 0}}));
}

TEST(ReadVaskTHFunc, TriangularQuarterPoints) {
  FunctionHost host;
  HostFunction tri;
  tri.kind = 6;
  tri.period = 2.0;
  tri.cycles = 2;
  tri.amplitude = 1.5;
  host.Add("TRI", tri);
  Stage stage(host);
  EXPECT_EQ(stage.Kept(1), (Points{{0, 0},
                                   {0.5, 1.5},
                                   {1, 0},
                                   {1.5, -1.5},
                                   {2, 0},
                                   {2.5, 1.5},
                                   {3, 0},
                                   {3.5, -1.5},
                                   {4, 0}}));
}

// A few bytes of model can ask for billions of generated points: past ten million the run
// stops before any is made, with the words the record file would give.
TEST(ReadVaskTHFunc, GeneratedFunctionsPastTenMillionPointsStopTheRun) {
  const auto message = [](HostFunction f) {
    FunctionHost host;
    host.Add("BIG", f);
    try {
      Stage stage(host);
    } catch (const TransferFailure& failure) {
      return std::string(failure.what());
    }
    return std::string("no failure");
  };
  EXPECT_EQ(message(Sine(2, 1.0, 10, 1'000'000, 1.0)),
            "Time-history function \"BIG\": its 10000001 points do not fit a record file, "
            "which holds at most 32766 points.");
  EXPECT_EQ(message(Sine(3, 1.0, 1'000'000, 2'000'000'000, 1.0)),
            "Time-history function \"BIG\": its 2000000000000001 points do not fit a record "
            "file, which holds at most 32766 points.");
  HostFunction tri;
  tri.kind = 6;
  tri.period = 1.0;
  tri.cycles = 2'500'000;
  tri.amplitude = 1.0;
  EXPECT_EQ(message(tri),
            "Time-history function \"BIG\": its 10000001 points do not fit a record file, "
            "which holds at most 32766 points.");
  HostFunction saw;
  saw.kind = 5;
  saw.period = 1.0;
  saw.rampTime = 0.1;
  saw.cycles = 2'000'000'000;
  saw.amplitude = 1.0;
  EXPECT_EQ(message(saw),
            "Time-history function \"BIG\": its 12000000001 points do not fit a record file, "
            "which holds at most 32766 points.");
}

TEST(ReadVaskTHFunc, UserAndPeriodicPointsComeZeroBased) {
  FunctionHost host;
  HostFunction user;
  user.kind = 1;
  user.times = {0.0, 0.5, 1.0};
  user.values = {0.0, 2.0, -1.0};
  host.Add("USER", user);
  HostFunction periodic = user;
  periodic.kind = 7;
  periodic.cycles = 4;  // the points are taken as listed, once
  host.Add("PER", periodic);
  Stage stage(host);
  const Points expected = {{0, 0}, {0.5, 2}, {1, -1}};
  ASSERT_EQ(stage.model.THFuncNum(), 2);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(stage.Kept(i + 1), expected);
    EXPECT_TRUE(stage.requests[static_cast<std::size_t>(i)].zeroBased);
    EXPECT_EQ(stage.requests[static_cast<std::size_t>(i)].points, expected);
    EXPECT_EQ(stage.requests[static_cast<std::size_t>(i)].count, 3);
  }
}

TEST(ReadVaskTHFunc, FunctionOfAnotherFamilyIsSkipped) {
  FunctionHost host;
  HostFunction otherFamily = Sine(2, 1.0, 4, 1, 1.0);
  otherFamily.family = 1;  // a response curve over periods, not a time history
  host.Add("RS", otherFamily);
  host.Add("SIN", Sine(2, 1.0, 4, 1, 1.0));
  Stage stage(host);
  ASSERT_EQ(stage.model.THFuncNum(), 1);
  EXPECT_EQ(stage.model.THFuncObj(1)->Label, "SIN");
  EXPECT_EQ(stage.model.THFuncObjGet("RS"), nullptr);
  ASSERT_EQ(stage.requests.size(), 1u);
  EXPECT_EQ(stage.requests[0].name, "SIN");
}

TEST(ReadVaskTHFunc, KindTheHostCannotAnswerAddsNothing) {
  FunctionHost host;
  HostFunction broken = Sine(2, 1.0, 4, 1, 1.0);
  broken.status = 1;
  host.Add("BROKEN", broken);
  HostFunction brokenFile;
  brokenFile.status = 1;
  host.Add("NOFILE", brokenFile);
  Stage stage(host);
  EXPECT_EQ(stage.model.THFuncNum(), 0);
  EXPECT_TRUE(stage.requests.empty());
}

TEST(ReadVaskTHFunc, UnknownKindGivesNoPointsButIsKept) {
  FunctionHost host;
  HostFunction other;
  other.kind = 9;
  host.Add("ODD", other);
  Stage stage(host);
  ASSERT_EQ(stage.model.THFuncNum(), 1);
  EXPECT_EQ(stage.model.THFuncObj(1)->ValueNum, 0);
  ASSERT_EQ(stage.requests.size(), 1u);
  EXPECT_EQ(stage.requests[0].count, 0);
  // No time at all: the largest time stays at its start, below 0, and becomes 1.
  EXPECT_EQ(stage.requests[0].duration, 1.0);
  ASSERT_EQ(stage.notes.size(), 1u);
  EXPECT_EQ(stage.notes[0].kind, "function");
  EXPECT_EQ(stage.notes[0].name, "ODD");
  EXPECT_EQ(stage.notes[0].reason, "its kind 9 is not read: it went in without points");
}

TEST(ReadVaskTHFunc, LargestTimeBelowZeroGivesDurationOne) {
  FunctionHost host;
  HostFunction user;
  user.kind = 1;
  user.times = {-5.0, -3.0};
  user.values = {1.0, 2.0};
  host.Add("PAST", user);
  Stage stage(host);
  EXPECT_EQ(stage.requests[0].duration, 1.0);
}

TEST(ReadVaskTHFunc, DurationIsTheLargestTimeWhereverItStands) {
  FunctionHost host;
  HostFunction user;
  user.kind = 1;
  user.times = {0.0, 7.0, 3.0};
  user.values = {1.0, 2.0, 3.0};
  host.Add("U", user);
  Stage stage(host);
  EXPECT_EQ(stage.requests[0].duration, 7.0);
}

TEST(ReadVaskTHFunc, TitleNameAndRequestOrder) {
  FunctionHost host;
  host.Add("B", Sine(2, 1.0, 1, 1, 1.0));
  host.Add("A", Sine(3, 1.0, 1, 1, 1.0));
  Stage stage(host);
  ASSERT_EQ(stage.requests.size(), 2u);
  EXPECT_EQ(stage.requests[0].name, "B");
  EXPECT_EQ(stage.requests[0].title, "EarthquakeRecord: B");
  EXPECT_EQ(stage.requests[1].name, "A");
  EXPECT_EQ(stage.model.THFuncObj(2)->Label, "A");
  EXPECT_EQ(stage.model.THFuncObjGet("A"), stage.model.THFuncObj(2));
}

TEST(ReadVaskTHFunc, DtStartsAt005AndAFileFunctionSetsItForTheFunctionsAfterIt) {
  testing::TempFolder folder("th-dt");
  const fs::path file = folder.Path() / "eq.txt";
  testing::WriteFileBytes(file, {'1', '\n', '2', '\n', '3', '\n'});
  FunctionHost host;
  host.Add("BEFORE", Sine(2, 1.0, 2, 1, 1.0));
  HostFunction fromFile;
  fromFile.kind = 0;
  fromFile.fileName = file.string();
  fromFile.dt = 0.02;
  host.Add("FILE", fromFile);
  host.Add("AFTER", Sine(2, 1.0, 2, 1, 1.0));
  Stage stage(host);
  ASSERT_EQ(stage.model.THFuncNum(), 3);
  EXPECT_EQ(stage.model.THFuncObj(1)->Dt, 0.05);
  EXPECT_EQ(stage.model.THFuncObj(2)->Dt, 0.02);
  EXPECT_EQ(stage.model.THFuncObj(3)->Dt, 0.02);
  EXPECT_EQ(stage.requests[0].dt, 0.05);
  EXPECT_EQ(stage.requests[2].dt, 0.02);
  EXPECT_EQ(stage.Kept(2), (Points{{0, 1}, {0.02, 2}, {0.04, 3}}));
  EXPECT_FALSE(stage.requests[1].zeroBased);
  EXPECT_EQ(stage.requests[1].points, stage.Kept(2));
  EXPECT_EQ(stage.requests[1].duration, 0.04);
}

TEST(ReadVaskTHFunc, FileThatCannotBeReadGivesTheTwoPointFunction) {
  FunctionHost host;
  HostFunction fromFile;
  fromFile.fileName = "/nonexistent/vtt/eq.txt";
  fromFile.dt = 0.01;
  host.Add("GONE", fromFile);
  Stage stage(host);
  ASSERT_EQ(stage.model.THFuncNum(), 1);
  EXPECT_EQ(stage.Kept(1), (Points{{0, 0}, {1, 0}}));
  EXPECT_EQ(stage.requests[0].duration, 1.0);
  EXPECT_EQ(stage.model.THFuncObj(1)->Dt, 0.01);
  ASSERT_EQ(stage.notes.size(), 1u);
  EXPECT_EQ(stage.notes[0].kind, "function file");
  EXPECT_EQ(stage.notes[0].name, "GONE");
  EXPECT_EQ(stage.notes[0].reason,
            "\"/nonexistent/vtt/eq.txt\" was refused (it cannot be opened): the function went "
            "in as the two points (0, 0) and (1, 0)");
}

TEST(ReadVaskTHFunc, AFileFunctionTheHostCannotAnswerIsToldOnceAsNotGiven) {
  FunctionHost host;
  HostFunction brokenFile;
  brokenFile.status = 1;
  host.Add("NOFILE", brokenFile);
  Stage stage(host);
  ASSERT_EQ(stage.notes.size(), 1u);
  EXPECT_EQ(stage.notes[0].reason, "the host could not give its points");
}

TEST(ReadVaskTHFunc, WithoutAWriterTheFunctionsAreStillKept) {
  FunctionHost host;
  host.Add("SIN", Sine(2, 1.0, 4, 1, 1.0));
  VaskModelObj model(host);
  model.ReadVaskTHFunc();
  EXPECT_EQ(model.THFuncNum(), 1);
  EXPECT_EQ(model.THFuncObj(1)->ValueNum, 5);
}

TEST(ReadVaskTHFunc, IsStage23OfTheReading) {
  const auto stages = VaskModelObj::ReadStages();
  ASSERT_EQ(stages.size(), 28u);
  EXPECT_EQ(stages[22].name, "ReadVaskTHFunc");
  EXPECT_TRUE(stages[22].run == &VaskModelObj::ReadVaskTHFunc);
}

// From a model file on disk to the record file: the function file named relative to the
// model file is found beside it, wherever the program runs from.
TEST(ReadVaskTHFunc, ModelFileToRecordFileOnDisk) {
  testing::TempFolder folder("th-model");
  fs::create_directories(folder.Path() / "models" / "records");
  const std::string record = "Ground acceleration\r\n0.0 0.0\r\n0.01 0.5\r\n0.02 -0.75\r\n";
  testing::WriteFileBytes(folder.Path() / "models" / "records" / "eq1.txt",
                          std::vector<std::uint8_t>(record.begin(), record.end()));
  const std::string model = R"({"format": "vask-model", "version": 1, "units": 6,
    "functions": [
      {"name": "EQ1", "kind": 0,
       "file": {"path": "records/eq1.txt", "header_lines": 1, "value_type": 2, "dt": 0.01}},
      {"name": "RS", "family": 1, "kind": 1, "points": [[0, 1]]}
    ]})";
  testing::WriteFileBytes(folder.Path() / "models" / "model.json",
                          std::vector<std::uint8_t>(model.begin(), model.end()));
  auto host = JsonModelHost::FromFile(folder.Path() / "models" / "model.json");
  CollectedMessages messages;
  const fs::path trelk = folder.Path() / "TRELK";
  VaskModelObj source(*host);
  source.SetRecordFileWriter(MakeRecordFileWriter(trelk.string(), "EqkeGroup", messages));
  source.ReadVaskTHFunc();

  EXPECT_TRUE(messages.messages.empty());
  ASSERT_EQ(source.THFuncNum(), 1);
  const auto bytes = testing::ReadFileBytes(trelk / "Records" / "EqkeGroup" / "EQ1");
  const auto expected = testing::ExpectedBytes()
                            .Ascii("EarthquakeRecord: EQ1", 40)
                            .Short(1)
                            .Short(4)
                            .Single(-0.75f)
                            .Single(0.02f)
                            .Single(0.02f)
                            .Single(0.0f)
                            .Single(0.0f)
                            .Single(0.0f)
                            .Single(0.0f)
                            .Single(0.01f)
                            .Single(0.5f)
                            .Single(0.02f)
                            .Single(-0.75f)
                            .Bytes();
  EXPECT_EQ(bytes, expected);
  EXPECT_FALSE(fs::exists(trelk / "Records" / "EqkeGroup" / "RS"));
}

}  // namespace
}  // namespace vtt
