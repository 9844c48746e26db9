#pragma once

namespace fernhop {

/// How the application shows in the session.
enum class ActivationPolicy {
    regular = 0,
    accessory = 1, ///< no Dock icon, no menu bar
    prohibited = 2,
};

/// What to do when the application is asked to end.
enum class TerminateReply {
    cancel = 0,
    now = 1,
    later = 2,
};

/// The process as the desktop's application object. Main thread only.
class Application {
  public:
    virtual ~Application() = default;

    /// How the application shows from now on.
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;

    /// Asks the application to end: its controller is asked first, then the main loop returns.
    virtual void terminate() = 0;
};

} // namespace fernhop
