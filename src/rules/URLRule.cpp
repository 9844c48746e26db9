#include "rules/URLRule.h"

#include "rules/UrlMatcher.h"

namespace fernhop {

bool URLRule::matches(const Url &url) const {
    return UrlMatcher(url).matches(pattern);
}

} // namespace fernhop
