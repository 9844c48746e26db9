#include "platform/linux/service/BusResidentConnection.h"

#include "platform/Utf8.h"
#include "platform/Version.h"
#include "platform/linux/base/FernhopService.h"
#include "platform/linux/base/OwnProgram.h"
#include "platform/linux/base/Text.h"
#include "platform/linux/base/Timer.h"
#include "platform/linux/launch/ChildProcesses.h"
#include "platform/linux/source/LinkDelivery.h"

#include <utility>

namespace fernhop::freedesktop {
namespace {

GVariant *platformData(const std::string &activationToken) {
    GVariantDict data;
    g_variant_dict_init(&data, nullptr);
    g_variant_dict_insert(&data, platformdata::version, "s", programVersion());
    if (!activationToken.empty() && isValidUtf8(activationToken))
        g_variant_dict_insert(&data, platformdata::activationToken, "s", activationToken.c_str());
    return g_variant_dict_end(&data);
}

GVariant *performBody(const std::vector<std::string> &arguments, std::string_view input,
                      const std::string &activationToken) {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE_STRING_ARRAY);
    for (const auto &argument : arguments)
        g_variant_builder_add(&list, "s", argument.c_str());
    return g_variant_new("(as@ay@a{sv})", &list,
                         g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, input.data(), input.size(), 1),
                         platformData(activationToken));
}

bool saysNoneIsRunning(const GError *error) {
    return g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) ||
           g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER);
}

bool saysOtherVersion(const GError *error) {
    const GCharPointer name(g_dbus_error_get_remote_error(error));
    return name && std::string_view(name.get()) == otherVersionError;
}

CommandResult failed(const std::string &reason) {
    return {exitStatus::failure, {}, "fernhop: " + reason + "\n"};
}

CommandResult resultOf(GVariant *reply) {
    CommandResult result;
    const char *output = nullptr;
    const char *errors = nullptr;
    g_variant_get(reply, "(i&s&s)", &result.status, &output, &errors);
    result.output = output;
    result.errors = errors;
    return result;
}

/// What Fernhop's programs say on standard error, a line each. The lines of others, such as the dynamic
/// linker, are none of theirs.
std::vector<std::string> sentencesIn(std::string_view errors) {
    std::vector<std::string> sentences;
    for (const auto line : pieces(errors, '\n'))
        for (const std::string_view program : {"fernhop-open: ", "fernhop: "})
            if (line.starts_with(program))
                sentences.emplace_back(line.substr(program.size()));
    return sentences;
}

} // namespace

/// The reply to a call, or the error.
struct BusResidentConnection::Answer {
    GVariantPointer reply;
    GErrorPointer error;
};

BusResidentConnection::BusResidentConnection(GObjectPointer<GDBusConnection> connection, std::string program,
                                             std::string token,
                                             std::function<void(const std::string &)> notifyUser,
                                             AnswerPatience answerPatience)
    : bus(std::move(connection)), linkProgram(std::move(program)), activationToken(std::move(token)),
      notify(std::move(notifyUser)), patience(answerPatience) {}

/// Has the resident perform a command, and runs the main loop until it has answered or takes too long.
BusResidentConnection::Answer BusResidentConnection::call(GVariant *body) const {
    Timer silence;
    silence.start(patience.untilNotice, [this] { notify("Fernhop is not answering yet."); });
    Answer answer;
    g_dbus_connection_call(
        bus.get(), serviceName, serviceObjectPath, serviceInterface, "Perform", body, G_VARIANT_TYPE("(iss)"),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, static_cast<int>(patience.untilEnd.count()), nullptr,
        [](GObject *connection, GAsyncResult *result, gpointer data) {
            GError *error = nullptr;
            auto &came = *static_cast<Answer *>(data);
            came.reply.reset(g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &error));
            came.error.reset(error);
        },
        &answer);
    while (!answer.reply && !answer.error)
        g_main_context_iteration(nullptr, TRUE);
    return answer;
}

std::optional<CommandResult> BusResidentConnection::perform(const std::vector<std::string> &arguments,
                                                            std::string_view input) {
    bool wasRefused = false;
    Pauses pauses;
    do {
        const auto [reply, failure] = call(performBody(arguments, input, activationToken));
        if (reply)
            return resultOf(reply.get());
        if (saysOtherVersion(failure.get())) {
            wasRefused = true;
        } else if (g_error_matches(failure.get(), G_IO_ERROR, G_IO_ERROR_TIMED_OUT)) {
            return failed("Fernhop does not answer. It may still carry out the command later.");
        } else if (!saysNoneIsRunning(failure.get())) {
            g_dbus_error_strip_remote_error(failure.get());
            return failed(std::string("no answer: ") + failure->message);
        } else if (!wasRefused) {
            return std::nullopt;
        }
        // The resident may be on its way from one version to another.
    } while (pauses.wait());
    return failed(
        ownProgramWasReplaced()
            ? "Fernhop was upgraded while this command ran. Run the command again."
            : "Another version of Fernhop is running. Quit it from its menu, then run this command again.");
}

std::vector<std::string> BusResidentConnection::open(const std::vector<Url> &links) {
    std::vector<std::string> problems;
    std::vector<std::string> arguments = {linkProgram, "--"};
    for (const auto &link : links) {
        if (link.absoluteString().size() > longestArgument())
            problems.push_back(
                unopenedSentence(link.absoluteString(), "encoded, it is too long for a program"));
        else
            arguments.push_back(link.absoluteString());
    }
    if (problems.size() == links.size())
        return problems;
    char *errors = nullptr;
    GError *error = nullptr;
    int status = 0;
    const bool ran = g_spawn_sync(nullptr, pointersTo(arguments).data(), nullptr, G_SPAWN_STDOUT_TO_DEV_NULL,
                                  nullptr, nullptr, nullptr, &errors, &status, &error) != FALSE;
    const GCharPointer said(errors);
    const auto told = sentencesIn(said ? said.get() : "");
    problems.insert(problems.end(), told.begin(), told.end());
    const bool succeeded = ran && g_spawn_check_wait_status(status, &error) != FALSE;
    const GErrorPointer failure(error);
    if (!succeeded && told.empty())
        problems.emplace_back(failure->message);
    return problems;
}

} // namespace fernhop::freedesktop
