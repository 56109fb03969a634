// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSString_ZR.h>
#include <ZRCore/ZRPlatformFake.h>
#include <demo/DemoTexts.h>
#include <demo/MissingServices.h>
#include <demo/PlaceList.h>
#include <demo/SessionMemory.h>
#include <demo/SpeechDesk.h>
#include <demo/SpeechFaultLog.h>
#include <demo/TripTexts.h>
#include <demo/WebAddress.h>
#include <gmock/gmock.h>
#include <place/PlaceFile.h>
#include <trip/Words.h>

namespace demo {
namespace {

TEST(WebAddress, TakesWhatPeopleTypeAndNothingThatIsNoPage) {
  const std::pair<const char*, const char*> pages[] = {
      {"example.com", "https://example.com"},
      {"  example.com:8080/a?b=c ", "https://example.com:8080/a?b=c"},
      {"localhost:80", "https://localhost:80"},
      {"http://127.0.0.1:1/x", "http://127.0.0.1:1/x"},
      {"HTTPS://Example.com/", "HTTPS://Example.com/"},
      {"about:blank", "about:blank"},
      {"[::1]:80", "https://[::1]:80"},
      {"a.com/?u=b:c", "https://a.com/?u=b:c"},
  };
  for (const auto& [typed, expected] : pages) {
    const auto address = webAddress(typed);
    ASSERT_TRUE(address) << typed;
    EXPECT_EQ(address->absoluteString(), expected);
  }
  for (const char* const typed : {"", "   ", "two words", "https://", "http:///x", "https:example.com",
                                  "javascript:alert(1)", "file:///etc/passwd", "mailto:a@b.c", "a%zz"}) {
    EXPECT_FALSE(webAddress(typed)) << typed;
    EXPECT_EQ(webAddressFault(typed).find("\u201C" + NSString_ZR::stripWhitespace(typed) + "\u201D") == 0,
              !NSString_ZR::isBlank(typed))
        << typed;
  }
  EXPECT_LT(webAddressFault(std::string(100'000, 'x') + " y").size(), 200u);
}

TEST(DemoTexts, SpeakOfThisSystemsPrograms) {
  const auto bundle = withDemoTexts(std::make_shared<ZRFakeBundle>());
  EXPECT_EQ(bundle->localizedStringForKey("Open in Safari"), "Open in Browser");
  EXPECT_EQ(bundle->localizedStringForKey("Cancel"), ZRFakeBundle().localizedStringForKey("Cancel"));
}

TEST(SessionMemory, TakesUpWhatWasKeptAndTheSampleOtherwise) {
  ZRFakeUserDefaults settings;
  SessionMemory memory(settings);
  EXPECT_EQ(memory.trip().file + memory.places(), "");
  EXPECT_EQ(memory.trip().positionSeconds, 0.0);
  memory.keepTrip({"/tmp/\xFFrive.gpx", 123.25});
  memory.keepPlaces("/tmp/places.json");
  EXPECT_EQ(memory.trip().file, "/tmp/\xFFrive.gpx");
  EXPECT_EQ(memory.trip().positionSeconds, 123.25);
  EXPECT_EQ(memory.places(), "/tmp/places.json");
  for (const char* const junk : {"", "x", "12x", "nan", "inf", "1e999"}) {
    settings.setStringForKey(junk, "trip.positionSeconds");
    EXPECT_EQ(memory.trip().positionSeconds, 0.0) << junk;
  }
}

TEST(Texts, AreForPeople) {
  EXPECT_EQ(missingServicesText({true, true, true, true}), "");
  EXPECT_EQ(missingServicesText({true, true, false, true}), "No speech here");
  EXPECT_EQ(missingServicesText({}), "No receiver, no sound, no speech and no network here");
  for (const auto& [seconds, text] :
       {std::pair(-1.0, "0:00"), std::pair(59.99, "0:59"), std::pair(700.0, "11:40"), std::pair(3723.0, "1:02:03")}) {
    EXPECT_EQ(trip::clockText(seconds), text);
  }
  trip::TripRow row;
  row.coordinate = {46.5, -7.25};
  row.smoothSpeedMetersPerSecond = -1.0;
  EXPECT_EQ(rowText(row),
            "46.50000, -7.25000\nSpeed unknown, smoothed unknown\nCourse unknown, smoothed 0°\n"
            "Receiver not settled");
  row.speedMetersPerSecond = row.smoothSpeedMetersPerSecond = 10.0;
  row.accuracyMeters = 4.4;
  row.stable = row.jump = true;
  EXPECT_EQ(rowText(row),
            "46.50000, -7.25000 ± 4 m\nSpeed 36 km/h, smoothed 36 km/h\nCourse unknown, smoothed 0°\n"
            "Receiver settled, implausible jump");
}

TEST(PlaceList, KeepsTheThreeTextsThePositionsAndTheFaults) {
  const std::string folder = ZRCORE_SAMPLES "/places/";
  const PlaceList along = loadPlaces(folder + "nominatim/along-the-drive.json");
  ASSERT_EQ(along.entries.size(), 6u);
  EXPECT_EQ(along.summary(), "6 places");
  EXPECT_EQ(along.entries[4].primary, "2 Mühleweg");
  EXPECT_EQ(along.entries[4].secondary, "Tannried, Westgau 9999, CH");
  EXPECT_EQ(along.entries[4].singleLine, "2 Mühleweg, Tannried, Westgau 9999, CH");
  ASSERT_TRUE(along.entries[4].mark);
  EXPECT_EQ(along.entries[4].mark->title, "2 Mühleweg");

  const PlaceList sparse = loadPlaces(folder + "documented/sparse.json");
  EXPECT_FALSE(sparse.entries.at(0).mark);
  EXPECT_THAT(loadPlaces(folder + "nominatim/damaged.json").summary(), testing::HasSubstr("fault"));
  EXPECT_THROW(loadPlaces(folder), place::FileError);
  EXPECT_THROW(loadPlaces(folder + "absent.json"), place::FileError);
}

class SpeechDeskTest : public testing::Test {
 protected:
  SpeechDeskTest() : installed(ZRPlatformInstall(fake.platform())) {}
  SpeechDesk desk() {
    return SpeechDesk({*ZRAudio::sharedInstance(), *fake.speech, *fake.audioSession, *fake.mainQueue,
                       [this] { return faults.lastFault(); }});
  }

  ZRFakePlatform fake;
  SpeechFaultLog faults{fake.log};
  bool installed;
};

TEST_F(SpeechDeskTest, SpeaksAsWishedAndTellsWhenTheMusicIsDucked) {
  ASSERT_TRUE(installed);
  SpeechDesk speech = desk();
  EXPECT_FALSE(speech.speak({.text = " \n"}));
  EXPECT_EQ(speech.statusText(), "Silent; no music is playing");
  fake.audioSession->otherAudioIsPlaying = true;
  EXPECT_EQ(speech.otherAudio(), SpeechDesk::OtherAudio::playing);

  ASSERT_TRUE(speech.speak({.text = "Turn right", .voice = 2, .rate = 0.7F, .volume = 0.4F}));
  ASSERT_TRUE(speech.speak({.text = "Now"}));
  EXPECT_EQ(speech.statusText(), "Speaking; the music is ducked");
  auto& synthesizer = *fake.speech->made.back();
  ASSERT_EQ(synthesizer.utterances.size(), 2u);
  EXPECT_EQ(synthesizer.utterances[0]->voice()->language(), "de-DE");
  EXPECT_EQ(synthesizer.utterances[0]->rate(), 0.7F);
  EXPECT_EQ(synthesizer.utterances[0]->volume(), 0.4F);
  EXPECT_EQ(synthesizer.utterances[1]->voice()->language(), "en-US");

  speech.speak({.text = "Stop", .interrupts = true});
  EXPECT_TRUE(synthesizer.utterances.empty());
  ASSERT_EQ(fake.speech->made.back()->utterances.size(), 1u);
  EXPECT_EQ(fake.speech->made.back()->utterances[0]->speechString(), "Stop");
  fake.speech->made.back()->finish();
  EXPECT_EQ(speech.statusText(), "Silent; music is playing");
}

TEST_F(SpeechDeskTest, SaysWhatWasNotHeardAndWhy) {
  SpeechDesk speech = desk();
  const auto synthesizer = [this]() -> ZRFakeSpeechSynthesizer& { return *fake.speech->made.back(); };
  const auto settle = [&] {
    speech.step();
    fake.mainQueue->run();
    return speech.faultText();
  };
  ASSERT_TRUE(speech.speak({.text = "Turn right"}));
  EXPECT_EQ(settle(), "") << "it is being spoken";
  synthesizer().finish();
  EXPECT_EQ(settle(), "");

  ASSERT_TRUE(speech.speak({.text = "Turn left"}));
  faults.writeLine("An utterance is not spoken: no sound server: Connection refused");
  synthesizer().utterances.clear();
  EXPECT_EQ(settle(),
            "The prompt was not heard: no sound server: Connection refused. \u201Czrcore doctor\u201D tells what is "
            "missing.");
  ASSERT_TRUE(speech.speak({.text = "Turn left"}));
  EXPECT_EQ(speech.faultText(), "") << "a new attempt";
  synthesizer().utterances.clear();
  EXPECT_THAT(settle(), testing::HasSubstr("no sound server")) << "the same cause is told to the log only once";

  speech.speak({.text = "One"});
  speech.speak({.text = "Two", .interrupts = true});
  synthesizer().finish();
  EXPECT_EQ(settle(), "") << "what was interrupted was not to be heard";
  speech.speak({.text = "Three"});
  speech.stop();
  EXPECT_EQ(settle(), "");
}

TEST_F(SpeechDeskTest, AMachineWithoutVoicesSaysSo) {
  for (const auto voices : {ZRFakeSpeech::Voices::absent, ZRFakeSpeech::Voices::throwing}) {
    fake.speech->voices = voices;
    SpeechDesk speech = desk();
    EXPECT_FALSE(speech.canSpeak());
    EXPECT_FALSE(speech.speak({.text = "Turn right"}));
    EXPECT_EQ(speech.statusText(), "This machine cannot speak");
  }
}

}  // namespace
}  // namespace demo
