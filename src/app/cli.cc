#include "app/cli.h"

#include <filesystem>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "hosts/json_model_host.h"
#include "app/terminal.h"
#include "store/structure_files.h"
#include "store/text_encoding.h"
#include "store/trelk_store.h"
#include "transfer/driver.h"
#include "transfer/failure.h"
#include "transfer/messages.h"
#include "transfer/system_services.h"

namespace vtt {
namespace {

// A message box becomes one block on standard error: the title, then the text.
class StreamMessages final : public UserMessages {
 public:
  explicit StreamMessages(std::ostream& err) : err_(err) {}
  void Show(const UserMessage& message) override {
    if (!message.title.empty()) err_ << message.title << '\n';
    err_ << message.text << '\n';
    err_.flush();
  }
  void Beep() override { err_ << '\a'; }

 private:
  std::ostream& err_;
};

struct TransferOptions {
  std::string model;
  std::string dir;
  std::string name = "Trelk";
  int version = 5;
  std::string trelk_path;
  bool embed_beam = false;
  bool quiet = false;
};

int RunTransferCommand(const TransferOptions& options, std::ostream& err) {
  StreamMessages messages(err);

  // A structure name reaches the files through a 12-character field; a longer one would
  // silently put the files in a folder of another name.
  if (ToWindows1252(options.name).size() > 12) {
    err << "Error : the structure name \"" << options.name
        << "\" is too long: a structure name has at most 12 characters.\n";
    return exit_status::kUsage;
  }

  std::unique_ptr<JsonModelHost> host;
  try {
    host = JsonModelHost::FromFile(options.model);
  } catch (const ModelFileError& error) {
    err << error.what() << '\n';
    return exit_status::kBadModelFile;
  }

  // The structure folder is made one level deep, as the folder of a new structure under
  // an existing structures folder.
  const std::filesystem::path folder =
      std::filesystem::path(options.dir) / std::filesystem::path(options.name);
  std::error_code ec;
  if (!std::filesystem::exists(folder, ec)) {
    std::error_code make_error;
    if (!std::filesystem::create_directory(folder, make_error)) {
      messages.Show({"", "Error : Couldn't create directory !", MessageIcon::Critical});
      return exit_status::kFolderNotMade;
    }
  }

  TransferProgress progress;
  if (!options.quiet && StderrIsTerminal()) {
    progress.on_stage = [&err](int stage, std::string_view name) {
      err << "[" << stage << "/22] " << name << '\n';
    };
    progress.on_read_stage = [&err](int stage, std::string_view name) {
      err << "        reading " << stage << "/28 " << name << '\n';
    };
  }

  // Record files of the time-history functions go to Trelk's own data folder: the one
  // given, else the one of the chosen Trelk version.
  std::string trelk_path = options.trelk_path;
  if (trelk_path.empty()) trelk_path = GetTrelkPath(options.version == 5, *MakePlatformFolders());

  TrelkStore store;
  try {
    switch (Transform(host.get(), store, messages, options.dir, options.name, trelk_path,
                      progress)) {
      case TransformOutcome::NoModel: return exit_status::kNoModel;
      case TransformOutcome::EmptyModel: return exit_status::kEmptyModel;
      case TransformOutcome::Complete: return exit_status::kComplete;
    }
  } catch (const TransferFailure& failure) {
    messages.Show({"Transfer stopped", failure.what(), MessageIcon::Critical});
    return exit_status::kTransferFailed;
  }
  return exit_status::kTransferFailed;
}

}  // namespace

int RunCli(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
  CLI::App app{"vask2trelk: transfers a Vask model into a Trelk structure."};
  app.require_subcommand(1);

  TransferOptions options;
  CLI::App* transfer = app.add_subcommand(
      "transfer",
      "Translate a model file into a Trelk structure: the folder DIR/NAME with the seven "
      "structure files.");
  transfer->add_option("model", options.model, "The model file (JSON, format \"vask-model\").")
      ->required()
      ->check(CLI::ExistingFile);
  transfer->add_option("--dir", options.dir,
                       "The Trelk structures folder that receives the structure folder.")
      ->required()
      ->check(CLI::ExistingDirectory);
  transfer->add_option("--name", options.name,
                       "The structure name, at most 12 characters; the structure folder is "
                       "DIR/NAME.")
      ->capture_default_str();
  transfer->add_option("--version", options.version,
                       "Target Trelk version, 5 or 4; it decides only the Trelk data folder, "
                       "never the structure files.")
      ->check(CLI::IsMember({4, 5}))
      ->capture_default_str();
  transfer->add_option("--trelk-path", options.trelk_path,
                       "Trelk's data folder; the record file of every time-history function "
                       "goes to its Records/EqkeGroup folder. Default: the folder of the "
                       "chosen version (version 5: TRELK in the documents folder; version 4: "
                       "TRELK4_INSTALL_PATH or the vask2trelk/trelk4-install-path file of "
                       "the configuration folder).");
  transfer->add_flag("--embed-beam", options.embed_beam,
                     "Embed beams in shells. Accepted for scripts written for the transfer "
                     "form: embedded beams are made whenever the model calls for them, so the "
                     "output is the same with or without it.");
  transfer->add_flag("-q,--quiet", options.quiet, "Print no progress.");

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    out << app.help();
    (void)e;
    return exit_status::kComplete;
  } catch (const CLI::CallForAllHelp& e) {
    out << app.help("", CLI::AppFormatMode::All);
    (void)e;
    return exit_status::kComplete;
  } catch (const CLI::ParseError& e) {
    err << "Error: " << e.what() << '\n';
    err << "Run with --help for usage.\n";
    return exit_status::kUsage;
  }

  if (transfer->parsed()) return RunTransferCommand(options, err);
  return exit_status::kUsage;
}

}  // namespace vtt
