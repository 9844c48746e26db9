#include "routing/URLRule.h"

#include "routing/PatternSubject.h"

namespace fernhop {

bool URLRule::matches(const Url &url) const {
    return matches(PatternSubject(url));
}

bool URLRule::matches(const PatternSubject &subject) const {
    return subject.matches(pattern);
}

} // namespace fernhop
