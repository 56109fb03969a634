// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSURLSession_ZR.h>
#include <ZRCore/ZRPlatform.h>

#include <utility>

#include "DataTasks.h"
#include "Deployment.h"

const char* const ZRURLSessionErrorDomain = deployment::kURLSessionErrorDomain;

namespace NSURLSession_ZR {

Task dataTaskWithRequestSuccessFailure(NSMutableURLRequest request, DataSuccess success, Failure failure) {
  return dataTaskWithSessionRequestSuccessFailure(NSURLSession::sharedSession(), std::move(request), std::move(success),
                                                  std::move(failure));
}

Task dataTaskWithSessionRequestSuccessFailure(const std::shared_ptr<NSURLSession>& session, NSMutableURLRequest request,
                                              DataSuccess success, Failure failure) {
  return DataTasks(ZRPlatformInUse()).data(session, std::move(request), std::move(success), std::move(failure));
}

Task jsonDataTaskWithRequestSuccessFailure(NSMutableURLRequest request, JSONSuccess success, Failure failure) {
  return jsonDataTaskWithSessionRequestSuccessFailure(NSURLSession::sharedSession(), std::move(request),
                                                      std::move(success), std::move(failure));
}

Task jsonDataTaskWithSessionRequestSuccessFailure(const std::shared_ptr<NSURLSession>& session,
                                                  NSMutableURLRequest request, JSONSuccess success, Failure failure) {
  return DataTasks(ZRPlatformInUse()).json(session, std::move(request), std::move(success), std::move(failure));
}

Task imageDataTaskWithRequestSuccessFailure(NSMutableURLRequest request, ImageSuccess success, Failure failure) {
  return imageDataTaskWithSessionRequestSuccessFailure(NSURLSession::sharedSession(), std::move(request),
                                                       std::move(success), std::move(failure));
}

Task imageDataTaskWithSessionRequestSuccessFailure(const std::shared_ptr<NSURLSession>& session,
                                                   NSMutableURLRequest request, ImageSuccess success, Failure failure) {
  return DataTasks(ZRPlatformInUse()).image(session, std::move(request), std::move(success), std::move(failure));
}

Task xmlParserDataTaskWithRequestSuccessFailure(NSMutableURLRequest request, XMLParserSuccess success,
                                                Failure failure) {
  return xmlParserDataTaskWithSessionRequestSuccessFailure(NSURLSession::sharedSession(), std::move(request),
                                                           std::move(success), std::move(failure));
}

Task xmlParserDataTaskWithSessionRequestSuccessFailure(const std::shared_ptr<NSURLSession>& session,
                                                       NSMutableURLRequest request, XMLParserSuccess success,
                                                       Failure failure) {
  return DataTasks(ZRPlatformInUse()).xmlParser(session, std::move(request), std::move(success), std::move(failure));
}

NSError errorWithErrorCodeDescription(long code, std::string description) {
  return {ZRURLSessionErrorDomain, code, {{NSLocalizedDescriptionKey, std::move(description)}}};
}

}  // namespace NSURLSession_ZR
