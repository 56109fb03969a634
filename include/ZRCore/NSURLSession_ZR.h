// SPDX-License-Identifier: Apache-2.0
/// @file
/// Data tasks whose outcome goes to one of two callbacks, parsed, on the main queue.
#ifndef ZRCORE_NSURLSESSION_ZR_H
#define ZRCORE_NSURLSESSION_ZR_H

#include <ZRCore/NSError.h>
#include <ZRCore/NSURLSession.h>
#include <ZRCore/NSXMLParser.h>
#include <ZRCore/UIImage.h>
#include <ZRCore/ZRExport.h>
#include <ZRCore/ZROHMValue.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

/// The domain of the errors below. Its last component is "nsurlsession"; what stands before it is a setting of the
/// deployment.
ZR_EXPORT extern const char* const ZRURLSessionErrorDomain;

/// The body could not be turned into a parser: "Error parsing xml data".
inline constexpr long ZRURLSessionErrorXML = 1000;
/// The body could not be decoded: "Error parsing image data".
inline constexpr long ZRURLSessionErrorImage = 1001;

/// Each operation makes a task and does not start it: the caller resumes it, and need not hold it then. Any thread.
///
/// When the task completes, at most one of the two callbacks is called, on the main queue; an absent one is passed
/// over. A fault of the transport is a failure even when there is a body too. The HTTP status is not looked at: the
/// body of a 404 is a success of the plain operation (the response has the status). The other
/// operations parse the body, in the same turn of the main queue and also when there is no success callback, and fail
/// when that fails. Parsing blocks the main queue for its time, so a body that is parsed must not be longer than
/// `ZRPlatform::longestParsedBodyBytes`: a longer one fails as one that the transport cut off
/// (NSURLErrorDataLengthExceedsMaximum).
///
/// Without a session (null) there is no task (null).
namespace NSURLSession_ZR {

using Response = std::shared_ptr<const NSURLResponse>;  ///< may be absent
using DataSuccess = std::function<void(const Response& response, std::optional<NSData> body)>;
using JSONSuccess = std::function<void(const Response& response, ZROHMValue document)>;
using ImageSuccess = std::function<void(const Response& response, std::shared_ptr<const UIImage> image)>;
/// The parser is not started.
using XMLParserSuccess = std::function<void(const Response& response, std::shared_ptr<NSXMLParser> parser)>;
/// The error is absent only when a JSON service read nothing and said no reason.
using Failure = std::function<void(const Response& response, const std::optional<NSError>& error)>;
using Task = std::shared_ptr<NSURLSessionDataTask>;

/// Hands over the body as it came: absent when none came.
ZR_EXPORT Task dataTaskWithRequestSuccessFailure(NSMutableURLRequest request, DataSuccess success, Failure failure);
ZR_EXPORT Task dataTaskWithSessionRequestSuccessFailure(const std::shared_ptr<NSURLSession>& session,
                                                        NSMutableURLRequest request, DataSuccess success,
                                                        Failure failure);

/// Reads the body as a JSON document, which must be an object or an array. Failures keep the JSON service's error. An
/// absent body is read as an empty one, and fails.
ZR_EXPORT Task jsonDataTaskWithRequestSuccessFailure(NSMutableURLRequest request, JSONSuccess success, Failure failure);
ZR_EXPORT Task jsonDataTaskWithSessionRequestSuccessFailure(const std::shared_ptr<NSURLSession>& session,
                                                            NSMutableURLRequest request, JSONSuccess success,
                                                            Failure failure);

/// Decodes the body as a picture; fails with ZRURLSessionErrorImage.
ZR_EXPORT Task imageDataTaskWithRequestSuccessFailure(NSMutableURLRequest request, ImageSuccess success,
                                                      Failure failure);
ZR_EXPORT Task imageDataTaskWithSessionRequestSuccessFailure(const std::shared_ptr<NSURLSession>& session,
                                                             NSMutableURLRequest request, ImageSuccess success,
                                                             Failure failure);

/// Makes an XML parser over the body; fails with ZRURLSessionErrorXML when there is none, or no byte to parse. Whether
/// the body is well formed shows only when the parser is started.
ZR_EXPORT Task xmlParserDataTaskWithRequestSuccessFailure(NSMutableURLRequest request, XMLParserSuccess success,
                                                          Failure failure);
ZR_EXPORT Task xmlParserDataTaskWithSessionRequestSuccessFailure(const std::shared_ptr<NSURLSession>& session,
                                                                 NSMutableURLRequest request, XMLParserSuccess success,
                                                                 Failure failure);

/// An error in ZRURLSessionErrorDomain, with `description` as its sentence for people.
ZR_EXPORT NSError errorWithErrorCodeDescription(long code, std::string description);

}  // namespace NSURLSession_ZR

#endif
