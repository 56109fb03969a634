#ifndef ZRCORE_HOSTS_ZRCORE_FIXEDTEXT_H
#define ZRCORE_HOSTS_ZRCORE_FIXEDTEXT_H

#include <optional>
#include <string>

/// With so many decimals, in any locale; "-" for nothing and for what is not finite.
std::string fixedText(std::optional<double> value, int decimals);

#endif
