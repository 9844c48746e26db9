#pragma once

namespace fernhop {

/// Root of what can be attached to a menu item, carried by a notification or passed as the sender of an
/// action. The receiver asks for the type it expects with `dynamic_cast` and does nothing when it is another.
class Object {
  public:
    virtual ~Object() = default;

  protected:
    Object() = default;
    Object(const Object &) = default;
    Object &operator=(const Object &) = default;
};

} // namespace fernhop
