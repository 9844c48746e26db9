#include "platform/linux/launch/ChildWatches.h"

#include <utility>

namespace fernhop::freedesktop {

ChildWatches::~ChildWatches() {
    for (const auto &[child, watch] : watches)
        g_source_remove(watch.source);
}

void ChildWatches::watch(pid_t child, Ended ended) {
    const guint source = g_child_watch_add(child, childEnded, this);
    watches.insert_or_assign(child, Watch{source, std::move(ended)});
}

void ChildWatches::childEnded(GPid child, gint waitStatus, gpointer self) {
    auto &watches = static_cast<ChildWatches *>(self)->watches;
    if (const auto found = watches.find(child); found != watches.end()) {
        const auto ended = std::move(found->second.ended);
        watches.erase(found);
        ended(waitStatus);
    }
}

} // namespace fernhop::freedesktop
