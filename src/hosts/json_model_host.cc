#include "hosts/json_model_host.h"

#include <array>
#include <cmath>
#include <optional>
#include <cstdint>
#include <exception>
#include <initializer_list>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>

#include "hosts/file_view.h"
#include "source/literal_look_ups.h"
#include "store/units.h"

namespace vtt {
namespace {

using model_file::Area;
using model_file::Frame;
using model_file::Function;
using model_file::Material;
using model_file::MaterialProperties;
using model_file::Point;

constexpr int kSucceeded = 0;
// The host's own group that holds every object, whether the file lists it or not.
constexpr std::string_view kGroupAll = "ALL";

void Zero(int& value) { value = 0; }
void Zero(double& value) { value = 0; }
void Zero(bool& value) { value = false; }
void Zero(std::string& value) { value.clear(); }
template <class T>
void Zero(std::vector<T>& values) {
  values.clear();
}
template <class T, std::size_t N>
void Zero(std::array<T, N>& values) {
  values.fill(T{});
}

template <class... Results>
void Clear(Results&... results) {
  (Zero(results), ...);
}

// A failed operation leaves every result zero or empty, since callers read results
// whatever the status.
template <class... Results>
int Failed(Results&... results) {
  Clear(results...);
  return 1;
}

template <class Item>
int ListNames(const std::vector<Item>& items, int& count, Names& names) {
  names.clear();
  names.reserve(items.size());
  for (const Item& item : items) names.push_back(item.name);
  count = static_cast<int>(names.size());
  return kSucceeded;
}


template <std::size_t N>
Reals ToReals(const std::array<double, N>& values) {
  return Reals(values.begin(), values.end());
}

// InchesPerUnitLength and KipsPerUnitForce of the model's unit code, the f32 values that
// the host keeps, widened to f64.
struct UnitScale {
  double length;
  double force;
};

UnitScale UnitScaleOf(int units) {
  const UnitBlock block = UnitsForHostCode(units);
  return UnitScale{
      static_cast<double>(InchesPerUnitLength[static_cast<std::size_t>(block.UnitLength)]),
      static_cast<double>(KipsPerUnitForce[static_cast<std::size_t>(block.UnitForce)])};
}

// The host's own values for a new material of a type, given in kip and inch, in the
// model's units.
MaterialProperties BuiltInDefault(int type, int units) {
  // Plain variables, not a structured binding: clang 14, which builds the fuzz targets,
  // cannot capture a binding in a lambda.
  const UnitScale scale = UnitScaleOf(units);
  const double l = scale.length;
  const double f = scale.force;
  const auto stress = [l, f](double kipsPerSquareInch) { return kipsPerSquareInch * (l * l) / f; };
  const auto weight = [l, f](double value) { return value * (l * l * l) / f; };
  const auto mass = [l, f](double value) { return value * (l * l * l * l) / f; };
  MaterialProperties p;
  switch (type) {
    case host_code::kMaterialConcrete:
      p.isotropic = model_file::Isotropic{stress(3604.9965), 0.2, 5.5e-6, stress(1502.0819)};
      p.weightPerVolume = weight(8.6806e-5);
      p.massPerVolume = mass(2.2483e-7);
      p.concreteFc = stress(4);
      break;
    case host_code::kMaterialSteel:
      p.isotropic = model_file::Isotropic{stress(29000), 0.3, 6.5e-6, stress(11153.846)};
      p.weightPerVolume = weight(2.8356e-4);
      p.massPerVolume = mass(7.3446e-7);
      p.steel = model_file::Strengths{stress(50), stress(65), stress(55), stress(71.5)};
      break;
    case host_code::kMaterialRebar:
      p.symmetry = host_code::kSymmetryUniaxial;
      p.uniaxial = model_file::Uniaxial{stress(29000), 6.5e-6};
      p.weightPerVolume = weight(2.8356e-4);
      p.massPerVolume = mass(7.3446e-7);
      p.rebar = model_file::Strengths{stress(60), stress(90), stress(66), stress(99)};
      break;
    default:
      break;
  }
  return p;
}

double Distance(const Point& a, const Point& b) {
  return std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y) +
                   (b.z - a.z) * (b.z - a.z));
}

}  // namespace

std::uint32_t JsonModelHost::NameIndex::Hash(std::string_view name) {
  // FNV-1a, folded: names are short and mostly differ in their last characters.
  std::uint64_t hash = 14695981039346656037ull;
  for (const char c : name) {
    hash ^= static_cast<unsigned char>(c);
    hash *= 1099511628211ull;
  }
  return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

void JsonModelHost::NameIndex::Reserve(std::size_t names) {
  std::size_t size = 16;
  while (size < 2 * names) size *= 2;
  if (size <= slots_.size()) return;
  std::vector<Slot> old = std::move(slots_);
  slots_.assign(size, Slot{});
  used_ = 0;
  for (const Slot& slot : old) {
    if (slot.position != kEmpty) Add(slot.name, slot.position);
  }
}

void JsonModelHost::NameIndex::Grow() { Reserve(slots_.size()); }

void JsonModelHost::NameIndex::Add(std::string_view name, std::size_t position) {
  if (2 * (used_ + 1) > slots_.size()) Grow();
  const std::uint32_t hash = Hash(name);
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
    Slot& slot = slots_[at];
    if (slot.position == kEmpty) {
      slot = Slot{name, hash, static_cast<std::uint32_t>(position)};
      ++used_;
      if (first_.size() <= position) first_.resize(position + 1, 0);
      first_[position] = 1;
      return;
    }
    if (slot.hash == hash && slot.name == name) return;
  }
}

std::size_t JsonModelHost::NameIndex::ThreadPlace() {
  static std::atomic<unsigned> threads{0};
  thread_local const std::size_t place = threads.fetch_add(1, std::memory_order_relaxed) % 2;
  return place;
}

std::size_t JsonModelHost::NameIndex::Find(std::string_view name) const {
  if (slots_.empty()) return kAbsent;
  const std::uint32_t hash = Hash(name);
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
    const Slot& slot = slots_[at];
    if (slot.position == kEmpty) return kAbsent;
    if (slot.hash == hash && slot.name == name) return slot.position;
  }
}

namespace {

template <class Index, class Item>
Index IndexByName(const std::vector<Item>& items) {
  Index index;
  index.Reserve(items.size());
  for (std::size_t i = 0; i < items.size(); ++i) index.Add(items[i].name, i);
  return index;
}

}  // namespace

std::unique_ptr<JsonModelHost> JsonModelHost::FromFile(const std::filesystem::path& file) {
  // The model copies what it keeps, so the file's bytes are needed only while it is read.
  if (const std::unique_ptr<FileView> view = FileView::Open(file)) {
    return FromText(view->text(), file.string(), file.parent_path());
  }
  const std::string text = model_file::ReadFileText(file);
  return FromText(text, file.string(), file.parent_path());
}

std::unique_ptr<JsonModelHost> JsonModelHost::FromText(std::string_view json,
                                                       const std::string& displayName,
                                                       const std::filesystem::path& baseFolder) {
  return std::unique_ptr<JsonModelHost>(
      new JsonModelHost(model_file::ReadModel(json, displayName, baseFolder)));
}

JsonModelHost::JsonModelHost(model_file::Model model)
    : model_(std::move(model)),
      materialIndex_(IndexByName<NameIndex>(model_.materials)),
      frameSectionIndex_(IndexByName<NameIndex>(model_.frameSections)),
      areaSectionIndex_(IndexByName<NameIndex>(model_.areaSections)),
      constraintIndex_(IndexByName<NameIndex>(model_.constraints)),
      functionIndex_(IndexByName<NameIndex>(model_.functions)),
      caseIndex_(IndexByName<NameIndex>(model_.loadCases)),
      patternIndex_(IndexByName<NameIndex>(model_.loadPatterns)) {
  // The indexes of a large model take a second or two, all of it waiting on memory. The
  // points' index is made here, since every question about a point needs it and the
  // connectivity is made from it; on a large model the indexes of frames, areas and groups
  // and then the connectivity are made on a second thread, while the source model reads
  // its materials, sections, nodes and constraints: a question that needs one of them
  // waits for it. The second thread only reads the model, and writes what it makes before
  // telling it made.
  pointIndex_ = IndexByName<NameIndex>(model_.points);
  if (model_.frames.size() + model_.areas.size() < kObjectsForThread) {
    frameIndex_ = IndexByName<NameIndex>(model_.frames);
    areaIndex_ = IndexByName<NameIndex>(model_.areas);
    groupIndex_ = IndexByName<NameIndex>(model_.groups);
    BuildConnectivity();
    return;
  }
  std::promise<void> frames;
  std::promise<void> areas;
  std::promise<void> groups;
  std::promise<void> connectivity;
  frameIndexMade_ = frames.get_future().share();
  areaIndexMade_ = areas.get_future().share();
  groupIndexMade_ = groups.get_future().share();
  connectivityMade_ = connectivity.get_future().share();
  made_ = false;
  const auto make = [this](std::promise<void>& made, auto step) {
    try {
      step();
      made.set_value();
    } catch (...) {
      made.set_exception(std::current_exception());
    }
  };
  try {
    maker_ = std::thread([this, make, frames = std::move(frames), areas = std::move(areas),
                          groups = std::move(groups),
                          connectivity = std::move(connectivity)]() mutable {
      make(frames, [this] { frameIndex_ = IndexByName<NameIndex>(model_.frames); });
      make(areas, [this] { areaIndex_ = IndexByName<NameIndex>(model_.areas); });
      make(groups, [this] { groupIndex_ = IndexByName<NameIndex>(model_.groups); });
      make(connectivity, [this] { BuildConnectivity(); });
      made_.store(true, std::memory_order_release);
    });
  } catch (const std::system_error&) {
    // No thread to be had: the same work here. The promises went with the lambda that
    // was not started, so the futures are cleared and nothing waits for them.
    frameIndexMade_ = {};
    areaIndexMade_ = {};
    groupIndexMade_ = {};
    connectivityMade_ = {};
    frameIndex_ = IndexByName<NameIndex>(model_.frames);
    areaIndex_ = IndexByName<NameIndex>(model_.areas);
    groupIndex_ = IndexByName<NameIndex>(model_.groups);
    BuildConnectivity();
    made_ = true;
  }
}

JsonModelHost::~JsonModelHost() {
  if (maker_.joinable()) maker_.join();
}

void JsonModelHost::AwaitIndex(const NameIndex& index) const {
  if (made_.load(std::memory_order_acquire)) return;
  const std::shared_future<void>* made = nullptr;
  if (&index == &frameIndex_) made = &frameIndexMade_;
  if (&index == &areaIndex_) made = &areaIndexMade_;
  if (&index == &groupIndex_) made = &groupIndexMade_;
  if (made != nullptr && made->valid()) made->get();
}

void JsonModelHost::AwaitConnectivity() const {
  if (made_.load(std::memory_order_acquire)) return;
  if (connectivityMade_.valid()) connectivityMade_.get();
}

void JsonModelHost::RequireObjects() const {
  if (objectsReleased_) {
    throw std::logic_error(
        "the model file's points, frames and areas were asked for after the source model "
        "was read and they were released");
  }
}

template <class Item>
void JsonModelHost::RequireObjectsFor(const std::vector<Item>& items) const {
  // On every look-up: the flag first, the lists only once they are gone.
  if (!objectsReleased_) return;
  const void* list = &items;
  if (list == &model_.points || list == &model_.frames || list == &model_.areas) {
    RequireObjects();
  }
}

void JsonModelHost::SourceModelRead() {
  if (maker_.joinable()) maker_.join();
  objectsReleased_ = true;
  // Swapped with empty ones, so that the memory itself goes back.
  std::vector<model_file::Point>().swap(model_.points);
  std::vector<model_file::Frame>().swap(model_.frames);
  std::vector<model_file::Area>().swap(model_.areas);
  pointIndex_ = NameIndex();
  frameIndex_ = NameIndex();
  areaIndex_ = NameIndex();
  std::vector<std::size_t>().swap(connectionStart_);
  std::vector<Connection>().swap(connections_);
  std::vector<std::uint32_t>().swap(frameEndPoints_);
}

template <class Item>
const Item* JsonModelHost::Find(const std::vector<Item>& items, const NameIndex& index,
                                const std::string& name) const {
  RequireObjectsFor(items);
  AwaitIndex(index);
  if (LiteralLookUps()) {
    for (const Item& item : items) {
      if (item.name == name) return &item;
    }
    return nullptr;
  }
  // The transfer asks for the objects of a list mostly one after the other in the list's
  // order, and for one object several times in a row: the last answer and the entry after
  // it are tried before the table, whose slots lie scattered over memory. Either is taken
  // only when it is the first entry of its name, which is what the table would answer.
  const std::size_t last = index.LastFound();
  if (last < items.size()) {
    if (items[last].name == name && index.IsFirst(last)) return &items[last];
    const std::size_t next = last + 1;
    if (next < items.size() && items[next].name == name && index.IsFirst(next)) {
      index.SetLastFound(next);
      return &items[next];
    }
  }
  const std::size_t found = index.Find(name);
  if (found == NameIndex::kAbsent) return nullptr;
  index.SetLastFound(found);
  return &items[found];
}

template <class Item>
bool JsonModelHost::Select(const std::string& name, ItemType itemType, int objectType,
                           const std::vector<Item>& items, const NameIndex& index,
                           std::vector<const Item*>& selected) const {
  RequireObjectsFor(items);
  selected.clear();
  switch (itemType) {
    case ItemType::Object: {
      const Item* item = Find(items, index, name);
      if (item == nullptr) return false;
      selected.push_back(item);
      return true;
    }
    case ItemType::Group: {
      if (name == kGroupAll) {
        selected.reserve(items.size());
        for (const Item& item : items) selected.push_back(&item);
        return true;
      }
      const model_file::Group* group = Find(model_.groups, groupIndex_, name);
      if (group == nullptr) return false;
      for (const model_file::GroupAssignment& assignment : group->assignments) {
        if (assignment.type != objectType) continue;
        if (const Item* item = Find(items, index, assignment.name)) selected.push_back(item);
      }
      return true;
    }
    case ItemType::SelectedObjects:
      // A model file has no selection.
      return false;
  }
  return false;
}

double JsonModelHost::FrameLength(const Frame& frame) const {
  RequireObjects();
  AwaitConnectivity();
  const auto f = static_cast<std::size_t>(&frame - model_.frames.data());
  const std::uint32_t i = frameEndPoints_[2 * f];
  const std::uint32_t j = frameEndPoints_[2 * f + 1];
  return i != kNoPoint && j != kNoPoint ? Distance(model_.points[i], model_.points[j]) : 0.0;
}

void JsonModelHost::BuildConnectivity() {
  // Every end of every frame, then every corner of every area, in file order: the point
  // of each, then a stable counting sort by point keeps that order within each point.
  std::size_t ends = 2 * model_.frames.size();
  for (const model_file::Area& area : model_.areas) ends += area.points.size();
  std::vector<std::uint32_t> pointOf;
  pointOf.reserve(ends);
  // Frames and areas come mostly in rows, so each end or corner is first looked for one
  // point on from the one before, or where it was; a guess holds only for the first point
  // of the name, which is what the index answers.
  const auto find = [&](const std::string& pointName, std::initializer_list<std::size_t> guesses) {
    for (const std::size_t guess : guesses) {
      if (guess < model_.points.size() && model_.points[guess].name == pointName &&
          pointIndex_.IsFirst(guess)) {
        return static_cast<std::uint32_t>(guess);
      }
    }
    const std::size_t point = pointIndex_.Find(pointName);
    return point == NameIndex::kAbsent ? kNoPoint : static_cast<std::uint32_t>(point);
  };
  const auto oneOn = [](std::uint32_t point) {
    return point == kNoPoint ? NameIndex::kAbsent : std::size_t{point} + 1;
  };
  std::uint32_t lastI = kNoPoint;
  std::uint32_t lastJ = kNoPoint;
  for (const model_file::Frame& frame : model_.frames) {
    const std::uint32_t i = find(frame.pointI, {oneOn(lastI), lastJ});
    const std::uint32_t j = find(frame.pointJ, {oneOn(lastJ), oneOn(i)});
    pointOf.push_back(i);
    pointOf.push_back(j);
    lastI = i;
    lastJ = j;
  }
  frameEndPoints_.assign(pointOf.begin(), pointOf.end());
  std::uint32_t lastCorner = kNoPoint;
  for (const model_file::Area& area : model_.areas) {
    for (const std::string& corner : area.points) {
      lastCorner = find(corner, {oneOn(lastCorner), lastCorner});
      pointOf.push_back(lastCorner);
    }
  }

  connectionStart_.assign(model_.points.size() + 1, 0);
  for (const std::uint32_t point : pointOf) {
    if (point != kNoPoint) ++connectionStart_[point + 1];
  }
  for (std::size_t p = 0; p < model_.points.size(); ++p) {
    connectionStart_[p + 1] += connectionStart_[p];
  }
  connections_.resize(connectionStart_.back());
  std::vector<std::size_t> next(connectionStart_.begin(), connectionStart_.end() - 1);
  std::size_t end = 0;
  const auto place = [&](std::size_t object, int pointNumber, int type) {
    const std::uint32_t point = pointOf[end++];
    if (point == kNoPoint) return;
    connections_[next[point]++] = Connection{static_cast<std::uint32_t>(object),
                                             static_cast<std::int32_t>(pointNumber),
                                             static_cast<std::uint8_t>(type)};
  };
  for (std::size_t f = 0; f < model_.frames.size(); ++f) {
    place(f, 1, host_code::kObjectFrame);
    place(f, 2, host_code::kObjectFrame);
  }
  for (std::size_t a = 0; a < model_.areas.size(); ++a) {
    for (std::size_t k = 0; k < model_.areas[a].points.size(); ++k) {
      place(a, static_cast<int>(k + 1), host_code::kObjectArea);
    }
  }
}

// ---- Units and points ----

int JsonModelHost::GetPresentUnits() { return model_.units; }

int JsonModelHost::GetPointCount() {
  RequireObjects();
  return static_cast<int>(model_.points.size());
}

int JsonModelHost::GetPointNameList(int& count, Names& names) {
  RequireObjects();
  return ListNames(model_.points, count, names);
}

// The file holds global coordinates only, which is what the transfer asks for.
int JsonModelHost::GetPointCoordinates(const std::string& name, double& x, double& y, double& z,
                                       const std::string& /*csys*/) {
  const Point* point = Find(model_.points, pointIndex_, name);
  if (point == nullptr) return Failed(x, y, z);
  x = point->x;
  y = point->y;
  z = point->z;
  return kSucceeded;
}

int JsonModelHost::GetPointRestraints(const std::string& name, DofFlags& restraints) {
  const Point* point = Find(model_.points, pointIndex_, name);
  if (point == nullptr) return Failed(restraints);
  restraints = point->restraints;
  return kSucceeded;
}

int JsonModelHost::GetPointConstraints(const std::string& name, ItemType itemType, int& count,
                                       Names& pointNames, Names& constraintNames) {
  std::vector<const Point*> points;
  if (!Select(name, itemType, host_code::kObjectPoint, model_.points, pointIndex_, points)) {
    return Failed(count, pointNames, constraintNames);
  }
  pointNames.clear();
  constraintNames.clear();
  for (const Point* point : points) {
    for (const std::string& constraint : point->constraints) {
      pointNames.push_back(point->name);
      constraintNames.push_back(constraint);
    }
  }
  count = static_cast<int>(pointNames.size());
  return kSucceeded;
}

int JsonModelHost::GetPointConnectivity(const std::string& name, int& count, Ints& objectTypes,
                                        Names& objectNames, Ints& pointNumbers) {
  RequireObjects();
  AwaitConnectivity();
  const std::size_t point = pointIndex_.Find(name);
  if (point == NameIndex::kAbsent) return Failed(count, objectTypes, objectNames, pointNumbers);
  objectTypes.clear();
  objectNames.clear();
  pointNumbers.clear();
  for (std::size_t c = connectionStart_[point]; c < connectionStart_[point + 1]; ++c) {
    const Connection& connection = connections_[c];
    objectTypes.push_back(connection.type);
    objectNames.push_back(connection.type == host_code::kObjectFrame
                              ? model_.frames[connection.object].name
                              : model_.areas[connection.object].name);
    pointNumbers.push_back(connection.pointNumber);
  }
  count = static_cast<int>(objectTypes.size());
  return kSucceeded;
}

// ---- Constraints ----

int JsonModelHost::GetConstraintNameList(int& count, Names& names) {
  return ListNames(model_.constraints, count, names);
}

int JsonModelHost::GetConstraintType(const std::string& name, int& type) {
  const auto* constraint = Find(model_.constraints, constraintIndex_, name);
  if (constraint == nullptr) return Failed(type);
  type = constraint->type;
  return kSucceeded;
}

int JsonModelHost::GetDiaphragmData(const std::string& name, int& axis, std::string& csys) {
  const auto* constraint = Find(model_.constraints, constraintIndex_, name);
  if (constraint == nullptr || constraint->type != host_code::kConstraintDiaphragm) {
    return Failed(axis, csys);
  }
  axis = constraint->axis;
  csys = constraint->csys;
  return kSucceeded;
}

// ---- Materials ----

int JsonModelHost::GetMaterialNameList(int typeFilter, int& count, Names& names) {
  names.clear();
  for (const Material& material : model_.materials) {
    if (typeFilter == 0 || material.type == typeFilter) names.push_back(material.name);
  }
  count = static_cast<int>(names.size());
  return kSucceeded;
}

int JsonModelHost::AddDefaultMaterial(const std::string& name, int type, int /*region*/,
                                      const std::string& /*standard*/, const std::string& /*grade*/,
                                      std::string& createdName) {
  const std::optional<MaterialProperties>* fromFile = nullptr;
  switch (type) {
    case host_code::kMaterialConcrete:
      fromFile = &model_.defaultMaterials.concrete;
      break;
    case host_code::kMaterialSteel:
      fromFile = &model_.defaultMaterials.steel;
      break;
    case host_code::kMaterialRebar:
      fromFile = &model_.defaultMaterials.rebar;
      break;
    default:
      return Failed(createdName);
  }
  std::string unique = name;
  for (int suffix = 1; materialIndex_.Contains(unique); ++suffix) {
    unique = name + std::to_string(suffix);
  }
  Material material;
  material.name = unique;
  material.type = type;
  material.properties = fromFile->has_value() ? **fromFile : BuiltInDefault(type, model_.units);
  model_.materials.push_back(std::move(material));
  // Growing the list may have moved the names that the index views.
  materialIndex_ = IndexByName<NameIndex>(model_.materials);
  createdName = unique;
  return kSucceeded;
}

int JsonModelHost::GetMaterialType(const std::string& name, int& type, int& symmetry) {
  const Material* material = Find(model_.materials, materialIndex_, name);
  if (material == nullptr) return Failed(type, symmetry);
  type = material->type;
  symmetry = material->properties.symmetry;
  return kSucceeded;
}

int JsonModelHost::GetMaterialWeightAndMass(const std::string& name, double& weightPerVolume,
                                            double& massPerVolume) {
  const Material* material = Find(model_.materials, materialIndex_, name);
  if (material == nullptr) return Failed(weightPerVolume, massPerVolume);
  weightPerVolume = material->properties.weightPerVolume;
  massPerVolume = material->properties.massPerVolume;
  return kSucceeded;
}

int JsonModelHost::GetIsotropicData(const std::string& name, double& e, double& u, double& a,
                                    double& g) {
  const Material* material = Find(model_.materials, materialIndex_, name);
  if (material == nullptr || !material->properties.isotropic) return Failed(e, u, a, g);
  const model_file::Isotropic& set = *material->properties.isotropic;
  e = set.e;
  u = set.u;
  a = set.a;
  g = set.g;
  return kSucceeded;
}

int JsonModelHost::GetOrthotropicData(const std::string& name, Reals& e, Reals& u, Reals& a,
                                      Reals& g) {
  const Material* material = Find(model_.materials, materialIndex_, name);
  if (material == nullptr || !material->properties.orthotropic) return Failed(e, u, a, g);
  const model_file::Orthotropic& set = *material->properties.orthotropic;
  e = ToReals(set.e);
  u = ToReals(set.u);
  a = ToReals(set.a);
  g = ToReals(set.g);
  return kSucceeded;
}

int JsonModelHost::GetAnisotropicData(const std::string& name, Reals& e, Reals& u, Reals& a,
                                      Reals& g) {
  const Material* material = Find(model_.materials, materialIndex_, name);
  if (material == nullptr || !material->properties.anisotropic) return Failed(e, u, a, g);
  const model_file::Anisotropic& set = *material->properties.anisotropic;
  e = ToReals(set.e);
  u = ToReals(set.u);
  a = ToReals(set.a);
  g = ToReals(set.g);
  return kSucceeded;
}

int JsonModelHost::GetUniaxialData(const std::string& name, double& e, double& a) {
  const Material* material = Find(model_.materials, materialIndex_, name);
  if (material == nullptr || !material->properties.uniaxial) return Failed(e, a);
  e = material->properties.uniaxial->e;
  a = material->properties.uniaxial->a;
  return kSucceeded;
}

int JsonModelHost::GetSteelData(const std::string& name, double& fy, double& fu, double& efy,
                                double& efu) {
  const Material* material = Find(model_.materials, materialIndex_, name);
  if (material == nullptr || !material->properties.steel) return Failed(fy, fu, efy, efu);
  const model_file::Strengths& set = *material->properties.steel;
  fy = set.fy;
  fu = set.fu;
  efy = set.efy;
  efu = set.efu;
  return kSucceeded;
}

int JsonModelHost::GetRebarData(const std::string& name, double& fy, double& fu, double& efy,
                                double& efu) {
  const Material* material = Find(model_.materials, materialIndex_, name);
  if (material == nullptr || !material->properties.rebar) return Failed(fy, fu, efy, efu);
  const model_file::Strengths& set = *material->properties.rebar;
  fy = set.fy;
  fu = set.fu;
  efy = set.efy;
  efu = set.efu;
  return kSucceeded;
}

int JsonModelHost::GetConcreteData(const std::string& name, double& fc) {
  const Material* material = Find(model_.materials, materialIndex_, name);
  if (material == nullptr || !material->properties.concreteFc) return Failed(fc);
  fc = *material->properties.concreteFc;
  return kSucceeded;
}

int JsonModelHost::GetStressStrainCurve(const std::string& name, int& count, Ints& pointIds,
                                        Reals& strains, Reals& stresses) {
  const Material* material = Find(model_.materials, materialIndex_, name);
  if (material == nullptr || !material->properties.stressStrain) {
    return Failed(count, pointIds, strains, stresses);
  }
  pointIds.clear();
  strains.clear();
  stresses.clear();
  for (const model_file::CurvePoint& point : *material->properties.stressStrain) {
    pointIds.push_back(static_cast<int>(pointIds.size()));
    strains.push_back(point.strain);
    stresses.push_back(point.stress);
  }
  count = static_cast<int>(pointIds.size());
  return kSucceeded;
}

// ---- Frame sections ----

int JsonModelHost::GetFrameSectionNameList(int& count, Names& names) {
  return ListNames(model_.frameSections, count, names);
}

int JsonModelHost::GetFrameSectionProperties(const std::string& name, double& area, double& as2,
                                             double& as3, double& torsion, double& i22, double& i33,
                                             double& s22, double& s33, double& z22, double& z33,
                                             double& r22, double& r33) {
  const auto* section = Find(model_.frameSections, frameSectionIndex_, name);
  if (section == nullptr) {
    return Failed(area, as2, as3, torsion, i22, i33, s22, s33, z22, z33, r22, r33);
  }
  const std::array<double*, 12> results = {&area, &as2, &as3, &torsion, &i22, &i33,
                                           &s22,  &s33, &z22, &z33,     &r22, &r33};
  for (std::size_t k = 0; k < results.size(); ++k) *results[k] = section->properties[k];
  return kSucceeded;
}

int JsonModelHost::GetFrameSectionType(const std::string& name, int& type) {
  const auto* section = Find(model_.frameSections, frameSectionIndex_, name);
  if (section == nullptr) return Failed(type);
  type = section->type;
  return kSucceeded;
}

int JsonModelHost::GetNonprismaticSection(const std::string& name, int& count, Names& startSections,
                                          Names& endSections) {
  const auto* section = Find(model_.frameSections, frameSectionIndex_, name);
  if (section == nullptr || !section->segments) return Failed(count, startSections, endSections);
  startSections.clear();
  endSections.clear();
  for (const model_file::NonprismaticSegment& segment : *section->segments) {
    startSections.push_back(segment.start);
    endSections.push_back(segment.end);
  }
  count = static_cast<int>(startSections.size());
  return kSucceeded;
}

int JsonModelHost::GetFrameSectionMaterial(const std::string& name, std::string& material) {
  const auto* section = Find(model_.frameSections, frameSectionIndex_, name);
  if (section == nullptr || section->material.empty()) return Failed(material);
  material = section->material;
  return kSucceeded;
}

int JsonModelHost::GetRebarDesignType(const std::string& sectionName, int& designType) {
  const auto* section = Find(model_.frameSections, frameSectionIndex_, sectionName);
  if (section == nullptr || !section->rebarDesign) return Failed(designType);
  designType = *section->rebarDesign;
  return kSucceeded;
}

// ---- Area sections ----

int JsonModelHost::GetAreaSectionNameList(int& count, Names& names) {
  return ListNames(model_.areaSections, count, names);
}

int JsonModelHost::GetAreaSectionType(const std::string& name, int& type) {
  const auto* section = Find(model_.areaSections, areaSectionIndex_, name);
  if (section == nullptr) return Failed(type);
  type = section->type;
  return kSucceeded;
}

int JsonModelHost::GetShellSection(const std::string& name, int& shellType, bool& drillingDof,
                                   std::string& material, double& materialAngle,
                                   double& membraneThickness, double& bendingThickness) {
  const auto* section = Find(model_.areaSections, areaSectionIndex_, name);
  if (section == nullptr) {
    return Failed(shellType, drillingDof, material, materialAngle, membraneThickness,
                  bendingThickness);
  }
  constexpr int kLayeredShell = 6;
  const bool layered = section->shellType == kLayeredShell;
  shellType = section->shellType;
  drillingDof = section->drillingDof;
  // A layered shell has its materials and thicknesses in its layers only.
  material = layered ? std::string() : section->material;
  materialAngle = section->materialAngle;
  membraneThickness = layered ? 0.0 : section->membraneThickness;
  bendingThickness = layered ? 0.0 : section->bendingThickness;
  return kSucceeded;
}

int JsonModelHost::GetShellLayers(const std::string& name, int& count, Names& layerNames,
                                  Reals& distances, Reals& thicknesses, Ints& types,
                                  Ints& integrationPoints, Names& materials, Reals& materialAngles,
                                  Ints& s11Types, Ints& s22Types, Ints& s12Types) {
  const auto* section = Find(model_.areaSections, areaSectionIndex_, name);
  if (section == nullptr) {
    return Failed(count, layerNames, distances, thicknesses, types, integrationPoints, materials,
                  materialAngles, s11Types, s22Types, s12Types);
  }
  Clear(layerNames, distances, thicknesses, types, integrationPoints);
  Clear(materials, materialAngles, s11Types, s22Types, s12Types);
  for (const model_file::ShellLayer& layer : section->layers) {
    layerNames.push_back(layer.name);
    distances.push_back(layer.distance);
    thicknesses.push_back(layer.thickness);
    types.push_back(layer.type);
    integrationPoints.push_back(layer.integrationPoints);
    materials.push_back(layer.material);
    materialAngles.push_back(layer.materialAngle);
    s11Types.push_back(layer.s11);
    s22Types.push_back(layer.s22);
    s12Types.push_back(layer.s12);
  }
  count = static_cast<int>(layerNames.size());
  return kSucceeded;
}

// ---- Frames ----

int JsonModelHost::GetFrameNameList(int& count, Names& names) {
  RequireObjects();
  return ListNames(model_.frames, count, names);
}

int JsonModelHost::GetFrameSection(const std::string& name, std::string& section,
                                   std::string& autoSelect) {
  const Frame* frame = Find(model_.frames, frameIndex_, name);
  if (frame == nullptr) return Failed(section, autoSelect);
  section = frame->section;
  autoSelect.clear();  // the file has no automatic section lists
  return kSucceeded;
}

int JsonModelHost::GetFramePoints(const std::string& name, std::string& pointI,
                                  std::string& pointJ) {
  const Frame* frame = Find(model_.frames, frameIndex_, name);
  if (frame == nullptr) return Failed(pointI, pointJ);
  pointI = frame->pointI;
  pointJ = frame->pointJ;
  return kSucceeded;
}

int JsonModelHost::GetFrameLocalAngle(const std::string& name, double& angle, bool& advanced) {
  const Frame* frame = Find(model_.frames, frameIndex_, name);
  if (frame == nullptr) return Failed(angle, advanced);
  angle = frame->angle;
  advanced = false;  // the file has no advanced local axes
  return kSucceeded;
}

int JsonModelHost::GetFrameReleases(const std::string& name, DofFlags& releaseI, DofFlags& releaseJ,
                                    DofValues& startValues, DofValues& endValues) {
  const Frame* frame = Find(model_.frames, frameIndex_, name);
  if (frame == nullptr) return Failed(releaseI, releaseJ, startValues, endValues);
  releaseI = frame->releaseI;
  releaseJ = frame->releaseJ;
  Zero(startValues);
  Zero(endValues);
  return kSucceeded;
}

int JsonModelHost::GetFrameHinges(const std::string& name, int& count, Ints& a1, Ints& a2,
                                  Ints& dofs, Reals& a4, Reals& a5, Reals& relativeDistances) {
  const Frame* frame = Find(model_.frames, frameIndex_, name);
  if (frame == nullptr) return Failed(count, a1, a2, dofs, a4, a5, relativeDistances);
  const std::size_t n = frame->hinges.size();
  a1.assign(n, 0);
  a2.assign(n, 0);
  a4.assign(n, 0.0);
  a5.assign(n, 0.0);
  dofs.clear();
  relativeDistances.clear();
  for (const model_file::Hinge& hinge : frame->hinges) {
    dofs.push_back(hinge.dof);
    relativeDistances.push_back(hinge.relativeDistance);
  }
  count = static_cast<int>(n);
  return kSucceeded;
}

// ---- Areas ----

int JsonModelHost::GetAreaNameList(int& count, Names& names) {
  RequireObjects();
  return ListNames(model_.areas, count, names);
}

int JsonModelHost::GetAreaSection(const std::string& name, std::string& section) {
  const Area* area = Find(model_.areas, areaIndex_, name);
  if (area == nullptr) return Failed(section);
  section = area->section;
  return kSucceeded;
}

int JsonModelHost::GetAreaPoints(const std::string& name, int& count, Names& points) {
  const Area* area = Find(model_.areas, areaIndex_, name);
  if (area == nullptr) return Failed(count, points);
  points = area->points;
  count = static_cast<int>(points.size());
  return kSucceeded;
}

// ---- Load patterns and loads ----

int JsonModelHost::GetLoadPatternNames(int& count, Names& names) {
  return ListNames(model_.loadPatterns, count, names);
}

int JsonModelHost::GetLoadPatternType(const std::string& name, int& type) {
  const auto* pattern = Find(model_.loadPatterns, patternIndex_, name);
  if (pattern == nullptr) return Failed(type);
  type = pattern->type;
  return kSucceeded;
}

int JsonModelHost::GetSelfWeightMultiplier(const std::string& name, double& multiplier) {
  const auto* pattern = Find(model_.loadPatterns, patternIndex_, name);
  if (pattern == nullptr) return Failed(multiplier);
  multiplier = pattern->selfWeightMultiplier;
  return kSucceeded;
}

int JsonModelHost::GetPointForces(const std::string& name, ItemType itemType, int& count,
                                  Names& pointNames, Names& loadPatterns, Ints& lcSteps,
                                  Names& csys, Reals& f1, Reals& f2, Reals& f3, Reals& m1,
                                  Reals& m2, Reals& m3) {
  std::vector<const Point*> points;
  if (!Select(name, itemType, host_code::kObjectPoint, model_.points, pointIndex_, points)) {
    return Failed(count, pointNames, loadPatterns, lcSteps, csys, f1, f2, f3, m1, m2, m3);
  }
  Clear(pointNames, loadPatterns, lcSteps, csys);
  std::array<Reals*, 6> values = {&f1, &f2, &f3, &m1, &m2, &m3};
  for (Reals* component : values) component->clear();
  for (const Point* point : points) {
    for (const model_file::PointForce& force : point->forces) {
      pointNames.push_back(point->name);
      loadPatterns.push_back(force.pattern);
      lcSteps.push_back(force.step);
      csys.push_back(force.csys);
      for (std::size_t k = 0; k < values.size(); ++k) values[k]->push_back(force.values[k]);
    }
  }
  count = static_cast<int>(pointNames.size());
  return kSucceeded;
}

int JsonModelHost::GetFrameDistributedLoads(const std::string& name, ItemType itemType, int& count,
                                            Names& frameNames, Names& loadPatterns, Ints& myTypes,
                                            Names& csys, Ints& dirs, Reals& rd1, Reals& rd2,
                                            Reals& dist1, Reals& dist2, Reals& val1, Reals& val2) {
  std::vector<const Frame*> frames;
  if (!Select(name, itemType, host_code::kObjectFrame, model_.frames, frameIndex_, frames)) {
    return Failed(count, frameNames, loadPatterns, myTypes, csys, dirs, rd1, rd2, dist1, dist2,
                  val1, val2);
  }
  Clear(frameNames, loadPatterns, myTypes, csys, dirs, rd1);
  Clear(rd2, dist1, dist2, val1, val2);
  for (const Frame* frame : frames) {
    const double length = frame->distributedLoads.empty() ? 0.0 : FrameLength(*frame);
    for (const model_file::DistributedLoad& load : frame->distributedLoads) {
      frameNames.push_back(frame->name);
      loadPatterns.push_back(load.pattern);
      myTypes.push_back(load.type);
      csys.push_back(load.csys);
      dirs.push_back(load.dir);
      rd1.push_back(load.rd1);
      rd2.push_back(load.rd2);
      dist1.push_back(load.rd1 * length);
      dist2.push_back(load.rd2 * length);
      val1.push_back(load.val1);
      val2.push_back(load.val2);
    }
  }
  count = static_cast<int>(frameNames.size());
  return kSucceeded;
}

int JsonModelHost::GetFramePointLoads(const std::string& name, ItemType itemType, int& count,
                                      Names& frameNames, Names& loadPatterns, Ints& myTypes,
                                      Names& csys, Ints& dirs, Reals& relDist, Reals& dist,
                                      Reals& val) {
  std::vector<const Frame*> frames;
  if (!Select(name, itemType, host_code::kObjectFrame, model_.frames, frameIndex_, frames)) {
    return Failed(count, frameNames, loadPatterns, myTypes, csys, dirs, relDist, dist, val);
  }
  Clear(frameNames, loadPatterns, myTypes, csys, dirs);
  Clear(relDist, dist, val);
  for (const Frame* frame : frames) {
    const double length = frame->pointLoads.empty() ? 0.0 : FrameLength(*frame);
    for (const model_file::FramePointLoad& load : frame->pointLoads) {
      frameNames.push_back(frame->name);
      loadPatterns.push_back(load.pattern);
      myTypes.push_back(load.type);
      csys.push_back(load.csys);
      dirs.push_back(load.dir);
      relDist.push_back(load.rd);
      dist.push_back(load.rd * length);
      val.push_back(load.val);
    }
  }
  count = static_cast<int>(frameNames.size());
  return kSucceeded;
}

int JsonModelHost::GetAreaUniformLoads(const std::string& name, ItemType itemType, int& count,
                                       Names& areaNames, Names& loadPatterns, Names& csys,
                                       Ints& dirs, Reals& values) {
  std::vector<const Area*> areas;
  if (!Select(name, itemType, host_code::kObjectArea, model_.areas, areaIndex_, areas)) {
    return Failed(count, areaNames, loadPatterns, csys, dirs, values);
  }
  Clear(areaNames, loadPatterns, csys, dirs, values);
  for (const Area* area : areas) {
    for (const model_file::AreaLoad& load : area->uniformLoads) {
      areaNames.push_back(area->name);
      loadPatterns.push_back(load.pattern);
      csys.push_back(load.csys);
      dirs.push_back(load.dir);
      values.push_back(load.value);
    }
  }
  count = static_cast<int>(areaNames.size());
  return kSucceeded;
}

int JsonModelHost::GetAreaUniformToFrameLoads(const std::string& name, ItemType itemType,
                                              int& count, Names& areaNames, Names& loadPatterns,
                                              Names& csys, Ints& dirs, Reals& values,
                                              Ints& distTypes) {
  std::vector<const Area*> areas;
  if (!Select(name, itemType, host_code::kObjectArea, model_.areas, areaIndex_, areas)) {
    return Failed(count, areaNames, loadPatterns, csys, dirs, values, distTypes);
  }
  Clear(areaNames, loadPatterns, csys, dirs, values, distTypes);
  for (const Area* area : areas) {
    for (const model_file::AreaLoad& load : area->uniformToFrameLoads) {
      areaNames.push_back(area->name);
      loadPatterns.push_back(load.pattern);
      csys.push_back(load.csys);
      dirs.push_back(load.dir);
      values.push_back(load.value);
      distTypes.push_back(load.distType);
    }
  }
  count = static_cast<int>(areaNames.size());
  return kSucceeded;
}

// ---- Mass ----

int JsonModelHost::GetMassSource(int& option, int& count, Names& loadPatterns, Reals& factors) {
  option = model_.massSource.option;
  Clear(loadPatterns, factors);
  for (const model_file::MassSourceLoad& load : model_.massSource.loads) {
    loadPatterns.push_back(load.pattern);
    factors.push_back(load.factor);
  }
  count = static_cast<int>(loadPatterns.size());
  return kSucceeded;
}

int JsonModelHost::GetPointMass(const std::string& name, DofValues& mass) {
  const Point* point = Find(model_.points, pointIndex_, name);
  if (point == nullptr) return Failed(mass);
  mass = point->mass;
  return kSucceeded;
}

int JsonModelHost::GetFrameMass(const std::string& name, double& massPerLength) {
  const Frame* frame = Find(model_.frames, frameIndex_, name);
  if (frame == nullptr) return Failed(massPerLength);
  massPerLength = frame->massPerLength;
  return kSucceeded;
}

int JsonModelHost::GetAreaMass(const std::string& name, double& massPerArea) {
  const Area* area = Find(model_.areas, areaIndex_, name);
  if (area == nullptr) return Failed(massPerArea);
  massPerArea = area->massPerArea;
  return kSucceeded;
}

// ---- Time-history functions ----
// The operation of a kind answers only for a function of that kind that holds its data.

int JsonModelHost::GetFunctionNames(int& count, Names& names) {
  return ListNames(model_.functions, count, names);
}

int JsonModelHost::GetFunctionType(const std::string& name, int& family, int& kind) {
  const Function* function = Find(model_.functions, functionIndex_, name);
  if (function == nullptr) return Failed(family, kind);
  family = function->family;
  kind = function->kind;
  return kSucceeded;
}

int JsonModelHost::GetFunctionFromFile(const std::string& name, std::string& fileName,
                                       int& headerLines, int& prefixChars, int& pointsPerLine,
                                       int& valueType, bool& freeFormat, int& fieldWidth,
                                       double& dt) {
  const Function* function = Find(model_.functions, functionIndex_, name);
  if (function == nullptr || function->kind != kFromFile || !function->file) {
    return Failed(fileName, headerLines, prefixChars, pointsPerLine, valueType, freeFormat,
                  fieldWidth, dt);
  }
  const model_file::FunctionFile& file = *function->file;
  fileName = file.path;
  headerLines = file.headerLines;
  prefixChars = file.prefixChars;
  pointsPerLine = file.pointsPerLine;
  valueType = file.valueType;
  freeFormat = file.freeFormat;
  fieldWidth = file.fieldWidth;
  dt = file.dt;
  return kSucceeded;
}

int JsonModelHost::GetFunctionPoints(const std::string& name, int& count, Reals& times,
                                     Reals& values) {
  const Function* function = Find(model_.functions, functionIndex_, name);
  if (function == nullptr || function->kind != kUser || !function->points) {
    return Failed(count, times, values);
  }
  Clear(times, values);
  for (const model_file::FunctionPoint& point : *function->points) {
    times.push_back(point.time);
    values.push_back(point.value);
  }
  count = static_cast<int>(times.size());
  return kSucceeded;
}

int JsonModelHost::GetFunctionPeriodicPoints(const std::string& name, int& cycles, int& count,
                                             Reals& times, Reals& values) {
  const Function* function = Find(model_.functions, functionIndex_, name);
  if (function == nullptr || function->kind != kUserPeriodic || !function->cycles ||
      !function->points) {
    return Failed(cycles, count, times, values);
  }
  Clear(times, values);
  for (const model_file::FunctionPoint& point : *function->points) {
    times.push_back(point.time);
    values.push_back(point.value);
  }
  cycles = *function->cycles;
  count = static_cast<int>(times.size());
  return kSucceeded;
}

int JsonModelHost::GetFunctionSine(const std::string& name, double& period, int& stepsPerCycle,
                                   int& cycles, double& amplitude) {
  return GetWaveFunction(name, kSine, period, stepsPerCycle, cycles, amplitude);
}

int JsonModelHost::GetFunctionCosine(const std::string& name, double& period, int& stepsPerCycle,
                                     int& cycles, double& amplitude) {
  return GetWaveFunction(name, kCosine, period, stepsPerCycle, cycles, amplitude);
}

int JsonModelHost::GetWaveFunction(const std::string& name, int kind, double& period,
                                   int& stepsPerCycle, int& cycles, double& amplitude) const {
  const Function* function = Find(model_.functions, functionIndex_, name);
  if (function == nullptr || function->kind != kind || !function->period ||
      !function->stepsPerCycle || !function->cycles || !function->amplitude) {
    return Failed(period, stepsPerCycle, cycles, amplitude);
  }
  period = *function->period;
  stepsPerCycle = *function->stepsPerCycle;
  cycles = *function->cycles;
  amplitude = *function->amplitude;
  return kSucceeded;
}

int JsonModelHost::GetFunctionRamp(const std::string& name, double& time, double& amplitude,
                                   double& maxTime) {
  const Function* function = Find(model_.functions, functionIndex_, name);
  if (function == nullptr || function->kind != kRamp || !function->time || !function->amplitude ||
      !function->maxTime) {
    return Failed(time, amplitude, maxTime);
  }
  time = *function->time;
  amplitude = *function->amplitude;
  maxTime = *function->maxTime;
  return kSucceeded;
}

int JsonModelHost::GetFunctionSawtooth(const std::string& name, double& period, double& rampTime,
                                       int& cycles, double& amplitude) {
  const Function* function = Find(model_.functions, functionIndex_, name);
  if (function == nullptr || function->kind != kSawtooth || !function->period ||
      !function->rampTime || !function->cycles || !function->amplitude) {
    return Failed(period, rampTime, cycles, amplitude);
  }
  period = *function->period;
  rampTime = *function->rampTime;
  cycles = *function->cycles;
  amplitude = *function->amplitude;
  return kSucceeded;
}

int JsonModelHost::GetFunctionTriangular(const std::string& name, double& period, int& cycles,
                                         double& amplitude) {
  const Function* function = Find(model_.functions, functionIndex_, name);
  if (function == nullptr || function->kind != kTriangular || !function->period ||
      !function->cycles || !function->amplitude) {
    return Failed(period, cycles, amplitude);
  }
  period = *function->period;
  cycles = *function->cycles;
  amplitude = *function->amplitude;
  return kSucceeded;
}

// ---- Groups ----

int JsonModelHost::GetGroupNames(int& count, Names& names) {
  return ListNames(model_.groups, count, names);
}

int JsonModelHost::GetGroupAssignments(const std::string& name, int& count, Ints& objectTypes,
                                       Names& objectNames) {
  const model_file::Group* group = Find(model_.groups, groupIndex_, name);
  if (group == nullptr) return Failed(count, objectTypes, objectNames);
  Clear(objectTypes, objectNames);
  for (const model_file::GroupAssignment& assignment : group->assignments) {
    objectTypes.push_back(assignment.type);
    objectNames.push_back(assignment.name);
  }
  count = static_cast<int>(objectTypes.size());
  return kSucceeded;
}

// ---- Load cases ----

int JsonModelHost::GetCaseNames(int& count, Names& names) {
  return ListNames(model_.loadCases, count, names);
}

int JsonModelHost::GetCaseType(const std::string& name, int& type, int& subType, int& designType,
                               int& designOption, int& autoCreated) {
  const auto* loadCase = Find(model_.loadCases, caseIndex_, name);
  if (loadCase == nullptr) return Failed(type, subType, designType, designOption, autoCreated);
  type = loadCase->type;
  // The file keeps only the case type; the other codes are not read by the transfer.
  Clear(subType, designType, designOption, autoCreated);
  return kSucceeded;
}

int JsonModelHost::GetStaticLoadApplication(const std::string& name, int& loadControl,
                                            int& displacementType, double& displacement,
                                            int& monitoredDof, std::string& monitoredPoint) {
  const auto* loadCase = Find(model_.loadCases, caseIndex_, name);
  if (loadCase == nullptr) {
    return Failed(loadControl, displacementType, displacement, monitoredDof, monitoredPoint);
  }
  const model_file::LoadApplication& application = loadCase->loadApplication;
  loadControl = application.control;
  displacementType = application.displacementType;
  displacement = application.displacement;
  monitoredDof = application.monitoredDof;
  monitoredPoint = application.monitoredPoint;
  return kSucceeded;
}

int JsonModelHost::GetStaticLoads(const std::string& name, int& count, Names& loadTypes,
                                  Names& loadNames, Reals& scaleFactors) {
  const auto* loadCase = Find(model_.loadCases, caseIndex_, name);
  if (loadCase == nullptr) return Failed(count, loadTypes, loadNames, scaleFactors);
  Clear(loadTypes, loadNames, scaleFactors);
  for (const model_file::CaseLoad& load : loadCase->loads) {
    loadTypes.push_back(load.type);
    loadNames.push_back(load.name);
    scaleFactors.push_back(load.factor);
  }
  count = static_cast<int>(loadTypes.size());
  return kSucceeded;
}

int JsonModelHost::GetHistoryLoads(const std::string& name, int& count, Names& loadTypes,
                                   Names& loadNames, Names& functions, Reals& scaleFactors,
                                   Reals& timeFactors) {
  const auto* loadCase = Find(model_.loadCases, caseIndex_, name);
  if (loadCase == nullptr) {
    return Failed(count, loadTypes, loadNames, functions, scaleFactors, timeFactors);
  }
  Clear(loadTypes, loadNames, functions, scaleFactors, timeFactors);
  for (const model_file::CaseLoad& load : loadCase->loads) {
    loadTypes.push_back(load.type);
    loadNames.push_back(load.name);
    functions.push_back(load.function);
    scaleFactors.push_back(load.factor);
    timeFactors.push_back(load.timeFactor);
  }
  count = static_cast<int>(loadTypes.size());
  return kSucceeded;
}

int JsonModelHost::GetHistoryTimeStep(const std::string& name, int& steps, double& stepSize) {
  const auto* loadCase = Find(model_.loadCases, caseIndex_, name);
  if (loadCase == nullptr || !loadCase->timeStep) return Failed(steps, stepSize);
  steps = loadCase->timeStep->steps;
  stepSize = loadCase->timeStep->size;
  return kSucceeded;
}

int JsonModelHost::GetHistoryDamping(const std::string& name, int& type, double& massCoefficient,
                                     double& stiffnessCoefficient, double& value1, double& value2,
                                     double& ratio1, double& ratio2) {
  const auto* loadCase = Find(model_.loadCases, caseIndex_, name);
  if (loadCase == nullptr || !loadCase->damping) {
    return Failed(type, massCoefficient, stiffnessCoefficient, value1, value2, ratio1, ratio2);
  }
  const model_file::Damping& damping = *loadCase->damping;
  type = damping.type;
  massCoefficient = damping.massCoefficient;
  stiffnessCoefficient = damping.stiffnessCoefficient;
  value1 = damping.values[0];
  value2 = damping.values[1];
  ratio1 = damping.ratios[0];
  ratio2 = damping.ratios[1];
  return kSucceeded;
}

}  // namespace vtt
