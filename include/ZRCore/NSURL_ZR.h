// SPDX-License-Identifier: Apache-2.0
/// @file
/// Addresses from a base, a path and parameters. Any thread.
#ifndef ZRCORE_NSURL_ZR_H
#define ZRCORE_NSURL_ZR_H

#include <ZRCore/NSURL.h>
#include <ZRCore/ZRExport.h>
#include <ZRCore/ZROHMValue.h>

#include <optional>
#include <string>
#include <string_view>

namespace NSURL_ZR {

/// `base` and `path` joined (`NSString_ZR::stringWithBaseUrlStringPath`) and, when there are parameters, "?" (unless
/// the joined text ends in one) and "key=value" pairs with "&" between them, in the dictionary's order. Values become
/// text by `unescapedObject`; keys and values are escaped. The base is not, because it may be escaped already. Only its
/// last character is looked at: a base that has a query already gets a second "?".
/// @return absent when the URL parser rejects the text (`NSURL::URLWithString`), for instance for a stray "%", and when
///         a key or value is not UTF-8.
ZR_EXPORT std::optional<NSURL> urlWithBaseUrlStringPathParameters(std::string_view base,
                                                                  std::optional<std::string_view> path,
                                                                  const ZROHMDictionary& parameters = {});

/// A value as text, unescaped: a text as it is, a number in decimal (booleans as 1 and 0), anything else its
/// description.
ZR_EXPORT std::string unescapedObject(const ZROHMValue& object);

}  // namespace NSURL_ZR

#endif
