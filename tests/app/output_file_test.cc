// SPDX-License-Identifier: MIT
#include "stockbook/command/output_file.h"

#include <unistd.h>

#include <array>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "app/inventory_fixture.h"
#include "stockbook/platform/error.h"

namespace {

std::vector<std::string> put_on_the_disk;

}  // namespace

// In place of the system's: notes what each file is called when it is put on the disk.
extern "C" int fsync(int descriptor) {
  std::array<char, 4096> name{};
  const ssize_t length = readlink(("/proc/self/fd/" + std::to_string(descriptor)).c_str(), name.data(), name.size());
  put_on_the_disk.emplace_back(name.data(), length > 0 ? static_cast<size_t>(length) : 0);
  return fdatasync(descriptor);
}

namespace stockbook::app {
namespace {

class OutputFileTest : public InventoryTest {};

TEST_F(OutputFileTest, ReplacesItsTargetOnlyAtCommit) {
  const std::string path = Write("journal.csv", "old");
  std::ostringstream out;
  OutputFile file(path, out);
  file.stream() << "new";
  file.stream().flush();
  EXPECT_EQ(ReadAll(path), "old");
  file.Commit();
  EXPECT_EQ(ReadAll(path), "new");
  EXPECT_EQ(Files(), std::vector<std::string>{"journal.csv"});
}

TEST_F(OutputFileTest, IsOnTheDiskBeforeItTakesItsPlaceAndThenItsFolder) {
  const std::filesystem::path path = Write("journal.csv", "old");
  PendingFile file(path.string());
  const std::vector<std::string> expected = {std::filesystem::canonical(file.path()).string(),
                                             std::filesystem::canonical(path.parent_path()).string()};
  put_on_the_disk.clear();
  file.Commit();
  EXPECT_EQ(put_on_the_disk, expected);
}

TEST_F(OutputFileTest, LeavesNothingWithoutCommit) {
  {
    std::ostringstream out;
    OutputFile file(PathOf("journal.csv"), out);
    file.stream() << "half";
    EXPECT_EQ(Files().size(), 1u);
  }
  EXPECT_TRUE(Files().empty());
}

TEST_F(OutputFileTest, WritesToStandardOutputForADash) {
  std::ostringstream out;
  OutputFile file("-", out);
  file.stream() << "text";
  file.Commit();
  EXPECT_EQ(out.str(), "text");
  EXPECT_TRUE(Files().empty());
}

TEST_F(OutputFileTest, RefusesAFolderAndAFolderThatIsNotThere) {
  std::ostringstream out;
  EXPECT_THROW(OutputFile(PathOf("."), out), platform::Error);
  EXPECT_THROW(OutputFile(PathOf("missing/journal.csv"), out), platform::Error);
  EXPECT_THROW(PendingFile(""), platform::Error);
}

TEST_F(OutputFileTest, ReportsAFullDisk) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "There is no /dev/full here.";
  std::ostringstream out;
  OutputFile file("/dev/full", out);
  file.stream() << "text";
  EXPECT_THROW(file.Commit(), platform::Error);
}

TEST_F(OutputFileTest, KeepsALinkAndReplacesTheFileBehindIt) {
  const std::string path = Write("behind.csv", "old");
  std::filesystem::create_symlink(path, PathOf("link.csv"));
  std::ostringstream out;
  OutputFile file(PathOf("link.csv"), out);
  file.stream() << "new";
  file.Commit();
  EXPECT_TRUE(std::filesystem::is_symlink(PathOf("link.csv")));
  EXPECT_EQ(ReadAll(path), "new");
}

TEST_F(OutputFileTest, KeepsTheModeOfTheFileItReplaces) {
  namespace fs = std::filesystem;
  for (const fs::perms mode : {fs::perms(0600), fs::perms(0640), fs::perms(0755), fs::perms(0444)}) {
    const std::string path = Write("journal.csv", "old");
    fs::permissions(path, mode);
    std::ostringstream out;
    OutputFile file(path, out);
    file.stream() << "new";
    file.Commit();
    EXPECT_EQ(fs::status(path).permissions(), mode);
    EXPECT_EQ(ReadAll(path), "new");
    fs::remove(path);
  }
}

TEST_F(OutputFileTest, LetsNobodyElseReadAReplacementBeforeItIsInPlace) {
  namespace fs = std::filesystem;
  const std::string path = Write("journal.csv", "old");
  fs::permissions(path, fs::perms(0600));
  const PendingFile file(path);
  EXPECT_EQ(fs::status(file.path()).permissions(), fs::perms(0600));
}

TEST_F(OutputFileTest, GivesANewFileTheModeOfAnyNewFile) {
  const std::string usual = Write("usual.csv", "");
  PendingFile(PathOf("journal.csv")).Commit();
  EXPECT_EQ(std::filesystem::status(PathOf("journal.csv")).permissions(), std::filesystem::status(usual).permissions());
}

}  // namespace
}  // namespace stockbook::app
