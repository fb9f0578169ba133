// vask2trelk_generate: writes a regular building of any size as a model file, for
// measuring transfers (see generate_building.h for what the building holds).
#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "generate_building.h"

int main(int argc, char** argv) {
  CLI::App app{"vask2trelk_generate: writes a regular building as a Vask model file."};
  vtt::generate::BuildingOptions options;
  std::optional<std::int64_t> joints;
  std::string out;
  app.add_option("--storeys", options.storeys, "storeys above the base")
      ->check(CLI::PositiveNumber);
  app.add_option("--bays-x", options.bays_x, "bays along X")->check(CLI::PositiveNumber);
  app.add_option("--bays-y", options.bays_y, "bays along Y")->check(CLI::PositiveNumber);
  app.add_option("--joints", joints,
                 "about this many joints: picks storeys and bays, square in plan")
      ->check(CLI::PositiveNumber)
      ->excludes("--storeys", "--bays-x", "--bays-y");
  app.add_option("--seed", options.seed, "chooses load and mass values and the ground motion");
  app.add_option("--out", out, "the model file to write (default: standard output)");
  CLI11_PARSE(app, argc, argv);
  if (joints) options = vtt::generate::OptionsForJoints(*joints, options.seed);

  try {
    const vtt::generate::BuildingCounts counts = vtt::generate::CountBuilding(options);
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(nullptr, &std::fclose);
    std::FILE* target = stdout;
    if (!out.empty()) {
      file.reset(std::fopen(out.c_str(), "wb"));
      if (!file) {
        std::cerr << "cannot write " << out << ": " << std::strerror(errno) << '\n';
        return 1;
      }
      target = file.get();
    }
    bool written = true;
    vtt::generate::WriteBuilding(options, [&](std::string_view piece) {
      written = written && std::fwrite(piece.data(), 1, piece.size(), target) == piece.size();
    });
    if (std::fflush(target) != 0) written = false;
    if (!written) {
      std::cerr << "cannot write " << (out.empty() ? "the model" : out) << ": "
                << std::strerror(errno) << '\n';
      return 1;
    }
    std::cerr << options.storeys << " storeys, " << options.bays_x << " x " << options.bays_y
              << " bays: " << counts.points << " joints, " << counts.frames << " frames, "
              << counts.areas << " areas (" << counts.triangles << " triangles)\n";
  } catch (const std::invalid_argument& error) {
    std::cerr << error.what() << '\n';
    return 2;
  }
  return 0;
}
