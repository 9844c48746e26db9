#pragma once

#import <Foundation/Foundation.h>

#include <utility>

namespace fernhop::macos {

/// Owns an Objective-C object: retains it once and releases it on destruction. A copy is another owner.
/// References are counted manually, so the same code runs on every Objective-C runtime.
template <typename Type>
class Reference {
  public:
    Reference() = default;
    /// Shares ownership of an object, for example an autoreleased one; nil is allowed.
    explicit Reference(Type *shared) : object([shared retain]) {}
    /// Takes the ownership of an object from `alloc`, `new` or `copy`.
    [[nodiscard]] static Reference adopting(Type *owned) {
        Reference result;
        result.object = owned;
        return result;
    }
    Reference(const Reference &other) : object([other.object retain]) {}
    Reference(Reference &&other) noexcept : object(std::exchange(other.object, nil)) {}
    Reference &operator=(Reference other) noexcept {
        std::swap(object, other.object);
        return *this;
    }
    ~Reference() { [object release]; }

    /// The object, or nil; valid at least as long as this reference.
    [[nodiscard]] Type *get() const { return object; }
    explicit operator bool() const { return object != nil; }

  private:
    Type *object = nil;
};

} // namespace fernhop::macos
