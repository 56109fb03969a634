/// @file
/// Keyed archives: what an object writes of itself, and reads back.
#ifndef ZRCORE_NSCODER_H
#define ZRCORE_NSCODER_H

#include <ZRCore/ZRExport.h>

#include <map>
#include <string>
#include <string_view>

/// One object's part of an archive: values under keys. An archive that lacks a key is read without an error, because
/// archives are written by other versions and other producers too.
class ZR_EXPORT NSCoder {
 public:
  virtual ~NSCoder();

  /// Writes `value` under `key`, replacing what stood there.
  virtual void encodeDoubleForKey(double value, std::string_view key) = 0;

  /// Whether the archive has a value under `key`.
  virtual bool containsValueForKey(std::string_view key) const = 0;

  /// The value under `key`; 0.0 when there is none or it is no number.
  virtual double decodeDoubleForKey(std::string_view key) const = 0;
};

/// An archive in memory.
class ZR_EXPORT ZRMemoryCoder : public NSCoder {
 public:
  ~ZRMemoryCoder() override;
  void encodeDoubleForKey(double value, std::string_view key) override;
  bool containsValueForKey(std::string_view key) const override;
  double decodeDoubleForKey(std::string_view key) const override;

 private:
  std::map<std::string, double, std::less<>> values_;
};

#endif
