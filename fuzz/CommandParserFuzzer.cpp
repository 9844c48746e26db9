#include "cli/CommandParser.h"
#include "platform/Utf8.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace fernhop;

namespace {

void require(bool holds) {
    if (!holds)
        std::abort();
}

std::vector<std::string> wordsIn(std::string_view text) {
    std::vector<std::string> words;
    while (!text.empty()) {
        const auto end = text.find('\n');
        words.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return words;
}

/// A complaint is one for people; whatever it quotes, it stays harmless.
void checkAnswer(const CommandResult &answer) {
    require(answer.status == exitStatus::success || answer.status == exitStatus::usage);
    require((answer.status == exitStatus::success) == answer.errors.empty());
    require(isValidUtf8(answer.errors));
    require(answer.errors.find('\x1b') == std::string::npos);
}

/// Links arrive as they were typed.
void checkLinks(std::vector<std::string> words) {
    words.insert(words.begin(), {"open", "--"});
    const auto outcome = cli::parseCommand(words);
    if (words.size() == 2)
        return require(std::holds_alternative<CommandResult>(outcome));
    const auto &open = std::get<cli::command::Open>(std::get<cli::Command>(outcome));
    require(open.urls == std::vector<std::string>(words.begin() + 2, words.end()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const auto words = wordsIn({reinterpret_cast<const char *>(data), size});
    const auto outcome = cli::parseCommand(words);
    if (const auto *answer = std::get_if<CommandResult>(&outcome))
        checkAnswer(*answer);
    checkLinks(words);
    return 0;
}
