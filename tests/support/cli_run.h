// The command line run in this process, as the tests of its commands run it, and the text
// of a file they wrote.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "app/cli.h"

namespace vtt::testing {

struct CliRun {
  int status;
  std::string out;
  std::string err;
};

// `vask2trelk` with `args`; standard error is not taken for a terminal.
inline CliRun Cli(std::vector<std::string> args) {
  args.insert(args.begin(), "vask2trelk");
  std::vector<const char*> argv;
  for (const std::string& a : args) argv.push_back(a.c_str());
  std::ostringstream out, err;
  const int status = RunCli(static_cast<int>(argv.size()), argv.data(), out, err, false);
  return {status, out.str(), err.str()};
}

inline std::string ReadText(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

}  // namespace vtt::testing
