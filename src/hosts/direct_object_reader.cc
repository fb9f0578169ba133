#include "hosts/direct_object_reader.h"

#include <array>
#include <climits>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "hosts/json_document.h"

namespace vtt::model_file {
namespace {

// A read position in the text; every step either takes what it expects or says no.
class Cursor {
 public:
  Cursor(std::string_view text, std::size_t at)
      : begin_(text.data()), p_(text.data() + at), end_(text.data() + text.size()) {}

  std::size_t Offset() const { return static_cast<std::size_t>(p_ - begin_); }

  void SkipWhitespace() {
    while (p_ != end_ && (*p_ == ' ' || *p_ == '\n' || *p_ == '\r' || *p_ == '\t')) ++p_;
  }

  bool Take(char c) {
    SkipWhitespace();
    if (p_ == end_ || *p_ != c) return false;
    ++p_;
    return true;
  }

  // A string of printable ASCII without escapes, as written between its quotes.
  bool PlainText(std::string_view& text) {
    if (!Take('"')) return false;
    const char* start = p_;
    while (p_ != end_) {
      const unsigned char c = static_cast<unsigned char>(*p_);
      if (c == '"') {
        text = std::string_view(start, static_cast<std::size_t>(p_ - start));
        ++p_;
        return true;
      }
      if (c < 0x20 || c >= 0x80 || c == '\\') return false;
      ++p_;
    }
    return false;
  }

  bool Text(std::string& text) {
    std::string_view plain;
    if (!PlainText(plain)) return false;
    text.assign(plain);
    return true;
  }

  bool Real(double& value) {
    SkipWhitespace();
    bool real = false;
    return ScanJsonNumber(p_, end_, value, real);
  }

  // As the checked reading: any number without a fractional part, within the range.
  bool Integer(int& value, long long min = INT_MIN, long long max = INT_MAX) {
    double number = 0;
    if (!Real(number) || std::floor(number) != number) return false;
    if (number < static_cast<double>(min) || number > static_cast<double>(max)) return false;
    value = static_cast<int>(number);
    return true;
  }

  bool Boolean(bool& value) {
    SkipWhitespace();
    if (Word("true")) {
      value = true;
      return true;
    }
    if (Word("false")) {
      value = false;
      return true;
    }
    return false;
  }

  // `[item, item, ...]`, each read by `item()`; `count` is the number read.
  template <class Item>
  bool Array(std::size_t& count, Item item) {
    count = 0;
    if (!Take('[')) return false;
    if (Take(']')) return true;
    while (true) {
      if (!item()) return false;
      ++count;
      if (Take(']')) return true;
      if (!Take(',')) return false;
    }
  }

  template <std::size_t N>
  bool Reals(std::array<double, N>& values) {
    std::size_t count = 0;
    return Array(count, [&] { return count < N && Real(values[count]); }) && count == N;
  }

  bool Flags(DofFlags& flags) {
    std::size_t count = 0;
    return Array(count, [&] {
             bool value = false;
             if (count >= flags.size() || !Boolean(value)) return false;
             flags[count] = value;
             return true;
           }) &&
           count == flags.size();
  }

  bool Texts(std::vector<std::string>& texts) {
    texts.clear();
    std::size_t count = 0;
    return Array(count, [&] { return Text(texts.emplace_back()); });
  }

  // `{"key": value, ...}` of an object kind with the keys `keys`, of which those with a bit
  // in `required` must be there: `member(slot)` reads the value of the key at `slot`; a key
  // of another kind or given twice is not taken.
  template <std::size_t N, class Member>
  bool Object(const std::array<std::string_view, N>& keys, std::uint32_t required,
              Member member) {
    static_assert(N <= 32);
    std::uint32_t given = 0;
    if (!Take('{')) return false;
    if (Take('}')) return required == 0;
    std::size_t next = 0;
    while (true) {
      std::string_view key;
      if (!PlainText(key)) return false;
      // Files write the keys in the kind's order, so the key after the last one is tried
      // first.
      std::size_t slot = next < N && keys[next] == key ? next : N;
      for (std::size_t k = 0; slot == N && k < N; ++k) {
        if (keys[k] == key) slot = k;
      }
      if (slot == N || (given & (1u << slot)) != 0) return false;
      given |= 1u << slot;
      next = slot + 1;
      if (!Take(':') || !member(slot)) return false;
      if (Take('}')) return (given & required) == required;
      if (!Take(',')) return false;
    }
  }

  // A list of objects of one kind, each read by `read(item)`.
  template <class Item, class Read>
  bool List(std::vector<Item>& items, Read read) {
    items.clear();
    std::size_t count = 0;
    return Array(count, [&] { return read(items.emplace_back()); });
  }

 private:
  bool Word(std::string_view word) {
    if (static_cast<std::size_t>(end_ - p_) < word.size() ||
        std::string_view(p_, word.size()) != word) {
      return false;
    }
    p_ += word.size();
    return true;
  }

  const char* begin_;
  const char* p_;
  const char* end_;
};

// The keys of each kind in the order of the checked reading's lists.
constexpr std::array<std::string_view, 4> kPointForceKeys = {"pattern", "csys", "step", "values"};
constexpr std::array<std::string_view, 8> kPointKeys = {
    "name", "x", "y", "z", "restraints", "constraints", "mass", "forces"};
constexpr std::array<std::string_view, 2> kReleaseKeys = {"i", "j"};
constexpr std::array<std::string_view, 2> kHingeKeys = {"dof", "relative_distance"};
constexpr std::array<std::string_view, 8> kDistributedLoadKeys = {
    "pattern", "type", "csys", "dir", "rd1", "rd2", "val1", "val2"};
constexpr std::array<std::string_view, 6> kFramePointLoadKeys = {"pattern", "type", "csys",
                                                                 "dir",     "rd",   "val"};
constexpr std::array<std::string_view, 10> kFrameKeys = {
    "name",   "section",         "i",                 "j",          "angle", "releases",
    "hinges", "mass_per_length", "distributed_loads", "point_loads"};
constexpr std::array<std::string_view, 4> kUniformLoadKeys = {"pattern", "csys", "dir", "value"};
constexpr std::array<std::string_view, 5> kUniformToFrameLoadKeys = {"pattern", "csys", "dir",
                                                                     "value", "dist_type"};
constexpr std::array<std::string_view, 2> kAssignmentKeys = {"type", "name"};
constexpr std::array<std::string_view, 2> kGroupKeys = {"name", "assignments"};
constexpr std::array<std::string_view, 6> kAreaKeys = {
    "name", "section", "points", "mass_per_area", "uniform_loads", "uniform_to_frame_loads"};

bool ReadPointForce(Cursor& in, PointForce& force) {
  return in.Object(kPointForceKeys, 0b1001, [&](std::size_t slot) {
    switch (slot) {
      case 0: return in.Text(force.pattern);
      case 1: return in.Text(force.csys);
      case 2: return in.Integer(force.step);
      default: return in.Reals(force.values);
    }
  });
}

// A frame's distributed and point loads and an area's loads share their first keys but
// not their order; each is read with its own list of keys.
bool ReadDistributedLoad(Cursor& in, DistributedLoad& load) {
  return in.Object(kDistributedLoadKeys, 0b11111001, [&](std::size_t slot) {
    switch (slot) {
      case 0: return in.Text(load.pattern);
      case 1: return in.Integer(load.type, 1, 2);
      case 2: return in.Text(load.csys);
      case 3: return in.Integer(load.dir);
      case 4: return in.Real(load.rd1);
      case 5: return in.Real(load.rd2);
      case 6: return in.Real(load.val1);
      default: return in.Real(load.val2);
    }
  });
}

bool ReadFramePointLoad(Cursor& in, FramePointLoad& load) {
  return in.Object(kFramePointLoadKeys, 0b111001, [&](std::size_t slot) {
    switch (slot) {
      case 0: return in.Text(load.pattern);
      case 1: return in.Integer(load.type, 1, 2);
      case 2: return in.Text(load.csys);
      case 3: return in.Integer(load.dir);
      case 4: return in.Real(load.rd);
      default: return in.Real(load.val);
    }
  });
}

template <std::size_t N>
bool ReadAreaLoad(Cursor& in, const std::array<std::string_view, N>& keys, AreaLoad& load) {
  return in.Object(keys, 0b1101, [&](std::size_t slot) {
    switch (slot) {
      case 0: return in.Text(load.pattern);
      case 1: return in.Text(load.csys);
      case 2: return in.Integer(load.dir);
      case 3: return in.Real(load.value);
      default: return in.Integer(load.distType, 1, 2);
    }
  });
}

// Reads the whole object at `at` and moves `at` past it; `member(in, slot)` reads the
// value of the key at `slot`.
template <std::size_t N, class Member>
bool ReadObjectAt(std::string_view text, std::size_t& at,
                  const std::array<std::string_view, N>& keys, std::uint32_t required,
                  Member member) {
  Cursor in(text, at);
  if (!in.Object(keys, required, [&](std::size_t slot) { return member(in, slot); })) {
    return false;
  }
  at = in.Offset();
  return true;
}

}  // namespace

bool ReadPointDirectly(std::string_view text, std::size_t& at, Point& point) {
  return ReadObjectAt(text, at, kPointKeys, 0b1111, [&](Cursor& in, std::size_t slot) {
    switch (slot) {
      case 0: return in.Text(point.name);
      case 1: return in.Real(point.x);
      case 2: return in.Real(point.y);
      case 3: return in.Real(point.z);
      case 4: return in.Flags(point.restraints);
      case 5: return in.Texts(point.constraints);
      case 6: return in.Reals(point.mass);
      default:
        return in.List(point.forces, [&](PointForce& force) { return ReadPointForce(in, force); });
    }
  });
}

bool ReadFrameDirectly(std::string_view text, std::size_t& at, Frame& frame) {
  return ReadObjectAt(text, at, kFrameKeys, 0b1111, [&](Cursor& in, std::size_t slot) {
    switch (slot) {
      case 0: return in.Text(frame.name);
      case 1: return in.Text(frame.section);
      case 2: return in.Text(frame.pointI);
      case 3: return in.Text(frame.pointJ);
      case 4: return in.Real(frame.angle);
      case 5:
        return in.Object(kReleaseKeys, 0, [&](std::size_t end) {
          return in.Flags(end == 0 ? frame.releaseI : frame.releaseJ);
        });
      case 6:
        return in.List(frame.hinges, [&](Hinge& hinge) {
          return in.Object(kHingeKeys, 0b11, [&](std::size_t key) {
            return key == 0 ? in.Integer(hinge.dof) : in.Real(hinge.relativeDistance);
          });
        });
      case 7: return in.Real(frame.massPerLength);
      case 8:
        return in.List(frame.distributedLoads,
                       [&](DistributedLoad& load) { return ReadDistributedLoad(in, load); });
      default:
        return in.List(frame.pointLoads,
                       [&](FramePointLoad& load) { return ReadFramePointLoad(in, load); });
    }
  });
}

bool ReadAreaDirectly(std::string_view text, std::size_t& at, Area& area) {
  return ReadObjectAt(text, at, kAreaKeys, 0b111, [&](Cursor& in, std::size_t slot) {
    switch (slot) {
      case 0: return in.Text(area.name);
      case 1: return in.Text(area.section);
      case 2: return in.Texts(area.points) && area.points.size() >= 3;
      case 3: return in.Real(area.massPerArea);
      case 4:
        return in.List(area.uniformLoads,
                       [&](AreaLoad& load) { return ReadAreaLoad(in, kUniformLoadKeys, load); });
      default:
        return in.List(area.uniformToFrameLoads, [&](AreaLoad& load) {
          return ReadAreaLoad(in, kUniformToFrameLoadKeys, load);
        });
    }
  });
}

bool ReadGroupDirectly(std::string_view text, std::size_t& at, Group& group) {
  return ReadObjectAt(text, at, kGroupKeys, 0b1, [&](Cursor& in, std::size_t slot) {
    if (slot == 0) return in.Text(group.name);
    return in.List(group.assignments, [&](GroupAssignment& assignment) {
      return in.Object(kAssignmentKeys, 0b11, [&](std::size_t key) {
        return key == 0 ? in.Integer(assignment.type, 1, 7) : in.Text(assignment.name);
      });
    });
  });
}

}  // namespace vtt::model_file
