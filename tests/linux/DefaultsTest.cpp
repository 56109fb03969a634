// SPDX-License-Identifier: Apache-2.0
// Settings survive: other processes, full disks, damaged files, and a process that is killed at any moment.
#include <ZRCore/ZRPlatformFake.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "StoringFaults.h"
#include "TemporaryFolder.h"
#include "settings/KeyFileDefaults.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using namespace std::string_literals;
namespace fs = std::filesystem;

#ifdef SYS_rename
constexpr long kRenameCall = SYS_rename;
#else
constexpr long kRenameCall = SYS_renameat;
#endif

class DefaultsTest : public testing::Test {
 protected:
  std::shared_ptr<KeyFileDefaults> open() const { return std::make_shared<KeyFileDefaults>(file, queue, log); }

  /// Leaves `value` under "key" in the file, and nothing else.
  void storeAlone(const std::string& value) const {
    fs::remove(file);
    const auto defaults = open();
    defaults->setStringForKey(value, "key");
    ASSERT_TRUE(defaults->synchronize());
  }

  std::string nameOf(const fs::path& path) const { return path.lexically_relative(folder.path); }

  TemporaryFolder folder;
  fs::path file = folder.path / "deep" / "settings.keyfile";
  std::shared_ptr<ZRFakeMainQueue> queue = std::make_shared<ZRFakeMainQueue>();
  std::shared_ptr<ZRFakeLog> log = std::make_shared<ZRFakeLog>();
};

TEST_F(DefaultsTest, AnyBytesComeBackInTheNextProcess) {
  std::string everyByte;
  for (int byte = 0; byte < 256; ++byte) everyByte += static_cast<char>(byte);
  const std::string texts[] = {"",       "%",   "Encoding", "=", "#x",  "[End]", " a b ",   "ü",
                               "a\nb=c", "\\n", "\0"s,      ";", "%zz", "\xFF",  everyByte, std::string(100'000, '%')};
  {
    const auto defaults = open();
    for (const auto& text : texts) defaults->setStringForKey(text, text);
    EXPECT_TRUE(defaults->synchronize());
  }
  const auto defaults = open();
  for (const auto& text : texts) EXPECT_EQ(defaults->stringForKey(text), text);
  EXPECT_EQ(defaults->stringForKey("none"), std::nullopt);
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_THAT(log->lines, IsEmpty());
}

TEST_F(DefaultsTest, WhatIsSetReachesTheFileWithATurnOfTheQueue) {
  const auto defaults = open();
  defaults->setStringForKey("1", "a");
  defaults->setStringForKey("2", "b");
  EXPECT_EQ(open()->stringForKey("b"), std::nullopt);
  EXPECT_EQ(queue->run(), 1U);
  EXPECT_EQ(open()->stringForKey("b"), "2");
  defaults->setStringForKey("3", "b");
  queue->run();
  EXPECT_EQ(open()->stringForKey("b"), "3");
}

TEST_F(DefaultsTest, ProcessesThatShareTheFileKeepEachOthersSettings) {
  const auto one = open();
  const auto other = open();
  one->setStringForKey("1", "one");
  other->setStringForKey("2", "other");
  EXPECT_TRUE(one->synchronize());
  EXPECT_TRUE(other->synchronize());
  EXPECT_EQ(open()->stringForKey("one"), "1");
  EXPECT_EQ(open()->stringForKey("other"), "2");
  EXPECT_EQ(other->stringForKey("one"), "1") << "seen when it stored";
}

TEST_F(DefaultsTest, ADamagedFileIsKeptAsideAndToldOnce) {
  storeAlone("value");
  const std::string whole = contentOf(file);
  std::vector<std::string> damaged{"[Defaults]\nkey=%4\n[End]\n",
                                   "[Defaults]\n%zz=1\n[End]\n",
                                   "[End]\n",
                                   "\x89PNG",
                                   std::string(whole.size(), '\0'),
                                   whole + "junk\n"};
  for (std::size_t length = 0; length < whole.size() - 1; ++length) damaged.push_back(whole.substr(0, length));
  for (const std::string& content : damaged) {
    SCOPED_TRACE(content);
    fs::remove_all(file.parent_path());
    folder.write(nameOf(file), content);
    log->lines.clear();
    const auto defaults = open();
    EXPECT_EQ(defaults->stringForKey("key"), std::nullopt);
    EXPECT_EQ(contentOf(file.native() + ".damaged"), content);
    defaults->setStringForKey("new", "key");
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(open()->stringForKey("key"), "new");
    EXPECT_THAT(log->lines, ElementsAre(HasSubstr("settings.keyfile.damaged")));
  }
  folder.write(nameOf(file), "");
  open();
  EXPECT_TRUE(fs::exists(file.native() + ".damaged-2")) << "what was kept aside before stays";
}

TEST_F(DefaultsTest, AFileThatCannotBeReadStaysAsItIs) {
  fs::create_directories(file / "in the way");
  const auto defaults = open();
  defaults->setStringForKey("1", "a");
  EXPECT_EQ(defaults->stringForKey("a"), "1");
  EXPECT_FALSE(defaults->synchronize());
  EXPECT_FALSE(defaults->synchronize());
  EXPECT_TRUE(fs::exists(file / "in the way"));
  EXPECT_THAT(log->lines, ElementsAre(HasSubstr(file.native())));
  fs::remove_all(file);
  EXPECT_TRUE(defaults->synchronize()) << "nothing was lost meanwhile";
  EXPECT_EQ(open()->stringForKey("a"), "1");
}

TEST_F(DefaultsTest, AFileKeptElsewhereIsReplacedThere) {
  storeAlone("old");
  const fs::path link = folder.path / "link.keyfile";
  fs::create_symlink(file, link);
  const auto defaults = std::make_shared<KeyFileDefaults>(link, queue, log);
  defaults->setStringForKey("new", "key");
  EXPECT_TRUE(defaults->synchronize());
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(open()->stringForKey("key"), "new");
}

TEST_F(DefaultsTest, WhatOthersPutInTheFilesPlaceIsNeitherFollowedNorWaitedFor) {
  storeAlone("mine");
  const fs::path elsewhere = folder.path / "elsewhere", lock = file.native() + ".lock";
  fs::remove(lock);
  fs::create_symlink(elsewhere, lock);
  auto defaults = open();
  defaults->setStringForKey("new", "key");
  EXPECT_FALSE(defaults->synchronize());
  EXPECT_FALSE(fs::exists(elsewhere)) << "made through the link";
  EXPECT_THAT(log->lines, ElementsAre(HasSubstr("cannot be locked")));

  fs::remove(lock);
  fs::remove(file);
  log->lines.clear();
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  EXPECT_EQ(open()->stringForKey("key"), std::nullopt);
  EXPECT_THAT(log->lines, ElementsAre(HasSubstr("no regular file")));

  if (geteuid() != 0) GTEST_SKIP() << "only root can make another user's link";
  storeAlone("mine");
  fs::rename(file, elsewhere);
  fs::create_symlink(elsewhere, file);
  ASSERT_EQ(lchown(file.c_str(), 65534, 65534), 0);
  log->lines.clear();
  EXPECT_EQ(open()->stringForKey("key"), std::nullopt);
  EXPECT_THAT(log->lines, ElementsAre(HasSubstr("cannot be read")));
}

TEST_F(DefaultsTest, WithoutAnIdentifierSettingsLastAsLongAsTheProcess) {
  const auto defaults = std::make_shared<KeyFileDefaults>(std::nullopt, queue, log);
  defaults->setStringForKey("1", "a");
  EXPECT_FALSE(defaults->synchronize());
  queue->run();
  EXPECT_EQ(defaults->stringForKey("a"), "1");
  EXPECT_THAT(log->lines, ElementsAre(HasSubstr("CFBundleIdentifier")));
}

TEST_F(DefaultsTest, NoIdentifierLeadsOutOfTheFolder) {
  for (const char* identifier : {"../other", "/etc/passwd", "a/b", "..", "com.example.maps", "\n"}) {
    const fs::path stored = settingsFile(folder.path, identifier);
    EXPECT_EQ(stored.lexically_normal().parent_path(), folder.path) << identifier;
    EXPECT_EQ(stored.extension(), ".keyfile");
  }
}

/// Whether a fault while storing leaves the old value or the new one, whole, is told by whether it was stored.
TEST_F(DefaultsTest, AFaultWhileStoringLeavesTheOldFileAndSaysSo) {
  const std::string oldValue(20'000, 'o');
  const std::string newValue(30'000, 'n');
  const struct {
    const char* name;
    std::function<bool()> breakIt;
  } faults[] = {
      {"none", [] { return true; }},
      {"the disk is full at once",
       [] { return makeCallFail(SYS_write, ENOSPC) && makeCallFail(SYS_fallocate, ENOSPC); }},
      {"the disk gets full", [] { return limitFiles(25'000); }},
      {"the disk fails", [] { return makeCallFail(SYS_fsync, EIO); }},
      {"nothing can be opened", [] { return makeCallFail(SYS_openat, EACCES); }},
      {"nothing can be renamed", [] { return makeCallFail(kRenameCall, EROFS); }},
      {"nothing can be locked", [] { return makeCallFail(SYS_flock, ENOLCK); }},
  };
  for (const auto& fault : faults) {
    SCOPED_TRACE(fault.name);
    storeAlone(oldValue);
    const bool isStored = isTrueInChild([&] {
      const auto defaults = open();
      defaults->setStringForKey(newValue, "key");
      return fault.breakIt() && defaults->synchronize();
    });
    EXPECT_EQ(isStored, fault.name == "none"s);
    EXPECT_EQ(open()->stringForKey("key"), isStored ? newValue : oldValue);
  }
  EXPECT_THAT(log->lines, IsEmpty()) << "no file was damaged";
}

TEST_F(DefaultsTest, AProcessKilledAtAnySystemCallLeavesTheOldFileOrTheNew) {
  const std::string oldValue(20'000, 'o');
  const std::string newValue(30'000, 'n');
  int calls = 1;
  bool isNewSeen = false;
  for (bool isKilled = true; isKilled; ++calls) {
    storeAlone(oldValue);
    isKilled = isKilledAtCall(calls, [&] {
      const auto defaults = open();
      defaults->setStringForKey(newValue, "key");
      defaults->synchronize();
    });
    const auto left = open();
    const auto value = left->stringForKey("key");
    EXPECT_TRUE(value == oldValue || value == newValue) << "killed at call " << calls;
    EXPECT_TRUE(value == newValue || !isNewSeen) << "once the new file stands, it stays";
    isNewSeen = value == newValue;
    left->setStringForKey("after", "key");
    EXPECT_TRUE(left->synchronize()) << "what the dead process leaves is in nobody's way";
  }
  EXPECT_TRUE(isNewSeen);
  EXPECT_GT(calls, 15) << "lock, read, write, flush, rename and flush are more";
  EXPECT_THAT(log->lines, IsEmpty()) << "no file was damaged";
}

}  // namespace
