// Fuzz target: a whole transfer from a model file into a temporary folder.
//
// Each input is read as a model file and transferred into a work folder with both the
// structures folder and Trelk's data folder inside it; the work folder is removed after
// each input. A refused file (ModelFileError) and a run-time failure of the transfer
// (TransferFailure) are ordinary outcomes; anything else escapes and is a finding.
//
// Nothing may be written outside the work folder: it lies three folders deep in a folder
// of this process alone, and after each input each of those folders must hold only the
// next one, so a file that a name led one, two or three levels out of the work folder is
// found at once. Built for the fuzzer, the current folder's listing is also held against
// the one at the start, for a path that came out relative.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>

#include <unistd.h>

#include "hosts/json_model_host.h"
#include "hosts/model_file.h"
#include "store/trelk_store.h"
#include "transfer/driver.h"
#include "transfer/failure.h"
#include "transfer/messages.h"

namespace {

namespace fs = std::filesystem;

// Model files name their record text files relative to their own folder; the examples'
// folder holds the records that the example models name.
#ifndef VTT_SOURCE_DIR
#define VTT_SOURCE_DIR "."
#endif
const char* const kModelFolder = VTT_SOURCE_DIR "/examples";

[[noreturn]] void Finding(const std::string& what) {
  std::fprintf(stderr, "transfer_fuzz: %s\n", what.c_str());
  std::fflush(stderr);
  std::abort();
}

std::set<std::string> Listing(const fs::path& folder) {
  std::set<std::string> names;
  std::error_code ec;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    names.insert(it->path().filename().string());
  }
  return names;
}

// The per-process folders: root/a/b/work; root is removed when the process ends.
class Folders {
 public:
  Folders() {
    root_ = fs::temp_directory_path() / ("vtt-transfer-fuzz-" + std::to_string(::getpid()));
    fs::remove_all(root_);
    work_ = root_ / "a" / "b" / "work";
    fs::create_directories(work_.parent_path());
#ifdef VTT_FUZZING
    start_ = Listing(fs::current_path());
#endif
  }
  ~Folders() {
    std::error_code ec;
    fs::remove_all(root_, ec);
  }
  const fs::path& Work() const { return work_; }

  // With the work folder removed, every folder above it, up to the process's own, holds
  // only the one below on the way to it.
  void CheckNothingOutside() const {
    Expect(work_.parent_path(), {});
    Expect(work_.parent_path().parent_path(), {"b"});
    Expect(root_, {"a"});
#ifdef VTT_FUZZING
    if (Listing(fs::current_path()) != start_) {
      Finding("written outside the work folder: the current folder changed");
    }
#endif
  }

 private:
  static void Expect(const fs::path& folder, const std::set<std::string>& expected) {
    const std::set<std::string> names = Listing(folder);
    if (names == expected) return;
    std::string listed;
    for (const std::string& name : names) listed += " " + name;
    Finding("written outside the work folder: " + folder.string() + " holds" + listed);
  }

  fs::path root_, work_;
  std::set<std::string> start_;
};

// Says nothing: the fuzzer looks only at how the run ends.
class QuietMessages final : public vtt::UserMessages {
 public:
  void Show(const vtt::UserMessage&) override {}
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Folders folders;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const fs::path& work = folders.Work();
  fs::create_directories(work / "Fuzz");
  {
    std::unique_ptr<vtt::JsonModelHost> host;
    try {
      host = vtt::JsonModelHost::FromText(text, "fuzz.json", kModelFolder);
    } catch (const vtt::ModelFileError&) {
    }
    if (host) {
      vtt::TrelkStore store;
      QuietMessages messages;
      try {
        vtt::Transform(host.get(), store, messages, work.string(), "Fuzz",
                       std::optional<std::string>((work / "TRELK").string()));
      } catch (const vtt::TransferFailure&) {
        // ends the run with its message, by design
      }
    }
  }
  std::error_code ec;
  fs::remove_all(work, ec);
  if (ec) Finding("the work folder cannot be removed: " + ec.message());
  folders.CheckNothingOutside();
  return 0;
}
