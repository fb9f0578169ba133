// A picture of a structure: an SVG drawing of its elements, coloured by element group, with
// the supports, the diaphragm nodes and the drift pair marked, in an isometric view, in plan
// and in the two elevations. The drawing is written as it is made, one path per group (split
// into pieces of bounded length), so a structure of half a million nodes stays a small and
// quick file: nothing is thinned and no element gets an object of its own. A structure
// folder is read one record at a time: only the node coordinates are held, and the elements
// are read again from the S file as each view draws them.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
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
    // Single precision is plenty for a drawing at a tenth of a pixel, and halves what a
    // large structure holds.
    float x = 0, y = 0, z = 0;
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
  // The element records of an S file that are read again, one at a time, as each view
  // draws them, instead of being held in `groups`.
  struct ElementRecords {
    std::filesystem::path file;
    std::uint64_t offset = 0;  // of the first element record
    std::int64_t count = 0;    // element records, the groups' leading ones included
    // Per group: its elements, and the places (from 1) of its first and last element
    // among the records.
    std::vector<std::size_t> elements;
    std::vector<std::int64_t> first;
    std::vector<std::int64_t> last;
  };
  std::vector<Node> nodes;  // node k is nodes[k - 1]
  std::vector<Group> groups;
  std::vector<Drift> drifts;
  std::optional<ElementRecords> element_records;

  // The elements of group `g` (from 0), held or still in the file.
  std::size_t ElementCount(std::size_t g) const;
};

// The nodes, element groups with their elements (each group's leading element left out),
// supports, diaphragm membership and drifts of the S file of `read`. A missing or cut file
// gives what could be read.
StructureGeometry GeometryFromStructure(const StructureRead& read);

// The same from the S file of a structure folder, read one record at a time: the nodes
// and drifts are kept, the elements are only counted and are read again as they are
// drawn, so the memory taken is of the order of the node coordinates. The walk stops after
// the drifts. A missing or cut file gives what could be read.
StructureGeometry StreamGeometryFromFolder(const std::filesystem::path& folder);

// Writes the SVG document: one panel per view, side by side, and a legend.
void WriteStructureSvg(const StructureGeometry& geometry, const std::vector<ViewKind>& views,
                       std::ostream& out);

// The view command: `input` is a structure folder or a model file; a model file is
// transferred into a temporary folder first (no record files), which is removed afterwards.
int RunViewCommand(const std::string& input, const std::string& svg_file,
                   const std::vector<std::string>& views, std::ostream& out, std::ostream& err);

}  // namespace vtt
