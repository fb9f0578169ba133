#include "hosts/file_view.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace vtt {
namespace {

namespace fs = std::filesystem;

class FileViewTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::temp_directory_path() /
              ("vtt-file-view-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
               "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  void TearDown() override { fs::remove_all(folder_); }
  fs::path Write(const std::string& name, const std::string& bytes) {
    const fs::path file = folder_ / name;
    std::ofstream(file, std::ios::binary) << bytes;
    return file;
  }
  fs::path folder_;
};

TEST_F(FileViewTest, ShowsEveryByteOfAFile) {
  std::string bytes = "{\"format\": \"vask-model\"}\n";
  bytes.push_back('\0');
  bytes.append("\xE9\xFF");
  bytes.append(70000, 'x');
  const std::unique_ptr<FileView> view = FileView::Open(Write("m.json", bytes));
#if defined(__unix__) || defined(__APPLE__)
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->text(), bytes);
#else
  EXPECT_EQ(view, nullptr);
#endif
}

TEST_F(FileViewTest, GivesNothingForWhatItCannotMap) {
  EXPECT_EQ(FileView::Open(Write("empty.json", "")), nullptr);
  EXPECT_EQ(FileView::Open(folder_), nullptr);
  EXPECT_EQ(FileView::Open(folder_ / "missing.json"), nullptr);
}

}  // namespace
}  // namespace vtt
