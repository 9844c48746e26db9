#include "cli/Results.h"

#include "cli/PlainText.h"

#include <utility>

namespace fernhop::cli {

namespace {

std::string errorLine(std::string_view reason) {
    return "fernhop: " + plain(reason) + "\n";
}

} // namespace

CommandResult done(std::string output) {
    return {exitStatus::success, std::move(output), ""};
}

CommandResult failed(std::string_view reason) {
    return {exitStatus::failure, "", errorLine(reason)};
}

CommandResult misused(std::string_view reason) {
    return {exitStatus::usage, "", errorLine(reason)};
}

std::string warning(std::string_view reason) {
    return errorLine("Warning: " + std::string(reason));
}

std::string inQuotes(std::string_view text) {
    return '"' + std::string(text) + '"';
}

} // namespace fernhop::cli
