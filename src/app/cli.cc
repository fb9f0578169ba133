#include "app/cli.h"

#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "analysis/write_record_file.h"
#include "app/readback_commands.h"
#include "app/progress.h"
#include "app/rule_text.h"
#include "app/structure_view.h"
#include "app/summary.h"
#include "app/transfer_report.h"
#include "app/terminal.h"
#include "hosts/json_model_host.h"
#include "source/process_end.h"
#include "store/text_encoding.h"
#include "store/trelk_store.h"
#include "transfer/driver.h"
#include "transfer/failure.h"
#include "transfer/messages.h"
#include "transfer/system_services.h"

namespace vtt {
namespace {

// Hands the host and the store of a transfer to the end of the process when the transfer
// command ends, whichever way it ends (see process_end.h).
template <class Host, class Store>
class LeftAtTheEnd {
 public:
  LeftAtTheEnd(std::unique_ptr<Host>& host, std::unique_ptr<Store>& store)
      : host_(host), store_(store) {}
  LeftAtTheEnd(const LeftAtTheEnd&) = delete;
  LeftAtTheEnd& operator=(const LeftAtTheEnd&) = delete;
  ~LeftAtTheEnd() {
    LeaveToProcessEnd(store_);
    LeaveToProcessEnd(host_);
  }

 private:
  std::unique_ptr<Host>& host_;
  std::unique_ptr<Store>& store_;
};

// A message box becomes one block on standard error: the title, then the text. A progress
// bar on the same terminal is cleared first, so the message starts on a line of its own.
class StreamMessages final : public UserMessages {
 public:
  StreamMessages(std::ostream& err, ProgressBar* bar) : err_(err), bar_(bar) {}
  void Show(const UserMessage& message) override {
    if (bar_ != nullptr) bar_->Clear();
    if (!message.title.empty()) err_ << message.title << '\n';
    err_ << message.text << '\n';
    err_.flush();
  }
  void Beep() override { err_ << '\a'; }

 private:
  std::ostream& err_;
  ProgressBar* bar_;
};

struct TransferOptions {
  std::string model;
  std::string dir;  // empty: the structures folder of the Trelk data folder
  std::string name = "Trelk";
  int version = 5;
  std::string trelk_path;  // empty: the data folder of the chosen version
  bool embed_beam = false;  // read by nothing: embedded beams follow from the model alone
  bool quiet = false;
  std::string report;  // empty: no report
};

std::string WithoutTrailingSpaces(std::string text) {
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text;
}

// The structures folder that a new structure goes to when no folder is chosen:
// TrelkPath/Trelk/Structures. Each of the three folders is made when it is missing, one
// level at a time, as Trelk's own start-up does; an empty TrelkPath (a Trelk 4 without a
// configured install folder) has nothing to make and leaves the other two at the root.
// No value when the last folder is not there afterwards.
std::optional<std::string> DefaultStructuresFolder(const std::string& trelk_path) {
  const std::string trelk = JoinFolder(trelk_path, "Trelk");
  const std::string structures = JoinFolder(trelk, "Structures");
  for (const std::string& folder : {trelk_path, trelk, structures}) {
    if (!folder.empty() && !FolderExists(folder)) MakeFolder(folder);
  }
  if (!FolderExists(structures)) return std::nullopt;
  return structures;
}

// A transfer that stops still leaves its report: what was left out until the stop, and
// the message it stopped with.
void WriteStoppedReport(const std::string& file, TransferReport& report, const char* message,
                        std::ostream& err) {
  if (file.empty()) return;
  report.stopped = message;
  if (!WriteTransferReport(file, report)) {
    err << "Error : cannot write the report \"" << file << "\".\n";
  }
}

int RunTransferCommand(const TransferOptions& options, std::ostream& out, std::ostream& err,
                       bool err_is_terminal) {
  // A structure name reaches the files through a 12-character field; a longer one would
  // silently put the files in a folder of another name.
  if (ToWindows1252(options.name).size() > 12) {
    err << "Error : the structure name \"" << options.name
        << "\" is too long: a structure name has at most 12 characters.\n";
    return exit_status::kUsage;
  }

  // The name becomes a folder: a name that would lead out of the structures folder, or that
  // Windows cannot make as a folder, is refused as the transfer form refuses a folder it
  // cannot make, before anything is read or made.
  if (!IsStructureFolderName(options.name)) {
    err << "Error : Couldn't create directory !\n";
    return exit_status::kFolderNotMade;
  }

  if (!options.report.empty() && !IsReportFileName(options.report)) {
    err << "Error : the report file \"" << options.report
        << "\" must end in .md (Markdown) or .json.\n";
    return exit_status::kUsage;
  }

  // The model file stands for the running Vask: it is read first, and a file that cannot be
  // used stops the run before any folder is made.
  std::unique_ptr<JsonModelHost> host;
  try {
    host = JsonModelHost::FromFile(options.model);
  } catch (const ModelFileError& error) {
    err << error.what() << '\n';
    return exit_status::kBadModelFile;
  }

  // Trelk's data folder: it receives the record file of every time-history function (in
  // Records/EqkeGroup) and holds the default structures folder.
  std::string trelk_path = options.trelk_path;
  if (trelk_path.empty()) trelk_path = GetTrelkPath(options.version == 5, *MakePlatformFolders());

  std::string structure_dir = options.dir;
  if (structure_dir.empty()) {
    const std::optional<std::string> structures = DefaultStructuresFolder(trelk_path);
    if (!structures) {
      err << "Error : the Trelk structures folder \""
          << JoinFolder(JoinFolder(trelk_path, "Trelk"), "Structures")
          << "\" is missing and cannot be made.\n";
      if (trelk_path.empty()) {
        err << "No Trelk 4 install folder is configured (TRELK4_INSTALL_PATH).\n";
      }
      err << "Choose the structures folder with --dir, or Trelk's data folder with "
             "--trelk-path.\n";
      return exit_status::kStructuresFolderNotMade;
    }
    structure_dir = *structures;
  }

  std::unique_ptr<ProgressBar> bar;
  if (!options.quiet && err_is_terminal) bar = std::make_unique<ProgressBar>(err);
  StreamMessages messages(err, bar.get());

  // The structure folder, made one level deep when it is missing. The files go to the
  // folder of the name without its trailing spaces, which Windows drops from a folder name
  // when it makes the folder; the folder made here is that same folder on every platform.
  // An empty name gives the chosen folder itself, which exists.
  const std::string folder =
      JoinFolder(structure_dir, WithoutTrailingSpaces(options.name));
  if (!FolderExistsByAttributes(folder) && !MakeFolder(folder)) {
    messages.Show({"", "Error : Couldn't create directory !", MessageIcon::Critical});
    return exit_status::kFolderNotMade;
  }

  int record_files = 0;
  TransferProgress progress;
  if (bar) AttachProgressBar(progress, *bar);
  progress.on_record_file = [&record_files](std::string_view) { ++record_files; };
  TransferReport report;
  report.model = options.model;
  if (!options.report.empty()) {
    progress.on_drop = [&report](const DropNote& note) { report.Note(note); };
  }

  auto owned_store = std::make_unique<TrelkStore>();
  TrelkStore& store = *owned_store;
  const LeftAtTheEnd left(host, owned_store);
  TransformOutcome outcome = TransformOutcome::NoModel;
  try {
    outcome = Transform(host.get(), store, messages, structure_dir, options.name, trelk_path,
                        progress);
  } catch (const TransferFailure& failure) {
    messages.Show({"Transfer stopped", failure.what(), MessageIcon::Critical});
    WriteStoppedReport(options.report, report, failure.what(), err);
    return exit_status::kTransferFailed;
  } catch (const std::exception& failure) {
    messages.Show({"Transfer stopped", failure.what(), MessageIcon::Critical});
    WriteStoppedReport(options.report, report, failure.what(), err);
    return exit_status::kTransferFailed;
  }
  switch (outcome) {
    case TransformOutcome::NoModel: return exit_status::kNoModel;
    case TransformOutcome::EmptyModel: return exit_status::kEmptyModel;
    case TransformOutcome::Complete: break;
  }
  const std::string records =
      JoinFolder(JoinFolder(trelk_path, "Records"), std::string(kEqkeGroupName));
  if (!options.quiet) {
    PrintStructureSummary(out, SummariseStructure(store, record_files, records));
    out.flush();
  }
  if (!options.report.empty()) {
    report.summary = SummariseStructure(store, record_files, records);
    if (!WriteTransferReport(options.report, report)) {
      err << "Error : cannot write the report \"" << options.report << "\".\n";
      return exit_status::kUsage;
    }
  }
  return exit_status::kComplete;
}

}  // namespace

int RunCli(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
  return RunCli(argc, argv, out, err, &err == &std::cerr && StderrIsTerminal());
}

int RunCli(int argc, const char* const* argv, std::ostream& out, std::ostream& err,
           bool err_is_terminal) {
  CLI::App app{"vask2trelk: transfers a Vask model into a Trelk structure."};
  app.require_subcommand(1);

  TransferOptions options;
  CLI::App* transfer = app.add_subcommand(
      "transfer",
      "Translate a model file into a Trelk structure: the folder DIR/NAME with the seven "
      "structure files, and a record file for every time-history function.");
  transfer->add_option("model", options.model, "The model file (JSON, format \"vask-model\").")
      ->required()
      ->check(CLI::ExistingFile);
  transfer->add_option("--dir", options.dir,
                       "The Trelk structures folder that receives the structure folder; it "
                       "must exist. Default: Trelk/Structures in Trelk's data folder (see "
                       "--trelk-path), made when it is missing.")
      ->check(CLI::ExistingDirectory);
  transfer->add_option("--name", options.name,
                       "The structure name, at most 12 characters; the structure folder is "
                       "DIR/NAME, made when it is missing.")
      ->capture_default_str();
  transfer->add_option("--version", options.version,
                       "Target Trelk version, 5 or 4; it decides only Trelk's data folder, "
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
  transfer->add_option("--report", options.report,
                       "Also write a report of what went in and of every object the rules "
                       "left out, with the reason: Markdown for a FILE ending in .md, JSON "
                       "for .json. The structure files are the same with or without it.");
  transfer->add_flag("-q,--quiet", options.quiet,
                     "No progress bar and no summary; messages are still shown.");

  CLI::App* rules = app.add_subcommand(
      "rules", "Print the transfer rules: what a transfer carries over, and what it drops.");

  std::string dump_path;
  bool dump_json = false;
  CLI::App* dump = app.add_subcommand(
      "dump",
      "Print a structure folder, one of its files, or an earthquake record file, section by "
      "section: every header value, count and record with its field names and offsets.");
  dump->add_option("path", dump_path, "The structure folder or file.")
      ->required()
      ->check(CLI::ExistingPath);
  dump->add_flag("--json", dump_json, "Print JSON instead of text.");

  std::string check_folder;
  CLI::App* check = app.add_subcommand(
      "check",
      "Walk every file of a structure folder to its end and check what holds in any written "
      "structure: headers, node chains, element groups, component references, drift nodes, "
      "diaphragm numbers, case counts and bytes left behind the content. Exit status 0 only "
      "when every check holds.");
  check->add_option("folder", check_folder, "The structure folder.")
      ->required()
      ->check(CLI::ExistingDirectory);

  std::string view_input;
  std::string view_out;
  std::vector<std::string> view_kinds;
  CLI::App* view = app.add_subcommand(
      "view",
      "Draw a structure as an SVG picture that any browser opens: the elements coloured by "
      "element group with a legend, the supports, the diaphragm nodes and the drift pair. A "
      "model file is transferred into a temporary folder first.");
  view->add_option("input", view_input, "A structure folder or a model file.")
      ->required()
      ->check(CLI::ExistingPath);
  view->add_option("--out", view_out, "The SVG file to write.")->required();
  view->add_option("--view", view_kinds,
                   "iso, plan, xz or yz; several give panels side by side. Default: iso.")
      ->check(CLI::IsMember({"iso", "plan", "xz", "yz"}));

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    (void)e;
    out << app.help();
    return exit_status::kComplete;
  } catch (const CLI::CallForAllHelp& e) {
    (void)e;
    out << app.help("", CLI::AppFormatMode::All);
    return exit_status::kComplete;
  } catch (const CLI::ParseError& e) {
    err << "Error: " << e.what() << '\n';
    err << "Run with --help for usage.\n";
    return exit_status::kUsage;
  }

  if (rules->parsed()) {
    out << TransferRuleText();
    return exit_status::kComplete;
  }
  if (dump->parsed()) return RunDumpCommand(dump_path, dump_json, out, err);
  if (check->parsed()) return RunCheckCommand(check_folder, out, err);
  if (view->parsed()) return RunViewCommand(view_input, view_out, view_kinds, out, err);
  if (transfer->parsed()) return RunTransferCommand(options, out, err, err_is_terminal);
  return exit_status::kUsage;
}

}  // namespace vtt
