// SPDX-License-Identifier: Apache-2.0
// What the host says about itself, its translations, and the files packaged with the framework.
#include <ZRCore/ZRPlatformFake.h>
#include <gmock/gmock.h>
#include <locale.h>

#include "TemporaryFolder.h"
#include "settings/KeyFileBundle.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using namespace std::string_literals;

class BundleTest : public testing::Test {
 protected:
  TemporaryFolder folder;
  ZRFakeLog log;
};

TEST_F(BundleTest, TheInformationFileHasTextsAndOtherValues) {
  const auto file = folder.write("maps.information",
                                 "[Information]\nCFBundleIdentifier=com.example.maps\nCFBundleVersion=1.0 (7)\n"
                                 "ZRApplicationKey=k%20=\\n\\s\nNotText=\xFF\xFE\nEmpty=\n[Other]\nForeign=1\n");
  const KeyFileBundle bundle({.informationFile = file}, log);
  EXPECT_EQ(bundle.bundleIdentifier(), "com.example.maps");
  EXPECT_EQ(bundle.infoStringForKey("CFBundleVersion"), "1.0 (7)");
  EXPECT_EQ(bundle.infoStringForKey("ZRApplicationKey"), "k%20=\n ");
  EXPECT_EQ(bundle.infoStringForKey("Empty"), "");
  EXPECT_EQ(bundle.infoStringForKey("NotText"), std::nullopt);
  EXPECT_TRUE(bundle.hasInfoValueForKey("NotText"));
  for (const char* key : {"", "Foreign", "Information", "cfbundleversion"}) {
    EXPECT_FALSE(bundle.hasInfoValueForKey(key)) << key;
  }
  EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(BundleTest, AnInformationFileThatCannotBeReadIsToldWithItsNameAndCountsAsNone) {
  for (const char* content :
       {"CFBundleIdentifier=com.example.maps\n", "[Info]\nCFBundleIdentifier=a\n", "\x89PNG", ""}) {
    log.lines.clear();
    const KeyFileBundle bundle({.informationFile = folder.write("bad", content)}, log);
    EXPECT_EQ(bundle.bundleIdentifier(), std::nullopt);
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr(folder.path / "bad"))) << content;
  }
  log.lines.clear();
  const KeyFileBundle bundle({.informationFile = folder.path / "missing"}, log);
  EXPECT_THAT(log.lines, ElementsAre(HasSubstr("missing")));
}

TEST_F(BundleTest, ResourcesAreFilesOfTheFolderAndOfNoOther) {
  folder.write("res/tile_config.json", "{\0}"s);
  folder.write("res/.json", "hidden");
  folder.write("secret.json", "{}");
  std::filesystem::create_directory(folder.path / "res/folder.json");
  const KeyFileBundle bundle({.resourcesFolder = folder.path / "res"}, log);
  EXPECT_EQ(bundle.frameworkResource("tile_config", "json"), "{\0}"s);
  EXPECT_EQ(bundle.frameworkResource("folder", "json"), "") << "there, and not to be read";
  for (const std::string& name : {""s, ".."s, "../secret"s, "none"s, "tile_config.json\0"s}) {
    EXPECT_EQ(bundle.frameworkResource(name, "json"), std::nullopt) << name;
  }
  EXPECT_EQ(bundle.frameworkResource("tile_config", "json/../../secret.json"), std::nullopt);
}

/// A catalogue as msgfmt writes it. The keys are in order.
std::string catalogue(const std::vector<std::pair<std::string, std::string>>& texts) {
  std::string table;
  std::string pool;
  const auto put = [](std::string& to, std::size_t number) {
    for (int shift = 0; shift < 32; shift += 8) to += static_cast<char>(number >> shift & 0xFFU);
  };
  const std::size_t poolStart = 28 + 16 * texts.size();
  for (const auto part : {&std::pair<std::string, std::string>::first, &std::pair<std::string, std::string>::second}) {
    for (const auto& text : texts) {
      put(table, (text.*part).size());
      put(table, poolStart + pool.size());
      pool += text.*part + '\0';
    }
  }
  std::string file;
  for (const std::size_t number : {std::size_t{0x950412DE}, std::size_t{0}, texts.size(), std::size_t{28},
                                   28 + 8 * texts.size(), std::size_t{0}, std::size_t{0}}) {
    put(file, number);
  }
  return file + table + pool;
}

TEST_F(BundleTest, TranslationsComeFromTheHostsCatalogueInUTF8) {
  ASSERT_EQ(setenv("LANGUAGE", "de", 1), 0);
  ASSERT_NE(setlocale(LC_ALL, "C.UTF-8"), nullptr);
  folder.write("de/LC_MESSAGES/maps.mo", catalogue({{"", "Content-Type: text/plain; charset=ISO-8859-1\n"},
                                                    {"%d days ago", "vor %d Tagen, n\xE4mlich"},
                                                    {"just now", "just now"}}));
  const KeyFileBundle bundle({.textDomain = "maps", .textFolder = folder.path}, log);
  EXPECT_EQ(bundle.localizedStringForKey("%d days ago"), "vor %d Tagen, n\u00e4mlich");
  EXPECT_EQ(bundle.localizedStringForKey("just now"), "just now") << "translated, by the same words";
  for (const std::string& key : {""s, "1 hour ago"s, "just"s, "just now\0"s}) {
    EXPECT_EQ(bundle.localizedStringForKey(key), std::nullopt) << key;
  }
  EXPECT_EQ(KeyFileBundle({}, log).localizedStringForKey("just now"), std::nullopt);
}

}  // namespace
