#include "cli/CommandLine.h"

#include "cli/CommandParser.h"
#include "cli/Files.h"
#include "cli/LinkArgument.h"
#include "cli/PatternTest.h"
#include "cli/PlainText.h"
#include "cli/Results.h"
#include "cli/SettingsDocument.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <cerrno>
#include <istream>
#include <ostream>
#include <utility>
#include <variant>

namespace fernhop::cli {

namespace {

bool isStandardStream(const std::string &file) {
    return file.empty() || file == "-";
}

/// Carries out commands on behalf of the client: on its files and streams, and through the running Fernhop if
/// there is one.
class Client {
  public:
    Client(const std::vector<std::string> &clientArguments, const Process &clientProcess)
        : arguments(clientArguments), process(clientProcess) {}

    /// Prints a result and returns its status, or failure when it could not be printed.
    [[nodiscard]] int show(const CommandResult &result) const {
        process.errors << result.errors << std::flush;
        if (process.output)
            errno = 0; // so that errno afterwards is the reason of a failed write
        process.output << result.output << std::flush;
        return process.output ? result.status : outputEnded(result.status);
    }

    int operator()(const command::Open &open) const;
    int operator()(const command::Match &match) const;
    int operator()(const command::Explain &explain) const;
    int operator()(const command::Export &transfer) const;
    int operator()(const command::Import &transfer) const;
    template <typename AnyOther>
    int operator()(const AnyOther &) const {
        return show(performAnywhere(arguments, ""));
    }

  private:
    [[nodiscard]] CommandResult performAnywhere(const std::vector<std::string> &words,
                                                std::string_view input) const;

    /// The status when standard output failed. A reader that went away ("| head") is not an error.
    [[nodiscard]] int outputEnded(int status) const {
        if (errno == EPIPE)
            return status;
        process.errors << failed("The output could not be written.").errors << std::flush;
        return exitStatus::failure;
    }

    const std::vector<std::string> &arguments;
    const Process &process;
};

CommandResult Client::performAnywhere(const std::vector<std::string> &words, std::string_view input) const {
    const auto invalid = std::ranges::find_if_not(words, isValidUtf8);
    if (invalid != words.end())
        return misused(inQuotes(*invalid) + " is not valid UTF-8.");
    if (const auto resident = process.connect())
        if (auto result = resident->perform(words, input))
            return *std::move(result);
    return process.performHere(words, input);
}

int Client::operator()(const command::Open &open) const {
    CommandResult result;
    std::vector<Url> links;
    for (const auto &text : open.urls) {
        if (auto url = linkArgument(text))
            links.push_back(*std::move(url));
        else
            result = {exitStatus::failure, "", result.errors + failed(whyNoLink(text)).errors};
    }
    if (links.empty())
        return show(result);
    const auto resident = process.connect();
    for (const auto &problem : resident ? resident->open(links) : process.openHere(links))
        result = {exitStatus::failure, "", result.errors + failed(problem).errors};
    return show(result);
}

int Client::operator()(const command::Match &match) const {
    PatternTest test(match.pattern);
    for (const auto &url : match.urls)
        process.output << test.answerFor(url);
    std::string line;
    while (match.urls.empty() && process.output && std::getline(process.input, line)) {
        process.output << test.answerFor(line);
        if (process.input.rdbuf()->in_avail() <= 0) // the writer may be waiting for the answer
            process.output.flush();
    }
    return show({test.allMatched() ? exitStatus::success : exitStatus::failure, "", ""});
}

int Client::operator()(const command::Explain &explain) const {
    // The bus carries only text, but a URL may be any bytes, so it is encoded here.
    const auto url = linkArgument(explain.url);
    if (!url)
        return show(misused(whyNoLink(explain.url)));
    std::vector<std::string> words{"explain"};
    if (explain.source)
        words.insert(words.end(), {"--source", *explain.source});
    if (explain.json)
        words.emplace_back("--json");
    words.insert(words.end(), {"--", url->absoluteString()});
    return show(performAnywhere(words, ""));
}

int Client::operator()(const command::Export &transfer) const {
    auto result = performAnywhere({"export"}, "");
    if (result.status != exitStatus::success || isStandardStream(transfer.file))
        return show(result);
    if (const auto problem = writeFile(transfer.file, result.output))
        return show(failed(inQuotes(transfer.file) + " could not be written: " + *problem + "."));
    return exitStatus::success;
}

int Client::operator()(const command::Import &transfer) const {
    const auto read = isStandardStream(transfer.file) ? readStream(process.input) : readFile(transfer.file);
    if (const auto *problem = std::get_if<ReadingFailed>(&read))
        return show(failed(inQuotes(transfer.file) + " could not be read: " + problem->reason + "."));
    // Parsed here, so that only what is a document, in its shortest form, occupies the running Fernhop.
    const auto decoded = decodeSettings(std::get<std::string>(read));
    if (const auto *fault = std::get_if<std::string>(&decoded))
        return show(refusedDocument(*fault));
    return show(performAnywhere({"import", "-"}, encodeForTransfer(std::get<SettingsDocument>(decoded))));
}

} // namespace

std::optional<int> runCommandLine(const std::vector<std::string> &arguments, const Process &process) {
    const Client client(arguments, process);
    const auto parsed = parseCommand(arguments);
    if (const auto *answer = std::get_if<CommandResult>(&parsed))
        return client.show(*answer);
    const auto &command = std::get<Command>(parsed);
    if (std::holds_alternative<command::Run>(command))
        return std::nullopt;
    return std::visit(client, command);
}

} // namespace fernhop::cli
