// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_COMMANDTEXT_H
#define ZRCORE_HOSTS_ZRCORE_COMMANDTEXT_H

#include <string>
#include <vector>

// What a program's help says, for whatever else shows it: manual pages, completion.

/// What completion offers for a value.
struct Offer {
  enum class What { nothing, file, folder, recording, places, sound, voice, command };

  std::string word = {};      ///< such as "sound", or "wav:" with something behind it
  What then = What::nothing;  ///< behind the word
};

namespace offer {

inline const std::vector<Offer> kFile{{"", Offer::What::file}};
inline const std::vector<Offer> kFolder{{"", Offer::What::folder}};
inline const std::vector<Offer> kRecording{{"", Offer::What::recording}};
inline const std::vector<Offer> kPlaces{{"", Offer::What::places}};
inline const std::vector<Offer> kVoice{{"", Offer::What::voice}};
inline const std::vector<Offer> kSoundTarget{{"sound"}, {"wav:", Offer::What::sound}};
inline const std::vector<Offer> kSource{
    {"auto"}, {"geoclue"}, {"gpsd"}, {"gpsd:"}, {"nmea:", Offer::What::file}, {"file:", Offer::What::recording}};

}  // namespace offer

struct OptionText {
  std::vector<std::string> names = {};  ///< with their dashes; none: an argument
  std::string head = {};                ///< as the help writes it: "--filter NAME:{documented,measured}"
  std::string description = {};
  bool takesValue = false;
  std::vector<Offer> offers = {};
};

struct CommandText {
  std::string name;  ///< with the program's before it: "zrcore trip"
  std::string description;
  std::string usage;
  std::string footer;
  std::vector<OptionText> options;
};

#endif
