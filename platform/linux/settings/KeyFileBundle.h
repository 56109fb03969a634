// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_KEYFILEBUNDLE_H
#define ZRCORE_LINUX_KEYFILEBUNDLE_H

#include <ZRCore/ZRBundle.h>
#include <ZRCore/ZRPlatform.h>

#include <map>
#include <string>

/// What the host says about itself in a key file (group "Information"), its texts from gettext, and the files of the
/// framework's folder.
class KeyFileBundle final : public ZRBundle {
 public:
  struct Places {
    std::string informationFile = {};  ///< empty: the host says nothing
    std::string resourcesFolder = {};  ///< empty: nothing is packaged
    std::string textDomain = {};       ///< empty: no translations
    std::string textFolder = {};       ///< empty: where the system keeps its catalogues
  };

  /// Reads the information file, and reports to the log when it cannot.
  KeyFileBundle(Places places, ZRLog& log);

  bool hasInfoValueForKey(std::string_view key) const override;
  std::optional<std::string> infoStringForKey(std::string_view key) const override;
  std::optional<std::string> bundleIdentifier() const override;
  std::optional<std::string> localizedStringForKey(std::string_view key) const override;
  std::optional<std::string> frameworkResource(std::string_view name, std::string_view type) const override;

 private:
  void readInformation(ZRLog& log);

  Places places_;
  std::map<std::string, std::optional<std::string>, std::less<>> information_;  ///< absent: a value that is not a text
};

/// The folder of the files that were installed with this library, wherever the whole was moved to; empty when it cannot
/// be reported.
std::string installedResourcesFolder();

#endif
