#include <ZRCore/NSCoder.h>

NSCoder::~NSCoder() = default;
ZRMemoryCoder::~ZRMemoryCoder() = default;

void ZRMemoryCoder::encodeDoubleForKey(double value, std::string_view key) {
  values_.insert_or_assign(std::string(key), value);
}

bool ZRMemoryCoder::containsValueForKey(std::string_view key) const { return values_.contains(key); }

double ZRMemoryCoder::decodeDoubleForKey(std::string_view key) const {
  const auto found = values_.find(key);
  return found != values_.end() ? found->second : 0.0;
}
