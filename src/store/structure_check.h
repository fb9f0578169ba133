// The check of a structure folder: walks every file to its end and tests what holds in
// any structure that the transfer writes, so that a damaged or stale folder is found
// before the target application opens it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "store/structure_reader.h"

namespace vtt {

struct CheckProblem {
  std::string file;  // TRKDS and the like
  std::uint64_t offset = 0;
  std::string text;  // what was found and what was expected
};

// Every problem of a read structure, file by file in the order of writing.
std::vector<CheckProblem> CheckStructure(const StructureRead& structure);

// Reads the folder and checks it.
std::vector<CheckProblem> CheckStructureFolder(const std::filesystem::path& folder);

// "TRKDS at offset 190: ..."
std::string ProblemText(const CheckProblem& problem);

}  // namespace vtt
