#include "platform/Version.h"

namespace fernhop {
namespace {

constexpr std::string_view mark = "Fernhop version ";

// Marked, so that the version of a program can be found in its file.
constexpr char markedVersion[] = "Fernhop version " FERNHOP_VERSION;

} // namespace

const char *programVersion() {
    return markedVersion + mark.size();
}

} // namespace fernhop
