// SPDX-License-Identifier: Apache-2.0
#include "DataTasks.h"

#include <new>
#include <string_view>
#include <utility>
#include <variant>

using NSURLSession_ZR::Failure;
using NSURLSession_ZR::Response;
using NSURLSession_ZR::Task;

namespace {

NSError tooLong(std::size_t bytes, std::uint64_t longestBytes) {
  return {NSURLErrorDomain,
          NSURLErrorDataLengthExceedsMaximum,
          {{NSLocalizedDescriptionKey, "The body has " + std::to_string(bytes) + " bytes, and no more than " +
                                           std::to_string(longestBytes) +
                                           " are parsed: ask for less, or raise the platform's limit."}}};
}

/// What `parse` makes of the body; absent where there is no memory for that. One body too many is its request's
/// failure, not the program's.
template <class Parse>
auto parsedWithin(Parse parse) -> std::optional<decltype(parse())> {
  try {
    return parse();
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

std::string_view bytesOf(const std::optional<NSData>& body) { return body ? std::string_view(*body) : ""; }

NSError noMemory() {
  return {
      NSURLErrorDomain,
      NSURLErrorUnknown,
      {{NSLocalizedDescriptionKey, "There is no memory for what the body says: close something, or ask for less."}}};
}

}  // namespace

Task DataTasks::data(const std::shared_ptr<NSURLSession>& session, NSMutableURLRequest request,
                     NSURLSession_ZR::DataSuccess success, Failure failure) const {
  if (!session) return nullptr;
  auto completion = [queue = platform_.mainQueue, success = std::move(success), failure = std::move(failure)](
                        std::optional<NSData> body, Response response, std::optional<NSError> error) mutable {
    if (error) {
      if (!failure) return;
      queue->post([failure = std::move(failure), response = std::move(response), error = std::move(error)] {
        failure(response, error);
      });
    } else if (success) {
      queue->post([success = std::move(success), response = std::move(response), body = std::move(body)]() mutable {
        success(response, std::move(body));
      });
    }
  };
  return session->dataTaskWithRequest(std::move(request), std::move(completion));
}

Task DataTasks::parsed(const std::shared_ptr<NSURLSession>& session, NSMutableURLRequest request,
                       NSURLSession_ZR::DataSuccess parse, Failure failure) const {
  auto parseWithinLimit = [longest = platform_.longestParsedBodyBytes, parse = std::move(parse), failure](
                              const Response& response, std::optional<NSData> body) {
    if (!body || body->size() <= longest) return parse(response, std::move(body));
    if (failure) failure(response, tooLong(body->size(), longest));
  };
  return data(session, std::move(request), std::move(parseWithinLimit), std::move(failure));
}

Task DataTasks::json(const std::shared_ptr<NSURLSession>& session, NSMutableURLRequest request,
                     NSURLSession_ZR::JSONSuccess success, Failure failure) const {
  auto parse = [json = platform_.json, success = std::move(success), failure](const Response& response,
                                                                              std::optional<NSData> body) {
    auto parsed = parsedWithin([&] { return json->valueFromJSON(bytesOf(body), ZRJSONFragments::refused); });
    if (!parsed) parsed = noMemory();
    auto* const document = std::get_if<ZROHMValue>(&*parsed);
    if (document && !document->isNull()) {
      if (success) success(response, std::move(*document));
    } else if (failure) {
      failure(response, document ? std::nullopt : std::optional(std::get<NSError>(*std::move(parsed))));
    }
  };
  return parsed(session, std::move(request), std::move(parse), std::move(failure));
}

Task DataTasks::image(const std::shared_ptr<NSURLSession>& session, NSMutableURLRequest request,
                      NSURLSession_ZR::ImageSuccess success, Failure failure) const {
  auto decode = [images = platform_.images, success = std::move(success), failure](const Response& response,
                                                                                   std::optional<NSData> body) {
    auto image = parsedWithin([&] { return images->imageWithData(bytesOf(body)); }).value_or(nullptr);
    if (image) {
      if (success) success(response, std::move(image));
    } else if (failure) {
      failure(response,
              NSURLSession_ZR::errorWithErrorCodeDescription(ZRURLSessionErrorImage, "Error parsing image data"));
    }
  };
  return parsed(session, std::move(request), std::move(decode), std::move(failure));
}

Task DataTasks::xmlParser(const std::shared_ptr<NSURLSession>& session, NSMutableURLRequest request,
                          NSURLSession_ZR::XMLParserSuccess success, Failure failure) const {
  auto makeParser = [xml = platform_.xml, success = std::move(success), failure](const Response& response,
                                                                                 std::optional<NSData> body) {
    // A parser over no bytes could only fail, and later.
    auto parser = body && !body->empty() ? xml->parserWithData(*std::move(body)) : nullptr;
    if (parser) {
      if (success) success(response, std::move(parser));
    } else if (failure) {
      failure(response, NSURLSession_ZR::errorWithErrorCodeDescription(ZRURLSessionErrorXML, "Error parsing xml data"));
    }
  };
  return parsed(session, std::move(request), std::move(makeParser), std::move(failure));
}
