// SPDX-License-Identifier: Apache-2.0
// What the device reports, where the log's lines go, and how the options bring the services together.
#include <ZRCore/ZRLinuxPlatform.h>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cstddef>

#include "TemporaryFolder.h"
#include "identity/LinuxDevice.h"
#include "log/LinuxLog.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

constexpr const char* kMachineId = "00112233445566778899aabbccddeeff\n";

TEST(DeviceTest, TheVendorsIdentifierIsAHashOfTheMachinesForTheApplication) {
  const TemporaryFolder root;
  root.write("etc/machine-id", kMachineId);
  // As `hmac.new(bytes.fromhex(...), b"com.example.maps", sha256)` of Python has it, with the bits of version 4.
  EXPECT_EQ(LinuxDevice(root.path, "com.example.maps").identifierForVendor(), "59828AA4-503B-4A6B-824C-7444D070036E");
  EXPECT_NE(LinuxDevice(root.path, "com.example.maps2").identifierForVendor(), "59828AA4-503B-4A6B-824C-7444D070036E");
  EXPECT_EQ(LinuxDevice(root.path, std::nullopt).identifierForVendor(), std::nullopt);
  for (const char* content : {"", "\n", "uninitialized\n", "00112233445566778899aabbccddeef\n",
                              "00112233445566778899aabbccddeeff0\n", "00112233-4455-6677-8899-aabbccddeeff\n",
                              "00112233445566778899aabbccddeefg\n", "00000000000000000000000000000000\n"}) {
    root.write("etc/machine-id", content);
    EXPECT_EQ(LinuxDevice(root.path, "com.example.maps").identifierForVendor(), std::nullopt) << content;
  }
}

TEST(DeviceTest, VersionAndLanguageComeFromTheSystemsFiles) {
  const struct {
    const char *file, *content;
    std::optional<std::string> version, language;
  } rows[] = {
      {"etc/os-release", "PRETTY=\"VERSION_ID=1\"\nVERSION_ID=\"12\"\nVERSION_ID_LIKE=3\n", "12", {}},
      {"usr/lib/os-release", "VERSION_ID=10.2", "10.2", {}},
      {"etc/os-release", "ID=rolling\nVERSION_ID=\n", {}, {}},
      {"etc/os-release", "VERSION_ID='no end", {}, {}},
      {"etc/locale.conf", "LC_TIME=fr_FR\nLANG=de_DE.UTF-8\n", {}, "de"},
      {"etc/default/locale", "#  File generated\nLANG=\"nds@latin\"\n", {}, "nds"},
      {"etc/locale.conf", "LANG=C.UTF-8\n", {}, {}},
      {"etc/locale.conf", "LANG=POSIX\n", {}, {}},
      {"etc/hostname", "x", {}, {}},
  };
  utsname names{};
  ASSERT_EQ(uname(&names), 0);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.content);
    const TemporaryFolder root;
    root.write(row.file, row.content);
    const LinuxDevice device(root.path, "com.example.maps");
    EXPECT_EQ(device.systemVersion(), row.version);
    EXPECT_EQ(device.systemLanguageCode(), row.language);
    EXPECT_EQ(device.machineIdentifier(), names.machine);
    EXPECT_FALSE(device.isAdvertisingTrackingEnabled() || device.advertisingIdentifier());
  }
}

/// A socket on which a journal would listen.
class Journal {
 public:
  explicit Journal(const std::filesystem::path& path) : path_(path) {
    std::filesystem::create_directories(path.parent_path());
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    path.native().copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  }
  ~Journal() {
    close(socket_);
    unlink(path_.c_str());
  }

  std::string datagram() {
    std::string bytes(1000, '\0');
    const ssize_t length = recv(socket_, bytes.data(), bytes.size(), MSG_DONTWAIT);
    bytes.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return bytes;
  }

 private:
  std::filesystem::path path_;
  int socket_ = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
};

TEST(LogTest, TheJournalGetsOneEntryALineAndTheErrorStreamWhatItDoesNotTake) {
  const TemporaryFolder root;
  ZRLinuxOptions options;
  options.rootFolder = root.path;
  options.log = ZRLinuxLog::journal;
  std::shared_ptr<ZRLog> log;
  {
    Journal journal(root.path / "run/systemd/journal/socket");
    log = makeLinuxPlatform(options).log;
    log->writeLine("a\nPRIORITY=0");
    EXPECT_THAT(journal.datagram(), AllOf(StartsWith("PRIORITY=6\n"), HasSubstr("MESSAGE=a\\x0APRIORITY=0\n")));
  }
  testing::internal::CaptureStderr();
  log->writeLine("gone\n");
  makeLinuxPlatform(options).log->writeLine("still");
  options.rootFolder = std::string(200, 'x');
  makeLinuxPlatform(options).log->writeLine("too far");
  Journal restarted(root.path / "run/systemd/journal/socket");
  log->writeLine("back");
  EXPECT_THAT(restarted.datagram(), HasSubstr("MESSAGE=back\n"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "gone\\x0A\nstill\ntoo far\n");
}

TEST(LogTest, TheJournalIsTakenWhenTheErrorStreamLeadsThere) {
  struct stat status {};
  ASSERT_EQ(fstat(STDERR_FILENO, &status), 0);
  const std::string stream = std::to_string(status.st_dev) + ':' + std::to_string(status.st_ino);
  unsetenv("JOURNAL_STREAM");
  EXPECT_FALSE(isStandardErrorTheJournal());
  setenv("JOURNAL_STREAM", stream.c_str(), 1);
  EXPECT_TRUE(isStandardErrorTheJournal());
  setenv("JOURNAL_STREAM", (stream + '0').c_str(), 1);
  EXPECT_FALSE(isStandardErrorTheJournal());
}

TEST(LinuxPlatformTest, TheInformationFileDecidesWhereSettingsGoAndWhoTheVendorsIdentifierIsFor) {
  const TemporaryFolder root;
  root.write("etc/machine-id", kMachineId);
  ZRLinuxOptions options;
  options.rootFolder = root.path;
  options.settingsFolder = root.path / "settings";
  options.informationFile = root.write("maps.information", "[Information]\nCFBundleIdentifier=com.example.maps\n");
  options.largestImagePixels = 0;
  const ZRPlatform platform = makeLinuxPlatform(options);
  platform.userDefaults->setStringForKey("1", "a");
  EXPECT_TRUE(platform.userDefaults->synchronize());
  EXPECT_THAT(contentOf(root.path / "settings/com.example.maps.keyfile"), HasSubstr("\na=1\n"));
  EXPECT_EQ(platform.device->identifierForVendor(), "59828AA4-503B-4A6B-824C-7444D070036E");
  EXPECT_EQ(makeLinuxPlatform(options).userDefaults->stringForKey("a"), "1");
  options.size = offsetof(ZRLinuxOptions, informationFile);
  EXPECT_EQ(makeLinuxPlatform(options).bundle->bundleIdentifier(), std::nullopt) << "not known to an older host";
}

}  // namespace
