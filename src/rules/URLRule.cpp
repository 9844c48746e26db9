#include "rules/URLRule.h"

#include "rules/PatternSubject.h"

namespace fernhop {

bool URLRule::matches(const Url &url) const {
    return PatternSubject(url).matches(pattern);
}

} // namespace fernhop
