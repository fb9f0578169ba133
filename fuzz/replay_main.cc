// Replays saved inputs through a fuzz target without the fuzzer: every file named on the
// command line, and every file under each folder named, in name order. The run fails (the
// target aborts or an exception escapes) on the first input that the target does not take;
// it also fails when there is nothing to replay, so a moved corpus is not mistaken for a
// clean one.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
  namespace fs = std::filesystem;
  std::vector<fs::path> inputs;
  for (int a = 1; a < argc; ++a) {
    const fs::path given(argv[a]);
    if (fs::is_directory(given)) {
      for (const fs::directory_entry& entry : fs::recursive_directory_iterator(given)) {
        if (entry.is_regular_file() && entry.path().filename().string().front() != '.') {
          inputs.push_back(entry.path());
        }
      }
    } else if (fs::is_regular_file(given)) {
      inputs.push_back(given);
    } else {
      std::fprintf(stderr, "no such input: %s\n", argv[a]);
      return 2;
    }
  }
  std::sort(inputs.begin(), inputs.end());
  if (inputs.empty()) {
    std::fprintf(stderr, "nothing to replay\n");
    return 2;
  }
  for (const fs::path& input : inputs) {
    std::ifstream in(input, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::fprintf(stderr, "%s (%zu bytes)\n", input.string().c_str(), bytes.size());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
  std::fprintf(stderr, "%zu inputs replayed\n", inputs.size());
  return 0;
}
