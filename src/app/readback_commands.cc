#include "app/readback_commands.h"

#include <exception>
#include <filesystem>

#include "app/cli.h"
#include "store/structure_check.h"
#include "store/structure_dump.h"
#include "store/structure_reader.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;

// A file of the structure set is named TRKD and its suffix; any other file is taken for an
// earthquake record file.
ReadFile ReadAnyFile(const fs::path& path) {
  const std::string name = path.filename().string();
  const std::vector<std::uint8_t> bytes = ReadWholeFile(path);
  if (name.rfind("TRKD", 0) == 0) {
    const std::string suffix = name.substr(4);
    for (std::string_view known : StructureFileSuffixes()) {
      if (suffix != known) continue;
      std::int64_t drifts = 0;
      // The L file's drift flags are as many as the drifts of the S file beside it.
      if (suffix == "L" && fs::is_regular_file(path.parent_path() / "TRKDS")) {
        const ReadFile s = ReadStructureFile("S", ReadWholeFile(path.parent_path() / "TRKDS"));
        if (const ReadSection* d = s.Section("drifts")) drifts = d->Value("DriftCount");
      }
      return ReadStructureFile(suffix, bytes, drifts);
    }
  }
  return ReadRecordFile(name, bytes);
}

}  // namespace

int RunDumpCommand(const std::string& path, bool json, std::ostream& out, std::ostream& err) {
  try {
    if (fs::is_directory(path)) {
      const StructureRead read = ReadStructureFolder(path);
      if (json) {
        out << DumpJson(read).dump(2) << '\n';
      } else {
        DumpText(read, out);
      }
    } else {
      const ReadFile file = ReadAnyFile(path);
      if (json) {
        out << DumpJson(file).dump(2) << '\n';
      } else {
        DumpText(file, out);
      }
    }
  } catch (const std::exception& e) {
    err << "Error : " << e.what() << '\n';
    return exit_status::kUsage;
  }
  return exit_status::kComplete;
}

int RunCheckCommand(const std::string& folder, std::ostream& out, std::ostream& err) {
  if (!fs::is_directory(folder)) {
    err << "Error : \"" << folder << "\" is not a structure folder.\n";
    return exit_status::kUsage;
  }
  std::vector<CheckProblem> problems;
  try {
    problems = CheckStructureFolder(folder);
  } catch (const std::exception& e) {
    err << "Error : " << e.what() << '\n';
    return exit_status::kUsage;
  }
  for (const CheckProblem& p : problems) out << ProblemText(p) << '\n';
  if (problems.empty()) {
    out << "Every check holds.\n";
    return exit_status::kComplete;
  }
  out << problems.size() << (problems.size() == 1 ? " check failed.\n" : " checks failed.\n");
  return exit_status::kCheckFailed;
}

}  // namespace vtt
