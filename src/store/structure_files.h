// The structure file set: the seven files of a Trelk structure folder.
//
//   TRKDA    analysis cases
//   TRKDULS  two empty lists
//   TRKDPO   one zero record
//   TRKDPOA  an empty tagged count
//   TRKDPOF  twenty zero bytes
//   TRKDL    load cases: gravity, pushover, dynamic
//   TRKDS    the structure proper
//
// Every file begins with the version text "4.0" padded to eight bytes. The files are
// written in the order A, ULS, PO, POA, POF, L, S through one file channel, and are opened
// without truncation: a longer file left by an earlier transfer keeps its old tail.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace vtt {

class TrelkStore;
class UserMessages;

// Writes the structure files into StructureFolder, which it sets from StructuresRoot and
// the structure name. A file that fails is reported through `messages` and the next file
// is tried all the same.
void WriteTrelkStructure(TrelkStore& store, std::string_view file_id, bool write_all,
                         std::int16_t header_argument, UserMessages& messages);

// The structure folder for a root and a 12-character structure name: the root joined with
// the name without its trailing spaces.
std::filesystem::path StructureFolderPath(std::string_view structures_root,
                                          std::string_view structure_name);

// Shows the file error message: stage 0 for opening, 1 for writing.
void ReportFileError(TrelkStore& store, int stage, std::string_view file_name,
                     UserMessages& messages);

}  // namespace vtt
