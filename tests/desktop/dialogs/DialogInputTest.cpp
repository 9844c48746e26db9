#include "DialogSession.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <map>
#include <optional>

namespace fernhop::desktoptest {
namespace {

using nlohmann::json;

constexpr const char *addApps = "添加 App 浏览器规则", *editApp = "修改浏览器规则",
                     *addURL = "添加 URL 浏览器规则", *editURL = "修改 URL 浏览器规则",
                     *feedbackTitle = "建议反馈";

/// Every dialog, worked with the keyboard alone.
class DialogInput : public testing::Test {
  protected:
    void SetUp() override {
        if (const auto missing = DialogSession::missing(); !missing.empty())
            GTEST_SKIP() << missing;
        session.emplace();
        for (const auto &[id, name] : {std::pair{"com.example.a", "Alpha"},
                                       {"org.sample.b", "Beta"},
                                       {"com.example.c", "Chat"},
                                       {"org.sample.d", "Delta"}})
            session->home.writeDesktopEntry(id, std::string("[Desktop Entry]\nType=Application\nName=") +
                                                    name + "\nExec=true\n");
        mail.emplace(session->home, "mail");
        session->home.writeDesktopEntry("mail",
                                        "[Desktop Entry]\nType=Application\nName=Mail\nExec=" + mail->exec() +
                                            " %u\nMimeType=x-scheme-handler/mailto;\n");
        session->home.write(session->home.config() + "/mimeapps.list",
                            "[Default Applications]\nx-scheme-handler/http=org.fernhop.Fernhop.desktop\n"
                            "x-scheme-handler/https=org.fernhop.Fernhop.desktop\n"
                            "x-scheme-handler/mailto=mail.desktop\n");
        session->startFernhop();
        ASSERT_EQ(session->fernhop({"default", "web"}), 0) << session->output();
    }

    json list(const std::string &kind) {
        EXPECT_EQ(session->fernhop({kind, "list", "--json"}), 0) << session->output();
        return json::parse(session->output());
    }

    /// The app rules as application and browser.
    std::map<std::string, std::string> appRules() {
        std::map<std::string, std::string> rules;
        for (const auto &rule : list("app-rules"))
            rules[rule.at("sourceBundleID")] = rule.at("browserBundleID");
        return rules;
    }

    /// Types a search in place of the present one, and goes on to the list.
    bool search(const std::string &text) {
        return session->press({"ctrl+a", "Delete"}) && session->type(text) && session->press({"Tab"});
    }
    bool backToSearch() { return session->press({"shift+Tab"}); }

    std::vector<std::string> mailsOpened(std::size_t count) const {
        (void)support::waitUntil([&] { return mail->links().size() >= count; });
        return mail->links();
    }

    std::optional<DialogSession> session;
    std::optional<support::RecordingBrowser> mail;
    using Rules = std::map<std::string, std::string>;
};

TEST_F(DialogInput, SelectionIsGatheredUnderSeveralSearches) {
    ASSERT_TRUE(session->open({"add-app-rules"}, addApps));
    ASSERT_TRUE(search("COM.example") && session->press({"shift+End"}));              // Alpha, Chat
    ASSERT_TRUE(backToSearch() && search("bet") && session->press({"space"}));        // and Beta
    ASSERT_TRUE(backToSearch() && search("alpha") && session->press({"ctrl+space"})); // without Alpha
    ASSERT_TRUE(session->press({"Return"}));
    ASSERT_TRUE(session->closes(addApps));
    EXPECT_EQ(appRules(), (Rules{{"com.example.c", "web"}, {"org.sample.b", "web"}}));
    EXPECT_NE(session->settings().find("org.sample.b"), std::string::npos);
    EXPECT_EQ(session->beeps(), 0);
}

TEST_F(DialogInput, AddingNothingBeeps) {
    ASSERT_TRUE(session->open({"add-app-rules"}, addApps));
    const std::string before = session->settings();
    ASSERT_TRUE(session->press({"Return"}));
    ASSERT_TRUE(session->closes(addApps));
    EXPECT_TRUE(support::waitUntil([&] { return session->beeps() == 1; }));
    EXPECT_EQ(session->settings(), before);
}

TEST_F(DialogInput, BrowserOfAnAppRuleIsPicked) {
    ASSERT_TRUE(session->open({"edit-app-rule", "com.example.a"}, editApp));
    ASSERT_TRUE(session->press({"End", "Home", "Return"})); // the pop-up has the keyboard
    ASSERT_TRUE(session->closes(editApp));
    EXPECT_EQ(appRules(), (Rules{{"com.example.a", "other"}})) << "the first by name";
}

TEST_F(DialogInput, URLRuleIsChangedAndKeepsItsIdentifier) {
    ASSERT_EQ(session->fernhop({"url-rules", "add", "one.example", "other"}), 0);
    const std::string id = list("url-rules").at(0).at("id");
    ASSERT_TRUE(session->open({"edit-url-rule", id}, editURL));
    ASSERT_TRUE(session->press({"ctrl+a"}) && session->type("  https://two.example/* ") &&
                session->press({"Return"}));
    ASSERT_TRUE(session->closes(editURL));
    EXPECT_EQ(list("url-rules"),
              json::parse(R"([{"id": ")" + id +
                          R"(", "pattern": "https://two.example/*", "browserBundleID": "other"}])"));
    EXPECT_EQ(session->beeps(), 0);
}

TEST_F(DialogInput, BlankPatternBeeps) {
    ASSERT_TRUE(session->open({"add-url-rule"}, addURL));
    ASSERT_TRUE(session->type("   ") && session->press({"Return"}));
    ASSERT_TRUE(session->closes(addURL));
    EXPECT_TRUE(support::waitUntil([&] { return session->beeps() == 1; }));
    EXPECT_TRUE(list("url-rules").empty());
}

TEST_F(DialogInput, ContactsAreOpenedOneAfterTheOther) {
    ASSERT_TRUE(session->open({"feedback"}, feedbackTitle));
    // The keyboard is with the closing button, and goes round.
    ASSERT_TRUE(session->press({"Tab", "Return"}));
    EXPECT_EQ(mailsOpened(1),
              std::vector<std::string>{"mailto:feedback@fernhop.example?subject=Fernhop%20Feedback"});
    ASSERT_TRUE(session->press({"Tab", "space"}));
    EXPECT_EQ(session->opened(1), std::vector<std::string>{"https://x.example/fernhop"});
    EXPECT_TRUE(session->shows(feedbackTitle));
    ASSERT_TRUE(session->press({"Escape"}));
    EXPECT_TRUE(session->closes(feedbackTitle));
    EXPECT_EQ(session->beeps(), 0);
}

TEST_F(DialogInput, EscapeWritesNothing) {
    ASSERT_EQ(session->fernhop({"url-rules", "add", "one.example", "other"}), 0);
    const std::string id = list("url-rules").at(0).at("id"), before = session->settings();
    ASSERT_TRUE(session->open({"add-app-rules"}, addApps));
    ASSERT_TRUE(session->press({"Tab", "Home", "Escape"}));
    ASSERT_TRUE(session->closes(addApps));
    ASSERT_TRUE(session->open({"edit-app-rule", "com.example.a"}, editApp));
    ASSERT_TRUE(session->press({"Home", "Escape"}));
    ASSERT_TRUE(session->closes(editApp));
    for (const auto &[words, title] :
         {std::pair<std::vector<std::string>, const char *>{{"add-url-rule"}, addURL},
          {{"edit-url-rule", id}, editURL}}) {
        ASSERT_TRUE(session->open(words, title));
        ASSERT_TRUE(session->type("typed") && session->press({"Escape"}));
        ASSERT_TRUE(session->closes(title));
    }
    EXPECT_EQ(session->settings(), before);
    EXPECT_EQ(session->beeps(), 0);
}

TEST_F(DialogInput, CancellingButtonCancels) {
    ASSERT_TRUE(session->open({"add-url-rule"}, addURL));
    ASSERT_TRUE(session->type("typed") && session->press({"shift+Tab", "Return"}));
    ASSERT_TRUE(session->closes(addURL));
    EXPECT_TRUE(list("url-rules").empty());
}

} // namespace
} // namespace fernhop::desktoptest
