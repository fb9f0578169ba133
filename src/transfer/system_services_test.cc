// The Trelk data folder by version, the two folder sources, the value rules of registry
// texts and of the documents-folder query, and the folder services.
#include "transfer/system_services.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "support/expected_bytes.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;
using testing::TempFolder;

const std::string kSep(1, static_cast<char>(fs::path::preferred_separator));

class FixedFolders final : public SystemFolders {
 public:
  FixedFolders(std::string documents, std::string install)
      : documents_(std::move(documents)), install_(std::move(install)) {}
  std::string DocumentsFolder() override {
    ++documentsAsked;
    return documents_;
  }
  std::string Version4InstallPath() override {
    ++installAsked;
    return install_;
  }
  int documentsAsked = 0;
  int installAsked = 0;

 private:
  std::string documents_;
  std::string install_;
};

// An environment made of the given variables only.
XdgSystemFolders::Environment Env(std::map<std::string, std::string> variables) {
  return [variables = std::move(variables)](const std::string& name) -> std::optional<std::string> {
    const auto found = variables.find(name);
    if (found == variables.end()) return std::nullopt;
    return found->second;
  };
}

void WriteText(const fs::path& path, const std::string& text) {
  fs::create_directories(path.parent_path());
  testing::WriteFileBytes(path, std::vector<std::uint8_t>(text.begin(), text.end()));
}

// ---- GetTrelkPath ----

TEST(SystemServicesTrelkPath, Version4WithoutInstallConfigurationIsEmpty) {
  FixedFolders folders("/home/ann/Documents", "");
  EXPECT_EQ(GetTrelkPath(false, folders), "");
  EXPECT_EQ(folders.documentsAsked, 0);
}

TEST(SystemServicesTrelkPath, Version4IsTheInstallFolderAsStoredWithoutSuffix) {
  FixedFolders folders("/home/ann/Documents", "/opt/Trelk 4/");
  EXPECT_EQ(GetTrelkPath(false, folders), "/opt/Trelk 4/");
}

TEST(SystemServicesTrelkPath, Version5IsTheDocumentsFolderAndTRELK) {
  FixedFolders folders("/home/ann/Documents", "/opt/trelk4");
  EXPECT_EQ(GetTrelkPath(true, folders), "/home/ann/Documents" + kSep + "TRELK");
  EXPECT_EQ(folders.installAsked, 0);
}

TEST(SystemServicesTrelkPath, Version5WithoutDocumentsFolderIsSeparatorAndTRELK) {
  FixedFolders folders("", "");
  EXPECT_EQ(GetTrelkPath(true, folders), kSep + "TRELK");
}

TEST(SystemServicesTrelkPath, JoinFolderUsesThePlatformSeparatorEvenAfterNothing) {
  EXPECT_EQ(JoinFolder("a", "b"), "a" + kSep + "b");
  EXPECT_EQ(JoinFolder("", "Records"), kSep + "Records");
#ifndef _WIN32
  EXPECT_EQ(JoinFolder("/t/TRELK", "Records"), "/t/TRELK/Records");
#endif
}

// ---- Value rules ----

TEST(SystemServicesValues, RegistryTextWithEmbeddedZerosIsCutAtTheFirst) {
  const std::string stored("C:\\Trelk4\0old\0", 14);
  const std::vector<std::uint8_t> data(stored.begin(), stored.end());
  EXPECT_EQ(RegistryValueText(kRegistryText, data), "C:\\Trelk4");
}

TEST(SystemServicesValues, RegistryTextWithoutZeroIsWhole) {
  const std::string stored = "D:\\Apps\\Trelk";
  EXPECT_EQ(RegistryValueText(kRegistryText, {reinterpret_cast<const std::uint8_t*>(stored.data()),
                                              stored.size()}),
            "D:\\Apps\\Trelk");
}

TEST(SystemServicesValues, RegistryBytesReadAsASigned16BitInteger) {
  EXPECT_EQ(RegistryValueText(kRegistryBytes, std::vector<std::uint8_t>{0x34, 0x12}), "4660");
  EXPECT_EQ(RegistryValueText(kRegistryBytes, std::vector<std::uint8_t>{0xFF, 0xFF}), "-1");
  EXPECT_EQ(RegistryValueText(kRegistryBytes, std::vector<std::uint8_t>{0x05}), "5");
  EXPECT_EQ(RegistryValueText(kRegistryBytes, std::vector<std::uint8_t>{0x01, 0x00, 0x07, 0x09}),
            "1");
  EXPECT_EQ(RegistryValueText(kRegistryBytes, std::vector<std::uint8_t>{}), "0");
}

TEST(SystemServicesValues, OtherRegistryTypesGiveNothing) {
  const std::vector<std::uint8_t> data{'a', 'b', 0};
  EXPECT_EQ(RegistryValueText(0, data), "");
  EXPECT_EQ(RegistryValueText(2, data), "");
  EXPECT_EQ(RegistryValueText(4, data), "");
  EXPECT_EQ(RegistryValueText(7, data), "");
}

TEST(SystemServicesValues, DocumentsQueryStatuses) {
  const std::string buffer = std::string("C:\\Users\\ann\\Documents") + std::string(8, '\0');
  EXPECT_EQ(DocumentsFolderText(0, buffer), "C:\\Users\\ann\\Documents");
  EXPECT_EQ(DocumentsFolderText(kDocumentsInvalidArgument, buffer), "");
  EXPECT_EQ(kDocumentsInvalidArgument, static_cast<std::int32_t>(0x80070057u));
  // Any other status leaves the text as the query left it.
  const std::string untouched(6, ' ');
  EXPECT_EQ(DocumentsFolderText(1, untouched), untouched);
  EXPECT_EQ(DocumentsFolderText(static_cast<std::int32_t>(0x80004005u), buffer), buffer);
}

// ---- Folder sources of a desktop without a registry ----

TEST(SystemServicesXdg, Version4WithoutConfigurationIsEmpty) {
  TempFolder home("xdg-v4-none");
  XdgSystemFolders folders(Env({{"HOME", home.Path().string()}}));
  EXPECT_EQ(folders.Version4InstallPath(), "");
  EXPECT_EQ(GetTrelkPath(false, folders), "");
  XdgSystemFolders bare(Env({}));
  EXPECT_EQ(bare.Version4InstallPath(), "");
}

TEST(SystemServicesXdg, Version4FromTheEnvironment) {
  XdgSystemFolders folders(Env({{"TRELK4_INSTALL_PATH", "/opt/trelk4"}}));
  EXPECT_EQ(GetTrelkPath(false, folders), "/opt/trelk4");
}

TEST(SystemServicesXdg, Version4FromTheFirstLineOfTheConfigFile) {
  TempFolder config("xdg-v4-config");
  WriteText(config.Path() / "vask2trelk" / "trelk4-install-path", "/srv/trelk 4\r\n/other\n");
  XdgSystemFolders folders(Env({{"XDG_CONFIG_HOME", config.Path().string()}}));
  EXPECT_EQ(folders.Version4InstallPath(), "/srv/trelk 4");
}

TEST(SystemServicesXdg, Version4ConfigTextWithEmbeddedZeroIsCutAtTheFirst) {
  TempFolder home("xdg-v4-zero");
  WriteText(home.Path() / ".config" / "vask2trelk" / "trelk4-install-path",
            std::string("/opt/t4\0junk\0more\n", 18));
  XdgSystemFolders folders(Env({{"HOME", home.Path().string()}}));
  EXPECT_EQ(folders.Version4InstallPath(), "/opt/t4");
}

TEST(SystemServicesXdg, Version4EnvironmentComesBeforeTheConfigFile) {
  TempFolder config("xdg-v4-both");
  WriteText(config.Path() / "vask2trelk" / "trelk4-install-path", "/from/file\n");
  XdgSystemFolders folders(Env({{"XDG_CONFIG_HOME", config.Path().string()},
                                {"TRELK4_INSTALL_PATH", "/from/env"}}));
  EXPECT_EQ(folders.Version4InstallPath(), "/from/env");
}

TEST(SystemServicesXdg, DocumentsFromTheEnvironment) {
  TempFolder root("xdg-docs-env");
  const fs::path documents = root.Path() / "Papers";
  XdgSystemFolders folders(Env({{"HOME", root.Path().string()},
                                {"XDG_DOCUMENTS_DIR", documents.string() + "/"}}));
  EXPECT_EQ(folders.DocumentsFolder(), documents.string());
  EXPECT_EQ(GetTrelkPath(true, folders), documents.string() + kSep + "TRELK");
  EXPECT_TRUE(fs::is_directory(documents));
}

TEST(SystemServicesXdg, DocumentsFromUserDirsWithHomeExpanded) {
  TempFolder home("xdg-docs-file");
  WriteText(home.Path() / ".config" / "user-dirs.dirs",
            "# written by the desktop\n"
            "XDG_DESKTOP_DIR=\"$HOME/Desktop\"\n"
            "XDG_DOCUMENTS_DIR=\"$HOME/Old\"\n"
            "XDG_DOCUMENTS_DIR=\"$HOME/My Documents\"\n");
  XdgSystemFolders folders(Env({{"HOME", home.Path().string()}}));
  EXPECT_EQ(folders.DocumentsFolder(), (home.Path() / "My Documents").string());
}

TEST(SystemServicesXdg, DocumentsFallBackToHomeDocumentsAndAreMade) {
  TempFolder home("xdg-docs-default");
  XdgSystemFolders folders(Env({{"HOME", home.Path().string()}}));
  EXPECT_EQ(folders.DocumentsFolder(), (home.Path() / "Documents").string());
  EXPECT_TRUE(fs::is_directory(home.Path() / "Documents"));
}

TEST(SystemServicesXdg, NoHomeMeansNoDocumentsFolder) {
  XdgSystemFolders folders(Env({}));
  EXPECT_EQ(folders.DocumentsFolder(), "");
  EXPECT_EQ(GetTrelkPath(true, folders), kSep + "TRELK");
}

// ---- Folders ----

TEST(SystemServicesFolders, MakeFolderWithAMissingParentFails) {
  TempFolder root("make-folder");
  const fs::path target = root.Path() / "missing" / "child";
  EXPECT_FALSE(MakeFolder(target.string()));
  EXPECT_FALSE(fs::exists(root.Path() / "missing"));
  EXPECT_FALSE(fs::exists(target));
}

TEST(SystemServicesFolders, MakeFolderMakesOneLevel) {
  TempFolder root("make-folder-one");
  const fs::path target = root.Path() / "Records";
  EXPECT_TRUE(MakeFolder(target.string()));
  EXPECT_TRUE(fs::is_directory(target));
  // Already there: nothing new is made.
  EXPECT_FALSE(MakeFolder(target.string()));
  EXPECT_FALSE(MakeFolder(""));
}

TEST(SystemServicesFolders, ExistenceOfFoldersAndFiles) {
  TempFolder root("exists");
  const fs::path file = root.Path() / "plain";
  WriteText(file, "x");
  EXPECT_TRUE(FolderExists(root.Path().string()));
  EXPECT_FALSE(FolderExists(file.string()));
  EXPECT_FALSE(FolderExists((root.Path() / "none").string()));
  EXPECT_FALSE(FolderExists(""));
  // Any attribute counts for the attribute test: a file too.
  EXPECT_TRUE(FolderExistsByAttributes(root.Path().string()));
  EXPECT_TRUE(FolderExistsByAttributes(file.string()));
  EXPECT_FALSE(FolderExistsByAttributes((root.Path() / "none").string()));
}

TEST(SystemServicesFolders, DeleteFolderTreeRemovesEverythingInside) {
  TempFolder root("delete-tree");
  const fs::path old = root.Path() / "DynaAnalysis";
  WriteText(old / "case1" / "result", "r");
  WriteText(old / "top", "t");
  EXPECT_TRUE(DeleteFolderTree(old.string()));
  EXPECT_FALSE(fs::exists(old));
  EXPECT_TRUE(fs::is_directory(root.Path()));
  EXPECT_FALSE(DeleteFolderTree(old.string()));
}

}  // namespace
}  // namespace vtt
