#pragma once

#include <QApplication>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// The toolkit's platform plugin that can show windows now; nothing where there is no display. The toolkit
/// ends the process when it finds none, so it is asked only for one that was tried.
[[nodiscard]] std::optional<std::string> usablePlatformPlugin();

/// The toolkit in a process, from construction to destruction. Its events come through the GLib main loop.
class Toolkit {
  public:
    /// `platformPlugin` is one that can show windows here.
    explicit Toolkit(std::string platformPlugin);

  private:
    std::vector<std::string> words; ///< the toolkit's command line, which it refers to
    std::vector<char *> arguments;
    int argumentCount;
    std::unique_ptr<QApplication> application;
};

} // namespace fernhop::freedesktop
