#include "platform/linux/dialogs-qt/IconProgram.h"

#include <utility>

namespace fernhop::freedesktop {
namespace {

constexpr unsigned mostRestarts = 6;
constexpr guint firstPause = 1; // seconds; each further one is twice as long

} // namespace

IconProgram::IconProgram(std::string programPath, std::string busName)
    : path(std::move(programPath)), item(std::move(busName)) {
    start();
}

IconProgram::~IconProgram() {
    if (timer != 0)
        g_source_remove(timer);
}

void IconProgram::start() {
    program = HelperProgram::start({path, iconMode, item}, "",
                                   {[](const Message &) {}, [this](ExitStatus) { ended(); }});
}

void IconProgram::ended() {
    program.reset();
    if (restarts < mostRestarts)
        timer = g_timeout_add_seconds(firstPause << restarts++, paused, this);
}

gboolean IconProgram::paused(gpointer self) {
    auto &own = *static_cast<IconProgram *>(self);
    own.timer = 0;
    own.start();
    return G_SOURCE_REMOVE;
}

} // namespace fernhop::freedesktop
