// A picture of a structure: an SVG drawing of its elements, coloured by element group, with
// the supports, the diaphragm nodes and the drift pair marked, in an isometric view, in plan
// and in the two elevations. The drawing is written as it is made, one path per group (split
// into pieces of bounded length), so a structure of half a million nodes stays a small and
// quick file: nothing is thinned and no element gets an object of its own.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "store/structure_reader.h"

namespace vtt {

enum class ViewKind { Iso, Plan, XZ, YZ };

// "iso", "plan", "xz", "yz"; none for any other word.
std::optional<ViewKind> ParseViewKind(std::string_view word);
std::string_view ViewKindName(ViewKind kind);

// What the picture shows, taken from a structure as read back.
struct StructureGeometry {
  struct Node {
    double x = 0, y = 0, z = 0;
    std::uint8_t support = 0;    // the node record's support kind; 0 free
    std::int32_t diaphragm = 0;  // the diaphragm the node is slaved to; 0 none
  };
  struct Group {
    std::string name;
    // Each element's nodes, four to an element, 0 where the element has fewer; the
    // outline runs through them in this order.
    std::vector<std::array<std::int32_t, 4>> elements;
  };
  struct Drift {
    std::string name;
    std::int32_t top = 0;
    std::int32_t bottom = 0;
  };
  std::vector<Node> nodes;  // node k is nodes[k - 1]
  std::vector<Group> groups;
  std::vector<Drift> drifts;
};

// The nodes, element groups with their elements (each group's leading element left out),
// supports, diaphragm membership and drifts of the S file of `read`. A missing or cut file
// gives what could be read.
StructureGeometry GeometryFromStructure(const StructureRead& read);

// Writes the SVG document: one panel per view, side by side, and a legend.
void WriteStructureSvg(const StructureGeometry& geometry, const std::vector<ViewKind>& views,
                       std::ostream& out);

// The view command: `input` is a structure folder or a model file; a model file is
// transferred into a temporary folder first (no record files), which is removed afterwards.
int RunViewCommand(const std::string& input, const std::string& svg_file,
                   const std::vector<std::string>& views, std::ostream& out, std::ostream& err);

}  // namespace vtt
