// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_POLICY_WEB_MAILTOADDRESS_H
#define ZRCORE_POLICY_WEB_MAILTOADDRESS_H

#include <string>
#include <string_view>

namespace policy {

/// The address that opens a mail program with a subject, a body and no recipient (RFC 6068). Everything but RFC 3986's
/// unreserved characters is escaped; line breaks become CR LF in the body and blanks in the subject, other control
/// characters are left out. The subject is cut after 200 characters and the body after 10,000, because the whole must
/// fit into one argument of a program.
/// @param subject, body  UTF-8; bytes that are none are escaped as they are.
std::string mailtoAddress(std::string_view subject, std::string_view body);

}  // namespace policy

#endif
