// SPDX-License-Identifier: Apache-2.0
/// @file
/// Keyed archives: what an object writes of itself, and reads back.
#ifndef ZRCORE_NSCODER_H
#define ZRCORE_NSCODER_H

#include <ZRCore/NSObject.h>
#include <ZRCore/ZRExport.h>
#include <ZRCore/ZROHMValue.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class NSCoder;

/// How an object answers that it can be archived. Its type's descriptor says how one is made from an archive
/// (`initWithCoder`).
class ZR_EXPORT NSCoding {
 public:
  virtual ~NSCoding();
  virtual void encodeWithCoder(NSCoder& coder) const = 0;
};

/// The types whose objects may be read from an archive.
using ZRArchivableClasses = std::vector<const ZROHMClassInfo*>;

/// One object's part of an archive: values under keys. An archive that lacks a key is read without an error, because
/// archives are written by other versions and other producers too.
class ZR_EXPORT NSCoder {
 public:
  virtual ~NSCoder();

  /// @name Writing
  /// A value replaces what stood under its key.
  /// @{
  virtual void encodeDoubleForKey(double value, std::string_view key) = 0;
  virtual void encodeInt32ForKey(std::int32_t value, std::string_view key) = 0;
  virtual void encodeInt64ForKey(std::int64_t value, std::string_view key) = 0;
  virtual void encodeBoolForKey(bool value, std::string_view key) = 0;
  /// An absent text is contained and reads as absent.
  virtual void encodeStringForKey(const std::optional<std::string>& value, std::string_view key) = 0;
  /// An absent object is contained and reads as absent; so does one that is not archivable (no NSCoding), or that lies
  /// more than 100 objects deep.
  virtual void encodeObjectForKey(const std::shared_ptr<const NSObject>& object, std::string_view key) = 0;

  /// @}

  /// Whether the archive has a value under `key`.
  virtual bool containsValueForKey(std::string_view key) const = 0;

  /// @name Reading
  /// A missing key, or a value of another kind, reads as 0, false or absent; a number converts to the type
  /// asked for (without its fraction; beyond the range, the nearest limit; NaN as 0).
  /// @{
  virtual double decodeDoubleForKey(std::string_view key) const = 0;
  virtual std::int32_t decodeInt32ForKey(std::string_view key) const = 0;
  virtual std::int64_t decodeInt64ForKey(std::string_view key) const = 0;
  virtual bool decodeBoolForKey(std::string_view key) const = 0;
  virtual std::optional<std::string> decodeStringForKey(std::string_view key) const = 0;
  /// The object under `key`, when its class is one of those that may be read from this archive.
  virtual std::shared_ptr<NSObject> decodeObjectForKey(std::string_view key) const = 0;
  /// @}
};

/// An archive in memory: a dictionary of plain values. A nested object is a dictionary of its own, with the name of its
/// class under "class", which no object should use itself. Infinities and NaN are the texts "Infinity", "-Infinity" and
/// "NaN", so that every archive can be written as a document.
class ZR_EXPORT ZRMemoryCoder : public NSCoder {
 public:
  /// An empty archive; `classes` may be read from it.
  explicit ZRMemoryCoder(ZRArchivableClasses classes = {});
  /// An archive that was written before.
  ZRMemoryCoder(ZROHMDictionary values, ZRArchivableClasses classes);
  ~ZRMemoryCoder() override;

  void encodeDoubleForKey(double value, std::string_view key) override;
  void encodeInt32ForKey(std::int32_t value, std::string_view key) override;
  void encodeInt64ForKey(std::int64_t value, std::string_view key) override;
  void encodeBoolForKey(bool value, std::string_view key) override;
  void encodeStringForKey(const std::optional<std::string>& value, std::string_view key) override;
  void encodeObjectForKey(const std::shared_ptr<const NSObject>& object, std::string_view key) override;
  bool containsValueForKey(std::string_view key) const override;
  double decodeDoubleForKey(std::string_view key) const override;
  std::int32_t decodeInt32ForKey(std::string_view key) const override;
  std::int64_t decodeInt64ForKey(std::string_view key) const override;
  bool decodeBoolForKey(std::string_view key) const override;
  std::optional<std::string> decodeStringForKey(std::string_view key) const override;
  std::shared_ptr<NSObject> decodeObjectForKey(std::string_view key) const override;

  /// What was written.
  const ZROHMDictionary& values() const { return values_; }

 private:
  ZROHMValue archived(const NSObject* object) const;
  const ZROHMClassInfo* classOf(const ZROHMDictionary& values) const;
  void put(ZROHMValue value, std::string_view key);
  const ZROHMValue& valueFor(std::string_view key) const;

  ZROHMDictionary values_;
  ZRArchivableClasses classes_;
  int depth_ = 0;
};

#endif
