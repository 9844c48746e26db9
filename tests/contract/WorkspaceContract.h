#pragma once

#include "platform/Workspace.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace fernhop::contract {

/// A session with the browsers "org.example.A" and "org.example.B". No application is in front.
class WorkspaceSession {
  public:
    virtual ~WorkspaceSession() = default;
    virtual Workspace &workspace() = 0;

    [[nodiscard]] virtual Url bundleOf(const std::string &id) const = 0;
    virtual void uninstall(const std::string &id) = 0;

    /// Makes "org.example.A" fail to open anything.
    virtual void breakA() = 0;

    virtual void bringToFront(const std::string &id) = 0;

    /// Runs the session until the condition holds; false on timeout.
    virtual bool runUntil(const std::function<bool()> &condition) = 0;

    /// The links that "org.example.A" received, in order.
    [[nodiscard]] virtual std::vector<std::string> opened() const = 0;
};

/// What the core relies on with every backend. Included once in each executable, which lists the backends.
class WorkspaceContract : public testing::TestWithParam<std::function<std::unique_ptr<WorkspaceSession>()>> {
  protected:
    using Texts = std::vector<std::string>;

    /// Opens links in an application and waits for the outcome.
    void open(const Texts &links, const std::string &id) {
        std::vector<Url> urls;
        for (const auto &link : links)
            urls.push_back(*Url::parse(link));
        const auto before = outcomes.size();
        workspace.openUrls(urls, session->bundleOf(id), {}, [this](const auto &, const auto &error) {
            outcomes.push_back(error ? error->localizedDescription : std::string());
        });
        ASSERT_TRUE(session->runUntil([&] { return outcomes.size() > before; }));
    }

    std::unique_ptr<WorkspaceSession> session = GetParam()();
    Workspace &workspace = session->workspace();
    Texts outcomes; ///< for each open call: why it failed, or nothing
};

TEST_P(WorkspaceContract, FindsBundlesByTheirIdentifiers) {
    EXPECT_EQ(workspace.urlForApplicationWithBundleIdentifier("org.example.A"),
              session->bundleOf("org.example.A"));
    for (const std::string unknown : {"org.example.Other", "", "org.example", "../org.example.A"})
        EXPECT_EQ(workspace.urlForApplicationWithBundleIdentifier(unknown), std::nullopt) << unknown;
}

TEST_P(WorkspaceContract, FindsNewBundles) {
    ASSERT_TRUE(workspace.urlForApplicationWithBundleIdentifier("org.example.A"));
    session->uninstall("org.example.A");
    EXPECT_EQ(workspace.urlForApplicationWithBundleIdentifier("org.example.A"), std::nullopt);
}

TEST_P(WorkspaceContract, ReportsTheFrontmostApplication) {
    EXPECT_EQ(workspace.frontmostApplication(), nullptr);
    session->bringToFront("org.example.A");
    const auto front = workspace.frontmostApplication();
    ASSERT_TRUE(front);
    EXPECT_EQ(front->bundleIdentifier(), "org.example.A");
    session->bringToFront("org.example.B");
    EXPECT_EQ(workspace.frontmostApplication()->bundleIdentifier(), "org.example.B");
    EXPECT_EQ(front->bundleIdentifier(), "org.example.A") << "what was handed out stays valid";
}

TEST_P(WorkspaceContract, OpensLinksUnchangedAndReportsTheOutcomeOnce) {
    const Texts links{"https://a/%F0%c3?x=1&y=$HOME#z", "http://b/"};
    open(links, "org.example.A");
    open({"https://c/"}, "org.example.A");
    EXPECT_EQ(session->opened(), (Texts{links[0], links[1], "https://c/"}));
    EXPECT_EQ(outcomes, (Texts{"", ""}));
}

TEST_P(WorkspaceContract, ReportsWhyAnApplicationCouldNotOpenALink) {
    session->breakA();
    open({"https://a/"}, "org.example.A");
    ASSERT_EQ(outcomes.size(), 1U);
    EXPECT_NE(outcomes[0], "");
}

TEST_P(WorkspaceContract, HasAnIconForEveryFile) {
    for (const auto &path : {session->bundleOf("org.example.A").path(), std::string("/nowhere")}) {
        const auto icon = workspace.iconForFile(path, 16);
        ASSERT_TRUE(icon) << path;
        EXPECT_EQ(icon->side, 16) << path;
    }
}

} // namespace fernhop::contract
