// Replays saved inputs through a fuzz target without the fuzzer: every file named on the
// command line, and every file under each folder named, in name order. The run fails (the
// target aborts or an exception escapes) on the first input that the target does not take;
// it also fails when there is nothing to replay, so a moved corpus is not mistaken for a
// clean one.
//
// With `--mutate SECONDS`, the replay is followed by a short blind fuzzing run for builds
// without libFuzzer (make test runs it under the sanitizers): for SECONDS, inputs made by
// mutating the replayed ones (bits and bytes changed, runs cut out or repeated, words of
// the dictionary given with `--dict FILE` put in, numbers swapped for extreme ones) go
// through the target. The mutations follow `--seed N` (default 1), so a run can be
// repeated. When the target aborts, the input it was given is written to the file given
// with `--crash FILE` (default crash-input) first.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// The sanitizers' runtime calls this back before it ends a process on a finding; in a build
// without them the symbol is absent and the weak declaration leaves it null.
extern "C" void __sanitizer_set_death_callback(void (*callback)()) __attribute__((weak));

namespace {

namespace fs = std::filesystem;

std::string ReadBytes(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

// The input being tried, and where it goes when the target dies on it.
std::string current_input;
std::string crash_file = "crash-input";

void SaveCurrentInput() {
  if (std::FILE* out = std::fopen(crash_file.c_str(), "wb")) {
    std::fwrite(current_input.data(), 1, current_input.size(), out);
    std::fclose(out);
    std::fprintf(stderr, "the input that stopped the target is in %s (%zu bytes)\n",
                 crash_file.c_str(), current_input.size());
  }
}

// The words of a libFuzzer dictionary: each line's text between its outer quotes, with
// \\, \" and \xNN undone; comments and blank lines are passed over.
std::vector<std::string> ReadDictionary(const fs::path& file) {
  std::vector<std::string> words;
  std::ifstream in(file);
  std::string line;
  while (std::getline(in, line)) {
    const std::size_t open = line.find('"');
    const std::size_t close = line.rfind('"');
    if (line.empty() || line.front() == '#' || open == std::string::npos || close <= open) {
      continue;
    }
    std::string word;
    for (std::size_t i = open + 1; i < close; ++i) {
      if (line[i] == '\\' && i + 1 < close) {
        const char next = line[++i];
        if (next == 'x' && i + 2 < close) {
          word += static_cast<char>(std::stoi(line.substr(i + 1, 2), nullptr, 16));
          i += 2;
        } else {
          word += next;
        }
      } else {
        word += line[i];
      }
    }
    if (!word.empty()) words.push_back(word);
  }
  return words;
}

class Mutator {
 public:
  Mutator(std::uint64_t seed, std::vector<std::string> words)
      : random_(seed), words_(std::move(words)) {}

  std::string Mutate(std::string input) {
    const int steps = Pick(1, 4);
    for (int s = 0; s < steps; ++s) Step(input);
    return input;
  }

 private:
  int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  std::size_t At(const std::string& input) {
    return input.empty() ? 0
                         : std::uniform_int_distribution<std::size_t>(0, input.size() - 1)(random_);
  }

  void Step(std::string& input) {
    static constexpr std::string_view kExtremes[] = {
        "0", "-0", "1e308", "-1e308", "1e-320", "2147483647", "2147483648", "-2147483649",
        "32767", "32768", "99999999999999999999", "1e400", "0.0000001", "NaN", "null", "\"\""};
    static constexpr std::string_view kBytes = "{}[],:\"\\-+.eE0123456789 \n\x00\xff";
    switch (Pick(0, 6)) {
      case 0:  // one bit
        if (!input.empty()) input[At(input)] ^= static_cast<char>(1 << Pick(0, 7));
        break;
      case 1:  // one byte, often one that matters to JSON
        if (!input.empty()) input[At(input)] = kBytes[static_cast<std::size_t>(
                                Pick(0, static_cast<int>(kBytes.size()) - 1))];
        break;
      case 2: {  // a run cut out
        if (input.empty()) break;
        const std::size_t from = At(input);
        input.erase(from, static_cast<std::size_t>(Pick(1, 32)));
        break;
      }
      case 3: {  // a run repeated
        if (input.empty()) break;
        const std::size_t from = At(input);
        const std::string run = input.substr(from, static_cast<std::size_t>(Pick(1, 64)));
        input.insert(At(input), run);
        break;
      }
      case 4:  // a word of the dictionary
        if (!words_.empty()) {
          input.insert(input.empty() ? 0 : At(input),
                       words_[static_cast<std::size_t>(Pick(0, static_cast<int>(words_.size()) - 1))]);
        }
        break;
      case 5: {  // a number swapped for an extreme one
        const std::size_t digit = input.find_first_of("0123456789", input.empty() ? 0 : At(input));
        if (digit == std::string::npos) break;
        const std::size_t end = input.find_first_not_of("0123456789.eE+-", digit);
        input.replace(digit, (end == std::string::npos ? input.size() : end) - digit,
                      kExtremes[static_cast<std::size_t>(Pick(0, 15))]);
        break;
      }
      default:  // cut short
        if (!input.empty()) input.resize(At(input));
        break;
    }
  }

  std::mt19937_64 random_;
  std::vector<std::string> words_;
};

}  // namespace

int main(int argc, char** argv) {
  std::vector<fs::path> inputs;
  double mutate_seconds = 0.0;
  std::uint64_t seed = 1;
  fs::path dictionary;
  for (int a = 1; a < argc; ++a) {
    const std::string arg = argv[a];
    if ((arg == "--mutate" || arg == "--seed" || arg == "--dict" || arg == "--crash") &&
        a + 1 < argc) {
      const std::string value = argv[++a];
      if (arg == "--mutate") mutate_seconds = std::stod(value);
      if (arg == "--seed") seed = std::stoull(value);
      if (arg == "--dict") dictionary = value;
      if (arg == "--crash") crash_file = value;
      continue;
    }
    const fs::path given(arg);
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
  if (__sanitizer_set_death_callback != nullptr) __sanitizer_set_death_callback(SaveCurrentInput);
  std::set_terminate([] {
    if (const std::exception_ptr escaped = std::current_exception()) {
      try {
        std::rethrow_exception(escaped);
      } catch (const std::exception& failure) {
        std::fprintf(stderr, "an exception escaped the target: %s\n", failure.what());
      } catch (...) {
        std::fprintf(stderr, "an exception escaped the target\n");
      }
    }
    SaveCurrentInput();
    std::abort();
  });

  std::vector<std::string> corpus;
  for (const fs::path& input : inputs) {
    current_input = ReadBytes(input);
    std::fprintf(stderr, "%s (%zu bytes)\n", input.string().c_str(), current_input.size());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(current_input.data()),
                           current_input.size());
    corpus.push_back(current_input);
  }
  std::fprintf(stderr, "%zu inputs replayed\n", inputs.size());
  if (mutate_seconds <= 0.0) return 0;

  Mutator mutator(seed, dictionary.empty() ? std::vector<std::string>{}
                                           : ReadDictionary(dictionary));
  std::mt19937_64 choose(seed ^ 0x9E3779B97F4A7C15ull);
  const auto end = std::chrono::steady_clock::now() +
                   std::chrono::duration<double>(mutate_seconds);
  std::size_t runs = 0;
  while (std::chrono::steady_clock::now() < end) {
    const std::string& base =
        corpus[std::uniform_int_distribution<std::size_t>(0, corpus.size() - 1)(choose)];
    current_input = mutator.Mutate(base);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(current_input.data()),
                           current_input.size());
    ++runs;
  }
  std::fprintf(stderr, "%zu mutated inputs in %.0f s (seed %llu): no finding\n", runs,
               mutate_seconds, static_cast<unsigned long long>(seed));
  return 0;
}
