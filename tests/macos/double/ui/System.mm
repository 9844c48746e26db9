#include "macos/double/ui/System.h"

namespace fernhop::macos_double {

namespace {

void tellOfAppearance(NSView *view) {
    [view viewDidChangeEffectiveAppearance];
    for (NSView *subview in [view subviews])
        tellOfAppearance(subview);
}

} // namespace

System &system() {
    static System instance;
    return instance;
}

void setSystemAppearance(NSAppearanceName name) {
    system().appearance = name;
    for (NSAlert *alert : system().openAlerts)
        tellOfAppearance([[alert window] contentView]);
}

std::vector<NSStatusItem *> statusItems() {
    return system().statusItems;
}

void setUser(User user) {
    system().user = std::move(user);
}

} // namespace fernhop::macos_double
