// SPDX-License-Identifier: Apache-2.0
/// @file
/// The services of a Linux system: link ZRCore::Linux beside ZRCore::ZRCore and install what `makeLinuxPlatform` makes.
///
///     ZRLinuxOptions options;
///     options.informationFile = "/usr/share/maps/maps.information";
///     if (!ZRPlatformInstall(makeLinuxPlatform(options))) …  // too late: a platform is in use
///
/// All services work on one GLib main context, in the thread that iterates it, and start no threads.
#ifndef ZRCORE_ZRLINUXPLATFORM_H
#define ZRCORE_ZRLINUXPLATFORM_H

#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRLinuxSound.h>
#include <ZRCore/ZRPlatform.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

extern "C" {
struct _GMainContext;
}

/// Where the log's lines go.
enum class ZRLinuxLog {
  automatic,      ///< to the journal when the standard error stream leads there, else to that stream
  standardError,  ///< to the standard error stream
  journal,        ///< to the journal; what it does not take, to the standard error stream
};

/// What a host may say about its platform. Members left alone have the values given here.
struct ZRLinuxOptions {
  /// The size of the structure that the host was built with. A library that knows more options takes the others from
  /// its own defaults. Not to be changed.
  std::uint32_t size = sizeof(ZRLinuxOptions);

  /// The main context (a `GMainContext*`) whose thread is the main thread; null for the process's default context.
  struct _GMainContext* mainContext = nullptr;

  /// The longest body that a request of `httpSession` may be answered with, unpacked. A longer one is a failure with
  /// NSURLErrorDataLengthExceedsMaximum.
  std::uint64_t longestBodyBytes = 64ULL << 20;

  /// The application's information dictionary: a key file with the group [Information], where texts stand under
  /// `CFBundleIdentifier`, `CFBundleVersion`, `ZRApplicationKey`, `NSLocationWhenInUseUsageDescription`,
  /// `NSLocationAlwaysUsageDescription` and keys of the host's own. Empty: the application says nothing. What has no
  /// identifier has no stored settings and no identifier for its vendor.
  std::string informationFile;
  /// The folder of the files packaged with the framework; empty: the one they were installed to with this library.
  std::string resourcesFolder;
  /// The gettext domain of the host's translations, whose keys are the English texts; empty: none. The language is that
  /// of the process's locale, which the host sets (`setlocale`).
  std::string textDomain;
  /// The folder of the domain's catalogues; empty: the system's.
  std::string textFolder;

  /// The folder of the settings' files, one an application; empty: ZRCore in the user's folder for settings
  /// ($XDG_CONFIG_HOME).
  std::string settingsFolder;
  /// Under which the system's own files are looked for (etc/machine-id, etc/os-release, etc/locale.conf, the journal's
  /// socket).
  std::string rootFolder = "/";

  /// The most pixels (width times height) that a picture may have; files that declare more are not decoded. Four bytes
  /// of memory each, and as many again while decoding, six more for a progressive JPEG. What takes a decoder longer may
  /// have fewer of them: a GIF half, an interlaced PNG 70 %, a progressive JPEG of n scans (64 at most) 7 / (2 n + 4).
  std::uint64_t largestImagePixels = std::uint64_t{1} << 25U;

  ZRLinuxLog log = ZRLinuxLog::automatic;

  /// How sound is made and where it goes; null for the default engine and the session's sound server.
  std::shared_ptr<const ZRLinuxSoundOptions> sound;

  /// Where positions come from:
  /// - `auto`: gpsd on this machine if it answers, else GeoClue; the one that answered first stays for a whole run.
  /// - `gpsd`, `gpsd:HOST`, `gpsd:HOST:PORT`, `gpsd:/PATH`: a gpsd, over TCP or its UNIX socket.
  /// - `geoclue`: the desktop's location service; the user may be asked.
  /// - `nmea:PATH`: a receiver on a serial device (at the speed that the device is set to), a FIFO or a UNIX socket.
  /// - `file:PATH`: a recording (GPX, NMEA 0183, gpsd JSON lines, CSV), replayed at its own speed.
  /// What goes wrong comes as `locationManager:didFailWithError:`, once for each change, while the manager goes on
  /// trying.
  std::string positioning = "auto";

  /// The desktop id by which GeoClue, and the user, know this application: the name of its .desktop file, without that
  /// ending.
  std::string desktopId = "zrcore";

  /// The most values that a JSON or XML document may have (ZRDocumentLimits.h). A document with more is an error of
  /// ZRDocumentErrorDomain.
  std::uint64_t mostDocumentValues = ZRMostDocumentValues;

  /// Passes over positions that gpsd, a receiver or a recording calls worked out, not measured: by dead reckoning or a
  /// simulator.
  bool leavesOutEstimates = false;
  /// Mends the dates of receivers whose week counter has rolled over: 1024 weeks are added as often as the date then
  /// still lies before the clock's. Unasked, the log says when a live receiver's date lies more than ten years back.
  bool repairsWeekRollover = false;

  /// How long a request may take in all, however much comes meanwhile: then it fails with NSURLErrorTimedOut. 0: no
  /// limit but that on silence (`NSMutableURLRequest::timeoutSeconds`).
  double longestRequestSeconds = 0.0;
  /// How many connections to one host there are at once; further requests wait for one of them. 0: no limit. Over
  /// HTTP/2 requests share a connection.
  std::uint32_t mostConnectionsPerHost = 6;
  /// The certificates (a PEM file) of those whose word for an https server counts; empty: the system's. For hosts whose
  /// servers are vouched for by somebody of their own, and nobody else.
  std::string certificatesFile;
};

/// Fills the members of `platform` that its `size` reaches. Called by `makeLinuxPlatform`.
ZR_EXPORT void ZRFillLinuxPlatform(ZRPlatform& platform, const ZRLinuxOptions& options);

/// The services of this system, of the shape that the host's own compilation knows.
inline ZRPlatform makeLinuxPlatform(const ZRLinuxOptions& options = {}) {
  ZRPlatform platform;
  ZRFillLinuxPlatform(platform, options);
  return platform;
}

/// Positions alone, for a host that lets its user choose where they come from: `mainContext`, `positioning`,
/// `desktopId`, `leavesOutEstimates` and `repairsWeekRollover` of the options count. Log and clock are those of the
/// platform in use. Main thread.
[[nodiscard]] ZR_EXPORT std::shared_ptr<ZRPositioning> ZRMakeLinuxPositioning(const ZRLinuxOptions& options);

/// What moves an application to the background and back.
struct ZRLinuxLife {
  std::uint32_t size = sizeof(ZRLinuxLife);     ///< as in ZRLinuxOptions
  struct _GMainContext* mainContext = nullptr;  ///< as in ZRLinuxOptions

  /// The terminal's stop (Ctrl-Z, SIGTSTP) and SIGCONT, for command line tools: the notification is posted, then the
  /// process stops. Signals have one owner: one following of a process at a time may do so.
  bool followsTerminal = true;
  /// The system's sleep, as logind reports it.
  bool followsSleep = true;
  /// After how long without a visible window (`ZRLifeFollowing::setWindowSeen`) the application counts as in the
  /// background. A switch between two windows, when one opens as another closes, is shorter and does not count.
  double windowPatienceSeconds = 5.0;
};

/// Follows an application's life until it is released. Main thread.
class ZR_EXPORT ZRLifeFollowing {
 public:
  virtual ~ZRLifeFollowing();
  /// For hosts with windows: whether any is active or visible now. Until the first call there need be none.
  virtual void setWindowSeen(bool isSeen) = 0;
};

/// Posts UIApplicationDidEnterBackgroundNotification and UIApplicationWillEnterForegroundNotification to the
/// notification centre of the platform in use, once for each change, however many reasons there are for it. Main
/// thread.
/// @return keep it: with its release the following ends.
[[nodiscard]] ZR_EXPORT std::shared_ptr<ZRLifeFollowing> ZRFollowLinuxLife(const ZRLinuxLife& life = {});

/// Iterates a main context until `isDone` says so, for hosts that have no loop of their own. Main thread, and not from
/// inside what the main queue runs: nothing else of the queue runs before that has returned.
///
/// What a host's callback throws meanwhile comes out of here, once the iteration is over; the loop may be run again. In
/// a host's own loop it ends the process, because C code stands in between.
/// @param isDone   asked before each iteration, which waits until something happens.
/// @param context  a `GMainContext*`; null for the process's default context.
ZR_EXPORT void ZRRunLinuxLoopUntil(const std::function<bool()>& isDone, struct _GMainContext* context = nullptr);

/// The same, for `seconds` at the most. @return whether `isDone` said so.
ZR_EXPORT bool ZRRunLinuxLoopFor(double seconds, const std::function<bool()>& isDone,
                                 struct _GMainContext* context = nullptr);

#endif
