#include "main/MacSelections.h"
#include "platform/macos/Conversions.h"
#include "rules/RuleSelection.h"

#include <gtest/gtest.h>

namespace fernhop::macos {
namespace {

class Selections : public testing::Test {
  protected:
    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
    ~Selections() override { [pool release]; }

    template <typename Type>
    static std::shared_ptr<const Type> objectIn(const ui::RepresentedObject &value) {
        const auto *object = std::get_if<std::shared_ptr<const Object>>(&value);
        return object ? std::dynamic_pointer_cast<const Type>(*object) : nullptr;
    }
};

TEST_F(Selections, AreObjectsOfTheirRegisteredClasses) {
    id rule = attachmentFor(std::make_shared<const RuleSelection>("org.example.Mail", "org.example.A"));
    EXPECT_EQ(fromNSString(NSStringFromClass([rule class])), "Fernhop.RuleSelection");
    EXPECT_EQ(fromNSString([rule sourceBundleID]), "org.example.Mail");
    EXPECT_EQ(fromNSString([rule browserBundleID]), "org.example.A");
    id urlRule = attachmentFor(std::make_shared<const URLRuleSelection>("1", "org.example.B"));
    EXPECT_EQ(fromNSString(NSStringFromClass([urlRule class])), "Fernhop.URLRuleSelection");
    EXPECT_EQ(fromNSString([urlRule ruleID]), "1");
    EXPECT_EQ(fromNSString([urlRule browserBundleID]), "org.example.B");
}

TEST_F(Selections, SurviveConversion) {
    const auto rule = objectIn<RuleSelection>(
        valueOfAttachment(attachmentFor(std::make_shared<const RuleSelection>("größe", "链接"))));
    ASSERT_TRUE(rule);
    EXPECT_EQ(rule->sourceBundleID, "größe");
    EXPECT_EQ(rule->browserBundleID, "链接");
    const auto urlRule = objectIn<URLRuleSelection>(
        valueOfAttachment(attachmentFor(std::make_shared<const URLRuleSelection>("", "b"))));
    ASSERT_TRUE(urlRule);
    EXPECT_EQ(urlRule->ruleID, "");
    EXPECT_EQ(urlRule->browserBundleID, "b");
}

TEST_F(Selections, TextsAreStrings) {
    EXPECT_EQ(fromNSString(attachmentFor(std::string("text"))), "text");
    EXPECT_EQ(valueOfAttachment(@"text"), ui::RepresentedObject(std::string("text")));
}

TEST_F(Selections, OtherObjectsAreNotConverted) {
    EXPECT_FALSE(attachmentFor(ui::RepresentedObject()));
    EXPECT_FALSE(attachmentFor(std::shared_ptr<const Object>()));
    EXPECT_FALSE(attachmentFor(std::make_shared<const ui::MenuItem>()));
    EXPECT_EQ(valueOfAttachment(nil), ui::RepresentedObject());
    EXPECT_EQ(valueOfAttachment([NSNumber numberWithInt:1]), ui::RepresentedObject());
}

TEST_F(Selections, WithoutValuesEndTheProcess) {
    EXPECT_DEATH((void)[[FernhopRuleSelection alloc] init],
                 "unimplemented initializer 'init\\(\\)' for class 'Fernhop.RuleSelection'");
    EXPECT_DEATH((void)[[FernhopURLRuleSelection alloc] init],
                 "unimplemented initializer 'init\\(\\)' for class 'Fernhop.URLRuleSelection'");
}

} // namespace
} // namespace fernhop::macos
