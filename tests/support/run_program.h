// Running the built vask2trelk program as a user runs it, for tests that look at its exit
// status, its two output streams and the files it leaves behind.
#pragma once

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace vtt::testing {

struct ProgramResult {
  int status = -1;
  std::string out;
  std::string err;
};

inline std::string ReadTextFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

inline std::string ShellQuoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  return quoted + "'";
}

// Runs the program with `args` in the folder `cwd`: its streams go to files beside the
// folder (so standard error is no terminal and the folder itself holds only what the
// program writes), its environment is reduced to a home inside `home`.
inline ProgramResult RunVask2Trelk(const std::filesystem::path& cwd,
                                   const std::filesystem::path& home,
                                   const std::vector<std::string>& args) {
  std::filesystem::create_directories(home);
  const std::filesystem::path out = home / "stdout.txt";
  const std::filesystem::path err = home / "stderr.txt";
  std::string command = "cd " + ShellQuoted(cwd.string()) + " && env -i PATH=/usr/bin:/bin " +
                        ShellQuoted("HOME=" + home.string()) + " " +
                        ShellQuoted("XDG_CONFIG_HOME=" + (home / ".config").string()) + " " +
                        ShellQuoted("XDG_DOCUMENTS_DIR=" + (home / "Documents").string()) +
                        " " + ShellQuoted(VTT_CLI_PATH);
  for (const std::string& arg : args) command += " " + ShellQuoted(arg);
  command += " </dev/null >" + ShellQuoted(out.string()) + " 2>" + ShellQuoted(err.string());
  const int raw = std::system(command.c_str());
  return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, ReadTextFile(out), ReadTextFile(err)};
}

// Every file and folder under `folder`, relative to it, sorted; folders end in "/".
inline std::vector<std::string> EntriesUnder(const std::filesystem::path& folder) {
  std::vector<std::string> entries;
  if (!std::filesystem::exists(folder)) return entries;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    std::string name = std::filesystem::relative(entry.path(), folder).generic_string();
    if (entry.is_directory()) name += "/";
    entries.push_back(name);
  }
  std::sort(entries.begin(), entries.end());
  return entries;
}

}  // namespace vtt::testing
