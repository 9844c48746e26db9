#include "catalog/ApplicationLayout.h"

namespace fernhop {

ApplicationLayout macApplicationLayout(const FileManager &fileManager) {
    const std::string home = fileManager.homeDirectoryForCurrentUser().path();
    const std::string inHome = home.ends_with('/') ? home + "Applications" : home + "/Applications";
    return {{Url::fileUrl("/Applications"), Url::fileUrl("/System/Applications"),
             Url::fileUrl("/System/Library/CoreServices/Applications"), Url::fileUrl(inHome)},
            "app"};
}

} // namespace fernhop
