#pragma once

#import <Foundation/Foundation.h>

#include <utility>

namespace fernhop::macos {

/// Keeps an Objective-C object alive: one retain when it is taken, one release at the end. A copy is one more
/// owner. References are counted by hand here, so that the same code runs on every Objective-C runtime.
template <typename Type>
class Reference {
  public:
    Reference() = default;
    /// Shares an object that somebody else owns, an autoreleased one for example; nil is allowed.
    explicit Reference(Type *shared) : object([shared retain]) {}
    /// Takes over the one retain that `alloc`, `new` or `copy` gave the caller.
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

    /// The object, or nil; it lives at least as long as this reference.
    [[nodiscard]] Type *get() const { return object; }
    explicit operator bool() const { return object != nil; }

  private:
    Type *object = nil;
};

} // namespace fernhop::macos
