#include "transfer/system_services.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>
#include <vector>

#include "store/text_encoding.h"

#ifdef _WIN32
#include <windows.h>
#include <shlobj.h>
#ifdef _MSC_VER
#pragma comment(lib, "advapi32.lib")
#pragma comment(lib, "shell32.lib")
#endif
#endif

namespace vtt {
namespace {

namespace fs = std::filesystem;

// The whole content of a small text file; no value when it cannot be read.
std::optional<std::string> ReadSmallFile(const std::string& path) {
  std::ifstream in(fs::path(path), std::ios::binary);
  if (!in) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(in), {});
}

// The first line of `text`, without its line ending.
std::string FirstLine(std::string_view text) {
  std::string_view line = text.substr(0, text.find('\n'));
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return std::string(line);
}

std::string WithoutTrailingSeparators(std::string folder) {
  while (folder.size() > 1 && (folder.back() == '/' || folder.back() == fs::path::preferred_separator)) {
    folder.pop_back();
  }
  return folder;
}

// `value` with a leading $HOME (alone or before a separator) replaced by `home`.
std::string ExpandHome(const std::string& value, const std::string& home) {
  constexpr std::string_view kHome = "$HOME";
  if (value.compare(0, kHome.size(), kHome) != 0) return value;
  if (value.size() > kHome.size() && value[kHome.size()] != '/') return value;
  if (home.empty()) return value;
  return home + value.substr(kHome.size());
}

// The value of the last XDG_DOCUMENTS_DIR line of a user-dirs.dirs text, unquoted and
// unescaped, with $HOME expanded; empty when there is none.
std::string DocumentsFromUserDirs(std::string_view text, const std::string& home) {
  constexpr std::string_view kKey = "XDG_DOCUMENTS_DIR=";
  std::string found;
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    std::string_view line = text.substr(start, end - start);
    start = end + 1;
    while (!line.empty() && (line.front() == ' ' || line.front() == '\t')) line.remove_prefix(1);
    if (line.compare(0, kKey.size(), kKey) != 0) continue;
    line.remove_prefix(kKey.size());
    std::string value;
    if (!line.empty() && line.front() == '"') {
      line.remove_prefix(1);
      for (std::size_t i = 0; i < line.size() && line[i] != '"'; ++i) {
        if (line[i] == '\\' && i + 1 < line.size()) ++i;
        value.push_back(line[i]);
      }
    } else {
      while (!line.empty() && (line.back() == ' ' || line.back() == '\t' || line.back() == '\r')) {
        line.remove_suffix(1);
      }
      value = std::string(line);
    }
    found = ExpandHome(CutAtFirstZero(value), home);
  }
  return found;
}

bool IsAbsoluteFolder(const std::string& folder) {
  return !folder.empty() && fs::path(folder).is_absolute();
}

#ifdef _WIN32

// The value as text: its type and size are asked first, then the value itself; a failed
// query gives no text.
std::string QueryRegistryValue(HKEY key, const std::string& valueName) {
  DWORD type = 0;
  DWORD size = 0;
  if (RegQueryValueExA(key, valueName.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS) {
    return {};
  }
  if (type != kRegistryText && type != kRegistryBytes) return {};
  std::vector<std::uint8_t> data(size);
  DWORD read = size;
  if (RegQueryValueExA(key, valueName.c_str(), nullptr, &type, data.data(), &read) !=
      ERROR_SUCCESS) {
    return {};
  }
  data.resize(read);
  return RegistryValueText(type, data);
}

// Opens the key, asks for the value, closes the key. A key that does not open gives no text.
std::string ReadRegistryText(HKEY rootKey, const std::string& subKey,
                             const std::string& valueName) {
  HKEY key = nullptr;
  if (RegOpenKeyA(rootKey, subKey.c_str(), &key) != ERROR_SUCCESS) return {};
  std::string value = QueryRegistryValue(key, valueName);
  RegCloseKey(key);
  return value;
}

class WindowsSystemFolders final : public SystemFolders {
 public:
  std::string DocumentsFolder() override {
    // The user's documents folder, made when it is absent. The buffer starts as spaces: a
    // status that is neither success nor an invalid argument leaves it as it stands.
    constexpr int kDocumentsCreated = 0x8005;
    std::string buffer(MAX_PATH, ' ');
    const HRESULT status = SHGetFolderPathA(nullptr, kDocumentsCreated, nullptr, 0, buffer.data());
    return DocumentsFolderText(static_cast<std::int32_t>(status), buffer);
  }
  std::string Version4InstallPath() override {
    return ReadRegistryText(HKEY_LOCAL_MACHINE, "SOFTWARE\\Ostrand\\TRELK\\4", "Install path");
  }
};

#endif

}  // namespace

// ---- Value rules ----

std::string CutAtFirstZero(std::string_view text) {
  return std::string(text.substr(0, text.find('\0')));
}

std::string RegistryValueText(std::uint32_t type, std::span<const std::uint8_t> data) {
  if (type == kRegistryText) {
    return CutAtFirstZero(std::string_view(reinterpret_cast<const char*>(data.data()), data.size()));
  }
  if (type == kRegistryBytes) {
    const unsigned low = data.size() > 0 ? data[0] : 0u;
    const unsigned high = data.size() > 1 ? data[1] : 0u;
    const auto value = static_cast<std::int16_t>(static_cast<std::uint16_t>(low | (high << 8)));
    return std::to_string(value);
  }
  return {};
}

std::string DocumentsFolderText(std::int32_t status, std::string_view buffer) {
  if (status == kDocumentsInvalidArgument) return {};
  if (status == 0) return CutAtFirstZero(buffer);
  return std::string(buffer);
}

// ---- Folder sources ----

XdgSystemFolders::XdgSystemFolders(Environment environment)
    : environment_(std::move(environment)) {}

std::string XdgSystemFolders::Variable(const std::string& name) const {
  if (!environment_) return {};
  return environment_(name).value_or(std::string());
}

std::string XdgSystemFolders::ConfigHome() const {
  const std::string configured = Variable("XDG_CONFIG_HOME");
  if (IsAbsoluteFolder(configured)) return WithoutTrailingSeparators(configured);
  const std::string home = Variable("HOME");
  if (home.empty()) return {};
  return JoinFolder(WithoutTrailingSeparators(home), ".config");
}

std::string XdgSystemFolders::DocumentsFolder() {
  const std::string home = WithoutTrailingSeparators(Variable("HOME"));
  std::string folder = ExpandHome(CutAtFirstZero(Variable("XDG_DOCUMENTS_DIR")), home);
  if (!IsAbsoluteFolder(folder)) {
    folder.clear();
    const std::string config = ConfigHome();
    if (!config.empty()) {
      if (const auto text = ReadSmallFile(JoinFolder(config, "user-dirs.dirs"))) {
        folder = DocumentsFromUserDirs(*text, home);
      }
    }
  }
  if (!IsAbsoluteFolder(folder)) {
    folder.clear();
    if (!home.empty()) folder = JoinFolder(home, "Documents");
  }
  if (folder.empty()) return {};
  folder = WithoutTrailingSeparators(folder);
  // Like the documents folder of Windows, the folder is made when it is not there yet, so
  // that the Trelk folder can be made inside it.
  std::error_code ignored;
  if (!fs::is_directory(fs::path(folder), ignored)) fs::create_directories(fs::path(folder), ignored);
  return folder;
}

std::string XdgSystemFolders::Version4InstallPath() {
  const std::string configured = Variable("TRELK4_INSTALL_PATH");
  if (!configured.empty()) return CutAtFirstZero(configured);
  const std::string config = ConfigHome();
  if (config.empty()) return {};
  const auto text =
      ReadSmallFile(JoinFolder(JoinFolder(config, "vask2trelk"), "trelk4-install-path"));
  if (!text) return {};
  return CutAtFirstZero(FirstLine(*text));
}

XdgSystemFolders::Environment ProcessEnvironment() {
  return [](const std::string& name) -> std::optional<std::string> {
    const char* value = std::getenv(name.c_str());
    if (value == nullptr) return std::nullopt;
    return std::string(value);
  };
}

std::unique_ptr<SystemFolders> MakePlatformFolders() {
#ifdef _WIN32
  return std::make_unique<WindowsSystemFolders>();
#else
  return std::make_unique<XdgSystemFolders>(ProcessEnvironment());
#endif
}

std::string JoinFolder(std::string_view folder, std::string_view name) {
  std::string joined(folder);
  joined.push_back(static_cast<char>(fs::path::preferred_separator));
  joined.append(name);
  return joined;
}

std::string GetTrelkPath(bool isVersion5, SystemFolders& folders) {
  if (!isVersion5) return folders.Version4InstallPath();
  return JoinFolder(folders.DocumentsFolder(), "TRELK");
}

// ---- Folders ----

namespace {

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool SameIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (LowerAscii(a[i]) != LowerAscii(b[i])) return false;
  }
  return true;
}

// Windows opens the device, not a folder, for these names, whatever follows the first dot
// and with trailing spaces before it.
bool IsWindowsDeviceName(std::string_view name) {
  std::string_view base = name.substr(0, name.find('.'));
  while (!base.empty() && base.back() == ' ') base.remove_suffix(1);
  for (std::string_view device : {"con", "prn", "aux", "nul"}) {
    if (SameIgnoringCase(base, device)) return true;
  }
  if (base.size() == 4 && base[3] >= '1' && base[3] <= '9') {
    return SameIgnoringCase(base.substr(0, 3), "com") || SameIgnoringCase(base.substr(0, 3), "lpt");
  }
  return false;
}

}  // namespace

bool IsStructureFolderName(std::string_view utf8) {
  // The folder is found again through the name field of the files, which holds the name in
  // the code page: a character the code page lacks is a "?" there, which no folder name
  // may hold, as Windows refuses it when the folder is made.
  const std::string encoded = ToWindows1252(utf8);
  std::string_view name = encoded;
  while (!name.empty() && name.back() == ' ') name.remove_suffix(1);
  if (name.empty()) return true;
  for (const char c : name) {
    if (static_cast<unsigned char>(c) < 0x20) return false;
    if (std::string_view("/\\:<>\"|?*").find(c) != std::string_view::npos) return false;
  }
  if (name.find_first_not_of(". ") == std::string_view::npos) return false;
  return !IsWindowsDeviceName(name);
}


bool FolderExistsByAttributes(const std::string& path) {
  std::error_code error;
  return !path.empty() && fs::exists(fs::path(path), error);
}

bool FolderExists(const std::string& path) {
  std::error_code error;
  return !path.empty() && fs::is_directory(fs::path(path), error);
}

bool MakeFolder(const std::string& path) {
  if (path.empty()) return false;
  std::error_code error;
  return fs::create_directory(fs::path(path), error);
}

bool DeleteFolderTree(const std::string& path) {
  if (!FolderExists(path)) return false;
  std::error_code error;
  fs::remove_all(fs::path(path), error);
  return !error;
}

}  // namespace vtt
