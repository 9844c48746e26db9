#pragma once

namespace fernhop {

/// Base class of represented objects of menu items, of information in notifications and of senders of
/// actions. The receiver uses `dynamic_cast` and does nothing when the object has an unexpected type.
class Object {
  public:
    virtual ~Object() = default;

  protected:
    Object() = default;
    Object(const Object &) = default;
    Object &operator=(const Object &) = default;
};

} // namespace fernhop
