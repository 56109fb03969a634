// SPDX-License-Identifier: Apache-2.0
// The bodies that cost the most to parse within the limits of makeLinuxPlatform: for each its length, the time that it
// holds the main queue for, its release included, and the most memory that the process takes. Each is parsed in a
// process of its own. What is well formed and dear must be refused or end in time; the last line says whether all did.
#include <ZRCore/ZRLinuxPlatform.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>

#include "CollidingTexts.h"
#include "HostilePictures.h"

namespace {

constexpr std::size_t kLongest = ZRLongestParsedBodyBytes;
constexpr double kMostSeconds = 0.5, kMostJSONMebibytes = 128.0;

std::string repeated(const std::string& begin, const std::string& part, const std::string& end,
                     std::size_t most = kLongest) {
  std::string text = begin;
  text.reserve(kLongest + end.size());
  while (most-- > 0 && text.size() + part.size() + end.size() <= kLongest) text += part;
  return text + end;
}

std::string objectOf(const std::vector<std::string>& keys) {
  std::string text = "{";
  for (const std::string& key : keys) text.append(text.size() > 1 ? "," : "").append("\"" + key + "\":1");
  return text + "}";
}

std::string attributes() {
  std::string text = "<a";
  for (int i = 0; text.size() < kLongest - 20; ++i) text += " a" + std::to_string(i) + "=''";
  return text + "/>";
}

struct Cost {
  double seconds = 0.0, mebibytes = 0.0;
  char verdict[80] = {};
};

enum class Kind { json, xml, picture };

struct Listener : NSXMLParserDelegate {};

/// What a data task does with a body on the main queue.
std::string parse(const ZRPlatform& platform, Kind kind, const std::string& body) {
  const auto says = [](const std::optional<NSError>& error) { return error ? error->localizedDescription() : "read"; };
  if (body.size() > platform.longestParsedBodyBytes) return "longer than what is parsed";
  if (kind == Kind::json) {
    const auto read = platform.json->valueFromJSON(body, ZRJSONFragments::refused);
    const auto* const error = std::get_if<NSError>(&read);
    return says(error ? std::optional(*error) : std::nullopt);
  }
  if (kind == Kind::xml) {
    const auto listener = std::make_shared<Listener>();
    const auto parser = platform.xml->parserWithData(body);
    parser->setDelegate(listener);
    parser->parse();
    return says(parser->parserError());
  }
  return platform.images->imageWithData(body) ? "decoded" : "refused";
}

/// Nothing waits for anything here, so that this is how long the main queue stands still on an idle machine.
double processorSeconds() { return static_cast<double>(clock()) / CLOCKS_PER_SEC; }

Cost costOf(Kind kind, const std::string& body) {
  int ends[2];
  if (pipe(ends) != 0) return {};
  const pid_t child = fork();
  if (child == 0) {
    const ZRPlatform platform = makeLinuxPlatform();
    Cost cost;
    const double begin = processorSeconds();
    std::snprintf(cost.verdict, sizeof cost.verdict, "%s", parse(platform, kind, body).c_str());
    cost.seconds = processorSeconds() - begin;
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    cost.mebibytes = static_cast<double>(usage.ru_maxrss) / 1024.0;
    _exit(write(ends[1], &cost, sizeof cost) == sizeof cost ? 0 : 1);
  }
  close(ends[1]);
  Cost cost;
  if (read(ends[0], &cost, sizeof cost) != sizeof cost) std::strcpy(cost.verdict, "the process ended");
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  return cost;
}

bool isEveryCostBearable = true;

Cost show(const char* what, Kind kind, const std::string& body) {
  Cost cost = costOf(kind, body);
  for (int i = 0; i < 2; ++i) {
    const Cost again = costOf(kind, body);
    if (again.seconds < cost.seconds) cost = again;  // what else runs on the machine is not the body's cost
  }
  const bool isBearable = cost.seconds <= kMostSeconds && (kind != Kind::json || cost.mebibytes <= kMostJSONMebibytes);
  isEveryCostBearable &= isBearable;
  std::printf("| %s%s | %zu | %.3f | %.0f | %s |\n", isBearable ? "" : "TOO DEAR: ", what, body.size(), cost.seconds,
              cost.mebibytes, cost.verdict);
  std::fflush(stdout);
  return cost;
}

void showJSON() {
  std::vector<std::string> keys;
  std::string nine = "{", digits(760, '7');
  for (char key = 'a'; key < 'j'; ++key) nine.append(key > 'a' ? "," : "").append({'"', key, '"'}).append(":\"x\"");
  show("empty objects", Kind::json, repeated("[", "{},", "0]"));
  show("objects of one text, as many as may be", Kind::json, repeated("[", "{\"a\":\"x\"},", "0]", 333'000));
  show("objects of nine texts", Kind::json, repeated("[", nine + "},", "0]"));
  show("objects of nine texts, as many as may be", Kind::json, repeated("[", nine + "},", "0]", 52'600));
  show("arrays of one number, as many as may be", Kind::json, repeated("[", "[1],", "0]", 499'000));
  show("texts, as many as may be", Kind::json, repeated("[", "\"x\",", "0]", 999'990));
  show("texts too long for their place", Kind::json, repeated("[", "\"0123456789abcdef\",", "0]"));
  show("one text of escapes", Kind::json, repeated("[\"", "\\u00e9", "\"]"));
  show("numbers of 760 digits", Kind::json, repeated("[", "0." + digits + "e-300,", "0]"));
  show("numbers of 60,000 digits", Kind::json, repeated("[", "0." + std::string(60'000, '7') + "e-300,", "0]"));
  show("ten thousand levels, again and again", Kind::json,
       repeated("[", std::string(9'990, '[') + std::string(9'990, ']') + ",", "0]"));
  show("blanks", Kind::json, repeated("[", " ", "x]"));
  constexpr std::size_t kCount = 100'000;
  for (std::size_t i = 0; i < kCount; ++i) keys.push_back(std::to_string(1'000'000'000'000'000 + i * 7919));
  const Cost ordinary = show("100,000 ordinary keys", Kind::json, objectOf(keys));
  const Cost flooded = show("100,000 keys of one hash elsewhere", Kind::json, objectOf(collidingTexts(kCount)));
  const double ratio = flooded.seconds / ordinary.seconds;
  isEveryCostBearable &= ratio <= 1.5;
  std::printf("| chosen keys cost %.2f times what ordinary ones do | | | | |\n", ratio);
}

void showXML() {
  show("elements", Kind::xml, repeated("<a>", "<b/>", "</a>"));
  show("attributes of one element", Kind::xml, attributes());
  show("elements with an attribute", Kind::xml, repeated("<a>", "<b c=''/>", "</a>"));
  show("sections of a character", Kind::xml, repeated("<a>", "<![CDATA[x]]>", "</a>"));
  show("characters by number", Kind::xml, repeated("<a>", "&#65;", "</a>"));
  show("an entity again and again", Kind::xml,
       repeated("<!DOCTYPE a [<!ENTITY e '" + std::string(60'000, 'x') + "'>]><a>", "&e;", "</a>"));
  show("a short entity again and again", Kind::xml, repeated("<!DOCTYPE a [<!ENTITY e 'xxxxxx'>]><a>", "&e;", "</a>"));
  show("one long attribute", Kind::xml, repeated("<a b='", "x", "'/>"));
  show("levels", Kind::xml, repeated("<a>", "<b>", ""));
}

void showPictures() {
  constexpr unsigned kWidest = 8192, kHighest = 4096;  // 2^25 pixels
  show("JPEG, grey, a scan more", Kind::picture, progressiveJPEG(kWidest, 3584, 1));
  show("JPEG, in colours, a scan more", Kind::picture, progressiveJPEG(kWidest, 3584, 1, 3));
  show("JPEG, in colours, 9 scans more, 10 million pixels", Kind::picture, progressiveJPEG(4096, 2388, 9, 3));
  show("JPEG, in colours, 63 scans more, 2 million pixels", Kind::picture, progressiveJPEG(2048, 868, 63, 3));
  show("JPEG, grey, 1,000 scans more", Kind::picture, progressiveJPEG(kWidest, kHighest, 1000));
  show("PNG", Kind::picture, blackPNG(kWidest, kHighest));
  show("PNG, interlaced", Kind::picture, blackPNG(kWidest, 2867, true));
  show("PNG, 512 pixels wide", Kind::picture, blackPNG(512, 65'535));
  show("PNG, 358 pixels wide, interlaced", Kind::picture, blackPNG(358, 65'535, true));
  show("PNG, one pixel, 200 packed texts", Kind::picture, blackPNG(1, 1, false, pngTexts(200, 7'900'000)));
  show("PNG, one pixel, empty parts", Kind::picture,
       blackPNG(1, 1, false, repeated("", pngChunk("IDAT", ""), "").substr(0, kLongest - 200 - kLongest % 12)));
  show("GIF", Kind::picture, blackGIF(kWidest, 1792, 1));
  show("GIF, 60 images", Kind::picture, blackGIF(kWidest, 1792, 60));
}

}  // namespace

int main() {
  std::printf("| body | bytes | seconds | MiB | verdict |\n|---|---|---|---|---|\n");
  showJSON();
  showXML();
  showPictures();
  std::printf("\n%s\n", isEveryCostBearable ? "No body costs too much." : "Some body costs too much.");
  return isEveryCostBearable ? 0 : 1;
}
