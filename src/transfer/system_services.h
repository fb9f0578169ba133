// The few services the transfer asks of the operating system: where Trelk keeps its data,
// whether a folder is there, how to make one, how to remove an old one.
//
// The only effect of the target version in the whole transfer is the Trelk data folder that
// GetTrelkPath gives: Trelk 4 keeps it where it was installed, Trelk 5 in the user's
// documents. The two folder sources sit behind SystemFolders, so that the rules above them
// are the same on every platform and tests can supply their own folders.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vtt {

// Where the platform keeps the two folders GetTrelkPath starts from.
class SystemFolders {
 public:
  virtual ~SystemFolders() = default;
  // The user's documents folder, without a trailing separator; empty when the system has
  // none to give.
  virtual std::string DocumentsFolder() = 0;
  // The folder Trelk 4 was installed to, as it is stored; empty when none is configured.
  virtual std::string Version4InstallPath() = 0;
};

// The folder sources of a desktop without a registry, read from the environment:
// - documents: XDG_DOCUMENTS_DIR of the environment, else the XDG_DOCUMENTS_DIR line of
//   $XDG_CONFIG_HOME/user-dirs.dirs (default ~/.config), else ~/Documents; made when it is
//   not there yet, as the documents folder of Windows is;
// - Trelk 4: TRELK4_INSTALL_PATH of the environment, else the first line of
//   $XDG_CONFIG_HOME/vask2trelk/trelk4-install-path.
// Texts from these sources are cut at their first zero character, as a registry text is.
class XdgSystemFolders final : public SystemFolders {
 public:
  // The value of an environment variable; no value when it is not set.
  using Environment = std::function<std::optional<std::string>(const std::string& name)>;

  explicit XdgSystemFolders(Environment environment);

  std::string DocumentsFolder() override;
  std::string Version4InstallPath() override;

 private:
  // The variable's value, empty when it is not set.
  std::string Variable(const std::string& name) const;
  // XDG_CONFIG_HOME when it is an absolute folder, else ~/.config; empty without a home.
  std::string ConfigHome() const;

  Environment environment_;
};

// The environment of this process.
XdgSystemFolders::Environment ProcessEnvironment();

// The folder sources of this platform: the known documents folder and the registry value
// "Install path" under "SOFTWARE\Ostrand\TRELK\4" on Windows, XdgSystemFolders of the
// process environment elsewhere.
std::unique_ptr<SystemFolders> MakePlatformFolders();

// The Trelk data folder, without a trailing separator. Version 5: the documents folder
// joined with "TRELK" (an empty documents folder gives the separator and "TRELK" alone).
// Version 4: the install folder exactly as configured, empty when it is not.
std::string GetTrelkPath(bool isVersion5, SystemFolders& folders);

// `folder`, the platform's separator and `name`, even when `folder` is empty.
std::string JoinFolder(std::string_view folder, std::string_view name);

// ---- Value rules shared by every platform ----
// The part of `text` before its first zero character.
std::string CutAtFirstZero(std::string_view text);

// Registry value types that carry an answer.
inline constexpr std::uint32_t kRegistryText = 1;
inline constexpr std::uint32_t kRegistryBytes = 3;

// The text a registry value of `type` holding `data` reads as: a text value up to its first
// zero character; raw bytes as a signed 16-bit little-endian integer in decimal (the first
// two bytes, missing ones as zero); any other type empty.
std::string RegistryValueText(std::uint32_t type, std::span<const std::uint8_t> data);

// Status of the documents-folder query for an invalid argument.
inline constexpr std::int32_t kDocumentsInvalidArgument = static_cast<std::int32_t>(0x80070057);

// The documents folder from the status of the query and its text buffer as the query left
// it: empty for kDocumentsInvalidArgument, the text before its first zero character for
// status 0, and the buffer untouched for any other status.
std::string DocumentsFolderText(std::int32_t status, std::string_view buffer);

// ---- Folders ----
// Whether `name` can name the structure folder: one folder inside the structures folder,
// made and found the same way on every platform a structure travels to. Refused: a path
// separator ("/" or "\", so also an absolute path), a colon (a drive, "C:", or a file
// stream), a character that Windows refuses in a folder name (< > " | ? * and the control
// characters), a name of dots alone (".", ".."; spaces between them too), and a device
// name of Windows (CON, PRN, AUX, NUL, COM1 to COM9, LPT1 to LPT9, in any case, with or
// without an extension). The name is taken in the Windows-1252 code page of the files'
// name field, so a character the code page lacks is a "?" and refused too. Trailing spaces
// are no part of the folder, so a name empty without them names the structures folder
// itself and is accepted.
bool IsStructureFolderName(std::string_view utf8);

// Whether anything is at `path`: a folder, or a file too.
bool FolderExistsByAttributes(const std::string& path);
// Whether `path` is a folder.
bool FolderExists(const std::string& path);
// Makes the folder `path`, one level only: fails when its parent is missing, and when
// anything is already at `path`.
bool MakeFolder(const std::string& path);
// Removes the folder `path` and everything in it; false when there was no folder to remove
// or it could not all be removed.
bool DeleteFolderTree(const std::string& path);

}  // namespace vtt
