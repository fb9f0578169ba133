// Reading the model file: every value is checked against the format before the model is
// used, and the first bad one stops the reading with one message that says where it is
// (file, line and column, JSON path) and what was expected there.
#include "hosts/model_file.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <span>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>

#include "hosts/direct_object_reader.h"
#include "hosts/json_document.h"

namespace vtt::model_file {
namespace {

// The way from the top of the document to one value. Paths live on the stack of the
// reading functions and become text only for a message.
class Path {
 public:
  Path() = default;
  Path Key(std::string_view key) const { return Path(this, key, 0, false); }
  Path Index(std::size_t index) const { return Path(this, {}, index, true); }

  // `frames[12].releases.i`; the top level itself is "top level".
  std::string Text() const {
    std::vector<const Path*> chain;
    for (const Path* at = this; at->parent_ != nullptr; at = at->parent_) chain.push_back(at);
    if (chain.empty()) return "top level";
    std::string text;
    for (auto step = chain.rbegin(); step != chain.rend(); ++step) {
      if ((*step)->isIndex_) {
        text += "[" + std::to_string((*step)->index_) + "]";
      } else {
        if (!text.empty()) text += '.';
        text += (*step)->key_;
      }
    }
    return text;
  }

 private:
  Path(const Path* parent, std::string_view key, std::size_t index, bool isIndex)
      : parent_(parent), key_(key), index_(index), isIndex_(isIndex) {}
  const Path* parent_ = nullptr;
  std::string_view key_;
  std::size_t index_ = 0;
  bool isIndex_ = false;
};

// The integers a code may take.
struct IntRange {
  long long min = INT_MIN;
  long long max = INT_MAX;
};
constexpr IntRange kAnyInteger{};
constexpr IntRange kCount{0, INT_MAX};
constexpr IntRange kPositiveCount{1, INT_MAX};
constexpr IntRange Codes(long long first, long long last) { return IntRange{first, last}; }

std::string IntegerExpectation(IntRange range) {
  if (range.min == INT_MIN && range.max == INT_MAX) return "an integer";
  if (range.max == INT_MAX) return "an integer of " + std::to_string(range.min) + " or more";
  return "an integer from " + std::to_string(range.min) + " to " + std::to_string(range.max);
}

std::string FormatNumber(double value) {
  char buffer[64];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

// Optimal string alignment distance: a transposition counts as one edit, so "nmae" is
// one edit away from "name".
std::size_t EditDistance(std::string_view a, std::string_view b) {
  std::vector<std::vector<std::size_t>> d(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) d[i][0] = i;
  for (std::size_t j = 0; j <= b.size(); ++j) d[0][j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t cost = a[i - 1] == b[j - 1] ? 0 : 1;
      d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + cost});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
      }
    }
  }
  return d[a.size()][b.size()];
}

// Reads values out of the document and refuses those that do not fit.
class Checker {
 public:
  Checker(std::string_view text, const JsonDocument& document, const std::string& displayName)
      : text_(text), document_(document), displayName_(displayName) {}

  const JsonDocument& document() const { return document_; }

  std::string Where(const JsonNode& node) const {
    const TextPosition position = PositionOf(text_, node.offset);
    return std::to_string(position.line) + ":" + std::to_string(position.column);
  }

  [[noreturn]] void Fail(const JsonNode& at, const Path& path, const std::string& message) const {
    throw ModelFileError(displayName_ + ":" + Where(at) + ": " + path.Text() + ": " + message);
  }

  [[noreturn]] void Expected(const JsonNode& found, const Path& path,
                             const std::string& expectation) const {
    Fail(found, path, "expected " + expectation + ", found " + Describe(found));
  }

  std::string Describe(const JsonNode& node) const {
    switch (node.kind) {
      case JsonKind::Null:
        return "null";
      case JsonKind::False:
        return "false";
      case JsonKind::True:
        return "true";
      case JsonKind::Integer:
      case JsonKind::Real:
        return FormatNumber(node.number);
      case JsonKind::String: {
        constexpr std::size_t kShown = 40;
        const std::string_view text = document_.text(node);
        if (text.size() <= kShown) return "\"" + std::string(text) + "\"";
        // Cut between characters, not inside one.
        std::size_t cut = kShown;
        while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) --cut;
        return "\"" + std::string(text.substr(0, cut)) + "...\"";
      }
      case JsonKind::Array:
        if (node.count == 0) return "an empty array";
        return "an array of " + std::to_string(node.count) +
               (node.count == 1 ? " value" : " values");
      case JsonKind::Object:
        return "an object";
    }
    return "a value";
  }

  double Real(const JsonNode& node, const Path& path) const {
    if (node.kind != JsonKind::Integer && node.kind != JsonKind::Real) {
      Expected(node, path, "a number");
    }
    return node.number;
  }

  // Integers may be written as reals without a fractional part (3.0), as JSON Schema
  // counts them.
  int Integer(const JsonNode& node, const Path& path, IntRange range) const {
    const bool isNumber = node.kind == JsonKind::Integer || node.kind == JsonKind::Real;
    if (!isNumber || std::floor(node.number) != node.number) {
      Expected(node, path, IntegerExpectation(range));
    }
    if (node.number < static_cast<double>(range.min) ||
        node.number > static_cast<double>(range.max)) {
      // A whole number past what the format's integers hold is told their bounds, not
      // that it is no integer.
      const bool pastInt = node.number < INT_MIN || node.number > INT_MAX;
      Expected(node, path,
               pastInt ? "an integer from " + std::to_string(range.min) + " to " +
                             std::to_string(range.max)
                       : IntegerExpectation(range));
    }
    return static_cast<int>(node.number);
  }

  bool Boolean(const JsonNode& node, const Path& path) const {
    if (node.kind != JsonKind::True && node.kind != JsonKind::False) {
      Expected(node, path, "true or false");
    }
    return node.kind == JsonKind::True;
  }

  std::string Text(const JsonNode& node, const Path& path) const {
    if (node.kind != JsonKind::String) Expected(node, path, "a string");
    return std::string(document_.text(node));
  }

  template <std::size_t N>
  std::array<double, N> Reals(const JsonNode& node, const Path& path) const {
    // Made only for a message: read once per point and frame, it would cost an
    // allocation each time.
    const auto expectation = [] { return "an array of " + std::to_string(N) + " numbers"; };
    if (node.kind != JsonKind::Array || node.count != N) Expected(node, path, expectation());
    std::array<double, N> values{};
    for (std::size_t i = 0; i < N; ++i) {
      const JsonNode& item = document_.item(node, i);
      if (item.kind != JsonKind::Integer && item.kind != JsonKind::Real) {
        Expected(item, path.Index(i), "a number in " + expectation());
      }
      values[i] = item.number;
    }
    return values;
  }

  DofFlags Flags(const JsonNode& node, const Path& path) const {
    constexpr std::string_view expectation = "an array of 6 booleans";
    if (node.kind != JsonKind::Array || node.count != 6) {
      Expected(node, path, std::string(expectation));
    }
    DofFlags flags{};
    for (std::size_t i = 0; i < flags.size(); ++i) {
      const JsonNode& item = document_.item(node, i);
      if (item.kind != JsonKind::True && item.kind != JsonKind::False) {
        Expected(item, path.Index(i), "true or false in " + std::string(expectation));
      }
      flags[i] = item.kind == JsonKind::True;
    }
    return flags;
  }

  // Reads every item of an array with `read(item, path)`.
  template <class Read>
  auto List(const JsonNode& node, const Path& path, const std::string& expectation,
            Read read) const {
    if (node.kind != JsonKind::Array) Expected(node, path, expectation);
    std::vector<decltype(read(node, path))> items;
    items.reserve(node.count);
    for (std::size_t i = 0; i < node.count; ++i) {
      items.push_back(read(document_.item(node, i), path.Index(i)));
    }
    return items;
  }

  std::vector<std::string> Texts(const JsonNode& node, const Path& path,
                                 const std::string& expectation) const {
    return List(node, path, expectation,
                [this](const JsonNode& item, const Path& at) { return Text(item, at); });
  }

 private:
  std::string_view text_;
  const JsonDocument& document_;
  const std::string& displayName_;
};

// The members of one JSON object of a known kind: unknown keys and keys given twice are
// refused on construction; the typed getters refuse missing required keys and values of
// the wrong kind. `keys` must outlive the object (they are string literals).
// Keys are a few letters long and mostly differ in length or first letter: a plain loop
// settles most comparisons of the many look-ups of every object at once.
inline bool SameKey(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i]) return false;
  }
  return true;
}

class Fields {
 public:
  static constexpr std::size_t kMaxKeys = 16;

  Fields(const Checker& checker, const JsonNode& object, const Path& path,
         const std::string& expectation, std::span<const std::string_view> keys)
      : checker_(checker), object_(object), path_(path), keys_(keys) {
    if (keys.size() > kMaxKeys) throw std::logic_error("an object kind with too many keys");
    if (object.kind != JsonKind::Object) checker.Expected(object, path, expectation);
    const JsonDocument& document = checker.document();
    for (std::size_t member = 0; member < object.count; ++member) {
      const JsonNode& keyNode = document.key(object, member);
      const std::string_view key = document.text(keyNode);
      const std::size_t slot = KeySlot(key);
      if (slot == keys.size()) RefuseUnknown(keyNode, key);
      if (values_[slot] != nullptr) {
        checker.Fail(keyNode, path.Key(keys[slot]),
                     "the key \"" + std::string(key) +
                         "\" is given twice in one object (first at " +
                         checker.Where(*keyNodes_[slot]) + "); expected each key once");
      }
      keyNodes_[slot] = &keyNode;
      values_[slot] = &document.value(object, member);
    }
  }

  const Checker& checker() const { return checker_; }
  Path At(std::string_view key) const { return path_.Key(key); }
  const JsonNode* Find(std::string_view key) const { return values_[Slot(key)]; }

  const JsonNode& Required(std::string_view key, std::string_view expectation) const {
    const JsonNode* value = Find(key);
    if (value == nullptr) {
      checker_.Fail(object_, path_,
                    "the required key \"" + std::string(key) + "\" is missing; expected " +
                        std::string(expectation) + " for it");
    }
    return *value;
  }

  std::string Text(std::string_view key) const {
    return checker_.Text(Required(key, "a string"), At(key));
  }
  std::string Text(std::string_view key, const std::string& fallback) const {
    const JsonNode* value = Find(key);
    return value == nullptr ? fallback : checker_.Text(*value, At(key));
  }
  double Real(std::string_view key) const {
    return checker_.Real(Required(key, "a number"), At(key));
  }
  double Real(std::string_view key, double fallback) const {
    const JsonNode* value = Find(key);
    return value == nullptr ? fallback : checker_.Real(*value, At(key));
  }
  std::optional<double> OptionalReal(std::string_view key) const {
    const JsonNode* value = Find(key);
    if (value == nullptr) return std::nullopt;
    return checker_.Real(*value, At(key));
  }
  int Integer(std::string_view key, IntRange range) const {
    const JsonNode* value = Find(key);
    const JsonNode& node = value != nullptr ? *value : Required(key, IntegerExpectation(range));
    return checker_.Integer(node, At(key), range);
  }
  int Integer(std::string_view key, int fallback, IntRange range) const {
    const JsonNode* value = Find(key);
    return value == nullptr ? fallback : checker_.Integer(*value, At(key), range);
  }
  std::optional<int> OptionalInteger(std::string_view key, IntRange range) const {
    const JsonNode* value = Find(key);
    if (value == nullptr) return std::nullopt;
    return checker_.Integer(*value, At(key), range);
  }
  bool Boolean(std::string_view key, bool fallback) const {
    const JsonNode* value = Find(key);
    return value == nullptr ? fallback : checker_.Boolean(*value, At(key));
  }
  DofFlags Flags(std::string_view key) const {
    const JsonNode* value = Find(key);
    return value == nullptr ? DofFlags{} : checker_.Flags(*value, At(key));
  }
  template <std::size_t N>
  std::array<double, N> Reals(std::string_view key) const {
    const JsonNode* value = Find(key);
    const JsonNode& node =
        value != nullptr ? *value
                         : Required(key, "an array of " + std::to_string(N) + " numbers");
    return checker_.Reals<N>(node, At(key));
  }
  template <std::size_t N>
  std::array<double, N> Reals(std::string_view key, const std::array<double, N>& fallback) const {
    const JsonNode* value = Find(key);
    return value == nullptr ? fallback : checker_.Reals<N>(*value, At(key));
  }
  std::vector<std::string> Texts(std::string_view key, const std::string& expectation) const {
    const JsonNode* value = Find(key);
    if (value == nullptr) return {};
    return checker_.Texts(*value, At(key), expectation);
  }

  // An optional array of objects of one kind, named by `itemNoun` ("point"), read with
  // `read(fields-of-item)`; absent gives an empty list.
  template <class Read>
  auto List(std::string_view key, const std::string& itemNoun,
            std::span<const std::string_view> itemKeys, Read read) const {
    const JsonNode* value = Find(key);
    using Item = decltype(read(std::declval<const Fields&>()));
    if (value == nullptr) return std::vector<Item>{};
    return ListOf(*value, key, itemNoun, itemKeys, read);
  }

  // The same for an array whose absence the host operation tells apart from empty.
  template <class Read>
  auto OptionalList(std::string_view key, const std::string& itemNoun,
                    std::span<const std::string_view> itemKeys, Read read) const {
    const JsonNode* value = Find(key);
    using Item = decltype(read(std::declval<const Fields&>()));
    if (value == nullptr) return std::optional<std::vector<Item>>{};
    return std::optional<std::vector<Item>>(ListOf(*value, key, itemNoun, itemKeys, read));
  }

  // An optional nested object read with `read(fields-of-object)`.
  template <class Read>
  auto OptionalObject(std::string_view key, const std::string& expectation,
                      std::span<const std::string_view> objectKeys, Read read) const {
    const JsonNode* value = Find(key);
    using Item = decltype(read(std::declval<const Fields&>()));
    if (value == nullptr) return std::optional<Item>{};
    const Path at = At(key);
    return std::optional<Item>(read(Fields(checker_, *value, at, expectation, objectKeys)));
  }

 private:
  template <class Read>
  auto ListOf(const JsonNode& value, std::string_view key, const std::string& itemNoun,
              std::span<const std::string_view> itemKeys, Read read) const {
    const Path at = At(key);
    const std::string article =
        std::string_view("aeiou").find(itemNoun.front()) == std::string_view::npos ? "a " : "an ";
    const std::string itemExpectation = "an object (" + article + itemNoun + ")";
    return checker_.List(value, at, "an array of " + itemNoun + "s",
                         [&](const JsonNode& item, const Path& itemPath) {
                           return read(Fields(checker_, item, itemPath, itemExpectation, itemKeys));
                         });
  }

  // The reading code asks only for keys of the object's own kind.
  std::size_t Slot(std::string_view key) const {
    const std::size_t slot = KeySlot(key);
    if (slot == keys_.size()) throw std::logic_error("a key read that the object kind lacks");
    return slot;
  }

  // The position of a key of this kind, or the number of keys when it is none. Files write
  // and the reading code asks for the keys mostly in the order of the kind's list, so the
  // key after the last one found is tried first.
  std::size_t KeySlot(std::string_view key) const {
    if (nextSlot_ < keys_.size() && SameKey(keys_[nextSlot_], key)) return nextSlot_++;
    for (std::size_t slot = 0; slot < keys_.size(); ++slot) {
      if (SameKey(keys_[slot], key)) {
        nextSlot_ = slot + 1;
        return slot;
      }
    }
    return keys_.size();
  }

  [[noreturn]] void RefuseUnknown(const JsonNode& keyNode, std::string_view key) const {
    std::string message = "unknown key \"" + std::string(key) + "\"";
    std::string_view closest;
    std::size_t closestDistance = 3;
    constexpr std::size_t kLongestLikelyTypo = 40;
    for (const std::string_view known : keys_) {
      if (key.size() > kLongestLikelyTypo) break;
      const std::size_t distance = EditDistance(key, known);
      if (distance < closestDistance && distance < known.size()) {
        closest = known;
        closestDistance = distance;
      }
    }
    if (!closest.empty()) message += " (did you mean \"" + std::string(closest) + "\"?)";
    message += "; expected one of:";
    for (std::size_t i = 0; i < keys_.size(); ++i) {
      message += (i == 0 ? " " : ", ");
      message += keys_[i];
    }
    // The unknown key's own text is kept alive by the document until the throw is done.
    checker_.Fail(keyNode, path_.Key(key), message);
  }

  const Checker& checker_;
  const JsonNode& object_;
  const Path& path_;
  std::span<const std::string_view> keys_;
  mutable std::size_t nextSlot_ = 0;
  std::array<const JsonNode*, kMaxKeys> values_{};
  std::array<const JsonNode*, kMaxKeys> keyNodes_{};
};

// ---- Materials ----

constexpr std::string_view kIsotropicKeys[] = {"E", "U", "A", "G"};
constexpr std::string_view kUniaxialKeys[] = {"E", "A"};
constexpr std::string_view kStrengthKeys[] = {"Fy", "Fu", "eFy", "eFu"};
constexpr std::string_view kConcreteKeys[] = {"fc"};

// A default_materials entry takes the keys of a material but its name and type.
constexpr std::string_view kMaterialKeys[] = {
    "name",      "type",        "symmetry",     "weight_per_volume", "mass_per_volume",
    "isotropic", "orthotropic", "anisotropic",  "uniaxial",          "steel",
    "rebar",     "concrete",    "stress_strain"};
constexpr std::span<const std::string_view> kMaterialPropertyKeys(kMaterialKeys + 2, 11);

Strengths ReadStrengths(const Fields& f) {
  return Strengths{f.Real("Fy"), f.Real("Fu"), f.Real("eFy"), f.Real("eFu")};
}

MaterialProperties ReadMaterialProperties(const Fields& f) {
  MaterialProperties p;
  p.symmetry = f.Integer("symmetry", host_code::kSymmetryIsotropic, Codes(0, 3));
  p.weightPerVolume = f.Real("weight_per_volume", 0);
  p.massPerVolume = f.Real("mass_per_volume", 0);
  p.isotropic = f.OptionalObject(
      "isotropic", "an object {E, U, A, G}", kIsotropicKeys, [](const Fields& set) {
        return Isotropic{set.Real("E"), set.Real("U"), set.Real("A"), set.Real("G")};
      });
  p.orthotropic = f.OptionalObject("orthotropic", "an object {E[3], U[3], A[3], G[3]}",
                                   kIsotropicKeys, [](const Fields& set) {
                                     return Orthotropic{set.Reals<3>("E"), set.Reals<3>("U"),
                                                        set.Reals<3>("A"), set.Reals<3>("G")};
                                   });
  p.anisotropic = f.OptionalObject("anisotropic", "an object {E[3], U[15], A[6], G[3]}",
                                   kIsotropicKeys, [](const Fields& set) {
                                     return Anisotropic{set.Reals<3>("E"), set.Reals<15>("U"),
                                                        set.Reals<6>("A"), set.Reals<3>("G")};
                                   });
  p.uniaxial =
      f.OptionalObject("uniaxial", "an object {E, A}", kUniaxialKeys, [](const Fields& set) {
        return Uniaxial{set.Real("E"), set.Real("A")};
      });
  p.steel = f.OptionalObject("steel", "an object {Fy, Fu, eFy, eFu}", kStrengthKeys, ReadStrengths);
  p.rebar = f.OptionalObject("rebar", "an object {Fy, Fu, eFy, eFu}", kStrengthKeys, ReadStrengths);
  p.concreteFc = f.OptionalObject("concrete", "an object {fc}", kConcreteKeys,
                                  [](const Fields& set) { return set.Real("fc"); });
  if (const JsonNode* curve = f.Find("stress_strain")) {
    p.stressStrain =
        f.checker().List(*curve, f.At("stress_strain"), "an array of [strain, stress] pairs",
                         [&f](const JsonNode& item, const Path& at) {
                           const auto pair = f.checker().Reals<2>(item, at);
                           return CurvePoint{pair[0], pair[1]};
                         });
  }
  return p;
}

Material ReadMaterial(const Fields& f) {
  Material material;
  material.name = f.Text("name");
  material.type = f.Integer("type", Codes(1, 7));
  material.properties = ReadMaterialProperties(f);
  return material;
}

constexpr std::string_view kDefaultMaterialKeys[] = {"concrete", "steel", "rebar"};

DefaultMaterials ReadDefaultMaterials(const Fields& f) {
  const auto entry = [&f](std::string_view key) {
    return f.OptionalObject(key, "an object (a material without name and type)",
                            kMaterialPropertyKeys, ReadMaterialProperties);
  };
  return DefaultMaterials{entry("concrete"), entry("steel"), entry("rebar")};
}

// ---- Sections ----

constexpr std::string_view kSectionPropertyKeys[] = {"area", "As2", "As3", "J",   "I22", "I33",
                                                     "S22",  "S33", "Z22", "Z33", "R22", "R33"};
constexpr std::string_view kSegmentKeys[] = {"start", "end"};
constexpr std::string_view kFrameSectionKeys[] = {"name",       "type",         "material",
                                                  "properties", "rebar_design", "segments"};

FrameSection ReadFrameSection(const Fields& f) {
  FrameSection section;
  section.name = f.Text("name");
  section.type = f.Integer("type", kAnyInteger);
  section.material = f.Text("material", "");
  if (const JsonNode* properties = f.Find("properties")) {
    const Path at = f.At("properties");
    const Fields values(f.checker(), *properties, at, "an object of section properties",
                        kSectionPropertyKeys);
    for (std::size_t i = 0; i < section.properties.size(); ++i) {
      section.properties[i] = values.Real(kSectionPropertyKeys[i], 0);
    }
  }
  section.rebarDesign = f.OptionalInteger("rebar_design", Codes(1, 2));
  section.segments = f.OptionalList("segments", "segment", kSegmentKeys, [](const Fields& segment) {
    return NonprismaticSegment{segment.Text("start"), segment.Text("end")};
  });
  return section;
}

constexpr std::string_view kLayerKeys[] = {
    "name",     "distance",       "thickness", "type", "integration_points",
    "material", "material_angle", "S11",       "S22",  "S12"};
constexpr std::string_view kAreaSectionKeys[] = {
    "name",     "type",           "shell_type",         "drilling_dof",
    "material", "material_angle", "membrane_thickness", "bending_thickness",
    "layers"};

ShellLayer ReadLayer(const Fields& f) {
  ShellLayer layer;
  layer.name = f.Text("name");
  layer.distance = f.Real("distance");
  layer.thickness = f.Real("thickness");
  layer.type = f.Integer("type", Codes(1, 3));
  layer.integrationPoints = f.Integer("integration_points", 1, kAnyInteger);
  layer.material = f.Text("material");
  layer.materialAngle = f.Real("material_angle", 0);
  layer.s11 = f.Integer("S11", 1, Codes(0, 2));
  layer.s22 = f.Integer("S22", 1, Codes(0, 2));
  layer.s12 = f.Integer("S12", 1, Codes(0, 2));
  return layer;
}

AreaSection ReadAreaSection(const Fields& f) {
  AreaSection section;
  section.name = f.Text("name");
  section.type = f.Integer("type", 1, Codes(1, 3));
  section.shellType = f.Integer("shell_type", 1, Codes(1, 6));
  section.drillingDof = f.Boolean("drilling_dof", true);
  section.material = f.Text("material", "");
  section.materialAngle = f.Real("material_angle", 0);
  section.membraneThickness = f.Real("membrane_thickness", 0);
  section.bendingThickness = f.Real("bending_thickness", 0);
  section.layers = f.List("layers", "layer", kLayerKeys, ReadLayer);
  return section;
}

// ---- Points and constraints ----

constexpr std::string_view kPointForceKeys[] = {"pattern", "csys", "step", "values"};
constexpr std::string_view kPointKeys[] = {"name",       "x",           "y",    "z",
                                           "restraints", "constraints", "mass", "forces"};

Point ReadPoint(const Fields& f) {
  Point point;
  point.name = f.Text("name");
  point.x = f.Real("x");
  point.y = f.Real("y");
  point.z = f.Real("z");
  point.restraints = f.Flags("restraints");
  point.constraints = f.Texts("constraints", "an array of constraint names");
  point.mass = f.Reals<6>("mass", DofValues{});
  point.forces = f.List("forces", "point force", kPointForceKeys, [](const Fields& force) {
    return PointForce{force.Text("pattern"), force.Text("csys", "GLOBAL"),
                      force.Integer("step", 0, kAnyInteger), force.Reals<6>("values")};
  });
  return point;
}

constexpr std::string_view kConstraintKeys[] = {"name", "type", "axis", "csys"};

Constraint ReadConstraint(const Fields& f) {
  return Constraint{f.Text("name"), f.Integer("type", Codes(1, 9)),
                    f.Integer("axis", 3, Codes(1, 4)), f.Text("csys", "Global")};
}

// ---- Frames and areas ----

constexpr std::string_view kReleaseKeys[] = {"i", "j"};
constexpr std::string_view kHingeKeys[] = {"dof", "relative_distance"};
constexpr std::string_view kDistributedLoadKeys[] = {"pattern", "type", "csys", "dir",
                                                     "rd1",     "rd2",  "val1", "val2"};
constexpr std::string_view kFramePointLoadKeys[] = {"pattern", "type", "csys", "dir", "rd", "val"};
constexpr std::string_view kFrameKeys[] = {"name",       "section",         "i",
                                           "j",          "angle",           "releases",
                                           "hinges",     "mass_per_length", "distributed_loads",
                                           "point_loads"};

Frame ReadFrame(const Fields& f) {
  Frame frame;
  frame.name = f.Text("name");
  frame.section = f.Text("section");
  frame.pointI = f.Text("i");
  frame.pointJ = f.Text("j");
  frame.angle = f.Real("angle", 0);
  if (const JsonNode* releases = f.Find("releases")) {
    const Path at = f.At("releases");
    const Fields ends(f.checker(), *releases, at, "an object {i: 6 booleans, j: 6 booleans}",
                      kReleaseKeys);
    frame.releaseI = ends.Flags("i");
    frame.releaseJ = ends.Flags("j");
  }
  frame.hinges = f.List("hinges", "hinge", kHingeKeys, [](const Fields& hinge) {
    return Hinge{hinge.Integer("dof", kAnyInteger), hinge.Real("relative_distance")};
  });
  frame.massPerLength = f.Real("mass_per_length", 0);
  frame.distributedLoads =
      f.List("distributed_loads", "distributed load", kDistributedLoadKeys, [](const Fields& load) {
        return DistributedLoad{load.Text("pattern"),
                               load.Integer("type", 1, Codes(1, 2)),
                               load.Text("csys", "GLOBAL"),
                               load.Integer("dir", kAnyInteger),
                               load.Real("rd1"),
                               load.Real("rd2"),
                               load.Real("val1"),
                               load.Real("val2")};
      });
  frame.pointLoads =
      f.List("point_loads", "point load", kFramePointLoadKeys, [](const Fields& load) {
        return FramePointLoad{load.Text("pattern"),
                              load.Integer("type", 1, Codes(1, 2)),
                              load.Text("csys", "GLOBAL"),
                              load.Integer("dir", kAnyInteger),
                              load.Real("rd"),
                              load.Real("val")};
      });
  return frame;
}

constexpr std::string_view kAreaLoadKeys[] = {"pattern", "csys", "dir", "value", "dist_type"};
constexpr std::span<const std::string_view> kUniformLoadKeys(kAreaLoadKeys, 4);
constexpr std::string_view kAreaKeys[] = {
    "name", "section", "points", "mass_per_area", "uniform_loads", "uniform_to_frame_loads"};

Area ReadArea(const Fields& f) {
  Area area;
  area.name = f.Text("name");
  area.section = f.Text("section");
  const std::string expectation = "an array of 3 or more point names";
  const JsonNode& points = f.Required("points", expectation);
  if (points.kind != JsonKind::Array || points.count < 3) {
    f.checker().Expected(points, f.At("points"), expectation);
  }
  area.points = f.Texts("points", expectation);
  area.massPerArea = f.Real("mass_per_area", 0);
  area.uniformLoads =
      f.List("uniform_loads", "uniform load", kUniformLoadKeys, [](const Fields& load) {
        return AreaLoad{load.Text("pattern"), load.Text("csys", "GLOBAL"),
                        load.Integer("dir", kAnyInteger), load.Real("value")};
      });
  area.uniformToFrameLoads = f.List(
      "uniform_to_frame_loads", "uniform-to-frame load", kAreaLoadKeys, [](const Fields& load) {
        return AreaLoad{load.Text("pattern"), load.Text("csys", "GLOBAL"),
                        load.Integer("dir", kAnyInteger), load.Real("value"),
                        load.Integer("dist_type", 2, Codes(1, 2))};
      });
  return area;
}

// ---- Load patterns, mass source, functions, groups, cases ----

constexpr std::string_view kLoadPatternKeys[] = {"name", "type", "self_weight_multiplier"};

LoadPattern ReadLoadPattern(const Fields& f) {
  return LoadPattern{f.Text("name"), f.Integer("type", 1, kAnyInteger),
                     f.Real("self_weight_multiplier", 0)};
}

constexpr std::string_view kMassSourceLoadKeys[] = {"pattern", "factor"};
constexpr std::string_view kMassSourceKeys[] = {"option", "loads"};

MassSource ReadMassSource(const Fields& f) {
  MassSource source;
  source.option = f.Integer("option", 1, Codes(1, 3));
  source.loads = f.List("loads", "mass source load", kMassSourceLoadKeys, [](const Fields& load) {
    return MassSourceLoad{load.Text("pattern"), load.Real("factor")};
  });
  return source;
}

constexpr std::string_view kFunctionFileKeys[] = {
    "path",       "header_lines", "prefix_chars", "points_per_line",
    "value_type", "free_format",  "field_width",  "dt"};
constexpr std::string_view kFunctionKeys[] = {
    "name",   "family",    "kind", "file",     "points",   "period", "steps_per_cycle",
    "cycles", "amplitude", "time", "max_time", "ramp_time"};

Function ReadFunction(const Fields& f, const std::filesystem::path& baseFolder) {
  Function function;
  function.name = f.Text("name");
  function.family = f.Integer("family", 2, Codes(1, 4));
  function.kind = f.Integer("kind", Codes(0, 7));
  function.file = f.OptionalObject(
      "file", "an object {path, ...}", kFunctionFileKeys, [&baseFolder](const Fields& file) {
        FunctionFile data;
        const std::filesystem::path written(file.Text("path"));
        data.path = written.is_relative() ? (baseFolder / written).string() : written.string();
        data.headerLines = file.Integer("header_lines", 0, kCount);
        data.prefixChars = file.Integer("prefix_chars", 0, kCount);
        data.pointsPerLine = file.Integer("points_per_line", 1, kPositiveCount);
        data.valueType = file.Integer("value_type", 1, Codes(1, 2));
        data.freeFormat = file.Boolean("free_format", true);
        data.fieldWidth = file.Integer("field_width", 10, kPositiveCount);
        data.dt = file.Real("dt", 0.02);
        return data;
      });
  if (const JsonNode* points = f.Find("points")) {
    function.points = f.checker().List(*points, f.At("points"), "an array of [time, value] pairs",
                                       [&f](const JsonNode& item, const Path& at) {
                                         const auto pair = f.checker().Reals<2>(item, at);
                                         return FunctionPoint{pair[0], pair[1]};
                                       });
  }
  function.period = f.OptionalReal("period");
  function.stepsPerCycle = f.OptionalInteger("steps_per_cycle", kAnyInteger);
  function.cycles = f.OptionalInteger("cycles", kAnyInteger);
  function.amplitude = f.OptionalReal("amplitude");
  function.time = f.OptionalReal("time");
  function.maxTime = f.OptionalReal("max_time");
  function.rampTime = f.OptionalReal("ramp_time");
  return function;
}

constexpr std::string_view kAssignmentKeys[] = {"type", "name"};
constexpr std::string_view kGroupKeys[] = {"name", "assignments"};

Group ReadGroup(const Fields& f) {
  Group group;
  group.name = f.Text("name");
  group.assignments =
      f.List("assignments", "assignment", kAssignmentKeys, [](const Fields& assignment) {
        return GroupAssignment{assignment.Integer("type", Codes(1, 7)), assignment.Text("name")};
      });
  return group;
}

constexpr std::string_view kLoadApplicationKeys[] = {"control", "displacement_type", "displacement",
                                                     "monitored_dof", "monitored_point"};
constexpr std::string_view kCaseLoadKeys[] = {"type", "name", "factor", "function", "time_factor"};
constexpr std::string_view kTimeStepKeys[] = {"steps", "size"};
constexpr std::string_view kDampingKeys[] = {"type", "mass_coefficient", "stiffness_coefficient",
                                             "values", "ratios"};
constexpr std::string_view kLoadCaseKeys[] = {"name",  "type",      "load_application",
                                              "loads", "time_step", "damping"};

CaseLoad ReadCaseLoad(const Fields& f) {
  CaseLoad load;
  const std::string expectation = "\"Load\", \"Mode\" or \"Accel\"";
  const JsonNode& type = f.Required("type", expectation);
  if (type.kind != JsonKind::String) f.checker().Expected(type, f.At("type"), expectation);
  load.type = f.Text("type");
  if (load.type != "Load" && load.type != "Mode" && load.type != "Accel") {
    f.checker().Expected(type, f.At("type"), expectation);
  }
  load.name = f.Text("name");
  load.factor = f.Real("factor", 1);
  load.function = f.Text("function", "");
  load.timeFactor = f.Real("time_factor", 1);
  return load;
}

LoadCase ReadLoadCase(const Fields& f) {
  LoadCase loadCase;
  loadCase.name = f.Text("name");
  loadCase.type = f.Integer("type", kAnyInteger);
  loadCase.loadApplication =
      f.OptionalObject(
           "load_application", "an object {control, displacement_type, ...}", kLoadApplicationKeys,
           [](const Fields& application) {
             return LoadApplication{application.Integer("control", 1, Codes(1, 2)),
                                    application.Integer("displacement_type", 1, kAnyInteger),
                                    application.Real("displacement", 0),
                                    application.Integer("monitored_dof", 1, Codes(1, 6)),
                                    application.Text("monitored_point", "")};
           })
          .value_or(LoadApplication{});
  loadCase.loads = f.List("loads", "case load", kCaseLoadKeys, ReadCaseLoad);
  loadCase.timeStep = f.OptionalObject(
      "time_step", "an object {steps, size}", kTimeStepKeys, [](const Fields& step) {
        return TimeStep{step.Integer("steps", kAnyInteger), step.Real("size")};
      });
  loadCase.damping = f.OptionalObject(
      "damping", "an object {type, mass_coefficient, ...}", kDampingKeys, [](const Fields& d) {
        return Damping{d.Integer("type", Codes(1, 3)), d.Real("mass_coefficient", 0),
                       d.Real("stiffness_coefficient", 0), d.Reals<2>("values", {0, 0}),
                       d.Reals<2>("ratios", {0, 0})};
      });
  return loadCase;
}

// ---- The top level ----

constexpr std::string_view kTopKeys[] = {
    "format",         "version",       "units",         "materials",
    "frame_sections", "area_sections", "points",        "constraints",
    "frames",         "areas",         "load_patterns", "mass_source",
    "functions",      "groups",        "load_cases",    "default_materials"};
constexpr std::string_view kFormatName = "vask-model";
constexpr int kFormatVersion = 1;

// The format and version are checked first, so that another kind of JSON file is told
// so rather than that its first key is unknown.
void CheckFormatAndVersion(const Checker& checker, const JsonNode& root) {
  const JsonDocument& document = checker.document();
  const JsonNode* format = nullptr;
  const JsonNode* version = nullptr;
  for (std::size_t member = 0; member < root.count; ++member) {
    const std::string_view key = document.text(document.key(root, member));
    if (key == "format" && format == nullptr) format = &document.value(root, member);
    if (key == "version" && version == nullptr) version = &document.value(root, member);
  }
  const Path top;
  const std::string formatExpectation = "\"" + std::string(kFormatName) + "\"";
  if (format == nullptr) {
    checker.Fail(
        root, top,
        "the required key \"format\" is missing; expected \"format\": " + formatExpectation);
  }
  if (format->kind != JsonKind::String || document.text(*format) != kFormatName) {
    checker.Expected(*format, top.Key("format"), formatExpectation);
  }
  const std::string versionExpectation = std::to_string(kFormatVersion);
  if (version == nullptr) {
    checker.Fail(
        root, top,
        "the required key \"version\" is missing; expected \"version\": " + versionExpectation);
  }
  const bool isNumber = version->kind == JsonKind::Integer || version->kind == JsonKind::Real;
  if (!isNumber || version->number != kFormatVersion) {
    checker.Expected(*version, top.Key("version"), versionExpectation);
  }
}

std::string EmptyFileMessage(const std::string& displayName) {
  return displayName + ": the file is empty; expected a JSON object with \"format\": \"" +
         std::string(kFormatName) + "\" and \"version\": " + std::to_string(kFormatVersion);
}

}  // namespace

namespace {

// Reads the whole model from the document's root; without `readObjects`, all but the
// points, frames, areas and groups (the quick reader below reads those itself).
Model ReadRoot(const Checker& checker, const std::filesystem::path& baseFolder,
               bool readObjects = true) {
  const JsonNode& root = checker.document().root();
  const Path top;
  const std::string topExpectation =
      "a JSON object with \"format\": \"" + std::string(kFormatName) + "\"";
  if (root.kind != JsonKind::Object) checker.Expected(root, top, topExpectation);
  CheckFormatAndVersion(checker, root);
  const Fields f(checker, root, top, topExpectation, kTopKeys);

  Model model;
  model.units = f.Integer("units", Codes(1, 16));
  model.materials = f.List("materials", "material", kMaterialKeys, ReadMaterial);
  if (const JsonNode* defaults = f.Find("default_materials")) {
    const Path at = f.At("default_materials");
    model.defaultMaterials = ReadDefaultMaterials(
        Fields(checker, *defaults, at, "an object {concrete, steel, rebar}", kDefaultMaterialKeys));
  }
  model.frameSections =
      f.List("frame_sections", "frame section", kFrameSectionKeys, ReadFrameSection);
  model.areaSections = f.List("area_sections", "area section", kAreaSectionKeys, ReadAreaSection);
  if (readObjects) model.points = f.List("points", "point", kPointKeys, ReadPoint);
  model.constraints = f.List("constraints", "constraint", kConstraintKeys, ReadConstraint);
  if (readObjects) {
    model.frames = f.List("frames", "frame", kFrameKeys, ReadFrame);
    model.areas = f.List("areas", "area", kAreaKeys, ReadArea);
  }
  model.loadPatterns = f.List("load_patterns", "load pattern", kLoadPatternKeys, ReadLoadPattern);
  model.massSource =
      f.OptionalObject("mass_source", "an object {option, loads}", kMassSourceKeys, ReadMassSource)
          .value_or(MassSource{});
  model.functions =
      f.List("functions", "function", kFunctionKeys,
             [&baseFolder](const Fields& function) { return ReadFunction(function, baseFolder); });
  if (readObjects) model.groups = f.List("groups", "group", kGroupKeys, ReadGroup);
  model.loadCases = f.List("load_cases", "load case", kLoadCaseKeys, ReadLoadCase);
  return model;
}

std::atomic<std::size_t> framesThreadFromBytes{std::size_t{1} << 20};

// Reads a model file of the usual shape without a tree of the whole document, which for a
// large building would hold several times the file's size in memory and cost most of the
// reading. Each point, frame, area and group is read straight into the model's object
// (direct_object_reader.h) or, when it has a form that reader leaves, into a small tree of
// its own, whose storage is used again for the next, and checked by the same code as in the
// full reading. The other top-level values, a small part of any file, are gathered into a
// document of their own and read as usual. The result is the model the full reading gives.
// At the first thing this reader does not take (bad syntax, a rare valid form, a value the
// checks refuse, a list given twice) it gives up, and the full reading starts again from
// the first byte, so that every message, with its line, column and path, is the full
// reading's own.
class QuickModelReader {
 public:
  QuickModelReader(std::string_view text, const std::string& displayName,
                   const std::filesystem::path& baseFolder)
      : text_(text), displayName_(displayName), baseFolder_(baseFolder) {}

  std::optional<Model> Read() {
    try {
      return ReadTop();
    } catch (const ModelFileError&) {
      return std::nullopt;
    } catch (const JsonSyntaxError&) {
      return std::nullopt;
    }
  }

 private:
  // The frames, most of a building's file, are read on a second thread while this one reads
  // the rest. Where the frames start is guessed by looking for their key; the guess counts
  // only when the reading of the top level meets the frames' list exactly there. This
  // thread then steps over the list (its brackets and strings only) and goes on; the two
  // must agree on where the list ends, or the frames are read again here.
  struct FramesAhead {
    std::size_t start = std::string_view::npos;  // the list's '['
    std::thread thread;
    std::atomic<bool> abandon{false};
    std::vector<Frame> frames;
    std::size_t end = 0;  // just past the list's ']'
    bool read = false;

    FramesAhead() = default;
    FramesAhead(const FramesAhead&) = delete;
    FramesAhead& operator=(const FramesAhead&) = delete;
    ~FramesAhead() { Finish(); }
    void Finish() {
      abandon = true;
      if (thread.joinable()) thread.join();
    }
    // Waits for the reading; true when it read the list that starts at `start` to `end`.
    bool ReadTo(std::size_t listEnd) {
      if (thread.joinable()) thread.join();
      return read && end == listEnd;
    }
  };

  void StartFramesAhead(FramesAhead& ahead) {
    if (text_.size() < FramesThreadFromBytes()) return;
    constexpr std::string_view kKey = "\"frames\"";
    for (std::size_t found = text_.find(kKey); found != std::string_view::npos;
         found = text_.find(kKey, found + 1)) {
      QuickModelReader probe(text_, displayName_, baseFolder_);
      probe.at_ = found + kKey.size();
      if (!probe.Take(':') || !probe.Take('[')) continue;
      ahead.start = probe.at_ - 1;
      try {
        ahead.thread = std::thread([this, &ahead] {
          QuickModelReader reader(text_, displayName_, baseFolder_);
          reader.at_ = ahead.start;
          reader.abandon_ = &ahead.abandon;
          try {
            ahead.read = reader.ReadList(ahead.frames, kFrameKeys, "frames", ReadFrameDirectly,
                                         ReadFrame);
          } catch (...) {
            // Whatever went wrong there goes wrong again when this thread reads the list.
            ahead.read = false;
          }
          ahead.end = reader.at_;
        });
      } catch (const std::system_error&) {
        ahead.start = std::string_view::npos;  // no thread: the frames are read in turn
      }
      return;
    }
  }

  // Steps over the value at `at_` by its brackets and strings alone; false when it does
  // not end. Only for a list that the other thread reads and checks.
  bool StepOverValue() {
    std::size_t depth = 0;
    while (at_ < text_.size()) {
      const char c = text_[at_++];
      if (c == '"') {
        while (at_ < text_.size() && text_[at_] != '"') at_ += text_[at_] == '\\' ? 2 : 1;
        if (at_++ >= text_.size()) return false;
      } else if (c == '[' || c == '{') {
        ++depth;
      } else if (c == ']' || c == '}') {
        if (depth == 0) return false;
        if (--depth == 0) return true;
      }
    }
    return false;
  }

  std::optional<Model> ReadTop() {
    if (text_.size() > JsonDocument::kMaxTextSize) return std::nullopt;
    FramesAhead ahead;
    StartFramesAhead(ahead);
    std::size_t framesStart = std::string_view::npos, framesEnd = 0;
    if (text_.starts_with("\xEF\xBB\xBF")) at_ = 3;
    if (!Take('{')) return std::nullopt;
    std::string others = "{";
    std::vector<Point> points;
    std::vector<Frame> frames;
    std::vector<Area> areas;
    std::vector<Group> groups;
    bool seenPoints = false, seenFrames = false, seenAreas = false, seenGroups = false;
    SkipWhitespace();
    if (Peek() == '}') return std::nullopt;  // the full reading says what is missing
    while (true) {
      const std::optional<std::string_view> key = RawKey();
      if (!key || !Take(':')) return std::nullopt;
      bool listRead = true;
      if (*key == "points") {
        listRead =
            !seenPoints && ReadList(points, kPointKeys, *key, ReadPointDirectly, ReadPoint);
        seenPoints = true;
      } else if (*key == "frames") {
        SkipWhitespace();
        if (!seenFrames && at_ == ahead.start) {
          framesStart = at_;
          listRead = StepOverValue();
          framesEnd = at_;
        } else {
          ahead.Finish();  // the guess was wrong, or the list is given twice
          listRead =
              !seenFrames && ReadList(frames, kFrameKeys, *key, ReadFrameDirectly, ReadFrame);
        }
        seenFrames = true;
      } else if (*key == "areas") {
        listRead = !seenAreas && ReadList(areas, kAreaKeys, *key, ReadAreaDirectly, ReadArea);
        seenAreas = true;
      } else if (*key == "groups") {
        listRead =
            !seenGroups && ReadList(groups, kGroupKeys, *key, ReadGroupDirectly, ReadGroup);
        seenGroups = true;
      } else {
        const std::size_t start = at_;
        const std::optional<std::size_t> end = JsonDocument::ParseOneAt(text_, at_, 1, scratch_);
        if (!end) return std::nullopt;
        at_ = *end;
        if (others.size() > 1) others += ',';
        others.append("\"").append(*key).append("\":").append(text_.substr(start, *end - start));
      }
      if (!listRead) return std::nullopt;
      SkipWhitespace();
      if (Take('}')) break;
      if (!Take(',')) return std::nullopt;
    }
    SkipWhitespace();
    if (at_ != text_.size()) return std::nullopt;
    others += '}';
    if (framesStart != std::string_view::npos) {
      if (ahead.ReadTo(framesEnd)) {
        frames = std::move(ahead.frames);
      } else {
        at_ = framesStart;
        if (!ReadList(frames, kFrameKeys, "frames", ReadFrameDirectly, ReadFrame) ||
            at_ != framesEnd) {
          return std::nullopt;
        }
      }
    }
    ahead.Finish();

    const JsonDocument document = JsonDocument::Parse(others);
    Model model = ReadRoot(Checker(others, document, displayName_), baseFolder_, false);
    model.points = std::move(points);
    model.frames = std::move(frames);
    model.areas = std::move(areas);
    model.groups = std::move(groups);
    return model;
  }

  // Every item of the array at `at_`: straight from the text when `readDirectly` takes it,
  // else from a tree of the item with `read`, as the full reading reads it.
  template <class Item, class ReadItem>
  bool ReadList(std::vector<Item>& items, std::span<const std::string_view> itemKeys,
                std::string_view key,
                bool (*readDirectly)(std::string_view, std::size_t&, Item&), ReadItem read) {
    if (!Take('[')) return false;
    SkipWhitespace();
    if (Take(']')) return true;
    const Checker checker(text_, item_, displayName_);
    const Path top;
    const Path at = top.Key(key);
    // Only a message would show it, and a message is never given here.
    const std::string expectation = "an object";
    const std::size_t start = at_;
    while (true) {
      if (abandon_ != nullptr && abandon_->load(std::memory_order_relaxed)) return false;
      if (items.size() == kSampleItems) ReserveFor(items, start);
      std::size_t next = at_;
      if (readDirectly(text_, next, items.emplace_back())) {
        at_ = next;
      } else {
        items.pop_back();  // what the direct reader left half read
        const std::optional<std::size_t> end = JsonDocument::ParseOneAt(text_, at_, 2, item_);
        if (!end) return false;
        at_ = *end;
        const Path itemPath = at.Index(items.size());
        items.push_back(read(Fields(checker, item_.root(), itemPath, expectation, itemKeys)));
      }
      SkipWhitespace();
      if (Take(']')) return true;
      if (!Take(',')) return false;
    }
  }

  // The lists of a building hold up to millions of objects; grown by doubling, each would
  // be copied a few times over and the memory behind it faulted in again each time. After
  // the first items, the length they took tells about how many the rest of the text could
  // hold, which is mostly close for the first list and the one after it, and more than
  // enough for the others; what is reserved but never used is address space, not memory.
  static constexpr std::size_t kSampleItems = 256;
  // Fewer bytes than any object of the bulk lists takes (`{"name":"","x":0,"y":0,"z":0}`).
  static constexpr std::size_t kShortestItem = 24;

  template <class Item>
  void ReserveFor(std::vector<Item>& items, std::size_t start) const {
    const std::size_t taken = at_ - start;
    const std::size_t rest = text_.size() - start;
    if (taken == 0) return;
    const double estimate = static_cast<double>(items.size()) * static_cast<double>(rest) /
                            static_cast<double>(taken);
    items.reserve(std::min(static_cast<std::size_t>(estimate), rest / kShortestItem));
  }

  // A key of plain characters, as written between its quotes; nothing for any other.
  std::optional<std::string_view> RawKey() {
    SkipWhitespace();
    if (!Take('"')) return std::nullopt;
    const std::size_t start = at_;
    while (at_ < text_.size()) {
      const unsigned char c = static_cast<unsigned char>(text_[at_]);
      if (c == '"') return text_.substr(start, at_++ - start);
      if (c < 0x20 || c >= 0x80 || c == '\\') return std::nullopt;
      ++at_;
    }
    return std::nullopt;
  }

  void SkipWhitespace() {
    while (at_ < text_.size() &&
           (text_[at_] == ' ' || text_[at_] == '\n' || text_[at_] == '\r' || text_[at_] == '\t')) {
      ++at_;
    }
  }
  char Peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
  bool Take(char c) {
    SkipWhitespace();
    if (Peek() != c) return false;
    ++at_;
    return true;
  }

  std::string_view text_;
  const std::string& displayName_;
  const std::filesystem::path& baseFolder_;
  std::size_t at_ = 0;
  JsonDocument item_;
  JsonDocument scratch_;
  const std::atomic<bool>* abandon_ = nullptr;  // set: stop reading a list
};

}  // namespace

void SetFramesThreadFromBytes(std::size_t bytes) { framesThreadFromBytes = bytes; }
std::size_t FramesThreadFromBytes() { return framesThreadFromBytes; }

Model ReadModel(std::string_view text, const std::string& displayName,
                const std::filesystem::path& baseFolder) {
  // An empty text is no object: the full reading gives its message.
  if (std::optional<Model> model = QuickModelReader(text, displayName, baseFolder).Read()) {
    return std::move(*model);
  }
  return ReadModelFully(text, displayName, baseFolder);
}

Model ReadModelFully(std::string_view text, const std::string& displayName,
                     const std::filesystem::path& baseFolder) {
  if (text.find_first_not_of(" \t\r\n") == std::string_view::npos) {
    throw ModelFileError(EmptyFileMessage(displayName));
  }
  std::optional<JsonDocument> parsed;
  try {
    parsed = JsonDocument::Parse(text);
  } catch (const JsonSyntaxError& error) {
    const TextPosition position = PositionOf(text, error.offset());
    std::string message = displayName + ":" + std::to_string(position.line) + ":" +
                          std::to_string(position.column) + ": ";
    if (!error.path().empty()) message += error.path() + ": ";
    throw ModelFileError(message + error.what());
  }
  return ReadRoot(Checker(text, *parsed, displayName), baseFolder);
}

std::string ReadFileText(const std::filesystem::path& file) {
  const auto refuse = [&file](int error) {
    return ModelFileError(
        file.string() + ": cannot read the model file: " + std::generic_category().message(error));
  };
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(file.c_str(), "rb"),
                                                         &std::fclose);
  if (!stream) throw refuse(errno);
  std::string text;
  std::error_code sizeError;
  const auto size = std::filesystem::file_size(file, sizeError);
  if (!sizeError) text.reserve(static_cast<std::size_t>(size));
  char buffer[1 << 16];
  while (true) {
    const std::size_t read = std::fread(buffer, 1, sizeof buffer, stream.get());
    text.append(buffer, read);
    if (read < sizeof buffer) break;
  }
  if (std::ferror(stream.get()) != 0) throw refuse(errno);
  return text;
}

}  // namespace vtt::model_file
