#pragma once

#include "platform/linux/dialogs-qt/HelperProgram.h"
#include "platform/linux/tray/EmbeddedTray.h"

#include <memory>
#include <string>

namespace fernhop::freedesktop {

/// The program that shows the tray item of this process in an XEmbed tray. When it ends by itself it is
/// started again, each time after a longer pause, and after some times no more. Main thread only.
class IconProgram : public EmbeddedIcon {
  public:
    /// `programPath` is the program's file; the item is that of the connection with the unique name
    /// `busName`.
    IconProgram(std::string programPath, std::string busName);
    ~IconProgram() override;
    IconProgram(const IconProgram &) = delete;
    IconProgram &operator=(const IconProgram &) = delete;

    [[nodiscard]] bool isShown() const override { return program != nullptr; }

  private:
    void start();
    void ended();
    static gboolean paused(gpointer self);

    const std::string path, item;
    std::unique_ptr<HelperProgram> program;
    guint timer = 0;
    unsigned restarts = 0;
};

} // namespace fernhop::freedesktop
