#pragma once

namespace fernhop {

/// How the application appears in the session.
enum class ActivationPolicy {
    regular = 0,
    accessory = 1, ///< no Dock icon, no menu bar
    prohibited = 2,
};

/// The reply to a request to terminate.
enum class TerminateReply {
    cancel = 0,
    now = 1,
    later = 2,
};

/// The desktop's application object for this process. Main thread only.
class Application {
  public:
    virtual ~Application() = default;

    /// Sets how the application appears in the session.
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;

    /// Requests the application to terminate: asks its controller, then makes the main loop return.
    virtual void terminate() = 0;
};

} // namespace fernhop
