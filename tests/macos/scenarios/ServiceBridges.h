#pragma once

#include "fakes/FakeApplication.h"
#include "fakes/FakeLaunchServices.h"
#include "fakes/FakeWorkspace.h"
#include "platform/macos/SystemApplication.h"
#include "platform/macos/SystemLaunchServices.h"
#include "platform/macos/SystemLog.h"
#include "platform/macos/SystemSound.h"
#include "platform/macos/SystemWorkspace.h"

namespace fernhop::macos {

/// Each bridge copies the state of a fake into the double, calls the backend, and copies the double's changes
/// back to the fake. The fake must outlive its bridge.
class WorkspaceBridge : public Workspace {
  public:
    explicit WorkspaceBridge(fakes::FakeWorkspace &inMemory) : memory(inMemory) {}

    std::optional<Url> urlForApplicationWithBundleIdentifier(const std::string &bundleID) const override;
    std::shared_ptr<RunningApplication> frontmostApplication() const override;
    void openUrls(const std::vector<Url> &urls, const Url &applicationUrl,
                  const OpenConfiguration &configuration, OpenCompletion completion) override;
    bool openUrl(const Url &url) override;
    ui::ImageReference iconForFile(const std::string &path, double side) const override;

  private:
    [[nodiscard]] OpenCompletion heldWhereWanted(OpenCompletion completion);

    fakes::FakeWorkspace &memory;
    SystemWorkspace system;
};

class LaunchServicesBridge : public LaunchServices {
  public:
    explicit LaunchServicesBridge(fakes::FakeLaunchServices &inMemory) : memory(inMemory) {}

    std::optional<std::string> copyDefaultHandlerForUrlScheme(const std::string &scheme) const override;
    bool setDefaultHandlerForUrlScheme(const std::string &scheme, const std::string &bundleID) override;

  private:
    fakes::FakeLaunchServices &memory;
    SystemLaunchServices system;
};

class LogBridge : public Log {
  public:
    explicit LogBridge(fakes::FakeLog &inMemory) : memory(inMemory) {}

    void log(const std::string &format) override;

  private:
    fakes::FakeLog &memory;
    SystemLog system;
};

class SoundBridge : public Sound {
  public:
    explicit SoundBridge(fakes::FakeSound &inMemory) : memory(inMemory) {}

    void beep() override;

  private:
    fakes::FakeSound &memory;
    SystemSound system;
};

class ApplicationBridge : public Application {
  public:
    explicit ApplicationBridge(fakes::FakeApplication &inMemory) : memory(inMemory) {}

    void setActivationPolicy(ActivationPolicy policy) override;
    void terminate() override { memory.terminate(); }

  private:
    fakes::FakeApplication &memory;
    SystemApplication system;
};

} // namespace fernhop::macos
