#pragma once

#include "catalog/BrowserCatalog.h"
#include "cli/Controller.h"
#include "defaulthandler/DefaultHandlerControl.h"
#include "platform/Bundle.h"
#include "platform/LaunchServices.h"
#include "platform/SessionReport.h"
#include "settings/Preferences.h"

namespace fernhop::cli {

/// What commands work on: the parts of the running Fernhop, or of its replacement in the client process. All
/// of them outlive the command.
struct Context {
    Preferences &preferences;
    const LaunchServices &launchServices;
    const Bundles &bundles;
    const BrowserCatalog &browsers;
    DefaultHandlerControl &defaultHandlers;
    Controller &controller;
    const SessionReport &session;
};

} // namespace fernhop::cli
