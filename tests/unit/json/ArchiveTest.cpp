// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRArchive.h>
#include <ZRCore/ZRJSON.h>
#include <ZRCore/ZRLocation.h>
#include <gmock/gmock.h>

#include <limits>

#include "MappingModel.h"

namespace {

using testing::HasSubstr;

class Archive : public testing::Test {
 protected:
  std::string faultIn(std::string_view document) {
    const auto result = archive.unarchivedObjectFromData(document);
    const NSError* const error = std::get_if<NSError>(&result);
    return error != nullptr ? std::to_string(error->code) + " " + error->localizedDescription() : "none";
  }

  ZRArchive archive{ZRMakeJSONService(), {&Item::staticClassInfo(), &ZRLocation::staticClassInfo()}};
};

TEST_F(Archive, IsAVersionedDocumentThatNamesItsClasses) {
  const auto item = std::make_shared<Item>();
  item->setName("a");
  item->setWeight(-std::numeric_limits<double>::infinity());
  item->setNext(std::make_shared<Item>());
  const std::string document = std::get<std::string>(archive.archivedDataWithRootObject(item));
  EXPECT_EQ(document,
            R"({"format":"ZRArchive","version":1,"root":{"class":"Item","name":"a","count":0,"weight":"-Infinity",)"
            R"("next":{"class":"Item","name":null,"count":0,"weight":0.0,"next":null}}})");
  const auto read = std::get<std::shared_ptr<NSObject>>(archive.unarchivedObjectFromData(document));
  EXPECT_EQ(std::get<std::string>(archive.archivedDataWithRootObject(read)), document);
}

TEST_F(Archive, UnknownEntriesAreSkippedMissingOnesAndWrongKindsReadAsNothing) {
  const auto read = archive.unarchivedObjectFromData(
      R"({"more":1,"version":1,"format":"ZRArchive","root":{"count":"7","new":[{}],"next":{"class":"PlainItem"},)"
      R"("weight":true,"class":"Item"}})");
  const auto item = std::dynamic_pointer_cast<Item>(std::get<std::shared_ptr<NSObject>>(read));
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(item->name(), std::nullopt);
  EXPECT_EQ(item->count(), 0);
  EXPECT_EQ(item->weight(), 1.0);
  EXPECT_EQ(item->next(), nullptr);
}

TEST_F(Archive, WhatIsNoArchiveOfOursIsAClearError) {
  const std::pair<const char*, const char*> rows[] = {
      {"{", "3840 "},
      {"[]", "4864 This is no archive"},
      {"{}", "4864 This is no archive"},
      {R"({"format":"Other","version":1,"root":{"class":"Item"}})", "4864 This is no archive"},
      {R"({"format":"ZRArchive","root":{"class":"Item"}})", "4864 This is no archive"},
      {R"({"format":"ZRArchive","version":2,"root":{"class":"Item"}})", "4864 The archive has version 2"},
      {R"({"format":"ZRArchive","version":1e300,"root":{"class":"Item"}})", "4864 The archive has version"},
      {R"({"format":"ZRArchive","version":1,"root":null})", "4864 The archive's root"},
      {R"({"format":"ZRArchive","version":1,"root":{"class":"PlainItem"}})", "4864 The archive's root"},
      {R"({"format":"ZRArchive","version":1,"root":{"class":["Item"]}})", "4864 The archive's root"}};
  for (const auto& [document, fault] : rows) EXPECT_THAT(faultIn(document), HasSubstr(fault)) << document;
}

TEST_F(Archive, WhatCannotBeArchivedIsAClearErrorAndNestedAnAbsentObject) {
  const auto code = [&](const std::shared_ptr<NSObject>& root) {
    return std::get<NSError>(archive.archivedDataWithRootObject(root)).code;
  };
  EXPECT_EQ(code(nullptr), NSCoderInvalidValueError);
  EXPECT_EQ(code(std::make_shared<PlainItem>()), NSCoderInvalidValueError);
  ZRMemoryCoder coder;
  coder.encodeObjectForKey(std::make_shared<PlainItem>(), "plain");
  EXPECT_TRUE(coder.containsValueForKey("plain"));
}

TEST_F(Archive, ObjectsNestedTooDeeplyAreAbsentWhateverTheDocumentSays) {
  std::string document = R"({"format":"ZRArchive","version":1,"root":)";
  for (int i = 0; i < 5000; ++i) document += R"({"class":"Item","count":1,"next":)";
  document += "null" + std::string(5001, '}');
  auto item =
      std::dynamic_pointer_cast<Item>(std::get<std::shared_ptr<NSObject>>(archive.unarchivedObjectFromData(document)));
  int depth = 0;
  for (; item; item = item->next()) depth += item->count();
  EXPECT_EQ(depth, 100);
}

TEST_F(Archive, AFixComesBackAsOne) {
  const auto fix = ZRLocation::initWithCLLocation(*CLLocation::initWithFix({.coordinate = {52.5, 13.4}}));
  fix->setSmoothSpeed(1.5);
  const std::string document = std::get<std::string>(archive.archivedDataWithRootObject(fix));
  const auto read = std::dynamic_pointer_cast<ZRLocation>(
      std::get<std::shared_ptr<NSObject>>(archive.unarchivedObjectFromData(document)));
  ASSERT_NE(read, nullptr);
  EXPECT_EQ(read->coordinate().longitude, 13.4);
  EXPECT_EQ(read->smoothSpeed(), 1.5);
}

}  // namespace
