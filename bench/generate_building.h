// A regular building as a model file, of any size, for measuring a transfer.
//
// The building is a grid of joints, bays_x by bays_y bays in plan, on storeys + 1 levels:
// concrete columns and beams, a steel roof, steel braces in some facade bays, layered and
// thin walls in the middle bay of each facade, a slab in every bay of every floor (the
// bays on the plan's diagonal as two triangles), one rigid diaphragm per floor and fixed
// supports at the base. It carries every kind of load the model file has (nodal forces,
// frame distributed and point loads, uniform area loads and loads spread to frames, self
// weight) in six patterns, additional point, frame and area masses, a mass source of
// elements and loads, three time-history functions (user points, sine, ramp), gravity,
// pushover and history cases, and one group per storey.
//
// The model is the same for the same options: the seed chooses only some load and mass
// values and the ground motion record, never the geometry. Frame loads are drawn from a
// few fixed values, so that frames of one element group share their load subgroups however
// large the building is.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace vtt::generate {

// What the building holds besides its grid of joints, columns and beams; everything by
// default. Leaving a part out leaves out what names it too (a group lists only what the
// model holds, the history cases go with the functions), so every mix is a valid model.
struct BuildingFeatures {
  bool walls = true;
  bool slabs = true;
  bool triangles = true;  // off: the diagonal bays are slabs of four corners like the rest
  bool braces = true;
  bool hinges = true;
  bool releases = true;
  bool diaphragms = true;
  bool point_forces = true;
  bool frame_distributed_loads = true;
  bool frame_point_loads = true;
  bool area_uniform_loads = true;
  bool area_to_frame_loads = true;
  bool masses = true;  // the additional point, frame and area masses
  bool mass_source = true;
  bool functions = true;
  bool cases = true;  // off: an empty list of load cases
  bool groups = true;
};

struct BuildingOptions {
  int storeys = 3;
  int bays_x = 3;
  int bays_y = 2;
  std::uint64_t seed = 1;
  BuildingFeatures features;
};

// What a building of these options holds, as the model file lists it.
struct BuildingCounts {
  std::int64_t points = 0;
  std::int64_t frames = 0;      // columns, beams and braces
  std::int64_t areas = 0;       // slabs, triangles and walls
  std::int64_t triangles = 0;
  std::int64_t walls = 0;
};

// Storeys and bays of a building of about `joints` joints: a square plan whose side, in
// grid lines, is about twice the number of levels.
BuildingOptions OptionsForJoints(std::int64_t joints, std::uint64_t seed = 1);

// A small building of a random mix of parts, all chosen by `seed`: 1 to 4 storeys, 1 to 3
// bays each way, each part of BuildingFeatures in or out.
BuildingOptions RandomBuildingOptions(std::uint64_t seed);

// Throws std::invalid_argument for fewer than one storey or one bay in either direction.
BuildingCounts CountBuilding(const BuildingOptions& options);

// Writes the model text piece by piece; each piece is handed to `sink` once, in order.
// Throws std::invalid_argument as CountBuilding.
void WriteBuilding(const BuildingOptions& options,
                   const std::function<void(std::string_view piece)>& sink);

// The whole model text at once.
std::string BuildingText(const BuildingOptions& options);

}  // namespace vtt::generate
