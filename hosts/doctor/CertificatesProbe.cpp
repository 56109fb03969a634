// SPDX-License-Identifier: Apache-2.0
#include <curl/curl.h>

#include <cerrno>
#include <cstring>
#include <fstream>

#include "Probes.h"

namespace doctor {

Finding CertificatesProbe::look() {
  errno = 0;
  std::ifstream file(file_);
  if (!file) {
    const bool isAbsent = errno == ENOENT;
    return {"https", isAbsent ? State::missing : State::broken,
            file_.string() + ", the certificates to trust servers by: " + std::strerror(errno),
            isAbsent ? "sudo apt-get install ca-certificates" : "sudo chmod a+r " + file_.string()};
  }
  int count = 0;
  for (std::string line; std::getline(file, line);) count += line == "-----BEGIN CERTIFICATE-----" ? 1 : 0;
  if (count == 0) {
    return {"https", State::broken, file_.string() + " holds no certificate to trust servers by",
            "sudo update-ca-certificates --fresh"};
  }
  return {"https", State::usable, std::to_string(count) + " certificates in " + file_.string(), ""};
}

std::filesystem::path certificatesOfThisSystem() {
  const char* const file = curl_version_info(CURLVERSION_NOW)->cainfo;
  return file != nullptr ? file : "/etc/ssl/certs/ca-certificates.crt";
}

}  // namespace doctor
