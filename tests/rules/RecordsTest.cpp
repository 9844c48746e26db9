#include "rules/Browser.h"
#include "rules/InstalledApplication.h"
#include "rules/RuleSelection.h"

#include <gtest/gtest.h>

#include <concepts>
#include <memory>
#include <type_traits>

namespace fernhop {

static_assert(!std::is_default_constructible_v<RuleSelection>);
static_assert(!std::is_default_constructible_v<URLRuleSelection>);
static_assert(std::is_const_v<decltype(RuleSelection::sourceBundleID)>);
static_assert(std::is_const_v<decltype(RuleSelection::browserBundleID)>);
static_assert(std::is_const_v<decltype(URLRuleSelection::ruleID)>);
static_assert(std::is_const_v<decltype(URLRuleSelection::browserBundleID)>);
static_assert(!std::equality_comparable<RuleSelection>);
static_assert(!std::equality_comparable<URLRuleSelection>);

TEST(Browser, IsEqualWhenAllFieldsAreEqual) {
    const Url here = Url::fileUrl("/a.desktop");
    const Browser browser{"A", "a", here};
    EXPECT_EQ(browser, (Browser{"A", "a", here}));
    EXPECT_NE(browser, (Browser{"B", "a", here}));
    EXPECT_NE(browser, (Browser{"A", "A", here}));
    EXPECT_NE(browser, (Browser{"A", "a", Url::fileUrl("/b.desktop")}));
}

TEST(InstalledApplication, IsEqualWhenAllFieldsAreEqual) {
    const Url here = Url::fileUrl("/a.desktop");
    const InstalledApplication application{"A", "a", here, {"http", "https"}};
    EXPECT_EQ(application, (InstalledApplication{"A", "a", here, {"https", "http"}}));
    EXPECT_NE(application, (InstalledApplication{"A", "a", here, {"http"}}));
    EXPECT_NE(application, (InstalledApplication{"B", "a", here, {"http", "https"}}));
    EXPECT_NE(application, (InstalledApplication{"A", "b", here, {"http", "https"}}));
    EXPECT_NE(application, (InstalledApplication{"A", "a", Url::fileUrl("/b"), {"http", "https"}}));
}

TEST(Selections, AreReadBackFromMenuItems) {
    const std::shared_ptr<Object> app = std::make_shared<RuleSelection>("org.x.Mail", "firefox");
    const auto *rule = dynamic_cast<const RuleSelection *>(app.get());
    ASSERT_TRUE(rule);
    EXPECT_EQ(rule->sourceBundleID, "org.x.Mail");
    EXPECT_EQ(rule->browserBundleID, "firefox");
    EXPECT_FALSE(dynamic_cast<const URLRuleSelection *>(app.get()));

    const std::shared_ptr<Object> url = std::make_shared<URLRuleSelection>("1", "chromium");
    const auto *urlRule = dynamic_cast<const URLRuleSelection *>(url.get());
    ASSERT_TRUE(urlRule);
    EXPECT_EQ(urlRule->ruleID, "1");
    EXPECT_EQ(urlRule->browserBundleID, "chromium");
}

} // namespace fernhop
