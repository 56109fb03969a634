// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_SERVICES_DATATASKS_H
#define ZRCORE_SERVICES_DATATASKS_H

#include <ZRCore/NSURLSession_ZR.h>
#include <ZRCore/ZRPlatform.h>

/// The operations of NSURLSession_ZR over the services of a given platform. The tasks hold the services that they need.
class DataTasks {
 public:
  explicit DataTasks(const ZRPlatform& platform) : platform_(platform) {}

  NSURLSession_ZR::Task data(const std::shared_ptr<NSURLSession>& session, NSMutableURLRequest request,
                             NSURLSession_ZR::DataSuccess success, NSURLSession_ZR::Failure failure) const;
  NSURLSession_ZR::Task json(const std::shared_ptr<NSURLSession>& session, NSMutableURLRequest request,
                             NSURLSession_ZR::JSONSuccess success, NSURLSession_ZR::Failure failure) const;
  NSURLSession_ZR::Task image(const std::shared_ptr<NSURLSession>& session, NSMutableURLRequest request,
                              NSURLSession_ZR::ImageSuccess success, NSURLSession_ZR::Failure failure) const;
  NSURLSession_ZR::Task xmlParser(const std::shared_ptr<NSURLSession>& session, NSMutableURLRequest request,
                                  NSURLSession_ZR::XMLParserSuccess success, NSURLSession_ZR::Failure failure) const;

 private:
  /// Like `data`, for a body that `parse` takes time for.
  NSURLSession_ZR::Task parsed(const std::shared_ptr<NSURLSession>& session, NSMutableURLRequest request,
                               NSURLSession_ZR::DataSuccess parse, NSURLSession_ZR::Failure failure) const;

  const ZRPlatform& platform_;
};

#endif
