#pragma once

namespace fernhop::freedesktop {

/// Where the resident is on the session bus: its name, its object, and the interface of its own. That has
/// OpenLinks(aay links, a{sv} platform_data) -> (a(us) unopened), which is answered when every link is in
/// safe hands (a browser runs with it, or took it) or will not be opened. Of the latter it tells the index in
/// the request and the reason in words, which is empty where there are too many to tell.
inline constexpr const char *serviceName = "org.fernhop.Fernhop";
inline constexpr const char *serviceObjectPath = "/org/fernhop/Fernhop";
inline constexpr const char *serviceInterface = "org.fernhop.Fernhop";

/// The error that answers a call from a program of another version. Nothing was done, and the call may be
/// repeated: the resident may be about to run a new version itself.
inline constexpr const char *otherVersionError = "org.fernhop.Fernhop.Error.OtherVersion";

/// The keys of the platform data that a call brings. The first two are those of org.freedesktop.Application;
/// the others come from Fernhop's own programs.
namespace platformdata {
inline constexpr const char *activationToken = "activation-token";
inline constexpr const char *startupID = "desktop-startup-id";
inline constexpr const char *launchedPid = "launched-pid";
inline constexpr const char *parentPid = "parent-pid";
inline constexpr const char *controlGroup = "control-group";
inline constexpr const char *desktopFile = "desktop-file";
inline constexpr const char *version = "version"; ///< of the calling program
} // namespace platformdata

} // namespace fernhop::freedesktop
