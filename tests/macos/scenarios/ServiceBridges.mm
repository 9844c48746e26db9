#include "macos/scenarios/ServiceBridges.h"

#include "macos/double/Recorder.h"

#include <gtest/gtest.h>

namespace fernhop::macos {

namespace {

macos_double::Services &services() {
    return macos_double::recorder().services;
}

std::vector<Url> urlsOf(const std::vector<std::string> &texts) {
    std::vector<Url> urls;
    for (const auto &text : texts)
        urls.push_back(Url::parse(text).value());
    return urls;
}

} // namespace

std::optional<Url> WorkspaceBridge::urlForApplicationWithBundleIdentifier(const std::string &bundleID) const {
    services().applications.erase(bundleID);
    if (const auto url = memory.urlForApplicationWithBundleIdentifier(bundleID))
        services().applications[bundleID] = url->path();
    return system.urlForApplicationWithBundleIdentifier(bundleID);
}

std::shared_ptr<RunningApplication> WorkspaceBridge::frontmostApplication() const {
    services().frontmost.reset();
    if (memory.front)
        services().frontmost = memory.front->bundleIdentifier();
    return system.frontmostApplication();
}

void WorkspaceBridge::openUrls(const std::vector<Url> &urls, const Url &applicationUrl,
                               const OpenConfiguration &configuration, OpenCompletion completion) {
    services().openError.reset();
    if (memory.failure)
        services().openError = memory.failure->localizedDescription;
    services().opened.clear();
    system.openUrls(urls, applicationUrl, configuration, heldWhereWanted(std::move(completion)));
    if (memory.failure) {
        memory.opened.push_back({urls, applicationUrl, configuration});
        return;
    }
    ASSERT_EQ(services().opened.size(), 1U);
    const auto &call = services().opened.front();
    memory.opened.push_back(
        {urlsOf(call.urls), Url::parse(call.applicationUrl).value(), {.activates = call.activates}});
}

OpenCompletion WorkspaceBridge::heldWhereWanted(OpenCompletion completion) {
    if (!memory.holdsCompletions)
        return completion;
    return [this, completion = std::move(completion)](auto application, auto error) {
        memory.held.push_back([=] { completion(application, error); });
    };
}

bool WorkspaceBridge::openUrl(const Url &url) {
    services().openError.reset();
    if (!memory.opensByDefault)
        services().openError = "Nothing opens it.";
    services().openedByDefault.clear();
    const bool opened = system.openUrl(url);
    for (const Url &given : urlsOf(services().openedByDefault))
        memory.openedByDefault.push_back(given);
    return opened;
}

ui::ImageReference WorkspaceBridge::iconForFile(const std::string &path, double side) const {
    (void)memory.iconForFile(path, side);
    return system.iconForFile(path, side);
}

std::optional<std::string>
LaunchServicesBridge::copyDefaultHandlerForUrlScheme(const std::string &scheme) const {
    services().handlers = memory.handlers;
    auto handler = system.copyDefaultHandlerForUrlScheme(scheme);
    (void)memory.copyDefaultHandlerForUrlScheme(scheme);
    return handler;
}

bool LaunchServicesBridge::setDefaultHandlerForUrlScheme(const std::string &scheme,
                                                         const std::string &bundleID) {
    constexpr int refused = -54;
    services().handlers = memory.handlers;
    services().handlerStatus = memory.refuses ? refused : 0;
    services().handlersSet.clear();
    const bool accepted = system.setDefaultHandlerForUrlScheme(scheme, bundleID);
    memory.calls.insert(memory.calls.end(), services().handlersSet.begin(), services().handlersSet.end());
    memory.handlers = services().handlers;
    return accepted;
}

void LogBridge::log(const std::string &format) {
    const std::size_t before = services().logLines.size();
    system.log(format);
    EXPECT_EQ(services().logLines.size(), before + 1) << format;
    memory.log(format);
}

void SoundBridge::beep() {
    const int before = macos_double::recorder().beeps;
    system.beep();
    for (int heard = before; heard < macos_double::recorder().beeps; ++heard)
        memory.beep();
}

void ApplicationBridge::setActivationPolicy(ActivationPolicy policy) {
    services().lifecycle.clear();
    system.setActivationPolicy(policy);
    EXPECT_EQ(services().lifecycle.size(), 1U);
    memory.setActivationPolicy(policy);
}

} // namespace fernhop::macos
