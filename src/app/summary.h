// What went into a structure, told to the user at the end of a transfer.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace vtt {

class TrelkStore;

struct StructureSummary {
  std::string folder;          // the structure folder the files went to
  std::int32_t nodes = 0;      // the origin node that every structure carries included
  std::int32_t diaphragms = 0;
  // Each element group's name and its elements, the group's leading element left out.
  std::vector<std::pair<std::string, std::int32_t>> element_groups;
  // The component lists that hold anything, as (kind, count), in the order of the library.
  std::vector<std::pair<std::string, std::int32_t>> components;
  std::int32_t nodal_load_patterns = 0;
  std::int32_t frame_load_patterns = 0;
  std::int32_t self_weight_patterns = 0;
  std::int32_t nodal_mass_patterns = 0;
  std::int32_t structure_frames = 0;
  std::int32_t section_cuts = 0;
  std::int32_t drifts = 0;
  std::int32_t gravity_cases = 0;
  std::int32_t pushover_cases = 0;
  std::int32_t dynamic_cases = 0;
  std::int32_t analysis_series = 0;
  int record_files = 0;
  std::string records_folder;  // where the record files went
};

// The summary of the structure that `store` holds after a transfer wrote it.
StructureSummary SummariseStructure(const TrelkStore& store, int record_files,
                                    std::string records_folder);

// The summary as the command line prints it: one item a line, counts aligned.
void PrintStructureSummary(std::ostream& out, const StructureSummary& summary);

}  // namespace vtt
